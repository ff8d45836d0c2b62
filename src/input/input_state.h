// input_state.h - state of the prompt and its answer, the drawing aids and
// the scratch values of the named settings. Types only.
#pragma once

#include "scene/point3.h"

struct InputResultRec {
    int code;          // command code chosen; 0 none, 1 cancel
    int lastCode;      // last command started from the Command prompt (repeat)
    int kind;          // 0 point, -1 empty Enter, -2 string, -3 number, n >= 1 keyword n
    char text[128];    // the input line, at most 126 typed characters
    double number;     // value of a number answer
    Point3 point;      // the point of a point answer
};

// The part of the input state a transparent command saves and restores.
struct InputContext {
    char promptText[181];
    char keywordText[181];
    int keywordsOn, allowNumber, allowString, inputMask;
    int rubberShape, rubberTransform;
    Point3 basePoint;
    int cursorStyle;
    int currentCommand;
};

// What the cursor drawing left on the screen, so that drawing it again in
// XOR erases exactly that.
struct CursorMark {
    int x, y;              // mouse pixel
    int inView;            // drawn as crosshair/pick box (1) or arrow (0)
    int band;              // rubber band drawn
    int bx, by, cx, cy;    // band from base pixel to cursor pixel
    Point3 base, second;   // band from base point to cursor point (the drag preview's transform)
};

enum { INPUT_TEXT_MAX = 126 };   // characters typed into the input line

enum RubberShape { RUBBER_NONE = 0, RUBBER_LINE = 1, RUBBER_RECT = 2, RUBBER_DRAG = 5, RUBBER_CIRCLE = 7 };

struct InputState {
    char promptText[181];    // printed at the start of each wait
    char keywordText[181];   // comma-separated keywords, e.g. "Y,N"
    int keywordsOn;          // a keyword list is set
    int allowNumber;         // a plain number is accepted
    int allowString;         // any word is accepted as a string
    int inputMask;           // bit 1: points refused; bit 16: Enter repeats
    InputResultRec InputResult;
    int currentCommand;      // code of the running command; 0 at "Command:"
    int rubberShape;         // RubberShape; 0 also means "no base point"
    int rubberTransform;     // 2 MOVE, 3 SCALE, 5 GRAVITY, 9/10/11 X/Y/ZROT, 16 MIRROR
    Point3 basePoint;        // for relative and polar entry, ORTHO and the band
    int cursorStyle = 1;     // 1 crosshair, 3 (or more) pick box of that half-size
    int textLength;          // characters in InputResult.text
    Point3 cursorPoint;      // world point under the cursor, or the entered point
    double cursorScreen[2];  // its pixel position
    Point3 relDelta;         // cursorPoint - basePoint
    double polarDist;        // length of relDelta
    double polarAngle;       // its angle in degrees in the view plane
    double polarDepth;       // its component towards the viewer
    int pendingSnap;         // armed modifier 701, 702 or 705; 0 none
    int pointFilter;         // armed filter 710..715; 0 none
    Point3 filterPoint;      // coordinates collected by the filter
    int haveX, haveY, haveZ; // which of them are collected
    int lastMouse[2] = {-1, -1};  // last mouse position seen
    int lastButtons;         // buttons at that time
    int inActiveView;        // the mouse is inside the active viewport
    int cursorHidden = 1;    // the cursor is not drawn at the moment
    CursorMark cursorMark;   // what is drawn while cursorHidden is 0
    int transparentActive;   // a transparent command runs (no nesting)
    int abortFlag;           // per-command abort, cleared by the loop
    int typedPoint;          // cursorPoint came from typed coordinates (no ORTHO)
    int selectMode;          // a selection prompt runs: SNAP is off and may not be switched on
    int reprompt;            // a refused point wants the prompt printed again
    InputContext saved;      // context put aside by a transparent command
    int (*transparentHook)(int result) = nullptr;  // command layer: runs transparent commands
    void (*idleHook)() = nullptr;                  // command layer: news while a prompt waits
};

struct AidsState {
    int orthoOn = 0;            // ORTHO: rubber band kept to one axis
    int blipsOn = 0;            // BLIPS: mark accepted points
    int coordsMode = 1;         // COORDS_MODE: 1 absolute, 2 relative, 3 polar
    int Auto_Seg = 0;           // AUTO-SEG: use Seg_Value without asking
    int Seg_Value = 8;          // SEG_VALUE: automatic segment count, >= 2
    int Input_Line_Option = 1;  // drag the selection or the circle with the rubber band
    int Auto_Regen = 1;         // redraw after a change of the picture
    int Auto_Redraw = 0;        // after creating: redraw all views (1) or draw the object (0)
    int Auto_Deselect = 1;      // an edit deselects each object it processed
    int Erase_No_Confirm = 0;   // ERASE without asking
};

enum VarType { VAR_INT, VAR_DOUBLE, VAR_POINT, VAR_TEXT };

struct VarState {
    int Var_Int = 0;           // scratch value of an int setting
    double Var_Double = 0;     // scratch value of a double setting
    Point3 Var_Point{0, 0, 0}; // scratch value of a point setting
    char Var_Text[128] = "";   // scratch value of a text setting
    int Var_Type = VAR_INT;    // type of the setting last accessed
};
