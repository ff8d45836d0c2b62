// The ready-made shapes' layouts and facets: corners and control points
// worked out by hand in a TOP-like frame (h = +x, v = +z, d = +y, so the
// round shapes turn from +x towards -z), and every facet facing out of
// its solid.
#include <cmath>

#include "model/shapes.h"
#include "recorder.h"

namespace {

const ShapeFrame kTop{{0, 0, 0}, {1, 0, 0}, {0, 0, 1}, {0, 1, 0}};

Point3 Normal(const RecFacet& f) {
    // Newell's sum: the area normal of a (possibly non-planar) polygon.
    Point3 n{0, 0, 0};
    for (int k = 0; k < f.n; k++) {
        const Point3 a = f.c[k], b = f.c[(k + 1) % f.n];
        n.x += (a.y - b.y) * (a.z + b.z);
        n.y += (a.z - b.z) * (a.x + b.x);
        n.z += (a.x - b.x) * (a.y + b.y);
    }
    return n;
}

Point3 Centroid(const RecFacet& f) {
    Point3 c{0, 0, 0};
    for (int k = 0; k < f.n; k++) c = Vec_Add(c, f.c[k]);
    return Vec_Scale(c, 1.0 / f.n);
}

// Volume enclosed by the facets seen from `ref` (positive when they face out).
double SignedVolume(const std::vector<RecFacet>& facets, Point3 ref) {
    double v = 0;
    for (const RecFacet& f : facets)
        for (int k = 1; k + 1 < f.n; k++) {
            const Point3 a = Vec_Sub(f.c[0], ref), b = Vec_Sub(f.c[k], ref), c = Vec_Sub(f.c[k + 1], ref);
            v += Vec_Dot(a, Vec_Cross(b, c)) / 6;
        }
    return v;
}

class Shapes : public GeomTest {
  protected:
    // The facets of a polyline record of `form` over `pts`.
    std::vector<RecFacet> Facets(int form, Point3* pts, int count, int size_m = 0, int size_n = 0) {
        UseFacets();
        Rec() = Recording{};
        PolylineData p = Poly_Default();
        p.form = form;
        p.points = pts;
        p.count = count;
        p.size_m = size_m;
        p.size_n = size_n;
        Object o{};
        o.kind = KIND_POLYLINE;
        o.data = &p;
        Object_Draw(&o);
        return Rec().facets;
    }
};

// A 3 x 2 x 4 box from (1, 0, 2): its eight corners, each top corner over
// its bottom corner, and a volume of 24 with every face outwards, in the
// TOP frame and in a frame of the other handedness.
TEST_F(Shapes, PCubeCornersAndOutwardFaces) {
    for (const ShapeFrame& f : {kTop, ShapeFrame{{1, 0, 2}, {1, 0, 0}, {0, 1, 0}, {0, 0, -1}}}) {
        Point3 P[8];
        ShapeFrame at = f;
        at.o = {1, 0, 2};
        Shape_Cube(at, 3, 2, 4, P);
        for (int k = 0; k < 4; k++) EXPECT_TRUE(Near(Vec_Sub(P[k + 4], P[k]), Vec_Scale(f.d, 4))) << k;
        // The bottom ring: the corner, +3 along h, +3h +2v, +2v, in one of the two turning orders.
        const Point3 a = {1, 0, 2}, b = Vec_AddScaled(a, f.h, 3), c = Vec_AddScaled(b, f.v, 2),
                     d = Vec_AddScaled(a, f.v, 2);
        EXPECT_PT(P[0], a.x, a.y, a.z);
        EXPECT_PT(P[2], c.x, c.y, c.z);
        EXPECT_TRUE((Near(P[1], b) && Near(P[3], d)) || (Near(P[1], d) && Near(P[3], b)));
        EXPECT_NEAR(SignedVolume(Facets(FORM_POLY_CUBE, P, 8), {0, 0, 0}), 24, 1e-9);
    }
}

// Base 4 x 2 round the centre, tip 3 up: volume 4 * 2 * 3 / 3 = 8.
TEST_F(Shapes, PyramidTipHeightAndVolume) {
    Point3 P[8];
    Shape_Pyramid(kTop, 4, 2, 3, P);
    for (int k = 4; k < 8; k++) EXPECT_PT(P[k], 0, 3, 0);
    for (int k = 0; k < 4; k++) {
        EXPECT_NEAR(std::fabs(P[k].x), 2, 1e-12);
        EXPECT_NEAR(std::fabs(P[k].z), 1, 1e-12);
        EXPECT_EQ(P[k].y, 0);
    }
    EXPECT_NEAR(SignedVolume(Facets(FORM_POLY_PYRAMID, P, 8), {5, 5, 5}), 8, 1e-9);
    Shape_Pyramid(kTop, 4, 2, -3, P);   // a tip below the base turns the base round
    EXPECT_NEAR(SignedVolume(Facets(FORM_POLY_PYRAMID, P, 8), {5, 5, 5}), 8, 1e-9);
}

// Width 4, height 2, length 5: a triangle of area 4 extruded 5 = 20.
TEST_F(Shapes, WedgeCornersAndVolume) {
    Point3 P[8];
    Shape_Wedge(kTop, 2, 4, 5, P);
    EXPECT_PT(P[2], 0, 2, 0);
    EXPECT_NEAR(std::fabs(P[0].x), 2, 1e-12);
    EXPECT_NEAR(P[0].x + P[1].x, 0, 1e-12);
    for (int k = 0; k < 4; k++) EXPECT_PT(Vec_Sub(P[k + 4], P[k]), 0, 0, 5);
    EXPECT_NEAR(SignedVolume(Facets(FORM_POLY_WEDGE, P, 8), {-7, 1, 3}), 20, 1e-9);
}

// Three stairs of 1 between radii 1 and 2: treads at heights 1, 2, 3, each
// of 120 degrees cut into 6 chords of 20 degrees; the blocks stand on the
// ground and face out, so from a point on the ground the volume is
// sum(k * area) with area = 6 * (4 - 1) * sin(20 deg) / 2.
TEST_F(Shapes, StaircaseClimbsAndFacesOut) {
    const int rows = Shape_StairRows(3);
    ASSERT_EQ(rows, 3 * 7 + 2);
    std::vector<Point3> pts(4 * rows);
    Shape_Staircase(kTop, 1, 1, 2, 3, pts.data());
    // Row 1: the first riser's top at angle 0; row 8: the second stair's top.
    EXPECT_PT(pts[4 * 1 + 1], 2, 1, 0);
    EXPECT_PT(pts[4 * 1 + 2], 1, 1, 0);
    const double a = 120 * M_PI / 180;   // the second stair starts a third of a turn on, towards -z
    EXPECT_PT(pts[4 * 8 + 1], 2 * std::cos(a), 2, -2 * std::sin(a));
    EXPECT_PT(pts[4 * (rows - 2) + 1], 2, 3, 0);   // the last tread ends where the first began, 3 up
    EXPECT_PT(pts[4 * (rows - 1) + 1], 2, 0, 0);   // and comes down to the ground
    const double area = 6 * 3 * std::sin(20 * M_PI / 180) / 2;
    EXPECT_NEAR(SignedVolume(Facets(FORM_POLY_MESH, pts.data(), 4 * rows, rows - 1, 3), {0, 0, 0}),
                (1 + 2 + 3) * area, 1e-9);
}

// Height 10 and 4 revolutions: pitch 2; a thread 0.5 out from radius 1 with
// a crest 1 high leaves flanks of 0.5. One turn on (16 rows) every point is
// one pitch higher, so a nut of the same profile runs along it; every facet
// faces away from the axis.
TEST_F(Shapes, ScrewPitchProfileAndFacets) {
    EXPECT_EQ(Shape_ScrewPitch(10, 4), 2);
    const int rows = Shape_ScrewRows(4, 16);
    ASSERT_EQ(rows, 65);
    std::vector<Point3> pts(4 * rows);
    Shape_Screw(kTop, 10, 1, 0.5, 1, 4, 16, pts.data());
    EXPECT_PT(pts[0], 1, 0, 0);
    EXPECT_PT(pts[1], 1.5, 0.5, 0);
    EXPECT_PT(pts[2], 1.5, 1.5, 0);
    EXPECT_PT(pts[3], 1, 2, 0);
    EXPECT_PT(pts[4 * 64 + 3], 1, 10, 0);   // the band fills the height
    for (int i = 0; i + 16 < rows; i++)
        for (int j = 0; j < 4; j++) EXPECT_TRUE(Near(Vec_Sub(pts[4 * (i + 16) + j], pts[4 * i + j]), {0, 2, 0}));
    for (const RecFacet& f : Facets(FORM_POLY_MESH, pts.data(), 4 * rows, rows - 1, 3)) {
        const Point3 c = Centroid(f);
        EXPECT_GT(Vec_Dot(Normal(f), {c.x, 0, c.z}), 0) << Str(c);
    }
}

// Diameter 4, pitch 1.5, 90-degree steps: a quarter turn is 0.375 up.
TEST_F(Shapes, SpringHelix) {
    ASSERT_EQ(Shape_SpringPoints(2, 90), 9);
    Point3 p[9];
    Shape_Spring(kTop, 4, 1.5, 0, 2, 90, p);
    EXPECT_PT(p[0], 2, 0, 0);
    EXPECT_PT(p[1], 0, 0.375, -2);
    EXPECT_PT(p[2], -2, 0.75, 0);
    EXPECT_PT(p[4], 2, 1.5, 0);
    EXPECT_PT(p[8], 2, 3, 0);
    Shape_Spring(kTop, 4, 1.5, 1, 2, 90, p);   // the coil widens by 1 a winding
    EXPECT_PT(p[2], -2.5, 0.75, 0);
    EXPECT_PT(p[8], 4, 3, 0);
}

// Sphere of radius 2: the poles, the points where the patches meet on the
// equator, and inner control points 0.55 r along the tangents.
TEST_F(Shapes, BezierSphereControlPoints) {
    Point3 p[48];
    Shape_BezierSphere(kTop, 2, p);
    for (int i = 0; i < 8; i++) {
        EXPECT_PT(p[i * 6 + 0], 0, -2, 0);
        EXPECT_PT(p[i * 6 + 5], 0, 2, 0);
    }
    // Row 0 is the equator point (2, 0, 0) less 0.55 r along the turn
    // (towards +z here), row 1 plus it.
    EXPECT_PT(p[0 * 6 + 2], 2, -1.1, 1.1);
    EXPECT_PT(p[0 * 6 + 3], 2, 1.1, 1.1);
    EXPECT_PT(p[1 * 6 + 3], 2, 1.1, -1.1);
    EXPECT_PT(p[0 * 6 + 1], 1.1, -2, 0.605);   // 0.55 r out from the pole, on a ring of 0.55 r
    // The rim of a patch is where neighbouring rows meet half way: on the sphere.
    const Point3 m = Vec_Mid(p[0 * 6 + 3], p[1 * 6 + 3]);
    EXPECT_PT(m, 2, 1.1, 0);
}

TEST_F(Shapes, BezierTorusDishCylinder) {
    Point3 t[80];
    Shape_BezierTorus(kTop, 3, 1, t);
    EXPECT_PT(t[0], 4, -0.55, 0);          // row 0 (the ring's start), tube point 1 - 0.55 t
    EXPECT_PT(t[9 * 8], 4, -0.55, 0);      // the last row repeats the first
    EXPECT_PT(t[1 * 8 + 2], 3.55, 1, -3.55 * 0.55);   // next row, top of the tube: r = 3 + 0.55
    Point3 d[32];
    Shape_BezierDish(kTop, 2, d);
    EXPECT_PT(d[0], 0, 0, 0);              // the bottom
    EXPECT_PT(d[3], 2, 2, 1.1);            // the rim, row 0: (1, -0.55) of the ring, 2 up
    EXPECT_PT(d[1], 1.1, 0, 0.605);
    Point3 c[10 * 4];
    Shape_BezierCylinder(kTop, 3, 6, 4, false, c);
    EXPECT_PT(c[0], 3, 0, 0);
    EXPECT_PT(c[3], 3, 6, 0);
    EXPECT_PT(c[1 * 4 + 1], 3, 2, -1.65);
    EXPECT_PT(c[9 * 4 + 2], 3, 4, 0);
}

}  // namespace
