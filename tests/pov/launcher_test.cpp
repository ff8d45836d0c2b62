// tracer/qmr-povray: the switches POV-Ray 3.7 is given for an option file,
// where it runs, the log, the status passed on. A stand-in records what it
// was given; the real ray tracer is the end-to-end test's.
#include <sys/stat.h>

#include "e2e/process.h"
#include "test_support.h"

namespace {

TEST(Launcher, TranslatesTheOptionFileForPovray37) {
    TempDir dir;
    const std::string S = dir.file("scenes"), fake = dir.file("fake-povray");
    mkdir(S.c_str(), 0755);
    WriteFile(S + "/qmr.pov", "");
    WriteFile(fake, "#!/bin/sh\n{ pwd; for a in \"$@\"; do echo \"$a\"; done; } > \"$OUT\"\necho Parsing\nexit 5\n");
    chmod(fake.c_str(), 0755);
    struct Case {
        std::string in, out;   // option file (@ the scenes directory); the stand-in's directory and arguments
    } cases[] = {
        {"+L/inc\n+L@\n+L@\n+Iqmr.pov\n+O@/qmr.raw +FR\n-V +DGT\n+W320 +H200  -C\n-A\n+B20 +MB1 +MS1000 \n+X\n+P\n",
         "S\n+L/inc\n+LS\n+LS\n+IS/qmr.pov\n+OS/qmr.ppm\n+FP\n-V\n+D\n+W320\n+H200\n-C\n-A\n+MB1\n+X\n+P\n"},
        {"+O/i/a.def +F\n", "S\n+O/i/a.png\n+FN\n"},
        {"+O/i/a.dmp +FD\n", "S\n+O/i/a.png\n+FN\n"},
        {"+O/i/a.tga +FT\n", "S\n+O/i/a.tga\n+FT\n"},
        {"+D0h\n+L\n+Inone.pov +Q4\n", "S\n+D\n+Inone.pov\n+Q4\n-F\n"},   // no output type: no image
    };
    for (Case& c : cases) {
        for (size_t at; (at = c.in.find('@')) != std::string::npos;) c.in.replace(at, 1, S);
        WriteFile(S + "/qmr.cml", c.in);
        RunOptions o;
        o.env["QMR_POVRAY"] = fake;
        o.env["OUT"] = dir.file("args");
        RunResult r = RunProcess({QMR_SOURCE_DIR "/tracer/qmr-povray", S + "/qmr.cml"}, o);
        EXPECT_EQ(r.status, 5) << r.out;
        EXPECT_NE(r.out.find("Parsing\n"), std::string::npos) << r.out;   // its messages reach stderr ...
        EXPECT_NE(ReadFile(S + "/qmr.log").find("Parsing\n"), std::string::npos);   // ... and the log
        std::string got = ReadFile(dir.file("args"));
        for (size_t at; (at = got.find(S)) != std::string::npos;) got.replace(at, S.size(), "S");
        EXPECT_EQ(got, c.out) << c.in;
    }
}

}  // namespace
