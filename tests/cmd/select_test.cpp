// Selection in headless sessions that click at world points of a TOP view:
// the Select Objects prompt with its keywords and status lines, whole
// layers, layers that are off, instances and nested layers, single mode,
// a replacing or repeated command, windows, and the pick commands.
#include "input/session.h"
#include "model/selection.h"

namespace {

class SelectTest : public SessionTest {
  protected:
    void SetUp() override {
        SessionTest::SetUp();
        base_ = g.scene.Current_Layer;
    }
    // A line in the TOP view's plane (y = 0) from (x1, z1) to (x2, z2).
    Object* Line(double x1, double z1, double x2, double z2, Layer* layer = nullptr) {
        g.scene.Current_Layer = layer ? layer : base_;
        Object* o = AddPolyline({{x1, 0, z1}, {x2, 0, z2}});
        g.scene.Current_Layer = base_;
        return o;
    }
    void ClickAt(Point3 p) {
        int x, y;
        PixelOf(p, &x, &y);
        Headless_PushClick(x, y);
    }
    // Every mark counted once: Selected_Count equals the marked objects.
    int Marked() {
        int n = 0;
        for (Layer* l = g.scene.First_Layer; l; l = l->next)
            for (Object* o = l->first_object; o; o = o->next) n += o->selected;
        EXPECT_EQ(n, g.scene.Selected_Count);
        return n;
    }
    Layer* base_ = nullptr;
};

TEST_F(SelectTest, SelectObjectsAddsRemovesAndReports) {
    Object* a = Line(-6, 2, -2, 2);
    Object* b = Line(2, 2, 6, 2);
    Headless_PushText("SELECT\n");
    ClickAt({-4, 0, 2});    // a
    ClickAt({-4, 0, 2});    // a again: already selected, nothing found
    ClickAt({0, 0, -6});    // nothing there
    Headless_PushText("R\n");
    ClickAt({-3, 0, 2});    // a leaves
    Headless_PushText("R\nE\nA\n");
    ClickAt({5, 0, 2});     // b
    int mx, my;
    PixelOf({0, 0, -8}, &mx, &my);
    Headless_PushMove(mx, my);   // the cursor away from b
    Headless_PushText("E\n");
    EXPECT_FALSE(RunLoop());
    EXPECT_EQ(Headless_Transcript(),
              "\nCommand: \nSelect Objects> \nStatus <Found: 1, Total: 1> "
              "\nSelect Objects> \nStatus <Found: 0, Total: 1> "
              "\nSelect Objects> \nStatus <Found: 0, Total: 1> "
              "\nSelect Objects> \nRemove Objects> \nStatus <Found: 1, Total: 0> "
              "\nRemove Objects> Nothing to Remove!\nRemove Objects> Must Select an Object First!"
              "\nRemove Objects> \nSelect Objects> \nStatus <Found: 1, Total: 1> "
              "\nSelect Objects> Done!\nCommand: ");
    EXPECT_EQ(a->selected, 0);
    EXPECT_EQ(b->selected, 1);
    EXPECT_EQ(Marked(), 1);
    EXPECT_EQ(g.menus.side.shown, 1010);   // SELECT with nothing selected shows the select menu
    // A selected object is drawn in the highlight colour.
    int x, y;
    PixelOf({4, 0, 2}, &x, &y);
    EXPECT_EQ(Headless_Pixel(x, y), g.config.colors.general_color);
}

// B takes whole layers; a layer that is off cannot be picked; an instance
// is picked where it is drawn inside the instancing layer, and a nested
// layer where its parent's transform puts it.
TEST_F(SelectTest, WholeLayersLayersOffInstancesAndNesting) {
    Layer* other = Layer_Append();
    Layer* off = Layer_Append();
    off->on = 0;
    Object* a1 = Line(-6, 2, -2, 2);
    Object* a2 = Line(-6, 6, -2, 6);
    Object* c = Line(2, 2, 6, 2, other);
    Object* hidden = Line(2, -2, 6, -2, off);

    Headless_PushText("SELECT\n");
    ClickAt({4, 0, -2});    // only the layer that is off has something here
    Headless_PushText("B\n");
    ClickAt({-4, 0, 2});    // a1 brings a2
    Headless_PushText("B\n");
    ClickAt({4, 0, 2});     // c alone again
    Headless_PushText("E\n");
    EXPECT_FALSE(RunLoop());
    EXPECT_EQ(Headless_Transcript(),
              "\nCommand: \nSelect Objects> \nStatus <Found: 0, Total: 0> "
              "\nSelect Objects> Select by LAYER = ON\nSelect Objects> \nStatus <Found: 1, Total: 2> "
              "\nSelect Objects> Select by LAYER = OFF\nSelect Objects> \nStatus <Found: 1, Total: 3> "
              "\nSelect Objects> Done!\nCommand: ");
    EXPECT_EQ(a1->selected + a2->selected + c->selected, 3);
    EXPECT_EQ(hidden->selected, 0);
    EXPECT_EQ(Marked(), 3);

    // Block layer `other` instanced by `user`, which moves it 10 down the
    // screen (z - 10); `nested` under `user` is moved the same way.
    Selection_Clear();
    Layer* user = Layer_Append();
    user->translate = {0, 0, -10};
    user->instance = other;
    Layer* nested = Layer_Append();
    nested->level = 1;
    Object* n = Line(-6, 4, -2, 4, nested);   // seen at z = -6
    Headless_ClearTranscript();
    Headless_PushText("SELECT\n");
    ClickAt({-4, 0, 4});    // where n would be without its parent's transform: nothing
    ClickAt({-4, 0, -6});   // n
    ClickAt({4, 0, -8});    // c as the instance shows it
    Headless_PushText("E\n");
    EXPECT_FALSE(RunLoop());
    EXPECT_EQ(Headless_Transcript(),
              "\nCommand: \nSelect Objects> \nStatus <Found: 0, Total: 0> "
              "\nSelect Objects> \nStatus <Found: 1, Total: 1> "
              "\nSelect Objects> \nStatus <Found: 1, Total: 2> "
              "\nSelect Objects> Done!\nCommand: ");
    EXPECT_EQ(n->selected, 1);
    EXPECT_EQ(c->selected, 1);
    EXPECT_EQ(Marked(), 2);
}

// Windows take everything that enters them; C gives a window up.
TEST_F(SelectTest, WindowsAndTheirCancel) {
    Object* a = Line(-6, 2, -2, 2);
    Object* b = Line(-1, 2, 1, 8);   // crosses the window's edge
    Object* c = Line(4, 6, 6, 6);
    Headless_PushText("SELECT\nW\nC\nW\n");
    ClickAt({-8, 0, 4});
    Headless_PushText("C\nW\n");
    ClickAt({-8, 0, 4});
    ClickAt({0, 0, 0});
    Headless_PushText("E\n");
    EXPECT_FALSE(RunLoop());
    EXPECT_EQ(Headless_Transcript(),
              "\nCommand: \nSelect Objects> \nWindow> Upper/Left corner <Cancel>: *Cancle*"
              "\nSelect Objects> \nWindow> Upper/Left corner <Cancel>: \nWindow> Lower/Right corner <Cancle>: *Cancle*"
              "\nSelect Objects> \nWindow> Upper/Left corner <Cancel>: \nWindow> Lower/Right corner <Cancle>: "
              "\nStatus <Found: 2, Total: 2> \nSelect Objects> Done!\nCommand: ");
    EXPECT_EQ(a->selected + b->selected, 2);
    EXPECT_EQ(c->selected, 0);
}

// Single mode ends at the first hit and knows no layers; another command
// clears the selection, the running one repeated (Enter) keeps it.
TEST_F(SelectTest, SingleModeReplacingAndRepeating) {
    Object* a = Line(-6, 2, -2, 2);
    Object* b = Line(2, 2, 6, 2);
    Headless_PushText("EDIT\nB\n");
    ClickAt({0, 0, -6});
    ClickAt({-4, 0, 2});
    EXPECT_FALSE(RunLoop());
    EXPECT_EQ(Headless_Transcript(),
              "\nCommand: \nSelect Objects> Can only select ONE object!"
              "\nSelect Objects> \nStatus <Found: 0, Total: 0> "
              "\nSelect Objects> \nPOLYLINE Edit is not available yet: nothing changed.\nCommand: ");
    EXPECT_EQ(Marked(), 0);
    EXPECT_EQ(g.selection.Select_Single, 0);

    Headless_ClearTranscript();
    Headless_PushText("MOVE\n");
    ClickAt({-4, 0, 2});
    Headless_PushText("COPY\n");   // another command: the selection goes
    ClickAt({4, 0, 2});
    Headless_PushText("\n");       // COPY again: b stays selected and COPY goes on
    EXPECT_FALSE(RunLoop());
    EXPECT_EQ(Headless_Transcript(),
              "\nCommand: \nSelect Objects> \nStatus <Found: 1, Total: 1> \nSelect Objects> *cancel* "
              "\nSelect Objects> \nStatus <Found: 1, Total: 1> \nSelect Objects> \nCOPY> Set Base point: ");
    EXPECT_EQ(a->selected, 0);
    EXPECT_EQ(b->selected, 1);
}

// SNAP is off while selecting (F9 cannot turn it on) and back afterwards.
int g_snapSeen[3];
int RecordSnap() {
    g_snapSeen[0] = g.view.Active_Viewport.SNAP;
    g_snapSeen[1] = g.view.Viewports[2].SNAP;
    g_snapSeen[2] = g.input.selectMode;
    return 1;
}

TEST_F(SelectTest, SnapIsOffWhileSelecting) {
    Line(-6, 2, -2, 2);
    Command_Register(404, RecordSnap, 1);   // NOOP, run inside the selection prompt
    g.view.Active_Viewport.SNAP = 1;
    g.view.Viewports[2].SNAP = 1;
    Headless_PushText("SELECT\n");
    Headless_PushKey(KEY_F(9));
    Headless_PushText("NOOP\nE\nDESELECT\n");
    EXPECT_FALSE(RunLoop());
    EXPECT_EQ(Headless_Transcript(),
              "\nCommand: \nSelect Objects> Unable to set SNAP in Select Mode\nSelect Objects> \nSelect Objects> "
              "Must Select an Object First!\nSelect Objects> *cancel* \nCommand: ");
    EXPECT_EQ(g_snapSeen[0], 0);
    EXPECT_EQ(g_snapSeen[1], 0);
    EXPECT_EQ(g_snapSeen[2], 1);
    EXPECT_EQ(g.view.Active_Viewport.SNAP, 1);
    EXPECT_EQ(g.view.Viewports[2].SNAP, 1);
    EXPECT_EQ(g.input.selectMode, 0);
}

// The one-pick and one-window commands: pick (again after a miss),
// unpick, a whole layer, window, unwindow, deselect all.
TEST_F(SelectTest, PickAndWindowCommands) {
    Layer* other = Layer_Append();
    Object* a = Line(-6, 2, -2, 2);
    Object* b = Line(-6, 6, -2, 6);
    Object* c = Line(2, 2, 6, 2, other);
    Object* d = Line(2, 6, 6, 6, other);
    Headless_PushText("PICK\n");
    ClickAt({0, 0, -6});
    ClickAt({-4, 0, 2});
    Headless_PushText("PICKLAYER\n");
    ClickAt({4, 0, 2});
    Headless_PushText("UNPICK\n");
    ClickAt({4, 0, 6});
    EXPECT_FALSE(RunLoop());
    EXPECT_EQ(Headless_Transcript(),
              "\nCommand: \nSelect an Object> \nNo Objects found\nSelect an Object> Status <Found: 1, Total: 1> "
              "\nCommand: \nSelect an Object> Status <Found: 1, Total: 3> "
              "\nCommand: \nSelect an Object> Status <Found: 1, Total: 2> \nCommand: ");
    EXPECT_EQ(a->selected + b->selected * 2 + c->selected * 4 + d->selected * 8, 1 + 4);

    Headless_ClearTranscript();
    Headless_PushText("UNWINDOW\n");
    ClickAt({-8, 0, 8});
    ClickAt({5, 0, 4});     // b and d are in it, neither selected: nothing to remove
    Headless_PushText("WINDOW\n");
    ClickAt({-8, 0, 8});
    ClickAt({5, 0, 4});
    Headless_PushText("UNWINDOW\nC\nUNPICKLAYER\n");
    ClickAt({-4, 0, 2});
    EXPECT_FALSE(RunLoop());
    EXPECT_EQ(Headless_Transcript(),
              "\nCommand: \nSELECT> Upper/Left corner of Window <Cancel>: \nWindow> Lower/Right corner <Cancle>: "
              "\nNo Objects found\nCommand: \nSELECT> Upper/Left corner of Window <Cancel>: "
              "\nWindow> Lower/Right corner <Cancle>: \nStatus <Found: 2, Total: 4> "
              "\nCommand: \nSELECT> Upper/Left corner of Window <Cancel>: "
              "\nCommand: \nSelect an Object> Status <Found: 1, Total: 2> \nCommand: ");
    EXPECT_EQ(a->selected + b->selected, 0);
    EXPECT_EQ(c->selected + d->selected, 2);
    Headless_PushText("DESELECT\n");
    EXPECT_FALSE(RunLoop());
    EXPECT_EQ(Marked(), 0);
}

}  // namespace
