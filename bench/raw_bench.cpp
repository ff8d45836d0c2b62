// raw_bench.cpp - RAW export and import of 1,000,000 triangles, and assimp
// reading the same file, in one run.
//
// The scene is one layer of 500,000 four-cornered faces (each written as two
// triangles). The import reads the file back as one block (the insertion
// prompt is answered with Enter), so it includes marking every triangle
// selected, drawing it highlighted, and the move that places the block.
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <string>
#include <unistd.h>

#include "exchange/exchange.h"
#include "gfx/headless/headless.h"
#include "gfx/screen.h"
#include "bench_util.h"
#include "state.h"

namespace {


long CountTriangles() {
    long n = 0;
    for (Layer* l = g.scene.First_Layer; l; l = l->next)
        for (Object* o = l->first_object; o; o = o->next) n += o->kind == KIND_TRIANGLE;
    return n;
}

}  // namespace

int main() {
    const int faces = 500000;
    char dir[] = "/tmp/qmr_raw_bench_XXXXXX";
    if (!mkdtemp(dir)) return 1;
    State_Reset();
    Screen_Open(18);   // messages and drawing go to the headless screen
    Screen_DrawFrame();
    snprintf(g.config.WORK_DIR, sizeof g.config.WORK_DIR, "%s", dir);
    snprintf(g.run.workFileName, sizeof g.run.workFileName, "bench");
    Layer* layer = Layer_NewFirst();
    snprintf(layer->name, sizeof layer->name, "MESH");
    for (int i = 0; i < faces; i++) {
        double x = (i % 1000) * 0.01, z = (i / 1000) * 0.01;
        FaceData f{{{x, 0, z}, {x + 0.01, 0, z}, {x + 0.01, 0.001 * (i % 7), z + 0.01}, {x, 0, z + 0.01}}};
        if (!Add_Face(&f)) return 1;
    }

    double t = Now();
    Raw_Export();
    double export_s = Now() - t;
    std::string path = std::string(dir) + "/bench.raw";
    long bytes = FileSize(path.c_str());

    // import into an empty layer; Enter at the insertion prompt (the line
    // prompt reads standard input, the interactive one the headless queue)
    Scene_Clear();
    Layer_NewFirst();
    if (!freopen("/dev/null", "r", stdin)) return 1;
    Headless_PushText("\n");
    g.input.currentCommand = 120;
    t = Now();
    Raw_Import(path.c_str());
    double import_s = Now() - t;
    long triangles = CountTriangles();

    std::string cmd = "assimp info " + path + " > " + dir + "/assimp.txt 2>&1";
    t = Now();
    int status = system(cmd.c_str());
    double assimp_s = Now() - t;
    std::string faces_line = "?";
    if (FILE* f = fopen((std::string(dir) + "/assimp.txt").c_str(), "r")) {
        char line[256];
        while (fgets(line, sizeof line, f))
            if (std::string(line).rfind("Faces:", 0) == 0) faces_line = line;
        fclose(f);
    }

    printf("RAW file: %ld bytes, %d faces written as %d triangles\n", bytes, faces, 2 * faces);
    printf("Raw_Export:  %.3f s  (%.0f triangles/s)\n", export_s, 2.0 * faces / export_s);
    printf("Raw_Import:  %.3f s  (%ld triangles read back, %.0f triangles/s)\n", import_s, triangles,
           triangles / import_s);
    printf("assimp info: %.3f s  (exit %d) %s", assimp_s, status, faces_line.c_str());
    State_Reset();
    unlink(path.c_str());
    unlink((std::string(dir) + "/assimp.txt").c_str());
    rmdir(dir);
    return 0;
}
