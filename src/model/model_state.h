// model_state.h - state of the facet sink and of the transform engine.
// Types only.
#pragma once

#include "scene/point3.h"

// What a consumer takes. A null hook means "not taken". Hooks that return
// an int return 1 when the generator must stop (interrupted, hit found).
struct OutputConsumer {
    int on_screen;                                    // 1: the wireframe picture
    void (*move_to)(Point3 p);
    int (*line_to)(Point3 p);
    int (*facet)(const Point3* corner, int n, int mask);  // n is 3 or 4
    int (*triangle)(Point3 a, Point3 b, Point3 c);
    int (*grid_begin)(int rows, int cols);            // 1: collects; 0: failed, skip grid
    void (*grid_point)(int r, int c, Point3 p);
    int (*grid_end)();
    void (*redraw_all)();                             // screen: redraw every viewport
};

enum OutputModeCode : int {
    OUTPUT_SCREEN = 0,    // 3D pen of the active viewport
    OUTPUT_POV = 1,       // triangle spool of the scene-file writer
    OUTPUT_DXF = 2,       // 3DFACE entities
    OUTPUT_RAW = 3,       // RAW triangle lines
    OUTPUT_EXPLODE = 4,   // facets become objects
    OUTPUT_SHADE = 5,     // filled polygons of the shaded view
    OUTPUT_MODES = 6,
};

struct OutputState {
    int Output_Mode = OUTPUT_SCREEN;   // what the generators produce, 0..5
    OutputConsumer consumer[OUTPUT_MODES] = {};   // filled at start-up by the command layer
    int pen_valid = 0;          // the last move/line went to a finite point
    int grid_rows = 0;          // R of the grid being walked
    int grid_cols = 0;          // C of the grid being walked
    int grid_collect = 0;       // the consumer collects the grid itself
    int grid_skip = 0;          // grid collection failed: ignore the rest of it
    Point3* explode_grid = nullptr;  // explode: (R + 1) x (C + 1) collected corners
    int explode_rows = 0;       // explode: R of explode_grid
    int explode_cols = 0;       // explode: C of explode_grid
};

enum XformMode : int {
    XFORM_COPY = 1,
    XFORM_MOVE = 2,
    XFORM_SCALE = 3,
    XFORM_GRAVITY = 5,
    XFORM_TEXTURE = 6,
    XFORM_LAYER = 7,
    XFORM_ERASE = 8,
};

struct XformState {
    int xform_mode = 0;               // transform mode of the running walk
    Point3 xform_base{0, 0, 0};       // base point
    Point3 xform_second{0, 0, 0};     // second point (offset, copy, scale ... point)
    Point3 xform_delta{0, 0, 0};      // xform_second - xform_base
    double xform_angle = 0;           // view-plane rotation angle in radians
};
