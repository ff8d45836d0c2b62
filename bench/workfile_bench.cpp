// workfile_bench.cpp - save and load times of large scenes against plain
// stdio reading and writing of the same number of bytes.
//
// Scenes: one polyline of 1,000,000 points; 100,000 small objects (triangles).
// Also shows what one-element-per-insert growth of the point list would cost
// while loading, the reason the reader grows its temporary list in steps.
#include <chrono>
#include <cstdio>
#include <string>
#include <unistd.h>
#include <vector>

#include "bench_util.h"
#include "state.h"
#include "workfile/workfile.h"

namespace {


// Plain stdio: the same bytes written and read in 24-byte values.
void PlainStdio(const char* path, long bytes, double* write_s, double* read_s) {
    std::vector<char> chunk(24, 'x');
    double t = Now();
    FILE* f = fopen(path, "wb");
    for (long n = 0; n < bytes; n += 24) fwrite(chunk.data(), 1, 24, f);
    fclose(f);
    *write_s = Now() - t;
    t = Now();
    f = fopen(path, "rb");
    while (fread(chunk.data(), 1, 24, f) == 24) {
    }
    fclose(f);
    *read_s = Now() - t;
}

void Report(const char* what, const char* path) {
    double t = Now();
    if (!WorkFile_Save(path)) fprintf(stderr, "save failed\n");
    double save = Now() - t;
    long bytes = FileSize(path);
    State_Reset();
    // Loading prints "Redrawing..." through the message area.
    fflush(stdout);
    t = Now();
    if (!WorkFile_Load(path)) fprintf(stderr, "load failed\n");
    double load = Now() - t;
    std::string plain = std::string(path) + ".plain";
    double pw, pr;
    PlainStdio(plain.c_str(), bytes, &pw, &pr);
    unlink(plain.c_str());
    unlink(path);
    printf("\n%-28s %10ld bytes  save %.3f s  load %.3f s  | stdio write %.3f s  read %.3f s\n",
           what, bytes, save, load, pw, pr);
}

}  // namespace

int main() {
    const char* path = "/tmp/qmr_bench.qmr";
    State_Reset();
    Layer_NewFirst();
    PolylineData p = Poly_Default();
    std::vector<Point3> pts(1000000);
    for (size_t i = 0; i < pts.size(); i++) pts[i] = {double(i), double(i) * 0.5, -double(i)};
    p.points = pts.data();
    p.count = static_cast<int>(pts.size());
    Poly_AddToScene(&p);
    Report("1 polyline, 1,000,000 points", path);

    State_Reset();
    Layer_NewFirst();
    for (int i = 0; i < 100000; i++) {
        TriangleData t{{{double(i), 0, 0}, {0, double(i), 0}, {0, 0, double(i)}}};
        Add_Triangle(&t);
    }
    Report("100,000 triangles", path);

    // One element per insert, as Poly_InsertPoint grows an array.
    State_Reset();
    PolylineData q = Poly_Default();
    double t = Now();
    for (int i = 0; i < 1000000; i++) Poly_InsertPoint(&q, pts[i], q.count);
    printf("\nPoly_InsertPoint x 1,000,000 (append, one element per call): %.3f s\n", Now() - t);
    Mem_Free(q.points);
    return 0;
}
