// workfile_state.h - state of the work-file writer. Types only.
#pragma once

struct WorkFileState {
    int Write_Error = 0;   // sticky: set by the first failed write of a save
};
