// bench_x11_redraw.cpp - drawing a scene of 1,000,000 line segments through
// the program's own path (layers, Object_Draw, facet sink, 3D pen, display
// layer) against a minimal Xlib program that projects the same segments and
// draws them into a window and a pixmap; and how soon interruptible drawing
// stops once the pointer moves.
//
// One viewport drawn interruptibly (as a drag draws) at the program's
// default input polling and at one poll every 2 ms, against the bare program
// drawing that viewport; then all four viewports (Views_RedrawAll) against
// the bare program drawing all four. Each timing ends with a round trip, so
// the server has drawn everything; the bare side has a connection of its own.
//
//   Xvfb :55 -screen 0 1280x1024x24 &
//   make -C build bench_x11_redraw && DISPLAY=:55 build/bench_x11_redraw
#include <X11/Xlib.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cmath>
#include <cstdio>
#include <vector>

#include "../bench_util.h"
#include "gfx/gfx.h"
#include "gfx/screen.h"
#include "scene/layers.h"
#include "scene/object.h"
#include "state.h"
#include "view/view_commands.h"
#include "view/view_draw.h"
#include "view/viewport.h"

namespace {

constexpr int kPolylines = 1000;
constexpr int kPoints = 1001;  // 1000 segments each
constexpr int kRuns = 3;

// Random walks inside +-8 units: short segments spread over each view.
std::vector<Point3> Walks() {
    std::vector<Point3> pts((size_t)kPolylines * kPoints);
    unsigned v = 12345;
    auto next = [&v] {
        v = v * 1664525u + 1013904223u;
        return ((v >> 8) & 0xFFFF) / 65535.0 - 0.5;
    };
    for (int i = 0; i < kPolylines; i++) {
        Point3 p{next() * 14, next() * 14, next() * 14};
        for (int k = 0; k < kPoints; k++) {
            p = {p.x + next() * 0.6, p.y + next() * 0.6, p.z + next() * 0.6};
            p.x = std::fmax(-8, std::fmin(8, p.x));
            p.y = std::fmax(-8, std::fmin(8, p.y));
            p.z = std::fmax(-8, std::fmin(8, p.z));
            pts[(size_t)i * kPoints + k] = p;
        }
    }
    return pts;
}

void BuildScene(const std::vector<Point3>& pts) {
    Layer* l = Layer_Append();
    l->color = LCYAN;
    for (int i = 0; i < kPolylines; i++) {
        PolylineData p = Poly_Default();
        p.form = FORM_POLYLINE;
        p.poly_flags = 0;
        p.count = kPoints;
        p.points = const_cast<Point3*>(&pts[(size_t)i * kPoints]);
        Poly_AddToScene(&p);
    }
}

// The bare program: its own window and pixmap, the views as plain axis
// projections (a turned view through its cached sines), clipped by the
// server.
struct Bare {
    Display* d;
    Window w;
    Pixmap pm;
    GC gc;

    Bare() {
        d = XOpenDisplay(nullptr);
        int s = DefaultScreen(d);
        w = XCreateSimpleWindow(d, RootWindow(d, s), 0, 0, 640, 480, 1, 0, 0);
        pm = XCreatePixmap(d, w, 640, 480, DefaultDepth(d, s));
        gc = XCreateGC(d, w, 0, nullptr);
        XMapWindow(d, w);
        XSync(d, False);
    }
    ~Bare() { XCloseDisplay(d); }

    void Draw(const std::vector<Point3>& pts, const Viewport& vp) {
        XRectangle clip{(short)vp.rect_left, (short)vp.rect_top,
                        (unsigned short)(vp.rect_right - vp.rect_left + 1),
                        (unsigned short)(vp.rect_bottom - vp.rect_top + 1)};
        XSetClipRectangles(d, gc, 0, 0, &clip, 1, Unsorted);
        XSetForeground(d, gc, 0);
        XFillRectangle(d, pm, gc, clip.x, clip.y, clip.width, clip.height);
        XFillRectangle(d, w, gc, clip.x, clip.y, clip.width, clip.height);
        XSetForeground(d, gc, 0x00fcfc);
        auto project = [&vp](Point3 p, int* x, int* y) {
            Point3 q{p.x - vp.ELEVATION.x, p.y - vp.ELEVATION.y, p.z - vp.ELEVATION.z};
            double a = q.x * vp.axis_h.x + q.y * vp.axis_h.y + q.z * vp.axis_h.z;
            double b = q.x * vp.axis_v.x + q.y * vp.axis_v.y + q.z * vp.axis_v.z;
            if (vp.WORLD) {
                double n = q.x * vp.axis_d.x + q.y * vp.axis_d.y + q.z * vp.axis_d.z;
                double u = a * vp.cos_heading - b * vp.sin_heading;
                b = n * vp.sin_pitch + (a * vp.sin_heading + b * vp.cos_heading) * vp.cos_pitch;
                a = u;
            }
            *x = (int)(a * vp.pixels_per_unit + vp.screen_cx);
            *y = (int)(vp.screen_cy - b * vp.pixels_per_unit);
        };
        for (int i = 0; i < kPolylines; i++) {
            int px, py;
            project(pts[(size_t)i * kPoints], &px, &py);
            for (int k = 1; k < kPoints; k++) {
                int x, y;
                project(pts[(size_t)i * kPoints + k], &x, &y);
                XDrawLine(d, pm, gc, px, py, x, y);
                XDrawLine(d, w, gc, px, py, x, y);
                px = x;
                py = y;
            }
        }
    }
    void Sync() { XSync(d, False); }
};

// Time from a pointer move (made by a second connection after `delay`
// seconds) until interruptible drawing has stopped.
void StopLatency(double delay) {
    int fds[2];
    if (pipe(fds) != 0) return;
    X11_WarpMouse(300, 200);
    X11_PumpEvents();
    fflush(stdout);
    pid_t child = fork();
    if (child == 0) {
        Display* d = XOpenDisplay(nullptr);
        usleep((useconds_t)(delay * 1e6));
        double t = Now();
        XWarpPointer(d, None, DefaultRootWindow(d), 0, 0, 0, 0, 350, 260);
        XSync(d, False);
        if (write(fds[1], &t, sizeof t) != (ssize_t)sizeof t) _exit(1);
        _exit(0);
    }
    double t0 = Now();
    int done = Scene_DrawObjectsInterruptible();
    double stopped = Now();
    double moved = 0;
    if (read(fds[0], &moved, sizeof moved) != (ssize_t)sizeof moved) moved = 0;
    waitpid(child, nullptr, 0);
    close(fds[0]);
    close(fds[1]);
    printf("poll every %.1f ms: drawing %s %.1f ms after start, %.2f ms after the pointer moved\n",
           g.view.poll_interval * 1e3, done ? "FINISHED (no stop)" : "stopped",
           (stopped - t0) * 1e3, (stopped - moved) * 1e3);
}

// Row by row against the bare program, whose connection closes at the end
// (its window must not take the pointer during the latency test).
void Timings(const std::vector<Point3>& pts, double default_interval) {
    Bare bare;

    // One viewport (slot 1), interruptible, as a drag draws it.
    Views_SelectSlot(1);
    const Viewport one = g.view.Active_Viewport;
    auto interruptible = [&](double interval) {
        g.view.poll_interval = interval;
        View_Draw(&g.view.Active_Viewport);
        Scene_DrawObjectsInterruptible();
        X11_GetPixel(0, 0);  // a round trip: the server has drawn everything
    };
    auto bare_one = [&] {
        bare.Draw(pts, one);
        bare.Sync();
    };
    Compare(
        "1 viewport, default polling", "bare Xlib, same viewport", kRuns,
        [&] { interruptible(default_interval); }, bare_one);
    Compare(
        "1 viewport, polling every 2 ms", "bare Xlib, same viewport", kRuns,
        [&] { interruptible(0.002); }, bare_one);
    g.view.poll_interval = default_interval;

    // All four viewports, wall clock and this process's CPU time.
    std::vector<double> prog_cpu, bare_cpu;
    Compare(
        "4 viewports, Views_RedrawAll", "bare Xlib, same 4 views", kRuns,
        [&] {
            double c = CpuNow();
            Views_RedrawAll();
            X11_GetPixel(0, 0);
            prog_cpu.push_back(CpuNow() - c);
        },
        [&] {
            double c = CpuNow();
            for (int slot = 4; slot >= 1; slot--) bare.Draw(pts, g.view.Viewports[slot]);
            bare.Sync();
            bare_cpu.push_back(CpuNow() - c);
        });
    printf("4 viewports, client CPU time: program %.3f s, bare %.3f s, ratio %.2f\n",
           Median(prog_cpu), Median(bare_cpu), Median(prog_cpu) / Median(bare_cpu));
}

}  // namespace

int main() {
    State_Reset();
    const double default_interval = g.view.poll_interval;
    Screen_Open(18);
    Screen_DrawFrame();
    Views_SetScreen(g.screen.width, g.screen.height, SCREEN_LINE, g.screen.inputLineY);
    Views_SetAreaWidth(g.screen.sideMenuX);
    Views_Reset();
    std::vector<Point3> pts = Walks();
    BuildScene(pts);
    const double segments = (double)kPolylines * (kPoints - 1);
    printf(
        "scene: %.0f segments; layout %d; the program's default poll interval %.1f ms (0 = after "
        "every segment)\n",
        segments, g.view.Viewport_Layout, default_interval * 1e3);
    Views_RedrawAll();
    X11_GetPixel(0, 0);
    Timings(pts, default_interval);

    // How soon a pointer move stops interruptible drawing.
    Views_SelectSlot(2);
    g.view.poll_interval = default_interval;
    StopLatency(0.05);
    g.view.poll_interval = 0.002;
    StopLatency(0.05);
    return 0;
}
