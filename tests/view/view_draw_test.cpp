// view_draw_test.cpp - what a redraw puts on the screen: projection to the
// pixel, grid dots and their density limit, borders and slot order, layer
// colours, visibility, transforms, instances and interruption.
#include <algorithm>
#include <cmath>

#include "view/view_scene.h"

namespace {

class ViewDraw : public HeadlessTest {
  protected:
    void SetUp() override {
        HeadlessTest::SetUp();
        Headless_ClearSegments();
    }
    const ScreenColors& C() { return g.config.colors; }
};

// TOP, centre 0, AREA 10 on 640 x 480: 239 / 10 pixels per unit, centre
// pixel (319, 239). (10, 0, 0) lands 239 pixels right; (0, 0, 5) 119.5 up.
TEST_F(ViewDraw, TopViewPutsWorldPointsOnTheirPixels) {
    BareTopView();
    AddLayer(LGREEN);
    AddLine({0, 0, 0}, {10, 0, 0});
    AddLine({0, 0, 0}, {0, 0, 5});
    View_Refresh();
    int bk = C().view_bkcolor;   // (319, 119): 239 - 119.5 truncated
    ExpectPixels({{558, 239, LGREEN}, {559, 239, bk}, {319, 119, LGREEN}, {319, 118, bk},
                  {330, 239, LGREEN}, {330, 240, bk}});
}

// Centre (0.3, 0, 0.6): dots sit on whole units, not on the centre. Visible
// x: 0.3 +- 13.35 -> -13..13 (27 columns); z: 0.6 +- 10 -> -9..10 (20 rows).
TEST_F(ViewDraw, GridDotsFallOnMultiplesOfTheSpacing) {
    BareTopView();
    Viewport* vp = &g.view.Active_Viewport;
    vp->GRID = 1;
    g.config.colors.view_grid = LCYAN;
    View_SetCentre(vp, {0.3, 0, 0.6});
    View_Refresh();
    // (2, 0, 1): x = 1.7 * 23.9 + 319 = 359.63, y = 239 - 0.4 * 23.9 = 229.44;
    // (-13, 0, -9): x = -13.3 * 23.9 + 319 = 1.13, y = 239 + 9.6 * 23.9 = 468.44;
    // the centre itself is no multiple: nothing there.
    ExpectPixels({{359, 229, LCYAN}, {1, 468, LCYAN}, {319, 239, C().view_bkcolor}});
    EXPECT_EQ(CountColour(0, 0, 639, 479, LCYAN), 27 * 20);
}

TEST_F(ViewDraw, GridSkippedPastEighteenSpacings) {
    Viewport* vp = &g.view.Active_Viewport;
    g.config.colors.view_grid = LCYAN;
    // AREA 20: 20 + 1 spacings to the top edge; 17 on a square rectangle:
    // 17 + 1 = 18 is not too dense.
    for (double area : {20.0, 17.0, 17.5}) {
        BareTopView();
        vp->GRID = 1;
        View_SetRect(vp, 0, 0, 400, 400);   // half sizes 200 x 200
        View_SetArea(vp, area);
        View_Refresh();
        EXPECT_EQ(CountColour(0, 0, 400, 400, LCYAN) > 0, area == 17) << area;
    }
}

// Layout 6 on 640 x 480 (T 15, B 434, R 639, mx 319, my 224): slot 1 is
// 321,226 .. 638,433, slot 2 1,16 .. 317,222.
TEST_F(ViewDraw, BordersShowTheCurrentViewport) {
    g.config.colors.view_boarder = LRED;
    g.config.colors.view_fgcolor = GRAY;
    Views_SetLayout(6, 0);
    // Slot 1's left, top and right edges; slot 2's left, right and top.
    ExpectPixels({{320, 300, LRED}, {400, 225, LRED}, {639, 300, LRED},
                  {0, 100, GRAY}, {318, 100, GRAY}, {100, 15, GRAY}});
    // Layout 1 has no border (no furniture uses BROWN).
    g.config.colors.view_boarder = g.config.colors.view_fgcolor = BROWN;
    Views_SetLayout(1, 0);
    EXPECT_EQ(CountColour(0, 15, 639, 434, BROWN), 0);
}

// The slots are drawn from the highest down to slot 1; each draws its axes
// through the pen, so the first segment inside each slot tells the order.
TEST_F(ViewDraw, SlotsDrawnHighestFirst) {
    struct Case {
        int layout;
        std::vector<int> order;
    } cases[] = {
        {2, {2, 1}}, {3, {2, 1}}, {4, {3, 2, 1}}, {5, {3, 2, 1}}, {6, {4, 3, 2, 1}}, {7, {4, 3, 2, 1}},
    };
    for (const Case& c : cases) {
        Headless_ClearSegments();
        Views_SetLayout(c.layout, 0);
        std::vector<int> seen;
        for (const Headless_Segment& s : Headless_Segments()) {
            int slot = SlotAt(s.x1, s.y1, (int)c.order.size());
            if (slot && std::find(seen.begin(), seen.end(), slot) == seen.end()) seen.push_back(slot);
        }
        EXPECT_EQ(seen, c.order) << "layout " << c.layout;
    }
}

TEST_F(ViewDraw, FurnitureColoursTitleAndCentreMark) {
    BareTopView();
    Viewport* vp = &g.view.Active_Viewport;
    vp->AXIS = 1;
    vp->title_on = 1;
    g.config.colors.view_xaxis = LRED;
    g.config.colors.view_zaxis = LGREEN;
    g.config.colors.view_text = YELLOW;
    View_Refresh();
    // X axis: L = 2.5 -> tip at 319 + 59.75; Z axis runs up the screen;
    // arrow head of X: base corners at (2, 0, +-0.3) -> x 366.8, y 239 -+ 7.17.
    ExpectPixels({{360, 239, LRED}, {319, 200, LGREEN}, {366, 232, LRED}});
    EXPECT_EQ(Headless_ReadText(5, 5, 3, YELLOW), "TOP");
    // The centre mark spans AREA / 19: at AREA 19, 1 unit = 239 / 19 = 12.58 pixels.
    vp->AXIS = vp->title_on = 0;
    vp->CENTER = 1;
    g.config.colors.view_center = LMAGENTA;
    View_SetArea(vp, 19);
    View_Refresh();
    ExpectPixels({{319 + 12, 239, LMAGENTA}, {319 + 13, 239, C().view_bkcolor},
                  {319, 239 - 12, LMAGENTA}});
}

TEST_F(ViewDraw, LayerColoursBackgroundAndSelection) {
    BareTopView();
    g.config.colors.view_bkcolor = BLUE;
    g.config.colors.general_color = YELLOW;
    AddLayer(BLUE);   // same as the background: drawn in BLUE ^ BLUE = 0
    AddLine({0, 0, 0}, {4, 0, 0});
    AddLayer(LCYAN);
    Object* sel = AddLine({0, 0, 2}, {4, 0, 2});
    AddLine({0, 0, 4}, {4, 0, 4});   // newer: drawn first, before the selected one
    sel->selected = 1;
    AddLine({0, 0, 6}, {4, 0, 6});   // newest of all: drawn before both
    View_Refresh();
    // z 2, 4, 6 at y 239 - 47.8, 239 - 95.6, 239 - 143.4.
    ExpectPixels({{330, 239, BLACK}, {330, 191, YELLOW}, {330, 143, LCYAN}, {330, 95, LCYAN}});
}

TEST_F(ViewDraw, LayersOffAreSkippedWithTheirNestedLayers) {
    BareTopView();
    Layer* off = AddLayer(LRED);
    AddLine({0, 0, 0}, {1, 0, 0});
    off->on = 0;
    AddLayer(LRED, 1);   // nested under the layer that is off
    AddLine({0, 0, 0}, {0, 0, 1});
    AddLayer(LGREEN);    // the next top-level layer is drawn
    AddLine({0, 0, 0}, {-1, 0, 0});
    View_Refresh();
    EXPECT_EQ(CountColour(0, 0, 639, 479, LRED), 0);
    EXPECT_EQ(Headless_Pixel(310, 239), LGREEN);
}

TEST_F(ViewDraw, LayerTransformsInnermostFirst) {
    BareTopView();
    Layer* outer = AddLayer(LGREEN);
    outer->rotate = {0, 90, 0};
    Layer* inner = AddLayer(LGREEN, 1);
    inner->translate = {1, 0, 0};
    AddLine({0, 0, 0}, {0, 0, 0.5});
    Headless_ClearSegments();
    View_Refresh();
    // Inner first: (0,0,0) -> (1,0,0) -> turned 90 about Y -> (0,0,-1):
    // pixel (319, 239 + 23.9). (0,0,0.5) -> (1,0,0.5) -> (0.5,0,-1).
    EXPECT_EQ(SegText(LGREEN), "319,262 330,262");   // 319 + 11.95
}

TEST_F(ViewDraw, LayerScaleThenMoveAndRotationOrder) {
    BareTopView();
    Layer* l = AddLayer(LGREEN);
    l->scale = {2, 2, 2};
    l->translate = {3, 0, 0};
    AddLine({1, 0, 0}, {1, 0, 1});
    Layer* turned = AddLayer(LRED);
    // Order 0 turns about X, then Z, then Y: (1,0,0) -> Z 90 -> (0,1,0) ->
    // Y 90 leaves it; X first changes nothing. Order X-Y-Z: Y 90 first takes
    // (1,0,0) to (0,0,-1), Z 90 leaves it.
    turned->rotate = {0, 90, 90};
    AddLine({0, 0, 0}, {1, 0, 0});
    Headless_ClearSegments();
    View_Refresh();
    // x = 2 + 3 = 5 -> 319 + 119.5; z = 2 -> 239 - 47.8. (0,1,0) seen from
    // the top is the centre pixel.
    EXPECT_EQ(SegText(LGREEN), "438,239 438,191");
    EXPECT_EQ(SegText(LRED), "319,239 319,239");
    turned->rotation_order = 1;
    Headless_ClearSegments();
    View_Refresh();
    EXPECT_EQ(SegText(LRED), "319,239 319,262");   // (0,0,-1)
}

TEST_F(ViewDraw, InstanceDrawnInsideTheInstancingLayer) {
    BareTopView();
    Layer* block = AddLayer(LRED);
    AddLine({0, 0, 0}, {1, 0, 0});
    Layer* user = AddLayer(LGREEN);
    user->translate = {0, 0, 2};
    user->instance = block;
    Headless_ClearSegments();
    View_Refresh();
    // The block where it stands, then its copy (in its own colour) moved 2
    // up by the instancing layer.
    EXPECT_EQ(SegText(LRED), "319,239 342,239; 319,191 342,191");   // 319 + 23.9
    block->on = 0;   // an instance of a layer that is off is not drawn
    Headless_ClearSegments();
    View_Refresh();
    EXPECT_EQ(SegText(LRED), "");
}

TEST_F(ViewDraw, InterruptStopsTheTraversal) {
    BareTopView();
    AddLayer(LGREEN);
    AddLine({0, 0, 0}, {1, 0, 0});
    g.view.user_interrupt = 1;
    Headless_ClearTranscript();
    EXPECT_EQ(Scene_DrawObjects(), 0);
    EXPECT_EQ(Headless_Transcript(), " Terminated...");
    EXPECT_EQ(CountColour(0, 0, 639, 479, LGREEN), 0);
}

// Interruptible drawing asks for input every 2 ms of drawing. The headless
// clock runs one microsecond per line, so a key or click that arrives 50.5 ms
// into the redraw (after 50,500 lines, between two polls) must stop it
// within 2,000 more; the key is left for the prompt.
TEST_F(ViewDraw, KeyOrClickDuringALongRedrawStopsItWithinOnePollInterval) {
    BareTopView();
    AddLayer(LGREEN);
    std::vector<Point3> zigzag(1001);   // 1,000 segments, all inside the view
    for (int line = 0; line < 100; line++) {
        for (int k = 0; k <= 1000; k++) zigzag[k] = {-4 + 0.008 * k, 0, -4 + 0.08 * line + 0.04 * (k % 2)};
        PolylineData p = Poly_Default();
        p.form = FORM_POLYLINE;
        p.poly_flags = 0;
        p.count = 1001;
        p.points = zigzag.data();
        Poly_AddToScene(&p);
    }
    EXPECT_EQ(Scene_DrawObjectsInterruptible(), 1);   // nothing happens: all of it is drawn
    EXPECT_EQ(Headless_Segments().size(), 100000u);

    for (bool key : {true, false}) {
        Headless_ClearSegments();
        if (key) {
            Headless_PushKey('x');
        } else {
            Headless_PushClick(100, 100);
        }
        Headless_HoldInput(0.0505);
        EXPECT_EQ(Scene_DrawObjectsInterruptible(), 0) << key;
        long after = (long)Headless_Segments().size() - 50500;
        EXPECT_GE(after, 0) << key;
        EXPECT_LE(after, 2001) << key;   // one poll interval, give or take the clock's rounding
        if (key) {
            EXPECT_EQ(X11_GetKey(), 'x');
        }
        Headless_ClearInput();
    }
}

TEST_F(ViewDraw, LastPointMarkerIsAnXorCross) {
    BareTopView();
    g.view.marker_pending = 1;
    g.view.marker_point = {1, 0, 1};   // pixel (342.9, 215.1)
    View_Refresh();
    int bk = C().view_bkcolor;
    EXPECT_NE(Headless_Pixel(342 - 14, 215), bk);
    EXPECT_NE(Headless_Pixel(342, 215 + 14), bk);
    ExpectPixels({{342 - 15, 215, bk}, {342 + 5, 215 + 5, bk}});
    // Measuring for ZOOMALL draws nothing: a second XOR cross would erase the first.
    g.view.Active_Viewport.extents_mode = 1;
    Scene_DrawObjects();
    EXPECT_NE(Headless_Pixel(342 - 14, 215), bk);
}

TEST_F(ViewDraw, ThreeDViewDrawsNoGridNorCentreFlatViewsTheCamera) {
    BareTopView();
    Viewport* vp = &g.view.Active_Viewport;
    vp->GRID = vp->CENTER = 1;
    g.config.colors.view_grid = LCYAN;
    g.config.colors.view_center = LMAGENTA;
    View_LookAt(vp, {0, 5, -20}, {0, 0, 0});
    View_SetKind(vp, VIEW_3D);
    View_Refresh();
    EXPECT_EQ(CountColour(0, 0, 639, 479, LCYAN), 0);
    EXPECT_EQ(CountColour(0, 0, 639, 479, LMAGENTA), 0);
    // Back in a flat view the camera icon is drawn when asked for.
    g.config.colors.view_camera = LRED;
    View_SetKind(vp, VIEW_TOP);
    vp->GRID = vp->CENTER = 0;
    View_LookAt(vp, {0, 0, -5}, {0, 0, 0});
    vp->CAMERA = 1;
    View_Refresh();
    // The line from the camera (0,0,-5) to the target: x 319, y 239 .. 358.5
    EXPECT_EQ(Headless_Pixel(319, 300), LRED);
    EXPECT_GT(CountColour(0, 0, 639, 479, LRED), 119);
    vp->CAMERA = 0;
    View_Refresh();
    EXPECT_EQ(CountColour(0, 0, 639, 479, LRED), 0);
}

}  // namespace
