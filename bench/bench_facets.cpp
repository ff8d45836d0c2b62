// bench_facets.cpp - facets per second of the revolution and mesh generators
// through a consumer that only counts, against hand-written loops handing
// the same number of quadrilaterals to the same consumer.
//
//   make -C build bench_facets && build/bench_facets
#include <cmath>
#include <cstdio>
#include <vector>

#include "bench_util.h"
#include "model/geometry.h"
#include "model/output.h"
#include "scene/object.h"
#include "state.h"

namespace {

const int kRuns = 5;

long g_facets = 0;
int Count(const Point3* corner, int, int) {
    g_facets++;
    return corner[0].x > 1e300;  // reads the corners, never stops
}
// The plain loops call it through this, as the generators do through the
// consumer table, so that the compiler cannot fold the calls away.
int (*volatile g_sink)(const Point3*, int, int) = Count;

// Revolution about the Y axis, rings of the turned profile joined as quads.
void PlainRevolution(const std::vector<Point3>& profile, int steps) {
    std::vector<Point3> prev = profile, cur(profile.size());
    const double step = 2 * M_PI / steps;
    for (int j = 1; j <= steps; j++) {
        double c = std::cos(j * step), s = std::sin(j * step);
        for (size_t k = 0; k < profile.size(); k++)
            cur[k] = {profile[k].x * c + profile[k].z * s, profile[k].y,
                      profile[k].z * c - profile[k].x * s};
        for (size_t k = 1; k < profile.size(); k++) {
            Point3 q[4] = {prev[k - 1], prev[k], cur[k], cur[k - 1]};
            g_sink(q, 4, 0);
        }
        prev.swap(cur);
    }
}

void PlainMesh(const std::vector<Point3>& grid, int n) {
    for (int i = 0; i < n; i++)
        for (int j = 0; j < n; j++) {
            const Point3* r0 = &grid[(size_t)i * (n + 1)];
            const Point3* r1 = r0 + n + 1;
            Point3 q[4] = {r0[j], r0[j + 1], r1[j + 1], r1[j]};
            g_sink(q, 4, 0);
        }
}

}  // namespace

int main() {
    State_Reset();
    OutputConsumer counter{};
    counter.facet = Count;
    g.output.consumer[OUTPUT_DXF] = counter;
    g.output.Output_Mode = OUTPUT_DXF;

    // Revolution: 1001 profile points (1000 segments) x 1000 steps.
    std::vector<Point3> profile(1001);
    for (int k = 0; k <= 1000; k++) profile[k] = Point3{1.0 + 0.001 * k, 0.01 * k, 0.5};
    PolylineData rev = Poly_Default();
    rev.form = FORM_REVOLUTION;
    rev.points = profile.data();
    rev.count = 1001;
    rev.param1 = {0, 0, 0};
    rev.param2 = {0, 1, 0};
    rev.angle = 360;
    rev.size_n = 1000;
    Compare(
        "revolution, 1,000,000 facets", "plain loop, same quads", kRuns,
        [&] { Poly_DrawRevolution(&rev); }, [&] { PlainRevolution(profile, 1000); });

    // Mesh: 1001 x 1001 points = 1000 x 1000 cells.
    std::vector<Point3> grid(1001 * 1001);
    for (int i = 0; i <= 1000; i++)
        for (int j = 0; j <= 1000; j++)
            grid[i * 1001 + j] = Point3{(double)j, 0.001 * i * j, (double)i};
    PolylineData mesh = Poly_Default();
    mesh.form = FORM_POLY_MESH;
    mesh.points = grid.data();
    mesh.count = 1001 * 1001;
    mesh.size_m = 1000;
    mesh.size_n = 1000;
    Compare(
        "mesh, 1,000,000 facets", "plain loop, same quads", kRuns, [&] { Poly_DrawMesh(&mesh); },
        [&] { PlainMesh(grid, 1000); });
    return 0;
}
