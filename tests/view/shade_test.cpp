// SHADE through the headless display: the lit shade of a face against the
// light, the nearer of two faces in every kind of view whatever the drawing
// order, the colours of each shade type, the 16-colour refusal, the
// questions, the viewport as the limit, and the buffers' allocation.
#include <algorithm>
#include <cmath>

#include "input/session.h"
#include "view/shade.h"
#include "view/view_scene.h"

namespace {

class Shade : public SessionTest {
  protected:
    void SetUp() override {
        SessionTest::SetUp();
        OpenScreen(257);   // 640 x 480, 256 colours
    }
    void OpenScreen(int mode) {
        Headless_Reset();
        Screen_Open(mode);
        Screen_DrawFrame();
        BareTopView();
    }
    // A layer of its own in `colour` (the first layer takes the first call).
    Layer* UseLayer(int colour) {
        Layer* l = first_used_ ? Layer_Append() : g.scene.First_Layer;
        first_used_ = true;
        l->color = colour;
        g.scene.Current_Layer = l;
        return l;
    }
    // A square face of half-size s round c, in the plane spanned by u and v.
    static void Square(Point3 c, Point3 u, Point3 v, double s) {
        FaceData f;
        f.corner[0] = Vec_Add(c, Vec_Add(Vec_Scale(u, -s), Vec_Scale(v, -s)));
        f.corner[1] = Vec_Add(c, Vec_Add(Vec_Scale(u, s), Vec_Scale(v, -s)));
        f.corner[2] = Vec_Add(c, Vec_Add(Vec_Scale(u, s), Vec_Scale(v, s)));
        f.corner[3] = Vec_Add(c, Vec_Add(Vec_Scale(u, -s), Vec_Scale(v, s)));
        Add_Face(&f);
    }
    // SHADE with the default answer; the transcript of the run.
    std::string RunShade(const std::string& answers = "\n") {
        Headless_ClearTranscript();
        Headless_PushText(("SHADE\n" + answers).c_str());
        EXPECT_FALSE(RunLoop());
        std::string t = Headless_Transcript();
        const std::string lead = "\nCommand: ";   // the loop's first prompt
        if (t.rfind(lead, 0) == 0) t.erase(0, lead.size());
        return t;
    }
    // Palette index on the screen at world point p of the active view.
    int At(Point3 p) {
        Viewport* vp = &g.view.Active_Viewport;
        View_Project(vp, p);
        double x = vp->screen_x, y = vp->screen_y;
        if (vp->VIEW == VIEW_3D) {
            const Point3 e = vp->eye_point;
            x = vp->screen_cx - View_PerspectiveScale(vp) * e.x / e.z;
            y = vp->screen_cy + vp->half_height_px * e.y / e.z;
        }
        return Headless_Pixel((int)x, (int)y);
    }
    bool first_used_ = false;
};

const char kRun[] = "\nInitializing Shade-> Success\nProccessing Triangles\n\nCommand: ";

// Index of shade k of colour c's ramp.
int Ramp(int c, int k) { return 16 * c + k; }

TEST_F(Shade, FaceTowardsTheLightIsBrightestAndAwayDarkest) {
    g.shade.Shade_Type = 1;
    const Point3 X{1, 0, 0}, Z{0, 0, 1};
    UseLayer(LRED);
    Square({0, 0, 0}, X, Z, 2);   // horizontal: its normal is UP or its opposite
    struct Case {
        int view;
        Point3 up;
        int expected;
    } cases[] = {
        {VIEW_TOP, {0, 1, 0}, Ramp(LRED, 15)},      // seen from above: faces the light
        {VIEW_BOTTOM, {0, 1, 0}, Ramp(LRED, 0)},    // seen from below: faces away
        {VIEW_TOP, {0, -3, 0}, Ramp(LRED, 0)},      // the light from below (any length)
    };
    for (const Case& c : cases) {
        View_SetKind(&g.view.Active_Viewport, c.view);
        Views_SetUp(c.up);
        EXPECT_EQ(RunShade(), "\nSHADE> Use Default Shade options <Yes,No>? <Y>:" + std::string(kRun));
        EXPECT_EQ(At({1, 0, 0.5}), c.expected) << c.view;
        EXPECT_EQ(At({-1.5, 0, -1}), c.expected) << c.view;
    }
}

// The lit shade is (int)(7.5 n.L + 7.75) of the ramp; colour 0 uses ramp 15.
TEST_F(Shade, TiltedFacesTakeTheShadeOfTheirAngle) {
    g.shade.Shade_Type = 1;
    UseLayer(BLACK);
    const double r3 = std::sqrt(3.0);
    struct Case {
        Point3 v;       // second direction of the face (the first is X)
        Point3 up;
        int shade;
    } cases[] = {
        // Normal (0, 1/2, sqrt(3)/2), 60 degrees from UP: 7.5 * 0.5 + 7.75 = 11.5.
        {{0, -r3 / 2, 0.5}, {0, 1, 0}, 11},
        // Normal (0, 0.8, 0.6): 7.5 * 0.8 + 7.75 = 13.75; the light below: -6 + 7.75 = 1.75.
        {{0, -0.6, 0.8}, {0, 1, 0}, 13},
        {{0, -0.6, 0.8}, {0, -1, 0}, 1},
    };
    for (const Case& c : cases) {
        Scene_Clear();
        Layer_NewFirst();
        first_used_ = false;
        UseLayer(BLACK);
        Square({0, 0, 0}, {1, 0, 0}, c.v, 2);   // seen from above
        Views_SetUp(c.up);
        RunShade();
        EXPECT_EQ(At({0, 0, 0}), Ramp(15, c.shade)) << c.shade;
    }
}

// Two faces across the viewing direction: the nearer covers the farther
// where they overlap, in whichever order they are drawn, in every view.
TEST_F(Shade, NearerFaceWinsWhateverTheOrder) {
    g.shade.Shade_Type = 3;   // faces in the layer colour
    struct View {
        const char* name;
        int kind, world;
        double pitch, heading;
    } views[] = {
        {"TOP", VIEW_TOP, 0, 0, 0},       {"BOTTOM", VIEW_BOTTOM, 0, 0, 0},
        {"RIGHT", VIEW_RIGHT, 0, 0, 0},   {"FRONT", VIEW_FRONT, 0, 0, 0},
        {"BACK", VIEW_BACK, 0, 0, 0},     {"WORLD", VIEW_FRONT, 1, 70, 40},
        {"3D", VIEW_3D, 0, 0, 0},
    };
    for (const View& v : views)
        for (int nearFirst = 0; nearFirst <= 1; nearFirst++) {
            Scene_Clear();
            Layer_NewFirst();
            first_used_ = false;
            Viewport* vp = &g.view.Active_Viewport;
            BareTopView();
            View_SetKind(vp, v.kind);
            vp->WORLD = v.world;
            View_SetPitch(vp, v.pitch);
            View_SetHeading(vp, v.heading);
            Point3 toViewer;   // world direction from the scene towards the viewer
            if (v.kind == VIEW_3D) {
                View_SetFov(vp, 60);
                View_LookAt(vp, {3, 4, -10}, {0, 0, 0});
                vp->CAM = {3, 4, -10};
                toViewer = Vec_Scale(vp->CAM, 1 / Vec_Length(vp->CAM));
            } else {
                // The screen's right and up directions, from the projection itself.
                View_Project(vp, {0, 0, 0});
                const double x0 = vp->screen_x, y0 = vp->screen_y;
                Point3 d[3] = {{1, 0, 0}, {0, 1, 0}, {0, 0, 1}};
                Point3 right{0, 0, 0}, up{0, 0, 0};
                for (int i = 0; i < 3; i++) {
                    View_Project(vp, d[i]);
                    (&right.x)[i] = vp->screen_x - x0;
                    (&up.x)[i] = y0 - vp->screen_y;
                }
                // Left-handed world: towards the viewer is up x right.
                toViewer = Vec_Cross(up, right);
                toViewer = Vec_Scale(toViewer, 1 / Vec_Length(toViewer));
            }
            Point3 u = Vec_Cross(toViewer, {0, 1, 0});
            if (Vec_Length(u) < 1e-6) u = Vec_Cross(toViewer, {1, 0, 0});
            u = Vec_Scale(u, 1 / Vec_Length(u));
            const Point3 w = Vec_Cross(toViewer, u);
            auto addNear = [&] { UseLayer(RED), Square(Vec_Scale(toViewer, 1), u, w, 1); };
            auto addFar = [&] { UseLayer(GREEN), Square(Vec_Scale(toViewer, -1), u, w, 3); };
            if (nearFirst) addNear(), addFar();
            else addFar(), addNear();
            RunShade();
            const std::string what = std::string(v.name) + (nearFirst ? " near first" : " far first");
            EXPECT_EQ(At(Vec_Scale(toViewer, 1)), RED) << what;
            EXPECT_EQ(At(Vec_Add(Vec_Scale(toViewer, 1), Vec_Scale(Vec_Add(u, w), 0.5))), RED) << what;
            EXPECT_EQ(At(Vec_Add(Vec_Scale(toViewer, -1), Vec_Scale(u, 2))), GREEN) << what;
        }
}

// Types 2 and 3 need no ramps and run on 16 colours; 0 and 1 are refused
// there, with nothing drawn.
TEST_F(Shade, SixteenColoursRefuseTypes0And1AndDoTypes2And3) {
    OpenScreen(18);
    UseLayer(YELLOW);
    Square({0, 0, 0}, {1, 0, 0}, {0, 0, 1}, 2);
    Views_RedrawAll();
    for (const char* answers : {"N\n0\nL\n", "N\n1\n"}) {
        const std::string t = RunShade(answers);
        EXPECT_NE(t.find("\nCurrent Shade type NOT supported for 16 color modes!\nCommand: "), std::string::npos) << t;
        EXPECT_EQ(t.find("Initializing"), std::string::npos);
        // Still the wireframe: an empty inside, and no shade of any ramp anywhere.
        EXPECT_EQ(At({0.5, 0, 0.5}), BLACK) << answers;
        EXPECT_EQ(std::count_if(Headless_Frame(), Headless_Frame() + 640 * 480, [](unsigned char c) { return c > 15; }),
                  0) << answers;
    }
    // Type 2: faces Face_Color, edges the layer colour.
    std::string t = RunShade("N\n2\n9\n");
    EXPECT_EQ(t, "\nSHADE> Use Default Shade options <Yes,No>? <Y>:\nSHADE> Select a Shade Type <0,1,2,3>? <1>: "
                 "\nFaces in Face_Color, and edges in Layer color!\nSHADE> Set Face_Color <0>: " +
                     std::string(kRun));
    EXPECT_EQ(g.shade.Face_Color, 9);
    EXPECT_EQ(At({0.5, 0, 0.5}), LBLUE);
    EXPECT_EQ(At({0, 0, 2}), YELLOW);    // on the far edge
    EXPECT_EQ(At({-2, 0, 0}), YELLOW);   // on the left edge
    // Type 3: faces the layer colour, edges Edge_Color.
    t = RunShade("N\n3\n13\n");
    EXPECT_NE(t.find("\nFaces in Layer color, and edges in Edge color!\nSHADE> Set Edge_Color <7>: "),
              std::string::npos) << t;
    EXPECT_EQ(At({0.5, 0, 0.5}), YELLOW);
    EXPECT_EQ(At({0, 0, 2}), LMAGENTA);
}

TEST_F(Shade, Type0EdgesInLayerOrEdgeColourAndTheOptionsStay) {
    UseLayer(LGREEN);
    Square({0, 0, 0}, {1, 0, 0}, {0, 0, 1}, 2);
    std::string t = RunShade("N\n0\nE\n12\n");
    EXPECT_EQ(t, "\nSHADE> Use Default Shade options <Yes,No>? <Y>:\nSHADE> Select a Shade Type <0,1,2,3>? <2>: "
                 "\nSHADE> Use Layer or Edge Color <L>: \nFaces in shade color, and edges in Edge color!"
                 "\nSHADE> Set Edge_Color <7>: " +
                     std::string(kRun));
    EXPECT_EQ(g.shade.Shade_Type, 0);
    EXPECT_EQ(g.shade.Shade_UseEdge, 1);
    EXPECT_EQ(At({0.5, 0, 0.5}), Ramp(LGREEN, 15));
    EXPECT_EQ(At({0, 0, 2}), LRED);
    // Enter keeps the type and the choice shown; L goes back to the layer colour.
    t = RunShade("N\n\nL\n");
    EXPECT_NE(t.find("<0,1,2,3>? <0>: \nSHADE> Use Layer or Edge Color <E>: \nInitializing"), std::string::npos) << t;
    EXPECT_EQ(g.shade.Shade_UseEdge, 0);
    EXPECT_EQ(At({0, 0, 2}), LGREEN);
    // The next run's defaults are the options chosen last.
    RunShade();
    EXPECT_EQ(At({0, 0, 2}), LGREEN);
    EXPECT_EQ(At({0.5, 0, 0.5}), Ramp(LGREEN, 15));
}

// A face larger than the viewport fills the viewport and nothing else.
TEST_F(Shade, PaintsOnlyInsideTheViewport) {
    g.shade.Shade_Type = 3;
    View_SetRect(&g.view.Active_Viewport, 100, 100, 300, 250);
    UseLayer(CYAN);
    Square({0, 0, 0}, {1, 0, 0}, {0, 0, 1}, 1000);
    Views_RedrawAll();
    EXPECT_FALSE(RunLoop());   // the pointer drawn at "Command:", as it will be after SHADE
    std::vector<unsigned char> before(Headless_Frame(), Headless_Frame() + 640 * 480);
    RunShade();
    const unsigned char* after = Headless_Frame();
    int changedOutside = 0, cyanInside = 0;
    for (int y = SCREEN_LINE; y < g.screen.inputLineY; y++)   // below the status line
        for (int x = 0; x < 640; x++) {
            const bool inside = x >= 100 && x <= 300 && y >= 100 && y <= 250;
            if (!inside && after[y * 640 + x] != before[y * 640 + x]) changedOutside++;
            if (inside && after[y * 640 + x] == CYAN) cyanInside++;
        }
    EXPECT_EQ(changedOutside, 0);
    EXPECT_EQ(cyanInside, 201 * 151);
}

// Layer transforms move the shaded faces as they move the wireframe; a
// face behind the camera leaves the 3D view as it was.
TEST_F(Shade, LayerTransformsAndTheCameraPlane) {
    g.shade.Shade_Type = 3;
    Layer* l = UseLayer(BROWN);
    l->translate = {5, 0, 0};
    Square({0, 0, 0}, {1, 0, 0}, {0, 0, 1}, 1);
    RunShade();
    EXPECT_EQ(At({5, 0, 0}), BROWN);
    EXPECT_EQ(At({0, 0, 0}), BLACK);

    Viewport* vp = &g.view.Active_Viewport;
    l->translate = {0, 0, 0};
    View_SetFov(vp, 60);
    View_LookAt(vp, {0, 0, -10}, {0, 0, 10});
    vp->CAM = {0, 0, -10};
    View_SetKind(vp, VIEW_3D);
    Scene_Clear();
    Layer_NewFirst();
    first_used_ = false;
    UseLayer(BROWN);
    Square({0, 0, -20}, {1, 0, 0}, {0, 1, 0}, 50);   // wholly behind
    UseLayer(CYAN);
    Square({0, -1, 0}, {1, 0, 0}, {0, 0, 1}, 30);    // a floor reaching behind the camera
    RunShade();
    EXPECT_EQ(At({0, -1, 5}), CYAN);
    EXPECT_EQ(At({0, 1, 5}), BLACK);
    int brown = 0;
    for (int i = 0; i < 640 * 480; i++) brown += Headless_Frame()[i] == BROWN;
    EXPECT_EQ(brown, 0);
}

TEST_F(Shade, NoMemoryForTheBuffersSaysSoAndLeavesNothing) {
    for (int fail = 1; fail <= 4; fail++) {
        const long live = g.mem.live_blocks;
        Mem_FailAfter(fail);
        const std::string t = RunShade();
        Mem_FailAfter(0);
        EXPECT_NE(t.find("\nInitializing Shade-> Not enough Memory*cancel* \nCommand: "), std::string::npos) << t;
        EXPECT_EQ(g.mem.live_blocks, live) << fail;
        EXPECT_EQ(g.shading.depth, nullptr);
    }
    // A run frees what it took.
    const long live = g.mem.live_blocks;
    RunShade();
    EXPECT_EQ(g.mem.live_blocks, live);
}

}  // namespace
