// bench_facets.cpp - facets per second of the revolution and mesh generators
// through a consumer that only counts.
#include <chrono>
#include <cstdio>
#include <vector>

#include "model/geometry.h"
#include "model/output.h"
#include "state.h"

namespace {

long g_facets = 0;
int Count(const Point3*, int, int) {
    g_facets++;
    return 0;
}

template <typename F>
void Run(const char* what, F generate) {
    g_facets = 0;
    auto t0 = std::chrono::steady_clock::now();
    generate();
    double s = std::chrono::duration<double>(std::chrono::steady_clock::now() - t0).count();
    std::printf("%-12s %9ld facets  %8.3f s  %12.0f facets/s\n", what, g_facets, s, g_facets / s);
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
    rev.param2 = {0.3, 1, 0.2};
    rev.angle = 360;
    rev.size_n = 1000;
    Run("revolution", [&] { Poly_DrawRevolution(&rev); });

    // Mesh: 1001 x 1001 points = 1000 x 1000 cells.
    std::vector<Point3> grid(1001 * 1001);
    for (int i = 0; i <= 1000; i++)
        for (int j = 0; j <= 1000; j++) grid[i * 1001 + j] = Point3{(double)j, 0.001 * i * j, (double)i};
    PolylineData mesh = Poly_Default();
    mesh.form = FORM_POLY_MESH;
    mesh.points = grid.data();
    mesh.count = 1001 * 1001;
    mesh.size_m = 1000;
    mesh.size_n = 1000;
    Run("mesh", [&] { Poly_DrawMesh(&mesh); });
    return 0;
}
