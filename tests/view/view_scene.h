// view_scene.h - small scenes and screen probes shared by the drawing, zoom
// and view-command tests.
#pragma once
#include <cmath>
#include <vector>

#include "gfx/headless/headless.h"
#include "gfx/pixels.h"
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

// Slot (1..slots) whose stored rectangle holds the pixel, 0 when none.
inline int SlotAt(double x, double y, int slots) {
    for (int s = 1; s <= slots; s++) {
        const Viewport& vp = g.view.Viewports[s];
        if (x >= vp.rect_left && x <= vp.rect_right && y >= vp.rect_top && y <= vp.rect_bottom)
            return s;
    }
    return 0;
}

// A primitive of `type` with its shape values, moved to `at`.
inline void AddPrim(int type, Point3 at, double p1, double p2 = 0, double p3 = 0,
                    Point3 size = {}) {
    PrimitiveData d = Primitive_Default();
    d.prim_type = type;
    d.p1 = p1, d.p2 = p2, d.p3 = p3;
    d.size = size;
    d.translate = at;
    Add_Primitive(&d);
}

// A few primitives and a polyline surface in two layers.
inline void BuildSmallScene() {
    AddLayer(LGREEN);
    AddPrim(PRIM_SPHERE, {-4, 2, 0}, 2);
    AddPrim(PRIM_BOX, {3, 0, -5}, 0, 0, 0, {2, 2, 2});
    AddPrim(PRIM_CONE, {4, 0, 3}, 1.5, 0, 3);
    AddPrim(PRIM_TORUS, {0, 0.5, 0}, 2.5, 0.5);

    AddLayer(LCYAN);
    const int M = 10, N = 10;
    static Point3 pts[(M + 1) * (N + 1)];
    for (int i = 0; i <= M; i++)
        for (int j = 0; j <= N; j++) {
            double x = -7 + 14.0 * j / N, z = -7 + 14.0 * i / M;
            pts[i * (N + 1) + j] = {x, -2 + 0.8 * std::sin(x * 0.7) * std::cos(z * 0.5), z};
        }
    PolylineData mesh = Poly_Default();
    mesh.form = FORM_POLY_MESH;
    mesh.poly_flags = 0;
    mesh.size_m = M;
    mesh.size_n = N;
    mesh.count = (M + 1) * (N + 1);
    mesh.points = pts;
    Poly_AddToScene(&mesh);
}
