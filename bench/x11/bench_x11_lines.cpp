// bench_x11_lines.cpp - lines per second through the display layer (window
// and pixmap) against a bare Xlib loop issuing the same XDrawLine calls.
// Run under a display, e.g.: Xvfb :55 & DISPLAY=:55 ./bench_x11_lines
#include <X11/Xlib.h>

#include <chrono>
#include <cstdio>

#include "gfx/gfx.h"
#include "gfx/screen.h"
#include "state.h"

namespace {

constexpr int kLines = 400000;

double Now() {
    using namespace std::chrono;
    return duration<double>(steady_clock::now().time_since_epoch()).count();
}

// The same pseudo-random end points for both loops.
void End(int i, int* x, int* y) {
    unsigned v = (unsigned)i * 2654435761u;
    *x = (int)(v % 640);
    *y = (int)((v >> 12) % 480);
}

}  // namespace

int main() {
    State_Reset();
    Screen_Open(18);
    X11_SetColor(YELLOW);
    double t0 = Now();
    for (int i = 0; i < kLines; i++) {
        int x, y;
        End(i, &x, &y);
        X11_LineTo(x, y);
    }
    X11_GetPixel(0, 0);   // a round trip: the server has drawn everything
    double layer = Now() - t0;

    // Bare Xlib: one window and one pixmap, XDrawLine to both.
    Display* d = XOpenDisplay(nullptr);
    int s = DefaultScreen(d);
    Window w = XCreateSimpleWindow(d, RootWindow(d, s), 700, 0, 640, 480, 1, 0, 0);
    Pixmap p = XCreatePixmap(d, w, 640, 480, DefaultDepth(d, s));
    GC gc = XCreateGC(d, w, 0, nullptr);
    XSetForeground(d, gc, 0xfcfc00);
    XMapWindow(d, w);
    XSync(d, False);
    t0 = Now();
    int px = 0, py = 0;
    for (int i = 0; i < kLines; i++) {
        int x, y;
        End(i, &x, &y);
        XDrawLine(d, p, gc, px, py, x, y);
        XDrawLine(d, w, gc, px, py, x, y);
        px = x, py = y;
    }
    XSync(d, False);
    double bare = Now() - t0;
    printf("lines: %d (each to window and pixmap)\n", kLines);
    printf("display layer: %.0f lines/s\n", kLines / layer);
    printf("bare Xlib:     %.0f lines/s\n", kLines / bare);
    printf("layer / bare:  %.2f\n", bare / layer);
    XCloseDisplay(d);
    return 0;
}
