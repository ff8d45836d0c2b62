// viewport.h - viewport records: set-up, setters, projection, layouts and
// slots, and the 3D pen. The records themselves are in view_state.h.
#pragma once

#include "view/view_state.h"

// --- record set-up and setters (viewport.cpp) ---
void View_Init(Viewport* vp);
void View_SetRect(Viewport* vp, double x1, double y1, double x2, double y2);
void View_SetArea(Viewport* vp, double a);
void View_SetKind(Viewport* vp, int kind);
void View_SetPitch(Viewport* vp, double deg);
void View_SetHeading(Viewport* vp, double deg);
void View_SetCamPitch(Viewport* vp, double deg);
void View_SetCamHeading(Viewport* vp, double deg);
void View_SetCamTwist(Viewport* vp, double deg);
void View_SetFov(Viewport* vp, double deg);
// Aims the shared camera matrix from cam towards tar; 0 (matrix unchanged)
// when cam and tar coincide or are not finite.
int View_LookAt(Viewport* vp, Point3 cam, Point3 tar);
void View_SetCentre(Viewport* vp, Point3 p);
Point3 View_GetCentre(const Viewport* vp);
// The working plane's elevation: the centre's component towards the viewer.
double View_GetElevation(const Viewport* vp);
// Moves the centre along the viewing axis to elevation e.
void View_SetElevation(Viewport* vp, double e);
// src copied into dst, which keeps its screen rectangle.
void View_CopyInto(Viewport* dst, const Viewport* src);
void View_ResetExtents(Viewport* vp);
// Angle in degrees brought into [0, 360); NaN and infinities give 0.
double View_NormAngle(double deg);
// Title of the view kind ("TOP", "WORLD [TOP]", "3D"), "" when it has none.
const char* View_Title(const Viewport* vp);

// --- projection (viewport.cpp) ---
void View_Project(Viewport* vp, Point3 p);
void View_ScreenToWorld(Viewport* vp, int sx, int sy);

// --- the five records together: what the CAM, TAR, UP and FOV settings do ---
void Views_SetCam(Point3 cam);
void Views_SetTar(Point3 tar);
void Views_SetUp(Point3 up);
void Views_SetFov(double deg);

// --- layouts and slots (layout.cpp) ---
// Sets the screen size and the drawing area rows used by layouts and clamping.
void Views_SetScreen(int width, int height, int area_top, int area_bottom);
// Narrows the drawing area to the columns left of x (the side menu); the
// screen size used for clamping and the 3D view stays.
void Views_SetAreaWidth(int x);
// Rectangle (left, top, right, bottom) of `slot` (1..4) in layout n (1..7);
// 0 when the layout does not use that slot.
int Views_LayoutRect(int n, int slot, double rect[4]);
void Views_SetLayout(int n, int keep);
void Views_StoreActive();               // Active_Viewport back into its slot
void Views_SelectSlot(int n);           // store Active, then load slot n into it
void Views_Reset();                     // the start-up views

// --- the 3D pen (pen.cpp) ---
void View_MoveTo(Viewport* vp, Point3 p);
// 1 when drawing must stop (event waiting, or pick box hit), else 0.
int View_LineTo(Viewport* vp, Point3 p);
// During a redraw: 1 when the user has asked it to stop (polled as a line
// would be, for work that draws nothing).
int View_PollStop();
int View_DrawPixelRect(Viewport* vp, int x1, int y1, int x2, int y2);
// f of the 3D view: a camera-space point (x, y, z) is at pixel
// x = screen_cx - f x / z, y = screen_cy + half_height_px y / z.
double View_PerspectiveScale(const Viewport* vp);
// Forgets the mouse snapshot so that the next poll takes a fresh one.
void View_BeginInterruptible();
