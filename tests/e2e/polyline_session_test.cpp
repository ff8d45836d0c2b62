// The real program under Xvfb: a profile drawn with POLYLINE by clicks and
// turned into a vase by REVOLUTION, two typed curves joined by RULSURF
// (picked by clicks), a third turned into a pipe by THICKEN, EXPORTPOV;
// povray renders the scene file and the picture shows the three surfaces
// where the camera sees them. With QMR_E2E_PICTURE set the picture is also
// copied there (docs/surfaces.png is made so).
#include <filesystem>

#include "e2e/program_fixture.h"
#include "gfx/headless/headless.h"

namespace {

class PolylineSessionTest : public ProgramTest {
  protected:
    void MouseWhen(const std::string& when, int x, int y) {
        opt.actions.push_back({when, "DISPLAY=@DISPLAY@ xdotool search --sync --name 'Quillmoor Sculptor' mousemove "
                                     "--window %1 " + std::to_string(x) + " " + std::to_string(y) +
                                         " sleep 0.1 click 1 sleep 0.2 >/dev/null 2>&1"});
    }
};

TEST_F(PolylineSessionTest, ProfileRevolutionRulsurfThickenExportRender) {
    WriteFile(root.file("cwd/qmr.ini"), Config());
    const std::string path = root.file("qmr/work/vase.qmr");
    {   // One FRONT viewport over x -4..12, a light, smooth new objects, a brass layer.
        AsTheProgram();
        Viewport& v = g.view.Viewports[1];
        v.WORLD = 0;
        View_SetKind(&v, VIEW_FRONT);
        View_SetArea(&v, 6);
        View_SetCentre(&v, {4, 3, 0});
        v.GRID = v.SNAP = 0;
        g.view.Active_Viewport = v;
        Views_SetLayout(1, 1);
        Views_SetCam({4, 9, -22});
        Views_SetTar({4, 2.5, 0});
        g.scene.Default_Smooth = 1;
        Layer* l = Layer_NewFirst();
        ASSERT_NE(l, nullptr);
        snprintf(l->texture, sizeof l->texture, "Brass_Metal");
        LightData light = Light_Default();
        light.position = {-20, 30, -40};
        ASSERT_NE(Add_Light(&light), nullptr);
        ASSERT_EQ(WorkFile_Save(path.c_str()), 1);
    }
    // The profile's points, a point on its second segment, and points on
    // the two curves and the pipe's path (typed below).
    const std::vector<Point3> world = {{1, 0, 0}, {2.4, 0.8, 0}, {2.6, 2, 0}, {1.5, 3, 0}, {2, 4, 0},
                                       {2.5, 1.4, 0}, {4.5, 0.25, 1}, {4.75, 3.5, 0.5}, {8.25, 1.5, 0}};
    std::vector<std::pair<int, int>> px;
    AsTheProgram(path);
    for (Point3 p : world) px.push_back(PixelOf(p));
    ASSERT_EQ(g.view.Active_Viewport.VIEW, VIEW_FRONT);
    State_Reset();

    TypeWhen("Command: ", "POLYLINE\n");
    MouseWhen("POLYLINE> From: ", px[0].first, px[0].second);
    MouseWhen("<Undo> to: ", px[1].first, px[1].second);
    MouseWhen("<Undo> to: ", px[2].first, px[2].second);
    MouseWhen("<Undo,Close> to: ", px[3].first, px[3].second);
    MouseWhen("<Undo,Close> to: ", px[4].first, px[4].second);
    TypeWhen("<Undo,Close> to: ", "\n");   // Enter: the profile is added, POLYLINE starts again
    TypeWhen("POLYLINE> From: ", "REVOLUTION\n");
    MouseWhen("Select Objects> ", px[5].first, px[5].second);
    TypeWhen("REVOLUTION> Set point #1: ", "0,0,0\n");
    TypeWhen("REVOLUTION> Set point #2: ", "0,1,0\n");
    TypeWhen("Command: ", "POLYLINE\n4,0,1\n5,0.5,1\n6,0,1\n7,0.5,1\n\n");
    TypeWhen("POLYLINE> From: ", "4,3,0\n5.5,4,1\n7,3,0\n\n");
    TypeWhen("POLYLINE> From: ", "8,0,0\n8.5,3,0\n10,4,1\n10.5,6,0\n\n");
    TypeWhen("POLYLINE> From: ", "RULSURF\n");
    MouseWhen("Select Objects> ", px[6].first, px[6].second);
    MouseWhen("Select Objects> ", px[7].first, px[7].second);
    TypeWhen("Set N Number <7>: ", "6\n12\n");
    TypeWhen("Command: ", "THICKEN\n");
    MouseWhen("Select Objects> ", px[8].first, px[8].second);
    TypeWhen("Set starting Thickness value<1.0>: ", "0.35\n0.15\n\n");
    TypeWhen("Command: ", "EXPORTPOV\n");
    TypeWhen("Writing: Poly_Pipe", "EXIT\n");
    TypeWhen("EXIT> Save changes to <vase>? <Yes,No> <Yes>: ", "N\n");
    opt.timeout_s = 90;
    RunResult r = Run({"vase"}, true);
    ASSERT_FALSE(r.timed_out) << r.out;
    EXPECT_EQ(r.status, 0) << r.out;
    for (const char* said : {"\nWriting: Revolution", "\nWriting: Poly_Mesh", "\nWriting: Poly_Pipe"})
        EXPECT_NE(r.out.find(said), std::string::npos) << said << "\n" << r.out;

    const std::string pov = root.file("pov/scenes/vase.pov");
    ASSERT_TRUE(FileExists(pov)) << r.out;
    const std::string png = root.file("vase.png");
    RunOptions ro;
    ro.timeout_s = 120;
    RunResult render = RunProcess({"/usr/bin/povray", "+I" + pov, "+O" + png, "+W640", "+H480", "+A0.3", "-D", "-V",
                                   "+WT1", "+FN"}, ro);
    ASSERT_EQ(render.status, 0) << render.out;
    if (const char* keep = getenv("QMR_E2E_PICTURE")) std::filesystem::copy_file(png, keep,
                                                                                 std::filesystem::copy_options::overwrite_existing);
    // Where the camera sees them (worked out from the camera at (4, 9, -22)
    // looking at (4, 2.5, 0): about 25 pixels a unit at their depth) the
    // vase, the ruled surface and the lower part of the pipe are lit brass;
    // the corners are the black background. Each is looked for in a window
    // of 15 x 15 pixels.
    const std::string ppm = root.file("vase.ppm");
    ASSERT_EQ(RunProcess({"convert", png, "-strip", ppm}, ro).status, 0);
    const std::string img = ReadFile(ppm);
    int w = 0, h = 0, maxval = 0, used = 0;
    ASSERT_EQ(sscanf(img.c_str(), "P6 %d %d %d%n", &w, &h, &maxval, &used), 3);
    const unsigned char* rgb = (const unsigned char*)img.c_str() + used + 1;
    ASSERT_EQ(img.size(), (size_t)used + 1 + (size_t)w * h * 3);
    auto brightest = [&](int cx, int cy) {
        int best = 0;
        for (int y = cy - 7; y <= cy + 7; y++)
            for (int x = cx - 7; x <= cx + 7; x++) {
                const unsigned char* p = rgb + ((size_t)y * w + x) * 3;
                best = std::max(best, p[0] + p[1] + p[2]);
            }
        return best;
    };
    EXPECT_EQ(brightest(10, 10) + brightest(629, 469), 0);
    EXPECT_GT(brightest(219, 255), 150) << "vase";    // its axis, x = 0
    EXPECT_GT(brightest(358, 252), 150) << "sheet";   // x = 5.5
    EXPECT_GT(brightest(427, 265), 150) << "pipe";    // (8.25, 1.5)
}

}  // namespace
