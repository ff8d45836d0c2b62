// pen_test.cpp - the 3D pen: clipping, the camera plane, extents, hit testing,
// interruptible drawing and bad input. Drawn lines are read back from the
// headless display's record.
#include <cmath>

#include "view/view_scene.h"

namespace {

class ViewPen : public QmrTest {
  protected:
    Viewport vp;
    void SetUp() override {
        QmrTest::SetUp();
        Headless_ClearSegments();
        Headless_ClearInput();
        View_Init(&vp);
    }
    void TearDown() override {
        Headless_ClearSegments();
        Headless_ClearInput();
        QmrTest::TearDown();
    }
    // Screen kind: world x, y are pixels, so segments are easy to reason about.
    void ScreenRect(double l, double t, double r, double b) {
        View_SetRect(&vp, l, t, r, b);
        View_SetKind(&vp, VIEW_SCREEN);
    }
    int Line(double x1, double y1, double x2, double y2) {
        View_MoveTo(&vp, {x1, y1, 0});
        return View_LineTo(&vp, {x2, y2, 0});
    }
    void PickBox(int l, int t, int r, int b) {
        vp.pick_box[0] = l, vp.pick_box[1] = t, vp.pick_box[2] = r, vp.pick_box[3] = b;
    }
    void ExpectExtents(double minx, double maxx, double miny, double maxy) {
        EXPECT_NEAR(vp.ext_min_x, minx, 1e-9);
        EXPECT_NEAR(vp.ext_max_x, maxx, 1e-9);
        EXPECT_NEAR(vp.ext_min_y, miny, 1e-9);
        EXPECT_NEAR(vp.ext_max_y, maxy, 1e-9);
    }
};

TEST_F(ViewPen, ClipsAtEachEdge) {
    ScreenRect(100, 100, 200, 200);
    struct Case {
        const char* what;
        double x1, y1, x2, y2;
        const char* drawn;
    } cases[] = {
        {"inside", 120, 150, 180, 150, "120,150 180,150"},
        {"right", 150, 150, 250, 200, "150,150 200,175"},    // slope 1/2: 150 + 25
        {"left", 50, 120, 150, 170, "100,145 150,170"},      // 120 + 50/2
        {"bottom", 150, 150, 170, 250, "150,150 160,200"},   // 150 + 50/5
        {"top", 130, 50, 150, 150, "140,100 150,150"},       // 130 + 50/5
        {"both x", 0, 150, 300, 150, "100,150 200,150"},
        {"truncated", 120.7, 150.9, 180.2, 150.99, "120,150 180,150"},
        {"left of it", 10, 150, 90, 160, ""},
        {"right of it", 210, 150, 290, 160, ""},
        {"above", 150, 10, 160, 90, ""},
        {"below", 150, 210, 160, 290, ""},
        // Not wholly to one side, but passes outside the top-left corner:
        // after the left cut (100, 90) and the top cuts both ends lie at x = 90.
        {"past the corner", 50, 140, 140, 50, ""},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.what);
        Headless_ClearSegments();
        EXPECT_EQ(Line(c.x1, c.y1, c.x2, c.y2), 0);
        EXPECT_EQ(SegText(), c.drawn);
        EXPECT_DOUBLE_EQ(vp.pen_x, c.x2);   // the pen moves to the unclipped end
        EXPECT_DOUBLE_EQ(vp.pen_y, c.y2);
    }
}

TEST_F(ViewPen, PenFollowsTheUnclippedPoint) {
    ScreenRect(100, 100, 200, 200);
    View_MoveTo(&vp, {150, 150, 0});
    View_LineTo(&vp, {250, 150, 0});
    View_LineTo(&vp, {250, 180, 0});   // wholly right of the rectangle: nothing
    View_LineTo(&vp, {150, 180, 0});   // from the unclipped (250, 180)
    EXPECT_EQ(SegText(), "150,150 200,150; 200,180 150,180");
}

// TOP view, default rectangle: (0,0,0) -> (319, 239), (5,0,-2) -> (438.5, 286.8).
// The pen keeps the last two world points.
TEST_F(ViewPen, ProjectsThroughTheViewAndKeepsItsPoints) {
    View_MoveTo(&vp, {0, 0, 0});
    View_LineTo(&vp, {5, 0, -2});
    EXPECT_EQ(SegText(), "319,239 438,286");
    View_MoveTo(&vp, {1, 2, 3});
    EXPECT_DOUBLE_EQ(g.view.last_point.x, 1);
    View_LineTo(&vp, {4, 5, 6});
    EXPECT_DOUBLE_EQ(g.view.prev_point.y, 2);
    EXPECT_DOUBLE_EQ(g.view.last_point.z, 6);
    View_LineTo(&vp, {7, 8, 9});
    EXPECT_DOUBLE_EQ(g.view.prev_point.x, 4);
    EXPECT_DOUBLE_EQ(g.view.last_point.x, 7);
}

// Camera at (0,0,-10) looking at the origin, FOV 90 (focal 1), default
// rectangle: centre (319, 239), half height 239. Horizontal scale
// f = (640/480) * 239 / 1.3333333 in single precision.
class ViewPen3D : public ViewPen {
  protected:
    int x1 = (int)(319 + (640.0f / 480.0f) * 239.0f / 1.3333333f * 0.1);   // (1,0,0)
    void SetUp() override {
        ViewPen::SetUp();
        View_SetFov(&vp, 90);
        View_LookAt(&vp, {0, 0, -10}, {0, 0, 0});
        View_SetKind(&vp, VIEW_3D);
    }
};

TEST_F(ViewPen3D, DrawsInPerspective) {
    // (1,0,0): eye (-1, 0, 10) -> x = 319 + f/10; (0,1,0): eye (0,-1,10) -> y = 239 - 23.9.
    View_MoveTo(&vp, {0, 0, 0});
    EXPECT_DOUBLE_EQ(vp.pen_x, 319);
    View_LineTo(&vp, {1, 0, 0});
    View_LineTo(&vp, {0, 1, 0});
    std::string x = std::to_string(x1);
    EXPECT_EQ(SegText(), "319,239 " + x + ",239; " + x + ",239 319,215");
}

TEST_F(ViewPen3D, SegmentCrossingTheCameraPlaneStartsAtTheNearPlane) {
    // (0,0,-20) is behind the camera: eye (0, 0, -10). To (1,0,0), eye (-1, 0, 10):
    // dz = 20, x += (-1 - 0)/20 * 10 = -0.5 at depth 1e-7, far off the right edge,
    // so the line is drawn from the right edge to the visible end; and back.
    View_MoveTo(&vp, {0, 0, -20});
    EXPECT_EQ(View_LineTo(&vp, {1, 0, 0}), 0);
    View_LineTo(&vp, {0, 0, -20});
    std::string x = std::to_string(x1);
    EXPECT_EQ(SegText(), "639,239 " + x + ",239; " + x + ",239 639,239");
}

TEST_F(ViewPen3D, SegmentWhollyBehindIsSkipped) {
    View_MoveTo(&vp, {0, 0, -20});
    EXPECT_EQ(View_LineTo(&vp, {1, 0, -15}), 0);
    EXPECT_EQ(View_LineTo(&vp, {1, 0, -10}), 0);   // depth exactly 0 counts as behind
    EXPECT_TRUE(Headless_Segments().empty());
    vp.extents_mode = 1;
    View_ResetExtents(&vp);
    View_LineTo(&vp, {3, 0, -12});
    EXPECT_EQ(vp.extents_found, 0);
}

TEST_F(ViewPen, ExtentsAreGatheredWithoutDrawingOrClipping) {
    ScreenRect(100, 100, 200, 200);
    vp.extents_mode = 1;
    View_ResetExtents(&vp);
    View_MoveTo(&vp, {10, 20, 0});
    EXPECT_EQ(View_LineTo(&vp, {700, -5, 0}), 0);
    View_LineTo(&vp, {300, 400, 0});
    EXPECT_TRUE(Headless_Segments().empty());
    EXPECT_EQ(vp.extents_found, 1);
    ExpectExtents(10, 700, -5, 400);
    // In a TOP view: (-1,0,1) -> (295.1, 215.1); (2,0,-3) -> (366.8, 310.7).
    View_Init(&vp);
    vp.extents_mode = 1;
    View_ResetExtents(&vp);
    View_MoveTo(&vp, {-1, 0, 1});
    View_LineTo(&vp, {2, 0, -3});
    ExpectExtents(295.1, 366.8, 215.1, 310.7);
}

// Pick box 100..104 x 100..104 inside the whole default rectangle.
class ViewPenHit : public ViewPen {
  protected:
    void SetUp() override {
        ViewPen::SetUp();
        View_SetKind(&vp, VIEW_SCREEN);
        vp.line_mode = LINE_HIT_TEST;
        PickBox(100, 100, 104, 104);
    }
};

TEST_F(ViewPenHit, FindsSegmentsThroughTheBoxAndNotThoseBesideIt) {
    struct Case {
        const char* what;
        double x1, y1, x2, y2;
        int hit;
    } cases[] = {
        {"horizontal through", 50, 102, 150, 102, 1},
        {"horizontal one below", 50, 105, 150, 105, 0},
        {"horizontal one above", 50, 99, 150, 99, 0},
        {"vertical on left edge", 100, 50, 100, 150, 1},
        {"vertical one left", 99, 50, 99, 150, 0},
        {"vertical one right", 105, 50, 105, 150, 0},
        {"diagonal through", 90, 90, 110, 110, 1},
        {"diagonal past the corner", 95, 104, 104, 95, 0},   // x + y = 199 < 200
        {"diagonal touching the corner", 95, 105, 105, 95, 1},
        {"stops short", 50, 102, 99, 102, 0},
        {"ends on the edge", 50, 102, 100, 102, 1},
        {"reversed", 150, 102, 50, 102, 1},
        {"a single pixel inside", 102, 102, 102, 102, 1},
    };
    for (const Case& c : cases) EXPECT_EQ(Line(c.x1, c.y1, c.x2, c.y2), c.hit) << c.what;
    EXPECT_TRUE(Headless_Segments().empty());
    // From (0,100) to (200,102) the line is at y = 101 exactly when x = 100.
    for (int y : {100, 101, 102}) {
        PickBox(100, y, 100, y);
        EXPECT_EQ(Line(0, 100, 200, 102), y == 101) << "y " << y;
    }
    // The box lies outside a smaller rectangle: the clipped segment cannot reach it.
    PickBox(100, 100, 104, 104);
    ScreenRect(0, 0, 90, 479);
    EXPECT_EQ(Line(50, 102, 150, 102), 0);
}

// With a poll interval of 0 the pen asks after every segment (the timed
// polling is tested with the redraw).
TEST_F(ViewPen, InterruptibleDrawingAsksForEvents) {
    ScreenRect(0, 0, 639, 479);
    g.view.poll_interval = 0;
    vp.line_mode = LINE_INTERRUPTIBLE;
    Headless_PushMove(5, 5);
    X11_PumpEvents();
    View_BeginInterruptible();
    EXPECT_EQ(Line(10, 10, 20, 20), 0);
    Headless_PushKey('a');
    EXPECT_EQ(Line(10, 10, 20, 20), 1);
    Headless_ClearInput();
    Headless_PushMove(6, 5);   // the mouse moved
    EXPECT_EQ(Line(10, 10, 20, 20), 1);
    EXPECT_EQ(Headless_Segments().size(), 3u);   // each line is drawn before the question

    // Plain drawing does not ask; the global flag makes every viewport ask.
    vp.line_mode = LINE_DRAW;
    EXPECT_EQ(Line(10, 10, 20, 20), 0);
    g.view.interruptible = 1;
    EXPECT_EQ(Line(10, 10, 20, 20), 1);
    View_BeginInterruptible();   // a new snapshot: the mouse has not moved since
    EXPECT_EQ(Line(10, 10, 20, 20), 0);
}

TEST_F(ViewPen, PixelRectangle) {
    vp.line_mode = LINE_DRAW;
    g.view.last_point = {7, 8, 9};
    EXPECT_EQ(View_DrawPixelRect(&vp, 10, 10, 50, 40), 0);
    EXPECT_EQ(SegText(), "10,10 50,10; 50,10 50,40; 50,40 10,40; 10,40 10,10");
    EXPECT_EQ(vp.VIEW, VIEW_TOP);                  // kind restored
    EXPECT_DOUBLE_EQ(g.view.last_point.x, 7);      // world points untouched

    Headless_ClearSegments();
    vp.line_mode = LINE_HIT_TEST;
    PickBox(48, 20, 52, 22);
    EXPECT_EQ(View_DrawPixelRect(&vp, 10, 10, 50, 40), 1);   // the right side
    PickBox(20, 20, 30, 22);
    EXPECT_EQ(View_DrawPixelRect(&vp, 10, 10, 50, 40), 0);   // inside, touching no side
    EXPECT_TRUE(Headless_Segments().empty());

    vp.extents_mode = 1;
    View_ResetExtents(&vp);
    View_DrawPixelRect(&vp, 10, 10, 50, 40);
    ExpectExtents(10, 50, 10, 40);
}

TEST_F(ViewPen, BadInputNeitherCrashesNorHangs) {
    // NaN anywhere: nothing drawn, measured or hit.
    EXPECT_EQ(Line(NAN, 0, 5, 5), 0);
    View_MoveTo(&vp, {0, 0, 0});
    EXPECT_EQ(View_LineTo(&vp, {NAN, 0, 0}), 0);
    EXPECT_EQ(SegText(), "");

    // Huge but finite: clipped to the rectangle (TOP view, default rectangle).
    View_MoveTo(&vp, {-1e300, 0, 0});
    View_LineTo(&vp, {1e300, 0, 0});
    // Overflowing to infinity: refused.
    View_MoveTo(&vp, {0, 0, 0});
    View_LineTo(&vp, {1e308, 0, 1e308});
    EXPECT_EQ(SegText(), "0,239 639,239");

    // AREA 0 (raised to 1e-14): every segment off the centre is enormous.
    // The diagonal y = x - 80 through the centre (319, 239), cut to the rectangle
    // at (80, 0) and (559, 479) (give or take the rounding of 2.39e15).
    View_SetArea(&vp, 0);
    vp.line_mode = LINE_HIT_TEST;
    PickBox(317, 237, 321, 241);
    View_MoveTo(&vp, {-1, 0, 1});
    EXPECT_EQ(View_LineTo(&vp, {1, 0, -1}), 1);
    PickBox(0, 0, 10, 10);
    View_MoveTo(&vp, {-1, 0, 1});
    EXPECT_EQ(View_LineTo(&vp, {1, 0, -1}), 0);

    // An empty rectangle: everything lands on its one pixel.
    vp.line_mode = LINE_DRAW;
    View_SetRect(&vp, 50, 50, 50, 50);
    Headless_ClearSegments();
    View_MoveTo(&vp, {-3, 0, 0});
    View_LineTo(&vp, {3, 0, 0});
    EXPECT_EQ(SegText(), "50,50 50,50");

    // 3D with NaN and with a camera that was never aimed.
    View_SetKind(&vp, VIEW_3D);
    View_MoveTo(&vp, {NAN, 1, 1});
    EXPECT_EQ(View_LineTo(&vp, {1, 1, NAN}), 0);
    g.view.camera_aspect = 0;   // a bad aspect is replaced, not divided by
    View_MoveTo(&vp, {0, 0, 1});
    View_LineTo(&vp, {0, 0, 2});
}

}  // namespace
