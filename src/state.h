// state.h - the one global state record.
//
// Every subsystem keeps its state in a sub-record declared in its own header;
// this file composes them. State_Reset() puts every field back to its
// start-up default (freeing the scene first), so each test starts clean.
#pragma once

#include "scene/layers.h"
#include "scene/mem.h"
#include "startup/config.h"
#include "startup/startup.h"
#include "input/input.h"
#include "view/viewport.h"
#include "pov/pov.h"

struct State {
    MemState mem;        // allocation hook and block count
    ConfigState config;  // configuration file values
    RunState run;        // work-file cycle and exit
    SceneState scene;    // layers and objects
    InputState input;    // prompt and its result
    ViewState view;      // viewports, shared camera, 3D pen
    PovState pov;        // scene-file writer, its settings, texture library
};

extern State g;

void State_Reset();
