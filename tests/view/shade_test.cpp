// SHADE through the headless display: the lit shade against the light, the
// nearer of two faces in every kind of view whatever the drawing order, the
// colours and questions of each type, the 16-colour refusal, the viewport
// and the camera plane as limits, and the buffers' allocation.
#include <algorithm>
#include <cmath>

#include "input/session.h"
#include "view/shade.h"
#include "view/view_scene.h"

namespace {

const char kRun[] = "\nInitializing Shade-> Success\nProccessing Triangles\n\nCommand: ";
const Point3 X{1, 0, 0}, Y{0, 1, 0}, Z{0, 0, 1};

class Shade : public SessionTest {
  protected:
    void SetUp() override {
        SessionTest::SetUp();
        Open(257);   // 640 x 480, 256 colours
    }
    void Open(int mode) {
        Headless_Reset();
        Screen_Open(mode);
        BareTopView();
    }
    // An empty scene whose next faces go into a layer of `colour`.
    void Fresh(int colour) {
        Scene_Clear();
        Layer_NewFirst()->color = colour;
    }
    void NextLayer(int colour) {
        Layer* l = Layer_Append();
        l->color = colour;
        g.scene.Current_Layer = l;
    }
    // A square face of half-size s round c, in the plane of u and v.
    static void Square(Point3 c, Point3 u, Point3 v, double s) {
        FaceData f;
        const int su[4] = {-1, 1, 1, -1}, sv[4] = {-1, -1, 1, 1};
        for (int i = 0; i < 4; i++) f.corner[i] = Vec_Add(c, Vec_Add(Vec_Scale(u, su[i] * s), Vec_Scale(v, sv[i] * s)));
        Add_Face(&f);
    }
    // SHADE with `answers`; the transcript after the loop's first prompt.
    std::string Run(const std::string& answers = "\n") {
        Headless_ClearTranscript();
        Headless_PushText(("SHADE\n" + answers).c_str());
        EXPECT_FALSE(RunLoop());
        return Headless_Transcript().substr(strlen("\nCommand: "));
    }
    // Palette index at world point p of the active view.
    int At(Point3 p) {
        Viewport* vp = &g.view.Active_Viewport;
        View_Project(vp, p);
        double x = vp->screen_x, y = vp->screen_y;
        if (vp->VIEW == VIEW_3D) {
            x = vp->screen_cx - View_PerspectiveScale(vp) * vp->eye_point.x / vp->eye_point.z;
            y = vp->screen_cy + vp->half_height_px * vp->eye_point.y / vp->eye_point.z;
        }
        return Headless_Pixel((int)x, (int)y);
    }
};

// Shade k of colour c's ramp: (int)(7.5 n.L + 7.75) for a unit normal n
// facing the viewer and the light L = UP; colour 0 takes ramp 15.
TEST_F(Shade, LitShadeFollowsTheAngleToTheLight) {
    g.shade.Shade_Type = 1;
    const double r3 = std::sqrt(3.0);
    struct Case {
        int view, colour;
        Point3 v, up;   // the face spans X and v
        int shade;
    } cases[] = {
        {VIEW_TOP, LRED, Z, {0, 1, 0}, 15},              // normal = UP
        {VIEW_BOTTOM, LRED, Z, {0, 1, 0}, 0},            // seen from below: facing away
        {VIEW_TOP, LRED, Z, {0, -3, 0}, 0},              // the light from below, any length
        {VIEW_TOP, BLACK, {0, -r3 / 2, 0.5}, Y, 11},     // 60 degrees: 3.75 + 7.75
        {VIEW_TOP, BLACK, {0, -0.6, 0.8}, Y, 13},        // n.L = 0.8: 6 + 7.75
        {VIEW_TOP, BLACK, {0, -0.6, 0.8}, {0, -1, 0}, 1},   // -6 + 7.75
    };
    for (const Case& c : cases) {
        Fresh(c.colour);
        Square({0, 0, 0}, X, c.v, 2);
        View_SetKind(&g.view.Active_Viewport, c.view);
        Views_SetUp(c.up);
        EXPECT_EQ(Run(), "\nSHADE> Use Default Shade options <Yes,No>? <Y>:" + std::string(kRun));
        const int ramp = c.colour ? c.colour : 15;
        EXPECT_EQ(At({0.5, 0, 0.3}), 16 * ramp + c.shade) << c.shade;
    }
}

// Two faces across the viewing direction, the nearer one smaller: it hides
// the farther where they overlap, in either drawing order, in every view.
TEST_F(Shade, NearerFaceWinsWhateverTheOrder) {
    g.shade.Shade_Type = 3;   // faces in the layer colour
    const int kinds[7] = {VIEW_TOP, VIEW_BOTTOM, VIEW_RIGHT, VIEW_FRONT, VIEW_BACK, VIEW_FRONT, VIEW_3D};
    for (int k = 0; k < 7; k++)
        for (int nearFirst = 0; nearFirst <= 1; nearFirst++) {
            Viewport* vp = &g.view.Active_Viewport;
            BareTopView();
            View_SetKind(vp, kinds[k]);
            Point3 d;   // from the scene towards the viewer
            if (kinds[k] == VIEW_3D) {
                View_LookAt(vp, {3, 4, -10}, {0, 0, 0});
                vp->CAM = {3, 4, -10};
                d = vp->CAM;
            } else {
                vp->WORLD = k == 5;   // a WORLD view, turned past 45 degrees
                View_SetPitch(vp, 70);
                View_SetHeading(vp, 40);
                // Up x right of the screen, measured through the projection
                // (the world is left-handed).
                Point3 right, up;
                View_Project(vp, {0, 0, 0});
                const double x0 = vp->screen_x, y0 = vp->screen_y;
                for (int i = 0; i < 3; i++) {
                    View_Project(vp, i == 0 ? X : i == 1 ? Y : Z);
                    (&right.x)[i] = vp->screen_x - x0;
                    (&up.x)[i] = y0 - vp->screen_y;
                }
                d = Vec_Cross(up, right);
            }
            d = Vec_Scale(d, 1 / Vec_Length(d));
            Point3 u = Vec_Cross(d, std::fabs(d.y) > 0.9 ? X : Y);
            u = Vec_Scale(u, 1 / Vec_Length(u));
            const Point3 w = Vec_Cross(d, u);
            Fresh(nearFirst ? RED : GREEN);
            Square(Vec_Scale(d, nearFirst ? 1 : -1), u, w, nearFirst ? 1 : 3);
            NextLayer(nearFirst ? GREEN : RED);
            Square(Vec_Scale(d, nearFirst ? -1 : 1), u, w, nearFirst ? 3 : 1);
            Run();
            EXPECT_EQ(At(Vec_Add(d, Vec_Scale(Vec_Add(u, w), 0.5))), RED) << k << nearFirst;
            EXPECT_EQ(At(Vec_Add(Vec_Scale(d, -1), Vec_Scale(u, 2))), GREEN) << k << nearFirst;
        }
}

TEST_F(Shade, TypesColoursAndTheSixteenColourRefusal) {
    Open(18);   // 16 colours: types 0 and 1 refused, nothing drawn
    Fresh(YELLOW);
    Square({0, 0, 0}, X, Z, 2);
    Views_RedrawAll();
    for (const char* answers : {"N\n0\nL\n", "N\n1\n"}) {
        const std::string t = Run(answers);
        EXPECT_NE(t.find("\nCurrent Shade type NOT supported for 16 color modes!\nCommand: "), std::string::npos) << t;
        EXPECT_EQ(t.find("Initializing"), std::string::npos);
        EXPECT_EQ(At({0.5, 0, 0.5}), BLACK);
        EXPECT_EQ(std::count_if(Headless_Frame(), Headless_Frame() + 640 * 480, [](unsigned char c) { return c > 15; }), 0);
    }
    // Type 2: faces Face_Color, edges the layer colour; type 3 the other way round.
    EXPECT_NE(Run("N\n2\n9\n").find("\nFaces in Face_Color, and edges in Layer color!\nSHADE> Set Face_Color <0>: "),
              std::string::npos);
    EXPECT_EQ(At({0.5, 0, 0.5}), LBLUE);
    EXPECT_EQ(At({0, 0, 2}), YELLOW);   // on an edge
    EXPECT_NE(Run("N\n3\n13\n").find("\nFaces in Layer color, and edges in Edge color!\nSHADE> Set Edge_Color <7>: "),
              std::string::npos);
    EXPECT_EQ(At({0.5, 0, 0.5}), YELLOW);
    EXPECT_EQ(At({0, 0, 2}), LMAGENTA);

    Open(257);   // type 0: lit faces, edges in Edge_Color or the layer colour
    EXPECT_EQ(Run("N\n0\nE\n12\n"), "\nSHADE> Use Default Shade options <Yes,No>? <Y>:\nSHADE> Select a Shade Type "
                                    "<0,1,2,3>? <3>: \nSHADE> Use Layer or Edge Color <L>: \nFaces in shade color, "
                                    "and edges in Edge color!\nSHADE> Set Edge_Color <13>: " + std::string(kRun));
    EXPECT_EQ(At({0.5, 0, 0.5}), 16 * YELLOW + 15);
    EXPECT_EQ(At({0, 0, 2}), LRED);
    EXPECT_NE(Run("N\n\nL\n").find("<0>: \nSHADE> Use Layer or Edge Color <E>: \nInitializing"), std::string::npos);
    Run();   // the options chosen last are the defaults
    EXPECT_EQ(At({0, 0, 2}), YELLOW);
}

// Nothing outside the viewport changes; nothing behind the camera shows.
TEST_F(Shade, ViewportAndCameraPlaneAreTheLimits) {
    g.shade.Shade_Type = 3;
    View_SetRect(&g.view.Active_Viewport, 100, 100, 300, 250);
    Fresh(CYAN);
    Square({0, 0, 0}, X, Z, 1000);
    Run();
    int outside = 0, inside = 0;   // cyan pixels; the cut edges take no edge colour
    for (int y = 0; y < 480; y++)
        for (int x = 0; x < 640; x++) {
            const bool in = x >= 100 && x <= 300 && y >= 100 && y <= 250;
            (in ? inside : outside) += Headless_Frame()[y * 640 + x] == CYAN;
        }
    EXPECT_EQ(outside, 0);
    EXPECT_EQ(inside, 201 * 151);

    Viewport* vp = &g.view.Active_Viewport;
    BareTopView();
    View_SetKind(vp, VIEW_3D);
    View_LookAt(vp, {0, 0, -10}, {0, 0, 10});
    vp->CAM = {0, 0, -10};
    Fresh(BROWN);
    Square({0, 0, -20}, X, Y, 50);   // wholly behind
    NextLayer(CYAN);
    Square({0, -1, 0}, X, Z, 30);    // a floor reaching behind the camera
    Run();
    EXPECT_EQ(At({0, -1, 5}), CYAN);
    EXPECT_EQ(std::count(Headless_Frame(), Headless_Frame() + 640 * 480, BROWN), 0);
}

TEST_F(Shade, NoMemoryForTheBuffersSaysSoAndLeavesNothing) {
    const long live = g.mem.live_blocks;
    for (int fail = 1; fail <= 4; fail++) {   // each of the four buffers
        Mem_FailAfter(fail);
        EXPECT_NE(Run().find("\nInitializing Shade-> Not enough Memory*cancel* "), std::string::npos);
        EXPECT_EQ(g.mem.live_blocks, live) << fail;
    }
}

}  // namespace
