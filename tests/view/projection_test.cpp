// projection_test.cpp - viewport defaults, setters, projection both ways, camera.
// Expected values are worked out by hand from the projection formulas.
#include <cmath>

#include "test_support.h"
#include "view/viewport.h"

namespace {

class ViewProjection : public QmrTest {
  protected:
    Viewport vp;
    void SetUp() override {
        QmrTest::SetUp();
        View_Init(&vp);
    }
    void ExpectScreen(double x, double y, double tol = 1e-10) {
        EXPECT_NEAR(vp.screen_x, x, tol);
        EXPECT_NEAR(vp.screen_y, y, tol);
    }
    void ExpectPicked(double x, double y, double z, double tol = 1e-12) {
        EXPECT_NEAR(vp.picked_point.x, x, tol);
        EXPECT_NEAR(vp.picked_point.y, y, tol);
        EXPECT_NEAR(vp.picked_point.z, z, tol);
    }
    void ExpectRect(double l, double t, double r, double b) {
        EXPECT_DOUBLE_EQ(vp.rect_left, l);
        EXPECT_DOUBLE_EQ(vp.rect_top, t);
        EXPECT_DOUBLE_EQ(vp.rect_right, r);
        EXPECT_DOUBLE_EQ(vp.rect_bottom, b);
    }
};

// Default rectangle 0..639 x 0..479: half sizes 319 and 239, centre (319, 239),
// AREA 10 gives 23.9 pixels per unit.
TEST_F(ViewProjection, DefaultsOfInit) {
    EXPECT_EQ(vp.VIEW, VIEW_TOP);
    EXPECT_EQ(vp.half_width_px, 319);
    EXPECT_EQ(vp.half_height_px, 239);
    EXPECT_DOUBLE_EQ(vp.pixels_per_unit, 23.9);
    EXPECT_DOUBLE_EQ(vp.area_half_width, 10.0 * 638 / 478);
    EXPECT_EQ(vp.CENTER + vp.GRID + vp.AXIS + vp.title_on, 4);
    EXPECT_EQ(vp.SNAP + vp.CAMERA, 0);
}

TEST_F(ViewProjection, TopViewPixelExample) {
    View_Project(&vp, {10, 0, 0});
    ExpectScreen(319 + 239, 239);
    View_Project(&vp, {0, 7, 5});   // TOP: +Z is up the screen, Y is depth
    ExpectScreen(319, 239 - 5 * 23.9, 1e-12);
    View_SetCentre(&vp, {2, 0, 1});   // relative to a moved centre
    View_Project(&vp, {12, 0, 1});
    ExpectScreen(558, 239);
    EXPECT_DOUBLE_EQ(View_GetCentre(&vp).x, 2);
}

TEST_F(ViewProjection, KindsSetTheirAxes) {
    struct Case {
        int kind;
        double dx, dy;   // expected offset of (1, 2, 3) from the centre, in units
        const char* title;
    } cases[] = {
        {VIEW_TOP, 1, -3, "TOP"},    {VIEW_BOTTOM, -1, -3, "BOTTOM"}, {VIEW_RIGHT, 3, -2, "RIGHT"},
        {VIEW_LEFT, -3, -2, "LEFT"}, {VIEW_FRONT, 1, -2, "FRONT"},    {VIEW_BACK, -1, -2, "BACK"},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.title);
        View_SetKind(&vp, c.kind);
        View_Project(&vp, {1, 2, 3});
        ExpectScreen(319 + c.dx * 23.9, 239 + c.dy * 23.9, 1e-9);
        EXPECT_STREQ(View_Title(&vp), c.title);
    }
    vp.WORLD = 1;
    EXPECT_STREQ(View_Title(&vp), "WORLD [BACK]");
    View_SetKind(&vp, VIEW_3D);   // 3D keeps the axes of the last plain kind
    EXPECT_EQ(vp.axis_h.x, -1);
    EXPECT_STREQ(View_Title(&vp), "3D");
    View_SetKind(&vp, VIEW_SCREEN);   // world x, y are pixels
    View_Project(&vp, {12.5, 40, 99});
    ExpectScreen(12.5, 40);
}

TEST_F(ViewProjection, WorldWithZeroAnglesIsThePlainView) {
    const Point3 pts[] = {{10, 0, 0}, {-3, 4, 2.5}, {0.25, -8, -6}};
    for (int kind = 1; kind <= 6; kind++) {
        View_SetKind(&vp, kind);
        for (Point3 p : pts) {
            vp.WORLD = 0;
            View_Project(&vp, p);
            double x = vp.screen_x, y = vp.screen_y;
            vp.WORLD = 1;
            View_Project(&vp, p);
            ExpectScreen(x, y);
        }
    }
}

TEST_F(ViewProjection, WorldTurnsByHeadingAndPitch) {
    vp.WORLD = 1;
    // Heading 90: u = -b, w = a. TOP (1, 0, 0): a = 1 -> one unit up.
    // (degrees convert with 57.29577951, so angles are good to about 1e-8)
    View_SetHeading(&vp, 90);
    View_Project(&vp, {1, 0, 0});
    ExpectScreen(319, 239 - 23.9, 1e-7);
    // Back from that pixel: h = 0, v = 1, turned back by 90 degrees -> (1, 0, 0).
    View_ScreenToWorld(&vp, 319, 239 - 239 / 10);   // 239/10 = 23 whole pixels
    ExpectPicked(23 / 23.9, 0, 0, 1e-8);
    // Pitch 90, heading 0: w = n, the depth (Y in TOP) goes up the screen.
    View_SetHeading(&vp, 0);
    View_SetPitch(&vp, 90);
    View_Project(&vp, {0, 2, 0});
    EXPECT_NEAR(vp.screen_y, 239 - 2 * 23.9, 1e-9);
}

TEST_F(ViewProjection, ScreenToWorldInvertsThePlainView) {
    View_SetKind(&vp, VIEW_FRONT);
    View_SetCentre(&vp, {0, 0, 4});
    View_ScreenToWorld(&vp, 558, 239);
    ExpectPicked(10, 0, 4);   // z stays on the working plane
    View_SetKind(&vp, VIEW_3D);
    View_ScreenToWorld(&vp, 558, 239);
    EXPECT_DOUBLE_EQ(vp.picked_point.x, 0);
}

// With AREA 23.9 the scale is 10 pixels per unit: 27 pixels are 2.7 units.
// Snapping goes towards zero; the depth (3.5) is never snapped.
TEST_F(ViewProjection, SnapGoesTowardsZero) {
    View_SetArea(&vp, 23.9);
    ASSERT_DOUBLE_EQ(vp.pixels_per_unit, 10);
    View_SetCentre(&vp, {0, 3.5, 0});
    struct Case {
        int snap;
        double snapx;
        int d;   // pixel offset right and up from the centre
        double x, z;
    } cases[] = {
        {0, 1, -27, -2.7, -2.7}, {1, 1, -27, -2, -2}, {1, 1, 27, 2, 2},
        {1, 0.5, 27, 2.5, 2},    // spacing 0.5 on X only
        {1, 0, 27, 2.7, 2},      // a zero spacing does not snap that axis (no NaN)
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.d * 10 + c.snapx);
        vp.SNAP = c.snap;
        vp.SNAPX = c.snapx;
        View_ScreenToWorld(&vp, 319 + c.d, 239 - c.d);
        ExpectPicked(c.x, 3.5, c.z);
    }
}

TEST_F(ViewProjection, SetRectClampsAndDerives) {
    View_SetRect(&vp, 700, -5, 100, 500);   // screen 640 x 480
    ExpectRect(100, 0, 640, 480);
    EXPECT_EQ(vp.half_width_px, 270);
    EXPECT_EQ(vp.half_height_px, 240);
    EXPECT_DOUBLE_EQ(vp.screen_cx, 370);
    EXPECT_DOUBLE_EQ(vp.screen_cy, 240);
    EXPECT_DOUBLE_EQ(vp.pixels_per_unit, 24);
    EXPECT_EQ(vp.valid, 1);
    View_SetRect(&vp, 101, 20, 0, 10);   // odd sizes truncate: 0..101 -> 50, 10..20 -> 5
    EXPECT_EQ(vp.half_width_px, 50);
    EXPECT_EQ(vp.half_height_px, 5);
    EXPECT_DOUBLE_EQ(vp.screen_cx, 50);
    EXPECT_DOUBLE_EQ(vp.screen_cy, 15);
}

TEST_F(ViewProjection, SetAreaFloorAndScale) {
    View_SetArea(&vp, 20);
    EXPECT_DOUBLE_EQ(vp.pixels_per_unit, 11.95);
    EXPECT_DOUBLE_EQ(vp.area_half_width, 20.0 * 638 / 478);
    const double in[] = {0, -5, NAN, 2e-14}, want[] = {1e-14, 1e-14, 1e-14, 2e-14};
    for (int i = 0; i < 4; i++) {
        View_SetArea(&vp, in[i]);
        EXPECT_DOUBLE_EQ(vp.AREA, want[i]) << in[i];
    }
    EXPECT_DOUBLE_EQ(vp.pixels_per_unit, 239 / 2e-14);
}

TEST_F(ViewProjection, AnglesAreNormalisedAndCached) {
    View_SetPitch(&vp, -30);
    EXPECT_DOUBLE_EQ(vp.PITCH, 330);
    EXPECT_NEAR(vp.sin_pitch, -0.5, 1e-9);
    View_SetPitch(&vp, 720);
    EXPECT_DOUBLE_EQ(vp.PITCH, 0);
    EXPECT_DOUBLE_EQ(vp.cos_pitch, 1);
    View_SetHeading(&vp, 360);
    EXPECT_DOUBLE_EQ(vp.HEADING, 0);
    View_SetHeading(&vp, -1e-20);   // rounds to 360 when 360 is added: must be 0
    EXPECT_LT(vp.HEADING, 360);
    View_SetPitch(&vp, NAN);
    EXPECT_DOUBLE_EQ(vp.PITCH, 0);

    View_SetFov(&vp, 90);
    EXPECT_NEAR(vp.focal, 1, 1e-9);
    View_SetFov(&vp, -270);
    EXPECT_DOUBLE_EQ(vp.FOV, 90);
    View_SetFov(&vp, 60);
    EXPECT_NEAR(vp.focal, std::sqrt(3.0), 1e-8);
    View_SetFov(&vp, 0);
    EXPECT_TRUE(std::isfinite(vp.focal));

    View_SetCamPitch(&vp, 60);
    View_SetCamHeading(&vp, 90);
    View_SetCamTwist(&vp, 30);
    EXPECT_NEAR(vp.cam_cos_pitch, -0.5, 1e-9);
    EXPECT_NEAR(vp.cam_sin_heading, -1, 1e-9);
    EXPECT_NEAR(vp.cam_sin_twist, 0.5, 1e-9);
}

// Camera at (0, 0, -10) looking at the origin with Y up: rows (-1,0,0),
// (0,-1,0), (0,0,1), offsets (0, 0, 10).
TEST_F(ViewProjection, LookAtBuildsTheSharedMatrix) {
    View_SetFov(&vp, 90);
    ASSERT_EQ(View_LookAt(&vp, {0, 0, -10}, {0, 0, 0}), 1);
    const ViewState& v = g.view;
    EXPECT_NEAR(v.row_x.x, -1, 1e-12);
    EXPECT_NEAR(v.row_y.y, -1, 1e-12);
    EXPECT_NEAR(v.row_z.z, 1, 1e-12);
    EXPECT_NEAR(std::fabs(v.t_x) + std::fabs(v.t_y), 0, 1e-12);
    EXPECT_NEAR(v.t_z, 10, 1e-12);
    EXPECT_EQ(vp.camera_valid, 1);
    EXPECT_NEAR(std::fabs(vp.CAM_HEADING) + std::fabs(vp.CAM_PITCH) + std::fabs(vp.CAM_TWIST), 0,
                1e-9);

    View_SetKind(&vp, VIEW_3D);
    View_Project(&vp, {1, 2, 0});
    EXPECT_NEAR(vp.eye_point.x, -1, 1e-9);   // focal from FOV in degrees
    EXPECT_NEAR(vp.eye_point.y, -2, 1e-9);
    EXPECT_NEAR(vp.eye_point.z, 10, 1e-12);
    ExpectScreen(vp.screen_cx, vp.screen_cy);

    // From +X looking at the origin: heading 270; looking down at 45 degrees: pitch -45.
    View_LookAt(&vp, {10, 0, 0}, {0, 0, 0});
    EXPECT_NEAR(vp.CAM_HEADING, 270, 1e-7);
    View_LookAt(&vp, {0, 0, -10}, {0, -10, 0});
    EXPECT_NEAR(vp.CAM_PITCH, -45, 1e-7);
}

TEST_F(ViewProjection, LookAtWithoutDirectionKeepsTheMatrix) {
    ViewState before = g.view;
    EXPECT_EQ(View_LookAt(&vp, {1, 2, 3}, {1, 2, 3}), 0);
    EXPECT_EQ(vp.camera_valid, 0);
    EXPECT_DOUBLE_EQ(vp.CAM.x, 1);
    EXPECT_DOUBLE_EQ(vp.TAR.z, 3);
    EXPECT_DOUBLE_EQ(g.view.row_x.x, before.row_x.x);
    EXPECT_DOUBLE_EQ(g.view.t_z, before.t_z);
    EXPECT_EQ(View_LookAt(&vp, {NAN, 0, 0}, {0, 0, 0}), 0);
    EXPECT_EQ(vp.camera_valid, 0);
}

TEST_F(ViewProjection, LookAtAlongUpStillGivesAnOrthonormalMatrix) {
    ASSERT_EQ(View_LookAt(&vp, {0, 10, 0}, {0, 0, 0}), 1);
    const ViewState& v = g.view;
    auto dot = [](Point3 a, Point3 b) { return a.x * b.x + a.y * b.y + a.z * b.z; };
    EXPECT_NEAR(dot(v.row_x, v.row_x), 1, 1e-12);
    EXPECT_NEAR(dot(v.row_y, v.row_y), 1, 1e-12);
    EXPECT_NEAR(dot(v.row_x, v.row_y), 0, 1e-12);
    EXPECT_NEAR(dot(v.row_x, v.row_z), 0, 1e-12);
    EXPECT_NEAR(v.row_z.y, -1, 1e-12);
}

TEST_F(ViewProjection, CameraSettingsReachAllFiveRecords) {
    Views_SetFov(90);
    Views_SetTar({0, 0, 0});
    Views_SetCam({0, 0, -10});
    for (int i = 1; i <= 4; i++) {
        EXPECT_DOUBLE_EQ(g.view.Viewports[i].CAM.z, -10) << i;
        EXPECT_DOUBLE_EQ(g.view.Viewports[i].FOV, 90) << i;
        EXPECT_EQ(g.view.Viewports[i].camera_valid, 1) << i;
    }
    EXPECT_EQ(g.view.Active_Viewport.camera_valid, 1);
    EXPECT_NEAR(g.view.t_z, 10, 1e-12);
    Views_SetUp({0, -1, 0});   // upside down: the rows follow
    EXPECT_DOUBLE_EQ(g.view.Viewports[2].UP.y, -1);
    EXPECT_NEAR(g.view.row_x.x, 1, 1e-12);
    EXPECT_NEAR(g.view.row_y.y, 1, 1e-12);
}

TEST_F(ViewProjection, BadInputDoesNotCrash) {
    View_SetRect(&vp, NAN, 10, 200, NAN);   // NaN counts as 0
    ExpectRect(0, 0, 200, 10);
    View_SetRect(&vp, 50, 50, 50, 50);      // empty rectangle
    EXPECT_EQ(vp.half_height_px, 0);
    EXPECT_DOUBLE_EQ(vp.pixels_per_unit, 0);
    EXPECT_TRUE(std::isfinite(vp.area_half_width));
    View_Project(&vp, {5, 5, 5});
    EXPECT_DOUBLE_EQ(vp.screen_x, 50);
    View_ScreenToWorld(&vp, 10, 10);
    EXPECT_DOUBLE_EQ(vp.picked_point.x, 0);
    View_SetRect(&vp, -1e300, -1e300, 1e300, 1e300);
    ExpectRect(0, 0, 640, 480);
    View_SetCentre(&vp, {NAN, 0, 0});
    View_Project(&vp, {1, 1, 1});   // NaN in, NaN out: the pen refuses it
    EXPECT_TRUE(std::isnan(vp.screen_x));
}

}  // namespace
