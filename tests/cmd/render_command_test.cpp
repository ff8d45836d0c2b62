// RENDER with stand-in ray tracers: what it writes and starts, the line
// when a child ends, no zombie after several renders, a program that can't
// be started, and the ways it stops before starting anything.
#include <sys/stat.h>
#include <sys/wait.h>

#include <cerrno>
#include <chrono>
#include <thread>

#include "e2e/process.h"
#include "input/session.h"

namespace {

class RenderCommand : public SessionTest {
  protected:
    void SetUp() override {
        SessionTest::SetUp();
        for (const char* d : {"pov", "scenes", "work"}) mkdir(dir_.file(d).c_str(), 0755);
        snprintf(g.config.POV_DIR, sizeof g.config.POV_DIR, "%s", dir_.file("pov").c_str());
        snprintf(g.config.Scenes_Dir, sizeof g.config.Scenes_Dir, "%s", dir_.file("scenes").c_str());
        snprintf(g.config.WORK_DIR, sizeof g.config.WORK_DIR, "%s", dir_.file("work").c_str());
        strcpy(g.run.workFileName, "scene");
        strcpy(g.run.Scene_Name, "scene");
        snprintf(g.run.currentFilePath, sizeof g.run.currentFilePath, "%s", dir_.file("work/scene.qmr").c_str());
        g.view.Active_Viewport.CAM = {0, 2, -10};
        // A stand-in tracer: appends "program|argument|count" beside the option file, exits 3.
        WriteFile(dir_.file("pov/fake.sh"), "#!/bin/sh\necho \"$0|$1|$#\" >> \"$(dirname \"$1\")/args.txt\"\nexit 3\n");
        chmod(dir_.file("pov/fake.sh").c_str(), 0755);
        strcpy(g.config.Tracer_Program, "fake.sh");
    }
    void TearDown() override {
        WaitForChildren();
        Reported();   // no news left for the next test
        SessionTest::TearDown();
    }
    // Pumps events until every started child is reaped (at most 10 s).
    static bool WaitForChildren() {
        for (int i = 0; i < 1000 && Gfx_ChildrenRunning(); i++) {
            X11_PumpEvents();
            std::this_thread::sleep_for(std::chrono::milliseconds(10));
        }
        return Gfx_ChildrenRunning() == 0;
    }
    // What the prompt's idle hook prints now.
    static std::string Reported() {
        Headless_ClearTranscript();
        strcpy(g.input.promptText, "\nCommand: ");
        Render_ReportEnded();
        return Headless_Transcript();
    }
    int Render(const std::string& input = "") {
        Headless_PushText(input.c_str());
        g.input.currentCommand = CMD_RENDER;
        int r = -1;
        EXPECT_TRUE(Headless_RunSession([&] { r = Com_Render(); }));
        g.input.currentCommand = 0;
        return r;
    }
    TempDir dir_;
};

TEST_F(RenderCommand, StartsTheTracerOnTheOptionFileAndReapsEveryChild) {
    EXPECT_EQ(Render(), 1);
    EXPECT_EQ(Headless_Transcript(), "\nSaving <scene>...\nMaking <scene.pov>\nMaking <scene.cml>");
    EXPECT_TRUE(FileExists(dir_.file("work/scene.qmr")));
    EXPECT_TRUE(FileExists(dir_.file("scenes/scene.cml")));
    g.pov.Overwrite_Pov = 1;
    for (int i = 0; i < 3; i++) EXPECT_EQ(Render(), 1);
    ASSERT_TRUE(WaitForChildren());
    errno = 0;   // no child left, not even a zombie
    EXPECT_EQ(waitpid(-1, nullptr, WNOHANG), -1);
    EXPECT_EQ(errno, ECHILD);
    const std::string line = "\nRay tracer finished, exit status 3";
    EXPECT_EQ(Reported(), line + line + line + line + "\nCommand: ");
    EXPECT_EQ(Reported(), "");   // told once
    const std::string args = dir_.file("pov/fake.sh") + "|" + dir_.file("scenes/scene.cml") + "|1\n";
    EXPECT_EQ(ReadFile(dir_.file("scenes/args.txt")), args + args + args + args);
}

TEST_F(RenderCommand, AMissingTracerSaysSoOnStandardErrorAndTheModellerGoesOn) {
    strcpy(g.config.Tracer_Program, "nothere.exe");
    testing::internal::CaptureStderr();
    EXPECT_EQ(Render(), 1);   // the parent can't know yet
    const bool reaped = WaitForChildren();
    const std::string err = testing::internal::GetCapturedStderr();
    ASSERT_TRUE(reaped);
    EXPECT_EQ(err, "Can't exec '" + dir_.file("pov/nothere.exe") + " " + dir_.file("scenes/scene.cml") + "'!\n");
    EXPECT_EQ(Reported(), "\nRay tracer finished, exit status 1\nCommand: ");
}

TEST_F(RenderCommand, StopsBeforeStartingWhenTheScenesFilesAreNotWritten) {
    WriteFile(dir_.file("scenes/scene.pov"), "old");
    EXPECT_EQ(Render("N\n"), 2);   // No to overwriting the scene file
    EXPECT_NE(Headless_Transcript().find("\nExport aborted"), std::string::npos);
    EXPECT_FALSE(FileExists(dir_.file("scenes/scene.cml")));
    strcpy(g.config.Scenes_Dir, "/nonexistent");
    EXPECT_EQ(Render(), 2);        // neither scene file nor option file can be made
    strcpy(g.run.workFileName, "UNTITLED");
    Headless_PushKey(KEY_ESCAPE);
    EXPECT_EQ(Render(), 0);        // the save-as browser cancelled: not saved
    EXPECT_EQ(Gfx_ChildrenRunning(), 0);
    EXPECT_FALSE(FileExists(dir_.file("scenes/args.txt")));
}

}  // namespace
