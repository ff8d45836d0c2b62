// xform_test.cpp - selection marks, what the transform engine leaves alone
// (layers that are off, objects not selected), and the redraw that follows
// an edit. Every mode on every kind is in xform_modes_test.cpp.
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
