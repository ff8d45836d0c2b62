// view_prompt_test.cpp - the view commands that ask for numbers: AREA,
// ELEVATION and VPOINT. The answers are given both as typed keys and on
// standard input, so the tests run against either prompt.
#include <cstdio>
#include <string>

#include "e2e/process.h"
#include "view/view_scene.h"

namespace {

class ViewPrompt : public HeadlessTest {
  protected:
    TempDir dir;
    Viewport* vp = &g.view.Active_Viewport;
    void SetUp() override {
        HeadlessTest::SetUp();
        Views_SetLayout(1, 0);
        g.input.currentCommand = 602;   // a command is running: numbers are taken
        Headless_ClearTranscript();
    }
    void TearDown() override {
        if (stdin_redirected) freopen("/dev/null", "r", stdin);
        HeadlessTest::TearDown();
    }
    // Each line answers one prompt ("" = Enter).
    void Answer(const std::string& lines) {
        std::string path = dir.file("answers.txt");
        WriteFile(path, lines);
        ASSERT_NE(freopen(path.c_str(), "r", stdin), nullptr);
        stdin_redirected = true;
        Headless_PushText(lines.c_str());
    }
    int Depth() { return Zoom_Depth(g.view.Current_Viewport); }
    bool stdin_redirected = false;
};

TEST_F(ViewPrompt, AreaSetsTheViewSize) {
    Answer("4.5\n");
    int depth = Depth();
    ASSERT_TRUE(Headless_RunSession([] { EXPECT_EQ(Com_Area(), 1); }));
    EXPECT_EQ(Headless_Transcript().rfind("\nSet drawing Area <10>: ", 0), 0u);
    EXPECT_EQ(vp->AREA, 4.5);
    EXPECT_NEAR(vp->pixels_per_unit, 209 / 4.5, 1e-12);
    EXPECT_EQ(Depth(), depth + 1);
}

TEST_F(ViewPrompt, AreaKeptOnEnter) {
    Answer("\n");
    int depth = Depth();
    ASSERT_TRUE(Headless_RunSession([] { EXPECT_EQ(Com_Area(), 1); }));
    EXPECT_EQ(vp->AREA, 10);
    EXPECT_EQ(Depth(), depth);
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
    EXPECT_EQ(c.x, 1);
    EXPECT_EQ(c.y, 2);
    EXPECT_EQ(c.z, -5);
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
