// The command loop in scripted headless sessions: replacing a waiting
// command, transparent commands inside a prompt, cancel, repeat, unknown
// names, and the file commands EXIT, NEW and CLEAR.
#include <filesystem>

#include <stdexcept>

#include "e2e/process.h"
#include "file_limit.h"
#include "input/session.h"

namespace {

class CommandLoopTest : public SessionTest {
  protected:
    // Names the scene "scene", saved as scene.qmr in dir; returns that path.
    std::string NameScene(const TempDir& dir) {
        strcpy(g.run.workFileName, "scene");
        snprintf(g.run.currentFilePath, sizeof g.run.currentFilePath, "%s", dir.file("scene.qmr").c_str());
        return dir.file("scene.qmr");
    }
    // Points the support directory at dir, whose command.dat is read afresh.
    void UseSupportDir(const TempDir& dir) {
        snprintf(g.config.SUPPORT_DIR, sizeof g.config.SUPPORT_DIR, "%s", dir.path().c_str());
        g.menus.commandsUnread = 1;
        g.menus.CommandTable.clear();
    }
};

// A transparent stand-in that asks its own question (so its prompt resets
// the input context the waiting command had set).
int g_transparentRuns = 0;
int g_transparentSawCommand = 0;
int FakeZoom() {
    g_transparentRuns++;
    g_transparentSawCommand = g.input.currentCommand;
    Input_SetKeywords("W,A", 0, 0);
    return Ask("\nZOOM> Window or All: ");
}

TEST_F(CommandLoopTest, MenuPickWhileACommandWaitsCancelsItAndStartsThePick) {
    Headless_PushText("POLYLINE\n0,0\n");
    PickMenu(213);   // CIRCLE while POLYLINE waits for its next point
    Headless_PushText("1,1\n5\n");
    EXPECT_FALSE(RunLoop());
    const std::string t = Headless_Transcript();
    EXPECT_NE(t.find("\nPOLYLINE> Next point: *cancel* \nCIRCLE> Center point: "), std::string::npos) << t;
    EXPECT_EQ(Count(t, "\nCommand: "), 2) << t;   // at the start and after CIRCLE, not in between
    ASSERT_EQ(Answers().size(), 4u);
    EXPECT_EQ(Answers()[1].ok, 0);                 // POLYLINE's prompt was replaced
    EXPECT_EQ(Answers()[2].command, 213);
    EXPECT_DOUBLE_EQ(Answers()[2].point.x, 1);
    EXPECT_DOUBLE_EQ(Answers()[2].point.y, 1);
    EXPECT_EQ(Answers()[3].kind, -3);
    EXPECT_DOUBLE_EQ(Answers()[3].number, 5);
    EXPECT_EQ(g.input.InputResult.lastCode, 213);
}

TEST_F(CommandLoopTest, HotKeyAndTransparentCommandsReturnToTheSamePrompt) {
    g_transparentRuns = 0;
    Command_Register(402, FakeZoom, 1);
    Headless_PushKey(26);   // Ctrl-Z: ZOOM in command.dat, nothing typed
    Headless_PushText("W\nCIRCLE\n1,1\nzoom\nA\n");
    PickMenu(423);   // the real TOP, from the pull-down
    Headless_PushText("zoom\n");
    Headless_PushKey(3);   // cancels the zoom only
    Headless_PushText("5\n");
    EXPECT_FALSE(RunLoop());
    const std::string t = Headless_Transcript();
    EXPECT_EQ(t.rfind("\nCommand: \nZOOM> Window or All: \nCommand: \nCIRCLE> Center point: ", 0), 0u) << t;
    EXPECT_NE(t.find("\nCIRCLE> Set Radius: \nZOOM> Window or All: \nCIRCLE> Set Radius: \nCIRCLE> Set Radius: "
                     "\nZOOM> Window or All: *cancel* \nCIRCLE> Set Radius: \nCommand: "),
              std::string::npos) << t;
    EXPECT_EQ(Count(t, "*cancel*"), 1) << t;
    EXPECT_EQ(g_transparentRuns, 3);
    EXPECT_EQ(g_transparentSawCommand, 402);
    ASSERT_EQ(Answers().size(), 5u);
    EXPECT_EQ(Answers()[0].kind, 1);               // W: keyword 1 of the zoom's list
    EXPECT_EQ(Answers()[2].kind, 2);               // A: keyword 2
    EXPECT_EQ(Answers()[3].ok, 0);                 // the cancelled zoom
    // The radius prompt got its number permission back after the zooms.
    EXPECT_EQ(Answers()[4].kind, -3);
    EXPECT_DOUBLE_EQ(Answers()[4].number, 5);
    // Inside a command a transparent one does not become the repeat code.
    EXPECT_EQ(g.input.InputResult.lastCode, 213);
}

TEST_F(CommandLoopTest, FunctionKeysSwitchAidsAndPromptAgain) {
    Viewport& v = g.view.Active_Viewport;
    v.GRID = 1;
    v.CENTER = 1;
    v.AXIS = 0;
    for (int f : {1, 2, 3, 4, 5, 6, 7, 8, 10}) Headless_PushKey(KEY_F(f));
    EXPECT_FALSE(RunLoop());
    EXPECT_EQ(Headless_Transcript(),
              "\nCommand: \nLargest available block (in bytes): (enough...) bytes"   // F1: no new prompt
              "\nSwitching to ACTUAL coordinates\nCommand: \nSwitching to POLAR coordinates\nCommand: "
              "\nSwitching to RELATIVE coordinates\nCommand: \nGRID = OFF\nCommand: \nCENTER = OFF\nCommand: "
              "\nAXIS = ON\nCommand: \nTEXT = OFF\nCommand: ");
    EXPECT_EQ(g.aids.coordsMode, 2);
    EXPECT_EQ(v.GRID, 0);
    EXPECT_EQ(v.AXIS, 1);
    EXPECT_EQ(g.aids.orthoOn, 1);
    for (int i = 1; i <= 4; i++) EXPECT_EQ(g.view.Viewports[i].title_on, 0) << i;
}

TEST_F(CommandLoopTest, SpaceAndEmptyEnterRepeatTheLastCommand) {
    Headless_PushText(" \n");   // nothing to repeat yet
    Headless_PushText("CIRCLE\n1,1\n5\n ");
    Headless_PushText("2,2\n ");   // inside CIRCLE: restarts it
    Headless_PushText("3,3\n4\n\n");   // Enter at "Command:" repeats too
    EXPECT_FALSE(RunLoop());
    const std::string t = Headless_Transcript();
    EXPECT_EQ(t.rfind("\nCommand: \nCIRCLE> Center point: ", 0), 0u) << t;
    EXPECT_NE(t.find("\nCommand: \nCIRCLE> Center point: \nCIRCLE> Set Radius: *cancel* \nCIRCLE> Center point: "),
              std::string::npos) << t;
    EXPECT_EQ(Count(t, "\nCIRCLE> Center point: "), 4) << t;
}

// A name typed inside a command replaces it, EXIT's question included.
TEST_F(CommandLoopTest, UnknownNamesAndTypedNameInsideACommand) {
    Headless_PushText("frobnicate\nEXIT\nCIRCLE\npolyline\n");
    EXPECT_FALSE(RunLoop());
    EXPECT_EQ(Headless_Transcript(),
              "\nCommand: \nUnknown Command\a\nCommand: \nEXIT> Save changes to <qmr>? <Yes,No> <Yes>: *cancel* "
              "\nCIRCLE> Center point: *cancel* \nPOLYLINE> Start point: ");
    EXPECT_EQ(g.input.textLength, 0);   // the line was cleared after the miss
}

TEST_F(CommandLoopTest, CommandNamesMatchInAnyCaseButExactLength) {
    TempDir dir;
    WriteFile(dir.file("command.dat"), "// test table\n(Zoom,402)\n(CIRCLE,213)\n");
    UseSupportDir(dir);
    EXPECT_EQ(Command_Lookup("ZOOM"), 402);
    EXPECT_EQ(Command_Lookup("zooms"), 0);
    g_transparentRuns = 0;
    Command_Register(402, FakeZoom, 1);
    Headless_PushText("zoo\nZoOm\nW\n");
    EXPECT_FALSE(RunLoop());
    EXPECT_EQ(Headless_Transcript(),
              "\nCommand: \nUnknown Command\a\nCommand: \nZOOM> Window or All: \nCommand: ");
    EXPECT_EQ(g_transparentRuns, 1);
    EXPECT_EQ(g.input.InputResult.lastCode, 402);   // run from "Command:": the repeat code
}

TEST_F(CommandLoopTest, MissingCommandTableKnowsNothingAndIsTriedAgain) {
    TempDir dir;
    UseSupportDir(dir);
    EXPECT_EQ(Command_Lookup("EXIT"), 0);
    EXPECT_EQ(Command_HotKey(18), 0);
    WriteFile(dir.file("command.dat"), "(EXIT,101,18)\n");
    EXPECT_EQ(Command_Lookup("exit"), 101);   // read at the next lookup
    EXPECT_EQ(Command_HotKey(18), 101);
}

TEST_F(CommandLoopTest, LongCommandTableGrows) {
    TempDir dir;
    std::string text;
    for (int i = 0; i < 500; i++) text += "(NAME" + std::to_string(i) + "," + std::to_string(1000 + i) + ")\n";
    text += "(" + std::string(300, 'Q') + ",77)\n";   // over-long line: cut at 254 characters
    text += "(noclose,5\n(,6)\nNOPAREN\n(\"unbalanced,7)\n(onlyname)\n";
    WriteFile(dir.file("command.dat"), text);
    UseSupportDir(dir);
    EXPECT_EQ(Command_Lookup("name0"), 1000);
    EXPECT_EQ(Command_Lookup("NAME450"), 1450);
    EXPECT_EQ(Command_Lookup("name499"), 1499);
    EXPECT_EQ(Command_Lookup("noclose"), 0);
    EXPECT_EQ(Command_Lookup("onlyname"), 0);
    EXPECT_EQ(Command_Lookup(""), 6);   // an empty name is still a name
    EXPECT_EQ(g.menus.CommandTable.size(), 501u);
}

TEST_F(CommandLoopTest, SideMenuCommandAndCancelRow) {
    PickSide(3);    // "File" -> menu 1001
    PickSide(6);    // its "Save as": the browser, left with Ctrl-C, counts as cancelled
    Headless_PushKey(3);
    PickSide(0);    // row 0: cancel, and menu 1000 again
    EXPECT_FALSE(RunLoop());
    EXPECT_EQ(g.menus.side.shown, 1000);
    EXPECT_EQ(Headless_Transcript(), "\nCommand: *cancel* \nCommand: ");
}

TEST_F(CommandLoopTest, SideMenuValueRowsFeedThePrompt) {
    // Menu 1000 row 10 leads to 1020: row 3 NUMBER 0,0,0, row 7 NUMBER 5,
    // row 14 STRING, row 17 KEYWORD Y.
    PickSide(10);
    PickSide(17);   // a keyword at "Command:" is refused
    PickSide(14);   // a string there is ignored
    Headless_PushText("CIRCLE\n");
    PickSide(3);
    PickSide(14);   // the radius takes neither strings nor keywords
    PickSide(17);
    PickSide(7);
    EXPECT_FALSE(RunLoop());
    EXPECT_EQ(Headless_Transcript(),
              "\nCommand: \nCan't accept a KEYWORD, or Input value must match KEYWORD\a\nCommand: "
              "\nCIRCLE> Center point: \nCIRCLE> Set Radius: \nCan't accept a STRING value\nCIRCLE> Set Radius: "
              "\nCan't accept a KEYWORD, or Input value must match KEYWORD\a\nCIRCLE> Set Radius: \nCommand: ");
    ASSERT_EQ(Answers().size(), 2u);
    EXPECT_EQ(Answers()[0].kind, 0);
    EXPECT_DOUBLE_EQ(Answers()[0].point.x, 0);
    EXPECT_EQ(Answers()[1].kind, -3);
    EXPECT_DOUBLE_EQ(Answers()[1].number, 5);
}

// --- file commands ---

TEST_F(CommandLoopTest, ExitSavesOnEnterOrYesOnly) {
    TempDir dir;
    const std::string saved = NameScene(dir);
    Headless_PushText("EXIT\nN\n");
    EXPECT_TRUE(RunLoop());
    EXPECT_FALSE(FileExists(saved));
    Headless_PushText("EXIT\n");
    PickSide(5);   // the "No" row of menu 1512
    EXPECT_TRUE(RunLoop());
    EXPECT_FALSE(FileExists(saved));
    Headless_PushText("EXIT\n");
    PickSide(4);   // "Yes"
    EXPECT_TRUE(RunLoop());
    EXPECT_TRUE(FileExists(saved));
    std::filesystem::remove(saved);
    Headless_ClearTranscript();
    Headless_PushText("EXIT\n\n");
    EXPECT_TRUE(RunLoop());
    EXPECT_TRUE(FileExists(saved));
    EXPECT_EQ(g.menus.side.shown, 1512);
    EXPECT_EQ(Headless_Transcript(),
              "\nCommand: \nEXIT> Save changes to <scene>? <Yes,No> <Yes>: \nSaving <scene>...");
    EXPECT_EQ(g.run.restartFlag, 0);
}

TEST_F(CommandLoopTest, NewEndsTheLoopWithRestartAndSavesOnlyOnYes) {
    TempDir dir;
    const std::string saved = NameScene(dir);
    Headless_PushText("NEW\n\n");
    EXPECT_TRUE(RunLoop());
    EXPECT_EQ(g.run.restartFlag, 1);
    EXPECT_FALSE(FileExists(saved));
    EXPECT_EQ(Headless_Transcript(), "\nCommand: NEW> Save changes to <scene>? <Yes,No> <N>: ");
    g.run.restartFlag = 0;
    Headless_PushText("NEW\ny\n");
    EXPECT_TRUE(RunLoop());
    EXPECT_EQ(g.run.restartFlag, 1);
    EXPECT_TRUE(FileExists(saved));
}

TEST_F(CommandLoopTest, ClearAsksAndOnlyYesEmptiesTheScene) {
    ASSERT_NE(AddPolyline({{0, 0, 0}, {1, 0, 0}}), nullptr);
    Headless_PushText("CLEAR\nN\nCLEAR\n\n");
    EXPECT_FALSE(RunLoop());
    EXPECT_NE(g.scene.First_Layer->first_object, nullptr);
    EXPECT_EQ(Count(Headless_Transcript(), "\nCLEAR> Are you Sure you want to start from scratch? <Y/N> <N>: "), 2);
    Headless_PushText("CLEAR\nY\n");
    EXPECT_FALSE(RunLoop());
    ASSERT_NE(g.scene.First_Layer, nullptr);
    EXPECT_EQ(g.scene.First_Layer->first_object, nullptr);
    EXPECT_EQ(g.scene.First_Layer->next, nullptr);
}

TEST_F(CommandLoopTest, CtrlCIsIgnoredAtCommandAndCancelsInsideDeselectingWithAutoDeselect) {
    Object* o = AddPolyline({{0, 0, 0}, {1, 0, 0}});
    ASSERT_NE(o, nullptr);
    o->selected = 1;
    g.scene.Selected_Count = 1;
    g.aids.Auto_Deselect = 0;
    Headless_PushKey(3);
    Headless_PushText("CIRCLE\n");
    Headless_PushKey(3);
    EXPECT_FALSE(RunLoop());
    EXPECT_EQ(Headless_Transcript(), "\nCommand: \nCIRCLE> Center point: *cancel* \nCommand: ");
    EXPECT_EQ(o->selected, 1);
    g.aids.Auto_Deselect = 1;
    Headless_PushText("CIRCLE\n");
    Headless_PushKey(3);
    EXPECT_FALSE(RunLoop());
    EXPECT_EQ(o->selected, 0);
    EXPECT_EQ(g.scene.Selected_Count, 0);
}

// The export commands are reached by their command.dat names.
TEST_F(CommandLoopTest, TypedExportNamesWriteTheirFiles) {
    TempDir work;
    snprintf(g.config.WORK_DIR, sizeof g.config.WORK_DIR, "%s", work.path().c_str());
    snprintf(g.run.workFileName, sizeof g.run.workFileName, "scene");
    TriangleData t{{{0, 0, 0}, {1, 0, 0}, {0, 1, 0}}};
    Add_Triangle(&t);
    Headless_PushText("EXPDXF\nexpraw\n");
    EXPECT_FALSE(RunLoop());   // input runs out at the next "Command: "
    EXPECT_NE(ReadFile(work.file("scene.dxf")).find("3DFACE"), std::string::npos);
    EXPECT_NE(ReadFile(work.file("scene.raw")).find("0 0 0 1 0 0 0 1 0"), std::string::npos);
}

// One request runs its command exactly once, whatever the command does with
// the code that started it: one that asks nothing used to run for ever.
int g_countedRuns = 0;
int Counted() {
    if (++g_countedRuns > 3) throw std::runtime_error("the command ran again by itself");
    return 1;
}

TEST_F(CommandLoopTest, EachRequestRunsItsCommandOnce) {
    TempDir dir, scenes;
    WriteFile(dir.file("command.dat"), "(COUNT,5000)\n(SYSINFO,511)\n(EXPORTPOV,108)\n");
    UseSupportDir(dir);
    g_countedRuns = 0;
    Command_Register(5000, Counted, 0);
    Headless_PushText("COUNT\n");
    EXPECT_FALSE(RunLoop());
    EXPECT_EQ(g_countedRuns, 1);
    EXPECT_EQ(Headless_Transcript(), "\nCommand: \nCommand: ");

    Headless_ClearTranscript();
    testing::internal::CaptureStderr();
    Headless_PushText("SYSINFO\n");
    EXPECT_FALSE(RunLoop());
    EXPECT_EQ(testing::internal::GetCapturedStderr(),
              "Sorry, this kind of information is not availablein the UNIX version\n");
    EXPECT_EQ(Headless_Transcript(), "\nCommand: \nCommand: ");

    // A scene file that does not exist yet is written without the question
    // whether to overwrite the file just written.
    snprintf(g.config.Scenes_Dir, sizeof g.config.Scenes_Dir, "%s", scenes.path().c_str());
    Headless_ClearTranscript();
    Headless_PushText("EXPORTPOV\n");
    EXPECT_FALSE(RunLoop());
    EXPECT_EQ(Headless_Transcript(), "\nCommand: \nMaking <qmr.pov>\nCommand: ");
    EXPECT_TRUE(FileExists(scenes.file("qmr.pov")));
}

// EXIT and NEW answered Yes go no further when the save does not happen:
// the reason is shown and the program stays at "Command:" with the scene.
TEST_F(CommandLoopTest, ExitAndNewStayWhenTheirSaveDidNotHappen) {
    ASSERT_NE(AddPolyline({{0, 0, 0}, {1, 0, 0}}), nullptr);
    strcpy(g.run.workFileName, "untitled");   // no name: SAVE AS asks for one, the user cancels
    Headless_PushText("EXIT\n\n");
    Headless_PushKey(3);   // the file browser cancelled
    Headless_PushText("NEW\nY\n");
    Headless_PushKey(3);
    EXPECT_FALSE(RunLoop());   // still running when the input ran out
    EXPECT_EQ(Headless_Transcript(),
              "\nCommand: \nEXIT> Save changes to <untitled>? <Yes,No> <Yes>: "
              "\nEXIT cancelled: the scene was not saved.*cancel* "
              "\nCommand: NEW> Save changes to <untitled>? <Yes,No> <N>: "
              "\nNEW cancelled: the scene was not saved.*cancel* \nCommand: ");
    EXPECT_EQ(g.run.restartFlag, 0);
    EXPECT_NE(g.scene.First_Layer->first_object, nullptr);

    // A named scene whose write fails: the writer's message, a key, SAVE's
    // message, EXIT's reason; the old file is as it was.
    TempDir dir;
    const std::string path = NameScene(dir);
    WriteFile(path, "old scene");
    Headless_ClearTranscript();
    Headless_PushText("EXIT\nY\n");
    Headless_PushKey('x');   // "...Press any key!"
    {
        FileSizeLimit limit(100);
        EXPECT_FALSE(RunLoop());
    }
    EXPECT_EQ(Headless_Transcript(),
              "\nCommand: \nEXIT> Save changes to <scene>? <Yes,No> <Yes>: \nSaving <scene>..."
              "\nUnable to save file, Out of disk space...Press any key!\nUnable to Save File!"
              "\nEXIT cancelled: the scene was not saved.*cancel* \nCommand: ");
    EXPECT_EQ(ReadFile(path), "old scene");
    EXPECT_FALSE(FileExists(dir.file("$cene.qmr")));
}

}  // namespace
