// Drawing through the headless display: lines, rectangles, pixels, text,
// write modes, saved rectangles and the start-up frame.
#include <algorithm>
#include <string>

#include "e2e/process.h"
#include "gfx/pixels.h"
#include "headless_session.h"

namespace {

class HeadlessDraw : public HeadlessTest {
  protected:
    void Clear() { Screen_Fill(BLACK, 0, 0, 639, 479); }
    int Count(int colour) { return CountColour(0, 0, 639, 479, colour); }
};

TEST_F(HeadlessDraw, FrameAndInputLabel) {
    EXPECT_EQ(g.screen.sideMenuX, 640 - 96);   // twelve 8-pixel cells
    EXPECT_EQ(g.screen.inputLineY, 480 - 45);
    // Blue frame round the untouched (white) drawing area 0..543 x 15..434.
    ExpectPixels({{0, 0, BLUE}, {639, 14, BLUE}, {300, 15, WHITE}, {544, 200, BLUE},
                  {543, 200, WHITE}, {300, 434, WHITE}, {300, 435, BLUE}, {639, 479, BLUE}});
    EXPECT_EQ(Headless_ReadText(0, 436, 7, WHITE), "INPUT: ");
    // A larger mode moves the columns; a second call changes nothing.
    Headless_Reset();
    Screen_Open(258);
    EXPECT_EQ(g.screen.sideMenuX, 800 - 96);
    EXPECT_EQ(g.screen.inputLineY, 555);
    EXPECT_EQ(X11_InitGraph(261), 1);
    EXPECT_EQ(Headless_Width(), 800);
    EXPECT_EQ(Headless_Height(), 600);
}

TEST_F(HeadlessDraw, LineFollowsBresenhamWithTiesRoundedUp) {
    Clear();
    X11_SetColor(LGREEN);
    X11_MoveTo(10, 10);
    X11_LineTo(14, 12);   // hand-walked: (10,10) (11,11) (12,11) (13,12) (14,12)
    ExpectPixels({{10, 10, LGREEN}, {11, 11, LGREEN}, {12, 11, LGREEN}, {13, 12, LGREEN},
                  {14, 12, LGREEN}});
    EXPECT_EQ(Count(LGREEN), 5);
    int x, y;
    X11_GetPosition(&x, &y);
    EXPECT_EQ(x * 1000 + y, 14012);
    X11_LineTo(14, 2);   // vertical, 11 pixels, the shared end drawn again
    EXPECT_EQ(Count(LGREEN), 5 + 10);
}

TEST_F(HeadlessDraw, RectangleStyles) {
    Clear();
    X11_SetColor(RED);
    X11_Rectangle(3, 10, 10, 10, 10);
    X11_Rectangle(3, 20, 20, 23, 22);   // style 3 is inclusive: 1 + 4 x 3
    EXPECT_EQ(Count(RED), 1 + 12);
    Clear();
    X11_Rectangle(1, 100, 100, 106, 104);   // outline 6 x 4: 2 * (7 + 5) - 4 pixels
    EXPECT_EQ(Count(RED), 20);
    ExpectPixels({{106, 104, RED}, {103, 102, BLACK}});
    Clear();
    X11_Rectangle(1, 50, 50, 50, 50);   // 0 x 0: a closed polyline of empty segments
    EXPECT_EQ(Count(RED), 0);
}

TEST_F(HeadlessDraw, WriteModes) {
    Clear();
    X11_SetColor(CYAN);   // 3
    X11_Rectangle(3, 0, 0, 9, 9);
    X11_SetWriteMode(GFX_XOR);
    X11_SetColor(RED);   // 4
    X11_Rectangle(1, 2, 2, 7, 7);
    EXPECT_EQ(Headless_Pixel(2, 2), 3 ^ 4);
    X11_Rectangle(1, 2, 2, 7, 7);   // drawing twice erases
    EXPECT_EQ(Count(CYAN), 100);
    X11_SetWriteMode(GFX_OR);
    X11_PutPixel(0, 0);
    X11_SetWriteMode(GFX_AND);
    X11_SetColor(GREEN);   // 2
    X11_PutPixel(1, 1);
    ExpectPixels({{0, 0, 3 | 4}, {1, 1, 3 & 2}});
    EXPECT_EQ(X11_GetPixel(1, 1), X11_PixelOf(GREEN));
}

TEST_F(HeadlessDraw, TextTopLeftAtCurrentPosition) {
    Clear();
    X11_SetColor(YELLOW);
    X11_MoveTo(20, 30);
    X11_OutText("H");
    // The glyph cell is 8 x 13 from (20, 30); "H" lies inside it, above the
    // baseline (ascent 11).
    EXPECT_EQ(Count(YELLOW), CountColour(20, 30, 27, 40, YELLOW));
    EXPECT_GT(Count(YELLOW), 0);
    EXPECT_EQ(X11_TextWidth("aaaaaaaaaaaa"), 96);
    X11_MoveTo(28, 30);
    X11_OutText("i there");
    EXPECT_EQ(Headless_ReadText(20, 30, 8, YELLOW), "Hi there");
}

TEST_F(HeadlessDraw, SavedRectanglesComeBack) {
    Clear();
    X11_SetColor(LMAGENTA);
    X11_MoveTo(0, 0);
    X11_LineTo(639, 479);
    std::vector<unsigned char> before(Headless_Frame(), Headless_Frame() + 640 * 480);
    ScreenSave s = Screen_Save(100, 50, 300, 200);
    Screen_Fill(YELLOW, 100, 50, 300, 200);   // a "menu" over it
    X11_SetWriteMode(GFX_XOR);                // restore copies whatever the mode
    Screen_Restore(&s);
    EXPECT_EQ(s.image, nullptr);
    EXPECT_EQ(X11_GetWriteMode(), GFX_XOR);
    std::vector<unsigned char> after(Headless_Frame(), Headless_Frame() + 640 * 480);
    EXPECT_TRUE(before == after);
    // Image rectangles are clamped to the screen.
    X11_Image* im = X11_AllocImage();
    ASSERT_EQ(X11_GetImage(-5, -5, 10, 10, im), 1);
    EXPECT_EQ(X11_ImageWidth(im) * 100 + X11_ImageHeight(im), 1111);
    ASSERT_EQ(X11_GetImage(630, 470, 700, 500, im), 1);
    EXPECT_EQ(X11_ImageWidth(im) * 100 + X11_ImageHeight(im), 1010);
    EXPECT_EQ(X11_ImagePixel(im, 9, 9), (unsigned long)LMAGENTA);   // the diagonal's end
    X11_FreeImage(im);
}

TEST_F(HeadlessDraw, PngAndPpmDumps) {
    TempDir tmp;
    ASSERT_EQ(Headless_DumpPPM(tmp.file("f.ppm").c_str()), 1);
    std::string ppm = ReadFile(tmp.file("f.ppm"));
    ASSERT_EQ(ppm.size(), std::string("P6\n640 480\n255\n").size() + 640 * 480 * 3);
    // Pixel (0,0) is BLUE (0,0,37): the server shows 0,0,148.
    size_t off = ppm.size() - 640 * 480 * 3;
    EXPECT_EQ((unsigned char)ppm[off + 2], 148);
    ASSERT_EQ(Headless_DumpPNG(tmp.file("f.png").c_str()), 1);
    std::string png = ReadFile(tmp.file("f.png"));
    EXPECT_EQ(png.substr(1, 3), "PNG");
    EXPECT_EQ(png.substr(png.size() - 8, 4), "IEND");
    auto conv = RunProcess({"convert", tmp.file("f.png"), "ppm:" + tmp.file("back.ppm")}, {});
    if (conv.status == 0) {   // ImageMagick reads it back to the same pixels
        EXPECT_EQ(ReadFile(tmp.file("back.ppm")).substr(off), ppm.substr(off));
    }
}

}  // namespace
