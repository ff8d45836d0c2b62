// prim_geom.cpp - geometry of the ray-tracer primitives: one grid walk per
// shape in the primitive's own axes (Y up), placed by scale, rotate, translate.
//
// Grid convention: P(r, c) is the grid point of row r and column c; cell
// (r, c) is the quadrilateral c0 = P(r, c), c1 = P(r+1, c), c2 = P(r+1, c+1),
// c3 = P(r, c+1). With this order the sink's grid mask (c1-c2 and c2-c3
// always, c0-c1 in column 0, c3-c0 in row 0) draws every grid edge once.
// Rows and columns run r = 0..R and c = 0..C: the extra row and column only
// supply c0 for the explode grid.
#include <algorithm>
#include <cmath>

#include "model/geometry.h"
#include "model/output.h"

namespace {

const double kPi = 3.14159265358979323846;
const double kRad = kPi / 180.0;

// The primitive's transform with its sines and cosines worked out once.
struct Xform {
    Point3 scale, translate;
    double cx, sx, cy, sy, cz, sz;   // rotation about X, Y (as 360 - y), Z
    bool xyz;                        // X, Y, Z order instead of X, Z, Y
};

Xform MakeXform(const PrimitiveData& prim) {
    Xform t;
    t.scale = prim.scale;
    t.translate = prim.translate;
    t.cx = std::cos(prim.rotate.x * kRad);
    t.sx = std::sin(prim.rotate.x * kRad);
    t.cy = std::cos((360.0 - prim.rotate.y) * kRad);
    t.sy = std::sin((360.0 - prim.rotate.y) * kRad);
    t.cz = std::cos(prim.rotate.z * kRad);
    t.sz = std::sin(prim.rotate.z * kRad);
    t.xyz = (prim.prim_flags & PRIM_ROT_XYZ) != 0;
    return t;
}

void TurnX(const Xform& t, Point3& p) {
    double y = p.y * t.cx - p.z * t.sx;
    p.z = p.y * t.sx + p.z * t.cx;
    p.y = y;
}
void TurnY(const Xform& t, Point3& p) {
    double x = p.x * t.cy - p.z * t.sy;
    p.z = p.x * t.sy + p.z * t.cy;
    p.x = x;
}
void TurnZ(const Xform& t, Point3& p) {
    double x = p.x * t.cz - p.y * t.sz;
    p.y = p.x * t.sz + p.y * t.cz;
    p.x = x;
}

Point3 Apply(const Xform& t, Point3 p) {
    p.x *= t.scale.x;
    p.y *= t.scale.y;
    p.z *= t.scale.z;
    TurnX(t, p);
    if (t.xyz) {
        TurnY(t, p);
        TurnZ(t, p);
    } else {
        TurnZ(t, p);
        TurnY(t, p);
    }
    return Point3{p.x + t.translate.x, p.y + t.translate.y, p.z + t.translate.z};
}

// Walks the R x C grid (plus the extra row and column) of local points at(r, c).
template <typename At>
int WalkGrid(const Xform& t, int R, int C, At at) {
    Output_GridBegin(R, C);
    for (int r = 0; r <= R; r++) {
        for (int c = 0; c <= C; c++) {
            Point3 q[4] = {Apply(t, at(r, c)), Apply(t, at(r + 1, c)), Apply(t, at(r + 1, c + 1)),
                           Apply(t, at(r, c + 1))};
            if (Output_GridFacet(q, r, c)) {
                Output_GridEnd();
                return 1;
            }
        }
    }
    return Output_GridEnd();
}

// Point at angle a on a circle of radius rad at height y, round the Y axis.
Point3 Round(double rad, double y, double a) { return Point3{rad * std::cos(a), y, rad * std::sin(a)}; }

int Sphere(const PrimitiveData& p, const Xform& t, int n) {
    return WalkGrid(t, n, n, [&](int r, int c) {
        double a = r * 2 * kPi / n;          // longitude
        double b = -kPi / 2 + c * kPi / n;   // latitude, south pole first
        return Point3{p.p1 * std::cos(b) * std::cos(a), p.p1 * std::sin(b), p.p1 * std::cos(b) * std::sin(a)};
    });
}

// Rings from the base centre up to the top centre; row r runs from ring r to ring r + 1.
int Cone(const PrimitiveData& p, const Xform& t, int n) {
    const bool open = (p.prim_flags & PRIM_OPEN) != 0;
    const double closed_rad[4] = {0, p.p1, p.p2, 0}, closed_y[4] = {0, 0, p.p3, p.p3};
    const double open_rad[2] = {p.p1, p.p2}, open_y[2] = {0, p.p3};
    const int R = open ? 1 : 3;
    const double* rad = open ? open_rad : closed_rad;
    const double* y = open ? open_y : closed_y;
    return WalkGrid(t, R, n, [&](int r, int c) {
        r = std::min(r, R);
        return Round(rad[r], y[r], c * 2 * kPi / n);
    });
}

int Torus(const PrimitiveData& p, const Xform& t, int n) {
    return WalkGrid(t, n, n, [&](int r, int c) {
        double a = r * 2 * kPi / n;            // sector about the Y axis
        double tube = -kPi / 2 + c * 2 * kPi / n;
        return Round(p.p1 + p.p2 * std::cos(tube), p.p2 * std::sin(tube), a);
    });
}

int Disc(const PrimitiveData& p, const Xform& t, int n) {
    return WalkGrid(t, 1, n, [&](int r, int c) { return Round(r == 0 ? p.p1 : p.p2, 0, c * 2 * kPi / n); });
}

int Plane(const Xform& t) {
    return WalkGrid(t, 1, 1, [](int r, int c) { return Point3{-1.0 + 2 * std::min(c, 1), 0, -1.0 + 2 * std::min(r, 1)}; });
}

// Box and height field. The four band faces go round the Z axis, each
// starting with the edge it shares with the face before it, so that the
// band mask (row 0, column 1: every edge but c0-c1) draws each edge once.
int Box(const PrimitiveData& p, const Xform& t) {
    const double X = p.size.x, Y = p.size.y, Z = p.size.z;
    const Point3 band[4][4] = {
        {{0, 0, 0}, {0, 0, Z}, {X, 0, Z}, {X, 0, 0}},   // bottom, y = 0
        {{X, 0, 0}, {X, 0, Z}, {X, Y, Z}, {X, Y, 0}},   // side x = X
        {{X, Y, 0}, {X, Y, Z}, {0, Y, Z}, {0, Y, 0}},   // top, y = Y
        {{0, Y, 0}, {0, Y, Z}, {0, 0, Z}, {0, 0, 0}},   // side x = 0
    };
    const Point3 ends[2][4] = {
        {{0, 0, 0}, {X, 0, 0}, {X, Y, 0}, {0, Y, 0}},   // z = 0
        {{0, 0, Z}, {0, Y, Z}, {X, Y, Z}, {X, 0, Z}},   // z = Z
    };
    for (const auto& f : band) {
        Point3 q[4] = {Apply(t, f[0]), Apply(t, f[1]), Apply(t, f[2]), Apply(t, f[3])};
        if (Output_Facet(q, 4, Output_GridMask(0, 1))) return 1;
    }
    if (!Output_ToScreen()) {   // on screen the band already shows every edge
        for (const auto& f : ends) {
            Point3 q[4] = {Apply(t, f[0]), Apply(t, f[1]), Apply(t, f[2]), Apply(t, f[3])};
            if (Output_Facet(q, 4, Output_GridMask(0, 0))) return 1;
        }
    }
    if (p.prim_type == PRIM_HEIGHT_FIELD) {   // lines from the bottom corners to the top centre
        const Point3 top = Apply(t, Point3{X / 2, Y, Z / 2});
        const Point3 corners[4] = {{0, 0, 0}, {X, 0, 0}, {0, 0, Z}, {X, 0, Z}};
        for (const Point3& c : corners)
            if (Output_Line(Apply(t, c), top)) return 1;
    }
    return 0;
}

}  // namespace

Point3 Prim_Transform(const PrimitiveData* prim, Point3 p) { return Apply(MakeXform(*prim), p); }

int Prim_Draw(const PrimitiveData* prim) {
    if (!prim) return 0;
    const PrimitiveData p = *prim;   // generators work on a copy
    const Xform t = MakeXform(p);
    const int n = std::min(p.prim_aux, (int)GEOM_MAX_PRIM_AUX);
    switch (p.prim_type) {
        case PRIM_SPHERE: return n >= 1 ? Sphere(p, t, n) : 0;
        case PRIM_CONE: return n >= 1 ? Cone(p, t, n) : 0;
        case PRIM_TORUS: return n >= 1 ? Torus(p, t, n) : 0;
        case PRIM_DISC: return n >= 1 ? Disc(p, t, n) : 0;
        case PRIM_PLANE: return Plane(t);
        case PRIM_BOX:
        case PRIM_HEIGHT_FIELD: return Box(p, t);
        default: return 0;
    }
}
