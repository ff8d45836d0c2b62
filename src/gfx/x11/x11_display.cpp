// x11_display.cpp - the display layer over Xlib: one fixed-size window
// imitating a PC graphics screen, with a backing pixmap.
//
// Every drawing call goes to the pixmap and to the window, so an exposure is
// repaired by copying from the pixmap. Colours are palette indices mapped to
// X pixels through pixelOf. Keys and pointer events are polled: the keyboard
// takes key events only, the pump pointer and exposure events only. This is
// the only file of the program that includes Xlib.
#include <X11/Xlib.h>
#include <X11/Xutil.h>
#include <X11/keysym.h>
#include <poll.h>
#include <unistd.h>

#include <cerrno>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <utility>

#include "gfx/gfx.h"

namespace {

struct X11State {
    Display* display = nullptr;
    int screen = 0;
    Window root = 0, window = 0;
    int depth = 0;
    Colormap colormap = 0;
    Pixmap pixmap = 0;
    GC gc = nullptr;
    XFontStruct* font = nullptr;
    Cursor blankCursor = 0;
    unsigned long pixelOf[256] = {};
    int currentColour = 15;
    int writeMode = GFX_COPY;
    int penX = 0, penY = 0;
    int modeWidth = 640, modeHeight = 480, modeColours = 256;
    int mouseX = 0, mouseY = 0, mouseButtons = 0;
    int mouseMinX = 0, mouseMaxX = 640, mouseMinY = 0, mouseMaxY = 480;
    int mouseSpeedX = 8, mouseSpeedY = 8;
    int shiftFlags = 0;
    int paletteAllocated = 0;
    FILE* transcript = nullptr;
};

X11State x;

// An 8-pixel cell gives 80 text columns in 640 pixels; "fixed" is the
// alias every server has.
const char* const kFonts[] = {
    "-misc-fixed-*-*-*-*-12-*-*-*-*-80-*-*",
    "fixed",
};

const int kGcFunction[4] = {GXor, GXand, GXcopy, GXxor};

const int kChildPollMs = 200;   // how often an idle wait looks in on a running child

struct ModifierBit {
    KeySym sym;
    int bit;   // 0: swallowed without a flag
};
const ModifierBit kModifiers[] = {
    {XK_Shift_R, SHIFT_RIGHT}, {XK_Shift_L, SHIFT_LEFT}, {XK_Control_L, SHIFT_CTRL},
    {XK_Control_R, SHIFT_CTRL}, {XK_Alt_L, SHIFT_ALT},   {XK_Alt_R, SHIFT_ALT},
    {XK_Caps_Lock, SHIFT_CAPS}, {XK_Shift_Lock, 0},      {XK_Meta_L, 0},
    {XK_Meta_R, 0},             {XK_Super_L, 0},         {XK_Super_R, 0},
    {XK_Hyper_L, 0},            {XK_Hyper_R, 0},         {XK_ISO_Level3_Shift, 0},
    {XK_Num_Lock, 0},
};

struct KeyMap {
    KeySym sym;
    int code;
};
const KeyMap kKeys[] = {
    {XK_F1, KEY_F(1)},   {XK_F2, KEY_F(2)},   {XK_F3, KEY_F(3)},   {XK_F4, KEY_F(4)},
    {XK_F5, KEY_F(5)},   {XK_F6, KEY_F(6)},   {XK_F7, KEY_F(7)},   {XK_F8, KEY_F(8)},
    {XK_F9, KEY_F(9)},   {XK_F10, KEY_F(10)}, {XK_F11, KEY_F(11)}, {XK_F12, KEY_F(12)},
    {XK_Insert, KEY_INSERT}, {XK_BackSpace, KEY_BACKSPACE}, {XK_Delete, KEY_DELETE},
    {XK_KP_Enter, KEY_ENTER},
};

const ModifierBit* FindModifier(KeySym sym) {
    for (const ModifierBit& m : kModifiers)
        if (m.sym == sym) return &m;
    return nullptr;
}

void Clamp() {
    if (x.mouseX < x.mouseMinX) x.mouseX = x.mouseMinX;
    if (x.mouseX >= x.mouseMaxX) x.mouseX = x.mouseMaxX - 1;
    if (x.mouseY < x.mouseMinY) x.mouseY = x.mouseMinY;
    if (x.mouseY >= x.mouseMaxY) x.mouseY = x.mouseMaxY - 1;
}

int ButtonBit(unsigned button) {
    switch (button) {
        case Button1: return MOUSE_LEFT;
        case Button2: return MOUSE_MIDDLE;
        case Button3: return MOUSE_RIGHT;
    }
    return 0;
}

}  // namespace

struct X11_Image {
    XImage* image = nullptr;
};

int X11_InitGraph(int mode) {
    if (x.display) return 1;
    Gfx_ModeSize(mode, &x.modeWidth, &x.modeHeight);
    x.display = XOpenDisplay(nullptr);
    if (!x.display) {
        fputs("Cannot connect to server\n", stderr);
        exit(1);
    }
    Display* dpy = x.display;
    x.screen = DefaultScreen(dpy);
    x.root = RootWindow(dpy, x.screen);
    x.depth = DefaultDepth(dpy, x.screen);
    x.window = XCreateSimpleWindow(dpy, x.root, 0, 0, x.modeWidth, x.modeHeight, 1,
                                   BlackPixel(dpy, x.screen), WhitePixel(dpy, x.screen));
    XStoreName(dpy, x.window, "Quillmoor Sculptor");
    x.pixmap = XCreatePixmap(dpy, x.window, x.modeWidth, x.modeHeight, x.depth);
    XGCValues v;
    v.function = GXcopy;
    v.foreground = 1;
    v.background = 0;
    x.gc = XCreateGC(dpy, x.window, GCFunction | GCForeground | GCBackground, &v);
    for (const char* name : kFonts)
        if ((x.font = XLoadQueryFont(dpy, name))) break;
    if (!x.font) {
        fputs("Huh?  No font!  Bailing out\n", stderr);
        exit(1);
    }
    XSetFont(dpy, x.gc, x.font->fid);
    // The pixmap starts as the window's white background.
    XSetForeground(dpy, x.gc, WhitePixel(dpy, x.screen));
    XFillRectangle(dpy, x.pixmap, x.gc, 0, 0, x.modeWidth, x.modeHeight);
    XSetForeground(dpy, x.gc, 1);
    XSizeHints* hints = XAllocSizeHints();
    hints->flags = PMinSize | PMaxSize;
    hints->min_width = hints->max_width = x.modeWidth;
    hints->min_height = hints->max_height = x.modeHeight;
    XSetWMNormalHints(dpy, x.window, hints);
    XFree(hints);
    x.colormap = XDefaultColormap(dpy, x.screen);
    XSetWindowAttributes attr;
    attr.event_mask = KeyPressMask | KeyReleaseMask | ButtonPressMask | ButtonReleaseMask |
                      PointerMotionMask | ExposureMask;
    XChangeWindowAttributes(dpy, x.window, CWEventMask, &attr);
    static char zeros[20] = {};   // 10 x 10, one bit per pixel
    Pixmap blank = XCreateBitmapFromData(dpy, x.window, zeros, 10, 10);
    XColor black{};
    x.blankCursor = XCreatePixmapCursor(dpy, blank, blank, &black, &black, 0, 0);
    XFreePixmap(dpy, blank);
    XDefineCursor(dpy, x.window, x.blankCursor);
    XMapWindow(dpy, x.window);
    XFlush(dpy);
    x.mouseMaxX = x.modeWidth;
    x.mouseMaxY = x.modeHeight;
    atexit(X11_CloseGraph);
    return 1;
}

void X11_CloseGraph() {
    if (!x.display) return;
    Display* dpy = x.display;
    XFreeFont(dpy, x.font);
    XFreeCursor(dpy, x.blankCursor);
    XFreeGC(dpy, x.gc);
    XFreePixmap(dpy, x.pixmap);
    XDestroyWindow(dpy, x.window);
    XCloseDisplay(dpy);
    x.display = nullptr;
}

int X11_IsOpen() { return x.display != nullptr; }

void X11_GetModeInfo(X11_ModeInfo* out) { *out = {x.modeWidth, x.modeHeight, x.modeColours}; }

void X11_SetPalette(const X11_PaletteEntry entries[256]) {
    if (!x.display) return;
    if (x.paletteAllocated) XFreeColors(x.display, x.colormap, x.pixelOf, 256, 0);
    for (int i = 0; i < 256; i++) {
        XColor c{};
        c.red = (unsigned short)(entries[i].r * 1024);
        c.green = (unsigned short)(entries[i].g * 1024);
        c.blue = (unsigned short)(entries[i].b * 1024);
        c.flags = DoRed | DoGreen | DoBlue;
        XAllocColor(x.display, x.colormap, &c);
        x.pixelOf[i] = c.pixel;   // kept as returned even when the allocation failed
    }
    x.paletteAllocated = 1;
    XSetForeground(x.display, x.gc, x.pixelOf[x.currentColour]);
}

unsigned long X11_PixelOf(int index) { return x.pixelOf[index & 255]; }

void X11_SetColor(int index) {
    x.currentColour = index & 255;
    if (x.display) XSetForeground(x.display, x.gc, x.pixelOf[x.currentColour]);
}

int X11_GetColor() { return x.currentColour; }

void X11_SetBkColor(int index) {
    if (x.display) XSetBackground(x.display, x.gc, x.pixelOf[index & 255]);
}

void X11_SetWriteMode(int mode) {
    x.writeMode = mode & 3;
    if (x.display) XSetFunction(x.display, x.gc, kGcFunction[x.writeMode]);
}

int X11_GetWriteMode() { return x.writeMode; }

void X11_MoveTo(int px, int py) {
    x.penX = px;
    x.penY = py;
}

void X11_GetPosition(int* px, int* py) {
    *px = x.penX;
    *py = x.penY;
}

void X11_LineTo(int px, int py) {
    if (x.display) {
        XDrawLine(x.display, x.pixmap, x.gc, x.penX, x.penY, px, py);
        XDrawLine(x.display, x.window, x.gc, x.penX, x.penY, px, py);
    }
    X11_MoveTo(px, py);
}

void X11_Rectangle(int style, int x1, int y1, int x2, int y2) {
    if (!x.display) return;
    if (style == 3) {
        if (x2 < x1) std::swap(x1, x2);
        if (y2 < y1) std::swap(y1, y2);
        unsigned w = x2 - x1 + 1, h = y2 - y1 + 1;
        XFillRectangle(x.display, x.pixmap, x.gc, x1, y1, w, h);
        XFillRectangle(x.display, x.window, x.gc, x1, y1, w, h);
        return;
    }
    XDrawRectangle(x.display, x.pixmap, x.gc, x1, y1, x2 - x1, y2 - y1);
    XDrawRectangle(x.display, x.window, x.gc, x1, y1, x2 - x1, y2 - y1);
}

void X11_PutPixel(int px, int py) {
    if (!x.display) return;
    XDrawPoint(x.display, x.pixmap, x.gc, px, py);
    XDrawPoint(x.display, x.window, x.gc, px, py);
}

unsigned long X11_GetPixel(int px, int py) {
    if (!x.display || px < 0 || py < 0 || px >= x.modeWidth || py >= x.modeHeight) return 0;
    XImage* im = XGetImage(x.display, x.pixmap, px, py, 1, 1, AllPlanes, ZPixmap);
    if (!im) return 0;
    unsigned long v = XGetPixel(im, 0, 0);
    XDestroyImage(im);
    return v;
}

int X11_TextWidth(const char* text) {
    if (!x.font) return 8 * (int)strlen(text);   // before the window: the usual cell
    return XTextWidth(x.font, text, (int)strlen(text));
}

int X11_FontHeight() { return x.font ? x.font->ascent + x.font->descent : 13; }

void X11_OutText(const char* text) {
    if (!x.display) return;
    int n = (int)strlen(text), base = x.penY + x.font->ascent;
    XDrawString(x.display, x.pixmap, x.gc, x.penX, base, text, n);
    XDrawString(x.display, x.window, x.gc, x.penX, base, text, n);
}

X11_Image* X11_AllocImage() { return new X11_Image; }

int X11_GetImage(int x1, int y1, int x2, int y2, X11_Image* image) {
    if (!x.display || !image) return 0;
    if (x1 < 0) x1 = 0;
    if (y1 < 0) y1 = 0;
    if (x2 > x.modeWidth - 1) x2 = x.modeWidth - 1;
    if (y2 > x.modeHeight - 1) y2 = x.modeHeight - 1;
    if (x2 < x1 || y2 < y1) return 0;
    if (image->image) XDestroyImage(image->image);
    image->image = XGetImage(x.display, x.pixmap, x1, y1, x2 - x1 + 1, y2 - y1 + 1, AllPlanes,
                             ZPixmap);
    return image->image != nullptr;
}

void X11_PutImage(int px, int py, X11_Image* image, int /*mode*/) {
    if (!x.display || !image || !image->image) return;
    XImage* im = image->image;
    XPutImage(x.display, x.pixmap, x.gc, im, 0, 0, px, py, im->width, im->height);
    XPutImage(x.display, x.window, x.gc, im, 0, 0, px, py, im->width, im->height);
}

void X11_FreeImage(X11_Image* image) {
    if (!image) return;
    if (image->image) XDestroyImage(image->image);
    delete image;
}

int X11_ImageWidth(const X11_Image* image) { return image->image ? image->image->width : 0; }
int X11_ImageHeight(const X11_Image* image) { return image->image ? image->image->height : 0; }
unsigned long X11_ImagePixel(const X11_Image* image, int px, int py) {
    return XGetPixel(image->image, px, py);
}

int X11_KeyPressed() {
    if (!x.display) return 0;
    XEvent ev;
    while (XCheckMaskEvent(x.display, KeyPressMask | KeyReleaseMask, &ev)) {
        KeySym sym = XLookupKeysym(&ev.xkey, 0);
        if (const ModifierBit* m = FindModifier(sym)) {
            if (ev.type == KeyPress) x.shiftFlags |= m->bit;
            else x.shiftFlags &= ~m->bit;
            continue;
        }
        if (ev.type == KeyPress) {
            XPutBackEvent(x.display, &ev);
            return 1;
        }
    }
    return 0;
}

int X11_GetKey() {
    if (!x.display) return 0;
    while (!X11_KeyPressed()) {
        X11_PumpEvents();
        usleep(5000);
    }
    XEvent ev;
    XCheckMaskEvent(x.display, KeyPressMask, &ev);
    char buf[8] = {};
    KeySym sym = 0;
    XLookupString(&ev.xkey, buf, sizeof buf, &sym, nullptr);
    for (const KeyMap& k : kKeys)
        if (k.sym == sym) return k.code;
    return (unsigned char)buf[0];
}

int X11_GetShiftFlags() { return x.shiftFlags; }

int X11_MouseReset() { return 4095; }

void X11_PumpEvents() {
    Gfx_ReapChildren();
    if (!x.display) return;
    XEvent ev;
    const long mask = ButtonPressMask | ButtonReleaseMask | PointerMotionMask | ExposureMask;
    while (XCheckMaskEvent(x.display, mask, &ev)) {
        bool stop = false;
        switch (ev.type) {
            case ButtonPress:
                x.mouseButtons |= ButtonBit(ev.xbutton.button);
                x.mouseX = ev.xbutton.x;
                x.mouseY = ev.xbutton.y;
                stop = true;
                break;
            case ButtonRelease:
                x.mouseButtons &= ~ButtonBit(ev.xbutton.button);
                x.mouseX = ev.xbutton.x;
                x.mouseY = ev.xbutton.y;
                stop = true;
                break;
            case MotionNotify:
                x.mouseX = ev.xmotion.x;
                x.mouseY = ev.xmotion.y;
                break;
            case Expose:
                if (ev.xexpose.window == x.window)
                    XCopyArea(x.display, x.pixmap, x.window, x.gc, ev.xexpose.x, ev.xexpose.y,
                              ev.xexpose.width, ev.xexpose.height, ev.xexpose.x, ev.xexpose.y);
                break;
        }
        Clamp();
        if (stop) break;
    }
}

void X11_ReadMouse(int* px, int* py, int* buttons) {
    X11_PumpEvents();
    *px = x.mouseX;
    *py = x.mouseY;
    *buttons = x.mouseButtons;
}

void X11_WarpMouse(int px, int py) {
    if (!x.display) return;
    XWarpPointer(x.display, None, x.window, 0, 0, 0, 0, px, py);
    XSync(x.display, False);
    XEvent ev;
    while (XCheckMaskEvent(x.display, PointerMotionMask, &ev)) {
        if (ev.xmotion.x == px && ev.xmotion.y == py) {
            XPutBackEvent(x.display, &ev);
            break;
        }
    }
}

void X11_SetMouseRange(int xmin, int xmax, int ymin, int ymax) {
    x.mouseMinX = xmin;
    x.mouseMaxX = xmax;
    x.mouseMinY = ymin;
    x.mouseMaxY = ymax;
}

void X11_SetMouseSpeed(int sx, int sy) {
    x.mouseSpeedX = sx;
    x.mouseSpeedY = sy;
}

void X11_WaitEvent() {
    if (!x.display) return;
    // Wait in poll(), not inside Xlib: a terminating signal's handler closes
    // the display, and must not find Xlib's lock held.
    // While a ray tracer runs, look in on it now and then, so that the
    // caller hears of its end without waiting for the next event.
    while (!XPending(x.display)) {
        pollfd p{ConnectionNumber(x.display), POLLIN, 0};
        const int timeout = Gfx_ChildrenRunning() ? kChildPollMs : -1;
        const int r = poll(&p, 1, timeout);
        if (r < 0 && errno != EINTR) return;
        if (r == 0 && Gfx_ReapChildren() > 0) return;
    }
}

void X11_Beep() { fputc(7, stderr); }

double X11_Clock() {
    using namespace std::chrono;
    return duration<double>(steady_clock::now().time_since_epoch()).count();
}

void X11_Flush() {
    if (x.display) XFlush(x.display);
}

void X11_Transcript(const char* text) {
    static bool looked = false;
    if (!looked) {
        looked = true;
        if (const char* path = getenv("QMR_TRANSCRIPT")) x.transcript = fopen(path, "a");
    }
    if (x.transcript) {
        fputs(text, x.transcript);
        fflush(x.transcript);
    }
}
