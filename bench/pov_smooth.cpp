// pov_smooth.cpp - exporting a smooth surface of 100,000 triangles, against
// the plain cost of formatting and writing the same amount of text.
//
// The surface is a wavy 250 x 200 grid, two triangles per cell, spooled
// through "triangle.tmp" and written as smooth_triangle statements with
// averaged normals. The reference writes the same statements with the face
// normals, no spool and no normal pass.
#include <fcntl.h>
#include <unistd.h>

#include <chrono>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <string>

#include "pov/pov.h"
#include "state.h"

namespace {

const int kCols = 250, kRows = 200;   // 2 * 250 * 200 = 100,000 triangles

Point3 GridPoint(int c, int r) { return {c * 0.1, sin(c * 0.07) * cos(r * 0.05), r * 0.1}; }

void Surface(Object*) {
    for (int r = 0; r < kRows; r++)
        for (int c = 0; c < kCols; c++) {
            Point3 a = GridPoint(c, r), b = GridPoint(c + 1, r), d = GridPoint(c, r + 1), e = GridPoint(c + 1, r + 1);
            Pov_SpoolTriangle(a, b, e);
            Pov_SpoolTriangle(e, d, a);
        }
}

double Seconds(std::chrono::steady_clock::time_point t0) {
    return std::chrono::duration<double>(std::chrono::steady_clock::now() - t0).count();
}

void PlainText(const char* path) {
    FILE* f = fopen(path, "w");
    setvbuf(f, nullptr, _IOFBF, 10000);
    auto tri = [&](Point3 a, Point3 b, Point3 c) {
        double ux = b.x - a.x, uy = b.y - a.y, uz = b.z - a.z, vx = c.x - a.x, vy = c.y - a.y, vz = c.z - a.z;
        Point3 n{uy * vz - uz * vy, uz * vx - ux * vz, ux * vy - uy * vx};
        fprintf(f, "\n        smooth_triangle {<%g, %g, %g>, <%g, %g, %g>,", a.x, a.y, a.z, n.x, n.y, n.z);
        fprintf(f, "\n                         <%g, %g, %g>, <%g, %g, %g>,", b.x, b.y, b.z, n.x, n.y, n.z);
        fprintf(f, "\n                         <%g, %g, %g>, <%g, %g, %g> }", c.x, c.y, c.z, n.x, n.y, n.z);
    };
    for (int r = 0; r < kRows; r++)
        for (int c = 0; c < kCols; c++) {
            Point3 a = GridPoint(c, r), b = GridPoint(c + 1, r), d = GridPoint(c, r + 1), e = GridPoint(c + 1, r + 1);
            tri(a, b, e);
            tri(e, d, a);
        }
    fclose(f);
}

}  // namespace

int main() {
    char dir[] = "/tmp/qmrbench.XXXXXX";
    if (!mkdtemp(dir)) return 1;
    if (chdir(dir) != 0) return 1;
    State_Reset();
    snprintf(g.config.Scenes_Dir, sizeof g.config.Scenes_Dir, "%s", dir);
    snprintf(g.config.WORK_DIR, sizeof g.config.WORK_DIR, "%s", dir);
    snprintf(g.config.SUPPORT_DIR, sizeof g.config.SUPPORT_DIR, "%s", dir);
    g.pov.settings.Overwrite_Pov = 1;
    Pov_SetSurfaceGenerator(Surface);
    Layer_Append();
    PolylineData p = Poly_Default();
    Point3 pts[2] = {{0, 0, 0}, {1, 0, 0}};
    p.form = FORM_EXTRUSION;
    p.points = pts;
    p.count = 2;
    Poly_AddToScene(&p)->flags = Smooth_triangle;

    // Progress dots go to the message area: keep them off the terminal.
    fflush(stdout);
    int saved = dup(1);
    int null = open("/dev/null", O_WRONLY);
    dup2(null, 1);

    auto t0 = std::chrono::steady_clock::now();
    PlainText((std::string(dir) + "/plain.pov").c_str());
    double plain = Seconds(t0);
    t0 = std::chrono::steady_clock::now();
    int r = Export_Pov();
    double export_s = Seconds(t0);

    fflush(stdout);
    dup2(saved, 1);
    printf("export of 100000 smooth triangles: %.3f s (result %d)\n", export_s, r);
    printf("plain formatting and writing:      %.3f s\n", plain);
    printf("ratio:                             %.2f\n", export_s / plain);
    State_Reset();
    std::string cleanup = std::string("rm -rf ") + dir;
    return system(cleanup.c_str()) == 0 ? 0 : 1;
}
