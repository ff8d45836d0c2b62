// view_scene_test.cpp - a whole scene on screen: the four-viewport picture
// and the views a work file brings back.
#include <cstdlib>
#include <filesystem>
#include <string>
#include <vector>

#include "gfx/program_screen.h"
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
// The program's geometry: viewports end at the side menu (x 544), so R is
// 543, mx 271 and the right-hand slots start at x 273.
TEST_F(ViewScene, FourViewportsShowTheScene) {
    Views_SetAreaWidth(g.screen.sideMenuX);
    ASSERT_EQ(g.screen.sideMenuX, 544);
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
    EXPECT_EQ(Headless_ReadText(278, 21, 5, text), "RIGHT");
    EXPECT_EQ(Headless_ReadText(6, 231, 5, text), "FRONT");
    EXPECT_EQ(Headless_ReadText(278, 231, 13, text), "WORLD [FRONT]");
    // The side-menu column is left alone.
    EXPECT_EQ(CountColour(544, 15, 639, 434, g.config.colors.view_bkcolor), 0);
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

    TearDown();
    SetUp();
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


// The real program under Xvfb opens a saved scene and shows the same
// drawing area as the headless display drew before saving (titles off: the
// two backends have different fonts).
TEST(ViewSceneProgram, LoadedWorkFileShowsTheSavedViews) {
    XvfbServer xvfb("1280x1024x24");
    if (!xvfb.ok()) GTEST_SKIP() << "Xvfb did not start";
    TempDir tmp;
    State_Reset();
    Headless_Reset();
    Screen_Open(18);
    Views_SetScreen(g.screen.width, g.screen.height, SCREEN_LINE, g.screen.inputLineY);
    Views_SetAreaWidth(g.screen.sideMenuX);
    Views_Reset();
    BuildSmallScene();
    for (int slot = 1; slot <= 4; slot++) g.view.Viewports[slot].title_on = 0;
    g.view.Active_Viewport.title_on = 0;
    Views_SelectSlot(3);
    View_SetArea(&g.view.Active_Viewport, 14);
    Views_SelectSlot(1);
    Views_RedrawAll();
    ASSERT_EQ(Headless_DumpPNG(tmp.file("saved.png").c_str()), 1);
    // The program cuts the work-file path at its first ".", and temporary
    // directory names have one: the work directory is a dot-free one.
    char work[] = "/tmp/qmrviewXXXXXX";
    ASSERT_NE(mkdtemp(work), nullptr);
    std::string workDir = work;
    ASSERT_EQ(WorkFile_Save((workDir + "/scene.qmr").c_str()), 1);
    Headless_Reset();
    State_Reset();

    WriteDirectoriesIni(tmp, {{"qmrwork", workDir}, {"support", QMR_SOURCE_DIR "/support"}});
    BackgroundRun program({QMR_BINARY, "scene"}, ProgramOptions(tmp, xvfb));
    // The frame and views are drawn before the first "Command: " prompt.
    bool found = WaitForFileText(tmp.file("transcript.txt"), "Command: ", 30);
    // The cursor goes where the pointer is: keep it in the message area,
    // away from the drawing area that is compared.
    RunOptions x;
    x.env["DISPLAY"] = xvfb.display();
    RunProcess({"xdotool", "mousemove", "100", "470"}, x);
    RunProcess({"convert", tmp.file("saved.png"), "-crop", "532x420+12+15", "+repage",
                tmp.file("saved_area.png")}, x);
    // Drawing area only: columns 12..543, rows 15..434 of the window (its
    // inside starts at 1, 1 of the root); the prompt's arrow cursor for the
    // pointer at (0, 0) reaches into columns up to 10.
    auto probe = [&](const RunOptions& o) {
        return RunProcess({"compare", "-metric", "AE", tmp.file("saved_area.png"),
                           tmp.file("shown.png"), "null:"}, o);
    };
    RunResult diff = PollScreen(tmp, xvfb, "532x420+13+16", "shown.png", "0", probe);
    RunResult run = program.Finish();
    std::filesystem::remove_all(workDir);
    if (const char* keep = getenv("QMR_KEEP_SCREENSHOT"))
        RunProcess({"sh", "-c", "cp " + tmp.file("shown.png") + " " + tmp.file("saved_area.png") +
                                    " " + keep}, {});
    ASSERT_TRUE(found);
    EXPECT_EQ(diff.out, "0") << run.out << ReadFile(tmp.file("transcript.txt"));
}

}  // namespace
