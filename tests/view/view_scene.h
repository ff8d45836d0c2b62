// view_scene.h - small scenes and screen probes shared by the drawing, zoom
// and view-command tests.
#pragma once
#include <vector>

#include "gfx/headless/headless.h"
#include "headless_session.h"
#include "scene/layers.h"
#include "view/view_commands.h"
#include "view/view_draw.h"

// A plain two-point polyline in Current_Layer.
inline Object* AddLine(Point3 a, Point3 b) {
    Point3 pts[2] = {a, b};
    PolylineData p = Poly_Default();
    p.form = FORM_POLYLINE;
    p.poly_flags = 0;
    p.count = 2;
    p.points = pts;
    return Poly_AddToScene(&p);
}

// A new top-level layer (appended) drawn in `colour`.
inline Layer* AddLayer(int colour, int level = 0) {
    Layer* l = Layer_Append();
    l->color = colour;
    l->level = level;
    return l;
}

// The active viewport alone on the screen: TOP, centre at the origin, AREA
// 10, rectangle 0..639 x 0..479, no furniture but the background.
inline void BareTopView() {
    Viewport* vp = &g.view.Active_Viewport;
    View_Init(vp);
    View_SetRect(vp, 0, 0, 639, 479);
    vp->GRID = vp->AXIS = vp->CENTER = vp->title_on = 0;
    g.view.Viewport_Layout = 1;
    Views_StoreActive();
}

inline int CountColour(int x1, int y1, int x2, int y2, int colour) {
    int n = 0;
    for (int y = y1; y <= y2; y++)
        for (int x = x1; x <= x2; x++) n += Headless_Pixel(x, y) == colour;
    return n;
}

// Slot (1..slots) whose stored rectangle holds the pixel, 0 when none.
inline int SlotAt(double x, double y, int slots) {
    for (int s = 1; s <= slots; s++) {
        const Viewport& vp = g.view.Viewports[s];
        if (x >= vp.rect_left && x <= vp.rect_right && y >= vp.rect_top && y <= vp.rect_bottom)
            return s;
    }
    return 0;
}
