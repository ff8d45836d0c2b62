// mesh_build_test.cpp - the path sampler against Poly_PointAt, and the grids
// of RULSURF and COONS against points worked out by hand.
#include "recorder.h"

namespace {

class MeshBuild : public GeomTest {
  protected:
    void SetUp() override {
        GeomTest::SetUp();
        base_ = g.mem.live_blocks;   // the fixture's layer
    }
    long base_ = 0;
    static PolylineData Poly(std::vector<Point3>& pts, int flags = 0) {
        PolylineData p = Poly_Default();
        p.points = pts.data();
        p.count = (int)pts.size();
        p.poly_flags = (u8)flags;
        return p;
    }
};

// Samples in any order (forwards, backwards, repeated, beyond both ends,
// on joints) give what one walk gives, for straight, closed and splined paths.
TEST_F(MeshBuild, SamplerAgreesWithPointAt) {
    std::vector<Point3> pts = {{0, 0, 0}, {3, 4, 0}, {3, 4, 0}, {3, 4, 12}, {-1, 2, 5}, {6, 6, 6}};
    for (int flags : {0, (int)POLY_CLOSED, (int)POLY_BSPLINE, POLY_BSPLINE | POLY_CLOSED}) {
        SCOPED_TRACE(flags);
        PolylineData p = Poly(pts, flags);
        PathSampler s;
        ASSERT_EQ(PathSampler_Init(&s, &p), 1);
        EXPECT_NEAR(s.length, Poly_Length(&p), 1e-9);
        const double L = s.length;
        for (double d : {0.0, 5.0, 5.0, 2.5, 17.0, L * 0.99, 0.1, -3.0, L, L + 1, 9.0, 4.999999})
            EXPECT_TRUE(Near(PathSampler_At(&s, d), Poly_PointAt(&p, d), 1e-9)) << d;
        PathSampler_Free(&s);
    }
    EXPECT_EQ(g.mem.live_blocks, base_);
    std::vector<Point3> one = {{1, 2, 3}};
    PolylineData p = Poly(one);
    PathSampler s;
    ASSERT_EQ(PathSampler_Init(&s, &p), 1);
    EXPECT_PT(PathSampler_At(&s, 4), 1, 2, 3);
    Mem_FailAfter(1);
    p = Poly(pts);
    EXPECT_EQ(PathSampler_Init(&s, &p), 0);
    EXPECT_EQ(g.mem.live_blocks, base_);
}

// RULSURF: a 2-point line and 10-point curves are sampled by length
// fraction, so the rulings are evenly spaced along each whatever the
// spacing of their points. Rows run from the line (v = 0) to the curve.
TEST_F(MeshBuild, RuledSamplesByLengthFraction) {
    std::vector<Point3> line = {{0, 0, 0}, {9, 0, 0}};
    // Straight, length 9, points unevenly spaced.
    std::vector<Point3> straight = {{0, 0, 4}, {0.5, 0, 4}, {1, 0, 4}, {3.5, 0, 4}, {3.7, 0, 4},
                                    {5, 0, 4}, {6.2, 0, 4}, {8.5, 0, 4}, {8.9, 0, 4}, {9, 0, 4}};
    // An L of length 12: 6 along x, then 6 up z.
    std::vector<Point3> bent = {{0, 0, 4}, {1, 0, 4}, {4, 0, 4}, {5.5, 0, 4}, {6, 0, 4},
                                {6, 0, 4.5}, {6, 0, 6}, {6, 0, 8}, {6, 0, 9.9}, {6, 0, 10}};
    PolylineData a = Poly(line), b = Poly(straight), c = Poly(bent);
    Point3 grid[3 * 5];
    ASSERT_EQ(Mesh_Ruled(&a, &b, 2, 4, grid), 1);
    for (int i = 0; i <= 2; i++)
        for (int j = 0; j <= 4; j++) EXPECT_PT(grid[i * 5 + j], 9.0 * j / 4, 0, 2.0 * i);
    ASSERT_EQ(Mesh_Ruled(&a, &c, 2, 4, grid), 1);
    const Point3 on_l[5] = {{0, 0, 4}, {3, 0, 4}, {6, 0, 4}, {6, 0, 7}, {6, 0, 10}};
    for (int j = 0; j <= 4; j++) {
        EXPECT_PT(grid[j], 9.0 * j / 4, 0, 0);
        EXPECT_PT(grid[10 + j], on_l[j].x, 0, on_l[j].z);
        EXPECT_PT(grid[5 + j], (9.0 * j / 4 + on_l[j].x) / 2, 0, on_l[j].z / 2);
    }
    EXPECT_EQ(g.mem.live_blocks, base_);
}

// COONS over a tent-shaped bottom edge from (0,0,0) over (1,0,1) to
// (2,0,0) and three straight edges closing the square 0..2 in x and y: by
// hand the patch is (2u, 2v, (1 - v) h(u)), h the tent's height at the
// length fraction u. Boundaries #2 and #4 are drawn against the loop.
TEST_F(MeshBuild, CoonsPatchOfATent) {
    std::vector<Point3> bottom = {{0, 0, 0}, {1, 0, 1}, {2, 0, 0}};
    std::vector<Point3> right = {{2, 2, 0}, {2, 0, 0}};   // reversed
    std::vector<Point3> top = {{2, 2, 0}, {1.5, 2, 0}, {0, 2, 0}};
    std::vector<Point3> left = {{0, 0, 0}, {0, 2, 0}};    // reversed
    PolylineData c[4] = {Poly(bottom), Poly(right), Poly(top), Poly(left)};
    const PolylineData* const boundary[4] = {&c[0], &c[1], &c[2], &c[3]};
    const int reversed[4] = {0, 1, 0, 1};
    Point3 grid[3 * 5];
    ASSERT_EQ(Mesh_Coons(boundary, reversed, 2, 4, grid), 1);
    for (int i = 0; i <= 2; i++)
        for (int j = 0; j <= 4; j++) {
            const double u = j / 4.0, v = i / 2.0, h = u <= 0.5 ? 2 * u : 2 - 2 * u;
            EXPECT_PT(grid[i * 5 + j], 2 * u, 2 * v, (1 - v) * h);
        }
    for (int n = 1; n <= 10; n++) {   // out of memory at each of the 9 allocations: 0, out untouched, nothing held
        Mem_FailAfter(n);
        Point3 untouched[3 * 5] = {};
        const int r = Mesh_Coons(boundary, reversed, 2, 4, untouched);
        Mem_FailAfter(0);
        EXPECT_EQ(r, n > 9 ? 1 : 0) << n;
        if (!r) {
            EXPECT_PT(untouched[7], 0, 0, 0);
        }
        EXPECT_EQ(g.mem.live_blocks, base_);
    }
}

}  // namespace
