// The real program under Xvfb renders with the real POV-Ray through the
// shipped launcher: RENDER, POV-Ray's window showing the picture until a
// click, the modeller's line when it has finished, and the image: the right
// size, the sphere's red in the middle, dark corners.
#include "e2e/program_fixture.h"

namespace {

// Pixel (x, y) of a picture: "r g b", 0..255.
std::string PixelAt(const std::string& picture, int x, int y) {
    std::string at = "p{" + std::to_string(x) + "," + std::to_string(y) + "}";
    return RunProcess({"convert", picture, "-format",
                       "%[fx:int(255*" + at + ".r)] %[fx:int(255*" + at + ".g)] %[fx:int(255*" + at + ".b)]", "info:"},
                      {}).out;
}
bool Red(const std::string& rgb) {
    int r = 0, g = 0, b = 0;
    return sscanf(rgb.c_str(), "%d %d %d", &r, &g, &b) == 3 && r > 100 && g < r / 3 && b < r / 3;
}

TEST_F(ProgramTest, RenderRunsPovrayThroughTheLauncherAndWritesThePicture) {
    WriteFile(root.file("cwd/qmr.ini"),
              Config("library = /usr/share/povray-3.7/include\npovray = " QMR_SOURCE_DIR "/tracer\n") +
                  "[FILENAMES]\npovray = qmr-povray\n[END]\n");
    // A red sphere at the origin, a light, the camera in front.
    snprintf(g.config.WORK_DIR, sizeof g.config.WORK_DIR, "%s", root.file("qmr/work").c_str());
    TextureRecord red = Texture_Default();
    strcpy(red.name, "Red");
    red.color1[0] = 1, red.color1[1] = red.color1[2] = 0;
    ASSERT_EQ(Texture_Save(&red), 1);
    ASSERT_NE(Layer_NewFirst(), nullptr);
    PrimitiveData sphere = Primitive_Default();
    sphere.prim_type = PRIM_SPHERE;
    sphere.p1 = 2;
    strcpy(Add_Primitive(&sphere)->texture, "Red");
    LightData light = Light_Default();
    light.position = {10, 10, -10};
    Add_Light(&light);
    Views_SetCam({0, 0, -10});
    Views_SetTar({0, 0, 0});
    ASSERT_EQ(WorkFile_Save(root.file("qmr/work/ball.qmr").c_str()), 1);
    State_Reset();

    // Once POV-Ray pauses over its picture: its window moved beside the
    // modeller's, a screenshot of both, a click that ends the pause.
    const std::string shot = root.file("render.png");
    WriteFile(root.file("pause.sh"), "for i in $(seq 600); do grep -q Paused '" + root.file("pov/scenes/ball.log") +
                                         "' 2>/dev/null && break; sleep 0.1; done\n"
                                         "xdotool search --class povray windowmove 660 40\nsleep 0.5\n"
                                         "xwd -root -silent | convert xwd:- '" + shot + "'\n"
                                         "xdotool mousemove 820 140 click 1\n");
    TypeWhen("Command: ", "RENDER\n");
    opt.actions.push_back({"Making <ball.cml>", "DISPLAY=@DISPLAY@ sh '" + root.file("pause.sh") + "'"});
    TypeWhen("Ray tracer finished, exit status 0", "EXIT\n");
    TypeWhen("<Yes>: ", "N\n");
    opt.timeout_s = 120;
    RunResult r = Run({"ball"}, true);
    ASSERT_FALSE(r.timed_out) << r.out;
    EXPECT_EQ(r.status, 0) << r.out;
    EXPECT_NE(r.out.find("\nMaking <ball.pov>\nMaking <ball.cml>"), std::string::npos) << r.out;
    EXPECT_NE(r.out.find("qmr-povray: povray "), std::string::npos) << r.out;   // the launcher's line
    EXPECT_NE(r.out.find("\nRay tracer finished, exit status 0\nCommand: "), std::string::npos) << r.out;

    const std::string image = root.file("pov/scenes/ball.ppm");   // RAW output becomes PPM
    EXPECT_EQ(RunProcess({"identify", "-format", "%m %wx%h", image}, {}).out, "PPM 320x200");
    EXPECT_TRUE(Red(PixelAt(image, 160, 100))) << PixelAt(image, 160, 100);
    for (auto [x, y] : {std::pair{0, 0}, {319, 0}, {0, 199}, {319, 199}})
        EXPECT_EQ(PixelAt(image, x, y), "0 0 0") << x << "," << y;
    EXPECT_TRUE(Red(PixelAt(shot, 820, 140))) << PixelAt(shot, 820, 140);   // the window's middle
}

}  // namespace
