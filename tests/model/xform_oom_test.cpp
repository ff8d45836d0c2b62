// Out of memory at every allocation of COPY, ARRAY, EXPLODE and the change
// of layer: the objects processed before the failure keep their change, the
// failing one and the rest are unchanged and only deselected, the scene's
// lists and counts stay sound, and nothing leaks (clearing the scene frees
// every block that was handed out).
#include <string>
#include <vector>

#include "headless_session.h"
#include "model/xform.h"

namespace {

std::vector<double> Numbers(const Object* o) {
    std::vector<double> v;
    auto push = [&](Point3 p) { v.insert(v.end(), {p.x, p.y, p.z}); };
    switch (o->kind) {
        case KIND_POLYLINE: {
            const PolylineData& p = *(const PolylineData*)o->data;
            for (int i = 0; i < p.count; i++) push(p.points[i]);
            push(p.param1);
            push(p.param2);
            break;
        }
        case KIND_TRIANGLE:
            for (const Point3& c : ((const TriangleData*)o->data)->corner) push(c);
            break;
        case KIND_3DFACE:
            for (const Point3& c : ((const FaceData*)o->data)->corner) push(c);
            break;
        case KIND_PRIMITIVE:
            push(((const PrimitiveData*)o->data)->translate);
            break;
        case KIND_LIGHT:
            push(((const LightData*)o->data)->position);
            break;
    }
    return v;
}

std::vector<double> Moved(std::vector<double> v, Point3 d) {
    for (size_t i = 0; i + 2 < v.size(); i += 3) {
        v[i] += d.x;
        v[i + 1] += d.y;
        v[i + 2] += d.z;
    }
    return v;
}

class XformOomTest : public HeadlessTest {
  protected:
    void SetUp() override { HeadlessTest::SetUp(); }

    // Five selected sources of every record shape in `layer`, newest first
    // in walk order: box primitive, extrusion, light, sphere, face.
    std::vector<Object*> Build(Layer* layer) {
        g.scene.Current_Layer = layer;
        FaceData f{{{0, 0, 0}, {1, 0, 0}, {1, 1, 0}, {0, 1, 0}}};
        Add_Face(&f);
        PrimitiveData s = Primitive_Default();
        s.prim_type = PRIM_SPHERE;
        s.p1 = 1;
        s.prim_aux = 4;
        Add_Primitive(&s);
        LightData l = Light_Default();
        Add_Light(&l);
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
        std::vector<Object*> out;
        for (Object* o = layer->first_object; o; o = o->next) {
            Object_SetSelected(o, 1, layer);
            out.push_back(o);
        }
        return out;
    }
    std::vector<Object*> List(Layer* l) {
        std::vector<Object*> out;
        for (Object* o = l->first_object; o; o = o->next) out.push_back(o);
        return out;
    }
    // Links both ways, and the count of marks.
    void ExpectSound() {
        int marks = 0;
        for (Layer* l = g.scene.First_Layer; l; l = l->next) {
            const Object* prev = nullptr;
            for (const Object* o = l->first_object; o; o = o->next) {
                EXPECT_EQ(o->prev, prev);
                marks += o->selected;
                prev = o;
            }
        }
        EXPECT_EQ(marks, g.scene.Selected_Count);
    }
    // Clearing the scene gives back every block: nothing was lost on the way.
    void ExpectNoLeak() {
        Scene_Clear();
        EXPECT_EQ(g.mem.live_blocks, 0);
    }
};

// Builds the scene with `setup`, then runs `op` with the n-th allocation
// failing, for n = 1, 2 ... until it runs without a failure; `check` gets
// whether that run was cut short.
template <typename Setup, typename Op, typename Check>
void EveryAllocation(Setup setup, Op op, Check check) {
    for (int n = 1; n < 500; n++) {
        SCOPED_TRACE("allocation " + std::to_string(n));
        setup();
        Headless_ClearTranscript();
        Mem_FailAfter(n);
        op();
        const bool failed = g.mem.fail_countdown == 0;   // the failing allocation was reached
        Mem_FailAfter(0);
        check(failed);
        if (!failed) return;
    }
    ADD_FAILURE() << "never ran without a failure";
}

TEST_F(XformOomTest, CopyAndArray) {
    const Point3 d{1, 2, 3};
    for (int count : {1, 2}) {   // COPY, and a rectangular ARRAY of 2
        SCOPED_TRACE(count == 1 ? "copy" : "array");
        int runs = 0;
        EveryAllocation([&] { Build(Layer_NewFirst()); },
                        [&] {
                            g.xform.array_type = ARRAY_RECT;
                            g.xform.array_count = count;
                            Xform_Run({0, 0, 0}, d, count == 1 ? XFORM_COPY : XFORM_ARRAY);
                        },
                        [&](bool failed) {
                            runs++;
                            std::vector<Object*> all = List(g.scene.Current_Layer);
                            ASSERT_GE(all.size(), 5u);
                            const size_t made = all.size() - 5;
                            ASSERT_EQ(made % count, 0u);
                            const size_t done = made / count;   // sources processed: a prefix of the walk
                            EXPECT_EQ(done < 5, failed);
                            std::vector<Object*> sources(all.begin() + made, all.end());
                            for (size_t i = 0; i < done; i++)   // copies of source i, newest first, at the head
                                for (int k = 1; k <= count; k++)
                                    EXPECT_EQ(Numbers(all[(done - 1 - i) * count + (count - k)]),
                                              Moved(Numbers(sources[i]), Vec_Scale(d, k)))
                                        << i << " " << k;
                            for (Object* o : all) EXPECT_EQ(o->selected, 0);
                            ExpectSound();
                            ExpectNoLeak();
                        });
        EXPECT_GT(runs, 5);   // every source's copy failed once
    }
}

TEST_F(XformOomTest, Explode) {
    // Walk order: box (6 faces), extrusion (a face per quad), light (none),
    // sphere (one mesh), face (one face). The sources are told from the
    // pieces by their texture names.
    const char* tags[5] = {"box", "extrusion", "light", "sphere", "face"};
    std::vector<std::vector<double>> before;
    int pieces[5] = {0, 0, 0, 0, 0};
    {   // the pieces of each source alone, without failures
        Layer* l = Layer_NewFirst();
        std::vector<Object*> src = Build(l);
        for (int i = 0; i < 5; i++) {
            Selection_Clear();
            Object_SetSelected(src[i], 1, l);
            const Object* head = l->first_object;
            g.xform.explode_erase = 0;
            Xform_Explode();
            for (const Object* o = l->first_object; o != head; o = o->next) pieces[i]++;
        }
        Scene_Clear();
        EXPECT_EQ(pieces[0], 6);
        EXPECT_EQ(pieces[2], 0);
        EXPECT_EQ(pieces[3], 1);
        EXPECT_EQ(pieces[4], 1);
    }
    int runs = 0;
    EveryAllocation(
        [&] {
            std::vector<Object*> src = Build(Layer_NewFirst());
            before.clear();
            for (int i = 0; i < 5; i++) {
                strcpy(src[i]->texture, tags[i]);
                before.push_back(Numbers(src[i]));
            }
        },
        [&] {
            g.xform.explode_erase = 1;
            Xform_Explode();
        },
        [&](bool failed) {
            runs++;
            std::vector<Object*> all = List(g.scene.Current_Layer);
            int left[5] = {0, 0, 0, 0, 0}, made = 0;
            for (Object* o : all) {
                int tag = -1;
                for (int i = 0; i < 5; i++)
                    if (strcmp(o->texture, tags[i]) == 0) tag = i;
                if (tag < 0) {
                    made++;
                    continue;
                }
                left[tag] = 1;
                EXPECT_EQ(Numbers(o), before[tag]) << tags[tag];
            }
            EXPECT_EQ(left[2], 1);   // a light is never removed
            int expect = 0;
            bool prefix = true;
            for (int i = 0; i < 5; i++) {
                if (i == 2) continue;
                if (!left[i]) {
                    EXPECT_TRUE(prefix) << tags[i] << " went after a source that stayed";
                    expect += pieces[i];
                } else {
                    prefix = false;
                }
            }
            EXPECT_EQ(made, expect);   // no partial pieces of the one that failed
            EXPECT_EQ(failed, left[0] + left[1] + left[3] + left[4] > 0);
            if (failed) {   // the explode consumer's message for a face or for the mesh
                const std::string t = Headless_Transcript();
                EXPECT_TRUE(t.find("\nOut of Memory") != std::string::npos ||
                            t.find("\nCan't create Mesh...Out Of Memory!") != std::string::npos)
                    << t;
            }
            for (Object* o : all) EXPECT_EQ(o->selected, 0);
            ExpectSound();
            ExpectNoLeak();
        });
    EXPECT_GT(runs, 10);
}

TEST_F(XformOomTest, ChangeOfLayer) {
    g.aids.Auto_Deselect = 0;   // moved objects stay selected: the marks are counted too
    std::vector<std::vector<double>> before;
    EveryAllocation(
        [&] {
            Layer* to = Layer_NewFirst();
            Layer* from = Layer_NewFirst();   // first in the list: walked before `to`
            std::vector<Object*> src = Build(from);
            before.clear();
            for (Object* o : src) before.push_back(Numbers(o));
            g.scene.Current_Layer = to;
        },
        [&] { Xform_Run({0, 0, 0}, {0, 0, 0}, XFORM_LAYER); },
        [&](bool failed) {
            Layer* from = g.scene.First_Layer;
            Layer* to = from->next;
            std::vector<Object*> left = List(from), moved = List(to);
            ASSERT_EQ(left.size() + moved.size(), 5u);
            const size_t done = moved.size();
            EXPECT_EQ(done < 5, failed);
            for (size_t i = 0; i < done; i++) {   // moved in walk order, each to the head
                EXPECT_EQ(Numbers(moved[done - 1 - i]), before[i]) << i;
                EXPECT_EQ(moved[done - 1 - i]->selected, 1);
            }
            for (size_t i = 0; i < left.size(); i++) {
                EXPECT_EQ(Numbers(left[i]), before[done + i]) << i;
                EXPECT_EQ(left[i]->selected, 0);   // only deselected
            }
            const std::string t = Headless_Transcript();
            EXPECT_EQ(t.find("\nUnable to Change") != std::string::npos, failed) << t;
            EXPECT_EQ(t.find("\nUnable to Change"), t.rfind("\nUnable to Change"));   // once at most
            ExpectSound();
            ExpectNoLeak();
        });
}

}  // namespace
