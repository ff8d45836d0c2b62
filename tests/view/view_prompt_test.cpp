// view_prompt_test.cpp - the view commands that ask for numbers: AREA,
// ELEVATION and VPOINT, answered with typed keys.
#include <string>

#include "view/view_scene.h"

namespace {

class ViewPrompt : public HeadlessTest {
  protected:
    Viewport* vp = &g.view.Active_Viewport;
    void SetUp() override {
        HeadlessTest::SetUp();
        Views_SetLayout(1, 0);
        g.input.currentCommand = 602;   // a command is running: numbers are taken
        Headless_ClearTranscript();
    }
    // Each line answers one prompt ("" = Enter).
    void Answer(const std::string& lines) { Headless_PushText(lines.c_str()); }
    int Depth() { return Zoom_Depth(g.view.Current_Viewport); }
};

// Enter keeps the size and saves no zoom step.
TEST_F(ViewPrompt, AreaSetsTheViewSize) {
    Answer("\n4.5\n");
    int depth = Depth();
    ASSERT_TRUE(Headless_RunSession([] { EXPECT_EQ(Com_Area(), 1); }));
    EXPECT_EQ(vp->AREA, 10);
    EXPECT_EQ(Depth(), depth);
    ASSERT_TRUE(Headless_RunSession([] { EXPECT_EQ(Com_Area(), 1); }));
    EXPECT_EQ(Headless_Transcript().rfind("\nSet drawing Area <10>: ", 0), 0u);
    EXPECT_EQ(vp->AREA, 4.5);
    EXPECT_NEAR(vp->pixels_per_unit, 209 / 4.5, 1e-12);
    EXPECT_EQ(Depth(), depth + 1);
}

// FRONT looks along -Z: the elevation is the centre's component along
// axis_d = (0, 0, -1); the other two components stay.
TEST_F(ViewPrompt, ElevationMovesTheWorkingPlane) {
    View_SetKind(vp, VIEW_FRONT);
    View_SetCentre(vp, {1, 2, 3});
    Answer("5\n");
    ASSERT_TRUE(Headless_RunSession([] { EXPECT_EQ(Com_Elevation(), 1); }));
    EXPECT_EQ(Headless_Transcript().rfind("\nSet Elevation value <-3>: ", 0), 0u);
    Point3 c = View_GetCentre(vp);
    EXPECT_TRUE(c.x == 1 && c.y == 2 && c.z == -5) << c.x << " " << c.y << " " << c.z;
    // A picked point now lies on the plane z = -5.
    View_ScreenToWorld(vp, 100, 100);
    EXPECT_EQ(vp->picked_point.z, -5);
}

TEST_F(ViewPrompt, VpointTurnsTheView) {
    Answer("30\n\n");   // pitch 30, heading kept
    View_SetHeading(vp, 15);
    ASSERT_TRUE(Headless_RunSession([] { EXPECT_EQ(Com_Vpoint(), 1); }));
    EXPECT_NE(Headless_Transcript().find("\nVPOINT>> Set Pitch rotation value <0>: "), std::string::npos);
    EXPECT_NE(Headless_Transcript().find("\nVPOINT>> Set Heading rotation value <15>: "),
              std::string::npos);
    EXPECT_EQ(vp->PITCH, 30);
    EXPECT_EQ(vp->HEADING, 15);
    EXPECT_EQ(vp->WORLD, 1);
    EXPECT_NEAR(vp->sin_pitch, 0.5, 1e-9);   // 57.29577951 degrees a radian
}

}  // namespace
