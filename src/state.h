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
#include "model/output.h"
#include "view/shade_settings.h"
#include "input/aids.h"
#include "input/settings.h"
#include "pov/pov_settings.h"
#include "workfile/workfile.h"
#include "gfx/screen.h"
#include "pov/pov.h"
#include "model/xform.h"
#include "exchange/exchange.h"
#include "ui/menu.h"

struct State {
    MemState mem;        // allocation hook and block count
    ConfigState config;  // configuration file values
    RunState run;        // work-file cycle and exit
    SceneState scene;    // layers and objects
    InputState input;    // prompt and its result
    ViewState view;      // viewports, shared camera, 3D pen
    OutputState output;  // Output_Mode and the consumer of each mode
    ShadeSettings shade; // shaded-view options
    AidsState aids;      // drawing aids and redraw switches
    VarState vars;       // scratch values of the named settings
    PovSettings pov;     // scene-file writer options
    RenderSettings render; // ray-tracer options
    WorkFileState workfile; // work-file writer status
    ScreenState screen;  // window metrics and the message column
    PovState writer;     // scene-file writer while it runs, texture library
    XformState xform;    // transform engine: mode and points of the last walk
    ExchangeState exchange; // DXF and RAW export and import
    MenuState menus;     // pull-down menu bar and side menu
};

extern State g;

void State_Reset();
