// model_state.h - state of the facet sink and of the transform engine.
// Types only.
#pragma once

#include "scene/point3.h"

struct Layer;

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
    void (*use_layer)(const Layer* layer);            // screen: place points as in `layer` (null: as they are)
    int (*nothing_drawn)();                           // screen: a facet dropped; 1 when the user stopped the drawing
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
    int explode_failed = 0;     // explode: an object or the mesh grid could not be made
};

enum XformMode : int {
    XFORM_COPY = 1,
    XFORM_MOVE = 2,
    XFORM_SCALE = 3,
    XFORM_GRAVITY = 5,
    XFORM_TEXTURE = 6,
    XFORM_LAYER = 7,
    XFORM_ERASE = 8,
    XFORM_ROTATE_H = 9,     // about the view's horizontal axis through the base
    XFORM_ROTATE_V = 10,    // about the view's vertical axis through the base
    XFORM_ROTATE = 11,      // in the view plane about the base
    XFORM_ARRAY = 12,
    XFORM_NO_SHADOW = 14,
    XFORM_SMOOTH = 15,
    XFORM_MIRROR = 16,      // runs as XFORM_MIRROR_COPY or XFORM_MIRROR_MOVE by mirror_erase
    XFORM_MIRROR_COPY = 80, // mirrored copies beside their sources
    XFORM_MIRROR_MOVE = 81, // the sources themselves mirrored
};

enum ArrayType : int { ARRAY_RECT = 0, ARRAY_POLAR = 1, ARRAY_SCALE = 2, ARRAY_PATH = 3 };

enum ScaleOff : int { SCALE_OFF_X = 1, SCALE_OFF_Y = 2, SCALE_OFF_Z = 4 };

struct PolylineData;

struct XformState {
    int xform_mode = 0;               // transform mode of the running walk
    Point3 xform_base{0, 0, 0};       // base point
    Point3 xform_second{0, 0, 0};     // second point (offset, copy, scale ... point)
    Point3 xform_delta{0, 0, 0};      // xform_second - xform_base
    double xform_angle = 0;           // view-plane rotation angle in radians
    double mirror_angle = 0;          // direction of the mirror line in the view plane, radians
    Point3 axis_h{1, 0, 0};           // view axes of the walk: screen right ...
    Point3 axis_v{0, 0, 1};           // ... screen up ...
    Point3 axis_d{0, 1, 0};           // ... towards the viewer
    int scale_off = 0;                // ScaleOff bits: axes left out of scaling
    int array_type = ARRAY_RECT;      // ArrayType
    int array_count = 0;              // copies per object
    double array_angle = 360;         // polar array: degrees spread over the copies
    const PolylineData* array_path = nullptr;  // path array: the path polyline
    Point3 array_step{0, 0, 0};       // path array: offset of the copy being made from the last
    double Gravity = 1.0;             // gravity strength; negative repels
    double Power = 2.0;               // distance exponent of gravity
    int mirror_erase = 0;             // mirrored objects replace their sources
    int explode_erase = 1;            // exploded sources are removed
    int assign_no_shadow = 0;         // value ASSIGN gives the No_shadow bit
    int assign_smooth = 0;            // value ASSIGN gives the Smooth_triangle bit
    char assign_texture[21] = "";     // texture name mode 6 gives
};

// Selection prompts and what they leave for their callers.
struct SelectionState {
    int Select_Single = 0;            // the caller needs exactly one object
    Layer* first_layer = nullptr;     // layer of the object Selection_First found
    int first_colour = 0;             // that layer's drawing colour
};
