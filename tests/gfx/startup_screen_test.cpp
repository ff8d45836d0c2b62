// The real program opens its window at start-up and draws the frame with
// "INPUT:" on the input line; messages after that go to the window.
#include <gtest/gtest.h>

#include "gfx/program_screen.h"

namespace {

TEST(StartupScreen, FrameUnderXvfb) {
    XvfbServer xvfb("1280x1024x24");
    if (!xvfb.ok()) GTEST_SKIP() << "Xvfb did not start";
    TempDir tmp;
    WriteDirectoriesIni(tmp);
    WriteFile(tmp.file("main.mnu"), "");
    WriteFile(tmp.file("side.mnu"), "SIDEMENU(1000)\n");
    BackgroundRun program({QMR_BINARY}, ProgramOptions(tmp, xvfb));   // waits at its prompt
    // The frame and views are drawn before the first "Command: " prompt.
    bool found = WaitForFileText(tmp.file("transcript.txt"), "Command: ", 30);
    // The pointer starts at the window's corner, over the menu bar, which then
    // shows; move it into a viewport that is not the active one.
    RunOptions x;
    x.env["DISPLAY"] = xvfb.display();
    RunProcess({"xdotool", "mousemove", "101", "61"}, x);
    // Background BLUE (0,0,37) shows as 0,0,148; without a work file the
    // start-up views are drawn (black viewport background); the side column
    // and bottom lines are background. The window's inside starts at (1, 1).
    const std::string want = "srgb(0,0,148) srgb(0,0,0) srgb(0,0,148) srgb(0,0,148)";
    auto probe = [&](const RunOptions& o) {
        return RunProcess({"convert", tmp.file("startup.png"), "-format",
                           "%[pixel:p{20,0}] %[pixel:p{300,100}] %[pixel:p{600,100}] "
                           "%[pixel:p{300,470}]", "info:"}, o);
    };
    RunResult pixels = PollScreen(tmp, xvfb, "640x480+1+1", "startup.png", want, probe);
    RunResult run = program.Finish();
    ASSERT_TRUE(found);
    if (const char* keep = getenv("QMR_KEEP_SCREENSHOT"))
        RunProcess({"cp", tmp.file("startup.png"), keep}, {});
    EXPECT_EQ(pixels.out, want);
    // Banner before the window on standard output; later messages in the window.
    EXPECT_EQ(run.out.find("\"Quillmoor Sculptor\" version 2.10-X11-pl2, Jan  8 1996\n\n"), 0u)
        << run.out;
    EXPECT_EQ(run.out.find("Loading->"), std::string::npos) << run.out;
    std::string transcript = ReadFile(tmp.file("transcript.txt"));
    EXPECT_NE(transcript.find("\nLoading-> main.mnu\nLoading-> side.mnu"), std::string::npos)
        << transcript;
}

}  // namespace
