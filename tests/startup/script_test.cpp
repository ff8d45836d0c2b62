// Scripted sessions of the built program (`qmr --script FILE [workfile]`):
// a script that builds and saves a scene, one that opens it and exports
// the scene file, one read from standard input, and the exit statuses and
// messages of a script that ends while a prompt waits, an unknown command,
// a wrong directive and a missing script.
#include "startup/script_fixture.h"

namespace {

class ScriptTest : public ScriptSessionTest {
  protected:
    RunResult Script(const std::string& text, std::vector<std::string> more = {}) {
        WriteFile(root.file("s.txt"), text);
        std::vector<std::string> args = {"--script", root.file("s.txt")};
        args.insert(args.end(), more.begin(), more.end());
        return Run(args);
    }
    // The standard error lines of a run: the program's own output is the
    // banner and the start-up messages before the window exists.
    static std::string LastLine(const std::string& out) {
        std::string t = out;
        while (!t.empty() && t.back() == '\n') t.pop_back();
        return t.substr(t.rfind('\n') + 1);
    }
};

TEST_F(ScriptTest, BuildSaveThenOpenAndExport) {
    RunResult r = Script(
        "# a ball and a light\n"
        "SPHERE\n1,0,2\n3\n\n"
        "POINTLIGHT\n1,5,2\n"
        "SAVE\n"
        "!dialog browser.dlg TEXTBOX 11\n"
        "ball.qmr\n"
        "!dialog browser.dlg BUTTON 1\n");
    ASSERT_FALSE(r.timed_out);
    EXPECT_EQ(r.status, 0) << r.out;
    const std::string saved = root.file("qmr/work/ball.qmr");
    ASSERT_TRUE(FileExists(saved)) << r.out;
    // Magic, then the scene: one layer with two objects (kinds 4 and 5).
    const std::string bytes = ReadFile(saved);
    EXPECT_EQ(bytes.substr(0, 35), std::string("Quillmoor Sculptor 2.10 work file!\0", 35));

    r = Script("EXPORTPOV\n", {"ball"});
    EXPECT_EQ(r.status, 0) << r.out;
    const std::string pov = ReadFile(root.file("pov/scenes/ball.pov"));
    EXPECT_NE(pov.find("sphere"), std::string::npos) << pov;
    EXPECT_NE(pov.find("light_source"), std::string::npos) << pov;

    // The same from standard input.
    opt.input = "CUBE\n1,2,3\n4\n\n\n";
    r = Run({"--script", "-"});
    EXPECT_EQ(r.status, 0) << r.out;
}

// The layers dialog driven by its labels, rows and boxes: a second layer
// named, nested under the first by the right-click options; then the screen.
TEST_F(ScriptTest, WaitingDialogClickedByLabelRowAndBox) {
    const std::string shot = root.file("screen.png");
    RunResult r = Script("LAYERS\n!button New\n!box 10\nInner\n!row 4 2 right\n!button Nest Layer\n"
                         "!button Close\n!screenshot " + shot + "\nEXPORTPOV\n");
    ASSERT_EQ(r.status, 0) << r.out;
    const std::string pov = ReadFile(root.file("pov/scenes/untitled.pov"));
    const size_t outer = pov.find("// Layer name: Untitled"), inner = pov.find("// Layer name: Inner");
    ASSERT_NE(outer, std::string::npos) << pov;
    EXPECT_LT(outer, inner);   // nested: written inside the first layer's statement
    EXPECT_EQ(pov.find("\nunion {  // Layer name: Inner"), std::string::npos) << pov;
    // A PNG of the 640x480 screen: signature, then the IHDR width and height.
    const std::string png = ReadFile(shot);
    ASSERT_GT(png.size(), 24u);
    EXPECT_EQ(png.substr(0, 8), "\x89PNG\r\n\x1a\n");
    EXPECT_EQ(png.substr(16, 8), std::string("\0\0\x02\x80\0\0\x01\xe0", 8));
}

TEST_F(ScriptTest, StatusesAndMessagesOfFailingScripts) {
    RunResult r = Script("SPHERE\n1,0,2\n");
    EXPECT_EQ(r.status, 2);
    EXPECT_EQ(LastLine(r.out), root.file("s.txt") + ":2: the script ended while a prompt waits: \"SPHERE> Radius:\"");

    r = Script("SPHERE\n1,0,2\n3\n\nSPHERO\nCUBE\n");
    EXPECT_EQ(r.status, 1);
    EXPECT_EQ(LastLine(r.out), root.file("s.txt") + ":5: \"SPHERO\": Unknown Command, at prompt \"Command:\"");

    r = Script("SPHERE\n@1,0\n");
    EXPECT_EQ(r.status, 1);
    EXPECT_EQ(LastLine(r.out),
              root.file("s.txt") + ":2: \"@1,0\": Invalid coordinates, at prompt \"SPHERE> Center point:\"");

    r = Script("!wave hello\n");
    EXPECT_EQ(r.status, 1);
    EXPECT_NE(LastLine(r.out).find(":1: \"!wave hello\": not a directive"), std::string::npos) << r.out;

    // A button that the waiting dialog does not have, and one outside any dialog.
    r = Script("LAYERS\n!button Frobnicate\n");
    EXPECT_EQ(r.status, 1);
    EXPECT_NE(LastLine(r.out).find(":2: \"!button Frobnicate\": not a directive, or nothing for it to click"),
              std::string::npos)
        << r.out;
    r = Script("!button Close\n");
    EXPECT_EQ(r.status, 1);

    r = Run({"--script", root.file("missing.txt")});
    EXPECT_EQ(r.status, 3);
    EXPECT_EQ(LastLine(r.out), root.file("missing.txt") + ": can't read the script");
}

}  // namespace
