// layout_test.cpp - the seven layouts' rectangles, the slot copy rule and the
// start-up views.
#include <cmath>

#include "test_support.h"
#include "view/viewport.h"

namespace {

class ViewLayout : public QmrTest {};

struct Rect {
    int l, t, r, b;
};

// Screen 640 x 480, drawing area rows 15..434: T = 15, B = 434, R = 639,
// mx = 319, my = 15 + 419/2 = 224, cw = (int)(639/3.5) = 182,
// y3 = 15 + 419/3 = 154, y6 = 154 + (434 - 154)/2 = 294. {0,0,0,0} = unused.
const Rect k640[7][4] = {
    {{0, 15, 639, 434}, {}, {}, {}},
    {{321, 16, 638, 433}, {1, 16, 317, 433}, {}, {}},
    {{1, 226, 638, 433}, {1, 16, 638, 222}, {}, {}},
    {{321, 16, 638, 433}, {1, 16, 317, 222}, {1, 226, 317, 433}, {}},
    {{1, 226, 638, 433}, {1, 16, 317, 222}, {321, 16, 638, 222}, {}},
    {{321, 226, 638, 433}, {1, 16, 317, 222}, {321, 16, 638, 222}, {1, 226, 317, 433}},
    {{1, 16, 180, 152}, {1, 156, 180, 292}, {1, 296, 180, 433}, {184, 16, 638, 433}},
};

bool Used(const Rect& r) { return r.l || r.t || r.r || r.b; }

TEST_F(ViewLayout, AllSevenLayoutsAt640) {
    Views_SetScreen(640, 480, 15, 435);
    for (int n = 1; n <= 7; n++) {
        for (int slot = 1; slot <= 4; slot++) {
            double r[4];
            const Rect& want = k640[n - 1][slot - 1];
            int used = Views_LayoutRect(n, slot, r);
            ASSERT_EQ(used, Used(want) ? 1 : 0) << "layout " << n << " slot " << slot;
            if (!used) continue;
            EXPECT_EQ(r[0], want.l) << "layout " << n << " slot " << slot;
            EXPECT_EQ(r[1], want.t) << "layout " << n << " slot " << slot;
            EXPECT_EQ(r[2], want.r) << "layout " << n << " slot " << slot;
            EXPECT_EQ(r[3], want.b) << "layout " << n << " slot " << slot;
        }
    }
}

// 800 x 600, rows 15..554: R = 799, mx = 399, my = 15 + 539/2 = 284,
// cw = (int)(799/3.5) = 228, y3 = 15 + 539/3 = 194, y6 = 194 + 360/2 = 374.
TEST_F(ViewLayout, Layout7ColumnAt800) {
    Views_SetScreen(800, 600, 15, 555);
    double r[4];
    ASSERT_EQ(Views_LayoutRect(7, 1, r), 1);
    EXPECT_EQ(r[0], 1);
    EXPECT_EQ(r[1], 16);
    EXPECT_EQ(r[2], 226);
    EXPECT_EQ(r[3], 192);
    ASSERT_EQ(Views_LayoutRect(7, 3, r), 1);
    EXPECT_EQ(r[1], 376);
    EXPECT_EQ(r[3], 553);
    ASSERT_EQ(Views_LayoutRect(7, 4, r), 1);
    EXPECT_EQ(r[0], 230);
    EXPECT_EQ(r[2], 798);
    ASSERT_EQ(Views_LayoutRect(6, 1, r), 1);
    EXPECT_EQ(r[0], 401);
    EXPECT_EQ(r[1], 286);
    EXPECT_EQ(Views_LayoutRect(8, 1, r), 0);
    EXPECT_EQ(Views_LayoutRect(1, 0, r), 0);
}

TEST_F(ViewLayout, NewLayoutCopiesActiveIntoEverySlot) {
    Views_SetScreen(640, 480, 15, 435);
    View_SetKind(&g.view.Active_Viewport, VIEW_RIGHT);
    View_SetArea(&g.view.Active_Viewport, 5);
    g.view.Current_Viewport = 3;
    Views_SetLayout(7, 0);
    EXPECT_EQ(g.view.Viewport_Layout, 7);
    EXPECT_EQ(g.view.Current_Viewport, 1);
    for (int i = 1; i <= 4; i++) {
        EXPECT_EQ(g.view.Viewports[i].VIEW, VIEW_RIGHT) << i;
        EXPECT_DOUBLE_EQ(g.view.Viewports[i].AREA, 5) << i;
        EXPECT_EQ(g.view.Viewports[i].valid, 1) << i;
    }
    // Slot 4 of layout 7: 184..638 x 16..433, half sizes 227 and 208.
    const Viewport& s4 = g.view.Viewports[4];
    EXPECT_DOUBLE_EQ(s4.rect_left, 184);
    EXPECT_EQ(s4.half_width_px, 227);
    EXPECT_EQ(s4.half_height_px, 208);
    EXPECT_DOUBLE_EQ(s4.pixels_per_unit, 208 / 5.0);
    // The working record is slot 1, with slot 1's rectangle.
    EXPECT_DOUBLE_EQ(g.view.Active_Viewport.rect_right, 180);
    EXPECT_EQ(g.view.Active_Viewport.VIEW, VIEW_RIGHT);
}

TEST_F(ViewLayout, KeptLayoutKeepsEverySlot) {
    Views_SetScreen(640, 480, 15, 435);
    for (int i = 1; i <= 4; i++) View_SetKind(&g.view.Viewports[i], i);
    Views_SelectSlot(2);
    View_SetArea(&g.view.Active_Viewport, 3);   // unsaved change to the working record
    Views_SetLayout(6, 1);
    EXPECT_EQ(g.view.Current_Viewport, 2);
    for (int i = 1; i <= 4; i++) EXPECT_EQ(g.view.Viewports[i].VIEW, i) << i;
    EXPECT_DOUBLE_EQ(g.view.Viewports[2].AREA, 3);
    EXPECT_DOUBLE_EQ(g.view.Active_Viewport.AREA, 3);
    EXPECT_DOUBLE_EQ(g.view.Active_Viewport.rect_left, 1);
    EXPECT_DOUBLE_EQ(g.view.Active_Viewport.rect_bottom, 222);
    // Out-of-range layout numbers are clamped.
    Views_SetLayout(0, 1);
    EXPECT_EQ(g.view.Viewport_Layout, 1);
    Views_SetLayout(99, 1);
    EXPECT_EQ(g.view.Viewport_Layout, 7);
}

TEST_F(ViewLayout, SelectSlotStoresThenLoads) {
    for (int i = 1; i <= 4; i++) View_SetArea(&g.view.Viewports[i], 10 * i);
    g.view.Current_Viewport = 1;
    g.view.Active_Viewport = g.view.Viewports[1];
    View_SetArea(&g.view.Active_Viewport, 7);
    Views_SelectSlot(3);
    EXPECT_EQ(g.view.Current_Viewport, 3);
    EXPECT_DOUBLE_EQ(g.view.Viewports[1].AREA, 7);
    EXPECT_DOUBLE_EQ(g.view.Active_Viewport.AREA, 30);
    Views_SelectSlot(0);   // no such slot: nothing changes
    Views_SelectSlot(5);
    EXPECT_EQ(g.view.Current_Viewport, 3);
    EXPECT_DOUBLE_EQ(g.view.Active_Viewport.AREA, 30);
}

TEST_F(ViewLayout, StartUpViews) {
    Views_SetScreen(640, 480, 15, 435);
    Views_Reset();
    const ViewState& v = g.view;
    EXPECT_EQ(v.Viewport_Layout, 6);
    EXPECT_EQ(v.Current_Viewport, 1);
    EXPECT_EQ(v.Viewports[1].VIEW, VIEW_FRONT);
    EXPECT_EQ(v.Viewports[1].WORLD, 1);
    EXPECT_DOUBLE_EQ(v.Viewports[1].PITCH, 30);
    EXPECT_EQ(v.Viewports[2].VIEW, VIEW_TOP);
    EXPECT_EQ(v.Viewports[3].VIEW, VIEW_RIGHT);
    EXPECT_EQ(v.Viewports[4].VIEW, VIEW_FRONT);
    EXPECT_EQ(v.Viewports[4].WORLD, 0);
    EXPECT_DOUBLE_EQ(v.Active_Viewport.rect_left, 321);
    for (int i = 1; i <= 4; i++) {
        EXPECT_DOUBLE_EQ(v.Viewports[i].AREA, 10) << i;
        EXPECT_DOUBLE_EQ(v.Viewports[i].CAM.z, -20) << i;
        EXPECT_DOUBLE_EQ(v.Viewports[i].FOV, 45) << i;
        EXPECT_EQ(v.Viewports[i].camera_valid, 0) << i;   // CAMERA must define it first
    }
    // The shared matrix is aimed from (0, 5, -20) at the origin.
    EXPECT_NEAR(v.t_z, std::sqrt(425.0), 1e-9);
}

}  // namespace
