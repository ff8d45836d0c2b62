// The real program under Xvfb, driven through its dialogs with xdotool: a
// new scene gets a layer name in the layers dialog and is saved with SAVE AS
// into a subdirectory chosen in the browser; the program is left and
// started again, the scene opened, another merged, a DXF written by ezdxf
// and a RAW file imported, and the whole saved. The files are checked.
#include <set>

#include "e2e/program_fixture.h"

namespace {

using FileDialogs = ProgramTest;

TEST_F(FileDialogs, SaveAsQuitOpenMergeAndImport) {
    WriteFile(root.file("cwd/qmr.ini"), Config());
    std::filesystem::create_directories(root.file("qmr/work/sub"));
    opt.timeout_s = 90;

    // First run: name the layer, SAVE AS sub/myscene.qmr, EXIT without saving again.
    Act("Command: ", Type("LAYERS") + Click("layers.dlg", "TEXTBOX", 10) + Type("Walls") +
                         Click("layers.dlg", "BUTTON", 1) + " sleep 1;" + Type("SAVEAS") +
                         Click("browser.dlg", "TEXTBOX", 22) +   // [sub]: after [.] and [..]
                         Click("browser.dlg", "TEXTBOX", 11) + Type("myscene") +
                         Click("browser.dlg", "BUTTON", 1));
    Act("Saving <", Type("EXIT"));
    Act("<Yes>: ", Type("N"));
    RunResult r = Run({}, true);
    ASSERT_FALSE(r.timed_out) << r.out;
    ASSERT_EQ(r.status, 0) << r.out;
    const std::string scene = root.file("qmr/work/sub/myscene.qmr");
    ASSERT_TRUE(FileExists(scene)) << r.out;
    EXPECT_NE(r.out.find("\nEXIT> Save changes to <myscene>? <Yes,No> <Yes>: "), std::string::npos) << r.out;

    // What the second run merges and imports, beside it.
    ASSERT_NE(Layer_NewFirst(), nullptr);
    strcpy(g.scene.First_Layer->name, "Roof");
    ASSERT_EQ(WorkFile_Save(root.file("qmr/work/sub/other.qmr").c_str()), 1);
    State_Reset();
    RunOptions py;
    RunResult dxf = RunProcess({"/usr/bin/python3", "-c",
                                "import ezdxf, sys\n"
                                "doc = ezdxf.new('R12')\n"
                                "doc.layers.new('GARDEN', dxfattribs={'color': 2})\n"
                                "doc.modelspace().add_3dface([(0,0,0),(4,0,0),(4,4,0),(0,4,2)], "
                                "dxfattribs={'layer': 'GARDEN'})\n"
                                "doc.saveas(sys.argv[1])\n",
                                root.file("qmr/work/sub/model.dxf")},
                               py);
    ASSERT_EQ(dxf.status, 0) << dxf.out;
    WriteFile(root.file("qmr/work/sub/tri.raw"), "Pyramid\n0 0 0 1 0 0 0 1 0\n0 0 0 0 1 0 0 0 1\n");

    // Second run: OPEN it, MERGE other.qmr, IMPORT the DXF and the RAW file, SAVE, EXIT.
    opt.actions.clear();
    Act("Command: ", Type("OPEN") + Click("browser.dlg", "TEXTBOX", 22) +   // [sub]
                         Click("browser.dlg", "TEXTBOX", 22) +               // myscene.qmr
                         Click("browser.dlg", "BUTTON", 1) + " sleep 1.5;" + Type("MERGE") +
                         Click("browser.dlg", "TEXTBOX", 23) +               // other.qmr
                         Click("browser.dlg", "BUTTON", 1) + " sleep 1.5;" + Type("IMPDXF") +
                         Click("browser.dlg", "TEXTBOX", 22) +               // model.dxf
                         Click("browser.dlg", "BUTTON", 1));
    Act("(Y): ", Type(""));
    Act("(Y): ", Type(""));
    Act("(Y): ", Type(""));
    Act("Command: ", Type("IMPRAW") + Click("browser.dlg", "TEXTBOX", 22) +   // tri.raw
                         Click("browser.dlg", "BUTTON", 1));
    Act("Insertion point", Type(""));
    Act("Command: ", Type("SAVE"));
    Act("Saving <myscene>...", Type("EXIT"));
    Act("<Yes>: ", Type("N"));
    r = Run({}, true);
    ASSERT_FALSE(r.timed_out) << r.out;
    ASSERT_EQ(r.status, 0) << r.out;
    EXPECT_EQ(r.out.find("Can't Open"), std::string::npos) << r.out;

    testing::internal::CaptureStdout();
    ASSERT_EQ(WorkFile_Load(scene.c_str()), 1);
    testing::internal::GetCapturedStdout();
    std::set<std::string> names;
    int triangles = 0, faces = 0;
    for (Layer* l = g.scene.First_Layer; l; l = l->next) {
        names.insert(l->name);
        for (Object* o = l->first_object; o; o = o->next) {
            triangles += o->kind == KIND_TRIANGLE;
            faces += o->kind == KIND_3DFACE;
        }
    }
    EXPECT_TRUE(names.count("Walls")) << r.out;    // from the layers dialog of the first run
    EXPECT_TRUE(names.count("Roof")) << r.out;     // merged
    EXPECT_TRUE(names.count("GARDEN")) << r.out;   // the DXF's layer
    EXPECT_EQ(faces, 1);
    EXPECT_EQ(triangles, 2);
}

}  // namespace
