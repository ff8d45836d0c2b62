// codes.h - every command code and point modifier by name.
//
// Menus, command.dat and hot keys all end in one of these integers; the
// command table (command_loop.cpp) maps them to command functions. 0 and 1
// are reserved: no code, and cancel.
#pragma once

enum CommandCode : int {
    CMD_NONE = 0,
    CMD_CANCEL = 1,

    // file
    CMD_EXIT = 101,
    CMD_NEW = 102,
    CMD_OPEN = 103,
    CMD_SAVE = 104,
    CMD_SAVE_AS = 105,
    CMD_MERGE = 106,
    CMD_IMPORT_DXF = 107,
    CMD_EXPORT_POV = 108,
    CMD_IMPORT_RAW = 120,
    CMD_EXPORT_RAW = 121,
    CMD_EXPORT_DXF = 122,
    CMD_CLEAR = 150,

    // create
    CMD_POLYLINE = 201,
    CMD_PCUBE = 202,
    CMD_PYRAMID = 203,
    CMD_WEDGE = 204,
    CMD_TRIANGLE = 205,
    CMD_FACE = 206,
    CMD_MESH = 207,
    CMD_BEZIER = 208,
    CMD_STAIRCASE = 209,
    CMD_SCREWTHREAD = 210,
    CMD_SPRING = 211,
    CMD_ARC = 212,
    CMD_CIRCLE = 213,
    CMD_COONS = 214,
    CMD_RULSURF = 215,
    CMD_EXTRUDE = 216,
    CMD_REVOLUTION = 217,
    CMD_CONE_SWEEP = 218,
    CMD_COMPLEX = 219,
    CMD_SPHERE = 220,
    CMD_TORUS = 221,
    CMD_DISC = 222,
    CMD_CUBE = 223,
    CMD_CONE = 224,
    CMD_CYLINDER = 225,
    CMD_HEIGHTFIELD = 226,
    CMD_PLANE = 227,
    CMD_SPOTLIGHT = 228,
    CMD_POINTLIGHT = 229,
    CMD_AREALIGHT = 230,
    CMD_CAMERA = 231,
    CMD_WALL = 232,

    // edit
    CMD_ERASE = 301,
    CMD_EDIT = 302,
    CMD_MOVE = 303,
    CMD_COPY = 304,
    CMD_ROTATE = 305,
    CMD_SCALE = 306,
    CMD_SELECT = 307,
    CMD_ASSIGN = 308,
    CMD_GRAVITY = 309,
    CMD_ARRAY = 310,
    CMD_EXPLODE = 311,
    CMD_PARRAY = 312,
    CMD_TRANSFORM_DIALOG = 313,
    CMD_GENERAL_DIALOG = 314,
    CMD_JOIN = 315,
    CMD_THICKEN = 316,
    CMD_MIRROR = 317,
    CMD_CHANGE_LAYER = 318,    // the selection into Current_Layer

    // transparent view commands
    CMD_REDRAW = 401,
    CMD_ZOOM_IN = 402,
    CMD_UNZOOM = 403,
    CMD_VIEW_NOTHING = 404,
    CMD_ZOOM_ALL = 405,
    CMD_PAN = 407,
    CMD_ZOOM_OUT = 408,
    CMD_REDRAW_ALL = 410,
    CMD_VIEWPORT_DIALOG = 420,
    CMD_VIEW_3D = 421,
    CMD_TOGGLE_WORLD = 422,
    CMD_VIEW_TOP = 423,
    CMD_VIEW_BOTTOM = 424,
    CMD_VIEW_RIGHT = 425,
    CMD_VIEW_LEFT = 426,
    CMD_VIEW_FRONT = 427,
    CMD_VIEW_BACK = 428,
    CMD_DUPLICATE = 430,

    // settings and dialogs
    CMD_LAYERS_DIALOG = 501,
    CMD_AIDS_DIALOG = 502,
    CMD_TEXTURE_DIALOG = 503,
    CMD_CAMERA_DIALOG = 510,
    CMD_SYSTEM_INFO = 511,
    CMD_SHAPE = 512,
    CMD_AREA = 602,
    CMD_ELEVATION = 603,
    CMD_VPOINT = 604,

    // point modifiers (only while a command runs)
    MOD_END_POINT = 701,
    MOD_MID_POINT = 702,
    MOD_CLICK_SCREEN = 705,
    MOD_X = 710,
    MOD_Y = 711,
    MOD_Z = 712,
    MOD_XY = 713,
    MOD_XZ = 714,
    MOD_YZ = 715,

    // render and ray-tracer settings
    CMD_RENDER = 801,
    CMD_OPTIONS_DIALOG = 802,
    CMD_DIRS_DIALOG = 803,
    CMD_FOG_DIALOG = 804,
    CMD_SHADE = 810,
    CMD_RENDER_BAT = 820,
    CMD_ABOUT = 901,

    // selection
    CMD_DESELECT_ALL = 951,
    CMD_PICK_LAYER = 952,      // one pick: select its whole layer
    CMD_UNPICK_LAYER = 953,    // one pick: deselect its whole layer
    CMD_PICK_OBJECT = 954,     // one pick: select the object
    CMD_UNPICK_OBJECT = 955,   // one pick: deselect the object
    CMD_WINDOW_SELECT = 956,   // one window: select what is in it
    CMD_WINDOW_DESELECT = 957, // one window: deselect what is in it

    // undo, beyond the hundreds above
    CMD_UNDO = 1101,
    CMD_REDO = 1102,
};
