// Reading configuration files: sections, keys, values and their edge cases.
#include "e2e/process.h"
#include "test_support.h"

namespace {

class ConfigTest : public QmrTest {
  protected:
    void Read(const std::string& text) {
        WriteFile(dir.file("qmr.ini"), text);
        Config_ReadFile(dir.file("qmr.ini").c_str());
    }
    TempDir dir;
};

TEST_F(ConfigTest, Defaults) {
    const ConfigState& c = g.config;
    EXPECT_STREQ(c.QMR_DIR, "/qmr");
    EXPECT_STREQ(c.WORK_DIR, "/qmr/work");
    EXPECT_STREQ(c.SUPPORT_DIR, "/qmr/support");
    EXPECT_STREQ(c.POV_DIR, "/povray");
    EXPECT_STREQ(c.Scenes_Dir, "/povray/scenes");
    EXPECT_STREQ(c.Images_Dir, "/povray/scenes");
    EXPECT_STREQ(c.Include_Dir, "/povray/include");
    EXPECT_STREQ(c.MainMenu_Name, "main.mnu");
    EXPECT_STREQ(c.SideMenu_Name, "side.mnu");
    EXPECT_STREQ(c.Tracer_Program, "povray.exe");
    EXPECT_EQ(c.Video_Mode, 18);
    EXPECT_EQ(c.Optimize_PovOut, 1);
    EXPECT_EQ(c.Beep_Sounds, 1);
    EXPECT_EQ(c.Bezier_Output, 1);
    EXPECT_EQ(c.Crosshairs_Color, 7);
    EXPECT_EQ(c.Crosshairs_Full, 1);
    EXPECT_EQ(c.Crosshairs_Size, 10);
    EXPECT_EQ(c.Mouse_SpeedX, 8);
    EXPECT_EQ(c.colors.background, 1);     // BLUE
    EXPECT_EQ(c.colors.view_boarder, 12);  // LRED
    EXPECT_EQ(c.colors.dialog_bk, 14);     // YELLOW
    EXPECT_EQ(c.colors.msub_shadow, 8);    // DGRAY
    EXPECT_EQ(c.colors.side_selectfg, 1);
    EXPECT_STREQ(g.run.workFileName, "qmr");
    EXPECT_STREQ(g.run.Scene_Name, "qmr");
    EXPECT_STREQ(g.run.Image_Name, "qmr");
}

TEST_F(ConfigTest, ColourValues) {
    Read("[VIDEO]\nview_grid = lgreen\nview_text=\nview_blip = pink\nview_camera\n"
         "dialog_fg = White\n[END]\n");
    EXPECT_EQ(g.config.colors.view_grid, 10);
    EXPECT_EQ(g.config.colors.view_text, 0);     // empty value: BLACK
    EXPECT_EQ(g.config.colors.view_blip, 16);    // unknown name
    EXPECT_EQ(g.config.colors.view_camera, 4);   // no "=": not a key line, stays RED
    EXPECT_EQ(g.config.colors.dialog_fg, 15);
    EXPECT_EQ(Config_ColourByName("LMAGENTA"), 13);
    EXPECT_EQ(Config_ColourByName("lgree"), 16);
}

TEST_F(ConfigTest, VideoModes) {
    Read("[VIDEO]\nvideomode = 800X600X16\n[END]\n");
    EXPECT_EQ(g.config.Video_Mode, 258);
    EXPECT_EQ(Config_VideoMode("640x480x16"), 18);
    EXPECT_EQ(Config_VideoMode("640x400x256"), 256);
    EXPECT_EQ(Config_VideoMode("1024x768x256"), 261);
    testing::internal::CaptureStdout();
    EXPECT_EQ(Config_VideoMode("1024x768"), 18);
    EXPECT_EQ(testing::internal::GetCapturedStdout(),
              "\nWarning: Couldn't find match <1024x768>, using default \"640x480x16\" mode\n");
}

TEST_F(ConfigTest, FileNamesAreCutToTwelve) {
    Read("[FILENAMES]\npopup = verylongname.mnu\nside=s.mnu\npovray = povray\n[END]\n");
    EXPECT_STREQ(g.config.MainMenu_Name, "verylongname");
    EXPECT_STREQ(g.config.SideMenu_Name, "s.mnu");
    EXPECT_STREQ(g.config.Tracer_Program, "povray");
}

TEST_F(ConfigTest, CrosshairsUseAbsoluteValues) {
    Read("[OTHER]\nchrosshairs_type = 1, -7\ncrosshairs_color = -1\n[END]\n");
    EXPECT_EQ(g.config.Crosshairs_Full, 0);
    EXPECT_EQ(g.config.Crosshairs_Size, 7);
    EXPECT_EQ(g.config.Crosshairs_Color, 15);
    Read("[OTHER]\nchrosshairs_type = 0, 5\ncrosshairs_color = 2\n[END]\n");
    EXPECT_EQ(g.config.Crosshairs_Full, 1);
    EXPECT_EQ(g.config.Crosshairs_Size, 7);   // unchanged
    EXPECT_EQ(g.config.Crosshairs_Color, 7);
    Read("[OTHER]\ncrosshairs_type = 1, 3\n[END]\n");   // the file's key is "chrosshairs_type"
    EXPECT_EQ(g.config.Crosshairs_Full, 1);
}

TEST_F(ConfigTest, IntegersReadLikeAtoi) {
    Read("[OTHER]\noptimize_povout = 0\nbeep_sounds = 12abc\nbezier_output = x\n"
         "mouse_speed = 3, -4\n[END]\n");
    EXPECT_EQ(g.config.Optimize_PovOut, 0);
    EXPECT_EQ(g.config.Beep_Sounds, 12);
    EXPECT_EQ(g.config.Bezier_Output, 0);
    EXPECT_EQ(g.config.Mouse_SpeedX, 3);
    EXPECT_EQ(g.config.Mouse_SpeedY, -4);
}

TEST_F(ConfigTest, CommentsSectionsAndStrayLines) {
    Read("support=/x ; not here\n"            // outside any section: ignored
         "; a whole comment line\n\n"
         "[directories] trailing words\n"
         "support=/x ; comment\n"
         "qmrwork = /w\n"
         "unknown = 3\n"
         "povray =\n"                         // missing value: unchanged
         "[end]\n"
         "scenes = /not/read\n"               // outside again
         "[DIRECTORIES]\nqmrwork=/w2\n");    // repeated section, no [END]
    EXPECT_STREQ(g.config.SUPPORT_DIR, "/x");
    EXPECT_STREQ(g.config.WORK_DIR, "/w2");
    EXPECT_STREQ(g.config.POV_DIR, "/povray");
    EXPECT_STREQ(g.config.Scenes_Dir, "/povray/scenes");
}

TEST_F(ConfigTest, DirectoryValuesExpandAndAreCut) {
    setenv("QMR_T_ROOT", "/srv/qmr", 1);
    setenv("HOME", "/home/u", 1);
    std::string longdir = "/" + std::string(150, 'd');
    Read("[DIRECTORIES]\nqmrmain = %QMR_T_ROOT%\nqmrwork = ~/work\nlibrary = " + longdir +
         "\npov_out = \"/with blanks\"\n[END]\n");
    EXPECT_STREQ(g.config.QMR_DIR, "/srv/qmr");
    EXPECT_STREQ(g.config.WORK_DIR, "/home/u/work");
    EXPECT_EQ(std::string(g.config.Include_Dir), longdir.substr(0, 99));
    EXPECT_STREQ(g.config.Images_Dir, "/with blanks");
}

TEST_F(ConfigTest, HostileFilesAreSurvived) {
    // Long lines, binary bytes, a huge file: nothing crashes and sane lines still count.
    std::string text = "[OTHER]\nbeep_sounds = " + std::string(400, '7') + "\n";
    text += std::string(300, 'x') + "=" + std::string(300, 'y') + "\n";
    for (int i = 0; i < 256; i++) text += static_cast<char>(i);
    text += "\nmouse_speed = 5, 6\n[END]\n";
    for (int i = 0; i < 200000; i++) text += "optimize_povout = 0\n";
    Read(text);
    EXPECT_EQ(g.config.Mouse_SpeedX, 5);
    EXPECT_EQ(g.config.Mouse_SpeedY, 6);
    Config_ReadFile(dir.file("missing.ini").c_str());   // not there: nothing happens
    Config_ReadFile(dir.path().c_str());                 // a directory
    EXPECT_EQ(g.config.Mouse_SpeedX, 5);
}

}  // namespace
