// view_scene_test.cpp - a whole scene on screen: the four-viewport picture
// and the views a work file brings back.
#include <cstdlib>
#include <string>
#include <vector>

#include "e2e/process.h"
#include "view/view_scene.h"
#include "workfile/workfile.h"

namespace {

class ViewScene : public HeadlessTest {};

std::vector<unsigned char> DrawingArea() {
    const unsigned char* f = Headless_Frame();
    int w = Headless_Width();
    return std::vector<unsigned char>(f + 15 * w, f + 435 * w);
}

// Start-up views (slot 1 a turned FRONT, then TOP, RIGHT, FRONT) in layout 6.
TEST_F(ViewScene, FourViewportsShowTheScene) {
    Views_Reset();
    BuildSmallScene();
    Views_RedrawAll();
    const char* shot = getenv("QMR_VIEWPORTS_PNG");   // set to refresh docs/viewports.png
    TempDir dir;
    std::string path = shot ? shot : dir.file("viewports.png");
    ASSERT_EQ(Headless_DumpPNG(path.c_str()), 1);
    // Every viewport shows surface lines and solid lines.
    for (int slot = 1; slot <= 4; slot++) {
        const Viewport& vp = g.view.Viewports[slot];
        int l = (int)vp.rect_left, t = (int)vp.rect_top, r = (int)vp.rect_right, b = (int)vp.rect_bottom;
        EXPECT_GT(CountColour(l, t, r, b, LCYAN), 200) << slot;
        EXPECT_GT(CountColour(l, t, r, b, LGREEN), 200) << slot;
    }
    // Titles in reading order of the slots, drawn again apart from the
    // white grid dots.
    g.config.colors.view_text = LMAGENTA;
    Views_RedrawAll();
    int text = g.config.colors.view_text;
    EXPECT_EQ(Headless_ReadText(6, 21, 3, text), "TOP");
    EXPECT_EQ(Headless_ReadText(326, 21, 5, text), "RIGHT");
    EXPECT_EQ(Headless_ReadText(6, 231, 5, text), "FRONT");
    EXPECT_EQ(Headless_ReadText(326, 231, 13, text), "WORLD [FRONT]");
}

TEST_F(ViewScene, WorkFileBringsBackTheSameViews) {
    TempDir dir;
    std::string path = dir.file("views.qmr");
    Views_Reset();
    BuildSmallScene();
    // Change a few views away from their start-up state.
    Views_SelectSlot(2);
    View_SetArea(&g.view.Active_Viewport, 12);
    View_SetCentre(&g.view.Active_Viewport, {1, 0, -2});
    Views_SelectSlot(3);
    View_SetKind(&g.view.Active_Viewport, VIEW_BACK);
    g.view.Active_Viewport.GRID = 0;
    Views_SelectSlot(1);
    Views_RedrawAll();
    std::vector<unsigned char> before = DrawingArea();
    ASSERT_EQ(WorkFile_Save(path.c_str()), 1);

    State_Reset();
    Headless_Reset();
    Screen_Open(18);
    Screen_DrawFrame();
    Views_Reset();
    ASSERT_EQ(WorkFile_Load(path.c_str()), 1);   // the load redraws
    std::vector<unsigned char> after = DrawingArea();
    ASSERT_EQ(after.size(), before.size());
    size_t differ = 0;
    for (size_t i = 0; i < before.size(); i++) differ += before[i] != after[i];
    EXPECT_EQ(differ, 0u);
    EXPECT_EQ(Zoom_Depth(2), 1);   // the loaded views start their zoom stacks afresh
    EXPECT_EQ(g.view.zoom_first[2]->AREA, 12);
}

}  // namespace
