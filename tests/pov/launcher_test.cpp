// tracer/qmr-povray: the switches POV-Ray 3.7 gets for an option file, the
// directory it runs in, the log it leaves, and the status it passes on.
// A stand-in records what it was given; the real ray tracer is the e2e
// test's business.
#include <sys/stat.h>

#include <string>

#include "e2e/process.h"
#include "test_support.h"

namespace {

const char kLauncher[] = QMR_SOURCE_DIR "/tracer/qmr-povray";

class Launcher : public ::testing::Test {
  protected:
    void SetUp() override {
        S = dir_.file("scenes");
        mkdir(S.c_str(), 0755);
        WriteFile(S + "/qmr.pov", "// scene\n");
        fake_ = dir_.file("fake-povray");
        WriteFile(fake_, "#!/bin/sh\n{ pwd; for a in \"$@\"; do echo \"$a\"; done; } > \"$OUT\"\n"
                         "echo 'Parsing...'\nexit 5\n");
        chmod(fake_.c_str(), 0755);
    }
    // Runs the launcher on option text `cml`; the stand-in's record with
    // the scenes directory shown as S, one word a line (the first: the
    // directory it ran in).
    std::string Run(const std::string& cml, int expectStatus = 5) {
        WriteFile(S + "/qmr.cml", cml);
        RunOptions o;
        o.env["QMR_POVRAY"] = fake_;
        o.env["OUT"] = dir_.file("args");
        RunResult r = RunProcess({kLauncher, S + "/qmr.cml"}, o);
        EXPECT_EQ(r.status, expectStatus) << r.out;
        out_ = r.out;
        std::string t = ReadFile(dir_.file("args"));
        for (size_t at; (at = t.find(S)) != std::string::npos;) t.replace(at, S.size(), "S");
        return t;
    }
    TempDir dir_;
    std::string S, fake_, out_;
};

TEST_F(Launcher, DefaultOptionFileBecomesWhatPovray37Takes) {
    const std::string cml = "+L/inc\n+L" + S + "\n+L" + S + "\n+Iqmr.pov\n+O" + S +
                            "/qmr.raw +FR\n-V +DGT\n+W320 +H200  -C\n-A\n+B20 +MB1 +MS1000 \n+X\n+P\n";
    EXPECT_EQ(Run(cml), "S\n+L/inc\n+LS\n+LS\n+IS/qmr.pov\n+OS/qmr.ppm\n+FP\n-V\n+D\n+W320\n+H200\n-C\n-A\n"
                        "+MB1\n+X\n+P\n");
    // The ray tracer's messages reach standard error and the log beside the file.
    EXPECT_NE(out_.find("Parsing...\n"), std::string::npos) << out_;
    const std::string log = ReadFile(S + "/qmr.log");
    EXPECT_EQ(log.rfind("qmr-povray: " + fake_ + " +L/inc", 0), 0u) << log;
    EXPECT_NE(log.find("Parsing...\n"), std::string::npos) << log;
}

TEST_F(Launcher, FormatsGetTheirExtensionAndNoFormatMeansNoImage) {
    struct Case {
        const char* in;
        const char* out;
    } cases[] = {
        {"+O/i/a.def +F\n", "+O/i/a.png\n+FN\n"},
        {"+O/i/a.raw +FR\n", "+O/i/a.ppm\n+FP\n"},
        {"+O/i/a.dmp +FD\n", "+O/i/a.png\n+FN\n"},
        {"+O/i/a.tga +FT\n", "+O/i/a.tga\n+FT\n"},
        {"-D\n", "-D\n-F\n"},                      // output type NONE
        {"+D0h\n+L\n+Q4\n", "+D\n+Q4\n-F\n"},      // empty library path dropped
        {"+Inone.pov -F\n", "+Inone.pov\n-F\n"},   // not found: as written
        {"+A0.3 +R2 +J1\n+SR1 +SC1 +ER9 +EC9 -MB +L/x +UA\n",
         "+A0.3\n+R2\n+J1\n+SR1\n+SC1\n+ER9\n+EC9\n-MB\n+L/x\n+UA\n-F\n"},
    };
    for (const Case& c : cases) EXPECT_EQ(Run(c.in), std::string("S\n") + c.out) << c.in;
}

TEST_F(Launcher, StatusAndFailures) {
    RunResult r = RunProcess({kLauncher}, {});
    EXPECT_EQ(r.status, 2);
    EXPECT_EQ(r.out, "usage: qmr-povray OPTIONFILE\n");
    r = RunProcess({kLauncher, dir_.file("missing.cml")}, {});
    EXPECT_EQ(r.status, 1);
    EXPECT_NE(r.out.find("qmr-povray: cannot read"), std::string::npos) << r.out;
    fake_ = dir_.file("no-such-povray");
    Run("+Iqmr.pov\n", 127);
    EXPECT_NE(out_.find("qmr-povray: cannot run " + fake_), std::string::npos) << out_;
}

}  // namespace
