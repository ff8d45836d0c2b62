// workfile_bench.cpp - work-file load and save against plain stdio moving the
// same bytes, side by side in one run.
//
// Scenes: one polyline of 1,000,000 points (24 MB); 100,000 triangles
// (10.3 MB). Baselines: the saved file read back through a stdio stream in
// 24-byte values (one fread per point), and in one fread; the same number
// of bytes written with fwrite in 24-byte values, flushed to the disk and
// renamed into place as a save does. The layer is hidden so that the redraw that ends a load
// draws nothing: drawing is measured by bench_x11_redraw.
//
//   make -C build workfile_bench && build/workfile_bench
#include <fcntl.h>
#include <unistd.h>

#include <cstdio>
#include <string>
#include <vector>

#include "bench_util.h"
#include "scene/layers.h"
#include "scene/object.h"
#include "state.h"
#include "workfile/workfile.h"

namespace {

const int kRuns = 5;

void ReadStdio(const char* path) {
    char chunk[24];
    FILE* f = fopen(path, "rb");
    if (!f) return;
    while (fread(chunk, 1, sizeof chunk, f) == sizeof chunk) {
    }
    fclose(f);
}

void WriteStdio(const char* path, long bytes) {
    std::string temp = std::string(path) + ".tmp";
    char chunk[24] = {};
    FILE* f = fopen(temp.c_str(), "wb");
    if (!f) return;
    for (long n = 0; n < bytes; n += 24) fwrite(chunk, 1, 24, f);
    fflush(f);
    fsync(fileno(f));
    fclose(f);
    rename(temp.c_str(), path);
}

// Loads print "Redrawing..." through the message area (standard output
// while no window is open): keep it off the report.
template <typename F>
void Quiet(F f) {
    fflush(stdout);
    int saved = dup(1);
    int null = open("/dev/null", O_WRONLY);
    dup2(null, 1);
    f();
    fflush(stdout);
    dup2(saved, 1);
    close(null);
    close(saved);
}

void Measure(const char* scene, void (*build)(), const std::string& dir) {
    std::string path = dir + "/bench.qmr", plain = dir + "/plain.bin";
    State_Reset();
    build();
    g.scene.First_Layer->on = 0;
    if (!WorkFile_Save(path.c_str())) {
        fprintf(stderr, "save failed\n");
        return;
    }
    long bytes = FileSize(path.c_str());
    printf("\n%s: %ld bytes\n", scene, bytes);
    std::string what = std::string("save ") + scene;
    Compare(
        what.c_str(), "fwrite + fsync + rename", kRuns, [&] { WorkFile_Save(path.c_str()); },
        [&] { WriteStdio(plain.c_str(), bytes); });
    what = std::string("load ") + scene;
    Compare(
        what.c_str(), "fread in 24-byte values", kRuns,
        [&] { Quiet([&] { WorkFile_Load(path.c_str()); }); }, [&] { ReadStdio(path.c_str()); });
    std::vector<char> whole(bytes);
    Compare(
        what.c_str(), "one fread of the whole file", kRuns,
        [&] { Quiet([&] { WorkFile_Load(path.c_str()); }); },
        [&] {
            if (FILE* f = fopen(path.c_str(), "rb")) {
                if (fread(whole.data(), 1, whole.size(), f) != whole.size())
                    fprintf(stderr, "short read\n");
                fclose(f);
            }
        });
    unlink(plain.c_str());
    unlink(path.c_str());
}

void OnePolyline() {
    Layer_NewFirst();
    std::vector<Point3> pts(1000000);
    for (size_t i = 0; i < pts.size(); i++) pts[i] = {double(i), double(i) * 0.5, -double(i)};
    PolylineData p = Poly_Default();
    p.points = pts.data();
    p.count = static_cast<int>(pts.size());
    Poly_AddToScene(&p);
}

void Triangles() {
    Layer_NewFirst();
    for (int i = 0; i < 100000; i++) {
        TriangleData t{{{double(i), 0, 0}, {0, double(i), 0}, {0, 0, double(i)}}};
        Add_Triangle(&t);
    }
}

}  // namespace

int main() {
    char dir[] = "/tmp/qmr_wf_bench_XXXXXX";
    if (!mkdtemp(dir)) return 1;
    Measure("1 polyline, 1,000,000 points", OnePolyline, dir);
    Measure("100,000 triangles", Triangles, dir);
    State_Reset();
    rmdir(dir);
    return 0;
}
