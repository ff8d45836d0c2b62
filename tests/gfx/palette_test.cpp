// Video mode sizes, the 256-colour palette and path splitting.
#include <gtest/gtest.h>

#include <cstring>
#include <string>

#include "gfx/gfx.h"

namespace {

TEST(GfxModes, WindowSizes) {
    const struct { int mode, w, h; } cases[] = {
        {18, 640, 480}, {256, 640, 480}, {257, 640, 480}, {258, 800, 600},
        {259, 800, 600}, {260, 1024, 768}, {261, 1024, 768},
    };
    for (auto c : cases) {
        int w = 0, h = 0;
        Gfx_ModeSize(c.mode, &w, &h);
        EXPECT_EQ(w * 10000 + h, c.w * 10000 + c.h) << c.mode;
    }
}

TEST(GfxPalette, BaseColoursAndRamps) {
    X11_PaletteEntry p[256];
    Gfx_BuildPalette(p);
    EXPECT_EQ(p[1].b, 37);
    EXPECT_EQ(p[8].r, 25);
    EXPECT_EQ(p[15].r, 56);
    EXPECT_EQ(p[15].b, 63);
    // Blue (0,0,37): step 37/18; entry 31 full, 30 = 34.94 -> 35, 16 = 6.17 -> 6.
    EXPECT_EQ(p[31].b, 37);
    EXPECT_EQ(p[30].b, 35);
    EXPECT_EQ(p[16].b, 6);
    EXPECT_EQ(p[16].r, 0);
    // White's ramp starts at 63,63,63: step 3.5; entry 240 = 10.5 -> 11.
    EXPECT_EQ(p[255].r, 63);
    EXPECT_EQ(p[255].g, 63);
    EXPECT_EQ(p[254].r, 60);   // 59.5 rounds up
    EXPECT_EQ(p[240].b, 11);
    // Gray (40,40,40): step 2.22; entry 112 = 6.67 -> 7; entry 126 = 37.78 -> 38.
    EXPECT_EQ(p[112].g, 7);
    EXPECT_EQ(p[126].g, 38);
    // Brown (32,32,0): blue stays 0, never below.
    EXPECT_EQ(p[96].b, 0);
    EXPECT_EQ(p[111].r, 32);
}

// Drive, directory, name and extension joined by "|".
std::string Split(const char* path) {
    char drive[8] = "x", dir[100], name[64], ext[64];
    X11_SplitPath(path, drive, dir, name, ext);
    return std::string(drive) + "|" + dir + "|" + name + "|" + ext;
}

TEST(GfxSplitPath, DirectoryNameExtension) {
    EXPECT_EQ(Split("/a/b.c/scene.v2.qmr"), "|/a/b.c|scene.v2|.qmr");
    EXPECT_EQ(Split("/a/b.c/noext"), "|/a/b.c|noext|");   // the dot before the "/" is not one
    EXPECT_EQ(Split("*.dxf"), "||*|.dxf");
}

}  // namespace
