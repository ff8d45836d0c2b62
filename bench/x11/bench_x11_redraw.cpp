// bench_x11_redraw.cpp - redrawing all viewports of a scene of 1,000,000
// line segments through the program's own path (layers, Object_Draw, facet
// sink, 3D pen, display layer), against a minimal Xlib program that projects
// the same segments and draws them into a window and a pixmap; and how soon
// interruptible drawing (the drag) stops once the pointer moves.
// Run under a display, e.g.: Xvfb :55 & DISPLAY=:55 ./bench_x11_redraw
#include <X11/Xlib.h>
#include <sys/wait.h>
#include <unistd.h>

#include <chrono>
#include <cmath>
#include <cstdio>
#include <vector>

#include "gfx/gfx.h"
#include "gfx/screen.h"
#include "state.h"
#include "view/view_commands.h"
#include "view/view_draw.h"

namespace {

constexpr int kPolylines = 1000;
constexpr int kPoints = 1001;   // 1000 segments each

double Now() {
    using namespace std::chrono;
    return duration<double>(steady_clock::now().time_since_epoch()).count();
}

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

// The bare program: the same four views as plain axis projections (slot 1's
// turned view included through its cached sines), clipped by the server.
double BareXlib(const std::vector<Point3>& pts) {
    Display* d = XOpenDisplay(nullptr);
    int s = DefaultScreen(d);
    Window w = XCreateSimpleWindow(d, RootWindow(d, s), 0, 0, 640, 480, 1, 0, 0);
    Pixmap pm = XCreatePixmap(d, w, 640, 480, DefaultDepth(d, s));
    GC gc = XCreateGC(d, w, 0, nullptr);
    XMapWindow(d, w);
    XSync(d, False);
    double t0 = Now();
    for (int slot = 4; slot >= 1; slot--) {
        const Viewport& vp = g.view.Viewports[slot];
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
    XSync(d, False);
    double t = Now() - t0;
    XCloseDisplay(d);
    return t;
}

// Time from a pointer move (made by a second connection after `delay`
// seconds) until interruptible drawing has stopped.
void StopLatency(double delay) {
    int fds[2];
    if (pipe(fds) != 0) return;
    X11_WarpMouse(300, 200);
    X11_PumpEvents();
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
    Views_SelectSlot(2);
    int done = Scene_DrawObjectsInterruptible();
    double stopped = Now();
    double moved = 0;
    if (read(fds[0], &moved, sizeof moved) != (ssize_t)sizeof moved) moved = 0;
    waitpid(child, nullptr, 0);
    printf("poll every %.0f ms: drawing %s %.1f ms after start, %.2f ms after the pointer moved\n",
           g.view.poll_interval * 1e3, done ? "FINISHED (no stop)" : "stopped", (stopped - t0) * 1e3, (stopped - moved) * 1e3);
}

}  // namespace

int main() {
    State_Reset();
    Screen_Open(18);
    Screen_DrawFrame();
    Views_SetScreen(g.screen.width, g.screen.height, SCREEN_LINE, g.screen.inputLineY);
    Views_SetAreaWidth(g.screen.sideMenuX);
    Views_Reset();
    std::vector<Point3> pts = Walks();
    BuildScene(pts);
    const double segments = (double)kPolylines * (kPoints - 1);

    double t0 = Now();
    Views_RedrawAll();
    X11_GetPixel(0, 0);   // a round trip: the server has drawn everything
    double all = Now() - t0;

    double bare = BareXlib(pts);

    // One viewport drawn interruptibly with nothing happening: the cost of
    // asking for events after every segment, and at most every 2 ms.
    double polled[2];
    const double intervals[2] = {0, 0.002};
    for (int i = 0; i < 2; i++) {
        g.view.poll_interval = intervals[i];
        t0 = Now();
        Scene_DrawObjectsInterruptible();
        X11_GetPixel(0, 0);
        polled[i] = Now() - t0;
    }

    printf("scene: %.0f segments, 4 viewports (layout 6)\n", segments);
    printf("Views_RedrawAll:       %.3f s  (%.2f M segments/s drawn)\n", all, 4 * segments / all / 1e6);
    printf("bare Xlib, same views: %.3f s  (%.2f M segments/s)\n", bare, 4 * segments / bare / 1e6);
    printf("program / bare:        %.2f\n", all / bare);
    printf("one viewport, interruptible, polling after every segment: %.3f s\n", polled[0]);
    printf("one viewport, interruptible, polling every 2 ms (drag):   %.3f s\n", polled[1]);
    g.view.poll_interval = 0;
    StopLatency(0.05);
    g.view.poll_interval = 0.002;
    StopLatency(0.05);
    return 0;
}
