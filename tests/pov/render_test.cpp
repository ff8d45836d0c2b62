// The option file and render.bat, byte for byte, for the defaults and each
// edge case; where they go; and what a failed write leaves behind.
#include <sys/stat.h>
#include <unistd.h>

#include <string>

#include "e2e/process.h"
#include "file_limit.h"
#include "headless_session.h"
#include "pov/render.h"

namespace {

// The defaults, with the include directory /inc and scenes and images in S.
const char kDefaults[] =
    "+L/inc\n+LS\n+LS\n+Iqmr.pov\n+OS/qmr.raw +FR\n-V +DGT\n+W320 +H200  -C\n-A\n"
    "+B20 +MB1 +MS1000 \n+X\n+P\n";

std::string Replace(std::string text, const std::string& from, const std::string& to) {
    size_t at = text.find(from);
    EXPECT_NE(at, std::string::npos) << from;
    if (at != std::string::npos) text.replace(at, from.size(), to);
    return text;
}

class RenderFiles : public HeadlessTest {
  protected:
    void SetUp() override {
        HeadlessTest::SetUp();
        char* cwd = getcwd(nullptr, 0);
        old_cwd_ = cwd;
        free(cwd);
        ASSERT_EQ(chdir(dir_.path().c_str()), 0);   // render.bat goes to the current directory
        S = dir_.file("S");
        mkdir(S.c_str(), 0755);
        Dirs("/inc", S, S);
    }
    void TearDown() override {
        if (chdir(old_cwd_.c_str()) != 0) ADD_FAILURE() << "cannot return to " << old_cwd_;
        HeadlessTest::TearDown();
    }
    void Dirs(const std::string& include, const std::string& scenes, const std::string& images) {
        snprintf(g.config.Include_Dir, sizeof g.config.Include_Dir, "%s", include.c_str());
        snprintf(g.config.Scenes_Dir, sizeof g.config.Scenes_Dir, "%s", scenes.c_str());
        snprintf(g.config.Images_Dir, sizeof g.config.Images_Dir, "%s", images.c_str());
    }
    // The written option file with the test directory shown as its name, S.
    std::string Written(const std::string& path) {
        std::string t = ReadFile(path);
        for (size_t at; (at = t.find(S)) != std::string::npos;) t.replace(at, S.size(), "S");
        return t;
    }

    TempDir dir_;
    std::string S, old_cwd_;
};

TEST_F(RenderFiles, DefaultsGiveTheDocumentedSwitchesInOrder) {
    EXPECT_EQ(Write_Render_Options(), 1);
    EXPECT_EQ(Written(S + "/qmr.cml"), kDefaults);
    EXPECT_EQ(Headless_Transcript(), "\nMaking <qmr.cml>");
    EXPECT_FALSE(FileExists("render.bat"));   // only when Write_Render_Bat is set
}

TEST_F(RenderFiles, EdgeCasesChangeOnlyTheirSwitch) {
    struct Case {
        const char* what;
        void (*set)();
        std::string expected;
    };
    const std::string d = kDefaults;
    const Case cases[] = {
        {"output type 0", [] { g.render.Output_Type = 0; }, Replace(d, "+OS/qmr.raw +FR\n", "")},
        {"output type 1", [] { g.render.Output_Type = 1; }, Replace(d, "qmr.raw +FR\n", "qmr.def +F\n")},
        {"output type 3", [] { g.render.Output_Type = 3; }, Replace(d, "qmr.raw +FR\n", "qmr.dmp +FD\n")},
        {"output type 4", [] { g.render.Output_Type = 4; }, Replace(d, "qmr.raw +FR\n", "qmr.tga +FT\n")},
        {"display 0", [] { g.render.Display_Type = 0; }, Replace(d, "+DGT\n", "+D0T\n")},
        {"display 9", [] { g.render.Display_Type = 9; }, Replace(d, "+DGT\n", "+D9T\n")},
        {"display 10", [] { g.render.Display_Type = 10; }, Replace(d, "+DGT\n", "+DAT\n")},
        {"display 18", [] { g.render.Display_Type = 18; }, Replace(d, "+DGT\n", "+DIT\n")},
        {"palette 0", [] { g.render.Palette_Type = 0; }, Replace(d, "+DGT\n", "+DG3\n")},
        {"palette 1", [] { g.render.Palette_Type = 1; }, Replace(d, "+DGT\n", "+DGh\n")},
        {"palette 2", [] { g.render.Palette_Type = 2; }, Replace(d, "+DGT\n", "+DG0\n")},
        {"palette 3", [] { g.render.Palette_Type = 3; }, Replace(d, "+DGT\n", "+DGG\n")},
        {"no display", [] { g.render.Render_Display = 0; }, Replace(d, "+DGT\n", "-D\n")},
        {"quality 9", [] { g.render.Render_Quality = 9; }, d},
        {"quality 8", [] { g.render.Render_Quality = 8; }, Replace(d, "-C\n-A\n", "-C\n+Q8\n-A\n")},
    };
    for (const Case& c : cases) {
        State_Reset();
        Dirs("/inc", S, S);
        c.set();
        EXPECT_EQ(Write_Render_Options(), 1) << c.what;
        EXPECT_EQ(Written(S + "/qmr.cml"), c.expected) << c.what;
    }
}

TEST_F(RenderFiles, EveryOtherSwitchTurned) {
    Dirs("/inc", S, S + "/img");
    RenderSettings& r = g.render;
    strcpy(g.run.Scene_Name, "scn");
    strcpy(g.run.Image_Name, "pic");
    r.Render_Verbose = 1;
    r.Render_Display = 0;
    r.Render_Width = 640;
    r.Render_Height = 480;
    r.Render_Partial = 1;
    r.Start_Row = 2, r.Start_Col = 3, r.End_Row = 40, r.End_Col = 50;
    r.Render_Continue = 1;
    r.Render_Quality = 4;
    r.Antialias_On = 1;
    r.Antialias_Threshold = 0.25, r.Antialias_Depth = 3, r.Antialias_Jitter = 0.5;
    r.Buffer_Size = 64;
    r.Bounding_On = 0;
    r.Max_Symbols = 300;
    r.Render_Abort = 0;
    r.Render_Pause = 0;
    strcpy(r.Extra_Options, "+L/extra +UA");
    EXPECT_EQ(Write_Render_Options(), 1);
    EXPECT_EQ(Written(S + "/scn.cml"),
              "+L/inc\n+LS\n+LS/img\n+Iscn.pov\n+OS/img/pic.raw +FR\n+V -D\n"
              "+W640 +H480  +SR2 +SC3 +ER40 +EC50 +C\n+Q4\n+A0.25 +R3 +J0.5\n"
              "+B64 -MB +MS300 \n-X\n-P\n+L/extra +UA\n");
}

// An empty Scenes_Dir puts the file in POV_DIR; its +L line stays, empty.
TEST_F(RenderFiles, EmptyScenesDirWritesIntoPovDir) {
    Dirs("/inc", "", S);
    snprintf(g.config.POV_DIR, sizeof g.config.POV_DIR, "%s", S.c_str());
    EXPECT_EQ(Write_Render_Options(), 1);
    EXPECT_EQ(Written(S + "/qmr.cml"), Replace(kDefaults, "+LS\n+LS\n", "+L\n+LS\n"));
}

// The DOS batch file: drive, root, directory from the fourth character on.
TEST_F(RenderFiles, BatchFileByteForByte) {
    strcpy(g.config.POV_DIR, "C:\\POVRAY");
    strcpy(g.config.QMR_DIR, "D:\\QMR");
    Dirs("/inc", "C:\\POVRAY\\SCENES", S);
    strcpy(g.config.Tracer_Program, "povray.exe");
    EXPECT_EQ(Write_Render_Bat(), 0);
    EXPECT_EQ(ReadFile("render.bat"),
              "@echo off\nC:\ncd /\ncd POVRAY\npovray.exe C:\\POVRAY\\SCENES/qmr.cml\nD:\ncd /\ncd QMR");

    g.render.Reload_After_Render = 1;
    strcpy(g.run.workFileName, "bridge");
    EXPECT_EQ(Write_Render_Bat(), 0);
    EXPECT_EQ(ReadFile("render.bat"), "@echo off\nC:\ncd /\ncd POVRAY\npovray.exe C:\\POVRAY\\SCENES/qmr.cml"
                                      "\nD:\ncd /\ncd QMR\nqmr bridge.qmr");

    // Directories too short for a drive and a name.
    strcpy(g.config.POV_DIR, "/");
    strcpy(g.config.QMR_DIR, "");
    g.render.Reload_After_Render = 0;
    EXPECT_EQ(Write_Render_Bat(), 0);
    EXPECT_EQ(ReadFile("render.bat"), "@echo off\n/\ncd /\ncd \npovray.exe C:\\POVRAY\\SCENES/qmr.cml\n\ncd /\ncd ");
    EXPECT_EQ(Headless_Transcript(), "");   // the batch file itself says nothing
}

TEST_F(RenderFiles, OptionFileAlsoWritesTheBatchFileWhenAsked) {
    g.render.Write_Render_Bat = 1;
    EXPECT_EQ(Write_Render_Options(), 1);
    EXPECT_EQ(Written(S + "/qmr.cml"), kDefaults);
    const std::string bat = ReadFile("render.bat");
    EXPECT_EQ(bat.rfind("@echo off\n/p\ncd /\ncd vray\npovray.exe " + S + "/qmr.cml\n", 0), 0u) << bat;
}

TEST_F(RenderFiles, FailuresAreReportedAndKeepTheOldFiles) {
    Dirs("/inc", "/nonexistent/dir", S);
    EXPECT_EQ(Write_Render_Options(), 2);
    EXPECT_EQ(Headless_Transcript(), "\nMaking <qmr.cml>\nError: Unable to create </nonexistent/dir/qmr.cml>!");

    // A write that fails half way keeps the file there was.
    Dirs("/inc", S, S);
    WriteFile(S + "/qmr.cml", "old");
    Headless_ClearTranscript();
    {
        FileSizeLimit limit(20);
        EXPECT_EQ(Write_Render_Options(), 2);
    }
    EXPECT_EQ(ReadFile(S + "/qmr.cml"), "old");
    EXPECT_EQ(Headless_Transcript(), "\nMaking <qmr.cml>\nError: Unable to create <" + S + "/qmr.cml>!");

    // render.bat that can't be replaced fails the option file's step too.
    mkdir("render.bat", 0755);
    g.render.Write_Render_Bat = 1;
    Headless_ClearTranscript();
    EXPECT_EQ(Write_Render_Options(), 2);
    EXPECT_EQ(Headless_Transcript(), "\nMaking <qmr.cml>\nError: Unable to create <render.bat>!");
    EXPECT_EQ(Write_Render_Bat(), 2);
}

}  // namespace
