// Editing primitives and lights: the keyword menu of every kind typed
// through, the transform and general dialogs from the menus and for the
// selection (313, 314), 302 reaching a primitive and a light by a pick, the
// light dialog and the camera dialog (510), each checked against the record
// worked out by hand.
#include <functional>
#include <map>

#include "input/session.h"
#include "ui/dialog_support.h"

namespace {

class PrimEditTest : public LibrarySessionTest {
  protected:
    Object* Add(int type, const std::function<void(PrimitiveData&)>& set = nullptr) {
        PrimitiveData p = Primitive_Default();
        p.prim_type = type;
        p.p1 = 1;
        if (set) set(p);
        return Add_Primitive(&p);
    }
    static PrimitiveData& Rec(Object* o) { return *(PrimitiveData*)o->data; }
    static LightData& Light(Object* o) { return *(LightData*)o->data; }
    // Runs f to its end with the input pushed, as the command 302 would; its result.
    int Run(const std::function<int()>& f) {
        g.input.currentCommand = CMD_EDIT;   // numbers are read only while a command runs
        int r = -1;
        EXPECT_TRUE(Headless_RunSession([&] { r = f(); }));
        return r;
    }
};

void ExpectSame(const PrimitiveData& a, const PrimitiveData& b) {
    for (const auto& [x, y] : {std::pair{a.translate, b.translate}, {a.size, b.size}, {a.scale, b.scale},
                               {a.rotate, b.rotate}, {Point3{a.p1, a.p2, a.p3}, Point3{b.p1, b.p2, b.p3}}})
        EXPECT_TRUE(x.x == y.x && x.y == y.y && x.z == y.z) << x.x << " " << x.y << " " << x.z;
    EXPECT_EQ(std::vector<int>({a.prim_type, a.prim_aux, a.hf_type, a.prim_flags}),
              std::vector<int>({b.prim_type, b.prim_aux, b.hf_type, b.prim_flags}));
    EXPECT_STREQ(a.file, b.file);
}

// Each row: the kind, the record before, what is typed, the value questions
// asked (the menu prompt comes before each and after the last), the record after.
TEST_F(PrimEditTest, MenusOfEveryKind) {
    const std::map<int, const char*> menu = {
        {PRIM_SPHERE, "\nSPHERE Edit <Radius,Transform,General,OR,Exit>: "},
        {PRIM_TORUS, "\nTORUS Edit <Inner,Outer,Transform,General,OR,Exit>: "},
        {PRIM_DISC, "\nDISC Edit <Inner,Outer,Transform,General,OR,Exit>: "},
        {PRIM_CONE, "\nCONE Edit <Radius1,Radius2,Length,Close,Transform,General,OR,Exit>: "},
        {PRIM_BOX, "\nCUBE Edit <Xlength,Ylength,Zlength,Transform,General,OR,Exit>: "},
        {PRIM_HEIGHT_FIELD, "\nHEIGHTFIELD Edit <X,Y,Z,Filename,FileType,Water_level,Transform,General,OR,Exit>: "},
    };
    using Set = std::function<void(PrimitiveData&)>;
    struct Row {
        int type;
        Set before;
        const char* input;
        std::vector<const char*> asked;
        Set after;
    };
    const char* order = "\nSHPERE> Order of Rotation? (0=X-Z-Y, 1=X-Y-Z) <%d>: ";
    char order0[80], order1[80];
    snprintf(order0, sizeof order0, order, 0);
    snprintf(order1, sizeof order1, order, 1);
    const Row rows[] = {
        // A typed number is stored as its absolute value; Enter keeps the value.
        {PRIM_SPHERE, nullptr, "R\n-4\nR\n\nE\n", {"\nSPHERE> Set Radius <1>: ", "\nSPHERE> Set Radius <4>: "},
         [](PrimitiveData& p) { p.p1 = 4; }},
        // Any non-zero order answer counts as 1; its absolute value is truncated.
        {PRIM_SPHERE, nullptr, "OR\n-5\nOR\n0.5\nOR\n2\nE\n", {order0, order1, order0},
         [](PrimitiveData& p) { p.prim_flags = PRIM_ROT_XYZ; }},
        {PRIM_TORUS, nullptr, "I\n2\nO\n0.5\nE\n",
         {"\nTORUS> Set Inner Radius <1>: ", "\nTORUS> Set Outer Radius <0>: "},
         [](PrimitiveData& p) { p.p1 = 2, p.p2 = 0.5; }},
        {PRIM_DISC, [](PrimitiveData& p) { p.p1 = 0, p.p2 = 2; }, "I\n0.5\nOR\n1\nE\n",
         {"\nDISC> Set Inner Radius <0>: ", "\nDISC> Order of Rotation? (0=X-Z-Y, 1=X-Y-Z) <0>: "},
         [](PrimitiveData& p) { p.p1 = 0.5, p.prim_flags = PRIM_ROT_XYZ; }},
        {PRIM_CONE, nullptr, "R1\n2\nR2\n1\nL\n5\nC\n1\nE\n",
         {"\nCONE> Set Radius #1 <1>: ", "\nCONE> Set Radius #2 <0>: ", "\nCONE> Set Length of cone <0>: ",
          "\nCONE> Opened or Closed? (0=Closed, 1=Opened) <Closed>: "},
         [](PrimitiveData& p) { p.p1 = 2, p.p2 = 1, p.p3 = 5, p.prim_flags = PRIM_OPEN; }},
        {PRIM_CONE, [](PrimitiveData& p) { p.prim_flags = PRIM_OPEN | PRIM_ROT_XYZ; }, "C\n0\nE\n",
         {"\nCONE> Opened or Closed? (0=Closed, 1=Opened) <Opened>: "},
         [](PrimitiveData& p) { p.prim_flags = PRIM_ROT_XYZ; }},
        {PRIM_BOX, [](PrimitiveData& p) { p.size = {1, 1, 1}; }, "X\n2\nY\n3\nZ\n4\nE\n",
         {"\nCUBE> Set X Length <1>: ", "\nCUBE> Set Y Length <1>: ", "\nCUBE> Set Z Length <1>: "},
         [](PrimitiveData& p) { p.size = {2, 3, 4}; }},
        // The file name is a word cut to 12 characters; the type's sign is dropped.
        {PRIM_HEIGHT_FIELD, [](PrimitiveData& p) { p.p1 = 0; }, "Y\n3\nF\nmountains.tga\nFT\n-1\nW\n0.3\nF\n\nE\n",
         {"\nHEIGHTFIELD> Set Y Length <1>: ", "\nHEIGHTFIELD> Enter Filename (without DIR!) <>: ",
          "\nHEIGHTFIELD> Enter FileType (0=GIF,1=TGA,2=POT) <0>: ",
          "\nHEIGHTFIELD> Set \"water_level\" (0.0 to 1.0) <0>: ",
          "\nHEIGHTFIELD> Enter Filename (without DIR!) <mountains.tg>: "},
         [](PrimitiveData& p) { p.scale.y = 3, p.hf_type = 1, p.p1 = 0.3, snprintf(p.file, 13, "mountains.tg"); }},
    };
    for (const Row& r : rows) {
        SCOPED_TRACE(r.input);
        Object* o = Add(r.type, r.before);
        PrimitiveData want = Rec(o);
        r.after(want);
        std::string transcript = menu.at(r.type);
        for (const char* q : r.asked) transcript += std::string(q) + menu.at(r.type);
        Headless_ClearTranscript();
        Headless_PushText(r.input);
        EXPECT_EQ(Run([&] { return Primitive_Edit(o, g.scene.Current_Layer); }), 1);
        EXPECT_EQ(Headless_Transcript(), transcript);
        ExpectSame(Rec(o), want);
    }
    // A plane has no menu: back at once. A command at a value prompt ends
    // the edit with 0, nothing changed.
    Headless_ClearTranscript();
    EXPECT_EQ(Run([&] { return Primitive_Edit(Add(PRIM_PLANE), g.scene.Current_Layer); }), 1);
    EXPECT_EQ(Headless_Transcript(), "");
    Object* o = Add(PRIM_SPHERE);
    Headless_PushText("R\n\x03");
    EXPECT_EQ(Run([&] { return Primitive_Edit(o, g.scene.Current_Layer); }), 0);
    EXPECT_EQ(Rec(o).p1, 1);
}

TEST_F(PrimEditTest, TransformAndGeneralFromTheMenu) {
    Object* o = Add(PRIM_BOX);
    g.writer.textures.Current_Texture_Name[0] = '\0';
    Headless_PushText("T\n");
    Dlg_Type("trans.dlg", 2, "5\n");
    Dlg_Type("trans.dlg", 9, "-90\n");   // stored as typed
    Dlg_Type("trans.dlg", 7, "0.5\n");
    Dlg_Click("trans.dlg", "BUTTON", 1);
    Headless_PushText("T\n");
    Dlg_Type("trans.dlg", 3, "7\n");
    Dlg_Click("trans.dlg", "BUTTON", 0);   // Cancel: nothing
    Headless_PushText("G\n");
    Dlg_Click("general.dlg", "CHECK", 2);
    Dlg_Type("general.dlg", 3, "-7.9\n");   // absolute, truncated
    Dlg_Click("general.dlg", "TEXTBOX", 5);   // chooser cancelled: the name stays
    Dlg_Click("texture.dlg", "BUTTON", 0);
    Dlg_Click("general.dlg", "BUTTON", 1);
    Headless_PushText("G\n");
    Dlg_Type("general.dlg", 3, "1\n");   // raised to 2
    Dlg_Click("general.dlg", "CHECK", 6);
    Dlg_Click("general.dlg", "BUTTON", 0);
    Headless_PushText("E\n");
    EXPECT_EQ(Run([&] { return Primitive_Edit(o, g.scene.Current_Layer); }), 1);
    EXPECT_EQ(Rec(o).translate.x, 5);
    EXPECT_EQ(Rec(o).translate.y, 0);
    EXPECT_EQ(Rec(o).rotate.y, -90);
    EXPECT_EQ(Rec(o).scale.z, 0.5);
    EXPECT_EQ(Rec(o).prim_aux, 7);
    EXPECT_EQ(o->flags, No_shadow);
    EXPECT_STREQ(o->texture, "");
    EXPECT_NE(Headless_Transcript().find("\nNo texture chosen."), std::string::npos);

    // The texture the chooser gives goes into the object; a segment count
    // below 2 is raised.
    Headless_PushText("G\n");
    Dlg_Click("general.dlg", "TEXTBOX", 5);
    Dlg_Type("texture.dlg", 20, "jade\n");
    Dlg_Click("texture.dlg", "BUTTON", 1);
    Dlg_Type("general.dlg", 3, "1\n");
    Dlg_Click("general.dlg", "CHECK", 6);
    Dlg_Click("general.dlg", "BUTTON", 1);
    Headless_PushText("E\n");
    Run([&] { return Primitive_Edit(o, g.scene.Current_Layer); });
    EXPECT_STREQ(o->texture, "Jade");
    EXPECT_EQ(Rec(o).prim_aux, 2);
    EXPECT_EQ(o->flags, No_shadow | Smooth_triangle);
}

// 313: one dialog per selected primitive; Cancel skips one, Ctrl-C ends the
// walk (a third dialog would need input the session does not have).
// 314: one dialog for all, only what was changed given to each.
TEST_F(PrimEditTest, DialogsForTheSelection) {
    Layer* l = g.scene.Current_Layer;
    Object* a = Add(PRIM_SPHERE);
    TriangleData t{{{0, 0, 0}, {1, 0, 0}, {0, 0, 1}}};
    Object* tri = Add_Triangle(&t);
    Object* b = Add(PRIM_SPHERE, [](PrimitiveData& p) { p.prim_aux = 20; });
    Object* c = Add(PRIM_CONE);
    for (Object* o : {a, tri, b, c}) Object_SetSelected(o, 1, l);
    snprintf(tri->texture, sizeof tri->texture, "Stone");
    g.aids.Auto_Deselect = 0;
    Dlg_Type("trans.dlg", 4, "3\n");   // c, the newest
    Dlg_Click("trans.dlg", "BUTTON", 1);
    Dlg_Type("trans.dlg", 4, "8\n");   // b
    Dlg_Click("trans.dlg", "BUTTON", 0);
    Headless_PushKey(3);                 // a: Ctrl-C ends the walk
    EXPECT_EQ(Run(Com_TransformDialog), 1);
    EXPECT_EQ(Rec(c).translate.z, 3);
    EXPECT_EQ(Rec(b).translate.z, 0);
    EXPECT_EQ(Rec(a).translate.z, 0);
    EXPECT_NE(Headless_Transcript().find("\nTRANSFORM> CONE, 1 of 3\nTRANSFORM> SPHERE, 2 of 3"), std::string::npos);

    // The first selected object (c) shows 8 segments; 12 typed and the
    // smooth box ticked reach every primitive's count and every object's
    // flags; the textures stay.
    Dlg_Type("general.dlg", 3, "12\n");
    Dlg_Click("general.dlg", "CHECK", 6);
    Dlg_Click("general.dlg", "BUTTON", 1);
    EXPECT_EQ(Run(Com_GeneralDialog), 1);
    for (Object* o : {a, b, c}) EXPECT_EQ(Rec(o).prim_aux, 12);
    for (Object* o : {a, tri, b, c}) EXPECT_EQ(o->flags, Smooth_triangle);
    EXPECT_STREQ(tri->texture, "Stone");
    EXPECT_EQ(g.scene.Selected_Count, 4);

    // With Auto_Deselect the selection is used up; with only a triangle
    // selected 313 has nothing to open.
    g.aids.Auto_Deselect = 1;
    Selection_Clear();
    Object_SetSelected(tri, 1, l);
    Headless_ClearTranscript();
    EXPECT_EQ(Run(Com_TransformDialog), 1);
    EXPECT_EQ(Headless_Transcript(), "\nTRANSFORM> No primitive among the selected objects.");
    EXPECT_EQ(g.scene.Selected_Count, 0);
}

// 302 by a pick: the sphere's menu, a plane's none, and a light's dialog.
TEST_F(PrimEditTest, EditObjectByPick) {
    Object* s = Add(PRIM_SPHERE, [](PrimitiveData& p) { p.p1 = 2; });
    auto pick = [&](Point3 p) {
        int x, y;
        PixelOf(p, &x, &y);
        Headless_PushClick(x, y);
    };
    // The keywords are clicked in the side menu the edit shows (rows 3
    // Radius and 8 Exit); the menu before it comes back.
    const int side = g.menus.side.shown;
    Headless_PushText("EDIT\n");
    pick({2, 0, 0});   // on the sphere's equator
    PickSide(3);
    Headless_PushText("3\n");
    PickSide(8);
    EXPECT_FALSE(RunLoop());
    EXPECT_EQ(Rec(s).p1, 3);
    EXPECT_EQ(s->selected, 0);
    EXPECT_EQ(g.menus.side.shown, side);

    Scene_Clear();
    Layer_NewFirst();
    Add(PRIM_PLANE, [](PrimitiveData& p) { p.scale = {2, 2, 2}; });
    Headless_ClearTranscript();
    Headless_PushText("EDIT\n");
    pick({2, 0, 1});   // on the square's edge
    EXPECT_FALSE(RunLoop());
    EXPECT_EQ(Headless_Transcript(), "\nCommand: \nSelect Objects> \nCommand: ");

    Scene_Clear();
    Layer_NewFirst();
    LightData l0 = Light_Default();
    l0.position = {3, 0, 3};
    Object* light = Add_Light(&l0);
    Headless_PushText("EDIT\n");
    pick({3, 0, 3});
    Dlg_Click("editlght.dlg", "CHECK", 3);     // spot light on
    Dlg_Click("editlght.dlg", "CHECK", 4);     // jitter on
    Dlg_Type("editlght.dlg", 8, "0.5\n");      // red
    Dlg_Type("editlght.dlg", 13, "-2\n");      // point_at z
    Dlg_Type("editlght.dlg", 16, "3\n");       // adaptive
    Dlg_Type("editlght.dlg", 20, "30\n");      // radius
    Dlg_Click("editlght.dlg", "BUTTON", 1);
    Headless_PushText("EDIT\n");
    pick({3, 0, 3});
    Dlg_Type("editlght.dlg", 5, "9\n");
    Dlg_Click("editlght.dlg", "BUTTON", 0);    // Cancel: nothing
    EXPECT_FALSE(RunLoop());
    const LightData& l = Light(light);
    EXPECT_EQ(l.light_flags, LIGHT_SPOT | LIGHT_JITTER);
    EXPECT_EQ(l.color.x, 0.5);
    EXPECT_EQ(l.point_at.z, -2);
    EXPECT_EQ(l.adaptive, 3);
    EXPECT_EQ(l.radius, 30);
    EXPECT_EQ(l.position.x, 3);

    snprintf(g.config.SUPPORT_DIR, sizeof g.config.SUPPORT_DIR, "/nonexistent");
    Headless_ClearTranscript();
    EXPECT_EQ(Light_Dialog(light), 0);
    EXPECT_EQ(Camera_Dialog(), 0);
    int segs = 8;
    EXPECT_EQ(General_Dialog(light, &segs, "x"), 0);
    EXPECT_EQ(Headless_Transcript(), "Can't find editlght.dlg, or Out of Memory!Can't find camera.dlg, or Out of Memory!"
                                     "Can't find general.dlg, or Out of Memory!");
}

TEST_F(PrimEditTest, CameraDialog) {
    Dlg_Type("camera.dlg", 2, "1\n");
    Dlg_Type("camera.dlg", 3, "2\n");
    Dlg_Type("camera.dlg", 4, "-9\n");
    Dlg_Type("camera.dlg", 9, "0\n");
    Dlg_Type("camera.dlg", 10, "1\n");    // up (0, 0, 1)
    Dlg_Type("camera.dlg", 12, "400\n");  // brought into [0, 360)
    Dlg_Type("camera.dlg", 13, "0\n");    // 0 is the usual 4:3
    Dlg_Click("camera.dlg", "CHECK", 11);
    Dlg_Click("camera.dlg", "BUTTON", 1);
    EXPECT_EQ(Run(Com_CameraDialog), 1);
    char text[3][80];
    Var_GetText("CAM", text[0], 80);
    Var_GetText("UP", text[1], 80);
    Var_GetText("CAMERA", text[2], 80);
    EXPECT_EQ(std::string(text[0]) + " " + text[1] + " " + text[2], "1,2,-9 0,0,1 1");
    for (int i = 1; i <= 4; i++) EXPECT_EQ(g.view.Viewports[i].FOV, 40);
    EXPECT_EQ(g.view.camera_aspect, 1.333333);

    // Cancel leaves everything.
    Dlg_Type("camera.dlg", 12, "10\n");
    Dlg_Type("camera.dlg", 13, "2\n");
    Dlg_Click("camera.dlg", "BUTTON", 0);
    EXPECT_EQ(Run(Com_CameraDialog), 1);
    EXPECT_EQ(g.view.Active_Viewport.FOV, 40);
    EXPECT_EQ(g.view.camera_aspect, 1.333333);
}

}  // namespace
