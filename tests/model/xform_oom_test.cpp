// Out of memory at every allocation of COPY, ARRAY, EXPLODE and the change
// of layer: the objects processed before the failure keep their change, the
// failing one and the rest are unchanged and only deselected, the lists and
// the count of marks stay sound, and nothing leaks (clearing the scene gives
// back every block handed out).
#include <string>
#include <vector>

#include "headless_session.h"

namespace {

// The sources are told apart by their texture names, in walk order.
const char* const kTags[5] = {"box", "extrusion", "light", "sphere", "triangle"};

class XformOomTest : public HeadlessTest {
  protected:
    // Five selected sources in a new layer; with `target`, another layer
    // after it is the current one.
    void Build(bool target) {
        Layer* l = Layer_NewFirst();
        TriangleData t{{{0, 0, 0}, {1, 0, 0}, {1, 1, 0}}};
        Add_Triangle(&t);
        PrimitiveData s = Primitive_Default();
        s.prim_type = PRIM_SPHERE;
        s.p1 = 1;
        s.prim_aux = 4;
        Add_Primitive(&s);
        LightData light = Light_Default();
        Add_Light(&light);
        PolylineData e = Poly_Default();
        Point3 pts[3] = {{0, 0, 0}, {1, 0, 0}, {2, 0, 1}};
        e.form = FORM_EXTRUSION;
        e.points = pts;
        e.count = 3;
        e.param2 = {0, 1, 0};
        Poly_AddToScene(&e);
        PrimitiveData b = Primitive_Default();
        b.prim_type = PRIM_BOX;
        b.size = {1, 1, 1};
        Add_Primitive(&b);
        int i = 0;
        for (Object* o = l->first_object; o; o = o->next, i++) {
            strcpy(o->texture, kTags[i]);
            Object_SetSelected(o, 1, l);
        }
        if (target) Layer_Append();
    }
    // Index of a source by its tag, -1 for anything else.
    static int Tag(const Object* o) {
        for (int i = 0; i < 5; i++)
            if (strcmp(o->texture, kTags[i]) == 0) return i;
        return -1;
    }
    // Builds, then runs `op` with the n-th allocation failing for n = 1, 2 ...
    // until it runs through; `check` sees each result. Returns the runs.
    template <typename Op, typename Check>
    int EveryAllocation(bool target, Op op, Check check) {
        for (int n = 1; n < 500; n++) {
            SCOPED_TRACE("allocation " + std::to_string(n));
            Build(target);
            Headless_ClearTranscript();
            Mem_FailAfter(n);
            op();
            const bool failed = g.mem.fail_countdown == 0;   // the failing allocation was reached
            Mem_FailAfter(0);
            check(failed);
            int marks = 0;
            for (Layer* l = g.scene.First_Layer; l; l = l->next)
                for (const Object* o = l->first_object; o; o = o->next) {
                    EXPECT_EQ(o->next ? o->next->prev : o, o);   // linked both ways
                    marks += o->selected;
                }
            EXPECT_EQ(marks, g.scene.Selected_Count);
            Scene_Clear();
            EXPECT_EQ(g.mem.live_blocks, 0);
            if (!failed) return n;
        }
        ADD_FAILURE() << "never ran through";
        return 0;
    }
    std::vector<Object*> List(Layer* l) {
        std::vector<Object*> out;
        for (Object* o = l->first_object; o; o = o->next) out.push_back(o);
        return out;
    }
};

// COPY, a rectangular ARRAY of 2 and EXPLODE: the sources processed are a
// prefix of the walk, and the pieces made are exactly theirs.
TEST_F(XformOomTest, CopyArrayAndExplode) {
    const int pieces[3][5] = {{1, 1, 1, 1, 1}, {2, 2, 2, 2, 2}, {6, 2, 0, 1, 0}};   // copy, array, explode
    for (int op = 0; op < 3; op++) {
        SCOPED_TRACE(op);
        const int runs = EveryAllocation(
            false,
            [&] {
                g.xform.array_type = ARRAY_RECT;
                g.xform.array_count = 2;
                g.xform.explode_erase = 1;
                if (op == 2) Xform_Explode();
                else Xform_Run({0, 0, 0}, {1, 2, 3}, op == 0 ? XFORM_COPY : XFORM_ARRAY);
            },
            [&](bool failed) {
                const std::vector<Object*> all = List(g.scene.Current_Layer);
                for (const Object* o : all) EXPECT_EQ(o->selected, 0);
                int done = 0, made = 0, expect = 0;
                if (op < 2) {   // copies carry their source's name and come first, newest first
                    const int per = pieces[op][0];
                    ASSERT_GE(all.size(), 5u);
                    made = (int)all.size() - 5;
                    done = made / per;
                    for (int i = 0; i < 5; i++) EXPECT_EQ(Tag(all[made + i]), i);
                    for (int j = 0; j < made; j++) EXPECT_EQ(Tag(all[j]), done - 1 - j / per);
                } else {   // pieces (faces, a mesh) carry their source's name; a source exploded is gone
                    int left[5] = {}, per[5] = {};
                    for (const Object* o : all) {
                        const bool piece = o->kind == KIND_3DFACE ||
                                           (o->kind == KIND_POLYLINE && ((PolylineData*)o->data)->form == FORM_POLY_MESH);
                        ASSERT_GE(Tag(o), 0);
                        if (piece) per[Tag(o)]++;
                        else left[Tag(o)] = 1;
                    }
                    EXPECT_TRUE(left[2] && left[4]);   // a light and a triangle stay as they are
                    while (done < 5 && (done == 2 || done == 4 || !left[done])) done++;
                    for (int i = 0; i < 5; i++) {
                        EXPECT_EQ(left[i], i >= done || i == 2 || i == 4) << kTags[i];
                        EXPECT_EQ(per[i], i < done ? pieces[2][i] : 0) << kTags[i];
                        made += per[i];
                    }
                    if (failed) {   // the explode consumer's words for a face, or for the mesh
                        const std::string t = Headless_Transcript();
                        EXPECT_TRUE(t.find("\nOut of Memory") != std::string::npos ||
                                    t.find("\nCan't create Mesh...Out Of Memory!") != std::string::npos)
                            << t;
                    }
                }
                for (int i = 0; i < done; i++) expect += pieces[op][i];
                EXPECT_EQ(made, expect);   // nothing left of the one that failed
                EXPECT_EQ(failed, done < 5);
            });
        EXPECT_GT(runs, 5);
    }
}

// The change of layer: the first `done` sources are in the current layer
// (still selected: Auto_Deselect is off), the rest where they were, only
// deselected, and "\nUnable to Change" said once.
TEST_F(XformOomTest, ChangeOfLayer) {
    g.aids.Auto_Deselect = 0;
    EveryAllocation(
        true, [] { Xform_Run({0, 0, 0}, {0, 0, 0}, XFORM_LAYER); },
        [&](bool failed) {
            std::vector<Object*> moved = List(g.scene.Current_Layer), left = List(g.scene.First_Layer);
            ASSERT_EQ(moved.size() + left.size(), 5u);
            const size_t done = moved.size();
            for (size_t i = 0; i < done; i++) {   // each moved to the head in turn
                EXPECT_EQ(Tag(moved[done - 1 - i]), (int)i);
                EXPECT_EQ(moved[done - 1 - i]->selected, 1);
            }
            for (size_t i = 0; i < left.size(); i++) {
                EXPECT_EQ(Tag(left[i]), (int)(done + i));
                EXPECT_EQ(left[i]->selected, 0);
            }
            const std::string t = Headless_Transcript();
            EXPECT_EQ(failed, done < 5);
            EXPECT_EQ(t.find("\nUnable to Change") != std::string::npos, failed) << t;
            EXPECT_EQ(t.find("\nUnable to Change"), t.rfind("\nUnable to Change"));
        });
}

}  // namespace
