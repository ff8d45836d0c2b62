// pov_smooth.cpp - exporting one smooth surface of 100,000 triangles,
// against the plain cost of formatting and writing the same text; and the
// normal pass over the spool file (memory refused) at growing sizes.
//
// The surface is a wavy grid of 250 columns, two triangles per cell,
// spooled through "triangle.tmp" and written as smooth_triangle statements
// with averaged normals. The baselines format the same statements with the
// face normals, without spool or normal pass, through a stdio stream with
// the same buffer: by fprintf, and by std::to_chars (which writes numbers as
// %g does, faster). Progress messages go where they go before the window opens
// (standard output, sent to /dev/null here, and the display's transcript).
//
//   make -C build pov_smooth && build/pov_smooth [fallback sizes, e.g. 2000,8000,100000]
#include <fcntl.h>
#include <unistd.h>

#include <charconv>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <string>
#include <vector>

#include "bench_util.h"
#include "pov/pov.h"
#include "scene/mem.h"
#include "state.h"

namespace {

const int kCols = 250;
const int kRuns = 7;
int g_rows = 200;  // 2 * 250 * 200 = 100,000 triangles

Point3 GridPoint(int c, int r) {
    return {c * 0.1, sin(c * 0.07) * cos(r * 0.05), r * 0.1};
}

void Surface(Object*) {
    for (int r = 0; r < g_rows; r++)
        for (int c = 0; c < kCols; c++) {
            Point3 a = GridPoint(c, r), b = GridPoint(c + 1, r), d = GridPoint(c, r + 1),
                   e = GridPoint(c + 1, r + 1);
            Pov_SpoolTriangle(a, b, e);
            Pov_SpoolTriangle(e, d, a);
        }
}

// Appends "<x, y, z>, <u, v, w>" with the numbers as %g writes them.
char* Pair(char* at, Point3 p, Point3 n) {
    const double v[6] = {p.x, p.y, p.z, n.x, n.y, n.z};
    *at++ = '<';
    for (int k = 0; k < 6; k++) {
        at = std::to_chars(at, at + 32, v[k], std::chars_format::general, 6).ptr;
        static const char* const kSep[6] = {", ", ", ", ">, <", ", ", ", ", ">"};
        at = stpcpy(at, kSep[k]);
    }
    return at;
}

// The same statements with the face normals, formatted by fprintf, or
// (`to_chars`) by std::to_chars into a line written with fwrite.
void PlainText(const char* path, bool to_chars) {
    FILE* f = fopen(path, "w");
    if (!f) return;
    setvbuf(f, nullptr, _IOFBF, 10000);
    auto tri = [&](Point3 a, Point3 b, Point3 c) {
        double ux = b.x - a.x, uy = b.y - a.y, uz = b.z - a.z, vx = c.x - a.x, vy = c.y - a.y,
               vz = c.z - a.z;
        Point3 n{uy * vz - uz * vy, uz * vx - ux * vz, ux * vy - uy * vx};
        if (to_chars) {
            char line[512];
            char* at = stpcpy(line, "\n        smooth_triangle {");
            at = stpcpy(Pair(at, a, n), ",\n                         ");
            at = stpcpy(Pair(at, b, n), ",\n                         ");
            at = stpcpy(Pair(at, c, n), " }");
            fwrite(line, 1, at - line, f);
            return;
        }
        fprintf(f, "\n        smooth_triangle {<%g, %g, %g>, <%g, %g, %g>,", a.x, a.y, a.z, n.x,
                n.y, n.z);
        fprintf(f, "\n                         <%g, %g, %g>, <%g, %g, %g>,", b.x, b.y, b.z, n.x,
                n.y, n.z);
        fprintf(f, "\n                         <%g, %g, %g>, <%g, %g, %g> }", c.x, c.y, c.z, n.x,
                n.y, n.z);
    };
    for (int r = 0; r < g_rows; r++)
        for (int c = 0; c < kCols; c++) {
            Point3 a = GridPoint(c, r), b = GridPoint(c + 1, r), d = GridPoint(c, r + 1),
                   e = GridPoint(c + 1, r + 1);
            tri(a, b, e);
            tri(e, d, a);
        }
    fclose(f);
}

std::string Slurp(const std::string& path) {
    std::string s;
    if (FILE* f = fopen(path.c_str(), "rb")) {
        char buf[65536];
        size_t n;
        while ((n = fread(buf, 1, sizeof buf, f)) > 0) s.append(buf, n);
        fclose(f);
    }
    return s;
}

// Export with the spool's buffer refused (`no_memory`), so that the normal
// pass works on the file.
double Export(const char* path, bool no_memory) {
    double t = Now();
    if (no_memory) Mem_FailAfter(1);
    int r = Pov_WriteScene(path);
    Mem_FailAfter(0);
    if (r != 1) fprintf(stderr, "export failed\n");
    return Now() - t;
}

}  // namespace

int main(int argc, char** argv) {
    char dir[] = "/tmp/qmr_pov_bench_XXXXXX";
    if (!mkdtemp(dir)) return 1;
    if (chdir(dir) != 0) return 1;  // "triangle.tmp" goes to the current directory
    State_Reset();
    snprintf(g.config.Scenes_Dir, sizeof g.config.Scenes_Dir, "%s", dir);
    snprintf(g.config.SUPPORT_DIR, sizeof g.config.SUPPORT_DIR, "%s", dir);
    Pov_SetSurfaceGenerator(Surface);
    Layer_Append();
    PolylineData p = Poly_Default();
    Point3 pts[2] = {{0, 0, 0}, {1, 0, 0}};
    p.form = FORM_EXTRUSION;
    p.points = pts;
    p.count = 2;
    Poly_AddToScene(&p)->flags = Smooth_triangle;
    std::string scene = std::string(dir) + "/scene.pov", plain = std::string(dir) + "/plain.pov";

    // Progress dots go to standard output before the window exists: keep
    // them off the terminal.
    fflush(stdout);
    int terminal = dup(1);
    int null = open("/dev/null", O_WRONLY);
    auto quiet = [&] {
        fflush(stdout);
        dup2(null, 1);
    };
    auto loud = [&] {
        fflush(stdout);
        dup2(terminal, 1);
    };

    // Wall clock and CPU time of each, in turn.
    quiet();
    std::vector<double> ex, pl, tc, ex_cpu, pl_cpu, tc_cpu;
    auto timed = [](std::vector<double>* wall, std::vector<double>* cpu, auto work) {
        double t = Now(), c = CpuNow();
        work();
        cpu->push_back(CpuNow() - c);
        wall->push_back(Now() - t);
    };
    for (int i = 0; i < kRuns; i++) {
        timed(&ex, &ex_cpu, [&] { Export(scene.c_str(), false); });
        timed(&pl, &pl_cpu, [&] { PlainText(plain.c_str(), false); });
        timed(&tc, &tc_cpu, [&] { PlainText(plain.c_str(), true); });
    }
    loud();
    printf("smooth surface of %d triangles, %ld bytes of scene file, %ld of plain text\n",
           2 * kCols * g_rows, FileSize(scene.c_str()), FileSize(plain.c_str()));
    for (int b = 0; b < 2; b++) {
        const std::vector<double>& base = b ? tc : pl;
        const std::vector<double>& base_cpu = b ? tc_cpu : pl_cpu;
        printf("%-30s %7.3f s | %-31s %7.3f s | ratio %5.2f, CPU time %5.2f  (medians of %d)\n",
               "EXPORTPOV, normals in memory", Median(ex),
               b ? "std::to_chars of the same text" : "fprintf of the same text", Median(base),
               Median(ex) / Median(base), Median(ex_cpu) / Median(base_cpu), kRuns);
    }

    // The pass over the file at growing sizes: time per triangle stays flat
    // when it is linear.
    std::string sizes = argc > 1 ? argv[1] : "2000,8000,100000";
    for (size_t at = 0; at < sizes.size();) {
        size_t comma = sizes.find(',', at);
        int n = atoi(sizes.substr(at, comma - at).c_str());
        at = comma == std::string::npos ? sizes.size() : comma + 1;
        g_rows = n / (2 * kCols) > 0 ? n / (2 * kCols) : 1;
        int tris = 2 * kCols * g_rows;
        quiet();
        double mem = Export(scene.c_str(), false);
        std::string in_memory = Slurp(scene);
        double file = Export(scene.c_str(), true);
        std::string on_file = Slurp(scene);
        loud();
        printf(
            "%7d triangles: normals in memory %8.3f s, over the spool file %8.3f s (%.2f us a "
            "triangle), same text: %s\n",
            tris, mem, file, file / tris * 1e6, in_memory == on_file ? "yes" : "NO");
    }
    Pov_SetSurfaceGenerator(nullptr);
    State_Reset();
    unlink(scene.c_str());
    unlink(plain.c_str());
    rmdir(dir);
    return 0;
}
