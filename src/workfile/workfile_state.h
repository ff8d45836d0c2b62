// workfile_state.h - state of the work-file writer. Types only.
#pragma once

// Why the last load or merge failed.
enum WorkFileProblem : int {
    WF_LOADED = 0,       // no problem
    WF_CANT_OPEN = 1,    // the file could not be opened (missing, no permission)
    WF_FOREIGN = 2,      // not a work file (or a merge of a 2.0A file)
    WF_DAMAGED = 3,      // a work file that ends early or is damaged: part of it was read
};

struct WorkFileState {
    int Write_Error = 0;    // sticky: set by the first failed write of a save
    int Load_Problem = 0;   // WorkFileProblem of the last load or merge
    int Load_Errno = 0;     // errno of a file that could not be opened
};
