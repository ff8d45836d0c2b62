// UNDO and REDO through the command loop: every command that changes the
// scene is run from a saved scene, undone and redone, and the scene is
// compared byte for byte through the work-file writer each time; then the
// bounds (steps, bytes), out of memory while recording, the empty lists and
// the redraw.
#include <sys/stat.h>

#include <functional>

#include "cmd/poly_session.h"
#include "cmd/undo.h"
#include "ui/dialog_support.h"

namespace {

class UndoTest : public PolySessionTest {
  protected:
    void SetUp() override {
        PolySessionTest::SetUp();
        snprintf(g.config.WORK_DIR, sizeof g.config.WORK_DIR, "%s", dir.path().c_str());
        snprintf(g.browser.browseDir, sizeof g.browser.browseDir, "%s", dir.path().c_str());
    }

    // The scene as the work-file writer writes it.
    std::string Bytes() {
        const std::string path = dir.file("probe.qmr");
        EXPECT_EQ(WorkFile_Save(path.c_str()), 1);
        return ReadFile(path);
    }

    // Plays a script from "Command:"; true when it ended back at "Command:".
    bool Play(const std::string& script) {
        PlayScript(script);
        RunLoop();
        return g.input.currentCommand == 0 && Headless_Pending() == 0;
    }

    // A profile line, a closed square and a triangle on the first layer, a
    // second layer with a sphere; the square is selected.
    static void BaseScene() {
        Scene_Clear();
        Layer* first = Layer_NewFirst();
        AddPolyline({{0, 0, 0}, {2, 0, 0}});
        Object* square = AddPolyline({{4, 0, 4}, {6, 0, 4}, {6, 0, 6}, {4, 0, 6}});
        ((PolylineData*)square->data)->poly_flags |= 1;   // closed
        TriangleData t{{{-4, 0, -4}, {-3, 0, -4}, {-4, 0, -3}}};
        Add_Triangle(&t);
        Layer* second = Layer_Append();
        strcpy(second->name, "Second");
        g.scene.Current_Layer = second;
        PrimitiveData sphere{};
        sphere.prim_type = 1;
        sphere.scale = {1, 1, 1};
        sphere.translate = {-5, 0, 5};
        Add_Primitive(&sphere);
        g.scene.Current_Layer = first;
        Object_SetSelected(square, 1, first);
    }

    TempDir dir;
};

struct Row {
    const char* script;                 // from "Command:" back to "Command:"
    std::function<void()> more = {};    // files or clicks the command needs
    std::function<void()> prepare = {}; // changes to the base scene first
};

// Every command that changes the scene, with its answers. Points are typed;
// "{x,z}" clicks an object; dialogs are clicked through their files.
TEST_F(UndoTest, EveryCommandUndoneAndRedoneByteForByte) {
    const Row rows[] = {
        {"SPHERE\n1,0,2\n3\n\n"},
        {"CONE\n0,0,0\n5\n2\n\n\n"},
        {"CYLINDER\n0,1,0\n3\n0.5\n\n"},
        {"TORUS\n0,0,0\n3\n1\n\n"},
        {"DISC\n1,0,1\n2.5\n\n"},
        {"PLANE\n0,0,1\n2\n"},
        {"CUBE\n1,2,3\n4\n\n\n"},
        {"HEIGHTFIELD\n0,0,0\n1\n2\n3\n"},
        {"POINTLIGHT\n1,5,2\n"},
        {"AREALIGHT\n0,5,0\n1,0,1\n2\n3\n"},
        {"SPOTLIGHT\n0,9,0\n0,0,0\n40\n\n"},
        {"CAMERA\n9,9,9\n1,1,1\n"},
        {"POLYLINE\n0,0,8\n3,0,8\n3,0,9\n\n\x03"},
        {"CIRCLE\n0,0,0\n0,0,2\n4\n"},
        {"ARC\n0,0,0\n2\n300\n60\n4\n"},
        {"EXTRUDE\n{1,0}0,0,0\n0,5,0\n"},
        {"REVOLUTION\n{1,0}0,0,0\n0,0,1\n"},
        {"CONE-SWEEP\n{1,0}1,3,1\n"},
        {"THICKEN\n{1,0}0.5\n\n3\n"},
        {"WALL\n{1,0}\n1\n"},
        {"RULSURF\n{1,0}{5,4}3\n3\n"},
        {"COONS\n{1,0}{2,1}{1,2}{0,1}3\n3\n", {}, [] {   // the profile line and three more make a square
             AddPolyline({{2, 0, 0}, {2, 0, 2}});
             AddPolyline({{2, 0, 2}, {0, 0, 2}});
             AddPolyline({{0, 0, 2}, {0, 0, 0}});
         }},
        {"JOIN\n{1,0}{2,-2}", {}, [] { AddPolyline({{2, 0, 0}, {2, 0, -3}}); }},
        {"PARRAY\n{1,0}{-3.5,-4}E\n3\n"},
        {"MOVE\n0,0,0\n@3,0,-1\n"},
        {"COPY\n0,0,0\n0,2,0\n"},
        {"ROTATE\n0,0,0\n90\n"},
        {"SCALE\n0,0,0\n2\n"},
        {"MIRROR\n0,0,0\n0,0,1\nY\n"},
        {"ARRAY\nP\n3\n0,0,0\nF\n"},
        {"GRAVITY\n-1\n\n1,0,0\n"},
        {"ERASE\n\n"},
        {"EXPLODE\n\n", {}, [] {   // the selected square made an extrusion, which explodes into faces
             PolylineData* p = (PolylineData*)g.scene.First_Layer->first_object->next->data;
             p->form = FORM_EXTRUSION;
             p->param2 = {0, 2, 0};
         }},
        {"CHLAYER\n", {}, [] { g.scene.Current_Layer = g.scene.First_Layer->next; }},
        {"ASSIGN\nN\n1\n"},
        {"EDIT\n{1,0}C\nN\nM\n5,0,5\nE\n"},   // one POLYLINE Edit session: one step
        {"CLEAR\nY\n"},
        {"LAYERS\n", [] {
             Dlg_Type("layers.dlg", 10, "Renamed\n");
             Dlg_Click("layers.dlg", "TEXTBOX", 9);   // CSG: UNION -> MERGE
             Dlg_Click("layers.dlg", "BUTTON", 1);
         }},
        {"AIDS\n", [] {
             Dlg_Click("variable.dlg", "CHECK", 27);   // Auto deselect, kept in the work file
             Dlg_Click("variable.dlg", "BUTTON", 1);
         }},
        {"FOG\n", [] {
             Dlg_Click("fog.dlg", "CHECK", 3);   // Fog on
             Dlg_Click("fog.dlg", "BUTTON", 1);
         }},
        {"MERGE\n", [] {
             Dlg_Type("browser.dlg", 11, "other.qmr\n");
             Dlg_Click("browser.dlg", "BUTTON", 1);
         }},
        {"IMPDXF\n", [] {
             Dlg_Type("browser.dlg", 11, "face.dxf\n");
             Dlg_Click("browser.dlg", "BUTTON", 1);
         }},
        {"PCUBE\n-13,0,-6\n2.5\n\n\n"},
        {"PYRAMID\n-7.5,0,-5\n3\n3\n3.5\n"},
        {"WEDGE\n-3,0,-6\n2.5\n3\n3\n"},
        {"FACE\n0,0,-5\n3,0,-5\n3,3,-5\n0,3,-5\n"},
        {"TRIANGLE\n4,0,-5\n7,0,-5\n5.5,3,-5\n"},
        {"MESH\n9,0,-6\n13,1.5,-6\n13,0,-3\n9,2,-3\n6\n6\n"},
        {"STAIRCASE\n-10,0,1\n0.3\n0.6\n2.6\n12\n"},
        {"SCREWTHREAD\n-3.5,0,1\n5\n0.9\n0.45\n0.15\n6\n24\n"},
        {"SPRING\n2,0,1\n2.6\n0.3\n0.4\n0\n6\n15\n"},
        {"BEZIER\n", [] {
             Dlg_Click("bezier.dlg", "SHAPE", 3);   // a sphere
             Headless_PushText("-4.5,0,8\n2\n");
         }},
        {"OPTIONS\n", [] {
             Dlg_Click("options.dlg", "CHECK", 6);   // Antialias, kept in the work file
             Dlg_Click("options.dlg", "BUTTON", 1);
         }},
        {"TRANSFORM\n",
         [] {   // the sphere moved by the dialog
             Dlg_Type("trans.dlg", 2, "3\n");
             Dlg_Click("trans.dlg", "BUTTON", 1);
         },
         [] {   // the dialog is for primitives: the sphere selected instead of the square
             Layer *first = g.scene.First_Layer, *second = first->next;
             Object_SetSelected(first->first_object->next, 0, first);
             Object_SetSelected(second->first_object, 1, second);
         }},
        {"PROPERTIES\n", [] {   // the selected square casts no shadow
             Dlg_Click("general.dlg", "CHECK", 2);
             Dlg_Click("general.dlg", "BUTTON", 1);
         }},
        {"IMPRAW\n", [] {
             Dlg_Type("browser.dlg", 11, "tri.raw\n");
             Dlg_Click("browser.dlg", "BUTTON", 1);
             Headless_PushText("\n");   // insertion point
         }},
    };
    // The file MERGE reads: one layer with a cube.
    {
        Scene_Clear();
        Layer_NewFirst();
        strcpy(g.scene.First_Layer->name, "Merged");
        PrimitiveData cube{};
        cube.prim_type = 4;
        cube.size = cube.scale = {1, 1, 1};
        Add_Primitive(&cube);
        ASSERT_EQ(WorkFile_Save(dir.file("other.qmr").c_str()), 1);
        WriteFile(dir.file("tri.raw"), "0 0 0 1 0 0 0 1 0\n");
        WriteFile(dir.file("face.dxf"),
                  "  0\nSECTION\n  2\nENTITIES\n  0\n3DFACE\n  8\nA\n"
                  "  10\n0\n  20\n0\n  30\n0\n  11\n1\n  21\n0\n  31\n0\n"
                  "  12\n1\n  22\n1\n  32\n0\n  13\n0\n  23\n1\n  33\n0\n  0\nENDSEC\n  0\nEOF\n");
    }
    for (const Row& r : rows) {
        SCOPED_TRACE(r.script);
        BaseScene();
        if (r.prepare) r.prepare();
        Undo_Clear();
        const int selected = g.scene.Selected_Count;
        const std::string before = Bytes();
        PlayScript(r.script);
        if (r.more) r.more();
        RunLoop();
        ASSERT_EQ(g.input.currentCommand, 0) << "waiting at " << g.input.promptText;
        ASSERT_EQ(Headless_Pending(), 0);
        const std::string after = Bytes();
        ASSERT_NE(after, before) << "the command changed nothing";
        EXPECT_EQ(Undo_Count(), 1);

        ASSERT_TRUE(Play("UNDO\n"));
        EXPECT_EQ(Bytes(), before);
        EXPECT_EQ(g.scene.Selected_Count, selected);
        EXPECT_EQ(Undo_Count(), 0);
        EXPECT_EQ(Redo_Count(), 1);

        ASSERT_TRUE(Play("REDO\n"));
        EXPECT_EQ(Bytes(), after);
        EXPECT_EQ(Undo_Count(), 1);
        EXPECT_EQ(Redo_Count(), 0);
    }
}

// Steps go back in order and forward again; a new change drops the redo
// list; commands that only look or select leave no step.
TEST_F(UndoTest, OrderRedoDroppedAndLookingCommands) {
    BaseScene();
    Undo_Clear();
    const std::string s0 = Bytes();
    ASSERT_TRUE(Play("SPHERE\n1,0,2\n3\n\n"));
    const std::string s1 = Bytes();
    ASSERT_TRUE(Play("MOVE\n0,0,0\n@1,0,0\n"));
    const std::string s2 = Bytes();
    ASSERT_TRUE(Play("ZOOMOUT\nREDRAW\nDESELECT\nEXPORTPOV\n\x03"));
    EXPECT_EQ(Undo_Count(), 2);

    Headless_ClearTranscript();
    ASSERT_TRUE(Play("UNDO\n"));
    EXPECT_EQ(Bytes(), s1);
    ASSERT_TRUE(Play("UNDO\n"));
    EXPECT_EQ(Bytes(), s0);
    ASSERT_TRUE(Play("UNDO\n"));
    EXPECT_EQ(Bytes(), s0);
    EXPECT_EQ(Headless_Transcript(),
              "\nCommand: \nUndone: MOVE\nCommand: \nCommand: \nUndone: SPHERE\nCommand: "
              "\nCommand: \nNothing to undo\nCommand: ");
    ASSERT_TRUE(Play("REDO\n"));
    EXPECT_EQ(Bytes(), s1);
    // A new change: MOVE can no longer be redone.
    ASSERT_TRUE(Play("POINTLIGHT\n1,5,2\n"));
    Headless_ClearTranscript();
    ASSERT_TRUE(Play("REDO\n"));
    EXPECT_EQ(Headless_Transcript(), "\nCommand: \nNothing to redo\nCommand: ");
    EXPECT_NE(Bytes(), s2);
}

// The hot keys: Ctrl-B undoes, Ctrl-Y redoes; neither types a character.
TEST_F(UndoTest, HotKeys) {
    BaseScene();
    Undo_Clear();
    const std::string s0 = Bytes();
    ASSERT_TRUE(Play("POINTLIGHT\n1,5,2\n"));
    const std::string s1 = Bytes();
    Headless_PushKey(2);
    ASSERT_TRUE(Play(""));
    EXPECT_EQ(Bytes(), s0);
    Headless_PushKey(25);
    ASSERT_TRUE(Play(""));
    EXPECT_EQ(Bytes(), s1);
    EXPECT_EQ(g.input.textLength, 0);
}

// Nothing to undo after start-up and after a load; the views are drawn
// again after each step.
TEST_F(UndoTest, NothingAfterLoadAndViewsRedrawn) {
    BaseScene();
    Undo_Clear();
    ASSERT_EQ(WorkFile_Save(dir.file("saved.qmr").c_str()), 1);
    Headless_ClearTranscript();
    ASSERT_TRUE(Play("UNDO\n"));
    EXPECT_EQ(Headless_Transcript(), "\nCommand: \nNothing to undo\nCommand: ");

    ASSERT_TRUE(Play("POINTLIGHT\n1,5,2\n"));
    Headless_ClearSegments();
    ASSERT_TRUE(Play("UNDO\n"));
    EXPECT_GT(Headless_Segments().size(), 20u);   // every view: frame, grid, objects
    ASSERT_TRUE(Play("REDO\n"));

    // OPEN (saved.qmr typed in the browser; no question for an untitled scene).
    strcpy(g.run.workFileName, "untitled");
    Headless_PushText("OPEN\n");
    Dlg_Type("browser.dlg", 11, "saved.qmr\n");
    Dlg_Click("browser.dlg", "BUTTON", 1);
    RunLoop();
    ASSERT_EQ(g.input.currentCommand, 0);
    EXPECT_STREQ(g.run.workFileName, "saved");
    Headless_ClearTranscript();
    ASSERT_TRUE(Play("UNDO\n"));
    EXPECT_EQ(Headless_Transcript(), "\nCommand: \nNothing to undo\nCommand: ");
}

// At most Undo_Steps steps; the snapshots within Undo_Memory bytes.
TEST_F(UndoTest, DepthAndByteBounds) {
    BaseScene();
    Undo_Clear();
    g.config.Undo_Steps = 3;
    for (int i = 0; i < 5; i++) ASSERT_TRUE(Play("POINTLIGHT\n1,5,2\n"));
    EXPECT_EQ(Undo_Count(), 3);
    for (int i = 0; i < 4; i++) ASSERT_TRUE(Play("UNDO\n"));
    int lights = 0;
    for (const Object* o = g.scene.First_Layer->first_object; o; o = o->next) lights += o->kind == KIND_LIGHT;
    EXPECT_EQ(lights, 2);   // five made, three undone
    EXPECT_EQ(Redo_Count(), 3);

    // A budget of two and a half snapshots keeps two steps, whichever list.
    Undo_Clear();
    WfSnapshot one;
    ASSERT_EQ(WorkFile_Snapshot(&one), 1);
    g.config.Undo_Steps = 50;
    g.config.Undo_Memory = (long)(one.size * 5 / 2);
    WorkFile_FreeSnapshot(&one);
    for (int i = 0; i < 4; i++) ASSERT_TRUE(Play("POINTLIGHT\n1,5,2\n"));
    EXPECT_EQ(Undo_Count(), 2);
    EXPECT_LE(Undo_Bytes(), (size_t)g.config.Undo_Memory);
    ASSERT_TRUE(Play("UNDO\n"));
    EXPECT_EQ(Undo_Count() + Redo_Count(), 2);
    EXPECT_LE(Undo_Bytes(), (size_t)g.config.Undo_Memory);
}

// Out of memory while the step is recorded: the oldest steps go, the
// command runs all the same, and the user is told once.
TEST_F(UndoTest, OutOfMemoryDropsOldestStepsOnce) {
    BaseScene();
    Undo_Clear();
    ASSERT_TRUE(Play("POINTLIGHT\n1,5,2\n"));
    ASSERT_TRUE(Play("POINTLIGHT\n2,5,2\n"));
    ASSERT_EQ(Undo_Count(), 2);
    const char* kDropped = "\nLow on memory: the oldest undo steps were dropped";

    Headless_ClearTranscript();
    g.workfile.Snapshot_Fail = 1;   // the snapshot's first block
    ASSERT_TRUE(Play("POINTLIGHT\n3,5,2\n"));
    EXPECT_EQ(Count(Headless_Transcript(), kDropped), 1);
    EXPECT_EQ(Undo_Count(), 2);   // the oldest went, this one came
    const Object* newest = g.scene.First_Layer->first_object;
    ASSERT_EQ(newest->kind, KIND_LIGHT);
    EXPECT_EQ(((const LightData*)newest->data)->position.x, 3);

    g.workfile.Snapshot_Fail = 1;
    ASSERT_TRUE(Play("POINTLIGHT\n4,5,2\n"));
    EXPECT_EQ(Count(Headless_Transcript(), kDropped), 1);   // said once

    // Nothing left to drop: the command still runs, without a step.
    Undo_Clear();
    Headless_ClearTranscript();
    g.workfile.Snapshot_Fail = 1;
    ASSERT_TRUE(Play("POINTLIGHT\n5,5,2\n"));
    EXPECT_EQ(Count(Headless_Transcript(), kDropped), 1);
    EXPECT_EQ(Undo_Count(), 0);
    EXPECT_EQ(((const LightData*)g.scene.First_Layer->first_object->data)->position.x, 5);
    EXPECT_EQ(g.workfile.Snapshot_Fail, 0);
}

}  // namespace
