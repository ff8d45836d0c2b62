// Typed coordinates, numbers and keywords at a prompt, the input line's
// limits, ORTHO on the rubber band, point filters and End/Mid point.
#include <cstdlib>

#include "input/session.h"

namespace {

class CoordsTest : public SessionTest {
  protected:
    void SetUp() override {
        SessionTest::SetUp();
        // 10 pixels per unit, so that pixels and world points match exactly.
        Viewport& v = g.view.Active_Viewport;
        View_SetArea(&v, v.half_height_px / 10.0);
        cx = (int)v.screen_cx;
        cy = (int)v.screen_cy;
    }
    void ExpectPoint(size_t i, double x, double y, double z) {
        ASSERT_LT(i, Answers().size());
        EXPECT_EQ(Answers()[i].kind, 0) << i;
        EXPECT_NEAR(Answers()[i].point.x, x, 1e-12) << i;
        EXPECT_NEAR(Answers()[i].point.y, y, 1e-12) << i;
        EXPECT_NEAR(Answers()[i].point.z, z, 1e-12) << i;
    }
    int cx = 0, cy = 0;
};

TEST_F(CoordsTest, AbsoluteRelativeAndPolarEntry) {
    View_SetCentre(&g.view.Active_Viewport, {0, 0, 7});   // elevation point with z = 7
    // Relative entry without a base point is refused at the start point.
    Headless_PushText("POLYLINE\n@1,1\n%2<30\n1,2\n0,0,0\n@1,1,1\n%1,0,0\n@2<90\n@2<450\n,5,6\n@-2<-90,1\n\n");
    EXPECT_FALSE(RunLoop());
    EXPECT_EQ(Headless_Transcript().rfind("\nCommand: \nPOLYLINE> Start point: \nInvalid coordinates\a"
                                          "\nPOLYLINE> Start point: \nInvalid coordinates\a"
                                          "\nPOLYLINE> Start point: \nPOLYLINE> Next point: ", 0), 0u);
    ExpectPoint(0, 1, 2, 7);       // z from the elevation point
    ExpectPoint(1, 0, 0, 0);
    ExpectPoint(2, 1, 1, 1);       // relative to the last point
    ExpectPoint(3, 2, 1, 1);       // % as @
    // 2 units up the TOP view's screen (+Z); the missing third value is the
    // elevation point's z, taken towards the viewer (+Y in TOP).
    ExpectPoint(4, 2, 8, 3);
    ExpectPoint(5, 2, 15, 5);      // 450 degrees is 90
    ExpectPoint(6, 0, 5, 6);       // empty x is 0
    // |-2| at 270 degrees, 1 towards the viewer (+Y in TOP): down the screen by 2.
    ExpectPoint(7, 0, 6, 4);
    EXPECT_EQ(Answers()[8].kind, -1);   // the empty Enter that ends the polyline
}

int AskDigits() {
    Input_SetKeywords("0,1,2,3", 0, 0);
    if (!Ask("\nLEVEL> Which: ")) return 0;
    Input_SetKeywords("0,1,2,3", 1, 0);
    if (!Ask("\nLEVEL> Which or how many: ")) return 0;
    for (int i = 0; i < 2; i++) {
        Input_SetKeywords("Y,N", 0, 1);
        if (!Ask("\nLEVEL> Name: ")) return 0;
    }
    return 1;
}

TEST_F(CoordsTest, KeywordsNumbersAndStrings) {
    Command_Register(209, AskDigits, 0);
    // At the Command prompt coordinates are not read: "1,2" is an unknown name.
    Headless_PushText("1,2\nSTAIRCASE\n2\n5\nn\nMarble\nSTAIRCASE\n1\n1\n12,3\n");
    EXPECT_FALSE(RunLoop());
    ASSERT_EQ(Answers().size(), 7u);
    EXPECT_EQ(Answers()[0].kind, 3);    // "2" is the third keyword when numbers are refused
    EXPECT_EQ(Answers()[1].kind, -3);   // a number when they are allowed
    EXPECT_DOUBLE_EQ(Answers()[1].number, 5);
    EXPECT_EQ(Answers()[2].kind, 2);    // a keyword before a string
    EXPECT_EQ(Answers()[3].kind, -2);
    EXPECT_EQ(Answers()[3].text, "Marble");
    ExpectPoint(6, 12, 3, 0);           // a string prompt still reads coordinates as a point
    EXPECT_EQ(Headless_Transcript().rfind("\nCommand: \nUnknown Command\a\nCommand: \nLEVEL> Which: ", 0), 0u);
}

TEST_F(CoordsTest, InputLineHoldsAtMost126Characters) {
    // Without a screen width to respect, the buffer's limit holds.
    g.screen.open = false;
    Headless_PushText(std::string(200, 'x').c_str());
    EXPECT_FALSE(RunLoop());
    EXPECT_EQ(g.input.textLength, 126);
    EXPECT_EQ(std::string(g.input.InputResult.text), std::string(126, 'x'));
    // Backspace takes one off; Enter then tries the name.
    Headless_PushText(std::string(200, 'x').c_str());
    Headless_PushKey(KEY_BACKSPACE);
    Headless_PushText("\n");
    Headless_ClearTranscript();
    EXPECT_FALSE(RunLoop());
    EXPECT_EQ(Headless_Transcript(), "\nCommand: \nUnknown Command\a\nCommand: ");
    g.screen.open = true;
}

TEST_F(CoordsTest, InputLineStopsAtTheScreenEdge) {
    // 8-pixel characters: "INPUT: ", the line and a "W" must fit. In 640
    // pixels (80 cells) the line stops at 73 characters, in 1024 (128) at 121.
    Headless_PushText(std::string(150, 'y').c_str());
    EXPECT_FALSE(RunLoop());
    EXPECT_EQ(g.input.textLength, 73);
    const int fg = g.config.colors.foreground;
    EXPECT_EQ(Headless_ReadText(0, g.screen.inputLineY + 1, 80, fg), "INPUT: " + std::string(73, 'y'));
    Headless_Reset();
    Screen_Open(260);
    Screen_DrawFrame();
    Headless_PushText(std::string(150, 'y').c_str());
    EXPECT_FALSE(RunLoop());
    EXPECT_EQ(g.input.textLength, 121);
}

TEST_F(CoordsTest, AnyBytesTypedNeverCrash) {
    srand(7);
    for (int i = 0; i < 3000; i++) {
        int k = rand() % 300;
        if (k == 3 || k == ' ' || k == 13 || k == 10) continue;   // keep the loop at its prompt
        if (k < 256) Headless_PushKey(k);
        else Headless_PushKey(KEY_F(11) + k);   // key numbers nobody uses
        if (i % 97 == 0) Headless_PushKey(KEY_ENTER);
    }
    Headless_PushText("POLYLINE\n");
    for (int i = 0; i < 2000; i++) Headless_PushKey(rand() % 256 == 3 ? 'a' : rand() % 256);
    EXPECT_FALSE(RunLoop());
    EXPECT_LE(g.input.textLength, 126);
    EXPECT_EQ((int)strlen(g.input.InputResult.text), g.input.textLength);
}

TEST_F(CoordsTest, OrthoKeepsTheLargestComponent) {
    const Point3 cases[][2] = {
        {{3, 3, 1}, {3, 0, 0}},     // X wins ties
        {{3, 1, 3}, {3, 0, 0}},
        {{1, 3, 3}, {0, 3, 0}},     // Y wins its tie with Z
        {{-1, 2, -5}, {0, 0, -5}},
    };
    for (const auto& c : cases) {
        const Point3 d = Input_OrthoDelta(c[0]);
        EXPECT_TRUE(d.x == c[1].x && d.y == c[1].y && d.z == c[1].z) << c[0].x << "," << c[0].y << "," << c[0].z;
    }
}

TEST_F(CoordsTest, OrthoSnapsTheRubberBand) {
    Headless_PushText("POLYLINE\n0,0,0\n");
    Headless_PushKey(KEY_F(8));
    Headless_PushMove(cx + 30, cy - 30);   // world (3, 0, 3): a tie, X wins
    EXPECT_FALSE(RunLoop());
    EXPECT_EQ(g.aids.orthoOn, 1);
    EXPECT_NEAR(g.input.cursorPoint.x, 3, 1e-9);
    EXPECT_NEAR(g.input.cursorPoint.z, 0, 1e-9);
    // The band runs from the base pixel along the screen's X only.
    bool band = false;
    for (const Headless_Segment& s : Headless_Segments())
        if (s.x1 == cx && s.y1 == cy && s.x2 == cx + 30 && s.y2 == cy) band = true;
    EXPECT_TRUE(band);
    EXPECT_EQ(Headless_ReadText(120, 1, 5, g.config.colors.foreground), "Ortho");
    // Relative coordinates on the status line in mode 2 (F4).
    Headless_PushKey(KEY_F(4));
    Headless_PushMove(cx + 10, cy - 40);   // (1, 0, 4): Z is larger
    EXPECT_FALSE(RunLoop());
    EXPECT_NEAR(g.input.cursorPoint.x, 0, 1e-9);
    EXPECT_NEAR(g.input.cursorPoint.z, 4, 1e-9);
    EXPECT_EQ(g.aids.coordsMode, 2);
    EXPECT_EQ(Headless_ReadText(g.screen.width / 2 - 100, 1, 8, g.config.colors.foreground), "@0, 0, 4");
}

TEST_F(CoordsTest, FiltersCollectCoordinatesOverSeveralPoints) {
    Headless_PushText("zpoint\nPOLYLINE\nxpoint\n1,2,3\n4,5,6\nyzpoint\n7,8,9\n10,11,12\n");
    EXPECT_FALSE(RunLoop());
    ExpectPoint(0, 1, 5, 6);      // X of the first, Y and Z of the second
    ExpectPoint(1, 10, 8, 9);     // Y,Z of the first, X of the second
    // At "Command:" a filter does nothing.
    EXPECT_EQ(Headless_Transcript(), "\nCommand: \nCommand: \nPOLYLINE> Start point: (X point of) "
                                     "\nPOLYLINE> Start point: (need Y,Z) \nPOLYLINE> Next point: (Y,Z point of) "
                                     "\nPOLYLINE> Next point: (need X) \nPOLYLINE> Next point: ");
}

class SnapTest : public CoordsTest {
  protected:
    void SetUp() override {
        CoordsTest::SetUp();
        ASSERT_NE(AddPolyline({{0, 0, 0}, {4, 0, 0}, {4, 0, 4}}), nullptr);
    }
};

TEST_F(SnapTest, EndAndMidPointOfAPolylineEdge) {
    Headless_PushText("POLYLINE\nendpoint\n1,0,0\nendpoint\n4,0,3\nmidpoint\n3,0,0\nendpoint\n2,0,0\n"
                      "endpoint\n1,0,2\n1,0,2\nmidpoint\n-3,0,-3\n");
    EXPECT_FALSE(RunLoop());
    ExpectPoint(0, 0, 0, 0);   // nearer end of the first edge
    ExpectPoint(1, 4, 0, 4);   // nearer end of the second edge
    ExpectPoint(2, 2, 0, 0);   // middle of the first edge
    ExpectPoint(3, 0, 0, 0);   // equally far: the first end
    ExpectPoint(4, 1, 0, 2);   // after a miss the modifier is gone
    const std::string t = Headless_Transcript();
    EXPECT_NE(t.find("(End point of) \nPOLYLINE> Next point: ENDpoint Not Found\a\nPOLYLINE> Next point: "),
              std::string::npos) << t;
    EXPECT_NE(t.find("(Mid point of) \nPOLYLINE> Next point: MIDpoint Not Found\a"), std::string::npos) << t;
}

TEST_F(SnapTest, PointsRefusedAndTheThreeDView) {
    Input_SetMask(1);
    g.input.currentCommand = 201;
    g.input.cursorPoint = {1, 1, 1};
    EXPECT_EQ(Input_AcceptPoint(), 0);
    EXPECT_EQ(Headless_Transcript(), "Can't Accept a Point\a");
    Input_SetMask(0);
    g.view.Active_Viewport.VIEW = VIEW_3D;
    Headless_ClearTranscript();
    EXPECT_EQ(Input_AcceptPoint(), 0);
    EXPECT_EQ(Headless_Transcript(), " *Can't be in 3D View*\a");
    g.view.Active_Viewport.VIEW = VIEW_TOP;
    EXPECT_EQ(Input_AcceptPoint(), -5);
    g.input.currentCommand = 0;
    EXPECT_EQ(Input_AcceptPoint(), 0);   // the Command prompt takes no points
}

TEST_F(SnapTest, RubberBandNames) {
    Point3 b{1, 2, 3};
    struct Case {
        const char* shape;
        const char* transform;
        int rubber, xf;
    } cases[] = {
        {"line", nullptr, 1, 2},   {"RECTANGLE", nullptr, 2, 2}, {"Circle", "XROT", 7, 2},
        {"drag", "yrot", 5, 10},   {"x", "ZROT", 5, 11},         {"x", "scale", 5, 3},
        {"x", "GRAVITY", 5, 5},    {"x", "Mirror", 5, 16},       {"x", "spin", 5, 2},
        {"LIN", nullptr, 5, 2},
    };
    for (const Case& c : cases) {
        Input_SetRubberBand(&b, c.shape, c.transform);
        EXPECT_EQ(g.input.rubberShape, c.rubber) << c.shape;
        EXPECT_EQ(g.input.rubberTransform, c.xf) << c.shape;
        EXPECT_EQ(g.input.basePoint.z, 3);
    }
}

// The same snaps with the point clicked in the viewport rather than typed:
// the click near (3.6, 0, 0.2) finds the first edge, whose nearer end is (4, 0, 0).
TEST_F(SnapTest, EndPointByClick) {
    int x, y;
    PixelOf({3.6, 0, 0.2}, &x, &y);
    Headless_PushText("POLYLINE\nendpoint\n");
    Headless_PushClick(x, y);
    Headless_PushText("midpoint\n");
    PixelOf({1.1, 0, 0.1}, &x, &y);
    Headless_PushClick(x, y);
    EXPECT_FALSE(RunLoop());
    ExpectPoint(0, 4, 0, 0);
    ExpectPoint(1, 2, 0, 0);
}

}  // namespace
