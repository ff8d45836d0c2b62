// poly_path_test.cpp - plain polylines: the B-spline drawing, the frame,
// path length and the point at a distance, Points_Match, Poly_ToView.
#include <climits>
#include <cmath>

#include "recorder.h"
#include "view/viewport.h"

namespace {

class PolyPath : public GeomTest {
  protected:
    Point3 pts[8];
    PolylineData Poly(std::initializer_list<Point3> list, int flags = 0, int segments = 8) {
        PolylineData p = Poly_Default();
        int n = 0;
        for (Point3 q : list) pts[n++] = q;
        p.points = pts;
        p.count = n;
        p.poly_flags = (u8)flags;
        p.segments = segments;
        return p;
    }
};

TEST_F(PolyPath, OpenSplinePassesThroughItsEnds) {
    UseScreen();
    // Square corners: span 0 ends at (P0 + 4 P1 + P2)/6 = (1, 5).
    PolylineData p = Poly({{0, 0, 0}, {0, 6, 0}, {6, 6, 0}, {6, 0, 0}}, POLY_BSPLINE, 2);
    EXPECT_EQ(Poly_DrawPlain(&p), 0);
    ASSERT_EQ(Rec().moves.size(), 1u);
    EXPECT_PT(Rec().moves[0], 0, 0, 0);
    // 3 spans of segments + 1 points each, all but the first are lines.
    ASSERT_EQ(Rec().segments.size(), 8u);
    EXPECT_PT(Rec().segments.back().b, 6, 0, 0);
    EXPECT_PT(Rec().segments[1].b, 1, 5, 0);   // span 0 at t = 1
    EXPECT_PT(Rec().segments[4].b, 5, 5, 0);   // span 1 at t = 1
    // Span 0 at t = 1/2: a0 + a1/2 + a2/4 + a3/8 with Q = (0,-6), (0,0), (0,6), (6,6)
    // gives x: a3 = 1, the rest 0 -> 1/8; y: a1 = 6, a3 = -1 -> 3 - 1/8.
    EXPECT_PT(Rec().segments[0].b, 0.125, 2.875, 0);
}

TEST_F(PolyPath, ThreePointSplineIsStraight) {
    UseScreen();
    PolylineData p = Poly({{0, 0, 0}, {0, 6, 0}, {6, 6, 0}}, POLY_BSPLINE, 8);
    Poly_DrawPlain(&p);
    ASSERT_EQ(Rec().segments.size(), 2u);
    EXPECT_PT(Rec().moves[0], 0, 0, 0);
    EXPECT_PT(Rec().segments[0].b, 0, 6, 0);
    EXPECT_PT(Rec().segments[1].b, 6, 6, 0);
}

TEST_F(PolyPath, ClosedSplineWrapsAndFrameFollows) {
    UseScreen();
    PolylineData p = Poly({{0, 0, 0}, {0, 6, 0}, {6, 6, 0}, {6, 0, 0}}, POLY_BSPLINE | POLY_CLOSED, 1);
    Poly_DrawPlain(&p);
    // 4 spans of 2 points: 1 move and 7 lines; it starts and ends at (1, 5).
    ASSERT_EQ(Rec().moves.size(), 1u);
    ASSERT_EQ(Rec().segments.size(), 7u);
    EXPECT_PT(Rec().moves[0], 1, 5, 0);
    EXPECT_PT(Rec().segments[0].b, 5, 5, 0);
    EXPECT_PT(Rec().segments[2].b, 5, 1, 0);
    EXPECT_PT(Rec().segments[4].b, 1, 1, 0);
    EXPECT_PT(Rec().segments.back().b, 1, 5, 0);

    Rec() = Recording{};
    p.poly_flags |= POLY_FRAME;
    Poly_DrawPlain(&p);
    ASSERT_EQ(Rec().moves.size(), 2u);
    EXPECT_PT(Rec().moves[1], 0, 0, 0);
    ASSERT_EQ(Rec().segments.size(), 7u + 4u);   // the closed control polygon
    EXPECT_PT(Rec().segments.back().b, 0, 0, 0);
}

TEST_F(PolyPath, LengthAndPointAtStraight) {
    PolylineData p = Poly({{0, 0, 0}, {3, 4, 0}, {3, 4, 12}});
    EXPECT_DOUBLE_EQ(Poly_Length(&p), 17.0);
    EXPECT_PT(Poly_PointAt(&p, 2.5), 1.5, 2, 0);
    EXPECT_PT(Poly_PointAt(&p, 7), 3, 4, 2);
    EXPECT_PT(Poly_PointAt(&p, -1), 0, 0, 0);
    EXPECT_PT(Poly_PointAt(&p, 100), 3, 4, 12);
    EXPECT_PT(Poly_PointAt(&p, std::nan("")), 0, 0, 0);
    p.poly_flags = POLY_CLOSED;
    EXPECT_DOUBLE_EQ(Poly_Length(&p), 30.0);   // + 13 back to the start
    EXPECT_TRUE(Near(Poly_PointAt(&p, 29), Point3{3.0 / 13, 4.0 / 13, 12.0 / 13}, 1e-12));
}

TEST_F(PolyPath, LengthAndPointAtSplined) {
    // Evenly spaced points on a line: the B-spline is the line, x = k + t.
    PolylineData line = Poly({{0, 0, 0}, {1, 0, 0}, {2, 0, 0}, {3, 0, 0}}, POLY_BSPLINE, 4);
    EXPECT_NEAR(Poly_Length(&line), 3.0, 1e-12);
    EXPECT_TRUE(Near(Poly_PointAt(&line, 2.6), Point3{2.6, 0, 0}, 1e-12));
    // The square with one step per span: samples (0,0), (1,5), (5,5), (6,0).
    PolylineData sq = Poly({{0, 0, 0}, {0, 6, 0}, {6, 6, 0}, {6, 0, 0}}, POLY_BSPLINE, 1);
    const double r26 = std::sqrt(26.0);
    EXPECT_NEAR(Poly_Length(&sq), 2 * r26 + 4, 1e-12);
    EXPECT_TRUE(Near(Poly_PointAt(&sq, r26 + 2), Point3{3, 5, 0}, 1e-12));
    EXPECT_TRUE(Near(Poly_PointAt(&sq, r26 / 2), Point3{0.5, 2.5, 0}, 1e-12));
    EXPECT_TRUE(Near(Poly_PointAt(&sq, 1e9), Point3{6, 0, 0}, 1e-12));
}

TEST_F(PolyPath, PointsMatchBoundsIncluded) {
    EXPECT_TRUE(Points_Match({0, 0, 0}, {1e-6, -1e-6, 0}));
    EXPECT_TRUE(Points_Match({5, 5, 5}, {5, 5, 5}));
    EXPECT_FALSE(Points_Match({0, 0, 0}, {0, 0, 1.1e-6}));
    EXPECT_FALSE(Points_Match({0, 0, 0}, {-2e-6, 0, 0}));
    EXPECT_FALSE(Points_Match({0, 0, 0}, {std::nan(""), 0, 0}));
}

TEST_F(PolyPath, ToViewUsesTheViewAxes) {
    Viewport vp = View_Initial();   // top view: h = x, v = z, d = y
    EXPECT_PT(Poly_ToView(&vp, {1, 2, 3}), 1, 3, 2);
    vp.axis_h = {0, 0, -1};
    vp.axis_v = {0, 1, 0};
    vp.axis_d = {1, 0, 0};
    EXPECT_PT(Poly_ToView(&vp, {1, 2, 3}), 3, 2, -1);
}

TEST_F(PolyPath, BadRecords) {
    UseScreen();
    PolylineData p = Poly({{1, 2, 3}});
    EXPECT_EQ(Poly_DrawPlain(&p), 0);   // one point
    EXPECT_DOUBLE_EQ(Poly_Length(&p), 0.0);
    EXPECT_PT(Poly_PointAt(&p, 5), 1, 2, 3);
    p.count = 0;
    EXPECT_EQ(Poly_DrawPlain(&p), 0);
    EXPECT_PT(Poly_PointAt(&p, 5), 0, 0, 0);
    p.points = nullptr;
    p.count = 4;   // claims points it has not got
    EXPECT_EQ(Poly_DrawPlain(&p), 0);
    EXPECT_DOUBLE_EQ(Poly_Length(&p), 0.0);
    EXPECT_TRUE(Rec().segments.empty());

    // Zero, negative and huge spline resolutions stay bounded.
    PolylineData s = Poly({{0, 0, 0}, {0, 6, 0}, {6, 6, 0}, {6, 0, 0}}, POLY_BSPLINE, 0);
    Poly_DrawPlain(&s);
    EXPECT_EQ(Rec().segments.size(), 5u);   // one step per span: 3 * 2 - 1
    Rec() = Recording{};
    s.segments = INT_MAX;
    Poly_DrawPlain(&s);
    EXPECT_EQ(Rec().segments.size(), 3u * (GEOM_MAX_SEGMENTS + 1) - 1);

    // A NaN point: lines to it are dropped and the pen starts afresh after it.
    Rec() = Recording{};
    PolylineData n = Poly({{0, 0, 0}, {std::nan(""), 0, 0}, {1, 1, 0}, {2, 1, 0}});
    Poly_DrawPlain(&n);
    ASSERT_EQ(Rec().segments.size(), 1u);
    EXPECT_PT(Rec().segments[0].a, 1, 1, 0);
    EXPECT_PT(Rec().segments[0].b, 2, 1, 0);
}

}  // namespace
