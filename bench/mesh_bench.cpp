// mesh_bench.cpp - RULSURF and COONS grids of 500 x 500 cells from
// boundaries of 10,000 points each, against a plain loop that blends the
// same number of points from boundary samples already at hand.
//
// Each boundary is sampled once at 501 length fractions through a
// PathSampler (its running lengths let each sample step a cursor on); the
// grid is then the blend. For comparison, the same 501 samples taken with
// Poly_PointAt, which walks the path from its start for every sample.
//
//   make -C build mesh_bench && build/mesh_bench
#include <cmath>
#include <cstdio>
#include <vector>

#include "bench_util.h"
#include "model/geometry.h"
#include "scene/layers.h"
#include "scene/mem.h"
#include "state.h"

namespace {

const int N = 500, M = 500, POINTS = 10000, RUNS = 5;

// A wavy boundary of POINTS points from `from` to `to`, lifted by `lift`.
std::vector<Point3> Curve(Point3 from, Point3 to, double lift) {
    std::vector<Point3> pts(POINTS);
    for (int k = 0; k < POINTS; k++) {
        const double t = (double)k / (POINTS - 1);
        pts[k] = Vec_Add(Vec_Add(from, Vec_Scale(Vec_Sub(to, from), t)),
                         Point3{0, lift * std::sin(t * 12.0) + 0.01 * std::sin(t * 997.0), 0});
    }
    return pts;
}

PolylineData Poly(std::vector<Point3>& pts) {
    PolylineData p = Poly_Default();
    p.points = pts.data();
    p.count = (int)pts.size();
    return p;
}

// Best of RUNS.
template <typename F>
double Time(F f) {
    double best = 1e9;
    for (int r = 0; r < RUNS; r++) {
        const double t0 = Now();
        f();
        best = std::min(best, Now() - t0);
    }
    return best;
}

Point3 Blend(Point3 a, Point3 b, double t) { return Vec_Add(a, Vec_Scale(Vec_Sub(b, a), t)); }

}  // namespace

int main() {
    State_Reset();
    Layer_NewFirst();
    std::vector<Point3> c0 = Curve({0, 0, 0}, {10, 0, 0}, 1), c1 = Curve({10, 0, 0}, {10, 0, 10}, 0.5),
                        c2 = Curve({10, 0, 10}, {0, 0, 10}, 1), c3 = Curve({0, 0, 10}, {0, 0, 0}, 0.5);
    PolylineData b0 = Poly(c0), b1 = Poly(c1), b2 = Poly(c2), b3 = Poly(c3);
    const PolylineData* const boundary[4] = {&b0, &b1, &b2, &b3};
    const int reversed[4] = {0, 0, 0, 0};
    std::vector<Point3> grid((size_t)(N + 1) * (M + 1));

    const double ruled = Time([&] { Mesh_Ruled(&b0, &b2, N, M, grid.data()); });
    const double coons = Time([&] { Mesh_Coons(boundary, reversed, N, M, grid.data()); });
    // RULSURF's whole work after the prompts: the grid and the copy into the scene.
    const double ruled_added = Time([&] {
        Mesh_Ruled(&b0, &b2, N, M, grid.data());
        PolylineData mesh = Poly_Default();
        mesh.form = FORM_POLY_MESH;
        mesh.size_m = N;
        mesh.size_n = M;
        mesh.points = grid.data();
        mesh.count = (int)grid.size();
        Poly_AddToScene(&mesh);
    });

    // The plain loops: samples at hand, the same blends.
    std::vector<Point3> u0(M + 1), u1(M + 1), v0(N + 1), v1(N + 1);
    for (int j = 0; j <= M; j++) u0[j] = c0[j * (POINTS - 1) / M], u1[j] = c2[(M - j) * (POINTS - 1) / M];
    for (int i = 0; i <= N; i++) v0[i] = c3[(N - i) * (POINTS - 1) / N], v1[i] = c1[i * (POINTS - 1) / N];
    const double plain_ruled = Time([&] {
        for (int i = 0; i <= N; i++)
            for (int j = 0; j <= M; j++) grid[(size_t)i * (M + 1) + j] = Blend(u0[j], u1[j], (double)i / N);
    });
    const double plain_coons = Time([&] {
        const Point3 c00 = u0[0], c10 = u0[M], c01 = u1[0], c11 = u1[M];
        for (int i = 0; i <= N; i++) {
            const double v = (double)i / N;
            for (int j = 0; j <= M; j++) {
                const double u = (double)j / M;
                grid[(size_t)i * (M + 1) + j] =
                    Vec_Sub(Vec_Add(Blend(u0[j], u1[j], v), Blend(v0[i], v1[i], u)),
                            Blend(Blend(c00, c10, u), Blend(c01, c11, u), v));
            }
        }
    });
    // 501 samples of one boundary, each a walk from the start.
    const double walks = Time([&] {
        double L = Poly_Length(&b0);
        for (int j = 0; j <= M; j++) u0[j] = Poly_PointAt(&b0, L * j / M);
    });
    const double sampler = Time([&] {
        PathSampler s;
        PathSampler_Init(&s, &b0);
        for (int j = 0; j <= M; j++) u0[j] = PathSampler_At(&s, s.length * j / M);
        PathSampler_Free(&s);
    });

    printf("grid of %d x %d cells (%zu points), boundaries of %d points, best of %d runs\n", N, M, grid.size(),
           POINTS, RUNS);
    printf("RULSURF grid        %8.2f ms   plain blend loop %8.2f ms   ratio %.2f\n", ruled * 1e3, plain_ruled * 1e3,
           ruled / plain_ruled);
    printf("RULSURF + add mesh  %8.2f ms\n", ruled_added * 1e3);
    printf("COONS grid          %8.2f ms   plain blend loop %8.2f ms   ratio %.2f\n", coons * 1e3, plain_coons * 1e3,
           coons / plain_coons);
    printf("501 samples of one boundary: sampler %.3f ms, Poly_PointAt walking each time %.3f ms\n", sampler * 1e3,
           walks * 1e3);
    return 0;
}
