// input.h - the prompt: what a command asks and what the user answered.
//
// A command sets the input context (keywords, mask, rubber band) and calls
// Input_Get; Input_Wait runs the mouse and keyboard steps until an answer
// arrives. Command codes that arrive while a prompt waits either run inside
// it (transparent view commands, point modifiers) or replace the command.
#pragma once

#include "input/input_state.h"

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
// Draws the status line again (layer, ORTHO, SNAP, coordinates).
void Status_Refresh();
// The ORTHO rule alone: the largest component of d (X wins ties, then Y).
Point3 Input_OrthoDelta(Point3 d);

// --- edge lookup for End point / Mid point (snap.cpp) ---
// The first object edge that passes through the pick box around pixel
// (x, y) in the active viewport; 1 with its ends in a and b.
int Snap_FindEdge(int x, int y, int half, Point3* a, Point3* b);

// --- selection hit passes (select_hits.cpp) ---
// One hit pass: the rectangle in pixels of the active viewport, what to do
// with the objects whose drawing enters it, and what it found.
struct SelectRequest {
    int x1, y1, x2, y2;   // any two corners; normalised by the pass
    int remove;           // 0 select the hits, 1 deselect them
    int first_only;       // stop at the first hit
    int by_layer;         // a hit takes its whole layer (not in single mode)
    int found;            // out: hits of this pass
    int total;            // out: Selected_Count afterwards
};
// Tests every object of the layers that are on (and of the layers they
// instance, placed as they are drawn there) against the rectangle; in add
// mode objects already selected are skipped, in remove mode those not
// selected. Changed objects are drawn in their new colour. Returns found.
int Select_Hits(SelectRequest* request);
// The square of half-size `half` pixels round a world point, projected
// into the active viewport, as a request.
SelectRequest Select_Around(Point3 p, int half);

// --- the Command prompt (prompt.cpp) ---
// Takes the code already chosen, or asks `prompt` until a command code
// arrives; the code is left in InputResult.code and remembered for repeat.
int Input_GetCommand(const char* prompt);
// The hook Input_Wait calls with each completed input (the command layer's
// transparent commands and point modifiers): 1 asks again, 0 passes it on.
void Input_SetTransparentHook(int (*hook)(int result));
// The hook the wait calls on each pass, after the display's events were
// taken (the command layer reports a ray tracer that has finished).
void Input_SetIdleHook(void (*hook)());
