// The built program from outside: banner, configuration search, directory
// check, signals and the work-file cycle.
#include <signal.h>

#include <filesystem>

#include "e2e/process.h"
#include "test_support.h"

namespace fs = std::filesystem;

namespace {

const char kBanner[] = "\"Quillmoor Sculptor\" version 2.10-X11-pl2, Jan  8 1996\n\n";

class ProgramTest : public ::testing::Test {
  protected:
    // An installation under a temporary root: main, work, support, scenes.
    void SetUp() override {
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

    TempDir root;
    RunOptions opt;
};

// A configuration whose main directory names `tag`, so the output tells which file was read.
std::string Marker(const std::string& tag) { return "[DIRECTORIES]\nqmrmain = /nonexistent-" + tag + "\n[END]\n"; }

TEST_F(ProgramTest, BannerAndMissingConfiguration) {
    RunResult r = Run();
    ASSERT_FALSE(r.timed_out);
    EXPECT_EQ(r.out.rfind(kBanner, 0), 0u) << r.out;
    EXPECT_NE(r.out.find(std::string(kBanner) +
                         "\nWARNING: Can't open qmr.ini\nPlease read QMR.DOC for help on installing QMR\n"),
              std::string::npos)
        << r.out;
}

TEST_F(ProgramTest, ConfigurationSearchOrder) {
    WriteFile(root.file("cwd/qmr.ini"), Marker("cwd"));
    WriteFile(root.file("rc"), Marker("qmrrc"));
    WriteFile(root.file("home/.qmrrc"), Marker("home"));
    fs::create_directories(root.file("q"));
    WriteFile(root.file("q/qmr.ini"), Marker("qmrenv"));
    opt.env["QMRRC"] = root.file("rc");
    opt.env["QMR"] = root.file("q");

    auto readFrom = [&]() {
        RunResult r = Run();
        size_t at = r.out.find("Directory in question: /nonexistent-");
        if (at == std::string::npos) return std::string("none");
        at += strlen("Directory in question: /nonexistent-");
        return r.out.substr(at, r.out.find('\n', at) - at);
    };
    EXPECT_EQ(readFrom(), "cwd");
    fs::remove(root.file("cwd/qmr.ini"));
    EXPECT_EQ(readFrom(), "qmrrc");
    opt.env["QMRRC"] = root.file("missing");   // named but absent: nothing else is tried
    RunResult r = Run();
    EXPECT_NE(r.out.find("\nWARNING: Can't open qmr.ini"), std::string::npos) << r.out;
    opt.env.erase("QMRRC");
    EXPECT_EQ(readFrom(), "home");
    fs::remove(root.file("home/.qmrrc"));
    EXPECT_EQ(readFrom(), "qmrenv");
    opt.env.erase("HOME");   // without HOME nothing past QMRRC is tried
    r = Run();
    EXPECT_NE(r.out.find("\nWARNING: Can't open qmr.ini"), std::string::npos) << r.out;
}

TEST_F(ProgramTest, FatalDirectoryMessages) {
    struct Case {
        const char* key;
        const char* tail;
    } cases[] = {
        {"qmrmain", "\nInstalling QMR."},
        {"qmrwork", "\nInstalling QMR.\n"},
        {"support", "\nInstalling QMR.\n"},
    };
    for (const Case& c : cases) {
        WriteFile(root.file("cwd/qmr.ini"), Config(std::string(c.key) + " = /no/such/dir\n"));
        RunResult r = Run();
        std::string expected = std::string(kBanner) +
                               "\nFAITAL ERROR: QMR.INI contains an invalid directory"
                               "\nDirectory in question: /no/such/dir"
                               "\nPlease modify the \"" + c.key + "\" statement in QMR.INI,"
                               "\nand read QMR.DOC for more information on" + c.tail;
        EXPECT_EQ(r.out, expected) << c.key;
        EXPECT_EQ(r.status, 1) << c.key;
    }
}

TEST_F(ProgramTest, WarningDirectoriesDoNotStopStartUp) {
    WriteFile(root.file("cwd/qmr.ini"),
              Config("povray = /no/pov\nscenes = /no/scenes\npov_out = /no/out\n"));
    TypeWhen("Command: ", "EXIT\n");
    TypeWhen("<Yes>: ", "N\n");
    RunResult r = Run({}, true);
    ASSERT_FALSE(r.timed_out);
    for (const char* key : {"povray", "scenes", "pov_out"}) {
        std::string dir = key == std::string("povray") ? "/no/pov" : key == std::string("scenes") ? "/no/scenes" : "/no/out";
        std::string block = "\nWarning: QMR.INI contains an invalid directory"
                            "\nDirectory in question: " + dir +
                            "\nPlease modify the \"" + key + "\" statement in QMR.INI,"
                            "\nand read QMR.DOC for more information on"
                            "\nInstalling QMR before proceeding."
                            "\n\nPress any key to continue\n";
        EXPECT_NE(r.out.find(block), std::string::npos) << key << "\n" << r.out;
    }
    EXPECT_EQ(r.status, 0) << r.out;
}

TEST_F(ProgramTest, TerminatingSignalsExitInOrder) {
    WriteFile(root.file("cwd/qmr.ini"), Config());
    opt.keep_stdin_open = true;
    opt.signal_when = "Command: ";
    for (int sig : {SIGTERM, SIGINT, SIGQUIT}) {
        WriteFile(root.file("qmr/work/texture.tmp"), "scratch");
        opt.signals = {sig};
        RunResult r = Run({}, true);
        EXPECT_FALSE(r.timed_out) << sig;
        EXPECT_EQ(r.status, 0) << "signal " << sig << "\n" << r.out;
        EXPECT_FALSE(FileExists(root.file("qmr/work/texture.tmp"))) << sig;
    }
}

TEST_F(ProgramTest, FloatingPointSignalIsIgnored) {
    WriteFile(root.file("cwd/qmr.ini"), Config());
    opt.keep_stdin_open = true;
    opt.signal_when = "Command: ";
    opt.signals = {SIGFPE, SIGFPE, SIGTERM};   // still alive for the SIGTERM
    RunResult r = Run({}, true);
    EXPECT_FALSE(r.timed_out);
    EXPECT_EQ(r.status, 0) << r.out;
}

TEST_F(ProgramTest, NewRestartsAndExitEnds) {
    WriteFile(root.file("cwd/qmr.ini"), Config());
    TypeWhen("Command: ", "NEW\n");
    TypeWhen("<N>: ", "N\n");
    TypeWhen("Command: ", "NEW\n");
    TypeWhen("<N>: ", "\n");
    TypeWhen("Command: ", "EXIT\n");
    TypeWhen("<Yes>: ", "N\n");
    RunResult r = Run({}, true);
    ASSERT_FALSE(r.timed_out) << r.out;
    EXPECT_EQ(r.status, 0) << r.out;
    // Start plus two restarts each try the default file; nothing runs after EXIT.
    std::string missing = "\nCan't Find File <" + root.file("qmr/work") + "/qmr.qmr>.";
    size_t count = 0;
    for (size_t at = r.out.find(missing); at != std::string::npos; at = r.out.find(missing, at + 1)) count++;
    EXPECT_EQ(count, 3u) << r.out;
    EXPECT_NE(r.out.find("NEW> Save changes to <untitled>? <Yes,No> <N>: "), std::string::npos);
    EXPECT_NE(r.out.find("\nEXIT> Save changes to <untitled>? <Yes,No> <Yes>: "), std::string::npos);
}

TEST_F(ProgramTest, MissingMenuFileIsFatal) {
    WriteFile(root.file("cwd/qmr.ini"), Config() + "[FILENAMES]\npopup = nomenu.mnu\n[END]\n");
    RunResult r = Run({}, true);
    EXPECT_NE(r.out.find("Error: Unable to load Menu File\n"), std::string::npos) << r.out;
    EXPECT_EQ(r.status, 0);   // a fatal error through the orderly exit still ends with 0
}

TEST_F(ProgramTest, HostileConfigurationNeverCrashes) {
    std::string junk;
    for (int i = 0; i < 100000; i++) junk += static_cast<char>((i * 7919) % 256);
    WriteFile(root.file("cwd/qmr.ini"), junk + "\n" + Config());
    TypeWhen("Command: ", "EXIT\n");
    TypeWhen("<Yes>: ", "N\n");
    RunResult r = Run({}, true);
    EXPECT_FALSE(r.timed_out);
    EXPECT_LT(r.status, 128) << r.out;   // no crash
    fs::remove(root.file("cwd/qmr.ini"));
    fs::create_directories(root.file("cwd/qmr.ini"));   // a directory where the file should be
    r = Run();
    EXPECT_FALSE(r.timed_out);
    EXPECT_LT(r.status, 128);
}

}  // namespace
