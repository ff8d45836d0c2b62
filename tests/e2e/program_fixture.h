// program_fixture.h - the built program run from outside under a temporary
// installation: configuration, display, and keys typed into its window.
#pragma once
#include <filesystem>
#include <memory>

#include "e2e/process.h"
#include "test_support.h"
#include "ui/dialog_support.h"

const char kBanner[] = "\"Quillmoor Sculptor\" version 2.10-X11-pl2, Jan  8 1996\n\n";

class ProgramTest : public QmrTest {
  protected:
    // An installation under a temporary root: main, work, support, scenes.
    void SetUp() override {
        QmrTest::SetUp();
        namespace fs = std::filesystem;
        for (const char* d : {"qmr", "qmr/work", "qmr/support", "pov", "pov/scenes", "home", "cwd"})
            fs::create_directories(root.file(d));
        for (const auto& e : fs::directory_iterator(QMR_SOURCE_DIR "/support"))
            fs::copy(e.path(), root.file("qmr/support") / e.path().filename(),
                     fs::copy_options::recursive);
        opt.clear_env = true;
        opt.cwd = root.file("cwd");
        opt.env["HOME"] = root.file("home");
        opt.env["PATH"] = getenv("PATH") ? getenv("PATH") : "/usr/bin:/bin";
        opt.env["QMR_TRANSCRIPT"] = "/dev/stdout";   // messages of the window, in order
    }

    // A configuration naming the test installation, with `extra` lines in [DIRECTORIES].
    std::string Config(const std::string& extra = "") {
        return "[DIRECTORIES]\nqmrmain = " + root.file("qmr") + "\nqmrwork = " + root.file("qmr/work") +
               "\nsupport = " + root.file("qmr/support") + "\npovray = " + root.file("pov") +
               "\nscenes = " + root.file("pov/scenes") + "\npov_out = " + root.file("pov/scenes") +
               "\n" + extra + "[END]\n";
    }

    // Runs the program until it leaves (a display is provided when asked for).
    RunResult Run(std::vector<std::string> args = {}, bool display = false) {
        std::unique_ptr<XvfbServer> x;
        if (display) {
            x = std::make_unique<XvfbServer>();
            EXPECT_TRUE(x->ok()) << "Xvfb did not start";
            opt.env["DISPLAY"] = x->display();
            for (RunOptions::Action& a : opt.actions)   // typing goes to this server
                if (size_t at = a.command.find("@DISPLAY@"); at != std::string::npos)
                    a.command.replace(at, 9, x->display());
        }
        args.insert(args.begin(), QMR_BINARY);
        return RunProcess(args, opt);
    }

    // Types `keys` into the program's window once `when` has appeared in its
    // output; "\n" in keys is the Return key. Needs the display of Run(..., true).
    void TypeWhen(const std::string& when, const std::string& keys) {
        std::string cmd = "xdotool search --sync --name 'Quillmoor Sculptor' windowfocus --sync >/dev/null 2>&1;"
                          " xdotool mousemove 300 200;";
        std::string word;
        auto flush = [&]() {
            if (!word.empty()) cmd += " xdotool type --delay 20 '" + word + "';";
            word.clear();
        };
        for (char c : keys) {
            if (c == '\n') {
                flush();
                cmd += " xdotool key Return;";
            } else {
                word += c;
            }
        }
        flush();
        opt.actions.push_back({when, "DISPLAY=@DISPLAY@ sh -c \"" + cmd + "\""});
    }

    // The program's screen, views and menus as it starts (after loading
    // `path` when one is given), set up in this process so that a test can
    // work out where the program will draw things.
    void AsTheProgram(const std::string& path = "") {
        State_Reset();
        Headless_Reset();
        Screen_Open(18);
        Views_SetScreen(g.screen.width, g.screen.height, SCREEN_LINE, g.screen.inputLineY);
        Views_SetAreaWidth(g.screen.sideMenuX);
        Views_Reset();
        snprintf(g.config.SUPPORT_DIR, sizeof g.config.SUPPORT_DIR, "%s/support", QMR_SOURCE_DIR);
        char menu[300];
        snprintf(menu, sizeof menu, "%s/main.mnu", g.config.SUPPORT_DIR);
        ASSERT_EQ(MenuBar_Load(&g.menus.bar, menu), 1);
        if (path.empty()) return;
        testing::internal::CaptureStdout();
        ASSERT_EQ(WorkFile_Load(path.c_str()), 1);
        testing::internal::GetCapturedStdout();
    }
    // The pixel of a world point in viewport `v` (the working one by default).
    static std::pair<int, int> PixelOf(Point3 p, Viewport* v = nullptr) {
        if (!v) v = &g.view.Active_Viewport;
        View_Project(v, p);
        return {(int)v->screen_x, (int)v->screen_y};
    }
    // A left click at a pixel of the program's window.
    static std::string At(int x, int y) {
        return " xdotool search --name 'Quillmoor Sculptor' mousemove --window %1 " + std::to_string(x) + " " +
               std::to_string(y) + " click 1; sleep 0.4;";
    }
    // A pick of menu bar entry `code`.
    static std::string Menu(int code) {
        for (const MenuTitle& t : g.menus.bar.titles)
            for (size_t i = 0; i < t.items.size(); i++)
                if (t.items[i].code == code) return At(t.x1 + 2, 5) + At(t.bx1 + 10, t.by1 + (int)i * SCREEN_LINE + 7);
        ADD_FAILURE() << "no menu item for " << code;
        return "";
    }
    // A click on an element of a support dialog, at 640 x 480 (80 x 32 cells of 8 x 15).
    static std::string Click(const char* file, const char* kind, int id) {
        DlgSpot s = Dlg_Find(Dlg_Support(file), kind, id, 80, 32);
        EXPECT_TRUE(s.found) << file << " " << kind << " " << id;
        return At(s.col * 8 + 4, s.row * 15 + 7);
    }
    static std::string Type(const std::string& text) {
        return " xdotool type --delay 30 -- '" + text + "'; xdotool key Return; sleep 0.4;";
    }
    // Runs `steps` once `when` has appeared in the program's output.
    void Act(const std::string& when, const std::string& steps) {
        opt.actions.push_back({when, "DISPLAY=@DISPLAY@ sh -c \"xdotool search --sync --name 'Quillmoor Sculptor'"
                                     " windowfocus --sync >/dev/null 2>&1; sleep 0.3;" + steps + "\""});
    }

    TempDir root;
    RunOptions opt;
};
