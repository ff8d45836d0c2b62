// The real program under Xvfb renders a scene with the real POV-Ray through
// the shipped launcher: RENDER, POV-Ray's window showing the picture, a
// click to end its pause, the modeller's line when it has finished, and an
// image of the right size with the sphere's red where the sphere is.
#include <cstdlib>
#include <filesystem>

#include "e2e/ppm.h"
#include "e2e/program_fixture.h"

namespace {

TEST_F(ProgramTest, RenderRunsPovrayThroughTheLauncherAndWritesThePicture) {
    const std::string tracer = QMR_SOURCE_DIR "/tracer";
    WriteFile(root.file("cwd/qmr.ini"),
              Config("library = /usr/share/povray-3.7/include\npovray = " + tracer + "\n") +
                  "[FILENAMES]\npovray = qmr-povray\n[END]\n[VIDEO]\nvideomode = 640x480x256\n[END]\n");

    // The scene: a red sphere at the origin, a light, the camera in front.
    snprintf(g.config.WORK_DIR, sizeof g.config.WORK_DIR, "%s", root.file("qmr/work").c_str());
    TextureRecord red = Texture_Default();
    strcpy(red.name, "Red");
    red.color1[0] = 1, red.color1[1] = 0, red.color1[2] = 0;
    ASSERT_EQ(Texture_Save(&red), 1);
    ASSERT_NE(Layer_NewFirst(), nullptr);
    PrimitiveData sphere = Primitive_Default();
    sphere.prim_type = PRIM_SPHERE;
    sphere.p1 = 2;
    Object* ball = Add_Primitive(&sphere);
    ASSERT_NE(ball, nullptr);
    strcpy(ball->texture, "Red");
    LightData light = Light_Default();
    light.position = {10, 10, -10};
    ASSERT_NE(Add_Light(&light), nullptr);
    Views_SetCam({0, 0, -10});
    Views_SetTar({0, 0, 0});
    Views_StoreActive();
    ASSERT_EQ(WorkFile_Save(root.file("qmr/work/ball.qmr").c_str()), 1);
    State_Reset();

    // While POV-Ray pauses over its picture: its window moved beside the
    // modeller's, a screenshot of both, then a click that ends the pause.
    const std::string image = root.file("pov/scenes/ball.ppm");
    const std::string shot = root.file("render.xwd");
    WriteFile(root.file("pause.sh"),
              "for i in $(seq 1 600); do\n"
              "  grep -q Paused '" + root.file("pov/scenes/ball.log") + "' 2>/dev/null && break\n"
              "  sleep 0.1\ndone\n"
              "w=$(xdotool search --class povray | head -n 1)\n"
              "xdotool windowmove $w 660 40\nsleep 0.5\n"
              "xwd -root -silent > '" + shot + "'\n"
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

    // The picture: 320 x 200, red in the middle, dark in the corners.
    int w = 0, h = 0;
    std::vector<Rgb> px;
    ASSERT_TRUE(ReadPpm(ReadFile(image), &w, &h, &px)) << "no PPM at " << image;
    EXPECT_EQ(w, 320);
    EXPECT_EQ(h, 200);
    const Rgb c = px[100 * 320 + 160];
    EXPECT_GT(c.r, 100);
    EXPECT_LT(c.g, c.r / 3);
    EXPECT_LT(c.b, c.r / 3);
    for (int at : {0, 319, 199 * 320, 199 * 320 + 319}) EXPECT_LT(px[at].r + px[at].g + px[at].b, 30) << at;

    // The screenshot shows POV-Ray's window with the same picture.
    ASSERT_TRUE(FileExists(shot));
    const std::string png = root.file("render.png"), ppm = root.file("render.ppm");
    EXPECT_EQ(RunProcess({"convert", "xwd:" + shot, png}, {}).status, 0);
    EXPECT_EQ(RunProcess({"convert", png, ppm}, {}).status, 0);
    ASSERT_TRUE(ReadPpm(ReadFile(ppm), &w, &h, &px));
    const Rgb s = px[140 * w + 820];   // the middle of the moved window
    EXPECT_GT(s.r, 100);
    EXPECT_LT(s.g, s.r / 3);
    if (const char* keep = getenv("QMR_KEEP_SHOTS")) {   // for a person to look at
        std::filesystem::copy_file(png, std::string(keep) + "/render.png",
                                   std::filesystem::copy_options::overwrite_existing);
    }
}

}  // namespace
