// The real program under Xvfb makes a texture: TEXTURES opens the chooser,
// Edit the editor, where a marble with a two-entry colour map is built and
// saved; ASSIGN gives it to a sphere, chosen in the chooser again; EXPORTPOV
// writes the scene, and povray renders it.
#include "e2e/program_fixture.h"

namespace {

using TextureSession = ProgramTest;

TEST_F(TextureSession, MarbleMadeInTheEditorRendersOnASphere) {
    // A scene with a sphere, a light and a camera looking at them.
    ASSERT_NE(Layer_NewFirst(), nullptr);
    strcpy(g.scene.First_Layer->name, "Ball");
    PrimitiveData p = Primitive_Default();
    p.prim_type = PRIM_SPHERE;
    p.p1 = 1;
    p.scale = {1, 1, 1};
    ASSERT_NE(Add_Primitive(&p), nullptr);
    LightData light = Light_Default();
    light.position = {3, 4, -5};
    light.color = {1, 1, 1};
    ASSERT_NE(Add_Light(&light), nullptr);
    for (Viewport& v : g.view.Viewports) {
        v.CAM = {0, 0.5, -4};
        v.TAR = {0, 0, 0};
    }
    g.view.Active_Viewport = g.view.Viewports[1];
    ASSERT_EQ(WorkFile_Save(root.file("qmr/work/ball.qmr").c_str()), 1);
    State_Reset();
    WriteFile(root.file("cwd/qmr.ini"), Config());
    opt.timeout_s = 120;

    Act("Command: ",
        Type("TEXTURES") + Click("texture.dlg", "TEXTBOX", 20) + Type("Red_Vein") +
            Click("texture.dlg", "BUTTON", 2) +
            // the editor on the new name: a marble pattern with turbulence
            Click("maketext.dlg", "BUTTON", 4) + Click("pigment.dlg", "CHECK", 23) +
            Click("pigment.dlg", "CHECK", 55) + Click("pigment.dlg", "CHECK", 80) +
            Click("pigment.dlg", "TEXTBOX", 81) + Type("0.8") + Click("pigment.dlg", "BUTTON", 64) +
            // entry 1 white at 0, entry 2 dark red at 1
            Click("colormap.dlg", "TEXTBOX", 140) + Type("1") +
            Click("colormap.dlg", "TEXTBOX", 160) + Type("1") +
            Click("colormap.dlg", "TEXTBOX", 180) + Type("1") +
            Click("colormap.dlg", "TEXTBOX", 121) + Type("1") +
            Click("colormap.dlg", "TEXTBOX", 141) + Type("0.6") +
            Click("colormap.dlg", "TEXTBOX", 161) + Type("0.05") +
            Click("colormap.dlg", "TEXTBOX", 181) + Type("0.05") +
            Click("colormap.dlg", "BUTTON", 1) + Click("pigment.dlg", "BUTTON", 1) +
            Click("maketext.dlg", "BUTTON", 1) + Click("texture.dlg", "BUTTON", 1) + " sleep 0.5;" +
            // the sphere takes it: a window round it, then the library's first name
            Type("ASSIGN") + Type("W") + Type("-2,-2,-2") + Type("2,2,2") + Type("E") + Type("T") +
            Click("texture.dlg", "TEXTBOX", 10) + Click("texture.dlg", "BUTTON", 1) + " sleep 0.5;" +
            Type("EXPORTPOV"));
    Act("Making <", Type("EXIT"));
    Act("<Yes>: ", Type("N"));
    RunResult r = Run({root.file("qmr/work/ball.qmr")}, true);
    ASSERT_FALSE(r.timed_out) << r.out;
    ASSERT_EQ(r.status, 0) << r.out;

    TextureRecord rec;
    snprintf(g.config.WORK_DIR, sizeof g.config.WORK_DIR, "%s", root.file("qmr/work").c_str());
    ASSERT_EQ(Texture_Load(&rec, "Red_Vein"), 1) << r.out;
    EXPECT_EQ(rec.pigment_kind, 3);
    EXPECT_EQ(rec.pattern, 6);
    const std::string scene = ReadFile(root.file("pov/scenes/ball.pov"));
    EXPECT_NE(
        scene.find("#declare Red_Vein = texture {\n    pigment { marble\n        color_map {\n"
                   "            [0  color rgbf<1, 1, 1, 0>]\n"
                   "            [1  color rgbf<0.6, 0.05, 0.05, 0>]\n        }\n"
                   "        turbulence 0.8\n"),
        std::string::npos)
        << scene;
    EXPECT_NE(scene.find("texture { Red_Vein }"), std::string::npos) << scene;

    const std::string image = root.file("pov/scenes/ball.png");
    RunOptions pov;
    pov.timeout_s = 120;
    RunResult render = RunProcess({"/usr/bin/povray", "+I" + root.file("pov/scenes/ball.pov"),
                                   "+W320", "+H240", "-D", "-V", "+WT1", "+O" + image},
                                  pov);
    ASSERT_EQ(render.status, 0) << render.out;
    // The middle of the picture is the sphere: lit, not the black background.
    RunResult pixel = RunProcess(
        {"/usr/bin/convert", image, "-format", "%[fx:p{160,120}.r+p{160,120}.g]", "info:"}, pov);
    EXPECT_GT(atof(pixel.out.c_str()), 0.2) << pixel.out;
    if (const char* keep = getenv("QMR_KEEP_RENDER"))   // a file to keep the picture in, to look at it
        std::filesystem::copy_file(image, keep, std::filesystem::copy_options::overwrite_existing);
}

}  // namespace
