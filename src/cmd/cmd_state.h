// cmd_state.h - state of the command layer: commands added at run time.
// Types only.
#pragma once

#include <vector>

#include "cmd/undo_state.h"

using CommandFn = int (*)();   // 1 finished, 0 its input was replaced by another code

// A command added (or replaced) at run time, beyond the built-in table.
struct ExtraCommand {
    int code;
    CommandFn run;
    int transparent;   // runs inside a waiting prompt
};

struct CmdState {
    std::vector<ExtraCommand> extraCommands;   // searched before the built-in table
    int sceneChanged;   // the layers dialog changed what the views show
    UndoState undo;     // UNDO and REDO steps
};
