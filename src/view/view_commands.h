// view_commands.h - what the view commands and the prompt do to the views:
// redraw, the zoom stacks, zoom and pan arithmetic, maximise, the switch by
// click and the interactive drag. Nothing here asks the user anything.
#pragma once

#include "scene/object.h"

// --- redraw ---
// Every viewport of the layout with its objects and borders.
void Views_RedrawAll();
// The active viewport: furniture, then the objects.
void View_Refresh();
// A redraw that has run for a tenth of a second stops at a key or a mouse
// button (" Terminated..."); what it has not drawn yet stays undrawn and the
// key or click is left for the prompt.

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
// UNZOOM's step: the active view back to the previous entry of its slot's
// stack, whose newest entry is dropped.
enum ZoomBack { ZOOM_NO_STACK = 0, ZOOM_NO_PREVIOUS = 1, ZOOM_DONE = 2 };
int Zoom_Back();
// ZOOMALL's measure: the active viewport drawn in extents mode; 1 with the
// world corners of what was drawn, 0 when nothing was.
int View_MeasureExtents(Point3* p1, Point3* p2);

// --- the viewport side of the prompt ---
// Insert key: the current viewport alone on the drawing area, or back to the
// layout. Returns 1.
int Views_ToggleMaximise();
// The viewport under pixel (x, y) becomes the active one; 1 when it changed.
int Views_SwitchAt(int x, int y);

// --- interactive drag ---
// Button-state bits of a press: Ctrl + left pans (8), Ctrl + right zooms (4),
// Ctrl + middle rotates (2); 0 when the press is not a drag.
int View_DragBits(int buttons, int shift_flags);
// Follows the mouse while a button is held, changing the active view by
// `bits`; each step redraws until the next event arrives. On release the
// zoom stack is pushed and the view redrawn. Returns 1.
int View_Drag(int bits);
