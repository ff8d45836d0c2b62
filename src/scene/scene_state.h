// scene_state.h - state of the scene model: the layer list, the selection
// count and the allocation counters. Types only.
#pragma once

struct Layer;

struct MemState {
    long fail_countdown = 0;  // >0: the allocation that brings it to 0 fails
    long live_blocks = 0;     // blocks handed out and not yet freed
    long allocations = 0;     // Mem_Alloc and Mem_Realloc calls so far (tests count sites)
};

struct SceneState {
    Layer* First_Layer = nullptr;     // head of the layer list
    Layer* Current_Layer = nullptr;   // receives new objects; set while any layer exists
    int Layer_Base = 0;               // layers before a merge; positions count after it
    int Default_No_shadow = 0;        // flags of new objects
    int Default_Smooth = 0;
    int Selected_Count = 0;           // objects in the selection set
    int Scene_Changed = 0;            // a layer colour changed: redraw wanted
};
