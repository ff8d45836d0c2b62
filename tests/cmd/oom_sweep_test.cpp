// oom_sweep_test.cpp - out of memory at every allocation of the operations
// that read or change a whole scene: each operation is run once to count its
// allocations, then once per allocation with that one failing. Every time the
// scene stays sound and nothing leaks; a reader reports the failure in its
// own words ("...Memory..."), the edit engine drops the rest of the selection
// without a word, and an export either falls back to writing the same file
// or reports the failure.
#include <functional>
#include <map>

#include "e2e/process.h"
#include "headless_session.h"
#include "cmd/cmd.h"
#include "cmd/codes.h"
#include "workfile/wf_test_util.h"

namespace {

int AnswerYes(int, int* yes) {
    *yes = 1;
    return 1;
}
int PlaceAtOne(Point3* insertion) {
    *insertion = {1, 1, 1};
    return 1;
}

class OomSweep : public HeadlessTest {
  protected:
    void SetUp() override {
        HeadlessTest::SetUp();
        snprintf(g.config.WORK_DIR, sizeof g.config.WORK_DIR, "%s", dir.path().c_str());
        snprintf(g.config.Scenes_Dir, sizeof g.config.Scenes_Dir, "%s", dir.path().c_str());
        // The inputs, written by the program's own writers from the sample scene.
        BuildSampleScene();
        snprintf(g.run.workFileName, sizeof g.run.workFileName, "sample");
        ASSERT_EQ(WorkFile_Save(dir.file("sample.qmr").c_str()), 1);
        snprintf(g.run.workFileName, sizeof g.run.workFileName, "sample");
        ASSERT_EQ(Dxf_Export(), 1);
        ASSERT_EQ(Raw_Export(), 1);
    }

    // A fresh state with the headless screen open and the directories set.
    void Fresh() {
        State_Reset();
        Headless_Reset();
        Screen_Open(18);
        snprintf(g.config.WORK_DIR, sizeof g.config.WORK_DIR, "%s", dir.path().c_str());
        snprintf(g.config.Scenes_Dir, sizeof g.config.Scenes_Dir, "%s", dir.path().c_str());
        Headless_ClearTranscript();
    }

    // What a failed allocation may leave, by operation.
    enum Outcome {
        REPORTED,    // a message about memory, or (a layer not made) no object lost
        DESELECTED,  // the edit engine: nothing printed, the rest of the selection dropped
        SAME_FILE,   // the export fell back and wrote the same file, or reported
    };
    struct Op {
        const char* name;
        std::function<void()> setup;   // the scene before the operation
        std::function<int()> run;
        Outcome outcome;
        const char* output;             // SAME_FILE: the file written
    };

    // Two visible layers holding one object of every kind, a mesh and a
    // smooth surface; the second layer is current. Everything is selected.
    static void EditScene() {
        Layer* a = Layer_NewFirst();
        Layer* b = Layer_Append();
        g.scene.Current_Layer = a;
        TriangleData t{{{0, 0, 0}, {1, 0, 0}, {0, 1, 0}}};
        Add_Triangle(&t);
        FaceData f{{{0, 0, 1}, {1, 0, 1}, {1, 1, 1}, {0, 1, 1}}};
        Add_Face(&f);
        PolylineData p = Poly_Default();
        Point3 pts[4] = {{1, 0, 0}, {2, 1, 0}, {1.5, 2, 0}, {0.5, 3, 0}};
        p.points = pts;
        p.count = 4;
        Poly_AddToScene(&p);
        p.form = FORM_REVOLUTION;
        p.param1 = {0, 0, 0};
        p.param2 = {0, 1, 0};
        p.angle = 360;
        p.segments = 2;
        Poly_AddToScene(&p)->flags = Smooth_triangle;
        g.scene.Current_Layer = b;
        PrimitiveData s = Primitive_Default();
        s.prim_type = PRIM_SPHERE;
        s.p1 = 1;
        s.prim_aux = 6;
        Add_Primitive(&s);
        s.prim_type = PRIM_BOX;
        s.size = {1, 2, 3};
        Add_Primitive(&s);
        LightData l = Light_Default();
        Add_Light(&l);
        SelectAll();
    }

    static int ObjectCount() {
        int n = 0;
        for (const Layer* l = g.scene.First_Layer; l; l = l->next)
            for (const Object* o = l->first_object; o; o = o->next) n++;
        return n;
    }

    static void SelectAll() {
        for (Layer* l = g.scene.First_Layer; l; l = l->next)
            for (Object* o = l->first_object; o; o = o->next) Object_SetSelected(o, 1, l);
    }

    TempDir dir;
};

TEST_F(OomSweep, EveryAllocationOfEveryOperationFailsCleanly) {
    const std::string qmr = dir.file("sample.qmr"), dxf = dir.file("sample.dxf"), raw = dir.file("sample.raw");
    const std::string pov = dir.file("out.pov");
    auto sample = [] { BuildSampleScene(); };
    auto selected = [] { EditScene(); };
    const Op ops[] = {
        {"load", [] {}, [&] { return WorkFile_Load(qmr.c_str()); }, REPORTED, nullptr},
        {"merge", sample, [&] { return WorkFile_Merge(qmr.c_str()); }, REPORTED, nullptr},
        {"DXF import", [] { Layer_NewFirst(); }, [&] { return Dxf_Import(dxf.c_str(), AnswerYes); }, REPORTED,
         nullptr},
        {"RAW import", [] { Layer_NewFirst(); }, [&] { return Raw_Import(raw.c_str(), PlaceAtOne); }, REPORTED,
         nullptr},
        {"save", sample, [&] { return WorkFile_Save(dir.file("saved.qmr").c_str()); }, REPORTED, nullptr},
        {"EXPORTPOV", selected, [&] { return Pov_WriteScene(pov.c_str()); }, SAME_FILE, "out.pov"},
        {"COPY", selected, [] { return Xform_Run({0, 0, 0}, {1, 2, 3}, XFORM_COPY); }, DESELECTED, nullptr},
        {"ARRAY", [] {
             EditScene();
             g.xform.array_type = 1;   // polar
             g.xform.array_count = 3;
             g.xform.array_angle = 360;
         },
         [] { return Xform_Run({0, 0, 0}, {1, 0, 0}, XFORM_ARRAY); }, DESELECTED, nullptr},
        {"MIRROR", [] {
             EditScene();
             g.xform.mirror_erase = 0;
         },
         [] { return Xform_Run({0, 0, 0}, {1, 1, 0}, XFORM_MIRROR); }, DESELECTED, nullptr},
        {"EXPLODE", [] {
             EditScene();
             g.xform.explode_erase = 1;
         },
         [] { return Xform_Explode(); }, REPORTED, nullptr},
        {"change of layer", [] { EditScene(); },
         [] { return Xform_Run({0, 0, 0}, {0, 0, 0}, XFORM_LAYER); }, REPORTED, nullptr},
    };
    // The shape commands, their answers typed ahead.
    struct Shape {
        const char* name;
        int (*run)();
        const char* answers;
    };
    const Shape shapes[] = {
        {"PCUBE", Com_PCube, "0,0,0\n1\n\n\n"},
        {"PYRAMID", Com_Pyramid, "0,0,0\n1\n1\n1\n"},
        {"WEDGE", Com_Wedge, "0,0,0\n1\n1\n1\n"},
        {"MESH", Com_Mesh, "0,0,0\n1,0,0\n1,0,1\n0,0,1\n2\n3\n"},
        {"FACE", Com_Face, "0,0,0\n1,0,0\n1,0,1\n0,0,1\n"},
        {"TRIANGLE", Com_Triangle, "0,0,0\n1,0,0\n1,0,1\n"},
        {"STAIRCASE", Com_Staircase, "0,0,0\n1\n1\n2\n5\n"},
        {"SCREWTHREAD", Com_ScrewThread, "0,0,0\n10\n1\n0.5\n1\n4\n\n"},
        {"SPRING", Com_Spring, "0,0,0\n4\n0.5\n1\n0\n2\n30\n"},
        {"B_TORUS", Com_BTorus, "0,0,0\n3\n1\n"},
        {"B_DISH", Com_BDish, "0,0,0\n2\n"},
        {"B_SPHERE", Com_BSphere, "0,0,0\n2\n"},
        {"B_CYLINDER", Com_BCylinder, "0,0,0\n4\n1\n2\n"},
        {"B_CYLINDER2", Com_BCylinder2, "0,0,0\n4\n1\n3\n"},
    };
    std::vector<Op> all(std::begin(ops), std::end(ops));
    for (const Shape& sh : shapes)
        all.push_back({sh.name, [sh] {
                           Layer_NewFirst();
                           g.input.currentCommand = CMD_PCUBE;   // a command runs: typed values are answers
                           Headless_PushText(sh.answers);
                       },
                       sh.run, REPORTED, nullptr});
    std::map<std::string, long> sites;
    for (const Op& op : all) {
        SCOPED_TRACE(op.name);
        Fresh();
        op.setup();
        const long before = g.mem.allocations;
        ASSERT_GE(op.run(), 1);
        const long count = g.mem.allocations - before;
        const std::string good = op.output ? ReadFile(dir.file(op.output)) : "";
        const int good_objects = ObjectCount();
        sites[op.name] = count;
        for (long k = 1; k <= count; k++) {
            SCOPED_TRACE(k);
            Fresh();
            const long empty = g.mem.live_blocks;   // nothing of a scene allocated
            op.setup();
            Mem_FailAfter(k);
            const int r = op.run();
            const bool failed = g.mem.fail_countdown == 0;
            Mem_FailAfter(0);
            const std::string said = Headless_Transcript();
            EXPECT_EQ(SceneProblem(), "");
            if (failed) {
                const bool reported = said.find("emory") != std::string::npos ||
                                      said.find("Unable to Change") != std::string::npos ||
                                      said.find("could not sistain instance") != std::string::npos;
                switch (op.outcome) {
                    case REPORTED:
                        EXPECT_TRUE(reported || ObjectCount() == good_objects) << "result " << r << ", said: " << said;
                        break;
                    case DESELECTED: EXPECT_EQ(g.scene.Selected_Count, 0) << said; break;
                    case SAME_FILE:
                        EXPECT_TRUE(reported || (r == 1 && ReadFile(dir.file(op.output)) == good))
                            << "result " << r << ", said: " << said;
                        break;
                }
            }
            Scene_Clear();
            Zoom_FreeAll();
            EXPECT_EQ(g.mem.live_blocks, empty);   // every block of the scene is in it
        }
    }
    std::string counts;
    for (const auto& [name, n] : sites) counts += name + " " + std::to_string(n) + "; ";
    RecordProperty("allocation_sites", counts);
    std::cout << "allocations failed in turn: " << counts << "\n";
}

}  // namespace
