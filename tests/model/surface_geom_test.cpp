// surface_geom_test.cpp - surfaces and solids from polylines, Object_Draw,
// the quad split for triangle consumers, explode, the light star, the pen.
#include <climits>
#include <cmath>

#include "recorder.h"
#include "view/viewport.h"

namespace {

const double kPi = 3.14159265358979323846;

class SurfaceGeom : public GeomTest {
  protected:
    static std::vector<RecFacet> Quads() {
        std::vector<RecFacet> q;
        for (const RecFacet& f : Rec().facets)
            if (f.n == 4) q.push_back(f);
        return q;
    }
    // The wireframe consumer, seeing facets as they are.
    void UseScreenFacets() {
        g.output.consumer[OUTPUT_SCREEN] = rec_hooks::Consumer(1, rec_hooks::Facet);
        g.output.Output_Mode = OUTPUT_SCREEN;
    }
    Point3 pts[16];
    PolylineData Poly(int form, std::initializer_list<Point3> list) {
        PolylineData p = Poly_Default();
        int n = 0;
        for (Point3 q : list) pts[n++] = q;
        p.points = pts;
        p.count = n;
        p.form = form;
        return p;
    }
};

// Rodrigues' formula: v turned by theta about the unit axis u (right-handed).
Point3 Rotate(Point3 v, Point3 u, double theta) {
    double c = std::cos(theta), s = std::sin(theta), d = u.x * v.x + u.y * v.y + u.z * v.z;
    Point3 x{u.y * v.z - u.z * v.y, u.z * v.x - u.x * v.z, u.x * v.y - u.y * v.x};
    return Point3{v.x * c + x.x * s + u.x * d * (1 - c), v.y * c + x.y * s + u.y * d * (1 - c),
                  v.z * c + x.z * s + u.z * d * (1 - c)};
}

TEST_F(SurfaceGeom, RevolutionAboutAnArbitraryAxis) {
    UseFacets();
    PolylineData p = Poly(FORM_REVOLUTION, {{4, 2, 3}, {4, 5, 3}, {1, 5, 0}});
    p.param1 = {1, 2, 3};
    p.param2 = {2, 4, 5};   // direction (1, 2, 2), length 3
    p.angle = 90;
    p.size_n = 16;
    Poly_DrawRevolution(&p);
    ASSERT_EQ(Rec().facets.size(), 32u);   // 16 steps x 2 profile segments
    const Point3 u{1.0 / 3, 2.0 / 3, 2.0 / 3};
    auto turned = [&](Point3 q, int j) {
        Point3 v = Rotate({q.x - 1, q.y - 2, q.z - 3}, u, j * 5.625 * kPi / 180);
        return Point3{v.x + 1, v.y + 2, v.z + 3};
    };
    for (int j = 1; j <= 16; j++) {
        for (int k = 1; k <= 2; k++) {
            const RecFacet& f = Rec().facets[(j - 1) * 2 + (k - 1)];
            EXPECT_TRUE(Near(f.c[0], turned(pts[k - 1], j - 1), 1e-12)) << j << " " << k;
            EXPECT_TRUE(Near(f.c[1], turned(pts[k], j - 1), 1e-12)) << j << " " << k;
            EXPECT_TRUE(Near(f.c[2], turned(pts[k], j), 1e-12)) << j << " " << k;
            EXPECT_TRUE(Near(f.c[3], turned(pts[k - 1], j), 1e-12)) << j << " " << k;
            EXPECT_EQ(f.mask, k == 1 ? 14 : 6);
        }
    }
    // A point on the axis does not move.
    EXPECT_TRUE(Near(Revolution_Turn(&p, {3, 6, 7}, 1.0), {3, 6, 7}, 1e-12));
}

TEST_F(SurfaceGeom, RevolutionBadCountsAndAxis) {
    UseFacets();
    PolylineData p = Poly(FORM_REVOLUTION, {{1, 0, 0}, {1, 0, 1}});
    p.param1 = p.param2 = {0, 0, 0};   // no axis: turns about x, no crash
    // No steps, negative or huge step counts, a NaN angle.
    const struct {
        int steps;
        double angle;
        size_t facets;
    } cases[] = {{0, 360, 0}, {-4, 360, 0}, {INT_MAX, 360, GEOM_MAX_SEGMENTS}, {4, std::nan(""), 0}};
    for (const auto& c : cases) {
        Rec() = Recording{};
        p.size_n = c.steps;
        p.angle = c.angle;
        EXPECT_EQ(Poly_DrawRevolution(&p), 0) << c.steps;
        EXPECT_EQ(Rec().facets.size(), c.facets) << c.steps;
    }
}

TEST_F(SurfaceGeom, ExtrusionQuadsAndScreenEdges) {
    PolylineData p = Poly(FORM_EXTRUSION, {{0, 0, 0}, {1, 0, 0}, {1, 1, 0}});
    p.param1 = {5, 5, 5};
    p.param2 = {5, 5, 7};   // v = (0, 0, 2)
    UseFacets();
    Poly_DrawExtrusion(&p);
    ASSERT_EQ(Rec().facets.size(), 2u);
    EXPECT_CORNERS(Rec().facets[0], {0, 0, 0}, {1, 0, 0}, {1, 0, 2}, {0, 0, 2});
    EXPECT_PT(Rec().facets[1].c[2], 1, 1, 2);
    EXPECT_EQ(Rec().facets[0].mask, 14);
    EXPECT_EQ(Rec().facets[1].mask, 6);

    Rec() = Recording{};
    UseScreen();
    Poly_DrawExtrusion(&p);
    // The two points' line, the profile, and every edge of the sheet once.
    const Point3 e[8][2] = {{{5, 5, 5}, {5, 5, 7}}, {{0, 0, 0}, {1, 0, 0}}, {{1, 0, 0}, {1, 1, 0}},
                            {{0, 0, 0}, {0, 0, 2}}, {{1, 0, 0}, {1, 0, 2}}, {{1, 1, 0}, {1, 1, 2}},
                            {{0, 0, 2}, {1, 0, 2}}, {{1, 0, 2}, {1, 1, 2}}};
    EXPECT_EQ(Rec().segments.size(), 8u);
    for (const auto& s : e) EXPECT_EQ(SegmentCount(Rec().segments, s[0], s[1]), 1) << Str(s[0]) << Str(s[1]);
}

// A B-spline profile is swept through the points it is drawn with:
// `segments` steps per span (evenly spaced points on a line: x = k + t).
TEST_F(SurfaceGeom, SweepsFollowTheDrawnSpline) {
    UseFacets();
    PolylineData p = Poly(FORM_EXTRUSION, {{0, 0, 0}, {1, 0, 0}, {2, 0, 0}, {3, 0, 0}});
    p.poly_flags = POLY_BSPLINE;
    p.segments = 2;
    p.param2 = {0, 0, 1};
    Poly_DrawExtrusion(&p);
    ASSERT_EQ(Rec().facets.size(), 6u);   // 3 spans of 2 steps
    for (int k = 0; k < 6; k++) EXPECT_CORNERS(Rec().facets[k], {0.5 * k, 0, 0}, {0.5 * (k + 1), 0, 0});
    Rec() = Recording{};
    p.form = FORM_CONE_SWEEP;
    p.param1 = {0, 5, 0};
    Poly_DrawConeSweep(&p);
    ASSERT_EQ(Rec().facets.size(), 6u);
    EXPECT_CORNERS(Rec().facets[3], {1.5, 0, 0}, {2, 0, 0}, {0, 5, 0});
}

TEST_F(SurfaceGeom, ConeSweepTriangles) {
    UseFacets();
    PolylineData p = Poly(FORM_CONE_SWEEP, {{1, 0, 0}, {0, 1, 0}, {-1, 0, 0}});
    p.param1 = {0, 0, 5};
    Poly_DrawConeSweep(&p);
    ASSERT_EQ(Rec().facets.size(), 2u);
    EXPECT_EQ(Rec().facets[0].n, 3);
    EXPECT_CORNERS(Rec().facets[0], {1, 0, 0}, {0, 1, 0}, {0, 0, 5});
    EXPECT_PT(Rec().facets[1].c[1], -1, 0, 0);
    EXPECT_EQ(Rec().facets[0].mask, 6);
    EXPECT_EQ(Rec().facets[1].mask, 2);
}

TEST_F(SurfaceGeom, MeshCellsAndScreenEdges) {
    // 3 rows of 4 points: size_m 2, size_n 3.
    PolylineData p = Poly(FORM_POLY_MESH, {});
    for (int i = 0; i < 3; i++)
        for (int j = 0; j < 4; j++) pts[i * 4 + j] = Point3{(double)j, 0, (double)i};
    p.count = 12;
    p.size_m = 2;
    p.size_n = 3;
    UseFacets();
    Poly_DrawMesh(&p);
    ASSERT_EQ(Rec().facets.size(), 6u);
    const RecFacet& f = Rec().facets[4];   // row 1, column 1
    EXPECT_CORNERS(f, {1, 0, 1}, {1, 0, 2}, {2, 0, 2}, {2, 0, 1});
    EXPECT_EQ(f.mask, 6);
    EXPECT_EQ(Rec().facets[0].mask, 15);

    Rec() = Recording{};
    UseScreen();
    Poly_DrawMesh(&p);
    ASSERT_EQ(Rec().segments.size(), 17u);   // 3 rows of 3 + 4 columns of 2
    for (int i = 0; i < 3; i++)
        for (int j = 0; j < 3; j++)
            EXPECT_EQ(SegmentCount(Rec().segments, {(double)j, 0, (double)i}, {(double)j + 1, 0, (double)i}), 1);
    for (int i = 0; i < 2; i++)
        for (int j = 0; j < 4; j++)
            EXPECT_EQ(SegmentCount(Rec().segments, {(double)j, 0, (double)i}, {(double)j, 0, (double)i + 1}), 1);
}

TEST_F(SurfaceGeom, MeshNClosedWrapsColumns) {
    PolylineData p = Poly(FORM_POLY_MESH, {});
    const Point3 ring[4] = {{1, 0, 0}, {0, 0, 1}, {-1, 0, 0}, {0, 0, -1}};
    for (int i = 0; i < 2; i++)
        for (int j = 0; j < 4; j++) pts[i * 4 + j] = Point3{ring[j].x, (double)i, ring[j].z};
    p.count = 8;
    p.size_m = 1;
    p.size_n = 3;
    p.poly_flags = POLY_N_CLOSED;
    UseFacets();
    Poly_DrawMesh(&p);
    ASSERT_EQ(Rec().facets.size(), 4u);
    EXPECT_PT(Rec().facets[3].c[0], 0, 0, -1);
    EXPECT_PT(Rec().facets[3].c[2], 1, 1, 0);
    EXPECT_EQ(Rec().facets[3].mask, 8 | 2);   // its c2-c3 is column 0's c0-c1
}

TEST_F(SurfaceGeom, MeshSizesThatDoNotFitThePoints) {
    PolylineData p = Poly(FORM_POLY_MESH, {});
    for (int k = 0; k < 12; k++) pts[k] = Point3{(double)k, 0, 0};
    p.count = 12;
    UseFacets();
    p.size_m = 5;   // claims 6 rows of 4; only 3 are there
    p.size_n = 3;
    Poly_DrawMesh(&p);
    EXPECT_EQ(Rec().facets.size(), 6u);
    for (const RecFacet& f : Rec().facets)
        for (int k = 0; k < 4; k++) EXPECT_LE(f.c[k].x, 11.0);
    Rec() = Recording{};
    const int sizes[][2] = {{2, 20}, {2, 0}, {0, 3}, {-1, 3}, {INT_MAX, INT_MAX}, {INT_MAX, 3}, {3, 11}, {3, 12}};
    for (const auto& s : sizes) {
        p.size_m = s[0];
        p.size_n = s[1];
        EXPECT_EQ(Poly_DrawMesh(&p), 0);
    }
    // Only {INT_MAX, 3} fits anything: its 3 whole rows.
    EXPECT_EQ(Rec().facets.size(), 6u);
}

TEST_F(SurfaceGeom, PipeRings) {
    UseFacets();
    PolylineData p = Poly(FORM_POLY_PIPE, {{0, 0, 0}, {0, 0, 2}});
    p.param1 = {1, 1, 0};
    p.size_n = 4;
    Poly_DrawPipe(&p);
    ASSERT_EQ(Rec().facets.size(), 4u + 8u);   // the sides, then a flat cap of 4 at each end
    // Heading 90 degrees: the ring (0, cos, sin) lands on (-sin, cos, 0).
    EXPECT_CORNERS(Rec().facets[0], {0, 1, 0}, {0, 1, 2}, {-1, 0, 2}, {-1, 0, 0});
    EXPECT_PT(Rec().facets[2].c[0], 0, -1, 0);
    EXPECT_PT(Rec().facets[3].c[2], 0, 1, 2);

    // Straight up: elevation 90 degrees, the ring lies in x-z.
    Rec() = Recording{};
    p = Poly(FORM_POLY_PIPE, {{1, 1, 1}, {1, 3, 1}});
    p.param1 = {0.5, 0.5, 0};
    p.size_n = 4;
    Poly_DrawPipe(&p);
    ASSERT_EQ(Rec().facets.size(), 12u);
    EXPECT_PT(Rec().facets[0].c[0], 0.5, 1, 1);
    EXPECT_PT(Rec().facets[0].c[1], 0.5, 3, 1);
    EXPECT_PT(Rec().facets[0].c[3], 1, 1, 1.5);
}

TEST_F(SurfaceGeom, PipeRadiusRunsFromStartToEnd) {
    UseFacets();
    PolylineData p = Poly(FORM_POLY_PIPE, {{0, 0, 0}, {2, 0, 0}, {4, 0, 0}});
    p.param1 = {1, 3, 0};
    p.size_n = 4;
    Poly_DrawPipe(&p);
    std::vector<RecFacet> q = Quads();   // the caps and the joint's sphere are triangles
    ASSERT_EQ(q.size(), 8u);
    EXPECT_PT(q[0].c[0], 0, 1, 0);
    EXPECT_PT(q[0].c[1], 2, 2, 0);
    EXPECT_PT(q[4].c[0], 2, 2, 0);
    EXPECT_PT(q[4].c[1], 4, 3, 0);

    // Splined: sampled at fractions i/size_m of the length (a straight spline here).
    Rec() = Recording{};
    p = Poly(FORM_POLY_PIPE, {{0, 0, 0}, {1, 0, 0}, {2, 0, 0}, {3, 0, 0}});
    p.poly_flags = POLY_BSPLINE;
    p.param1 = {1, 3, 0};
    p.size_m = 2;
    p.size_n = 4;
    Poly_DrawPipe(&p);
    q = Quads();
    ASSERT_EQ(q.size(), 8u);
    EXPECT_TRUE(Near(q[4].c[0], {1.5, 2, 0}, 1e-12));
    EXPECT_TRUE(Near(q[4].c[1], {3, 3, 0}, 1e-12));

    Rec() = Recording{};
    p.size_n = 0;
    EXPECT_EQ(Poly_DrawPipe(&p), 0);
    EXPECT_TRUE(Rec().facets.empty());
}

// An L-shaped pipe of radius 0.5 with 4 sides: the joint and the ends by
// Edge type and Sphered type, open and closed, in facets and on screen. A
// sphere of 4 sides is 8 triangles (two bands), a flat cap 4.
TEST_F(SurfaceGeom, PipeJointsAndEnds) {
    struct Case {
        double edge, sphered;
        bool closed, screen;
        size_t quads, triangles;
        Point3 pole;   // the north pole of a sphere that must be there
    };
    const Point3 none{1e9, 0, 0};
    const Case cases[] = {
        {0, 0, false, false, 8, 8 + 8, {2, 0.5, 0}},     // flat caps, a sphere at the joint
        {0, 3, false, false, 8, 3 * 8, {2, 0.5, 2}},     // spheres at both ends and the joint
        {0, 1, false, false, 8, 4 + 2 * 8, {0, 0.5, 0}}, // start sphered, end capped
        {1, 3, false, false, 8, 8, none},                // sharpened: mitre, caps, no spheres
        {0, 0, true, false, 12, 3 * 8, {0, 0.5, 0}},     // closed: a sphere at every point
        {0, 3, false, true, 8, 2 * 8, {0, 0.5, 0}},      // screen: the end spheres only
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(testing::Message() << c.edge << " " << c.sphered << " " << c.closed << c.screen);
        Rec() = Recording{};
        if (c.screen) UseScreenFacets();
        else UseFacets();
        PolylineData p = Poly(FORM_POLY_PIPE, {{0, 0, 0}, {2, 0, 0}, {2, 0, 2}});
        p.param1 = {0.5, 0.5, 0};
        p.param2 = {c.edge, c.sphered, 0};
        p.size_n = 4;
        p.poly_flags = c.closed ? POLY_CLOSED : 0;
        Poly_DrawPipe(&p);
        EXPECT_EQ(Quads().size(), c.quads);
        EXPECT_EQ(Rec().facets.size() - Quads().size(), c.triangles);
        bool pole = false;
        for (const RecFacet& f : Rec().facets) pole = pole || (f.n == 3 && Near(f.c[0], c.pole, 1e-12));
        EXPECT_EQ(pole, c.pole.x != none.x);
    }
}

// Sharpened: at the joint of the L both rings lie in the plane that halves
// the bend, (x - 2) + z = 0, and meet point for point: the first ring
// (2, r cos a, r sin a) moved along x, the second (2 - r sin a, r cos a, 0)
// along z, both to (2 - r sin a, r cos a, r sin a).
TEST_F(SurfaceGeom, PipeSharpenedJointIsAMitre) {
    UseFacets();
    PolylineData p = Poly(FORM_POLY_PIPE, {{0, 0, 0}, {2, 0, 0}, {2, 0, 2}});
    p.param1 = {0.5, 0.5, 0};
    p.param2 = {1, 0, 0};
    p.size_n = 8;
    Poly_DrawPipe(&p);
    std::vector<RecFacet> q = Quads();
    ASSERT_EQ(q.size(), 16u);
    for (int i = 0; i < 8; i++) {
        const double a = 2 * kPi * i / 8, r = 0.5;
        const Point3 want{2 - r * std::sin(a), r * std::cos(a), r * std::sin(a)};
        EXPECT_TRUE(Near(q[i].c[1], want, 1e-12)) << i << " " << Str(q[i].c[1]);
        EXPECT_TRUE(Near(q[8 + i].c[0], want, 1e-12)) << i << " " << Str(q[8 + i].c[0]);
    }
}

TEST_F(SurfaceGeom, WallBoxAtTheSegment) {
    UseFacets();
    PolylineData p = Poly(FORM_POLY_WALL, {{1, 0, 1}, {1, 0, 4}});
    p.param1 = {2, 1, 0};   // height 2, width 1
    Poly_DrawWall(&p);
    ASSERT_EQ(Rec().facets.size(), 6u);
    const RecFacet& base = Rec().facets[0];
    EXPECT_CORNERS(base, {1.5, 0, 0.5}, {1.5, 0, 4.5}, {0.5, 0, 4.5}, {0.5, 0, 0.5});
    EXPECT_PT(Rec().facets[1].c[1], 1.5, 2, 4.5);
    EXPECT_EQ(base.mask, 15);
    for (int k = 2; k < 6; k++) EXPECT_EQ(Rec().facets[k].mask, 2);
}

// Each solid's edges once: a base ring of `ring` points, then either a top
// ring above it (points 4..) with the uprights, or lines up to an apex (point 4).
TEST_F(SurfaceGeom, SolidsDrawEachEdgeOnce) {
    struct Solid {
        int form;
        int (*draw)(const PolylineData*);
        int ring;
        bool apex;
        Point3 p[8];
    };
    const Solid solids[] = {
        {FORM_POLY_CUBE, Poly_DrawCube, 4, false,
         {{0, 0, 0}, {1, 0, 0}, {1, 0, 1}, {0, 0, 1}, {0, 1, 0}, {1, 1, 0}, {1, 1, 1}, {0, 1, 1}}},
        {FORM_POLY_WEDGE, Poly_DrawWedge, 3, false,
         {{-1, 0, 0}, {1, 0, 0}, {0, 2, 0}, {0, 2, 0}, {-1, 0, 5}, {1, 0, 5}, {0, 2, 5}, {0, 2, 5}}},
        {FORM_POLY_PYRAMID, Poly_DrawPyramid, 4, true,
         {{-1, 0, -1}, {1, 0, -1}, {1, 0, 1}, {-1, 0, 1}, {0, 3, 0}, {0, 3, 0}, {0, 3, 0}, {0, 3, 0}}},
    };
    UseScreen();
    for (const Solid& s : solids) {
        SCOPED_TRACE(s.form);
        Rec() = Recording{};
        PolylineData p = Poly(s.form, {});
        for (int k = 0; k < 8; k++) pts[k] = s.p[k];
        p.count = 8;
        s.draw(&p);
        const auto& segs = Rec().segments;
        ASSERT_EQ(segs.size(), (size_t)(s.apex ? 2 : 3) * s.ring);
        for (int k = 0; k < s.ring; k++) {
            int n = (k + 1) % s.ring;
            EXPECT_EQ(SegmentCount(segs, pts[k], pts[n]), 1) << k;
            EXPECT_EQ(SegmentCount(segs, pts[k], pts[s.apex ? 4 : k + 4]), 1) << k;
            if (!s.apex) {
                EXPECT_EQ(SegmentCount(segs, pts[k + 4], pts[n + 4]), 1) << k;
            }
        }
        // Fewer points than the solid needs: nothing.
        Rec() = Recording{};
        p.count = s.apex ? 5 : 7;
        s.draw(&p);
        EXPECT_TRUE(Rec().segments.empty());
    }
}

TEST_F(SurfaceGeom, ExplodeSurfaceIntoFaces) {
    g.output.Output_Mode = OUTPUT_EXPLODE;
    PolylineData p = Poly(FORM_CONE_SWEEP, {{1, 0, 0}, {0, 1, 0}, {-1, 0, 0}});
    p.param1 = {0, 0, 5};
    Poly_DrawConeSweep(&p);
    int faces = 0;
    for (Object* o = g.scene.Current_Layer->first_object; o; o = o->next) {
        ASSERT_EQ(o->kind, KIND_3DFACE);
        const FaceData* f = (const FaceData*)o->data;
        EXPECT_PT(f->corner[3], 0, 0, 5);   // a triangle repeats its third corner
        faces++;
    }
    EXPECT_EQ(faces, 2);
}

TEST_F(SurfaceGeom, LightStarAndDirection) {
    UseScreen();
    LightData l = Light_Default();
    l.position = {1, 2, 3};
    g.view.Active_Viewport.AREA = 10;   // arms of 10/50
    Light_Draw(&l);
    ASSERT_EQ(Rec().segments.size(), 7u);
    EXPECT_TRUE(Near(Rec().segments[0].a, {0.8, 2, 3}, 1e-12));
    EXPECT_TRUE(Near(Rec().segments[0].b, {1.2, 2, 3}, 1e-12));
    EXPECT_TRUE(Near(Rec().segments[3].a, {0.8, 1.8, 2.8}, 1e-12));
    EXPECT_TRUE(Near(Rec().segments[3].b, {1.2, 2.2, 3.2}, 1e-12));

    // A spot light 10 above its target with a 45 degree cone: the line to
    // the target, the cone's circle of radius 10 in y = 0 (16 sides), and
    // four lines from the light to that circle.
    Rec() = Recording{};
    l.light_flags = LIGHT_SPOT;
    l.position = {0, 10, 0};
    l.point_at = {0, 0, 0};
    l.radius = 45;
    Light_Draw(&l);
    ASSERT_EQ(Rec().segments.size(), 7u + 1 + 16 + 4);
    EXPECT_EQ(SegmentCount(Rec().segments, {0, 10, 0}, {0, 0, 0}), 1);
    for (size_t i = 8; i < 24; i++) {
        EXPECT_NEAR(Rec().segments[i].b.y, 0, 1e-9);
        EXPECT_NEAR(Vec_Length(Rec().segments[i].b), 10, 1e-9);
    }
    for (Point3 rim : {Point3{10, 0, 0}, Point3{-10, 0, 0}, Point3{0, 0, 10}, Point3{0, 0, -10}})
        EXPECT_EQ(SegmentCount(Rec().segments, {0, 10, 0}, rim), 1) << Str(rim);
    // A cone of 90 degrees or more has no circle.
    Rec() = Recording{};
    l.radius = 90;
    Light_Draw(&l);
    EXPECT_EQ(Rec().segments.size(), 8u);

    // An area light at the origin aimed along +X, width 1, height 2: the
    // scene file's axes are (0, -0.5, 2) and (0, 1, 1); the outline runs
    // round the origin by half of each.
    Rec() = Recording{};
    l = Light_Default();
    l.light_flags = LIGHT_AREA;
    l.point_at = {10, 0, 0};
    l.area_width = 1;
    l.area_height = 2;
    Light_Draw(&l);
    ASSERT_EQ(Rec().segments.size(), 7u + 1 + 4);
    const Point3 q[4] = {{0, -0.25, -1.5}, {0, -0.75, 0.5}, {0, 0.25, 1.5}, {0, 0.75, -0.5}};
    for (int i = 0; i < 4; i++) EXPECT_EQ(SegmentCount(Rec().segments, q[i], q[(i + 1) % 4]), 1) << i;
}

TEST_F(SurfaceGeom, ModeOutOfRangeProducesNothing) {
    UseFacets();
    g.output.Output_Mode = 9;
    FaceData face{{{0, 0, 0}, {1, 0, 0}, {1, 1, 0}, {0, 1, 0}}};
    Object* f = Add_Face(&face);
    EXPECT_EQ(Object_Draw(f), 0);
    g.output.Output_Mode = -1;
    EXPECT_EQ(Object_Draw(f), 0);
    EXPECT_TRUE(Rec().facets.empty());
    EXPECT_FALSE(Output_ToScreen());
}

TEST_F(SurfaceGeom, ScreenModeReachesTheRealPen) {
    Viewport& vp = g.view.Active_Viewport;
    View_SetRect(&vp, 0, 0, 639, 399);
    View_SetArea(&vp, 10);
    vp.extents_mode = 1;
    vp.extents_found = 0;
    PrimitiveData p = Primitive_Default();
    p.prim_type = PRIM_PLANE;
    p.scale = {2, 2, 2};
    Object* o = Add_Primitive(&p);
    ASSERT_NE(o, nullptr);
    EXPECT_EQ(g.output.Output_Mode, OUTPUT_SCREEN);
    EXPECT_EQ(Object_Draw(o), 0);
    EXPECT_EQ(vp.extents_found, 1);
    EXPECT_LT(vp.ext_min_x, vp.ext_max_x);   // the square spans a width on screen
}

}  // namespace
