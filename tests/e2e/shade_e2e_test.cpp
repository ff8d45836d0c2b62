// SHADE in the real program under Xvfb: a scene of primitives and a mesh
// shaded in the TOP view and in the 3D view, found on the screen as the
// darker shades of its layers' colour ramps, which the wireframe never uses.
#include <filesystem>

#include "e2e/ppm.h"
#include "e2e/program_fixture.h"
#include "view/view_scene.h"

namespace {

// Pixels of the screenshot (the program's 640 x 480 window) in shades 0 to
// 14 of colour c's ramp.
int RampPixels(const std::vector<Rgb>& px, int w, int c) {
    X11_PaletteEntry pal[256];
    Gfx_BuildPalette(pal);
    int n = 0;
    for (int y = 0; y < 480; y++)
        for (int x = 0; x < 640; x++) {
            const Rgb p = px[(size_t)y * w + x];
            for (int k = 0; k < 15; k++) {
                const X11_PaletteEntry& e = pal[16 * c + k];
                if (p.r == e.r * 4 && p.g == e.g * 4 && p.b == e.b * 4) {   // 0..63 shown as 0..252
                    n++;
                    break;
                }
            }
        }
    return n;
}

TEST_F(ProgramTest, ShadeInTheTopViewAndIn3D) {
    WriteFile(root.file("cwd/qmr.ini"), Config() + "[VIDEO]\nvideomode = 640x480x256\n[END]\n");
    BuildSmallScene();   // primitives in LGREEN, a wavy mesh in LCYAN
    g.shade.Shade_Type = 1;
    Views_SetCam({14, 12, -18});
    Views_SetTar({0, 0, 0});
    g.view.Viewport_Layout = 1;
    Viewport& top = g.view.Active_Viewport;
    View_SetKind(&top, VIEW_TOP);
    top.WORLD = 0;
    View_SetCentre(&top, {0, 0, 0});
    View_SetArea(&top, 9);
    Views_StoreActive();
    ASSERT_EQ(WorkFile_Save(root.file("qmr/work/still.qmr").c_str()), 1);
    State_Reset();

    // Once a SHADE has finished: a screenshot, then the next command typed.
    auto shootThen = [&](const char* name, const char* next) {
        opt.actions.push_back({"Proccessing Triangles\n\nCommand: ",
                               "DISPLAY=@DISPLAY@ sh -c \"xwd -root -silent > " + root.file(name) +
                                   "; xdotool type --delay 20 " + next + "; xdotool key Return\""});
    };
    TypeWhen("Command: ", "SHADE\n\n");
    shootThen("top.xwd", "VIEW3D");
    TypeWhen("Switching to 3D perspective view", "SHADE\n\n");
    shootThen("3d.xwd", "EXIT");
    TypeWhen("<Yes>: ", "N\n");
    opt.timeout_s = 60;
    RunResult r = Run({"still"}, true);
    ASSERT_FALSE(r.timed_out) << r.out;
    EXPECT_EQ(r.status, 0) << r.out;
    const std::string run = "\nInitializing Shade-> Success\nProccessing Triangles\n\nCommand: ";
    const size_t first = r.out.find(run);
    ASSERT_NE(first, std::string::npos) << r.out;
    EXPECT_NE(r.out.find(run, first + 1), std::string::npos) << r.out;

    for (const char* name : {"top", "3d"}) {
        const std::string png = root.file(std::string(name) + ".png"), ppm = root.file(std::string(name) + ".ppm");
        ASSERT_EQ(RunProcess({"convert", "xwd:" + root.file(std::string(name) + ".xwd"), "-crop",
                              "640x480+0+0", "+repage", png}, {}).status, 0);
        ASSERT_EQ(RunProcess({"convert", png, ppm}, {}).status, 0);
        int w = 0, h = 0;
        std::vector<Rgb> px;
        ASSERT_TRUE(ReadPpm(ReadFile(ppm), &w, &h, &px)) << name;
        EXPECT_GT(RampPixels(px, w, LGREEN), 2000) << name;   // the primitives, lit
        EXPECT_GT(RampPixels(px, w, LCYAN), 2000) << name;    // the mesh, lit
        if (const char* keep = getenv("QMR_KEEP_SHOTS"))
            std::filesystem::copy_file(png, std::string(keep) + "/shade-" + name + ".png",
                                       std::filesystem::copy_options::overwrite_existing);
    }
}

}  // namespace
