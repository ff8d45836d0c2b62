// RENDER in headless sessions with stand-in ray tracers: what it writes,
// what it starts, the line when the child ends, the reaping of every child,
// a program that can't be started, and the ways it stops early.
#include <dirent.h>
#include <sys/stat.h>
#include <unistd.h>

#include <chrono>
#include <fstream>
#include <string>
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
        snprintf(g.config.Images_Dir, sizeof g.config.Images_Dir, "%s", dir_.file("scenes").c_str());
        snprintf(g.config.WORK_DIR, sizeof g.config.WORK_DIR, "%s", dir_.file("work").c_str());
        strcpy(g.run.workFileName, "scene");
        strcpy(g.run.Scene_Name, "scene");
        strcpy(g.run.Image_Name, "scene");
        snprintf(g.run.currentFilePath, sizeof g.run.currentFilePath, "%s", dir_.file("work/scene.qmr").c_str());
        g.view.Active_Viewport.CAM = {0, 2, -10};
    }
    void TearDown() override {
        WaitForChildren();   // none may outlive its test, nor its news
        int pid, status;
        while (Gfx_ChildEnded(&pid, &status)) {
        }
        SessionTest::TearDown();
    }

    // A stand-in tracer: writes "program|argument|count" beside the option
    // file, then exits with `status`.
    void Tracer(const char* name, int status) {
        const std::string path = dir_.file("pov/") + name;
        WriteFile(path, "#!/bin/sh\necho \"$0|$1|$#\" >> \"$(dirname \"$1\")/args.txt\"\nexit " +
                            std::to_string(status) + "\n");
        chmod(path.c_str(), 0755);
        snprintf(g.config.Tracer_Program, sizeof g.config.Tracer_Program, "%s", name);
    }

    // Pumps events until every started child is reaped (at most 10 s).
    static bool WaitForChildren() {
        for (int i = 0; i < 1000 && Gfx_ChildrenRunning(); i++) {
            X11_PumpEvents();
            std::this_thread::sleep_for(std::chrono::milliseconds(10));
        }
        return Gfx_ChildrenRunning() == 0;
    }

    // Children of this process the system still keeps as zombies.
    static int Zombies() {
        int n = 0;
        DIR* d = opendir("/proc");
        while (dirent* e = readdir(d)) {
            std::ifstream stat(std::string("/proc/") + e->d_name + "/stat");
            std::string line;
            if (!std::getline(stat, line)) continue;
            size_t close = line.rfind(')');   // the name may hold blanks
            char state = 0;
            int ppid = 0;
            if (close != std::string::npos && sscanf(line.c_str() + close + 1, " %c %d", &state, &ppid) == 2 &&
                state == 'Z' && ppid == getpid())
                n++;
        }
        closedir(d);
        return n;
    }

    int RunRender(int expect) {
        g.input.currentCommand = CMD_RENDER;
        int r = 0;
        EXPECT_TRUE(Headless_RunSession([&] { r = Com_Render(); }));
        g.input.currentCommand = 0;
        EXPECT_EQ(r, expect) << Headless_Transcript();
        return r;
    }

    TempDir dir_;
};

TEST_F(RenderCommand, SavesExportsWritesAndStartsTheTracerWithTheOptionFile) {
    Tracer("fake.sh", 3);
    Headless_PushText("RENDER\n");
    EXPECT_FALSE(RunLoop());   // ends waiting at the next "Command:"
    EXPECT_TRUE(FileExists(dir_.file("work/scene.qmr")));
    EXPECT_TRUE(FileExists(dir_.file("scenes/scene.pov")));
    EXPECT_TRUE(FileExists(dir_.file("scenes/scene.cml")));
    EXPECT_NE(Headless_Transcript().find("\nSaving <scene>...\nMaking <scene.pov>\nMaking <scene.cml>\nCommand: "),
              std::string::npos) << Headless_Transcript();

    ASSERT_TRUE(WaitForChildren());
    Headless_ClearTranscript();
    strcpy(g.input.promptText, "\nCommand: ");
    Render_ReportEnded();
    EXPECT_EQ(Headless_Transcript(), "\nRay tracer finished, exit status 3\nCommand: ");
    Render_ReportEnded();   // told once only
    EXPECT_EQ(Headless_Transcript(), "\nRay tracer finished, exit status 3\nCommand: ");
    EXPECT_EQ(ReadFile(dir_.file("scenes/args.txt")),
              dir_.file("pov/fake.sh") + "|" + dir_.file("scenes/scene.cml") + "|1\n");
}

// The prompt's idle hook reports the end while the user sits at a prompt.
TEST_F(RenderCommand, TheWaitingPromptHearsOfTheEnd) {
    Tracer("fake.sh", 0);
    RunRender(1);
    ASSERT_TRUE(WaitForChildren());
    Headless_ClearTranscript();
    Headless_PushText("\n");   // one pass of the wait at "Command:", then the empty line repeats nothing
    EXPECT_FALSE(RunLoop());
    EXPECT_EQ(Count(Headless_Transcript(), "\nRay tracer finished, exit status 0\nCommand: "), 1)
        << Headless_Transcript();
}

TEST_F(RenderCommand, SeveralRendersLeaveNoZombie) {
    Tracer("quick.sh", 0);
    g.pov.Overwrite_Pov = 1;
    for (int i = 0; i < 4; i++) RunRender(1);
    ASSERT_TRUE(WaitForChildren());
    EXPECT_EQ(Zombies(), 0);
    int pid, status, ended = 0;
    while (Gfx_ChildEnded(&pid, &status)) ended++;
    EXPECT_EQ(ended, 4);
    EXPECT_EQ(Count(ReadFile(dir_.file("scenes/args.txt")), "quick.sh|"), 4);
}

TEST_F(RenderCommand, AMissingTracerSaysSoOnStandardErrorAndTheModellerGoesOn) {
    strcpy(g.config.Tracer_Program, "nothere.exe");
    testing::internal::CaptureStderr();
    RunRender(1);   // the parent has no way to know yet
    const bool reaped = WaitForChildren();
    const std::string err = testing::internal::GetCapturedStderr();
    ASSERT_TRUE(reaped);
    EXPECT_EQ(err, "Can't exec '" + dir_.file("pov/nothere.exe") + " " + dir_.file("scenes/scene.cml") + "'!\n");
    Headless_ClearTranscript();
    Render_ReportEnded();
    EXPECT_EQ(Headless_Transcript().rfind("\nRay tracer finished, exit status 1", 0), 0u);
}

TEST_F(RenderCommand, StopsBeforeTheTracerWhenTheSceneIsNotExportedOrNotSaved) {
    Tracer("fake.sh", 0);
    // No to the scene file's overwrite question: 2, nothing else written.
    WriteFile(dir_.file("scenes/scene.pov"), "old");
    Headless_PushText("N\n");
    RunRender(2);
    EXPECT_NE(Headless_Transcript().find("\nExport aborted"), std::string::npos);
    EXPECT_FALSE(FileExists(dir_.file("scenes/scene.cml")));
    EXPECT_EQ(Gfx_ChildrenRunning(), 0);

    // Export_Before_Render off: the old scene file is used as it is.
    g.pov.Export_Before_Render = 0;
    RunRender(1);
    EXPECT_EQ(ReadFile(dir_.file("scenes/scene.pov")), "old");
    EXPECT_TRUE(FileExists(dir_.file("scenes/scene.cml")));

    // An option file that can't be written: 2, no child.
    ASSERT_TRUE(WaitForChildren());
    snprintf(g.config.Scenes_Dir, sizeof g.config.Scenes_Dir, "/nonexistent");
    RunRender(2);
    EXPECT_EQ(Gfx_ChildrenRunning(), 0);

    // An untitled scene whose save-as browser is cancelled: 0.
    strcpy(g.run.workFileName, "UNTITLED");
    Headless_PushKey(KEY_ESCAPE);
    RunRender(0);
    EXPECT_EQ(Gfx_ChildrenRunning(), 0);
}

}  // namespace
