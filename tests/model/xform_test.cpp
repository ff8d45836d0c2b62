// xform_test.cpp - selection marks and the transform engine's copy, move
// and erase, and the redraw that follows an edit.
#include "headless_session.h"
#include "model/selection.h"
#include "model/xform.h"

namespace {

class XformTest : public HeadlessTest {
  protected:
    void SetUp() override {
        HeadlessTest::SetUp();
        on_ = Layer_Append();
        off_ = Layer_Append();
        off_->on = 0;
        g.scene.Current_Layer = on_;
    }
    Object* AddTri(Layer* l, double x) {
        g.scene.Current_Layer = l;
        TriangleData t{{{x, 0, 0}, {x + 1, 0, 0}, {x, 1, 0}}};
        return Add_Triangle(&t);
    }
    Layer* on_;
    Layer* off_;
};

// Marking twice counts once; the object is drawn in the highlight colour
// when marked and in its layer's colour (0 for the background's) when not.
TEST_F(XformTest, SetSelectedCountsChangesAndRedraws) {
    g.config.colors.general_color = YELLOW;
    on_->color = g.config.colors.view_bkcolor;
    Object* a = AddTri(on_, 0);
    for (int mark : {1, 0}) {
        Headless_ClearSegments();
        Object_SetSelected(a, mark, on_);
        Object_SetSelected(a, mark, on_);
        EXPECT_EQ(mark, g.scene.Selected_Count);
        EXPECT_EQ(mark, a->selected);
        ASSERT_FALSE(Headless_Segments().empty());
        for (const Headless_Segment& s : Headless_Segments()) EXPECT_EQ(mark ? YELLOW : 0, s.colour);
    }
}

TEST_F(XformTest, EraseFreesTheSelectionOfVisibleLayers) {
    Object* a = AddTri(on_, 0);
    Object* b = AddTri(on_, 1);
    Object* c = AddTri(on_, 2);
    Object* d = AddTri(on_, 3);
    Object* hidden = AddTri(off_, 4);
    long blocks = g.mem.live_blocks;
    for (Object* o : {a, c, d}) Object_SetSelected(o, 1, on_);
    Object_SetSelected(hidden, 1, off_);
    EXPECT_EQ(4, g.scene.Selected_Count);
    EXPECT_EQ(1, Xform_Run({0, 0, 0}, {0, 0, 0}, XFORM_ERASE));
    EXPECT_EQ(1, g.scene.Selected_Count);   // the object of the off layer stays selected
    EXPECT_EQ(b, on_->first_object);
    EXPECT_EQ(nullptr, b->next);
    EXPECT_EQ(nullptr, b->prev);
    EXPECT_EQ(hidden, off_->first_object);
    EXPECT_EQ(blocks - 6, g.mem.live_blocks);   // three records and three nodes
}

TEST_F(XformTest, MoveEveryKind) {
    Object* tri = AddTri(on_, 0);
    FaceData f{{{0, 0, 0}, {1, 0, 0}, {1, 1, 0}, {0, 1, 0}}};
    Object* face = Add_Face(&f);
    PolylineData ext = Poly_Default();
    Point3 pts[2] = {{0, 0, 0}, {1, 0, 0}};
    ext.points = pts;
    ext.count = 2;
    ext.form = FORM_EXTRUSION;
    ext.param1 = {0, 0, 0};
    ext.param2 = {0, 0, 1};
    Object* poly = Poly_AddToScene(&ext);
    PolylineData pipe = ext;
    pipe.form = FORM_POLY_PIPE;
    pipe.param1 = {0.1, 0.2, 0};   // radii, not a point
    Object* pipe_obj = Poly_AddToScene(&pipe);
    PrimitiveData p = Primitive_Default();
    p.prim_type = PRIM_SPHERE;
    p.translate = {1, 1, 1};
    Object* prim = Add_Primitive(&p);
    LightData l = Light_Default();
    l.position = {0, 5, 0};
    l.point_at = {0, 0, 0};
    Object* light = Add_Light(&l);
    for (Object* o : {tri, face, poly, pipe_obj, prim, light}) Object_SetSelected(o, 1, on_);

    Headless_ClearTranscript();
    Xform_Run({1, 1, 1}, {3, 0, 1}, XFORM_MOVE);   // delta (2, -1, 0)
    EXPECT_EQ("\nPlease wait...", Headless_Transcript());
    EXPECT_EQ(2, g.xform.xform_delta.x);
    EXPECT_EQ(-1, g.xform.xform_delta.y);
    EXPECT_EQ(3, ((TriangleData*)tri->data)->corner[1].x);
    EXPECT_EQ(0, ((FaceData*)face->data)->corner[3].y);
    const PolylineData* e = (const PolylineData*)poly->data;
    EXPECT_EQ(3, e->points[1].x);
    EXPECT_EQ(-1, e->param2.y);
    EXPECT_EQ(1, e->param2.z);
    const PolylineData* pp = (const PolylineData*)pipe_obj->data;
    EXPECT_EQ(0.1, pp->param1.x);
    EXPECT_EQ(0.2, pp->param1.y);
    EXPECT_EQ(2, pp->points[0].x);
    EXPECT_EQ(3, ((PrimitiveData*)prim->data)->translate.x);
    EXPECT_EQ(4, ((LightData*)light->data)->position.y);
    EXPECT_EQ(-1, ((LightData*)light->data)->point_at.y);
    EXPECT_EQ(0, g.scene.Selected_Count);   // Auto_Deselect is on by default
}

// Only selected objects of visible layers move; without Auto_Deselect
// they stay selected.
TEST_F(XformTest, MoveKeepsTheSelectionWithoutAutoDeselect) {
    g.aids.Auto_Deselect = 0;
    Object* a = AddTri(on_, 0);
    Object* b = AddTri(on_, 5);
    Object* hidden = AddTri(off_, 0);
    Object_SetSelected(a, 1, on_);
    Object_SetSelected(hidden, 1, off_);
    Xform_Run({0, 0, 0}, {0, 0, 2}, XFORM_MOVE);
    EXPECT_EQ(2, g.scene.Selected_Count);
    EXPECT_EQ(1, a->selected);
    EXPECT_EQ(2, ((TriangleData*)a->data)->corner[0].z);
    EXPECT_EQ(0, ((TriangleData*)b->data)->corner[0].z);
    EXPECT_EQ(0, ((TriangleData*)hidden->data)->corner[0].z);
}

// COPY leaves every source where it was and adds a moved, unselected copy
// (record and points of its own, texture and flags kept) to the source's
// layer; a copy that cannot be allocated ends the walk in deselect mode.
TEST_F(XformTest, CopyAddsMovedCopiesBesideTheSources) {
    Layer* other = Layer_Append();
    Object* tri = AddTri(on_, 0);
    PolylineData line = Poly_Default();
    Point3 pts[3] = {{0, 0, 0}, {1, 0, 0}, {1, 1, 0}};
    line.points = pts;
    line.count = 3;
    g.scene.Current_Layer = other;
    Object* poly = Poly_AddToScene(&line);
    strcpy(poly->texture, "Gold");
    poly->flags = No_shadow;
    for (Object* o : {tri, poly}) Object_SetSelected(o, 1, o == tri ? on_ : other);

    Xform_Run({1, 1, 0}, {1, 1, 5}, XFORM_COPY);   // delta (0, 0, 5)
    ASSERT_NE(on_->first_object, tri);
    const Object* tri_copy = on_->first_object;
    EXPECT_EQ(tri, tri_copy->next);
    EXPECT_EQ(0, ((TriangleData*)tri->data)->corner[0].z);
    EXPECT_EQ(5, ((TriangleData*)tri_copy->data)->corner[0].z);
    EXPECT_EQ(1, ((TriangleData*)tri_copy->data)->corner[1].x);
    ASSERT_NE(other->first_object, poly);
    const Object* poly_copy = other->first_object;
    const PolylineData* c = (const PolylineData*)poly_copy->data;
    ASSERT_EQ(3, c->count);
    EXPECT_NE(c->points, pts);
    EXPECT_NE(c->points, ((PolylineData*)poly->data)->points);
    EXPECT_EQ(5, c->points[2].z);
    EXPECT_EQ(0, ((PolylineData*)poly->data)->points[2].z);
    EXPECT_STREQ("Gold", poly_copy->texture);
    EXPECT_EQ(No_shadow, poly_copy->flags);
    EXPECT_EQ(0, poly_copy->selected);
    EXPECT_EQ(0, g.scene.Selected_Count);   // the sources were deselected (Auto_Deselect)

    // Out of memory for the first copy: nothing is added, both are deselected.
    for (Object* o : {tri, poly}) Object_SetSelected(o, 1, o == tri ? on_ : other);
    long blocks = g.mem.live_blocks;
    Mem_FailAfter(1);
    Xform_Run({0, 0, 0}, {1, 0, 0}, XFORM_COPY);
    Mem_FailAfter(0);
    EXPECT_EQ(blocks, g.mem.live_blocks);
    EXPECT_EQ(tri_copy, on_->first_object);
    EXPECT_EQ(poly_copy, other->first_object);
    EXPECT_EQ(0, g.scene.Selected_Count);
}

// With Auto_Redraw on, an edit ends with one redraw of every viewport;
// without it, and when nothing is selected, there is none.
int g_redraws = 0;
void CountRedraw() { g_redraws++; }

TEST_F(XformTest, AutoRedrawRedrawsAllViewsAfterAnEdit) {
    g.output.consumer[OUTPUT_SCREEN].redraw_all = CountRedraw;
    Object* a = AddTri(on_, 0);
    struct Case {
        int auto_redraw, select, redraws;
    };
    for (const Case& c : {Case{1, 1, 1}, Case{0, 1, 0}, Case{1, 0, 0}}) {
        g_redraws = 0;
        g.aids.Auto_Redraw = c.auto_redraw;
        if (c.select) Object_SetSelected(a, 1, on_);
        Xform_Run({0, 0, 0}, {1, 0, 0}, XFORM_MOVE);
        EXPECT_EQ(c.redraws, g_redraws) << c.auto_redraw << c.select;
    }
}

}  // namespace
