// view_commands.h - the view commands (redraw, zoom, pan, view kinds,
// DUPLICATE, AREA, ELEVATION, VPOINT), the redraw entry points and the
// viewport side of the prompt (maximise, switch by click, pick).
//
// Every Com_* here is transparent: it may run inside a waiting prompt of
// another command. Each returns 1 when it finished (or was declined) and 0
// when its own input was replaced by another command code.
#pragma once

#include "scene/object.h"

// --- commands, by command code ---
int Com_Redraw();       // 401: the current viewport
int Com_ZoomIn();       // 402: zoom to a picked rectangle
int Com_Unzoom();       // 403: back to the previous zoom
int Com_ZoomAll();      // 405: frame every visible object
int Com_Pan();          // 407: move the centre by a picked difference
int Com_ZoomOut();      // 408: AREA doubled
int Com_RedrawAll();    // 410: every viewport
int Com_View3D();       // 421: the perspective view of the camera
int Com_ToggleWorld();  // 422: WORLD on/off
int Com_ViewTop();      // 423
int Com_ViewBottom();   // 424
int Com_ViewRight();    // 425
int Com_ViewLeft();     // 426
int Com_ViewFront();    // 427
int Com_ViewBack();     // 428
int Com_Duplicate();    // 430: copy the current view into a picked viewport
int Com_Area();         // 602: the drawing area (view size)
int Com_Elevation();    // 603: the working plane's elevation
int Com_Vpoint();       // 604: pitch and heading of a WORLD view

// --- redraw ---
// Every viewport of the layout with its objects and borders.
void Views_RedrawAll();
// The active viewport: furniture, then the objects.
void View_Refresh();

// --- zoom stacks (one per stored slot) ---
void Zoom_ResetAll();   // free all, then one node per slot from the view it shows
void Zoom_FreeAll();    // free all four stacks
void SaveZoom();        // push the active view onto the current slot's stack
int Zoom_Depth(int slot);   // nodes on a slot's stack

// --- view changes without prompts (the commands' arithmetic) ---
// Active view to the window p1..p2 (world points of the working plane);
// ends with SaveZoom. Nothing for the 3D view.
void View_ZoomWindow(Point3 p1, Point3 p2);
// Centre moved by -(offset - base); ends with SaveZoom.
void View_PanBy(Point3 base, Point3 offset);

// --- the viewport side of the prompt ---
// Insert key: the current viewport alone on the drawing area, or back to the
// layout. Returns 1.
int Views_ToggleMaximise();
// The viewport under pixel (x, y) becomes the active one; 1 when it changed.
int Views_SwitchAt(int x, int y);
// Left click inside the active viewport: the pixel becomes the cursor point
// and is offered to the prompt (the result of Input_AcceptPoint).
int View_PickHandler(int x, int y);

// --- interactive drag ---
// Button-state bits of a press: Ctrl + left pans (8), Ctrl + right zooms (4),
// Ctrl + middle rotates (2); 0 when the press is not a drag.
int View_DragBits(int buttons, int shift_flags);
// Follows the mouse while a button is held, changing the active view by
// `bits`; each step redraws until the next event arrives. On release the
// zoom stack is pushed and the view redrawn. Returns 1.
int View_Drag(int bits);
