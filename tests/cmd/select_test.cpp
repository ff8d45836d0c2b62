// Selection in headless sessions that click at world points of a TOP view
// (screen right +x, screen up +z): the Select Objects prompt, single mode,
// a replacing or repeated command, windows, instances and nested layers,
// and the one-pick commands.
#include "input/session.h"

namespace {

class SelectTest : public SessionTest {
  protected:
    // A line in the plane y = 0 from (x1, z1) to (x2, z2) in `layer`.
    Object* Line(double x1, double z1, double x2, double z2, Layer* layer) {
        Layer* keep = g.scene.Current_Layer;
        g.scene.Current_Layer = layer;
        Object* o = AddPolyline({{x1, 0, z1}, {x2, 0, z2}});
        g.scene.Current_Layer = keep;
        return o;
    }
    void ClickAt(double x, double z) {
        int px, py;
        PixelOf({x, 0, z}, &px, &py);
        Headless_PushClick(px, py);
    }
};

TEST_F(SelectTest, SelectObjectsPrompt) {
    Layer* base = g.scene.Current_Layer;
    Layer* off = Layer_Append();
    off->on = 0;
    Object* a1 = Line(-6, 2, -2, 2, base);
    Object* a2 = Line(-6, 6, -2, 6, base);
    Object* hidden = Line(2, -2, 6, -2, off);
    g.view.Active_Viewport.SNAP = 1;
    Headless_PushText("SELECT\n");
    Headless_PushKey(KEY_F(9));   // SNAP stays off while selecting
    ClickAt(4, -2);    // only a layer that is off has something here
    ClickAt(-4, 2);    // a1
    ClickAt(-4, 2);    // a1 again: already selected
    Headless_PushText("R\n");
    ClickAt(-3, 2);    // a1 leaves
    Headless_PushText("R\nE\nA\nB\n");
    ClickAt(-4, 2);    // a1 brings its whole layer
    Headless_PushText("E\n");
    EXPECT_FALSE(RunLoop());
    EXPECT_EQ(Headless_Transcript(),
              "\nCommand: \nSelect Objects> Unable to set SNAP in Select Mode"
              "\nSelect Objects> \nStatus <Found: 0, Total: 0> \nSelect Objects> \nStatus <Found: 1, Total: 1> "
              "\nSelect Objects> \nStatus <Found: 0, Total: 1> \nSelect Objects> \nRemove Objects> "
              "\nStatus <Found: 1, Total: 0> \nRemove Objects> Nothing to Remove!"
              "\nRemove Objects> Must Select an Object First!\nRemove Objects> \nSelect Objects> "
              "Select by LAYER = ON\nSelect Objects> \nStatus <Found: 1, Total: 2> \nSelect Objects> Done!"
              "\nCommand: ");
    EXPECT_EQ(a1->selected + a2->selected, 2);
    EXPECT_EQ(hidden->selected, 0);
    EXPECT_EQ(g.scene.Selected_Count, 2);
    EXPECT_EQ(g.view.Active_Viewport.SNAP, 1);
    EXPECT_EQ(g.menus.side.shown, 1010);
}

// Single mode ends at the first hit; another command clears the selection,
// the running one repeated (Enter) keeps it; C gives a window up.
TEST_F(SelectTest, SingleModeReplacingRepeatingAndWindows) {
    Layer* base = g.scene.Current_Layer;
    Object* a = Line(-6, 2, -2, 2, base);
    Object* b = Line(-1, 2, 1, 8, base);   // crosses the window's edge
    Headless_PushText("EDIT\nB\n");
    ClickAt(-4, 2);
    Headless_PushText("MOVE\n");
    ClickAt(-4, 2);
    Headless_PushText("COPY\nW\nC\nW\n");
    ClickAt(-8, 4);
    ClickAt(0, 0);
    Headless_PushText("\n");
    EXPECT_FALSE(RunLoop());
    EXPECT_EQ(Headless_Transcript(),
              "\nCommand: \nSelect Objects> Can only select ONE object!\nSelect Objects> "
              "\nPOLYLINE Edit <PI,ED,ST,TN,W,H,WI,WR,R1,R2,TS,TR,C,O,S,F,R,M,N,P,A,D,B,E>: *cancel* "
              "\nSelect Objects> \nStatus <Found: 1, Total: 1> \nSelect Objects> *cancel* "
              "\nSelect Objects> \nWindow> Upper/Left corner <Cancel>: *Cancle*"
              "\nSelect Objects> \nWindow> Upper/Left corner <Cancel>: \nWindow> Lower/Right corner <Cancle>: "
              "\nStatus <Found: 2, Total: 2> \nSelect Objects> \nCOPY> Set Base point: ");
    EXPECT_EQ(a->selected + b->selected, 2);
    EXPECT_EQ(g.selection.Select_Single, 0);
}

// An instance is picked where the instancing layer shows it (its block
// object is marked), a nested layer where its parent's transform puts it;
// the pick and window commands, and DESELECT.
TEST_F(SelectTest, InstancesNestingAndPickCommands) {
    Layer* block = g.scene.Current_Layer;
    Object* c = Line(2, 2, 6, 2, block);
    Layer* user = Layer_Append();
    user->translate = {0, 0, -10};
    user->instance = block;
    Layer* nested = Layer_Append();
    nested->level = 1;
    Object* n = Line(-6, 4, -2, 4, nested);   // seen at z = -6
    Headless_PushText("PICK\n");
    ClickAt(-4, 4);   // where n would be without its parent's transform
    ClickAt(-4, -6);
    Headless_PushText("PICK\n");
    ClickAt(4, -8);   // c as the instance shows it
    Headless_PushText("UNWINDOW\n");
    ClickAt(-8, -4);
    ClickAt(0, -8);
    EXPECT_FALSE(RunLoop());
    EXPECT_EQ(Headless_Transcript(),
              "\nCommand: \nSelect an Object> \nNo Objects found\nSelect an Object> Status <Found: 1, Total: 1> "
              "\nCommand: \nSelect an Object> Status <Found: 1, Total: 2> "
              "\nCommand: \nSELECT> Upper/Left corner of Window <Cancel>: \nWindow> Lower/Right corner <Cancle>: "
              "\nStatus <Found: 1, Total: 1> \nCommand: ");
    EXPECT_EQ(n->selected, 0);
    EXPECT_EQ(c->selected, 1);
    Headless_PushText("DESELECT\n");
    EXPECT_FALSE(RunLoop());
    EXPECT_EQ(g.scene.Selected_Count, 0);
}

}  // namespace
