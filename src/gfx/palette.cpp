// palette.cpp - video mode table and the 256-colour palette, shared by both
// display backends.
#include <cmath>

#include "gfx/gfx.h"

namespace {

struct ModeSize {
    int mode, width, height, colours;
};

// The 256-colour 640x400 mode still gets a 640 x 480 window.
const ModeSize kModes[] = {
    {18, 640, 480, 16},   {256, 640, 480, 256},  {257, 640, 480, 256}, {258, 800, 600, 16},
    {259, 800, 600, 256}, {260, 1024, 768, 16},  {261, 1024, 768, 256},
};

}  // namespace

const unsigned char Gfx_BaseColours[16][3] = {
    {0, 0, 0},   {0, 0, 37},  {0, 32, 0},  {0, 32, 32},  {37, 0, 0},  {32, 0, 32},
    {32, 32, 0}, {40, 40, 40}, {25, 25, 25}, {0, 0, 63},  {0, 63, 0},  {0, 63, 63},
    {63, 0, 0},  {63, 0, 63}, {63, 63, 0}, {56, 56, 63},
};

void Gfx_ModeSize(int mode, int* width, int* height) {
    *width = 640;
    *height = 480;
    for (const ModeSize& m : kModes)
        if (m.mode == mode) {
            *width = m.width;
            *height = m.height;
        }
}

int Gfx_ModeColours(int mode) {
    for (const ModeSize& m : kModes)
        if (m.mode == mode) return m.colours;
    return 16;   // unknown numbers open the first mode's window
}

void Gfx_BuildPalette(X11_PaletteEntry out[256]) {
    for (int i = 0; i < 16; i++)
        out[i] = {Gfx_BaseColours[i][0], Gfx_BaseColours[i][1], Gfx_BaseColours[i][2], 0};
    // Each base colour 1..15 gets a ramp from the full colour (entry 16i+15)
    // down to its darkest shade (16i); white's ramp starts from pure white.
    for (int i = 1; i < 16; i++) {
        double c[3];
        for (int k = 0; k < 3; k++) c[k] = i == 15 ? 63 : Gfx_BaseColours[i][k];
        double step = std::fmax(c[0], std::fmax(c[1], c[2])) / 18;
        for (int j = 15; j >= 0; j--) {
            X11_PaletteEntry& e = out[16 * i + j];
            e.r = (unsigned char)std::lround(c[0]);
            e.g = (unsigned char)std::lround(c[1]);
            e.b = (unsigned char)std::lround(c[2]);
            e.spare = 0;
            for (double& v : c) v = std::fmax(0.0, v - step);
        }
    }
}
