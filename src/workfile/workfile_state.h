// workfile_state.h - state of the work-file writer. Types only.
#pragma once
#include <cstddef>

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
    int Load_Count = 0;     // loads that replaced the scene so far
    int Snapshot_Mode = 0;  // writing a snapshot: key 20 is written as 0
    int Restore_Slot = 0;   // restoring a snapshot: the viewport made current (0: a load)
    int Snapshot_Fail = 0;  // tests: the n-th snapshot block from now fails (0: never)
};

// A scene kept in memory for undo: the work-file sections of the settings,
// the output options and the layers with their objects, then the four
// stored viewports. `scene_size` bytes come before the viewports, so that
// two snapshots can be compared without the views (a zoom changes no scene).
// The current viewport is not in it (key 20 is written as 0).
struct WfSnapshot {
    unsigned char* data = nullptr;   // malloc block (not counted with the scene's)
    size_t size = 0;
    size_t scene_size = 0;
};
