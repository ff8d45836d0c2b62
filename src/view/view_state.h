// view_state.h - state of the views: the viewport record, the five records
// with the shared camera, the zoom stacks, the shaded-view options. Types only.
//
// Every command works on one working record, g.view.Active_Viewport. The four
// stored records g.view.Viewports[1..4] keep each screen viewport's settings
// (slot 0 is never used, so a slot number indexes the array directly);
// Current_Viewport names the slot the working record belongs to. Whenever
// the current viewport changes, the working record is first copied back into
// its slot and then the new slot is copied into it (whole-record copies).
// The 3D camera matrix is shared by all five records and lives in ViewState.
#pragma once

#include "scene/point3.h"

// View kinds (the VIEW field).
enum ViewKind : int {
    VIEW_TOP = 1,
    VIEW_BOTTOM = 2,
    VIEW_RIGHT = 3,
    VIEW_LEFT = 4,
    VIEW_FRONT = 5,
    VIEW_BACK = 6,
    VIEW_3D = 8,
    VIEW_SCREEN = 9,   // a point's x and y are pixels
};

// Pen modes (the line_mode field).
enum LineMode : int {
    LINE_DRAW = 0,
    LINE_INTERRUPTIBLE = 1,   // draw, then stop when an event is waiting
    LINE_HIT_TEST = 2,        // no drawing: does the segment cross pick_box?
};

struct Viewport {
    Point3 CAM{0, 0, 0};            // 3D view: camera location
    Point3 TAR{0, 0, 0};            // 3D view: look-at point
    Point3 UP{0, 1, 0};             // 3D view: up direction; light direction when shading
    Point3 eye_point{0, 0, 0};      // 3D view: camera-space x, y, depth of the last projected point
    Point3 axis_h{1, 0, 0};         // world direction of screen-right
    Point3 axis_v{0, 0, 1};         // world direction of screen-up
    Point3 axis_d{0, 1, 0};         // world direction towards the viewer
    int CENTER = 1;                 // draw the origin mark
    int GRID = 1;                   // draw grid dots
    int SNAP = 0;                   // snap picked points
    int AXIS = 1;                   // draw the axis arrows
    int title_on = 1;               // draw the view title
    int CAMERA = 0;                 // draw the camera icon
    int extents_mode = 0;           // the pen only measures screen extents
    int extents_found = 0;          // something was measured
    int line_mode = LINE_DRAW;      // LineMode
    int pick_box[4] = {0, 0, 0, 0}; // hit-test box in pixels: left, top, right, bottom
    int camera_valid = 0;           // CAM/TAR have been set through View_LookAt
    double screen_x = 0;            // pixel x of the last View_Project
    double screen_y = 0;            // pixel y of the last View_Project
    Point3 picked_point{0, 0, 0};   // world point of the last View_ScreenToWorld
    double FOV = 45.0;              // 3D view: vertical field of view in degrees
    double ext_max_x = 0;           // extents gathered in extents mode (see View_ResetExtents)
    double ext_min_x = 0;
    double ext_max_y = 0;
    double ext_min_y = 0;
    int COORDINATES = 0;            // show the cursor coordinates (same in all viewports)
    int WORLD = 0;                  // view turned by PITCH/HEADING
    Point3 ELEVATION{0, 0, 0};      // view centre; its axis_d component is the working plane
    int VIEW = VIEW_TOP;            // ViewKind
    int valid = 0;                  // the screen rectangle has been set
    int axis_order[3] = {1, 2, 3};  // kept for the work file; always 1, 2, 3
    double GRIDX = 1.0;             // grid spacing
    double GRIDY = 1.0;
    double GRIDZ = 1.0;
    double SNAPX = 1.0;             // snap spacing
    double SNAPY = 1.0;
    double SNAPZ = 1.0;
    double pixels_per_unit = 0;     // scale: pixels per world unit
    double PITCH = 0;               // degrees in [0, 360), for WORLD views
    double HEADING = 0;             // degrees in [0, 360), for WORLD views
    double cos_pitch = 1;           // cached from PITCH
    double sin_pitch = 0;
    double cos_heading = 1;         // cached from HEADING
    double sin_heading = 0;
    double AREA = 10.0;             // world distance from the centre to the top edge
    double area_half_width = 0;     // AREA scaled to the rectangle's half width
    double focal = 0;               // 1 / tan(FOV/2)
    double CAM_PITCH = 0;           // 3D view angles in degrees
    double CAM_HEADING = 0;
    double CAM_TWIST = 0;
    double cam_cos_pitch = -1;      // cached -cos(CAM_PITCH)
    double cam_sin_pitch = -0.0;    // cached -sin(CAM_PITCH)
    double cam_cos_heading = -1;    // cached -cos(CAM_HEADING)
    double cam_sin_heading = -0.0;  // cached -sin(CAM_HEADING)
    double cam_cos_twist = 1;       // cached cos(CAM_TWIST)
    double cam_sin_twist = 0;       // cached sin(CAM_TWIST)
    int half_width_px = 0;          // half the rectangle's width in pixels
    int half_height_px = 0;         // half the rectangle's height in pixels
    double rect_left = 0;           // pixel rectangle
    double rect_right = 639;
    double rect_top = 0;
    double rect_bottom = 479;
    double screen_cy = 0;           // pixel centre of the rectangle
    double screen_cx = 0;
    double pen_x = 0;               // pixel position of the 3D pen
    double pen_y = 0;
};

// Builds a record with every default of View_Init (usable in initialisers).
Viewport View_Initial();

// An affine map p -> m p + t: the layer transforms of the layers being drawn.
struct ViewXform {
    double m[3][3];
    Point3 t;
};

// One saved view of a slot's zoom stack (oldest first).
struct ZoomNode {
    ZoomNode* next;
    ZoomNode* prev;
    int VIEW;
    int WORLD;
    double AREA;
    double PITCH;
    double HEADING;
    Point3 centre;
};

enum { VIEW_XFORM_MAX = 32 };   // nesting plus instancing deeper than this is drawn untransformed

struct ViewState {
    Viewport Active_Viewport = View_Initial();  // the working record every command reads
    Viewport Viewports[5] = {View_Initial(), View_Initial(), View_Initial(), View_Initial(),
                             View_Initial()};   // stored slots 1..4; [0] unused
    int Current_Viewport = 1;       // slot (1..4) that Active_Viewport belongs to
    int Viewport_Layout = 1;        // screen layout 1..7
    int saved_layout = 1;           // layout remembered by maximise, for restore
    int select_viewport = 0;        // DUPLICATE: a pick chooses a viewport
    int suppress_redraw = 0;        // Views_SetLayout leaves redraw and zoom stacks alone
    Point3 row_x{1, 0, 0};          // shared 3D camera matrix: unit rows ...
    Point3 row_y{0, 1, 0};
    Point3 row_z{0, 0, 1};
    double t_x = 0;                 // ... and offsets
    double t_y = 0;
    double t_z = 0;
    double camera_aspect = 1.3333333; // the ray-tracer camera's aspect ratio
    int screen_width = 640;         // screen size in pixels (W, H)
    int screen_height = 480;
    int area_top = 15;              // drawing area: first pixel row (below the menu bar)
    int area_bottom = 435;          // drawing area: row below the last (input line starts here)
    int area_width = 640;           // drawing area: columns 0..area_width - 1 (left of the side menu)
    Point3 last_point{0, 0, 0};     // world point of the last pen move or line
    Point3 prev_point{0, 0, 0};     // the last point before that
    int interruptible = 0;          // every viewport draws as in LINE_INTERRUPTIBLE
    int poll_armed = 0;             // a mouse snapshot for event polling is held
    int poll_mouse_x = 0;           // mouse state when interruptible drawing began
    int poll_mouse_y = 0;
    int poll_mouse_buttons = 0;
    ViewXform xform[VIEW_XFORM_MAX] = {};  // [k]: layer transforms of levels 0..k composed
    int xform_depth = 0;            // entries of xform in use; 0 = points drawn as they are
    int user_interrupt = 0;         // the user asked to stop drawing (Scene_DrawObjects)
    int redraw_depth = 0;           // View_Refresh / Views_RedrawAll calls under way
    double redraw_start = 0;        // X11_Clock when the outermost of them began
    int marker_pending = 0;         // a last-point cross is drawn after the objects
    Point3 marker_point{0, 0, 0};   // world point of that cross
    int marker_color = 14;          // its colour (the caller's: an edit machine's vertex)
    ZoomNode* zoom_first[5] = {};   // zoom stack of each slot 1..4: oldest node ...
    ZoomNode* zoom_last[5] = {};    // ... and newest node
    int drag_active = 0;            // an interactive drag is running
    double poll_interval = 0.002;   // seconds of drawing between event polls of interruptible drawing; 0 = every segment
    double poll_last = 0;           // X11_Clock of the last poll
};

struct ShadeSettings {
    int Shade_Type = 2;      // 0..3: which colours faces and edges get
    int Shade_UseEdge = 0;   // type 0: edges in Edge_Color (1) or the layer colour (0)
    int Edge_Color = 7;      // palette index for edges
    int Face_Color = 0;      // palette index for faces (type 2)
};

enum { SHADE_POLY_MAX = 16 };   // corners a polygon given to the shader may have

// One row's end of the polygon being filled: its pixel column and depth.
struct ShadeSpan {
    int x;
    double depth;
};

// The shaded view while SHADE runs: the working buffers (allocated for one
// run, null otherwise) and the polygon buffer the facet sink fills.
struct ShadeRun {
    float* depth = nullptr;       // (W + 1) x (H + 1) depths, smaller is nearer
    unsigned* stamp = nullptr;    // same size: serial of the polygon whose outline last crossed the pixel
    ShadeSpan* left = nullptr;    // H + 1 rows: leftmost outline pixel of the polygon ...
    ShadeSpan* right = nullptr;   // ... and rightmost
    int stride = 0;               // W + 1: pixels per depth-buffer row
    int rows = 0;                 // H + 1
    int rect[4] = {0, 0, 0, 0};   // the viewport's pixels: left, top, right, bottom
    unsigned serial = 0;          // polygons shaded so far in this run
    int spinner = 0;              // progress mark shown last
    Point3 poly[SHADE_POLY_MAX] = {};   // polygon buffer: world corners ...
    int poly_mask = -1;           // ... and its visible edges (bit k: corner k to k + 1)
};
