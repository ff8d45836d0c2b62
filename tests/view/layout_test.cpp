// layout_test.cpp - the seven layouts' rectangles, the slot copy rule and the
// start-up views.
#include <cmath>
#include <cstdio>
#include <string>

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

// The rectangle of a slot as "l t r b", "" when the layout does not use it.
std::string LayoutRect(int layout, int slot) {
    double r[4];
    if (!Views_LayoutRect(layout, slot, r)) return "";
    char buf[64];
    snprintf(buf, sizeof buf, "%g %g %g %g", r[0], r[1], r[2], r[3]);
    return buf;
}

std::string Text(const Rect& r) {
    if (!(r.l || r.t || r.r || r.b)) return "";
    return std::to_string(r.l) + " " + std::to_string(r.t) + " " + std::to_string(r.r) + " " +
           std::to_string(r.b);
}

TEST_F(ViewLayout, AllSevenLayoutsAt640) {
    Views_SetScreen(640, 480, 15, 435);
    for (int n = 1; n <= 7; n++)
        for (int slot = 1; slot <= 4; slot++)
            EXPECT_EQ(LayoutRect(n, slot), Text(k640[n - 1][slot - 1]))
                << "layout " << n << " slot " << slot;
}

// 800 x 600, rows 15..554: R = 799, mx = 399, my = 15 + 539/2 = 284,
// cw = (int)(799/3.5) = 228, y3 = 15 + 539/3 = 194, y6 = 194 + 360/2 = 374.
TEST_F(ViewLayout, Layout7ColumnAt800) {
    Views_SetScreen(800, 600, 15, 555);
    EXPECT_EQ(LayoutRect(7, 1), "1 16 226 192");
    EXPECT_EQ(LayoutRect(7, 3), "1 376 226 553");
    EXPECT_EQ(LayoutRect(7, 4), "230 16 798 553");
    EXPECT_EQ(LayoutRect(6, 1), "401 286 798 553");
    EXPECT_EQ(LayoutRect(8, 1) + LayoutRect(1, 0), "");
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
    EXPECT_DOUBLE_EQ(v.Viewports[1].PITCH, 30);
    EXPECT_DOUBLE_EQ(v.Active_Viewport.rect_left, 321);
    const int kind[] = {0, VIEW_FRONT, VIEW_TOP, VIEW_RIGHT, VIEW_FRONT};
    for (int i = 1; i <= 4; i++) {
        EXPECT_EQ(v.Viewports[i].VIEW, kind[i]) << i;
        EXPECT_EQ(v.Viewports[i].WORLD, i == 1) << i;
        EXPECT_DOUBLE_EQ(v.Viewports[i].AREA, 10) << i;
        EXPECT_DOUBLE_EQ(v.Viewports[i].CAM.z, -20) << i;
        EXPECT_DOUBLE_EQ(v.Viewports[i].FOV, 45) << i;
        EXPECT_EQ(v.Viewports[i].camera_valid, 0) << i;   // CAMERA must define it first
    }
    // The shared matrix is aimed from (0, 5, -20) at the origin.
    EXPECT_NEAR(v.t_z, std::sqrt(425.0), 1e-9);
}

}  // namespace
