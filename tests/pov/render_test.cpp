// The option file and render.bat, byte for byte, for the defaults and each
// edge case; where they go; what a failed write leaves behind.
#include <sys/stat.h>
#include <unistd.h>

#include "e2e/process.h"
#include "file_limit.h"
#include "headless_session.h"
#include "pov/render.h"

namespace {

// The defaults, with the include directory /inc and scenes and images in S.
const std::string kDefaults =
    "+L/inc\n+LS\n+LS\n+Iqmr.pov\n+OS/qmr.raw +FR\n-V +DGT\n+W320 +H200  -C\n-A\n+B20 +MB1 +MS1000 \n+X\n+P\n";

// Every `from` in text replaced by `to`.
std::string Replace(std::string text, const std::string& from, const std::string& to) {
    for (size_t at = 0; (at = text.find(from, at)) != std::string::npos; at += to.size()) text.replace(at, from.size(), to);
    return text;
}

class RenderFiles : public HeadlessTest {
  protected:
    void SetUp() override {
        HeadlessTest::SetUp();
        ASSERT_NE(getcwd(old_cwd_, sizeof old_cwd_), nullptr);
        ASSERT_EQ(chdir(dir_.path().c_str()), 0);   // render.bat goes to the current directory
        Dirs(S);
    }
    void TearDown() override {
        EXPECT_EQ(chdir(old_cwd_), 0);
        HeadlessTest::TearDown();
    }
    void Dirs(const std::string& scenes) {
        strcpy(g.config.Include_Dir, "/inc");
        snprintf(g.config.Scenes_Dir, sizeof g.config.Scenes_Dir, "%s", scenes.c_str());
        snprintf(g.config.Images_Dir, sizeof g.config.Images_Dir, "%s", S.c_str());
    }
    TempDir dir_;
    const std::string S = dir_.path();   // shown as "S" in the expected texts
    char old_cwd_[4096];
};

TEST_F(RenderFiles, OptionFileForTheDefaultsAndEachEdgeCase) {
    const std::string d = kDefaults;
    struct Case {
        void (*set)();
        std::string expected;
    } cases[] = {
        {[] {}, d},
        {[] { g.render.Output_Type = 0; }, Replace(d, "+OS/qmr.raw +FR\n", "")},
        {[] { g.render.Output_Type = 1; }, Replace(d, "raw +FR", "def +F")},
        {[] { g.render.Output_Type = 3; }, Replace(d, "raw +FR", "dmp +FD")},
        {[] { g.render.Output_Type = 4; }, Replace(d, "raw +FR", "tga +FT")},
        {[] { g.render.Display_Type = 9; }, Replace(d, "+DGT", "+D9T")},
        {[] { g.render.Display_Type = 10; }, Replace(d, "+DGT", "+DAT")},
        {[] { g.render.Display_Type = 18; }, Replace(d, "+DGT", "+DIT")},
        {[] { g.render.Palette_Type = 0; }, Replace(d, "+DGT", "+DG3")},
        {[] { g.render.Palette_Type = 1; }, Replace(d, "+DGT", "+DGh")},
        {[] { g.render.Palette_Type = 2; }, Replace(d, "+DGT", "+DG0")},
        {[] { g.render.Palette_Type = 3; }, Replace(d, "+DGT", "+DGG")},
        {[] { g.render.Render_Quality = 8; }, Replace(d, "-C\n", "-C\n+Q8\n")},
        {[] {   // every other switch turned, other names
             RenderSettings& r = g.render;
             strcpy(g.run.Scene_Name, "scn"), strcpy(g.run.Image_Name, "pic");
             r.Render_Verbose = r.Render_Partial = r.Render_Continue = r.Antialias_On = 1;
             r.Render_Display = r.Bounding_On = r.Render_Abort = r.Render_Pause = 0;
             r.Render_Width = 640, r.Render_Height = 480;
             r.Start_Row = 2, r.Start_Col = 3, r.End_Row = 40, r.End_Col = 50;
             r.Antialias_Threshold = 0.25, r.Antialias_Depth = 3, r.Antialias_Jitter = 0.5;
             r.Buffer_Size = 64, r.Max_Symbols = 300, r.Render_Quality = 4;
             strcpy(r.Extra_Options, "+L/x +UA");
         },
         "+L/inc\n+LS\n+LS\n+Iscn.pov\n+OS/pic.raw +FR\n+V -D\n+W640 +H480  +SR2 +SC3 +ER40 +EC50 +C\n+Q4\n"
         "+A0.25 +R3 +J0.5\n+B64 -MB +MS300 \n-X\n-P\n+L/x +UA\n"},
    };
    for (const Case& c : cases) {
        State_Reset();
        Dirs(S);
        c.set();
        Headless_ClearTranscript();
        EXPECT_EQ(Write_Render_Options(), 1);
        EXPECT_EQ(Replace(ReadFile(S + "/" + g.run.Scene_Name + ".cml"), S, "S"), c.expected);
        EXPECT_EQ(Headless_Transcript(), std::string("\nMaking <") + g.run.Scene_Name + ".cml>");
    }
    EXPECT_FALSE(FileExists("render.bat"));   // only when Write_Render_Bat is set

    // An empty Scenes_Dir: the file goes to POV_DIR, its +L line stays, empty.
    State_Reset();
    Dirs("");
    snprintf(g.config.POV_DIR, sizeof g.config.POV_DIR, "%s", (S + "/pov").c_str());
    mkdir(g.config.POV_DIR, 0755);
    EXPECT_EQ(Write_Render_Options(), 1);
    EXPECT_EQ(Replace(ReadFile(S + "/pov/qmr.cml"), S, "S"), Replace(d, "+LS\n+LS\n", "+L\n+LS\n"));
}

// Drive, root, then the directory from its fourth character on.
TEST_F(RenderFiles, BatchFileByteForByte) {
    strcpy(g.config.POV_DIR, "C:\\POVRAY");
    strcpy(g.config.QMR_DIR, "D:\\QMR");
    strcpy(g.config.Tracer_Program, "pov.exe");
    const std::string head = "@echo off\nC:\ncd /\ncd POVRAY\npov.exe " + S + "/qmr.cml\nD:\ncd /\ncd QMR";
    g.render.Write_Render_Bat = 1;   // written with the option file
    EXPECT_EQ(Write_Render_Options(), 1);
    EXPECT_EQ(ReadFile("render.bat"), head);
    g.render.Reload_After_Render = 1;
    strcpy(g.run.workFileName, "bridge");
    EXPECT_EQ(Write_Render_Bat(), 0);
    EXPECT_EQ(ReadFile("render.bat"), head + "\nqmr bridge.qmr");
    strcpy(g.config.POV_DIR, "/");   // too short for a drive and a name
    strcpy(g.config.QMR_DIR, "");
    g.render.Reload_After_Render = 0;
    EXPECT_EQ(Write_Render_Bat(), 0);
    EXPECT_EQ(ReadFile("render.bat"), "@echo off\n/\ncd /\ncd \npov.exe " + S + "/qmr.cml\n\ncd /\ncd ");
}

TEST_F(RenderFiles, FailuresAreReportedAndKeepTheOldFiles) {
    Dirs("/nonexistent");
    EXPECT_EQ(Write_Render_Options(), 2);
    EXPECT_EQ(Headless_Transcript(), "\nMaking <qmr.cml>\nError: Unable to create </nonexistent/qmr.cml>!");
    Dirs(S);
    mkdir("render.bat", 0755);   // a batch file that can't be replaced fails the option file too
    g.render.Write_Render_Bat = 1;
    Headless_ClearTranscript();
    EXPECT_EQ(Write_Render_Options(), 2);
    EXPECT_EQ(Headless_Transcript(), "\nMaking <qmr.cml>\nError: Unable to create <render.bat>!");
    WriteFile(S + "/qmr.cml", "old");
    {
        FileSizeLimit limit(20);   // a write that fails half way keeps the old file
        EXPECT_EQ(Write_Render_Options(), 2);
    }
    EXPECT_EQ(ReadFile(S + "/qmr.cml"), "old");
}

}  // namespace
