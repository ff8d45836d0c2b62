// The status line: layer box and name, ORTHO and SNAP, coordinates.
#include "gfx/pixels.h"
#include "headless_session.h"
#include "input/status_line.h"

namespace {

class StatusLineTest : public HeadlessTest {
  protected:
    std::string At(int x, int cells) { return Headless_ReadText(x, 1, cells, WHITE); }
};

TEST_F(StatusLineTest, FieldsAtTheirPlaces) {
    Status_Draw({"WALLS", LGREEN, 1, 0, "1.5, 2, -3"});
    ExpectPixels({{0, 2, BLACK}, {8, 12, BLACK}, {4, 7, LGREEN}, {1, 7, BLACK}});   // layer box
    EXPECT_EQ(At(12, 6), "WALLS ");
    EXPECT_EQ(At(120, 5), "Ortho");
    EXPECT_EQ(At(170, 4), "    ");
    EXPECT_EQ(At(220, 11), "1.5, 2, -3 ");   // 100 pixels left of the centre
    Status_Draw({"WALLS", LGREEN, 0, 1, ""});
    EXPECT_EQ(At(120, 5), "     ");
    EXPECT_EQ(At(170, 4), "Snap");
    EXPECT_EQ(At(220, 3), "   ");
}

TEST_F(StatusLineTest, TextsAreCutToTheirFields) {
    // 98 pixels hold 12 cells of 8; the coordinates end before x = 544.
    Status_Draw({"ABCDEFGHIJKLMNOPQRST", RED, 0, 0,
                 "123456789012345678901234567890123456789012345678901234567890"});
    EXPECT_EQ(At(12, 13), "ABCDEFGHIJKL ");
    EXPECT_EQ(At(220, 40), std::string("1234567890123456789012345678901234567890"));
    EXPECT_EQ(Headless_Pixel(544, 5), BLUE);   // the side-menu column is not written
}

TEST(StatusCoords, ThreeModes) {
    char out[64];
    double p[3] = {1, 2.5, -3}, d[3] = {0.5, 0, 4};
    Status_FormatCoords(out, 1, 1, p, d, 5, 90, 0);
    EXPECT_STREQ(out, "1, 2.5, -3");
    Status_FormatCoords(out, 2, 1, p, d, 5, 90, 0);
    EXPECT_STREQ(out, "@0.5, 0, 4");
    Status_FormatCoords(out, 3, 1, p, d, 5, 90, 0.25);
    EXPECT_STREQ(out, "@5<90, 0.25");
    Status_FormatCoords(out, 3, 0, p, d, 5, 90, 0.25);   // no base point
    EXPECT_STREQ(out, "1, 2.5, -3");
}

}  // namespace
