// The edit commands in headless sessions of a TOP view (screen right is +x,
// screen up +z, the viewer looks down -y): their prompts, keywords and
// values, and the edge cases of scaling, gravity, polar arrays, mirrors,
// erasing, exploding, assigning and the change of layer. Expected points
// are worked out by hand from the commands' arithmetic.
#include "input/session.h"
#include "model/selection.h"

namespace {

class EditTest : public SessionTest {
  protected:
    Object* Tri(Point3 a, Point3 b, Point3 c, bool select = true) {
        TriangleData t{{a, b, c}};
        Object* o = Add_Triangle(&t);
        if (select) Object_SetSelected(o, 1, g.scene.Current_Layer);
        return o;
    }
    static const Point3* Corners(const Object* o) { return ((const TriangleData*)o->data)->corner; }
    static void ExpectPoint(Point3 want, Point3 got, const char* what) {
        EXPECT_NEAR(want.x, got.x, 1e-9) << what;
        EXPECT_NEAR(want.y, got.y, 1e-9) << what;
        EXPECT_NEAR(want.z, got.z, 1e-9) << what;
    }
    // The triangles of the current layer, newest first.
    std::vector<const Object*> Objects(Layer* l = nullptr) {
        std::vector<const Object*> out;
        for (const Object* o = (l ? l : g.scene.Current_Layer)->first_object; o; o = o->next) out.push_back(o);
        return out;
    }
};

TEST_F(EditTest, MoveCopyAndRotateByTypedValues) {
    Object* t = Tri({1, 0, 0}, {2, 0, 0}, {1, 0, 1});
    g.aids.Auto_Deselect = 0;
    Headless_PushText("MOVE\n0,0,0\n@3,0,-1\n");
    Headless_PushText("COPY\n1,0,0\n1,2,0\n");
    Headless_PushText("ROTATE\n0,0,0\n90\n");   // turns screen right towards screen up: +x to +z
    EXPECT_FALSE(RunLoop());
    EXPECT_EQ(Headless_Transcript(),
              "\nCommand: \nMOVE> Set Base point: \nMOVE> Set Offset point: \nPlease wait..."
              "\nCommand: \nCOPY> Set Base point: \nCOPY> Set Copy point: \nPlease wait..."
              "\nCommand: \nROTATE> Set Base point: \nROTATE> Set Angle: \nPlease wait...\nCommand: ");
    // Moved by (3, 0, -1), then turned: (x, y, z) -> (-z, y, x).
    ExpectPoint({1, 0, 4}, Corners(t)[0], "moved and turned");
    ExpectPoint({1, 0, 5}, Corners(t)[1], "moved and turned");
    ExpectPoint({0, 0, 4}, Corners(t)[2], "moved and turned");
    ASSERT_EQ(Objects().size(), 2u);
    const Object* copy = Objects()[0];
    EXPECT_EQ(copy->selected, 0);   // copies are never selected; the source was turned after
    ExpectPoint({4, 2, -1}, Corners(copy)[0], "copy moved by (0, 2, 0)");
    EXPECT_EQ(g.scene.Selected_Count, 1);
}

// SCALE: X off scales Y and Z only; a typed 2 doubles about the base; a
// point 3 units from the base triples.
TEST_F(EditTest, ScaleAxesNumberAndPoint) {
    Object* t = Tri({1, 1, 1}, {2, 1, 1}, {1, 1, 2});
    g.aids.Auto_Deselect = 0;
    Headless_PushText("SCALE\n0,0,0\nX\n2\n");
    Headless_PushText("SCALE\n1,1,1\nY\nZ\nR\n0,0,4\n");
    EXPECT_FALSE(RunLoop());
    EXPECT_EQ(Headless_Transcript(),
              "\nCommand: \nSCALE> Set Base point: \nSCALE> Set Scale <Reset,Xstatus,Ystatus,Zstatus>: "
              "\nX scaling = OFF\nSCALE> Set Scale <Reset,Xstatus,Ystatus,Zstatus>: \nPlease wait..."
              "\nCommand: \nSCALE> Set Base point: \nSCALE> Set Scale <Reset,Xstatus,Ystatus,Zstatus>: "
              "\nY scaling = OFF\nSCALE> Set Scale <Reset,Xstatus,Ystatus,Zstatus>: "
              "\nZ scaling = OFF\nSCALE> Set Scale <Reset,Xstatus,Ystatus,Zstatus>: "
              "\nX, Y and Z scaling = ON\nSCALE> Set Scale <Reset,Xstatus,Ystatus,Zstatus>: "
              "\nPlease wait...\nCommand: ");
    // First (1,1,1) (2,1,1) (1,1,2) -> (1,2,2) (2,2,2) (1,2,4); then about
    // (1,1,1) by |(0,0,4) - (1,1,1)| = sqrt(1 + 1 + 9) on every axis.
    const double s = std::sqrt(11.0);
    ExpectPoint({1, 1 + s, 1 + s}, Corners(t)[0], "corner 0");
    ExpectPoint({1 + s, 1 + s, 1 + s}, Corners(t)[1], "corner 1");
    ExpectPoint({1, 1 + s, 1 + 3 * s}, Corners(t)[2], "corner 2");

    // A point exactly 3 from the base triples every distance from it.
    Headless_ClearTranscript();
    TriangleData before = *(TriangleData*)t->data;
    Headless_PushText("SCALE\n1,1,1\n1,4,1\n");
    EXPECT_FALSE(RunLoop());
    for (int k = 0; k < 3; k++)
        ExpectPoint(Vec_Add({1, 1, 1}, Vec_Scale(Vec_Sub(before.corner[k], {1, 1, 1}), 3)), Corners(t)[k], "x3");
}

// GRAVITY: a negative value pushes points away (by Gravity / r^Power along
// the direction to the attractor); a point on the attractor stays.
TEST_F(EditTest, GravityRepelsAndLeavesTheAttractorAlone) {
    Object* t = Tri({0, 0, 0}, {2, 0, 0}, {0, 0, 1});
    Headless_PushText("GRAVITY\n-1\n\nG\n-2\nS\n1\n0,0,0\n");
    EXPECT_FALSE(RunLoop());
    EXPECT_EQ(Headless_Transcript(),
              "\nCommand: \nSet Gravity value <1> (+/- = Attract/Repell): \nSet Power value <2>: "
              "\nGRAVITY> Set point <Gravity/Scale>: \nGRAVITY> Set Gravity value <-1> (+/- = Attract/Repell): "
              "\nGRAVITY> Set point <Gravity/Scale>: \nGRAVITY> Set Power value <2>: "
              "\nGRAVITY> Set point <Gravity/Scale>: \nPlease wait...\nCommand: ");
    EXPECT_EQ(g.xform.Gravity, -2);
    EXPECT_EQ(g.xform.Power, 1);
    ExpectPoint({0, 0, 0}, Corners(t)[0], "on the attractor");
    // r = 2: moved by (-1, 0, 0) * (-2 / 2^1) = (1, 0, 0).
    ExpectPoint({3, 0, 0}, Corners(t)[1], "pushed away");
    // r = 1: (0, 0, -1) * (-2 / 1) = (0, 0, 2).
    ExpectPoint({0, 0, 3}, Corners(t)[2], "pushed away");
}

// A polar array of 3 over Full turns the copies by 90, 180 and 270
// degrees; Half spreads 3 copies over 180 in steps of 45.
TEST_F(EditTest, PolarArrayFullAndHalf) {
    Object* t = Tri({2, 0, 0}, {3, 0, 0}, {2, 0, 1});
    Headless_PushText("ARRAY\nP\n3\n0,0,0\nF\n");
    EXPECT_FALSE(RunLoop());
    EXPECT_EQ(Headless_Transcript(),
              "\nCommand: \nARRAY> Set Array type <Polar/Rectangular/Scale>: \nARRAY> Set Number of Copies: "
              "\nARRAY> Set Base point: \nARRAY> Set circle angle <Full/Half>: \nPlease wait...\nCommand: ");
    std::vector<const Object*> all = Objects();
    ASSERT_EQ(all.size(), 4u);
    EXPECT_EQ(all.back(), t);
    ExpectPoint({0, 0, 2}, Corners(all[2])[0], "90");
    ExpectPoint({-2, 0, 0}, Corners(all[1])[0], "180");
    ExpectPoint({0, 0, -2}, Corners(all[0])[0], "270");
    ExpectPoint({2, 0, 0}, Corners(t)[0], "the source stays");

    Object_SetSelected(t, 1, g.scene.Current_Layer);
    Headless_PushText("ARRAY\nP\n3\n0,0,0\nH\n");
    EXPECT_FALSE(RunLoop());
    all = Objects();
    ASSERT_EQ(all.size(), 7u);
    const double r = std::sqrt(2.0);
    ExpectPoint({r, 0, r}, Corners(all[2])[0], "45");
    ExpectPoint({0, 0, 2}, Corners(all[1])[0], "90");
    ExpectPoint({-r, 0, r}, Corners(all[0])[0], "135");

    // Rectangular and scale arrays: copy k lies k offsets away, or k-fold
    // scaled; a count below 1 is asked again.
    Object_SetSelected(t, 1, g.scene.Current_Layer);
    g.aids.Auto_Deselect = 0;   // both arrays from the same source
    Headless_ClearTranscript();
    Headless_PushText("ARRAY\nR\n0\n2\n0,0,0\n0,0,5\n");
    Headless_PushText("ARRAY\nS\n2\n2,0,0\n2\n");
    EXPECT_FALSE(RunLoop());
    EXPECT_NE(Headless_Transcript().find("\nARRAY> Set Number of Copies: \nMust be greater than ZERO."
                                         "\nARRAY> Set Number of Copies: \nARRAY> Set Base point: "
                                         "\nARRAY> Set Offset point: \nPlease wait..."),
              std::string::npos)
        << Headless_Transcript();
    all = Objects();
    ASSERT_EQ(all.size(), 7u + 2 + 2);
    ExpectPoint({2, 0, 10}, Corners(all[2])[0], "second rectangular copy");
    ExpectPoint({2, 0, 5}, Corners(all[3])[0], "first rectangular copy");
    ExpectPoint({6, 0, 0}, Corners(all[0])[1], "scale copy 2: (3,0,0) four times as far from (2,0,0)");
    ExpectPoint({4, 0, 0}, Corners(all[1])[1], "scale copy 1");
}

// MIRROR answered N keeps the source beside its mirror image; Y replaces it.
TEST_F(EditTest, MirrorKeepsOrErasesTheSource) {
    Object* t = Tri({1, 0, 0}, {2, 0, 0}, {1, 0, 3});
    g.aids.Auto_Deselect = 0;
    // The mirror line runs up the screen through (0, 0, 0): x changes sign.
    Headless_PushText("MIRROR\n0,0,0\n0,0,1\nN\n");
    EXPECT_FALSE(RunLoop());
    EXPECT_EQ(Headless_Transcript(),
              "\nCommand: \nMIRROR> Set Base point: \nMIRROR> Set Mirror point: "
              "\nMIRROR> Erase Original objects <Yes,No>? <N>:\nPlease wait...\nCommand: ");
    ASSERT_EQ(Objects().size(), 2u);
    ExpectPoint({1, 0, 0}, Corners(t)[0], "source kept");
    ExpectPoint({-2, 0, 0}, Corners(Objects()[0])[1], "mirror image beside it");
    ExpectPoint({-1, 0, 3}, Corners(Objects()[0])[2], "mirror image beside it");

    // A line at 45 degrees through (1, 0, 0) swaps the distances along x and z.
    Headless_PushText("MIRROR\n1,0,0\n2,0,1\nY\n");
    EXPECT_FALSE(RunLoop());
    ASSERT_EQ(Objects().size(), 2u);
    ExpectPoint({1, 0, 0}, Corners(t)[0], "on the line");
    ExpectPoint({1, 0, 1}, Corners(t)[1], "(2,0,0) -> (1,0,1)");
    ExpectPoint({4, 0, 0}, Corners(t)[2], "(1,0,3) -> (4,0,0)");
}

// ERASE: N keeps the objects and clears the selection; Enter erases, and
// with Erase_No_Confirm nothing is asked. A selection of 3 leaves 0.
TEST_F(EditTest, EraseAsksUnlessConfirmIsOff) {
    for (int i = 0; i < 3; i++) Tri({(double)i, 0, 0}, {i + 0.5, 0, 0}, {(double)i, 0, 1});
    Headless_PushText("ERASE\nN\nERASE\n");
    for (int i = 0; i < 3; i++) {
        int x, y;
        PixelOf({i + 0.25, 0, 0}, &x, &y);
        Headless_PushClick(x, y);
    }
    Headless_PushText("E\n\n");
    EXPECT_FALSE(RunLoop());
    EXPECT_EQ(Headless_Transcript(),
              "\nCommand: \nERASE> Erase Objects <Yes,No>? <Y>:\nCommand: \nSelect Objects> "
              "\nStatus <Found: 1, Total: 1> \nSelect Objects> \nStatus <Found: 1, Total: 2> "
              "\nSelect Objects> \nStatus <Found: 1, Total: 3> \nSelect Objects> Done!"
              "\nERASE> Erase Objects <Yes,No>? <Y>:\nErasing...\nPlease wait...\nCommand: ");
    EXPECT_EQ(g.scene.Selected_Count, 0);
    EXPECT_TRUE(Objects().empty());

    Tri({0, 0, 0}, {1, 0, 0}, {0, 0, 1});
    g.aids.Erase_No_Confirm = 1;
    Headless_ClearTranscript();
    Headless_PushText("ERASE\n");
    EXPECT_FALSE(RunLoop());
    EXPECT_EQ(Headless_Transcript(), "\nCommand: \nErasing...\nPlease wait...\nCommand: ");
    EXPECT_TRUE(Objects().empty());
}

// ASSIGN sets the texture (the current texture name; lights keep none),
// No_shadow and Smooth_triangle; Enter keeps the value shown.
TEST_F(EditTest, AssignTextureAndFlags) {
    g.aids.Auto_Deselect = 0;
    Object* t = Tri({0, 0, 0}, {1, 0, 0}, {0, 0, 1});
    LightData l = Light_Default();
    Object* light = Add_Light(&l);
    Object_SetSelected(light, 1, g.scene.Current_Layer);
    Headless_PushText("ASSIGN\nT\n");
    strcpy(g.writer.textures.Current_Texture_Name, "");
    EXPECT_FALSE(RunLoop());
    EXPECT_STREQ(t->texture, "");
    strcpy(g.writer.textures.Current_Texture_Name, "Polished_Brass");
    Headless_PushText("ASSIGN\nT\nASSIGN\nN\n1\nASSIGN\nS\n7\nASSIGN\nN\n\n");
    EXPECT_FALSE(RunLoop());
    EXPECT_EQ(Headless_Transcript(),
              "\nCommand: \nASSIGN> Change what properties <Texture/No_shadow/Smooth_triangle>?: "
              "\nASSIGN> No texture chosen: nothing changed\nCommand: "   // where the first session ended
              "\nCommand: \nASSIGN> Change what properties <Texture/No_shadow/Smooth_triangle>?: \nPlease wait..."
              "\nCommand: \nASSIGN> Change what properties <Texture/No_shadow/Smooth_triangle>?: "
              "\nASSIGN> Set No_Shadow value for the selected objects (1=ON;0=OFF) <0>: \nPlease wait..."
              "\nCommand: \nASSIGN> Change what properties <Texture/No_shadow/Smooth_triangle>?: "
              "\nASSIGN> Set Smooth_Triangle value for the selected objects (1=ON;0=OFF) <0>: \nPlease wait..."
              "\nCommand: \nASSIGN> Change what properties <Texture/No_shadow/Smooth_triangle>?: "
              "\nASSIGN> Set No_Shadow value for the selected objects (1=ON;0=OFF) <1>: \nPlease wait..."
              "\nCommand: ");
    EXPECT_STREQ(t->texture, "Polished_Brass");
    EXPECT_STREQ(light->texture, "");
    EXPECT_EQ(t->flags, No_shadow | Smooth_triangle);
    EXPECT_EQ(light->flags, No_shadow | Smooth_triangle);
    Headless_PushText("ASSIGN\nS\n0\n");
    EXPECT_FALSE(RunLoop());
    EXPECT_EQ(t->flags, No_shadow);
}

// The change of layer moves the selection into Current_Layer with its data,
// texture and flags; objects already there stay as they are.
TEST_F(EditTest, ChangeLayerMovesTheSelection) {
    Layer* from = g.scene.Current_Layer;
    Object* t = Tri({0, 0, 0}, {1, 0, 0}, {0, 0, 1});
    strcpy(t->texture, "Gold");
    t->flags = No_shadow;
    Object* keep = Tri({5, 0, 0}, {6, 0, 0}, {5, 0, 1}, false);
    Layer* to = Layer_Append();
    Object* there = Tri({0, 0, 2}, {1, 0, 2}, {0, 0, 3});
    g.aids.Auto_Deselect = 0;
    Headless_PushText("CHLAYER\n");
    EXPECT_FALSE(RunLoop());
    EXPECT_EQ(Objects(from), std::vector<const Object*>{keep});
    ASSERT_EQ(Objects(to).size(), 2u);
    EXPECT_EQ(Objects(to)[1], there);
    const Object* moved = Objects(to)[0];
    EXPECT_STREQ(moved->texture, "Gold");
    EXPECT_EQ(moved->flags, No_shadow);
    EXPECT_EQ(moved->selected, 1);   // stays selected without Auto_Deselect
    ExpectPoint({1, 0, 0}, Corners(moved)[1], "same corners");
    EXPECT_EQ(g.scene.Selected_Count, 2);
}

// EXPLODE: a face and a cube-shaped polyline become faces (the sources
// removed on Y, kept on N); a triangle stays as it is.
TEST_F(EditTest, ExplodeKeepsOrRemovesTheSources) {
    FaceData f{{{0, 0, 0}, {1, 0, 0}, {1, 0, 1}, {0, 0, 1}}};
    Object* face = Add_Face(&f);
    Object_SetSelected(face, 1, g.scene.Current_Layer);
    Object* tri = Tri({3, 0, 0}, {4, 0, 0}, {3, 0, 1});
    Headless_PushText("EXPLODE\nN\n");
    EXPECT_FALSE(RunLoop());
    EXPECT_EQ(Headless_Transcript(), "\nCommand: \nEXPLODE> Erase orignal Objects <Yes,No>? (Y): \nCommand: ");
    std::vector<const Object*> all = Objects();
    ASSERT_EQ(all.size(), 3u);   // the new face, the triangle, the old face
    EXPECT_EQ(all[1], tri);
    EXPECT_EQ(all[2], face);
    EXPECT_EQ(all[0]->kind, KIND_3DFACE);
    EXPECT_EQ(0, memcmp(all[0]->data, face->data, sizeof(FaceData)));

    Object_SetSelected(face, 1, g.scene.Current_Layer);
    Object_SetSelected(tri, 1, g.scene.Current_Layer);
    Headless_PushText("EXPLODE\n\n");
    EXPECT_FALSE(RunLoop());
    all = Objects();
    ASSERT_EQ(all.size(), 3u);   // the second new face, the first, the triangle
    EXPECT_EQ(all[2], tri);
    EXPECT_EQ(all[0]->kind, KIND_3DFACE);
    EXPECT_EQ(g.scene.Selected_Count, 0);
}

// While the second point is dragged, the selection is drawn moved (XOR);
// erasing the cursor takes exactly that drawing away again. The result
// lies where the preview was.
TEST_F(EditTest, DragShowsTheMovedSelection) {
    Views_RedrawAll();   // the viewports in their background colour
    Tri({-5.5, 0, -5.5}, {-3.5, 0, -5.5}, {-5.5, 0, -3.5});
    Headless_PushText("MOVE\n0,0,0\n");
    int x, y, mx, my, ox, oy;
    PixelOf({4, 0, 2}, &mx, &my);
    Headless_PushMove(mx, my);
    View_ScreenToWorld(&g.view.Active_Viewport, mx, my);
    const Point3 offset = g.view.Active_Viewport.picked_point;   // about (4, 0, 2)
    PixelOf(Vec_Add({-4.5, 0, -5.5}, offset), &x, &y);   // the middle of the bottom edge, moved
    PixelOf({-4.5, 0, -5.5}, &ox, &oy);                  // ... and where it is
    const int empty = Headless_Pixel(x, y);   // nothing has been drawn there yet
    ASSERT_EQ(empty, g.config.colors.view_bkcolor);
    EXPECT_FALSE(RunLoop());   // input ends while the offset point is asked
    EXPECT_NE(Headless_Pixel(x, y), empty);                             // the preview
    EXPECT_EQ(Headless_Pixel(ox, oy), g.config.colors.general_color);   // the object itself
    Cursor_Erase();
    EXPECT_EQ(Headless_Pixel(x, y), empty);
    EXPECT_EQ(Headless_Pixel(ox, oy), g.config.colors.general_color);

    char text[128];   // the same offset typed (the selection is still there)
    snprintf(text, sizeof text, "MOVE\n0,0,0\n%.17g,%.17g,%.17g\n", offset.x, offset.y, offset.z);
    Headless_PushText(text);
    EXPECT_FALSE(RunLoop());
    EXPECT_EQ(Headless_Pixel(x, y), g.scene.Current_Layer->color);   // the object now
    EXPECT_EQ(Headless_Pixel(ox, oy), empty);                        // wiped where it was
}

}  // namespace
