// state.h - the one global state record.
//
// Every subsystem keeps its state in a sub-record declared in its own
// type-only state header (*_state.h); this file composes them and includes
// nothing else, so including it gives data, never functions. State_Reset()
// puts every field back to its start-up default (freeing the scene first)
// and installs the command layer's hooks again, so each test starts clean.
#pragma once

#include "cmd/cmd_state.h"
#include "exchange/exchange_state.h"
#include "gfx/gfx_state.h"
#include "input/input_state.h"
#include "model/model_state.h"
#include "pov/pov_state.h"
#include "scene/scene_state.h"
#include "startup/startup_state.h"
#include "ui/ui_state.h"
#include "view/view_state.h"
#include "workfile/workfile_state.h"

struct State {
    MemState mem;        // allocation hook and block count
    ConfigState config;  // configuration file values
    RunState run;        // work-file cycle and exit
    SceneState scene;    // layers and objects
    InputState input;    // prompt and its result
    ViewState view;      // viewports, shared camera, 3D pen
    OutputState output;  // Output_Mode and the consumer of each mode
    ShadeSettings shade; // shaded-view options
    ShadeRun shading;    // shaded view: buffers of the run in progress
    AidsState aids;      // drawing aids and redraw switches
    VarState vars;       // scratch values of the named settings
    PovSettings pov;     // scene-file writer options
    RenderSettings render; // ray-tracer options
    WorkFileState workfile; // work-file writer status
    ScreenState screen;  // window metrics and the message column
    PovState writer;     // scene-file writer while it runs, texture library
    XformState xform;    // transform engine: mode and points of the last walk
    SelectionState selection; // selection prompts: single mode, first selected object
    ExchangeState exchange; // DXF and RAW export and import
    MenuState menus;     // pull-down menu bar, side menu, command names
    BrowserState browser; // file browser: directory, name field, save-as flag
    DialogClip dialogClip; // where the dialog being drawn may draw
    long dialogCloses = 0;   // dialogs closed so far: one opened over another took its release
    const Dialog* runningDialog = nullptr;   // the dialog waiting in Dialog_Run, if any
    CmdState cmd;        // command layer
};

extern State g;

// Every field back to its start-up default; the command layer's hooks installed.
void State_Reset();
