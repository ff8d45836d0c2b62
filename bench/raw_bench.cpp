// raw_bench.cpp - RAW import of 1,000,000 triangles against assimp reading
// the same file, in one run, with the peak memory of each.
//
// The scene is one layer of 500,000 four-cornered faces, exported as
// 1,000,000 triangle lines. The import reads the file back as one block (the
// placement keeps the insertion point), so it includes marking every
// triangle selected, drawing it highlighted into the headless screen and the
// move that places the block. The import runs in a child process so that
// its peak resident size is its own; assimp's is that of its process.
//
//   make -C build raw_bench && build/raw_bench
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstdio>
#include <cstdlib>
#include <string>
#include <vector>

#include "bench_util.h"
#include "exchange/exchange.h"
#include "gfx/screen.h"
#include "scene/layers.h"
#include "state.h"

namespace {

const int kFaces = 500000;
const int kRuns = 3;

int KeepInsertion(Point3*) {
    return 1;
}

long CountTriangles() {
    long n = 0;
    for (Layer* l = g.scene.First_Layer; l; l = l->next)
        for (Object* o = l->first_object; o; o = o->next) n += o->kind == KIND_TRIANGLE;
    return n;
}

struct ChildRun {
    double seconds = 0;
    double peak_mib = 0;
    long triangles = 0;
    double kids_mib = 0;  // peak of the child's own children (assimp)
};

// Runs `work` in a child; it reports its time and count through a pipe, the
// kernel reports its peak resident size.
template <typename F>
ChildRun InChild(F work) {
    ChildRun r;
    int fds[2];
    if (pipe(fds) != 0) return r;
    fflush(stdout);
    pid_t pid = fork();
    if (pid == 0) {
        close(fds[0]);
        ChildRun c = work();
        if (write(fds[1], &c, sizeof c) != (ssize_t)sizeof c) _exit(1);
        _exit(0);
    }
    close(fds[1]);
    if (read(fds[0], &r, sizeof r) != (ssize_t)sizeof r) r = ChildRun{};
    close(fds[0]);
    int status;
    struct rusage use;
    wait4(pid, &status, 0, &use);
    r.peak_mib = use.ru_maxrss / 1024.0;
    return r;
}

}  // namespace

int main() {
    char dir[] = "/tmp/qmr_raw_bench_XXXXXX";
    if (!mkdtemp(dir)) return 1;
    State_Reset();
    snprintf(g.config.WORK_DIR, sizeof g.config.WORK_DIR, "%s", dir);
    snprintf(g.run.workFileName, sizeof g.run.workFileName, "bench");
    Layer* layer = Layer_NewFirst();
    snprintf(layer->name, sizeof layer->name, "MESH");
    for (int i = 0; i < kFaces; i++) {
        double x = (i % 1000) * 0.01, z = (i / 1000) * 0.01;
        FaceData f{
            {{x, 0, z}, {x + 0.01, 0, z}, {x + 0.01, 0.001 * (i % 7), z + 0.01}, {x, 0, z + 0.01}}};
        if (!Add_Face(&f)) return 1;
    }
    if (Raw_Export() != 1) return 1;
    std::string path = std::string(dir) + "/bench.raw";
    printf("\nRAW file: %ld bytes, %d triangles\n", FileSize(path.c_str()), 2 * kFaces);
    State_Reset();  // the children start from an empty scene

    std::vector<double> ours, theirs, ours_mib, theirs_mib;
    long read_back = 0;
    for (int run = 0; run < kRuns; run++) {
        ChildRun c = InChild([&] {
            Screen_Open(18);  // messages and drawing go to the headless screen
            Screen_DrawFrame();
            Layer_NewFirst();
            ChildRun r;
            double t = Now();
            Raw_Import(path.c_str(), KeepInsertion);
            r.seconds = Now() - t;
            r.triangles = CountTriangles();
            return r;
        });
        ours.push_back(c.seconds);
        ours_mib.push_back(c.peak_mib);
        read_back = c.triangles;
        ChildRun a = InChild([&] {
            ChildRun r;
            std::string cmd = "assimp info " + path + " > /dev/null 2>&1";
            double t = Now();
            if (system(cmd.c_str()) != 0) r.triangles = -1;
            r.seconds = Now() - t;
            struct rusage kids;  // the shell and assimp
            getrusage(RUSAGE_CHILDREN, &kids);
            r.kids_mib = kids.ru_maxrss / 1024.0;
            return r;
        });
        theirs.push_back(a.seconds);
        theirs_mib.push_back(a.kids_mib);
        if (a.triangles < 0) printf("assimp failed (is assimp-utils installed?)\n");
    }
    double mo = Median(ours), mt = Median(theirs);
    printf("Raw_Import:  %.3f s  peak %.0f MiB  (%ld triangles read back)\n", mo, Median(ours_mib),
           read_back);
    printf("assimp info: %.3f s  peak %.0f MiB\n", mt, Median(theirs_mib));
    printf("ratio time %.2f, memory %.2f  (medians of %d)\n", mo / mt,
           Median(ours_mib) / Median(theirs_mib), kRuns);
    unlink(path.c_str());
    rmdir(dir);
    return 0;
}
