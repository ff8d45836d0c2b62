// undo_state.h - state of UNDO and REDO: the steps kept. Types only.
#pragma once

#include <vector>

#include "scene/point3.h"
#include "workfile/workfile_state.h"

// The camera as the scene file writes it; it lives in the viewports, whose
// other fields (zoom, view kind) are not part of the scene.
struct UndoCamera {
    Point3 cam, tar, up;
    double fov;
    double aspect;
    int shown;
};

// The scene before (undo) or after (redo) one command that changed it.
struct UndoStep {
    int code = 0;                 // the command, for the message
    WfSnapshot scene;             // objects, layers, settings, stored views
    int slot = 1;                 // current viewport
    UndoCamera camera{};
    long* selected = nullptr;     // malloc block: ordinals of the selected objects
    long selected_count = 0;
};

struct UndoState {
    std::vector<UndoStep> undo;   // oldest first
    std::vector<UndoStep> redo;   // oldest first; emptied by every new step
    UndoStep pending;             // taken before the running command
    int have_pending = 0;
    int loads = 0;                // g.workfile.Load_Count when pending was taken
    size_t bytes = 0;             // snapshot bytes kept in undo and redo
    int warned = 0;               // "steps dropped" said since the last full record
};
