// The file browser and the file commands that use it: the list and its
// scrolling, directories, the name rules, accepting; SAVE AS into a
// subdirectory, OPEN, MERGE and the imports.
#include <sys/stat.h>

#include "e2e/process.h"
#include "input/session.h"
#include "ui/browser.h"
#include "ui/dialog_support.h"

namespace {

class BrowserTest : public SessionTest {
  protected:
    void SetUp() override {
        SessionTest::SetUp();
        mkdir(root.file("qmr").c_str(), 0755);
        mkdir(root.file("qmr/work").c_str(), 0755);
        mkdir(root.file("qmr/work/sub").c_str(), 0755);
        snprintf(g.config.WORK_DIR, sizeof g.config.WORK_DIR, "%s", root.file("qmr/work").c_str());
    }
    int Browse(int mode) {
        int r = -1;
        EXPECT_TRUE(Headless_RunSession([&] { r = Browser_Run(mode); }));
        return r;
    }
    // List row n (0..9).
    void Row(int n) { Dlg_Click("browser.dlg", "TEXTBOX", 20 + n); }
    void Ok() { Dlg_Click("browser.dlg", "BUTTON", 1); }
    TempDir root;
};

TEST_F(BrowserTest, ListsDirectoriesThenMatchingFiles) {
    for (const char* f : {"b.dxf", "a.qmr", "c.DXF", "note.txt"}) WriteFile(root.file("qmr/work/") + f, "x");
    Headless_PushKey(3);
    EXPECT_EQ(Browse(BROWSE_DXF), 0);
    EXPECT_STREQ(g.browser.browseDir, root.file("qmr/work").c_str());
    EXPECT_STREQ(g.browser.browseName, "*.dxf");
    const std::vector<std::string> want = {"[.]", "[..]", "[sub]", "b.dxf", "c.DXF"};
    EXPECT_EQ(g.browser.entries, want);

    // The pattern boxes; a file row fills the name field; [..] goes up.
    Dlg_Click("browser.dlg", "CHECK", 13);   // *.*: every file
    Row(4);                                  // the second file in name order
    Headless_PushKey(3);
    EXPECT_EQ(Browse(BROWSE_DXF), 0);
    EXPECT_STREQ(g.browser.browseName, "b.dxf");
    EXPECT_EQ(g.browser.entries.size(), 7u);

    Row(1);   // [..]: /.../qmr/work lists /.../qmr
    Headless_PushKey(3);
    Browse(BROWSE_ALL);
    EXPECT_STREQ(g.browser.browseDir, root.file("qmr").c_str());
    EXPECT_EQ(g.browser.entries[2], "[work]");
    // The browser reopens where it was left.
    Headless_PushKey(3);
    Browse(BROWSE_WORKFILE);
    EXPECT_STREQ(g.browser.browseDir, root.file("qmr").c_str());
}

TEST_F(BrowserTest, ScrollingStopsAtTheLastTenEntries) {
    for (int i = 0; i < 25; i++) WriteFile(root.file("qmr/work/f") + (char)('a' + i) + ".raw", "x");
    // 3 directories and 25 files: 28 entries, the last page starts at 18.
    Dlg_Click("browser.dlg", "BUTTON", 5);
    Dlg_Click("browser.dlg", "BUTTON", 5);
    Dlg_Click("browser.dlg", "BUTTON", 5);   // not possible: nothing
    Row(9);                                  // the last entry
    Headless_PushKey(3);
    Browse(BROWSE_RAW);
    EXPECT_STREQ(g.browser.browseName, "fy.raw");
    Dlg_Click("browser.dlg", "BUTTON", 6);   // a row down, a page up (to 0), a row up (nothing)
    Dlg_Click("browser.dlg", "BUTTON", 3);
    Dlg_Click("browser.dlg", "BUTTON", 4);
    Row(3);
    Headless_PushKey(3);
    Browse(BROWSE_RAW);
    EXPECT_STREQ(g.browser.browseName, "fa.raw");
}

TEST_F(BrowserTest, NamesAndAccepting) {
    char out[128];
    Browser_WorkFileName("scenefile.old", out);
    EXPECT_STREQ(out, "scenefil.qmr");
    Browser_WorkFileName("ab", out);
    EXPECT_STREQ(out, "ab.qmr");
    Browser_WorkFileName("a.b", out);
    EXPECT_STREQ(out, "a.qmr");

    // Typed into the name field in mode 4; a file that is not there is not
    // accepted (the dialog stays); one that is, is.
    Dlg_Type("browser.dlg", 11, "scenefile.old\n");
    Ok();
    Headless_PushKey(3);
    EXPECT_EQ(Browse(BROWSE_WORKFILE), 0);
    EXPECT_STREQ(g.browser.browseName, "scenefil.qmr");
    WriteFile(root.file("qmr/work/sub/house.qmr"), "x");
    Row(2);   // [sub]
    Row(2);   // house.qmr
    Ok();
    EXPECT_EQ(Browse(BROWSE_WORKFILE), 1);
    EXPECT_STREQ(g.run.workFilePath, root.file("qmr/work/sub/house.qmr").c_str());

    // Other modes keep a typed name as it is; the directory field is typed.
    Dlg_Type("browser.dlg", 12, root.file("qmr/work") + "\n");
    Dlg_Type("browser.dlg", 11, "scenefile.old\n");
    Headless_PushKey(3);
    Browse(BROWSE_ALL);
    EXPECT_STREQ(g.browser.browseName, "scenefile.old");
    EXPECT_STREQ(g.browser.browseDir, root.file("qmr/work").c_str());

    // Save-as mode: the work file's name, accepted without the file; not a pattern.
    strcpy(g.run.workFileName, "untitled");
    g.browser.saveAsMode = 1;
    Dlg_Click("browser.dlg", "CHECK", 17);   // "*.qmr": no name to write
    Ok();
    Dlg_Type("browser.dlg", 11, "garden\n");
    Ok();
    EXPECT_EQ(Browse(BROWSE_SAVE_AS), 1);
    EXPECT_STREQ(g.run.workFilePath, root.file("qmr/work/garden.qmr").c_str());
    g.browser.saveAsMode = 0;

    // The Cancel button.
    Dlg_Click("browser.dlg", "BUTTON", 0);
    EXPECT_EQ(Browse(BROWSE_ALL), 0);
}

TEST_F(BrowserTest, SaveAsOpenMergeAndImports) {
    strcpy(g.run.workFileName, "untitled");
    strcpy(g.scene.First_Layer->name, "Walls");
    AddPolyline({{0, 0, 0}, {1, 0, 0}});
    // SAVE of an untitled scene: the browser in save-as mode, into sub/.
    Row(2);
    Dlg_Type("browser.dlg", 11, "house.stuff\n");
    Ok();
    ASSERT_TRUE(Headless_RunSession([] { EXPECT_EQ(Com_Save(), 1); }));
    const std::string house = root.file("qmr/work/sub/house.qmr");
    EXPECT_TRUE(FileExists(house));
    EXPECT_STREQ(g.run.workFileName, "house");
    EXPECT_EQ(g.browser.saveAsMode, 0);

    // Another scene to merge, written beside it.
    Scene_Clear();
    Layer_NewFirst();
    strcpy(g.scene.First_Layer->name, "Roof");
    ASSERT_EQ(WorkFile_Save(root.file("qmr/work/sub/roof.qmr").c_str()), 1);
    Scene_Clear();
    Layer_NewFirst();
    strcpy(g.run.workFileName, "untitled");

    // OPEN: the browser is still in sub/; house.qmr is row 2 ([.] [..] first).
    Row(2);
    Ok();
    ASSERT_TRUE(Headless_RunSession([] { EXPECT_EQ(Com_Open(), 1); }));
    EXPECT_STREQ(g.scene.First_Layer->name, "Walls");
    EXPECT_NE(g.scene.First_Layer->first_object, nullptr);
    // MERGE roof.qmr: its layer joins.
    Row(3);
    Ok();
    ASSERT_TRUE(Headless_RunSession([] { EXPECT_EQ(Com_Merge(), 1); }));
    EXPECT_EQ(Layer_Count(), 2);
    EXPECT_STREQ(Layer_At(2)->name, "Roof");

    // OPEN of a titled scene asks first; Ctrl-C in the browser changes nothing.
    Headless_PushKey(3);
    ASSERT_TRUE(Headless_RunSession([] { EXPECT_EQ(Com_Open(), 1); }));
    EXPECT_EQ(Layer_Count(), 2);
    Row(2);
    Ok();
    Headless_PushText("N\n");
    ASSERT_TRUE(Headless_RunSession([] { EXPECT_EQ(Com_Open(), 1); }));
    EXPECT_NE(Headless_Transcript().find("\nOPEN> Save changes to <house>? <Yes,No> <N>: "), std::string::npos);
    EXPECT_EQ(Layer_Count(), 1);

    // A file that is no work file: the message, the scene kept.
    WriteFile(root.file("qmr/work/sub/zzz.qmr"), "not a work file");
    Row(4);
    Ok();
    Headless_PushText("N\n");
    ASSERT_TRUE(Headless_RunSession([] { EXPECT_EQ(Com_Open(), 1); }));
    EXPECT_NE(Headless_Transcript().find("...Can't Open or Import File!"), std::string::npos);
    EXPECT_EQ(Layer_Count(), 1);

    // IMPORT RAW: the browser's *.raw list, then the insertion point.
    WriteFile(root.file("qmr/work/sub/tri.raw"), "0 0 0 1 0 0 0 1 0\n");
    Row(2);
    Ok();
    Headless_PushText("\n");
    g.input.currentCommand = CMD_IMPORT_RAW;   // as the command loop sets it
    ASSERT_TRUE(Headless_RunSession([] { EXPECT_EQ(Com_ImportRaw(), 1); }));
    EXPECT_EQ(g.scene.First_Layer->first_object->kind, KIND_TRIANGLE);
    EXPECT_NE(Headless_Transcript().find("\nIMPORTRAW> Set Insertion point <0, 0, 0>: "), std::string::npos);
    Headless_PushKey(3);   // IMPORT DXF cancelled
    ASSERT_TRUE(Headless_RunSession([] { EXPECT_EQ(Com_ImportDxf(), 1); }));

    // SAVE AS cancelled: nothing written, and EXIT stays with the reason.
    g.input.currentCommand = CMD_EXIT;
    Headless_PushText("\n");
    Headless_PushKey(3);
    strcpy(g.run.workFileName, "untitled");
    ASSERT_TRUE(Headless_RunSession([] { EXPECT_EQ(Com_Exit(), 0); }));
    EXPECT_NE(Headless_Transcript().find("\nEXIT cancelled: the scene was not saved."), std::string::npos);
}

}  // namespace
