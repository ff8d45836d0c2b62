// Object nodes, kind records and point arrays, including allocation failure.
#include <vector>

#include "test_support.h"

namespace {

class ObjectTest : public QmrTest {
  protected:
    void SetUp() override {
        QmrTest::SetUp();
        ASSERT_NE(Layer_NewFirst(), nullptr);
    }
    Layer* layer() { return g.scene.Current_Layer; }
};

TEST_F(ObjectTest, ListRunsFromNewestToOldestAndUnlinks) {
    TriangleData t{};
    Object* a = Add_Triangle(&t);
    Object* b = Add_Triangle(&t);
    Object* c = Add_Triangle(&t);
    EXPECT_EQ(a->kind, KIND_TRIANGLE);
    const std::vector<Object*> order = {c, b, a};
    Object* prev = nullptr;
    Object* o = layer()->first_object;
    for (Object* want : order) {
        ASSERT_EQ(o, want);
        EXPECT_EQ(o->prev, prev);
        prev = o;
        o = o->next;
    }
    EXPECT_EQ(o, nullptr);
    auto erase = [&](Object* x) {
        void* data = x->data;
        Object_Unlink(x, layer());
        Mem_Free(data);
    };
    erase(c);   // the head
    EXPECT_EQ(layer()->first_object, b);
    EXPECT_EQ(b->prev, nullptr);
    erase(a);   // the tail
    EXPECT_EQ(b->next, nullptr);
    erase(b);   // the only one
    EXPECT_EQ(layer()->first_object, nullptr);
}

TEST_F(ObjectTest, NewObjectFlagsComeFromSceneDefaults) {
    g.scene.Default_No_shadow = 1;
    g.scene.Default_Smooth = 0;
    FaceData f{};
    Object* o = Add_Face(&f);
    EXPECT_EQ(o->flags, 0x01);
    EXPECT_EQ(o->selected, 0);
    EXPECT_STREQ(o->texture, "");

    g.scene.Default_No_shadow = 1;
    g.scene.Default_Smooth = 1;
    EXPECT_EQ(Add_Face(&f)->flags, 0x03);
}

TEST_F(ObjectTest, ConstructorsCopyRecordsOfEveryKind) {
    PrimitiveData p = Primitive_Default();
    p.prim_type = PRIM_SPHERE;
    p.p1 = 2.5;
    Object* o = Add_Primitive(&p);
    p.p1 = 9;   // the scene has its own copy
    auto* stored = static_cast<PrimitiveData*>(o->data);
    EXPECT_EQ(stored->p1, 2.5);
    EXPECT_EQ(stored->prim_aux, 8);
    EXPECT_EQ(stored->scale.x, 1.0);

    LightData l = Light_Default();
    Object* lo = Add_Light(&l);
    auto* light = static_cast<LightData*>(lo->data);
    EXPECT_EQ(light->light_segments, 16);
    EXPECT_EQ(light->area_n1, 4);
    EXPECT_EQ(light->area_n2, 4);
    EXPECT_EQ(light->radius, 35);
    EXPECT_EQ(lo->kind, KIND_LIGHT);
}

TEST_F(ObjectTest, PolylineCopyHasItsOwnPoints) {
    Point3 pts[2] = {{1, 2, 3}, {4, 5, 6}};
    PolylineData poly = Poly_Default();
    poly.points = pts;
    poly.count = 2;
    Object* a = Poly_AddToScene(&poly);
    pts[0].x = 100;   // the caller's array is not shared
    auto* pa = static_cast<PolylineData*>(a->data);
    EXPECT_EQ(pa->points[0].x, 1);

    Object* copy = Object_Copy(a);
    ASSERT_NE(copy, nullptr);
    auto* pc = static_cast<PolylineData*>(copy->data);
    EXPECT_NE(pc->points, pa->points);
    pc->points[1].y = -7;
    EXPECT_EQ(pa->points[1].y, 5);
    Object_Free(copy);
}

TEST_F(ObjectTest, InsertAndDeletePointBoundsAndFailures) {
    PolylineData poly = Poly_Default();
    EXPECT_EQ(Poly_InsertPoint(&poly, {1, 0, 0}, 1), 0);   // count + 1
    EXPECT_EQ(poly.count, 0);
    EXPECT_EQ(Poly_InsertPoint(&poly, {1, 0, 0}, 0), 1);
    EXPECT_EQ(Poly_InsertPoint(&poly, {3, 0, 0}, 1), 1);   // index == count appends
    EXPECT_EQ(Poly_InsertPoint(&poly, {2, 0, 0}, 1), 1);   // in the middle
    EXPECT_EQ(Poly_InsertPoint(&poly, {0, 0, 0}, -1), 0);
    EXPECT_EQ(Poly_InsertPoint(&poly, {0, 0, 0}, 4), 0);
    ASSERT_EQ(poly.count, 3);
    EXPECT_EQ(poly.points[0].x, 1);
    EXPECT_EQ(poly.points[1].x, 2);
    EXPECT_EQ(poly.points[2].x, 3);
    // Out of memory: the record is left as it was.
    Point3* before = poly.points;
    Mem_FailAfter(1);
    EXPECT_EQ(Poly_InsertPoint(&poly, {9, 0, 0}, 0), 0);
    Mem_FailAfter(1);
    EXPECT_EQ(Poly_DeletePoint(&poly, 0), 0);
    ASSERT_EQ(poly.count, 3);
    EXPECT_EQ(poly.points, before);
    EXPECT_EQ(poly.points[0].x, 1);

    EXPECT_EQ(Poly_DeletePoint(&poly, 3), 0);
    EXPECT_EQ(Poly_DeletePoint(&poly, -1), 0);
    EXPECT_EQ(Poly_DeletePoint(&poly, 1), 1);
    ASSERT_EQ(poly.count, 2);
    EXPECT_EQ(poly.points[0].x, 1);
    EXPECT_EQ(poly.points[1].x, 3);
    EXPECT_EQ(Poly_DeletePoint(&poly, 0), 1);
    EXPECT_EQ(Poly_DeletePoint(&poly, 0), 1);
    EXPECT_EQ(poly.count, 0);
    EXPECT_EQ(poly.points, nullptr);
}

TEST_F(ObjectTest, EveryAllocationFailureLeavesSceneUnchanged) {
    Point3 pts[3] = {{1, 0, 0}, {2, 0, 0}, {3, 0, 0}};
    PolylineData poly = Poly_Default();
    poly.points = pts;
    poly.count = 3;
    long before = g.mem.live_blocks;
    // Record, points, node: each may fail.
    for (int n = 1; n <= 3; n++) {
        Mem_FailAfter(n);
        EXPECT_EQ(Poly_AddToScene(&poly), nullptr) << "failing allocation " << n;
        EXPECT_EQ(layer()->first_object, nullptr);
        EXPECT_EQ(g.mem.live_blocks, before) << "leak after failing allocation " << n;
    }
    Mem_FailAfter(4);
    EXPECT_NE(Poly_AddToScene(&poly), nullptr);
    Mem_FailAfter(0);

    TriangleData t{};
    for (int n = 1; n <= 2; n++) {
        Mem_FailAfter(n);
        long live = g.mem.live_blocks;
        EXPECT_EQ(Add_Triangle(&t), nullptr);
        EXPECT_EQ(g.mem.live_blocks, live);
    }
}

TEST_F(ObjectTest, SceneClearFreesEverything) {
    long before = g.mem.live_blocks - 1;   // the fixture's layer
    Point3 pts[2] = {{0, 0, 0}, {1, 1, 1}};
    PolylineData poly = Poly_Default();
    poly.points = pts;
    poly.count = 2;
    Poly_AddToScene(&poly);
    TriangleData t{};
    Add_Triangle(&t);
    Layer_Append();
    LightData l = Light_Default();
    Add_Light(&l);
    g.scene.Selected_Count = 2;
    Scene_Clear();
    EXPECT_EQ(g.scene.First_Layer, nullptr);
    EXPECT_EQ(g.scene.Current_Layer, nullptr);
    EXPECT_EQ(g.scene.Selected_Count, 0);
    EXPECT_EQ(g.mem.live_blocks, before);
}

}  // namespace
