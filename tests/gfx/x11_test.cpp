// The real x11 display backend under a private Xvfb, through the
// qmr_x11_driver program and xdotool; its frames against the headless ones.
#include <gtest/gtest.h>

#include <chrono>
#include <sstream>
#include <string>
#include <thread>

#include "e2e/process.h"
#include "gfx/draw_script.h"
#include "gfx/headless/headless.h"
#include "headless_session.h"

namespace {

RunOptions OnDisplay(const std::string& display, double timeout = 20) {
    RunOptions o;
    o.env["DISPLAY"] = display;
    o.timeout_s = timeout;
    return o;
}

RunResult Driver(const std::vector<std::string>& args, const std::string& display) {
    std::vector<std::string> argv = {QMR_X11_DRIVER};
    argv.insert(argv.end(), args.begin(), args.end());
    return RunProcess(argv, OnDisplay(display, 60));
}

RunResult Tool(const std::vector<std::string>& argv, const std::string& display) {
    return RunProcess(argv, OnDisplay(display));
}

// The window's inside (at 1, 1 of the root: border width 1) as raw RGB
// bytes, through xwd and ImageMagick.
std::string Screenshot(const std::string& display, const TempDir& tmp) {
    Tool({"sh", "-c", "xwd -root -silent > " + tmp.file("s.xwd")}, display);
    Tool({"convert", "xwd:" + tmp.file("s.xwd"), "-crop", "640x480+1+1", "+repage", "-depth", "8",
          "rgb:" + tmp.file("s.rgb")}, display);
    return ReadFile(tmp.file("s.rgb"));
}

// Pixels that differ between two RGB frames of the same size, -1 when the
// sizes differ; `first` gets the index of the first difference.
int Differ(const std::string& a, const std::string& b, int* first = nullptr) {
    if (a.size() != b.size()) return -1;
    int n = 0;
    for (size_t i = 0; i < a.size(); i += 3)
        if (a.compare(i, 3, b, i, 3) != 0 && n++ == 0 && first) *first = (int)(i / 3);
    return n;
}

bool WaitForWindow(const std::string& display) {
    for (int i = 0; i < 200; i++) {
        RunResult r = Tool({"xdotool", "search", "--name", "Quillmoor Sculptor"}, display);
        if (r.status == 0) return true;
        if (i == 199) fprintf(stderr, "xdotool: %d %s\n", r.status, r.out.c_str());
        std::this_thread::sleep_for(std::chrono::milliseconds(50));
    }
    return false;
}

class X11Test : public HeadlessTest {
  protected:
    XvfbServer xvfb;
    TempDir tmp;
    void SetUp() override {
        HeadlessTest::SetUp();
        if (!xvfb.ok()) GTEST_SKIP() << "Xvfb did not start";
    }
    // The draw script's frame from the headless backend, as RGB.
    std::string HeadlessScriptRgb() {
        DrawScript();
        std::string rgb;
        for (int i = 0; i < 640 * 480; i++) {
            unsigned char c[3];
            Headless_Rgb(Headless_Frame()[i], c);
            rgb.append((const char*)c, 3);
        }
        return rgb;
    }
};

TEST(X11NoServer, CannotConnect) {
    RunOptions o;
    o.env["DISPLAY"] = ":399";   // nothing listens there
    RunResult r = RunProcess({QMR_X11_DRIVER, "draw", "18", "/dev/null"}, o);
    EXPECT_EQ(r.status, 1);
    EXPECT_EQ(r.out, "Cannot connect to server\n");
}

TEST_F(X11Test, SameFrameAsHeadless) {
    RunResult r = Driver({"draw", "18", tmp.file("x.rgb")}, xvfb.display());
    ASSERT_EQ(r.status, 0) << r.out;
    EXPECT_EQ(r.out, "cell 8 size 640 480\n");
    int first = -1;
    EXPECT_EQ(Differ(ReadFile(tmp.file("x.rgb")), HeadlessScriptRgb(), &first), 0)
        << "first at " << first % 640 << "," << first / 640;
}

TEST_F(X11Test, ModeSizesAndPalette) {
    const std::string d = xvfb.display(), out = tmp.file("m.rgb");
    EXPECT_EQ(Driver({"draw", "258", out}, d).out, "cell 8 size 800 600\n");
    EXPECT_EQ(Driver({"draw", "256", out}, d).out, "cell 8 size 640 480\n");
    // The frame is not drawn in this mode: the pixmap is the window's white.
    EXPECT_EQ((unsigned char)ReadFile(out)[0], 255);
}

// A server whose font path is an empty directory has only its built-in
// "fixed" font, 6 pixels wide: the first choice fails and the alias is used.
TEST(X11Font, FallsBackToFixed) {
    TempDir fonts;
    XvfbServer bare("640x480x24", {"-fp", fonts.path()});
    if (!bare.ok()) GTEST_SKIP() << "Xvfb did not start";
    TempDir tmp;
    RunResult r = Driver({"draw", "18", tmp.file("f.rgb")}, bare.display());
    EXPECT_EQ(r.status, 0) << r.out;
    EXPECT_EQ(r.out, "cell 6 size 640 480\n");
}

TEST_F(X11Test, ExposureIsRepairedFromThePixmap) {
    BackgroundRun show({QMR_X11_DRIVER, "show", "60"}, OnDisplay(xvfb.display(), 60));
    ASSERT_TRUE(WaitForWindow(xvfb.display())) << show.Finish().out;
    Driver({"cover", "0.5"}, xvfb.display());
    std::string hl = HeadlessScriptRgb();
    // A loaded machine may take a while to deliver the exposure: poll.
    int differ = -1;
    for (int attempt = 0; attempt < 100 && differ != 0; attempt++) {
        std::this_thread::sleep_for(std::chrono::milliseconds(100));
        differ = Differ(Screenshot(xvfb.display(), tmp), hl);
    }
    show.Finish();
    EXPECT_EQ(differ, 0);
}

TEST_F(X11Test, KeysMouseAndChildReaping) {
    BackgroundRun run({QMR_X11_DRIVER, "events", "30"}, OnDisplay(xvfb.display(), 60));
    ASSERT_TRUE(WaitForWindow(xvfb.display())) << run.Finish().out;
    std::this_thread::sleep_for(std::chrono::milliseconds(300));
    const std::string d = xvfb.display();
    Tool({"xdotool", "mousemove", "101", "51"}, d);   // (100, 50) inside the window
    Tool({"xdotool", "key", "--delay", "30", "F1", "F10", "F11", "F12", "Insert", "BackSpace",
          "Delete", "a", "shift+a", "Shift_L", "Return"},
         d);
    Tool({"xdotool", "click", "3"}, d);
    Tool({"xdotool", "mousemove", "11", "480"}, d);   // bottom row: clamped to y 478
    Tool({"xdotool", "key", "q"}, d);
    RunResult r = run.Finish(0);   // ends by itself on 'q'
    EXPECT_EQ(r.status, 0) << r.out;
    std::istringstream lines(r.out);
    std::string line, keys;
    bool sawRight = false, sawClamp = false, reaped = false;
    while (std::getline(lines, line)) {
        int a, b, c;
        if (sscanf(line.c_str(), "key %d shift %d", &a, &b) == 2) keys += std::to_string(a) + " ";
        if (sscanf(line.c_str(), "mouse %d %d %d", &a, &b, &c) == 3) {
            if (a == 100 && b == 50 && c == MOUSE_RIGHT) sawRight = true;
            if (a == 10 && b == 478) sawClamp = true;
        }
        if (line == "child reaped") reaped = true;
    }
    EXPECT_EQ(keys, "15104 17408 17664 17920 20992 8 127 97 65 13 113 ");
    EXPECT_TRUE(sawRight) << r.out;
    EXPECT_TRUE(sawClamp) << r.out;
    EXPECT_TRUE(reaped);
}

}  // namespace
