// cmd_shapes.cpp - facets and polygon solids: FACE, TRIANGLE, PCUBE,
// PYRAMID, WEDGE and MESH, and the questions every ready-made shape asks
// (shape_support.h).
//
// FACE and TRIANGLE draw the edges of the corners given so far in the
// layer's colour; U at a corner prompt takes the last corner back (at
// corner #2 the command starts again from corner #1). Enter at FACE's
// corner #4 makes a triangular face (corner #4 = corner #3); Enter at any
// other corner gives the command up. The working edges are wiped off on
// every way out that makes nothing.
//
// The solids are laid out in the active view's frame (model/shapes.h). A
// length or radius is a typed number or the distance of a picked point from
// the first point. Point arrays are allocated before the record is added,
// so that running out of memory leaves the scene as it was.
#include <cstdio>

#include "base/message.h"
#include "cmd/ask.h"
#include "cmd/cmd.h"
#include "cmd/codes.h"
#include "cmd/poly_support.h"
#include "cmd/shape_support.h"
#include "input/input.h"
#include "model/selection.h"
#include "scene/mem.h"
#include "state.h"

namespace {

const int MASK_FIRST = 16;
const int MASK_LINE = 20;
const int MASK_RADIUS = 22;
const int MASK_NUMBER = 23;
const int MASK_DEFAULT = 4;   // Enter takes the default shown
const int MASK_CORNER = 0;    // Enter gives "nothing"

// A length with its default shown by `format` ("...<%g>: "): Enter takes it.
ShapeGot AskLengthOr(const char* format, Point3 base, double dflt, double* value) {
    char prompt[160];
    snprintf(prompt, sizeof prompt, format, dflt);
    Input_SetRubberBand(&base, "LINE", nullptr);
    AskAnswer a;
    if (!Ask_Any(prompt, nullptr, 1, MASK_DEFAULT, &a)) return SHAPE_REPLACED;
    if (a.kind == 0) *value = Vec_Length(Vec_Sub(a.point, base));
    else if (a.kind == -3) *value = a.number;
    else *value = dflt;
    return SHAPE_VALUE;
}

// A polygon solid's 8 points into a new polyline of `form`.
int AddSolid(int form, const Point3 P[8], const char* failure) {
    Point3* points = Shape_Points(8, failure);
    if (!points) return 1;
    for (int k = 0; k < 8; k++) points[k] = P[k];
    PolylineData poly = Poly_Default();
    poly.form = form;
    poly.points = points;
    poly.count = 8;
    return Shape_Add(&poly);
}

// The corners of FACE (4) or TRIANGLE (3) with their prompts. 1 with all
// corners (*count of them given: FACE may stop at 3), 0 replaced, -1 given up.
int AskCorners(const char* name, int want, Point3 corner[4], int* count) {
    PolylineData drawn = Poly_Default();   // the edges so far, drawn as a polyline
    drawn.points = corner;
    auto wipe = [&] {
        if (drawn.count >= 2) PolyCmd_DrawRecord(&drawn, g.config.colors.view_bkcolor);
    };
    const int colour = Selection_LayerColour(g.scene.Current_Layer);
    char prompt[80];
    int n = 0;
    for (;;) {
        if (n == 0) {
            snprintf(prompt, sizeof prompt, "\n%s> Corner #1: ", name);
            ShapeGot got = Shape_AskPoint(prompt, &corner[0]);
            if (got != SHAPE_VALUE) return got == SHAPE_REPLACED ? 0 : -1;
            n = 1;
            continue;
        }
        snprintf(prompt, sizeof prompt, "\n%s> Corner #%d <Undo>: ", name, n + 1);
        Point3 last = corner[n - 1];
        Input_SetRubberBand(&last, "LINE", nullptr);
        AskAnswer a;
        if (!Ask_Any(prompt, "U", 0, MASK_CORNER, &a)) {
            wipe();
            return 0;
        }
        if (a.kind == 1) {   // Undo: the last corner back
            wipe();
            drawn.count = --n >= 2 ? n : 0;
            if (drawn.count) PolyCmd_DrawRecord(&drawn, colour);
            continue;
        }
        if (a.kind != 0) {
            if (n == 3 && want == 4) {   // a triangular face
                corner[3] = corner[2];
                wipe();
                *count = 3;
                return 1;
            }
            wipe();
            return -1;
        }
        corner[n++] = a.point;
        if (n == want) {
            wipe();
            *count = n;
            return 1;
        }
        wipe();
        drawn.count = n;
        PolyCmd_DrawRecord(&drawn, colour);
    }
}

// A new facet object shown, or "\nOut of Memory" when it could not be added.
int Show(Object* obj) {
    if (obj) Create_Show(obj);
    else Msg_Printf("\nOut of Memory");
    return 1;
}

}  // namespace

// --- shape_support.h ------------------------------------------------------------------

ShapeGot Shape_AskPoint(const char* prompt, Point3* p) {
    int got;
    if (!Ask_Point(prompt, MASK_FIRST, p, &got)) return SHAPE_REPLACED;
    return got ? SHAPE_VALUE : SHAPE_NONE;
}

ShapeGot Shape_AskLength(const char* prompt, Point3 base, bool radius, double* value, Point3* at) {
    Input_SetRubberBand(&base, radius ? "CIRCLE" : "LINE", nullptr);
    AskAnswer a;
    if (!Ask_Any(prompt, nullptr, 1, radius ? MASK_RADIUS : MASK_LINE, &a)) return SHAPE_REPLACED;
    if (a.kind == 0) {
        *value = Vec_Length(Vec_Sub(a.point, base));
        if (at) *at = a.point;
        return SHAPE_VALUE;
    }
    if (a.kind == -3) {
        *value = a.number;
        if (at) *at = Vec_AddScaled(base, g.view.Active_Viewport.axis_h, a.number);
        return SHAPE_VALUE;
    }
    return SHAPE_NONE;
}

ShapeGot Shape_AskNumber(const char* prompt, double* value) {
    AskAnswer a;
    if (!Ask_Any(prompt, nullptr, 1, MASK_NUMBER, &a)) return SHAPE_REPLACED;
    if (a.kind != -3) return SHAPE_NONE;
    *value = a.number;
    return SHAPE_VALUE;
}

ShapeFrame Shape_ViewFrame(Point3 o) {
    const Viewport& vp = g.view.Active_Viewport;
    return ShapeFrame{o, vp.axis_h, vp.axis_v, vp.axis_d};
}

int Shape_Add(PolylineData* poly) {
    Object* obj = Poly_AddToScene(poly);
    Mem_Free(poly->points);
    poly->points = nullptr;
    if (!obj) {
        Msg_Printf("\nOut of Memory");
        return 1;
    }
    PolyCmd_Show(obj, g.scene.Current_Layer);
    return 1;
}

Point3* Shape_Points(long n, const char* failure) {
    Point3* p = n > 0 ? (Point3*)Mem_Alloc(sizeof(Point3) * (size_t)n) : nullptr;
    if (!p) Msg_Printf("%s", failure);
    return p;
}

// --- the commands -----------------------------------------------------------------------

int Com_Face() {   // 206
    Point3 c[4];
    int count = 0;
    const int r = AskCorners("FACE", 4, c, &count);
    if (r <= 0) return r < 0 ? 1 : 0;
    FaceData f;
    for (int k = 0; k < 4; k++) f.corner[k] = c[k];
    return Show(Add_Face(&f));
}

int Com_Triangle() {   // 205
    Point3 c[4];
    int count = 0;
    const int r = AskCorners("TRIANGLE", 3, c, &count);
    if (r <= 0) return r < 0 ? 1 : 0;
    TriangleData t;
    for (int k = 0; k < 3; k++) t.corner[k] = c[k];
    return Show(Add_Triangle(&t));
}

int Com_PCube() {   // 202
    Point3 corner;
    double x, y, z;
    ShapeGot got = Shape_AskPoint("\nPCUBE> Lower left corner: ", &corner);
    if (got == SHAPE_VALUE) got = Shape_AskLength("\nPCUBE> Y Length: ", corner, false, &y);
    if (got == SHAPE_VALUE) got = AskLengthOr("\nPCUBE> X Length <%g>: ", corner, y, &x);
    if (got == SHAPE_VALUE) got = AskLengthOr("\nPCUBE> Z Length <%g>: ", corner, x, &z);
    if (got != SHAPE_VALUE) return Shape_Stop(got);
    Point3 P[8];
    Shape_Cube(Shape_ViewFrame(corner), x, y, z, P);
    return AddSolid(FORM_POLY_CUBE, P, "\nCan't create PCube...Out Of Memory");
}

int Com_Pyramid() {   // 203
    Point3 c;
    double length, width, height;
    ShapeGot got = Shape_AskPoint("\nPYRAMID> Center point: ", &c);
    if (got == SHAPE_VALUE) got = Shape_AskLength("\nPYRAMID> Base Length: ", c, false, &length);
    if (got == SHAPE_VALUE) got = Shape_AskLength("\nPYRAMID> Base Width: ", c, false, &width);
    if (got == SHAPE_VALUE) got = Shape_AskLength("\nPYRAMID> Height of tip point: ", c, false, &height);
    if (got != SHAPE_VALUE) return Shape_Stop(got);
    Point3 P[8];
    Shape_Pyramid(Shape_ViewFrame(c), length, width, height, P);
    return AddSolid(FORM_POLY_PYRAMID, P, "\nCan't create Pyramid...Out Of Memory");
}

int Com_Wedge() {   // 204
    Point3 c;
    double height, width, length;
    ShapeGot got = Shape_AskPoint("\nWEDGE> Center point of trianlge edge #1: ", &c);
    if (got == SHAPE_VALUE) got = Shape_AskLength("\nWEDGE> Height of Wedge: ", c, false, &height);
    if (got == SHAPE_VALUE) got = Shape_AskLength("\nWEDGE> Width of Wedge: ", c, false, &width);
    if (got == SHAPE_VALUE) got = Shape_AskLength("\nWEDGE> Extrusion Length of Wedge: ", c, false, &length);
    if (got != SHAPE_VALUE) return Shape_Stop(got);
    Point3 P[8];
    Shape_Wedge(Shape_ViewFrame(c), height, width, length, P);
    return AddSolid(FORM_POLY_WEDGE, P, "\nCan't create Wedge...Out Of Memory");
}

int Com_Mesh() {   // 207
    Point3 c[4];
    char prompt[64];
    for (int k = 0; k < 4; k++) {
        snprintf(prompt, sizeof prompt, "\nMESH> Define corner #%d: ", k + 1);
        if (k > 0) Input_SetRubberBand(&c[k - 1], "LINE", nullptr);
        ShapeGot got = Shape_AskPoint(prompt, &c[k]);
        if (got != SHAPE_VALUE) return Shape_Stop(got);
    }
    int n, m;
    if (!Ask_NM(&n, &m)) return 0;
    Point3* grid = Shape_Points((long)(n + 1) * (m + 1), "\nCan't create Mesh...Out Of Memory");
    if (!grid) return 1;
    Shape_Mesh(c, n, m, grid);
    PolylineData mesh = Poly_Default();
    mesh.form = FORM_POLY_MESH;
    mesh.poly_flags = 0;
    mesh.size_m = n;
    mesh.size_n = m;
    mesh.points = grid;
    mesh.count = (n + 1) * (m + 1);
    return Shape_Add(&mesh);
}
