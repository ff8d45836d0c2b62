// view_transparent_test.cpp - the view commands inside another command's
// prompt: zoom, pan and a view change run, then the waiting command asks
// again with its own prompt and rubber band. Also DUPLICATE by clicks and
// the Ctrl-drag through the prompt.
#include <cmath>
#include <string>

#include "input/session.h"
#include "view/view_scene.h"

namespace {

// SessionTest: layout 6, slot 1 (321,226 .. 638,433) a TOP view centred on
// the origin with AREA 10: centre pixel (479, 329), 10.3 pixels a unit.
class ViewTransparent : public SessionTest {
  protected:
    Viewport* vp = &g.view.Active_Viewport;
    void SetUp() override {
        SessionTest::SetUp();
        Zoom_ResetAll();   // the TOP view set up above is where UNZOOM returns to
    }
    // Runs the loop until input runs out; the transcript must hold `prompts`.
    void RunExpecting(const std::string& prompts) {
        EXPECT_FALSE(RunLoop());
        const std::string& t = Headless_Transcript();
        EXPECT_NE(t.find(prompts), std::string::npos) << t;
        EXPECT_EQ(t.find("*cancel*"), std::string::npos);
    }
};

TEST_F(ViewTransparent, ZoomInsideCircleReturnsToTheRadiusPrompt) {
    Headless_PushText("CIRCLE\n");
    Headless_PushClick(479, 329);    // centre (0, 0, 0)
    Headless_PushText("ZOOM\n");
    Headless_PushClick(427, 298);    // (-52/10.3, 0, 31/10.3)
    Headless_PushClick(530, 360);    // (51/10.3, 0, -31/10.3)
    Headless_PushMove(500, 329);     // the radius band follows the mouse
    RunExpecting("\nCIRCLE> Set Radius: \nZOOMIN>> Upper/Left Corner: "
                 "\nZOOMIN>> Lower/Right Corner: \nCIRCLE> Set Radius: ");
    // Width 103 / 10.3 = 10 is the wider side (10 / 6.02 > 158 / 103).
    EXPECT_NEAR(vp->AREA, 5 / (158.0 / 103.0), 1e-9);
    EXPECT_NEAR(View_GetCentre(vp).x, -0.5 / 10.3, 1e-9);
    // Back in CIRCLE: its prompt, its band from its centre.
    EXPECT_STREQ(g.input.promptText, "\nCIRCLE> Set Radius: ");
    EXPECT_EQ(g.input.rubberShape, RUBBER_CIRCLE);
    EXPECT_EQ(g.input.basePoint.x, 0);
    EXPECT_EQ(g.input.currentCommand, 213);
    // The band is drawn round the centre's new pixel through the cursor.
    int cx, cy;
    PixelOf({0, 0, 0}, &cx, &cy);
    int r = 500 - cx;
    EXPECT_NE(Headless_Pixel(cx - r, cy), g.config.colors.view_bkcolor);
}

TEST_F(ViewTransparent, PanInsidePolylineKeepsItsLineBand) {
    Headless_PushText("POLYLINE\n");
    Headless_PushClick(479, 329);    // start (0, 0, 0)
    Headless_PushText("PAN\n");
    Headless_PushClick(479, 329);    // base (0, 0, 0)
    Headless_PushClick(520, 329);    // offset (41/10.3, 0, 0)
    RunExpecting("\nPOLYLINE> Next point: \nPAN>> Set Base Point: \nPAN>> Set offset Point: "
                 "\nPOLYLINE> Next point: ");
    EXPECT_NEAR(View_GetCentre(vp).x, -41 / 10.3, 1e-9);   // the scene follows the pick
    EXPECT_STREQ(g.input.promptText, "\nPOLYLINE> Next point: ");
    EXPECT_EQ(g.input.rubberShape, RUBBER_LINE);
    ASSERT_EQ(Answers().size(), 1u);   // PAN's points were not given to POLYLINE
    EXPECT_EQ(Answers()[0].point.x, 0);
}

TEST_F(ViewTransparent, ViewChangeAndUnzoomInsideAPrompt) {
    Headless_PushText("POLYLINE\n");
    Headless_PushClick(479, 329);
    Headless_PushText("ZOOMOUT\nUNZOOM\n");
    Headless_PushClick(500, 329);    // the next point, in the view as before
    RunExpecting("\nPOLYLINE> Next point: \nPOLYLINE> Next point: \nUnzooming..."
                 "\nPOLYLINE> Next point: \nPOLYLINE> Next point: ");
    EXPECT_EQ(vp->AREA, 10);
    ASSERT_EQ(Answers().size(), 2u);
    EXPECT_NEAR(Answers()[1].point.x, 21 / 10.3, 1e-9);
}

// DUPLICATE: a click in another viewport makes it show the current view.
TEST_F(ViewTransparent, DuplicateCopiesTheViewIntoThePickedViewport) {
    View_SetArea(vp, 4);
    View_SetCentre(vp, {1, 0, 2});
    Headless_PushText("DUPLICATE\n");
    Headless_PushClick(100, 100);   // slot 2: 1,16 .. 317,222
    RunExpecting("\nDUPLICATE> Select a Viewport: ");
    EXPECT_EQ(g.view.Current_Viewport, 2);
    EXPECT_EQ(vp->AREA, 4);
    EXPECT_EQ(View_GetCentre(vp).z, 2);
    EXPECT_EQ(vp->VIEW, VIEW_TOP);
    EXPECT_EQ(vp->rect_left, 1);     // its own rectangle
    EXPECT_EQ(vp->rect_right, 317);
    EXPECT_EQ(g.view.Viewports[1].rect_left, 321);
}

TEST_F(ViewTransparent, ControlDragPansThroughThePrompt) {
    Headless_PushShift(SHIFT_CTRL);
    Headless_PushButton(479, 329, MOUSE_LEFT);
    Headless_PushMove(341, 240);     // 21 pixels right of the screen centre (320, 240)
    Headless_PushButton(341, 240, 0);
    Headless_PushShift(0);
    EXPECT_FALSE(RunLoop());
    EXPECT_NEAR(View_GetCentre(vp).x, -21 / 10.3, 1e-9);
    EXPECT_EQ(Zoom_Depth(1), 2);
}

}  // namespace
