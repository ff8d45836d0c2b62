// The real program under Xvfb: SNAP switched on in the TOP view, a SPHERE
// placed by clicks with a typed radius, a CUBE typed, a CONE picked from the
// Create menu and placed by a click, a SPOTLIGHT and the CAMERA typed, the
// layer given a texture in the layers dialog, the camera shown through the
// camera dialog, then EXPORTPOV. The scene file must be exactly what the
// writer makes of the records worked out by hand, and POV-Ray must render
// it to a picture that is not black.
#include <cstring>
#include <filesystem>
#include <fstream>
#include <vector>

#include "e2e/program_fixture.h"
#include "gfx/headless/headless.h"
#include "ui/dialog_support.h"

namespace {

class PrimsSession : public ProgramTest {
  protected:
    // A click in the TOP view (slot 2) a little past a grid point, which SNAP takes back to it.
    static std::string Pick(double x, double z) {
        auto [px, py] = PixelOf({x + (x < 0 ? -0.3 : 0.3), 0, z + (z < 0 ? -0.3 : 0.3)}, &g.view.Viewports[2]);
        return At(px, py);
    }
    static std::string Key(const char* key) { return " xdotool key " + std::string(key) + "; sleep 0.4;"; }
};

TEST_F(PrimsSession, CreateExportAndRender) {
    WriteFile(root.file("cwd/qmr.ini"), Config());
    AsTheProgram();
    ASSERT_EQ(g.view.Viewports[2].VIEW, VIEW_TOP);
    opt.timeout_s = 120;

    // A first click makes TOP the working view; F9 switches its SNAP on.
    Act("Command: ", Type("SPHERE"));
    Act("SPHERE> Center point: ", Pick(0, 0) + Key("F9") + Pick(2, 1));
    Act("SPHERE> Radius: ", Type("1.5"));
    Act("Set Segments <8>: ", Type("12"));
    Act("Command: ", Type("CUBE"));
    Act("CUBE> Lower left corner: ", Type("-4,0,-3"));
    Act("CUBE> Y Length: ", Type("2"));
    Act("CUBE> X Length <2>: ", Type(""));
    Act("CUBE> Z Length <2>: ", Type("3"));
    Act("Command: ", Menu(CMD_CONE));
    Act("CONE> Start point: ", Pick(-3, 3));
    Act("CONE> Length of Cone: ", Type("4"));
    Act("CONE> Radius #1: ", Type("1"));
    Act("CONE> Radius #2 <1>: ", Type("0.5"));
    Act("Set Segments <8>: ", Type(""));
    Act("Command: ", Type("SPOTLIGHT"));
    Act("SPOTLIGHT> Center point: ", Type("0,8,-6"));
    Act("SPOTLIGHT> Look at point: ", Type("0,0,0"));
    Act("SPOTLIGHT> Set Radius <35>: ", Type(""));
    Act("SPOTLIGHT> Set Falloff <40>: ", Type(""));
    Act("Command: ", Type("CAMERA"));
    Act("CAMERA> Camera point: ", Type("5,4,-12"));
    Act("CAMERA> Look_At point: ", Type("0,1,0"));
    Act("Command: ", Type("LAYERS") + Click("layers.dlg", "TEXTBOX", 7) +
                         Click("texture.dlg", "TEXTBOX", 20) + Type("Jade") + Click("texture.dlg", "BUTTON", 1) +
                         Click("layers.dlg", "BUTTON", 1) + " sleep 0.5;" + Type("CAMSET") +
                         Click("camera.dlg", "CHECK", 11) + Click("camera.dlg", "BUTTON", 1) + " sleep 0.5;" +
                         Type("EXPORTPOV"));
    Act("Making <", Type("EXIT"));
    Act("<Yes>: ", Type("N"));
    RunResult r = Run({}, true);
    ASSERT_FALSE(r.timed_out) << r.out;
    ASSERT_EQ(r.status, 0) << r.out;
    for (const char* said : {"\nSPHERE> Radius: \nSPHERE>  Set Segments <8>: ",
                             "\nCONE> Radius #2 <1>: \nCONE>  Set Segments <8>: "})
        EXPECT_NE(r.out.find(said), std::string::npos) << said << "\n" << r.out;
    std::string pov;
    for (const auto& e : std::filesystem::directory_iterator(root.file("pov/scenes"))) pov = e.path();
    ASSERT_FALSE(pov.empty()) << r.out;
    const std::string got = ReadFile(pov);
    ASSERT_NE(got.find("/******************* ACTION"), std::string::npos) << got;

    // The same scene built by hand and written by the writer in process.
    AsTheProgram();
    TempDir dir;
    snprintf(g.config.Scenes_Dir, sizeof g.config.Scenes_Dir, "%s", dir.path().c_str());
    snprintf(g.config.WORK_DIR, sizeof g.config.WORK_DIR, "%s", root.file("qmr/work").c_str());
    snprintf(g.config.SUPPORT_DIR, sizeof g.config.SUPPORT_DIR, "%s", root.file("qmr/support").c_str());
    snprintf(g.run.Scene_Name, sizeof g.run.Scene_Name, "%s",
             std::filesystem::path(pov).stem().string().c_str());
    Layer* layer = Layer_NewFirst();
    ASSERT_NE(layer, nullptr);
    snprintf(layer->texture, sizeof layer->texture, "Jade");
    auto prim = [](int type, Point3 at, double p1, double p2, double p3, int aux) {
        PrimitiveData p = Primitive_Default();
        p.prim_type = type, p.translate = at, p.p1 = p1, p.p2 = p2, p.p3 = p3, p.prim_aux = aux;
        return p;
    };
    PrimitiveData sphere = prim(PRIM_SPHERE, {2, 0, 1}, 1.5, 0, 0, 12), cube = prim(PRIM_BOX, {-4, 0, -3}, 0, 0, 0, 8),
                  cone = prim(PRIM_CONE, {-3, 0, 3}, 1, 0.5, 4, 8);
    cube.size = {2, 2, 3};
    LightData spot = Light_Default();
    spot.light_flags = LIGHT_SPOT, spot.position = {0, 8, -6}, spot.adaptive = 1;
    spot.radius = 35, spot.falloff = 40, spot.tightness = 10;
    ASSERT_TRUE(Add_Primitive(&sphere) && Add_Primitive(&cube) && Add_Primitive(&cone) && Add_Light(&spot));
    Point3 cam{5, 4, -12}, tar{0, 1, 0};
    Var_SetPoint("CAM", &cam);
    Var_SetPoint("TAR", &tar);
    testing::internal::CaptureStdout();
    ASSERT_EQ(Export_Pov(), 1);
    testing::internal::GetCapturedStdout();
    EXPECT_EQ(got, ReadFile(dir.file(g.run.Scene_Name + std::string(".pov"))));

    // POV-Ray renders it; the objects, lit by the spot light, are not black.
    RunOptions ray;
    ray.timeout_s = 120;
    const std::string png = dir.file("render.png"), rgb = dir.file("render.rgb");
    RunResult pr = RunProcess({"/usr/bin/povray", "+I" + pov, "+W160", "+H120", "-D", "-V", "+FN", "+O" + png}, ray);
    ASSERT_EQ(pr.status, 0) << pr.out;
    ASSERT_EQ(RunProcess({"convert", png, "-depth", "8", "rgb:" + rgb}, ray).status, 0);
    const std::string px = ReadFile(rgb);
    ASSERT_EQ(px.size(), 160u * 120 * 3);
    auto lit = [&](size_t i) { return (unsigned char)px[i] + (unsigned char)px[i + 1] + (unsigned char)px[i + 2] > 60; };
    int all = 0, row = 0;
    for (size_t i = 0; i < px.size(); i += 3) all += lit(i);
    for (int x = 0; x < 160; x += 8) row += lit((60 * 160 + x) * 3);   // a few pixels along the middle row
    EXPECT_GT(all, 160 * 120 / 50);
    EXPECT_GE(row, 2);
}

}  // namespace
