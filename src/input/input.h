// input.h - the prompt: what a command asks and what the user answered, the
// command loop and the command-name table.
//
// A command sets the input context (keywords, mask, rubber band) and calls
// Input_Get; Input_Wait runs the mouse and keyboard steps until an answer
// arrives. Command codes that arrive while a prompt waits either run inside
// it (transparent view commands, point modifiers) or replace the command.
#pragma once

#include <vector>

#include "scene/object.h"

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
};

enum { INPUT_TEXT_MAX = 126 };   // characters typed into the input line

enum RubberShape { RUBBER_NONE = 0, RUBBER_LINE = 1, RUBBER_RECT = 2, RUBBER_DRAG = 5, RUBBER_CIRCLE = 7 };

using CommandFn = int (*)();

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
    int reprompt;            // a refused point wants the prompt printed again
    InputContext saved;      // context put aside by a transparent command
    // command.dat
    struct CommandRec {
        char name[40];       // as typed, at most 39 characters
        int code;            // command code
        int hotKey;          // character code, -1 none
    };
    std::vector<CommandRec> CommandTable;   // grows past 200 lines
    int commandsUnread = 1;  // command.dat not read yet
    // Commands registered at run time (beyond the built-in table).
    struct ExtraCommand {
        int code;
        CommandFn run;
        int transparent;
    };
    std::vector<ExtraCommand> extraCommands;
};

// --- prompt (prompt.cpp) ---
void Input_SetMask(int flags);
// keywords may be null (none); the two permissions are stored in any case.
void Input_SetKeywords(const char* keywords, int allowNumber, int allowString);
// Shape "LINE", "RECT", "CIRCLE" (prefix, any case), anything else is an
// object drag with transform "XROT", "YROT", "ZROT", "SCALE", "GRAVITY",
// "MIRROR" or MOVE. basePoint is stored in every case.
void Input_SetRubberBand(const Point3* basePoint, const char* shapeName, const char* transformName);
// Asks `prompt`; 0 when another command code replaced the input, else 1.
// The answer is in g.input.InputResult; a point is also copied to pointOut
// (x, y, z) when it is not null.
int Input_Get(const char* prompt, Point3* pointOut);
// The wait: 1 command code, -1 empty Enter, -2 string, -3 number,
// -4 keyword, -5 point.
int Input_Wait();
int Input_GetCommand(const char* prompt);
// Clears mask, keywords and permissions, and the rubber band (the prompt
// text and the base point stay).
void Input_ResetContext();
void Input_SaveContext();
void Input_RestoreContext();
// Index (1-based) of `word` in a comma-separated keyword list, 0 when none.
int Input_MatchKeyword(const char* list, const char* word);

// --- coordinates and points (coords.cpp) ---
// Typed text as coordinates: 0 not coordinates, 1 invalid, -3 number,
// -5 a point (cursorPoint set).
int Input_ParseCoords(const char* text);
// Offers cursorPoint as the answer: -5 accepted, 0 refused or still waiting.
int Input_AcceptPoint();

// --- cursor and rubber band (cursor.cpp) ---
// Moves the cursor to pixel (x, y): cursorPoint, ORTHO, band and status line.
void Cursor_Update(int x, int y);
void Cursor_Draw();
void Cursor_Erase();
// The ORTHO rule alone: the largest component of d (X wins ties, then Y).
Point3 Input_OrthoDelta(Point3 d);

// --- edge lookup for End point / Mid point (snap.cpp) ---
// The first object edge that passes through the pick box around pixel
// (x, y) in the active viewport; 1 with its ends in a and b.
int Snap_FindEdge(int x, int y, int half, Point3* a, Point3* b);

// --- command loop (command_loop.cpp) ---
// Runs commands until EXIT or NEW ends the loop.
void CommandLoop();
int Command_Transparent(int result);
// Runs the command of a code; 1 when the code has no command.
int Command_Run(int code);
int Command_IsTransparent(int code);
// Adds (or replaces) the command of a code at run time.
void Command_Register(int code, CommandFn run, int transparent);

// --- command.dat (command_table.cpp) ---
int Command_Lookup(const char* name);
int Command_HotKey(int character);
// Reads command.dat from the support directory; 1 when it was read.
int Command_ReadTable();
