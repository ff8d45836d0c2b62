// The built program from outside: banner, configuration search, directory
// check, signals and the work-file cycle.
#include <signal.h>

#include <filesystem>

#include "e2e/program_fixture.h"

namespace fs = std::filesystem;

namespace {

// A configuration whose main directory names `tag`, so the output tells which file was read.
std::string Marker(const std::string& tag) { return "[DIRECTORIES]\nqmrmain = /nonexistent-" + tag + "\n[END]\n"; }

// The banner, then the first configuration found in the search order.
TEST_F(ProgramTest, BannerAndConfigurationSearchOrder) {
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
    ASSERT_FALSE(r.timed_out);
    EXPECT_EQ(r.out.rfind(std::string(kBanner) +
                              "\nWARNING: Can't open qmr.ini\nPlease read QMR.DOC for help on installing QMR\n", 0),
              0u) << r.out;
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

// 100 kB of binary junk before the configuration does not stop its reading.
TEST_F(ProgramTest, JunkAndWarningDirectoriesDoNotStopStartUp) {
    std::string junk;
    for (int i = 0; i < 100000; i++) junk += static_cast<char>((i * 7919) % 256);
    WriteFile(root.file("cwd/qmr.ini"),
              junk + "\n" + Config("povray = /no/pov\nscenes = /no/scenes\npov_out = /no/out\n"));
    TypeWhen("Command: ", "EXIT\n");
    TypeWhen("<Yes>: ", "N\n");
    RunResult r = Run({}, true);
    ASSERT_FALSE(r.timed_out);
    for (auto [key, dir] : {std::pair{"povray", "/no/pov"}, {"scenes", "/no/scenes"}, {"pov_out", "/no/out"}}) {
        std::string block = "\nWarning: QMR.INI contains an invalid directory"
                            "\nDirectory in question: " + std::string(dir) +
                            "\nPlease modify the \"" + key + "\" statement in QMR.INI,"
                            "\nand read QMR.DOC for more information on"
                            "\nInstalling QMR before proceeding."
                            "\n\nPress any key to continue\n";
        EXPECT_NE(r.out.find(block), std::string::npos) << key << "\n" << r.out;
    }
    EXPECT_EQ(r.status, 0) << r.out;
}

// Each terminating signal ends through the orderly exit; a SIGFPE first is
// ignored, so the program is still there for it.
TEST_F(ProgramTest, TerminatingSignalsExitInOrderAndFloatingPointIsIgnored) {
    WriteFile(root.file("cwd/qmr.ini"), Config());
    opt.keep_stdin_open = true;
    opt.signal_when = "Command: ";
    for (int sig : {SIGTERM, SIGINT, SIGQUIT}) {
        WriteFile(root.file("qmr/work/texture.tmp"), "scratch");
        opt.signals = {SIGFPE, sig};
        RunResult r = Run({}, true);
        EXPECT_FALSE(r.timed_out) << sig;
        EXPECT_EQ(r.status, 0) << "signal " << sig << "\n" << r.out;
        EXPECT_FALSE(FileExists(root.file("qmr/work/texture.tmp"))) << sig;
    }
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

TEST_F(ProgramTest, ConfigurationThatIsADirectoryNeverCrashes) {
    fs::create_directories(root.file("cwd/qmr.ini"));
    RunResult r = Run();
    EXPECT_FALSE(r.timed_out);
    EXPECT_LT(r.status, 128) << r.out;
}

}  // namespace
