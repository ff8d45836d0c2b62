// xform_bench.cpp - MOVE and COPY through the transform engine against a
// plain loop that adds the same offset to the same points.
//
// Two scenes: 100,000 selected triangles, and one selected polyline of
// 1,000,000 points. Each edit is timed twice: with the screen consumer the
// program installs (every object erased and drawn again through the 3D pen,
// here into the in-memory display's pixels), and with no screen consumer, which leaves
// the engine's own walk, copies and point arithmetic.
//
//   make -C build xform_bench && build/xform_bench
#include <cstdio>
#include <vector>

#include "bench_util.h"
#include "gfx/gfx.h"
#include "gfx/headless/headless.h"
#include "gfx/screen.h"
#include "model/output.h"
#include "model/xform.h"
#include "scene/layers.h"
#include "state.h"

namespace {

const Point3 kOffset{0.25, -0.5, 0.125};

void SelectAll() {
    for (Layer* l = g.scene.First_Layer; l; l = l->next)
        for (Object* o = l->first_object; o; o = o->next)
            if (!o->selected) {
                o->selected = 1;
                g.scene.Selected_Count++;
            }
}

// The plain loop: the same offset added to every point of every object.
double PlainLoop() {
    double t0 = Now();
    for (Layer* l = g.scene.First_Layer; l; l = l->next)
        for (Object* o = l->first_object; o; o = o->next) {
            Point3* p = nullptr;
            int n = 0;
            if (o->kind == KIND_TRIANGLE) {
                p = ((TriangleData*)o->data)->corner;
                n = 3;
            } else if (o->kind == KIND_POLYLINE) {
                p = ((PolylineData*)o->data)->points;
                n = ((PolylineData*)o->data)->count;
            }
            for (int i = 0; i < n; i++) p[i] = Vec_Add(p[i], kOffset);
        }
    return Now() - t0;
}

double Edit(int mode) {
    SelectAll();
    double t0 = Now();
    Xform_Run({0, 0, 0}, kOffset, mode);
    return Now() - t0;
}

void Scene(const char* name, void (*build)()) {
    for (int drawn = 1; drawn >= 0; drawn--) {
        State_Reset();
        Headless_Reset();
        Screen_Open(18);   // a 640 x 480 in-memory screen: lines are drawn into its pixels
        Screen_DrawFrame();
        // The in-memory display also keeps the first 2^20 lines for tests to
        // read; filling that record first keeps its growth out of the timings.
        for (int i = 0; i < (1 << 20); i++) X11_LineTo(i & 63, 0);
        if (!drawn) g.output.consumer[OUTPUT_SCREEN] = OutputConsumer{};
        Layer_NewFirst();
        build();
        const double plain = PlainLoop();
        const double move = Edit(XFORM_MOVE);
        const double copy = Edit(XFORM_COPY);   // doubles the scene
        std::printf("%-22s %-9s plain %8.4f s   MOVE %8.4f s (x%6.1f)   COPY %8.4f s (x%6.1f)\n", name,
                    drawn ? "drawn" : "undrawn", plain, move, move / plain, copy, copy / plain);
        Scene_Clear();
    }
}

void Triangles() {
    for (int i = 0; i < 100000; i++) {
        double x = (i % 400) * 0.05, z = (i / 400) * 0.05;
        TriangleData t{{{x, 0, z}, {x + 0.04, 0, z}, {x, 0, z + 0.04}}};
        Add_Triangle(&t);
    }
}

void LongPolyline() {
    std::vector<Point3> pts(1000000);
    for (size_t i = 0; i < pts.size(); i++) pts[i] = {(double)(i % 1000) * 0.01, 0, (double)(i / 1000) * 0.01};
    PolylineData p = Poly_Default();
    p.points = pts.data();
    p.count = (int)pts.size();
    Poly_AddToScene(&p);
}

}  // namespace

int main() {
    Scene("100,000 triangles", Triangles);
    Scene("polyline of 1,000,000", LongPolyline);
    return 0;
}
