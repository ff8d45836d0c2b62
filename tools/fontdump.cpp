// Writes the glyphs of the font the x11 backend loads, as the headless
// backend's table: run under the X server the tests use, e.g.
//   make -C build fontdump && xvfb-run build/fontdump > src/gfx/headless/font8x13.inc
#include <X11/Xlib.h>
#include <X11/Xutil.h>

#include <cstdio>

int main() {
    Display* dpy = XOpenDisplay(nullptr);
    if (!dpy) {
        fprintf(stderr, "fontdump: no display\n");
        return 1;
    }
    const char* names[] = {"-misc-fixed-*-*-*-*-12-*-*-*-*-80-*-*", "fixed"};
    XFontStruct* font = nullptr;
    for (const char* n : names)
        if ((font = XLoadQueryFont(dpy, n))) break;
    if (!font) return 1;
    const int w = XTextWidth(font, "h", 1), h = font->ascent + font->descent;
    if (w > 8) {
        fprintf(stderr, "fontdump: cell wider than 8\n");
        return 1;
    }
    int scr = DefaultScreen(dpy);
    Pixmap pm = XCreatePixmap(dpy, RootWindow(dpy, scr), w, h, DefaultDepth(dpy, scr));
    GC gc = XCreateGC(dpy, pm, 0, nullptr);
    XSetFont(dpy, gc, font->fid);
    printf("// %dx%d ISO8859-1 glyphs (ascent %d, descent %d) as the X server draws the\n"
           "// x11 backend's font: %d rows per character, bit 7 = leftmost column.\n",
           w, h, font->ascent, font->descent, h);
    for (int c = 0; c < 256; c++) {
        XSetForeground(dpy, gc, 0);
        XFillRectangle(dpy, pm, gc, 0, 0, w, h);
        XSetForeground(dpy, gc, 1);
        char ch = (char)c;
        XDrawString(dpy, pm, gc, 0, font->ascent, &ch, 1);
        XImage* im = XGetImage(dpy, pm, 0, 0, w, h, AllPlanes, ZPixmap);
        printf("{");
        for (int y = 0; y < h; y++) {
            unsigned bits = 0;
            for (int x = 0; x < w; x++)
                if (XGetPixel(im, x, y)) bits |= 0x80u >> x;
            printf("0x%02x%s", bits, y + 1 < h ? "," : "");
        }
        printf("},%s", c % 4 == 3 ? "\n" : " ");
        XDestroyImage(im);
    }
    XCloseDisplay(dpy);
    return 0;
}
