// zoom_test.cpp - the zoom stacks and the commands that change a view
// without prompts: zoom window, zoom out, zoom all, unzoom, pan, view kinds,
// maximise, switch by click and the drag.
#include <cmath>

#include "input/settings.h"
#include "view/view_scene.h"

namespace {

class Zoom : public HeadlessTest {
  protected:
    Viewport* vp = &g.view.Active_Viewport;
    // Layout 1: rectangle 0,15 .. 639,434; half sizes 319 x 209.
    void SetUp() override {
        HeadlessTest::SetUp();
        Views_SetLayout(1, 0);
        View_SetKind(vp, VIEW_TOP);
        View_SetCentre(vp, {0, 0, 0});
        View_SetArea(vp, 10);
        Zoom_ResetAll();
        Headless_ClearTranscript();
    }
    int Depth() { return Zoom_Depth(g.view.Current_Viewport); }
    void ExpectRect(double l, double t, double r, double b) {
        EXPECT_EQ(vp->rect_left, l);
        EXPECT_EQ(vp->rect_top, t);
        EXPECT_EQ(vp->rect_right, r);
        EXPECT_EQ(vp->rect_bottom, b);
    }
    // Press `button` at the screen centre (320, 240), move to (x, y), release.
    void Drag(int button, int bits, int x, int y) {
        Headless_PushButton(320, 240, button);
        Headless_PushMove(x, y);
        Headless_PushButton(x, y, 0);
        ASSERT_TRUE(Headless_RunSession([bits] { View_Drag(bits); }));
    }
};

// Each slot's stack starts afresh from its own view.
TEST_F(Zoom, UnzoomAfterALayoutChangeHasOneNode) {
    Views_SetLayout(6, 0);
    for (int slot = 1; slot <= 4; slot++) EXPECT_EQ(Zoom_Depth(slot), 1) << slot;
    Headless_ClearTranscript();
    Com_Unzoom();
    EXPECT_EQ(Headless_Transcript(), "\nNo previouse Zoom settings.");
    EXPECT_EQ(Depth(), 1);
    Views_SelectSlot(3);
    View_SetArea(vp, 3);
    Views_SelectSlot(1);
    Zoom_ResetAll();
    EXPECT_EQ(g.view.zoom_first[3]->AREA, 3);
    EXPECT_EQ(g.view.zoom_first[1]->AREA, 10);
    Zoom_FreeAll();
    Headless_ClearTranscript();
    Com_Unzoom();
    EXPECT_EQ(Headless_Transcript(), "\nNo previouse Zoom settings!");
}

// aspect = 319 / 209 = 1.526: the wider side of the window decides.
TEST_F(Zoom, WindowTakesTheWiderSide) {
    View_ZoomWindow({-4, 0, 0}, {6, 0, 0});   // horizontal pair: no height, the width
    EXPECT_NEAR(vp->AREA, 5 / (319.0 / 209.0), 1e-12);
    EXPECT_EQ(View_GetCentre(vp).x, 1);
    EXPECT_EQ(Depth(), 2);
    View_ZoomWindow({0, 0, 0}, {2, 0, 8});    // hw 1, hh 4: the height
    EXPECT_EQ(vp->AREA, 4);
    EXPECT_EQ(View_GetCentre(vp).z, 4);
    View_ZoomWindow({0, 0, 0}, {9, 0, 2});    // hw 4.5, hh 1: wider than 1.526
    EXPECT_NEAR(vp->AREA, 4.5 / (319.0 / 209.0), 1e-12);
    View_SetKind(vp, VIEW_3D);                // ignored in the 3D view
    View_ZoomWindow({0, 0, 0}, {2, 0, 8});
    EXPECT_NEAR(vp->AREA, 4.5 / (319.0 / 209.0), 1e-12);
    EXPECT_EQ(Depth(), 4);
    // A turned view measures the window as it appears on the screen: turned
    // by 90 degrees, a horizontal pair in the plane stands upright.
    View_SetKind(vp, VIEW_TOP);
    vp->WORLD = 1;
    View_SetHeading(vp, 90);
    View_ZoomWindow({-3, 0, 0}, {3, 0, 0});
    EXPECT_NEAR(vp->AREA, 3, 1e-9);
}

TEST_F(Zoom, UnzoomStepsBackOneView) {
    View_ZoomWindow({0, 0, 0}, {2, 0, 8});
    Com_ZoomOut();
    EXPECT_EQ(vp->AREA, 8);
    EXPECT_EQ(Depth(), 3);
    Headless_ClearTranscript();
    Com_Unzoom();
    EXPECT_EQ(Headless_Transcript(), "\nUnzooming...");
    EXPECT_EQ(vp->AREA, 4);
    EXPECT_EQ(View_GetCentre(vp).z, 4);
    Com_Unzoom();
    EXPECT_EQ(vp->AREA, 10);
    EXPECT_EQ(View_GetCentre(vp).z, 0);
    EXPECT_EQ(Depth(), 1);
    // Kind and turn come back too.
    Com_ViewFront();
    vp->WORLD = 1;
    View_SetPitch(vp, 30);
    SaveZoom();
    Com_Unzoom();   // back to the FRONT node
    EXPECT_EQ(vp->VIEW, VIEW_FRONT);
    EXPECT_EQ(vp->WORLD + vp->PITCH, 0);
    Com_Unzoom();
    EXPECT_EQ(vp->VIEW, VIEW_TOP);
    EXPECT_EQ(vp->axis_v.z, 1);
}

TEST_F(Zoom, SaveZoomOutOfMemory) {
    Mem_FailAfter(1);
    SaveZoom();
    EXPECT_EQ(Headless_Transcript(), "Out of Memory in \"SaveZoom()\"");
    EXPECT_EQ(Depth(), 1);
}

TEST_F(Zoom, ZoomAllOnAnEmptySceneOrIn3D) {
    Com_ZoomAll();
    EXPECT_EQ(Headless_Transcript(), "\nPlease Wait!...\nUnable to ZoomAll");
    EXPECT_EQ(vp->AREA, 10);
    Headless_ClearTranscript();
    View_SetKind(vp, VIEW_3D);
    Com_ZoomAll();
    EXPECT_EQ(Headless_Transcript(), "\nCan't ZoomAll in 3D view!");
}

// The line (-2,0,-1)..(8,0,3) is 10 wide and 4 high: the width decides, so
// AREA = 5 / (319/209) / 0.95 = 3.448 around (3, 0, 1), within a pixel of
// the extents (1 / 20.9 units).
TEST_F(Zoom, ZoomAllFramesEveryVisibleObject) {
    Layer_Append();
    AddLine({-2, 0, -1}, {8, 0, 3});
    Layer* hidden = Layer_Append();
    AddLine({100, 0, 100}, {101, 0, 100});
    hidden->on = 0;
    Com_ZoomAll();
    EXPECT_EQ(Headless_Transcript(), "\nPlease Wait!...");
    EXPECT_NEAR(vp->AREA, 5 / (319.0 / 209.0) / 0.95, 0.04);
    Point3 c = View_GetCentre(vp);
    EXPECT_NEAR(c.x, 3, 0.05);
    EXPECT_NEAR(c.z, 1, 0.05);
    // Both ends are now on screen, 5% in from the sides.
    View_Project(vp, {-2, 0, -1});
    EXPECT_NEAR(vp->screen_x, 0 + 319 * 0.05, 2);
    View_Project(vp, {8, 0, 3});
    EXPECT_NEAR(vp->screen_x, 638 - 319 * 0.05, 2);
    EXPECT_EQ(vp->extents_mode, 0);
    // Layer transforms count: the same line moved 20 along X.
    Scene_Clear();
    Layer_Append()->translate = {20, 0, 0};
    AddLine({-2, 0, -1}, {8, 0, 3});
    Com_ZoomAll();
    EXPECT_NEAR(View_GetCentre(vp).x, 23, 0.05);
}

TEST_F(Zoom, PanMovesTheCentreByThePickedDifference) {
    View_PanBy({1, 0, 1}, {3, 0, 2});
    EXPECT_EQ(View_GetCentre(vp).x, -2);
    EXPECT_EQ(View_GetCentre(vp).z, -1);
    EXPECT_EQ(Depth(), 2);
}

TEST_F(Zoom, ViewKindCommands) {
    struct Case {
        int (*command)();
        int kind;
        Point3 d;
    } cases[] = {
        {Com_ViewBottom, VIEW_BOTTOM, {0, -1, 0}}, {Com_ViewRight, VIEW_RIGHT, {1, 0, 0}},
        {Com_ViewLeft, VIEW_LEFT, {-1, 0, 0}},     {Com_ViewFront, VIEW_FRONT, {0, 0, -1}},
        {Com_ViewBack, VIEW_BACK, {0, 0, 1}},      {Com_ViewTop, VIEW_TOP, {0, 1, 0}},
    };
    int depth = Depth();
    for (const Case& c : cases) {
        EXPECT_EQ(c.command(), 1);
        EXPECT_EQ(vp->VIEW, c.kind);
        EXPECT_EQ(Vec_Dot(vp->axis_d, c.d), 1) << c.kind;
        EXPECT_EQ(Depth(), ++depth);
    }
    Com_ToggleWorld();
    EXPECT_EQ(vp->WORLD, 1);
    EXPECT_EQ(Headless_ReadText(5, 20, 11, g.config.colors.view_text), "WORLD [TOP]");
    // The 3D view needs a camera.
    Headless_ClearTranscript();
    Com_View3D();
    EXPECT_EQ(Headless_Transcript(), "Camera Not Defined!");
    EXPECT_EQ(vp->VIEW, VIEW_TOP);
    View_LookAt(vp, {0, 5, -20}, {0, 0, 0});
    Headless_ClearTranscript();
    Com_View3D();
    EXPECT_EQ(Headless_Transcript(), "\nSwitching to 3D perspective view");
    EXPECT_EQ(vp->VIEW, VIEW_3D);
    EXPECT_EQ(Headless_ReadText(5, 20, 2, g.config.colors.view_text), "3D");
}

TEST_F(Zoom, RedrawAndDuplicateMessages) {
    Com_Redraw();
    Com_RedrawAll();
    Com_Duplicate();
    EXPECT_EQ(Headless_Transcript(), "\nRedrawing...\nRedrawing..."
                                     "\nCan't duplicate, only one viewport on screen.");
}

// --- the viewport side of the prompt ---

// Layout 6: slot 1 321,226..638,433; slot 2 1,16..317,222;
// slot 3 321,16..638,222; slot 4 1,226..317,433.
TEST_F(Zoom, MaximiseAndRestoreKeepTheSettings) {
    Views_SetLayout(6, 0);
    Views_SelectSlot(2);
    View_SetArea(vp, 7);
    EXPECT_EQ(Views_ToggleMaximise(), 1);
    EXPECT_EQ(g.view.Viewport_Layout, 1);
    ExpectRect(0, 15, 639, 434);
    EXPECT_EQ(g.view.Viewports[2].rect_right, 639);
    EXPECT_EQ(vp->AREA, 7);
    Views_ToggleMaximise();
    EXPECT_EQ(g.view.Viewport_Layout, 6);
    EXPECT_EQ(g.view.Current_Viewport, 2);
    ExpectRect(1, 16, 317, 222);
    EXPECT_EQ(vp->AREA, 7);
}

TEST_F(Zoom, ClickSwitchesTheViewport) {
    g.config.colors.view_boarder = LRED;
    g.config.colors.view_fgcolor = GRAY;
    Views_SetLayout(6, 0);
    View_SetArea(vp, 6);   // slot 1's setting must survive the switch
    EXPECT_EQ(Views_SwitchAt(100, 100), 1);
    EXPECT_EQ(g.view.Current_Viewport, 2);
    EXPECT_EQ(g.view.Viewports[1].AREA, 6);
    ExpectPixels({{0, 100, LRED}, {320, 300, GRAY}});   // the borders follow
    EXPECT_EQ(Views_SwitchAt(100, 100), 0);   // already current
    EXPECT_EQ(Views_SwitchAt(319, 100), 0);   // the gap between viewports
    EXPECT_EQ(Views_SwitchAt(400, 300), 1);
    EXPECT_EQ(g.view.Current_Viewport, 1);
    EXPECT_EQ(vp->AREA, 6);
}

// Ctrl with the left, right or middle button pans, zooms or turns. The
// pointer starts at the screen centre (320, 240); 20.9 pixels a unit.
TEST_F(Zoom, DragPansZoomsAndTurns) {
    EXPECT_EQ(View_DragBits(MOUSE_LEFT, 0), 0);
    EXPECT_EQ(View_DragBits(MOUSE_LEFT, SHIFT_CTRL), 8);
    EXPECT_EQ(View_DragBits(MOUSE_RIGHT, SHIFT_CTRL), 4);
    EXPECT_EQ(View_DragBits(MOUSE_MIDDLE, SHIFT_CTRL), 2);
    Drag(MOUSE_LEFT, 8, 362, 240);
    EXPECT_NEAR(View_GetCentre(vp).x, -42 / 20.9, 1e-9);   // the scene follows the mouse
    EXPECT_EQ(Depth(), 2);

    Drag(MOUSE_RIGHT, 4, 320, 360);
    EXPECT_NEAR(vp->AREA, 10 + 10 / 1.5 * 0.5, 1e-9);

    Drag(MOUSE_MIDDLE, 2, 400, 120);
    EXPECT_EQ(vp->WORLD, 1);
    EXPECT_NEAR(vp->PITCH, 360 - 89.9999998 * 0.5, 1e-9);
    EXPECT_NEAR(vp->HEADING, 180 * 0.25, 1e-9);
    EXPECT_EQ(Depth(), 4);
}

TEST_F(Zoom, DragIn3DMovesTheCamera) {
    Point3 cam{0, 0, -20}, tar{0, 0, 0};
    Var_SetPoint("TAR", &tar);
    Var_SetPoint("CAM", &cam);
    View_SetKind(vp, VIEW_3D);
    double fov = vp->FOV;
    Drag(MOUSE_RIGHT, 4, 320, 360);
    EXPECT_NEAR(vp->FOV, fov + fov / 1.5 * 0.5, 1e-9);
    EXPECT_NEAR(g.view.Viewports[2].FOV, vp->FOV, 1e-9);   // written to every record
    Drag(MOUSE_MIDDLE, 2, 480, 240);   // a quarter turn round the target
    EXPECT_NEAR(vp->CAM.x, -20, 1e-6);
    EXPECT_NEAR(vp->CAM.z, 0, 1e-6);
    EXPECT_EQ(vp->TAR.x, 0);
}

}  // namespace
