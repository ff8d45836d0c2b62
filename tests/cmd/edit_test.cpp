// The edit commands in headless sessions of a TOP view (screen right +x,
// screen up +z): one selected triangle, the command typed with its
// answers, the prompts printed and the triangles left, worked out by hand.
#include "input/session.h"
#include "ui/dialog_support.h"

namespace {

using Tri = std::vector<Point3>;   // three corners

class EditTest : public LibrarySessionTest {
  protected:
    // The triangles of the current layer, newest first.
    std::vector<Tri> Triangles() {
        std::vector<Tri> out;
        for (const Object* o = g.scene.Current_Layer->first_object; o; o = o->next) {
            const Point3* c = ((const TriangleData*)o->data)->corner;
            out.push_back({c[0], c[1], c[2]});
        }
        return out;
    }
};

TEST_F(EditTest, CommandsOnOneTriangle) {
    struct Row {
        const char* input;
        const char* transcript;   // after "\nCommand: "
        std::vector<Tri> want;
    };
    const Tri src = {{1, 0, 0}, {2, 0, 0}, {1, 0, 1}};
    const Row rows[] = {
        {"MOVE\n0,0,0\n@3,0,-1\n", "\nMOVE> Set Base point: \nMOVE> Set Offset point: \nPlease wait...",
         {{{4, 0, -1}, {5, 0, -1}, {4, 0, 0}}}},
        {"COPY\n0,0,0\n0,2,0\n", "\nCOPY> Set Base point: \nCOPY> Set Copy point: \nPlease wait...",
         {{{1, 2, 0}, {2, 2, 0}, {1, 2, 1}}, src}},
        // Screen right turns towards screen up: (x, y, z) -> (-z, y, x).
        {"ROTATE\n0,0,0\n90\n", "\nROTATE> Set Base point: \nROTATE> Set Angle: \nPlease wait...",
         {{{0, 0, 1}, {0, 0, 2}, {-1, 0, 1}}}},
        // X left out, then a typed 2: y and z double about the base.
        {"SCALE\n0,0,0\nX\n2\n",
         "\nSCALE> Set Base point: \nSCALE> Set Scale <Reset,Xstatus,Ystatus,Zstatus>: \nX scaling = OFF"
         "\nSCALE> Set Scale <Reset,Xstatus,Ystatus,Zstatus>: \nPlease wait...",
         {{{1, 0, 0}, {2, 0, 0}, {1, 0, 2}}}},
        {"SCALE\n0,0,0\nR\n2\n", "\nSCALE> Set Base point: \nSCALE> Set Scale <Reset,Xstatus,Ystatus,Zstatus>: "
                                 "\nX, Y and Z scaling = ON\nSCALE> Set Scale <Reset,Xstatus,Ystatus,Zstatus>: "
                                 "\nPlease wait...",
         {{{2, 0, 0}, {4, 0, 0}, {2, 0, 2}}}},
        // A point 3 from the base triples about it.
        {"SCALE\n1,0,0\n1,3,0\n", "\nSCALE> Set Base point: \nSCALE> Set Scale <Reset,Xstatus,Ystatus,Zstatus>: "
                                  "\nPlease wait...",
         {{{1, 0, 0}, {4, 0, 0}, {1, 0, 3}}}},
        // Gravity -1, power 2, attractor on corner 0 (it stays); the others
        // move away by 1/r^2: r = 1 each.
        {"GRAVITY\n-1\n\n1,0,0\n",
         "\nSet Gravity value <1> (+/- = Attract/Repell): \nSet Power value <2>: "
         "\nGRAVITY> Set point <Gravity/Scale>: \nPlease wait...",
         {{{1, 0, 0}, {3, 0, 0}, {1, 0, 2}}}},
        // Attractor at the origin, power changed to 1: (1,0,1) is r = sqrt 2 away.
        {"GRAVITY\n-1\n\nS\n1\n0,0,0\n",
         "\nSet Gravity value <-1> (+/- = Attract/Repell): \nSet Power value <2>: "
         "\nGRAVITY> Set point <Gravity/Scale>: \nGRAVITY> Set Power value <2>: "
         "\nGRAVITY> Set point <Gravity/Scale>: \nPlease wait...",
         {{{2, 0, 0}, {2.5, 0, 0}, {1.5, 0, 1.5}}}},
        // A polar array of 3 over Full: copies at 270, 180 and 90 degrees (newest first).
        {"ARRAY\nP\n3\n0,0,0\nF\n",
         "\nARRAY> Set Array type <Polar/Rectangular/Scale>: \nARRAY> Set Number of Copies: "
         "\nARRAY> Set Base point: \nARRAY> Set circle angle <Full/Half>: \nPlease wait...",
         {{{0, 0, -1}, {0, 0, -2}, {1, 0, -1}},
          {{-1, 0, 0}, {-2, 0, 0}, {-1, 0, -1}},
          {{0, 0, 1}, {0, 0, 2}, {-1, 0, 1}},
          src}},
        {"ARRAY\nR\n0\n2\n0,0,0\n0,0,5\n",
         "\nARRAY> Set Array type <Polar/Rectangular/Scale>: \nARRAY> Set Number of Copies: "
         "\nMust be greater than ZERO.\nARRAY> Set Number of Copies: \nARRAY> Set Base point: "
         "\nARRAY> Set Offset point: \nPlease wait...",
         {{{1, 0, 10}, {2, 0, 10}, {1, 0, 11}}, {{1, 0, 5}, {2, 0, 5}, {1, 0, 6}}, src}},
        // The mirror line runs up the screen through the origin: x changes sign.
        {"MIRROR\n0,0,0\n0,0,1\nN\n",
         "\nMIRROR> Set Base point: \nMIRROR> Set Mirror point: "
         "\nMIRROR> Erase Original objects <Yes,No>? <N>:\nPlease wait...",
         {{{-1, 0, 0}, {-2, 0, 0}, {-1, 0, 1}}, src}},
        {"MIRROR\n1,0,0\n2,0,1\nY\n",   // at 45 degrees through (1,0,0): the distances swap
         "\nMIRROR> Set Base point: \nMIRROR> Set Mirror point: "
         "\nMIRROR> Erase Original objects <Yes,No>? <N>:\nPlease wait...",
         {{{1, 0, 0}, {1, 0, 1}, {2, 0, 0}}}},
        {"ERASE\nN\n", "\nERASE> Erase Objects <Yes,No>? <Y>:", {src}},
        {"ERASE\n\n", "\nERASE> Erase Objects <Yes,No>? <Y>:\nErasing...\nPlease wait...", {}},
        {"EXPLODE\n\n", "\nEXPLODE> Erase orignal Objects <Yes,No>? (Y): ", {src}},   // a triangle stays
    };
    for (const Row& r : rows) {
        SCOPED_TRACE(r.input);
        Scene_Clear();
        Layer_NewFirst();
        TriangleData t{{src[0], src[1], src[2]}};
        Object_SetSelected(Add_Triangle(&t), 1, g.scene.Current_Layer);
        Headless_ClearTranscript();
        Headless_PushText(r.input);
        EXPECT_FALSE(RunLoop());
        EXPECT_EQ(Headless_Transcript(), std::string("\nCommand: ") + r.transcript + "\nCommand: ");
        const std::vector<Tri> got = Triangles();
        ASSERT_EQ(got.size(), r.want.size());
        for (size_t i = 0; i < got.size(); i++)
            for (int k = 0; k < 3; k++) {
                EXPECT_NEAR(got[i][k].x, r.want[i][k].x, 1e-9) << i << " " << k;
                EXPECT_NEAR(got[i][k].y, r.want[i][k].y, 1e-9) << i << " " << k;
                EXPECT_NEAR(got[i][k].z, r.want[i][k].z, 1e-9) << i << " " << k;
            }
        EXPECT_EQ(g.scene.Selected_Count, 0);   // Auto_Deselect (or N) leaves nothing selected
    }
}

// ASSIGN (the texture chosen in the chooser; Cancel changes nothing; lights
// keep none) and the change of layer, which keeps the data, texture and flags.
TEST_F(EditTest, AssignAndChangeOfLayer) {
    g.aids.Auto_Deselect = 0;
    Layer* from = g.scene.Current_Layer;
    TriangleData t{{{0, 0, 0}, {1, 0, 0}, {0, 0, 1}}};
    Object* tri = Add_Triangle(&t);
    LightData l = Light_Default();
    Object* light = Add_Light(&l);
    for (Object* o : {tri, light}) Object_SetSelected(o, 1, from);
    Headless_PushText("ASSIGN\nT\n");
    Dlg_Type("texture.dlg", 20, "jade\n");
    Dlg_Click("texture.dlg", "BUTTON", 0);
    EXPECT_FALSE(RunLoop());
    EXPECT_STREQ(tri->texture, "");
    Headless_PushText("ASSIGN\nT\n");
    Dlg_Type("texture.dlg", 20, "jade\n");
    Dlg_Click("texture.dlg", "BUTTON", 1);
    Headless_PushText("ASSIGN\nN\n1\nASSIGN\nS\n7\nASSIGN\nS\n\n");
    EXPECT_FALSE(RunLoop());
    EXPECT_NE(Headless_Transcript().find("\nASSIGN> No texture chosen: nothing changed"), std::string::npos);
    EXPECT_NE(Headless_Transcript().find("\nASSIGN> Set Smooth_Triangle value for the selected objects "
                                         "(1=ON;0=OFF) <1>: "),
              std::string::npos);
    EXPECT_STREQ(tri->texture, "Jade");
    EXPECT_STREQ(light->texture, "");
    EXPECT_EQ(tri->flags, No_shadow | Smooth_triangle);
    Layer* to = Layer_Append();
    Headless_PushText("CHLAYER\n");
    EXPECT_FALSE(RunLoop());
    EXPECT_EQ(from->first_object, nullptr);
    ASSERT_NE(to->first_object, nullptr);
    const Object* moved = to->first_object;   // the walk met the light first
    ASSERT_EQ(moved->kind, KIND_TRIANGLE);
    EXPECT_EQ(0, memcmp(moved->data, &t, sizeof t));
    EXPECT_STREQ(moved->texture, "Jade");
    EXPECT_EQ(moved->flags, No_shadow | Smooth_triangle);
    EXPECT_EQ(g.scene.Selected_Count, 2);   // still selected without Auto_Deselect
}

// While the offset point is dragged the selection is drawn moved (XOR);
// erasing the cursor takes exactly that away; the result lies there.
TEST_F(EditTest, DragShowsTheMovedSelection) {
    Views_RedrawAll();   // the viewports in their background colour
    TriangleData t{{{-5.5, 0, -5.5}, {-3.5, 0, -5.5}, {-5.5, 0, -3.5}}};
    Object_SetSelected(Add_Triangle(&t), 1, g.scene.Current_Layer);
    int mx, my, x, y, ox, oy;
    PixelOf({4, 0, 2}, &mx, &my);
    View_ScreenToWorld(&g.view.Active_Viewport, mx, my);
    const Point3 offset = g.view.Active_Viewport.picked_point;   // about (4, 0, 2)
    PixelOf(Vec_Add({-4.5, 0, -5.5}, offset), &x, &y);   // the middle of the bottom edge, moved
    PixelOf({-4.5, 0, -5.5}, &ox, &oy);                  // ... and where it is
    const int bk = g.config.colors.view_bkcolor, yellow = g.config.colors.general_color;
    ASSERT_EQ(Headless_Pixel(x, y), bk);
    Headless_PushText("MOVE\n0,0,0\n");
    Headless_PushMove(mx, my);
    EXPECT_FALSE(RunLoop());   // the input ends while the offset point is asked
    EXPECT_NE(Headless_Pixel(x, y), bk);
    EXPECT_EQ(Headless_Pixel(ox, oy), yellow);
    Cursor_Erase();
    EXPECT_EQ(Headless_Pixel(x, y), bk);
    EXPECT_EQ(Headless_Pixel(ox, oy), yellow);
    char text[128];   // the same offset typed; the selection is still there
    snprintf(text, sizeof text, "MOVE\n0,0,0\n%.17g,%.17g,%.17g\n", offset.x, offset.y, offset.z);
    Headless_PushText(text);
    EXPECT_FALSE(RunLoop());
    EXPECT_EQ(Headless_Pixel(x, y), g.scene.Current_Layer->color);
    EXPECT_EQ(Headless_Pixel(ox, oy), bk);
}

}  // namespace
