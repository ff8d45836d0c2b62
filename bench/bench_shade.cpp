// bench_shade.cpp - SHADE of 100,000 triangles on a 1024 x 768 screen
// (headless display), against a plain loop that projects the same
// triangles and fills them into a float depth buffer in memory.
//
// The plain loop is the floor: no facet sink, no layer transform, no
// clipping polygons, no display calls, just a bounding box and three edge
// functions per triangle. The ratio says what the shaded view's generality
// (and the display layer) costs on top of that.
#include <algorithm>
#include <cmath>
#include <cstdio>
#include <vector>

#include "bench_util.h"
#include "gfx/gfx.h"
#include "gfx/headless/headless.h"
#include "gfx/screen.h"
#include "model/output.h"
#include "scene/layers.h"
#include "state.h"
#include "view/shade.h"
#include "view/view_commands.h"
#include "view/viewport.h"

namespace {

const int kTriangles = 100000;
const int kRuns = 5;

unsigned g_seed = 12345;
double Random() {   // 0..1, the same sequence every run
    g_seed = g_seed * 1103515245u + 12345u;
    return (g_seed >> 8) / 16777216.0;
}

// The plain loop: project with the viewport, fill by edge functions.
void PlainFill(const std::vector<TriangleData>& tris, std::vector<float>& depth, std::vector<unsigned char>& colour,
               int W, int H) {
    std::fill(depth.begin(), depth.end(), 999999.0f);
    Viewport* vp = &g.view.Active_Viewport;
    const Point3 D = vp->axis_d;
    for (const TriangleData& t : tris) {
        double x[3], y[3], d[3];
        for (int i = 0; i < 3; i++) {
            View_Project(vp, t.corner[i]);
            x[i] = vp->screen_x, y[i] = vp->screen_y, d[i] = -Vec_Dot(t.corner[i], D);
        }
        const double area = (x[1] - x[0]) * (y[2] - y[0]) - (x[2] - x[0]) * (y[1] - y[0]);
        if (area == 0) continue;
        const double inv = 1 / area;
        const int x0 = std::max(0, (int)std::floor(std::min({x[0], x[1], x[2]})));
        const int x1 = std::min(W - 1, (int)std::ceil(std::max({x[0], x[1], x[2]})));
        const int y0 = std::max(0, (int)std::floor(std::min({y[0], y[1], y[2]})));
        const int y1 = std::min(H - 1, (int)std::ceil(std::max({y[0], y[1], y[2]})));
        for (int py = y0; py <= y1; py++)
            for (int px = x0; px <= x1; px++) {
                const double w0 = ((x[2] - x[1]) * (py - y[1]) - (y[2] - y[1]) * (px - x[1])) * inv;
                const double w1 = ((x[0] - x[2]) * (py - y[2]) - (y[0] - y[2]) * (px - x[2])) * inv;
                const double w2 = 1 - w0 - w1;
                if (w0 < 0 || w1 < 0 || w2 < 0) continue;
                const float z = (float)(w0 * d[0] + w1 * d[1] + w2 * d[2]);
                float& b = depth[(size_t)py * W + px];
                if (z < b) {
                    b = z;
                    colour[(size_t)py * W + px] = 7;
                }
            }
    }
}

double Best(const std::vector<double>& t) { return *std::min_element(t.begin(), t.end()); }

}  // namespace

int main() {
    State_Reset();
    Screen_Open(261);   // 1024 x 768, 256 colours
    const int W = g.screen.width, H = g.screen.height;
    Views_SetScreen(W, H, 0, H);
    Viewport* vp = &g.view.Active_Viewport;
    View_Init(vp);
    View_SetRect(vp, 0, 0, W - 1, H - 1);
    View_SetKind(vp, VIEW_TOP);
    View_SetArea(vp, 100);   // 3.84 pixels per unit
    vp->GRID = vp->AXIS = vp->CENTER = vp->title_on = 0;
    g.view.Viewport_Layout = 1;

    // Triangles of about 6 units (some 23 pixels) scattered over the view
    // and over 100 units of depth, so that many overlap.
    Layer_NewFirst()->color = LGREEN;
    std::vector<TriangleData> tris(kTriangles);
    for (TriangleData& t : tris) {
        Point3 c{(Random() - 0.5) * 260, (Random() - 0.5) * 100, (Random() - 0.5) * 195};
        for (Point3& p : t.corner) p = {c.x + (Random() - 0.5) * 8, c.y + (Random() - 0.5) * 8, c.z + (Random() - 0.5) * 8};
        Add_Triangle(&t);
    }

    g.shade.Shade_Type = 1;
    std::vector<double> shade, plain;
    for (int run = 0; run < kRuns; run++) {
        double t0 = Now();
        if (!Shade_Begin()) return 1;
        g.output.Output_Mode = OUTPUT_SHADE;
        View_Refresh();
        g.output.Output_Mode = OUTPUT_SCREEN;
        Shade_End();
        shade.push_back(Now() - t0);
    }
    long shaded = 0;   // pixels the last SHADE run lit
    for (int i = 0; i < W * H; i++) shaded += Headless_Frame()[i] >= 16;
    std::vector<float> depth((size_t)W * H);
    std::vector<unsigned char> colour((size_t)W * H);
    for (int run = 0; run < kRuns; run++) {
        double t0 = Now();
        PlainFill(tris, depth, colour, W, H);
        plain.push_back(Now() - t0);
    }
    long covered = 0;
    for (unsigned char c : colour) covered += c != 0;
    std::printf("SHADE, %d triangles, %dx%d, %d runs\n", kTriangles, W, H, kRuns);
    std::printf("  shaded view    best %.3f s  median %.3f s  (%ld pixels lit)\n", Best(shade), Median(shade),
                shaded);
    std::printf("  plain loop     best %.3f s  median %.3f s  (%ld of %d pixels covered)\n", Best(plain),
                Median(plain), covered, W * H);
    std::printf("  ratio (best)   %.2f\n", Best(shade) / Best(plain));
    return 0;
}
