// headless_display.cpp - the display layer drawn into an in-memory 8-bit
// framebuffer, pixel for pixel as the X server draws the same calls.
//
// Lines follow the X server's zero-width Bresenham (no octant bias); an
// outline rectangle is a closed polyline whose segments omit their last
// point, so under XOR a degenerate rectangle cancels where X's does. Text
// uses the glyphs of the font the x11 backend loads (tools/fontdump.cpp). Pixel values are the palette
// indices themselves; write modes combine indices.
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <string>
#include <utility>
#include <vector>

#include "gfx/headless/headless.h"
#include "gfx/headless/headless_internal.h"

namespace headless {

Display d;

}  // namespace headless

using headless::d;

namespace {

const unsigned char kGlyphs[256][13] = {
#include "gfx/headless/font8x13.inc"
};
constexpr int kCellW = 8, kCellH = 13;

void Plot(int x, int y) {
    if (x < 0 || y < 0 || x >= d.width || y >= d.height) return;
    unsigned char& p = d.fb[(size_t)y * d.width + x];
    unsigned char c = (unsigned char)d.colour;
    switch (d.writeMode) {
        case GFX_OR: p |= c; break;
        case GFX_AND: p &= c; break;
        case GFX_XOR: p ^= c; break;
        default: p = c; break;
    }
}

void Line(int x1, int y1, int x2, int y2, bool drawLast) {
    int adx = abs(x2 - x1), ady = abs(y2 - y1);
    int sx = x2 < x1 ? -1 : 1, sy = y2 < y1 ? -1 : 1;
    bool xMajor = adx > ady;
    int e1, e2, e, len;
    if (xMajor) {
        e1 = 2 * ady;
        e2 = e1 - 2 * adx;
        e = e1 - adx;
        len = adx;
    } else {
        e1 = 2 * adx;
        e2 = e1 - 2 * ady;
        e = e1 - ady;
        len = ady;
    }
    if (drawLast) len++;
    int x = x1, y = y1;
    while (len-- > 0) {
        Plot(x, y);
        if (e >= 0) {
            if (xMajor) y += sy;
            else x += sx;
            e += e2;
        } else {
            e += e1;
        }
        if (xMajor) x += sx;
        else y += sy;
    }
}

}  // namespace

const size_t kMaxSegments = 1u << 20;   // enough for any test scene

const std::vector<Headless_Segment>& Headless_Segments() { return d.segments; }
void Headless_ClearSegments() { d.segments.clear(); }

struct X11_Image {
    int w = 0, h = 0;
    std::vector<unsigned char> px;
};

int X11_InitGraph(int mode) {
    if (d.open) return 1;
    Gfx_ModeSize(mode, &d.width, &d.height);
    d.fb.assign((size_t)d.width * d.height, WHITE);   // the window's background is white
    d.open = 1;
    d.mouseMaxX = d.width;
    d.mouseMaxY = d.height;
    return 1;
}

void X11_CloseGraph() { d.open = 0; }
int X11_IsOpen() { return d.open; }

void X11_GetModeInfo(X11_ModeInfo* out) { *out = {d.width, d.height, 256}; }

void X11_SetPalette(const X11_PaletteEntry entries[256]) {
    memcpy(d.palette, entries, sizeof d.palette);
}

unsigned long X11_PixelOf(int index) { return (unsigned long)(index & 255); }

void X11_SetColor(int index) { d.colour = index & 255; }
int X11_GetColor() { return d.colour; }
void X11_SetBkColor(int index) { d.bkColour = index & 255; }
void X11_SetWriteMode(int mode) { d.writeMode = mode; }
int X11_GetWriteMode() { return d.writeMode; }

void X11_MoveTo(int x, int y) {
    d.penX = x;
    d.penY = y;
}

void X11_GetPosition(int* x, int* y) {
    *x = d.penX;
    *y = d.penY;
}

void X11_LineTo(int x, int y) {
    d.ticks++;
    if (d.segments.size() < kMaxSegments) d.segments.push_back({d.penX, d.penY, x, y, d.colour, d.writeMode});
    if (d.open) Line(d.penX, d.penY, x, y, true);
    X11_MoveTo(x, y);
}

void X11_Rectangle(int style, int x1, int y1, int x2, int y2) {
    if (!d.open) return;
    if (style == 3) {
        if (x2 < x1) std::swap(x1, x2);
        if (y2 < y1) std::swap(y1, y2);
        for (int y = y1; y <= y2; y++)
            for (int x = x1; x <= x2; x++) Plot(x, y);
        return;
    }
    const int px[5] = {x1, x2, x2, x1, x1}, py[5] = {y1, y1, y2, y2, y1};
    for (int i = 0; i < 4; i++) Line(px[i], py[i], px[i + 1], py[i + 1], false);
}

void X11_PutPixel(int x, int y) {
    if (d.open) Plot(x, y);
}

unsigned long X11_GetPixel(int x, int y) {
    int v = Headless_Pixel(x, y);
    return v < 0 ? 0 : (unsigned long)v;
}

int X11_TextWidth(const char* text) { return kCellW * (int)strlen(text); }
int X11_FontHeight() { return kCellH; }

void X11_OutText(const char* text) {
    if (!d.open) return;
    int x0 = d.penX;
    for (const unsigned char* p = (const unsigned char*)text; *p; p++, x0 += kCellW)
        for (int row = 0; row < kCellH; row++)
            for (int col = 0; col < kCellW; col++)
                if (kGlyphs[*p][row] & (0x80 >> col)) Plot(x0 + col, d.penY + row);
}

X11_Image* X11_AllocImage() { return new X11_Image; }

int X11_GetImage(int x1, int y1, int x2, int y2, X11_Image* image) {
    if (!d.open || !image) return 0;
    if (x1 < 0) x1 = 0;
    if (y1 < 0) y1 = 0;
    if (x2 > d.width - 1) x2 = d.width - 1;
    if (y2 > d.height - 1) y2 = d.height - 1;
    if (x2 < x1 || y2 < y1) return 0;
    image->w = x2 - x1 + 1;
    image->h = y2 - y1 + 1;
    image->px.resize((size_t)image->w * image->h);
    for (int y = 0; y < image->h; y++)
        memcpy(&image->px[(size_t)y * image->w], &d.fb[(size_t)(y1 + y) * d.width + x1], image->w);
    return 1;
}

void X11_PutImage(int x, int y, X11_Image* image, int /*mode*/) {
    if (!d.open || !image) return;
    int keep = d.colour;
    for (int iy = 0; iy < image->h; iy++)
        for (int ix = 0; ix < image->w; ix++) {
            d.colour = image->px[(size_t)iy * image->w + ix];
            Plot(x + ix, y + iy);   // through the write mode, as XPutImage does
        }
    d.colour = keep;
}

void X11_FreeImage(X11_Image* image) { delete image; }
int X11_ImageWidth(const X11_Image* image) { return image->w; }
int X11_ImageHeight(const X11_Image* image) { return image->h; }
unsigned long X11_ImagePixel(const X11_Image* image, int x, int y) {
    return image->px[(size_t)y * image->w + x];
}

void X11_Beep() { d.transcript += '\a'; }
void X11_Flush() {}

// --- test side ----------------------------------------------------------------

int Headless_Pixel(int x, int y) {
    if (!d.open || x < 0 || y < 0 || x >= d.width || y >= d.height) return -1;
    return d.fb[(size_t)y * d.width + x];
}

const unsigned char* Headless_Frame() { return d.fb.data(); }
int Headless_Width() { return d.width; }
int Headless_Height() { return d.height; }

void Headless_Rgb(int index, unsigned char rgb[3]) {
    const X11_PaletteEntry& e = d.palette[index & 255];
    rgb[0] = (unsigned char)(e.r * 4);
    rgb[1] = (unsigned char)(e.g * 4);
    rgb[2] = (unsigned char)(e.b * 4);
}

int Headless_DumpPPM(const char* path) {
    FILE* f = fopen(path, "wb");
    if (!f) return 0;
    fprintf(f, "P6\n%d %d\n255\n", d.width, d.height);
    for (unsigned char v : d.fb) {
        unsigned char rgb[3];
        Headless_Rgb(v, rgb);
        fwrite(rgb, 1, 3, f);
    }
    return fclose(f) == 0;
}

std::string Headless_ReadText(int x, int y, int cells, int fg) {
    std::string out;
    for (int i = 0; i < cells; i++) {
        char found = '?';
        for (int c = 32; c < 256 && found == '?'; c++) {
            bool same = true;
            for (int row = 0; row < kCellH && same; row++)
                for (int col = 0; col < kCellW && same; col++) {
                    bool on = kGlyphs[c][row] & (0x80 >> col);
                    same = on == (Headless_Pixel(x + i * kCellW + col, y + row) == fg);
                }
            if (same) found = (char)c;
        }
        out += found;
    }
    return out;
}
