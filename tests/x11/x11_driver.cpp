// x11_driver.cpp - a small program over the real x11 display backend that
// the tests in tests/gfx/x11_test.cpp run under their own Xvfb.
//
//   draw MODE OUT.rgb   open the window, run the draw script (mode 18) and
//                       write the backing pixmap as raw RGB bytes; prints the
//                       font cell width and the window size
//   events SECONDS      print every key and mouse change until "q"
//   show SECONDS        run the draw script and keep pumping events
//   cover SECONDS       (plain Xlib) map a black window over the corner
#include <X11/Xlib.h>
#include <sys/wait.h>
#include <unistd.h>

#include <chrono>
#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <cstring>

#include "gfx/draw_script.h"
#include "gfx/gfx.h"
#include "gfx/screen.h"
#include "state.h"

namespace {

double Now() {
    using namespace std::chrono;
    return duration<double>(steady_clock::now().time_since_epoch()).count();
}

int Draw(int mode, const char* out) {
    Screen_Open(mode);
    if (mode == 18) DrawScript();
    printf("cell %d size %d %d\n", X11_TextWidth("a"), g.screen.width, g.screen.height);
    X11_Image* im = X11_AllocImage();
    if (!X11_GetImage(0, 0, g.screen.width - 1, g.screen.height - 1, im)) return 2;
    FILE* f = fopen(out, "wb");
    if (!f) return 2;
    for (int y = 0; y < X11_ImageHeight(im); y++)
        for (int x = 0; x < X11_ImageWidth(im); x++) {
            unsigned long p = X11_ImagePixel(im, x, y);   // 24-bit TrueColor
            unsigned char rgb[3] = {(unsigned char)(p >> 16), (unsigned char)(p >> 8),
                                    (unsigned char)p};
            fwrite(rgb, 1, 3, f);
        }
    fclose(f);
    X11_FreeImage(im);
    return 0;
}

int Events(double seconds) {
    Screen_Open(18);
    pid_t child = fork();
    if (child == 0) _exit(0);   // the pump must reap it
    printf("ready\n");
    fflush(stdout);
    int lx = -1, ly = -1, lb = -1;
    bool reaped = false;
    for (double end = Now() + seconds; Now() < end;) {
        int x, y, b;
        X11_ReadMouse(&x, &y, &b);
        if (!reaped && waitpid(child, nullptr, WNOHANG) == -1 && errno == ECHILD) {
            printf("child reaped\n");
            reaped = true;
        }
        if (x != lx || y != ly || b != lb) printf("mouse %d %d %d\n", x, y, b);
        lx = x, ly = y, lb = b;
        if (X11_KeyPressed()) {
            int key = X11_GetKey();
            printf("key %d shift %d\n", key, X11_GetShiftFlags());
            fflush(stdout);
            if (key == 'q') return 0;
        }
        fflush(stdout);
        usleep(2000);
    }
    return 3;
}

int Show(double seconds) {
    Screen_Open(18);
    DrawScript();
    printf("ready\n");
    fflush(stdout);
    for (double end = Now() + seconds; Now() < end;) {
        X11_PumpEvents();
        usleep(2000);
    }
    return 0;
}

int Cover(double seconds) {
    Display* d = XOpenDisplay(nullptr);
    if (!d) return 1;
    int s = DefaultScreen(d);
    XSetWindowAttributes a;
    a.override_redirect = True;
    a.background_pixel = BlackPixel(d, s);
    Window w = XCreateWindow(d, RootWindow(d, s), 0, 0, 400, 300, 0, CopyFromParent, InputOutput,
                             CopyFromParent, CWOverrideRedirect | CWBackPixel, &a);
    XMapRaised(d, w);
    XSync(d, False);
    usleep((useconds_t)(seconds * 1e6));
    XDestroyWindow(d, w);
    XCloseDisplay(d);
    return 0;
}

}  // namespace

int main(int argc, char** argv) {
    State_Reset();
    if (argc >= 4 && strcmp(argv[1], "draw") == 0) return Draw(atoi(argv[2]), argv[3]);
    if (argc >= 3 && strcmp(argv[1], "events") == 0) return Events(atof(argv[2]));
    if (argc >= 3 && strcmp(argv[1], "show") == 0) return Show(atof(argv[2]));
    if (argc >= 3 && strcmp(argv[1], "cover") == 0) return Cover(atof(argv[2]));
    fprintf(stderr, "usage: x11_driver draw MODE OUT | events S | show S | cover S\n");
    return 2;
}
