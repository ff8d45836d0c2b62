// The settings dialogs as a user drives them through the real dialog
// files: the drawing aids with their rules, the layers dialog with its
// option box and error boxes, the transform dialog, and the options, fog
// and directories dialogs.
#include <cmath>

#include "input/session.h"
#include "ui/dialog_support.h"

namespace {

class DialogCommands : public SessionTest {
  protected:
    bool Run(int (*command)()) { return Headless_RunSession([&] { command(); }); }
    // Runs until the input is used up while a box is still open, so that the
    // screen can be read; true when that is how it ended.
    bool RunUntilWaiting(int (*command)()) {
        try {
            command();
        } catch (const Headless_InputExhausted&) {
            return true;
        }
        return false;
    }
    std::string ScreenText(int col, int row, int cells) {
        return Headless_ReadText(col * 8, row * 15 + 1, cells, g.config.colors.dialog_fg);
    }
};

// --- drawing aids ---

TEST_F(DialogCommands, AidsDialogRules) {
    struct Case {
        int id;
        const char* typed;
        const char* setting;
        double stored;
    };
    const Case cases[] = {
        {11, "90", "PITCH", 89.9},      {11, "450", "PITCH", 89.9},   {11, "-90", "PITCH", 269.9},
        {11, "-3600", "PITCH", 0},      {12, "725", "HEADING", 5},    {13, "-7.6", "SEG_VALUE", 8},
        {13, "1", "SEG_VALUE", 2},      {13, "abc", "SEG_VALUE", 2},  {2, "2.5", "GRIDX", 2.5},
        {6, "-4", "SNAPY", 4},          {5, "0", "SNAPX", 1},   // a spacing of 0 keeps the old one
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(std::string(c.setting) + " typed " + c.typed);
        Dlg_Type("variable.dlg", c.id, std::string(c.typed) + "\n");
        Dlg_Click("variable.dlg", "BUTTON", 1);
        ASSERT_TRUE(Run(Com_Variables));
        double v;
        ASSERT_TRUE(Var_GetDouble(c.setting, &v));
        EXPECT_NEAR(v, c.stored, 1e-9);
    }
    // The view centre goes into the active viewport.
    Dlg_Type("variable.dlg", 9, "7\n");
    Dlg_Click("variable.dlg", "BUTTON", 1);
    ASSERT_TRUE(Run(Com_Variables));
    EXPECT_EQ(View_GetCentre(&g.view.Active_Viewport).y, 7);
}

TEST_F(DialogCommands, AidsDialogTogglesCancelAndStatusLine) {
    int grid, snap;
    Var_GetInt("GRID", &grid);
    const int deselect = g.aids.Auto_Deselect;
    Dlg_Click("variable.dlg", "CHECK", 21);   // GRID twice: unchanged
    Dlg_Click("variable.dlg", "CHECK", 21);
    Dlg_Click("variable.dlg", "CHECK", 27);   // a stored switch
    Dlg_Click("variable.dlg", "BUTTON", 1);
    ASSERT_TRUE(Run(Com_Variables));
    int now;
    Var_GetInt("GRID", &now);
    EXPECT_EQ(now, grid);
    EXPECT_EQ(g.aids.Auto_Deselect, !deselect);

    // Edits, then Ctrl-C: nothing is written.
    double pitch;
    Var_GetDouble("PITCH", &pitch);
    Dlg_Type("variable.dlg", 11, "12\n");
    Dlg_Click("variable.dlg", "CHECK", 20);
    Headless_PushKey(3);
    ASSERT_TRUE(Run(Com_Variables));
    double p2;
    Var_GetDouble("PITCH", &p2);
    EXPECT_EQ(p2, pitch);
    Var_GetInt("SNAP", &snap);
    EXPECT_EQ(snap, 0);
    // The Cancel button does the same.
    Dlg_Click("variable.dlg", "CHECK", 20);
    Dlg_Click("variable.dlg", "BUTTON", 0);
    ASSERT_TRUE(Run(Com_Variables));
    Var_GetInt("SNAP", &snap);
    EXPECT_EQ(snap, 0);

    // A changed SNAP shows on the status line at once.
    auto status = [] { return Headless_ReadText(170, 1, 4, g.config.colors.foreground); };
    EXPECT_NE(status(), "Snap");
    Dlg_Click("variable.dlg", "CHECK", 20);
    Dlg_Click("variable.dlg", "BUTTON", 1);
    ASSERT_TRUE(Run(Com_Variables));
    EXPECT_EQ(status(), "Snap");
}

TEST_F(DialogCommands, MissingDialogFile) {
    snprintf(g.config.SUPPORT_DIR, sizeof g.config.SUPPORT_DIR, "/nonexistent");
    EXPECT_EQ(Variables_Dialog(), 0);
    EXPECT_EQ(Layers_Dialog(), 0);
    EXPECT_EQ(Com_About(), 1);
    EXPECT_EQ(Headless_Transcript(),
              "Can't find variable.dlg, or Out of Memory!Can't find layers.dlg, or Out of Memory!"
              "Can't find about.dlg, or Out of Memory!");
}

// --- layers ---

TEST_F(DialogCommands, LayersDialogFieldsAndList) {
    Layer* first = g.scene.First_Layer;
    AddPolyline({{0, 0, 0}, {1, 1, 0}});
    Dlg_Type("layers.dlg", 6, "-5\n");           // colour below 0 becomes 0
    Dlg_Type("layers.dlg", 10, "Walls of the house\n");
    Dlg_Click("layers.dlg", "BUTTON", 3);        // delete: it has an object, refused
    Dlg_Click("layers.dlg", "TEXTBOX", 9);       // CSG: UNION -> MERGE
    Dlg_Click("layers.dlg", "CHECK", 5);         // off
    Dlg_Click("layers.dlg", "BUTTON", 2);        // new: first in the list, current
    Dlg_Click("layers.dlg", "GRAPH", 4, MOUSE_LEFT, 2);   // row 2: the old layer again
    Dlg_Click("layers.dlg", "GRAPH", 4, MOUSE_RIGHT, 2);  // right click on the current: nothing
    Dlg_Click("layers.dlg", "TEXTBOX", 6);
    Headless_PushText("999\n");                  // above the colour count: the largest index
    Dlg_Click("layers.dlg", "BUTTON", 1);
    g.cmd.sceneChanged = 0;
    ASSERT_TRUE(Run(Com_Layers));
    EXPECT_EQ(Layer_Count(), 2);
    EXPECT_EQ(g.scene.Current_Layer, first);
    EXPECT_STREQ(first->name, "Walls of the");
    EXPECT_EQ(first->color, 255);
    EXPECT_EQ(first->csg, CSG_MERGE);
    EXPECT_EQ(first->on, 0);
    EXPECT_NE(Headless_Transcript().find('\a'), std::string::npos);   // the refused delete
    EXPECT_EQ(g.cmd.sceneChanged, 1);
}

TEST_F(DialogCommands, LayerRulesShowTheirErrorBoxes) {
    // Box 1: the current layer is nested, and is to be instanced.
    Layer* b = g.scene.First_Layer;
    Layer* c = Layer_Append();
    c->level = 1;   // c nested under b, and current
    Dlg_Click("layers.dlg", "GRAPH", 4, MOUSE_RIGHT, 1);   // b's options
    Headless_PushClick((7 + 4) * 8 + 8, (8 + 3) * 15 + 7);   // "Instance" of the 64 x 14 box
    ASSERT_TRUE(RunUntilWaiting(Com_Layers));
    // The 38 x 7 box: left 40 - 19 - 1, top 16 - 3 - 1.
    EXPECT_EQ(ScreenText(20 + 13, 12 + 1, 14), "Error Message!");
    EXPECT_EQ(ScreenText(20 + 3, 12 + 3, 24), "The BLOCK Layer must NOT");
    EXPECT_EQ(ScreenText(20 + 14, 12 + 6, 6), "    OK");   // the pointer is on its end
    EXPECT_EQ(b->instance, nullptr);
    Headless_ClearInput();

    // Box 3: c, nested under b, is made an instance of b; the sweep drops it.
    g.scene.Current_Layer = b;
    Dlg_Click("layers.dlg", "GRAPH", 4, MOUSE_RIGHT, 2);
    Headless_PushClick((7 + 4) * 8 + 8, (8 + 3) * 15 + 7);
    ASSERT_TRUE(RunUntilWaiting(Com_Layers));
    EXPECT_EQ(ScreenText(20 + 3, 12 + 4, 31), "contain an instance of it-self.");
    EXPECT_EQ(c->instance, nullptr);
    Headless_ClearInput();

    // Box 2: with a instancing b, b's family may not instance a's.
    Layer* a = Layer_Append();
    a->instance = b;
    c->level = 1;
    g.scene.Current_Layer = a;
    Dlg_Click("layers.dlg", "GRAPH", 4, MOUSE_RIGHT, 2);   // c, in b's family
    Headless_PushClick((7 + 4) * 8 + 8, (8 + 3) * 15 + 7);
    ASSERT_TRUE(RunUntilWaiting(Com_Layers));
    // 39 x 8: left 40 - 19 - 1, top 16 - 4 - 1.
    EXPECT_EQ(ScreenText(20 + 3, 11 + 5, 33), "lead to an endless recusive loop.");
    EXPECT_EQ(c->instance, nullptr);
}

TEST_F(DialogCommands, OptionBoxNestsAndTheListShowsIt) {
    Layer* t = g.scene.First_Layer;
    strcpy(t->name, "Base");
    Layer* c = Layer_NewFirst();   // c first and current, t second
    strcpy(c->name, "Roof");
    c->color = LGREEN;
    Dlg_Click("layers.dlg", "GRAPH", 4, MOUSE_RIGHT, 2);   // t's options
    Headless_PushClick((7 + 4) * 8 + 8, (8 + 7) * 15 + 7);   // "Nest Layer"
    ASSERT_TRUE(RunUntilWaiting(Com_Layers));
    EXPECT_EQ(g.scene.First_Layer, t);
    EXPECT_EQ(t->next, c);
    EXPECT_EQ(c->level, 1);
    // Row 2 of the list: ">" at column 0, "[U]" at 4 * 1 + 2, the name at x + 6.
    DlgSpot list = Dlg_Find(Dlg_Support("layers.dlg"), "GRAPH", 4, 80, 32);
    const int y = (list.row + 2) * 15 + 1, x0 = list.col * 8;
    EXPECT_EQ(Headless_ReadText(x0, y, 1, g.config.colors.general_color), ">");
    EXPECT_EQ(Headless_ReadText(x0 + 6 * 8, y, 3, g.config.colors.view_text), "[ ]");
    EXPECT_EQ(Headless_ReadText(x0 + 7 * 8, y, 1, LGREEN), "U");
    EXPECT_EQ(Headless_ReadText(x0 + 12 * 8, y, 4, LGREEN), "Roof");
}

TEST_F(DialogCommands, TransformDialog) {
    Layer* l = g.scene.First_Layer;
    Dlg_Click("layers.dlg", "BUTTON", 8);
    Dlg_Type("trans.dlg", 3, "2.5\n");
    Dlg_Type("trans.dlg", 7, "3\n");
    Dlg_Type("trans.dlg", 8, "400\n");      // rotations are brought into 0..360
    Dlg_Type("trans.dlg", 10, "-30\n");
    Dlg_Click("trans.dlg", "BUTTON", 1);
    Dlg_Click("layers.dlg", "BUTTON", 13);  // texture transform: edited, then cancelled
    Dlg_Type("trans.dlg", 2, "9\n");
    Dlg_Click("trans.dlg", "BUTTON", 0);
    Dlg_Click("layers.dlg", "BUTTON", 1);
    ASSERT_TRUE(Run(Com_Layers));
    EXPECT_EQ(l->translate.y, 2.5);
    EXPECT_EQ(l->scale.z, 3);
    EXPECT_EQ(l->rotate.x, 40);
    EXPECT_EQ(l->rotate.z, 330);
    EXPECT_EQ(l->texture_translate.x, 0);
}

// --- ray-tracer settings ---

TEST_F(DialogCommands, OptionsFogAndDirectoriesRules) {
    Dlg_Type("options.dlg", 13, "40000\n");    // at most 32768
    Dlg_Type("options.dlg", 16, "-12\n");      // absolute
    Dlg_Type("options.dlg", 21, "-5\n");       // absolute, at most 3
    Dlg_Type("options.dlg", 20, "4\n");        // at most 1
    Dlg_Click("options.dlg", "CHECK", 6);
    Dlg_Click("options.dlg", "BUTTON", 2);     // display type: Paradise (9), OK
    Dlg_Click("display.dlg", "CHECK", 19);
    Dlg_Click("display.dlg", "BUTTON", 1);
    Dlg_Click("options.dlg", "TEXTBOX", 12);   // palette: a choice, then Cancel
    Dlg_Click("palette.dlg", "CHECK", 10);
    Dlg_Click("palette.dlg", "BUTTON", 0);
    Dlg_Click("options.dlg", "BUTTON", 1);
    ASSERT_TRUE(Run(Com_Options));
    EXPECT_EQ(g.render.Render_Width, 32768);
    EXPECT_EQ(g.render.End_Row, 12);
    EXPECT_EQ(g.render.Antialias_Threshold, 3.0);
    EXPECT_EQ(g.render.Antialias_Jitter, 1.0);
    EXPECT_EQ(g.render.Antialias_On, 1);
    EXPECT_EQ(g.render.Display_Type, 9);
    EXPECT_EQ(g.render.Palette_Type, 4);

    Dlg_Click("fog.dlg", "CHECK", 3);
    Dlg_Type("fog.dlg", 5, "-0.25\n");         // colours: absolute, at most 1
    Dlg_Type("fog.dlg", 12, "7\n");
    Dlg_Type("fog.dlg", 18, "-100\n");         // symbols: absolute, at least 300
    Dlg_Type("fog.dlg", 16, "-8\n");
    Dlg_Type("fog.dlg", 15, "-3\n");           // quality as typed
    Dlg_Click("fog.dlg", "BUTTON", 1);
    ASSERT_TRUE(Run(Com_Fog));
    EXPECT_EQ(g.pov.Fog_On, 1);
    EXPECT_EQ(g.pov.Fog_Color.x, 0.25);
    EXPECT_EQ(g.pov.Background_Color.z, 1);
    EXPECT_EQ(g.render.Max_Symbols, 300);
    EXPECT_EQ(g.pov.Max_Trace_Level, 8);
    EXPECT_EQ(g.render.Render_Quality, -3);

    Dlg_Click("dirs.dlg", "TEXTBOX", 11);      // output type RAW -> DUMP -> TARGE24
    Dlg_Click("dirs.dlg", "TEXTBOX", 11);
    Dlg_Type("dirs.dlg", 5, "garden\n");
    Dlg_Click("dirs.dlg", "CHECK", 12);
    Dlg_Click("dirs.dlg", "TEXTBOX", 4);       // confirmed unchanged: the whole value stays
    Headless_PushText("\n");
    Dlg_Click("dirs.dlg", "BUTTON", 1);
    std::string longDir = "/a/very/long/scene/directory/that/does/not/fit/the/box/of/the/dialog";
    snprintf(g.config.Scenes_Dir, sizeof g.config.Scenes_Dir, "%s", longDir.c_str());
    ASSERT_TRUE(Run(Com_Dirs));
    EXPECT_EQ(g.render.Output_Type, 4);
    EXPECT_STREQ(g.run.Scene_Name, "garden");
    EXPECT_EQ(g.pov.Overwrite_Pov, 1);
    EXPECT_EQ(g.config.Scenes_Dir, longDir);
}

}  // namespace
