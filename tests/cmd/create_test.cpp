// The creation commands of the primitives, the lights and the camera in
// headless sessions of a TOP view (screen right +x, screen up +z) with SNAP
// on at spacing 1, so that a click near a grid point gives that point: each
// prompt answered by a typed value or a click, the prompts printed and the
// record made, worked out by hand. Then cancelling at every prompt, and
// running out of memory.
#include "input/session.h"

namespace {

// One answer: typed text, or a click near a world point of the y = 0 plane.
struct Step {
    const char* text;
    Point3 at;
};
Step T(const char* text) { return {text, {0, 0, 0}}; }
// Snapping goes towards zero: a click 0.3 further out lands on the point.
Step C(double x, double z) { return {nullptr, {x + (x < 0 ? -0.3 : 0.3), 0, z + (z < 0 ? -0.3 : 0.3)}}; }

class CreateTest : public SessionTest {
  protected:
    void SetUp() override {
        SessionTest::SetUp();
        g.view.Active_Viewport.SNAP = 1;
    }
    void Push(const std::vector<Step>& steps) {
        for (const Step& s : steps) {
            if (s.text) {
                Headless_PushText(s.text);
            } else {
                int x, y;
                PixelOf(s.at, &x, &y);
                Headless_PushClick(x, y);
            }
        }
    }
    // Runs the steps from "Command:"; the transcript after the first prompt.
    std::string Session(const std::vector<Step>& steps) {
        Scene_Clear();
        Layer_NewFirst();
        Headless_ClearTranscript();
        Push(steps);
        EXPECT_FALSE(RunLoop());
        std::string t = Headless_Transcript();
        return t.rfind("\nCommand: ", 0) == 0 ? t.substr(10) : t;
    }
    static int Objects() {
        int n = 0;
        for (const Object* o = g.scene.Current_Layer->first_object; o; o = o->next) n++;
        return n;
    }
};

#define EXPECT_P3(a, b)                  \
    do {                                 \
        EXPECT_NEAR((a).x, (b).x, 1e-9); \
        EXPECT_NEAR((a).y, (b).y, 1e-9); \
        EXPECT_NEAR((a).z, (b).z, 1e-9); \
    } while (0)

PrimitiveData Prim(int type, Point3 at, double p1, double p2, double p3, int aux = 8) {
    PrimitiveData p = Primitive_Default();
    p.prim_type = type;
    p.translate = at;
    p.p1 = p1;
    p.p2 = p2;
    p.p3 = p3;
    p.prim_aux = aux;
    return p;
}

TEST_F(CreateTest, Primitives) {
    const char* kSeg = "\nSPHERE>  Set Segments <8>: ";
    struct Row {
        const char* what;
        std::vector<Step> steps;
        std::string transcript;   // up to the next "Command:"
        PrimitiveData want;
    };
    PrimitiveData cube = Prim(PRIM_BOX, {1, 2, 3}, 0, 0, 0);
    cube.size = {4, 4, 4};
    PrimitiveData box = Prim(PRIM_BOX, {0, 0, 0}, 0, 0, 0);
    box.size = {3, 2, 5};
    PrimitiveData hf = Prim(PRIM_HEIGHT_FIELD, {-1, 0, -2}, 0, 0, 0);
    hf.size = {1, 1, 1};
    hf.scale = {4, 4, 4};
    PrimitiveData plane = Prim(PRIM_PLANE, {0, 0, 1}, 0, 0, 0, 1);
    plane.scale = {2, 2, 2};
    PrimitiveData picked_box = Prim(PRIM_BOX, {0, 0, 0}, 0, 0, 0);
    picked_box.size = {3, 2, 4};
    PrimitiveData typed_hf = Prim(PRIM_HEIGHT_FIELD, {0, 0, 0}, 0, 0, 0);
    typed_hf.size = {1, 1, 1};
    typed_hf.scale = {2, 1, 3};
    const Row rows[] = {
        {"sphere typed", {T("SPHERE\n1,0,2\n3\n\n")}, std::string("\nSPHERE> Center point: \nSPHERE> Radius: ") + kSeg,
         Prim(PRIM_SPHERE, {1, 0, 2}, 3, 0, 0)},
        {"sphere picked: the radius is the distance to the centre",
         {T("SPHERE\n"), C(2, 1), C(5, 5), T("12\n")}, std::string("\nSPHERE> Center point: \nSPHERE> Radius: ") + kSeg,
         Prim(PRIM_SPHERE, {2, 0, 1}, 5, 0, 0, 12)},
        {"segments of 1 and 0 are asked again",
         {T("SPHERE\n0,0,0\n1\n1\n0\n5\n")},
         std::string("\nSPHERE> Center point: \nSPHERE> Radius: ") + kSeg + "\nMust be greater that 1." + kSeg +
             "\nMust be greater that 1." + kSeg,
         Prim(PRIM_SPHERE, {0, 0, 0}, 1, 0, 0, 5)},
        {"cone with Enter at radius 2 is a cylinder", {T("CONE\n0,0,0\n5\n2\n\n\n")},
         "\nCONE> Start point: \nCONE> Length of Cone: \nCONE> Radius #1: \nCONE> Radius #2 <2>: "
         "\nCONE>  Set Segments <8>: ",
         Prim(PRIM_CONE, {0, 0, 0}, 2, 2, 5)},
        {"cone picked sideways stands upright, as long as the distance",
         {T("CONE\n"), C(-1, 1), C(3, 4), C(1, 1), T("0.5\n16\n")},
         "\nCONE> Start point: \nCONE> Length of Cone: \nCONE> Radius #1: \nCONE> Radius #2 <2>: "
         "\nCONE>  Set Segments <8>: ",
         Prim(PRIM_CONE, {-1, 0, 1}, 2, 0.5, 5, 16)},
        {"cylinder", {T("CYLINDER\n0,1,0\n3\n0.5\n\n")},
         "\nCYLINDER> Start point: \nCYLINDER> Length of Cylinder: \nCYLINDER> Set Radius: "
         "\nCYLINDER>  Set Segments <8>: ",
         Prim(PRIM_CONE, {0, 1, 0}, 0.5, 0.5, 3)},
        {"torus: the donut radius is measured from the inner-radius point",
         {T("TORUS\n"), C(0, 0), C(3, 0), C(3, 1), T("\n")},
         "\nTORUS> Center point: \nTORUS> Inner Radius: \nTORUS> Set Donut Radius: \nTORUS>  Set Segments <8>: ",
         Prim(PRIM_TORUS, {0, 0, 0}, 3, 1, 0)},
        {"torus: a typed inner radius stands for the point that far to the right",
         {T("TORUS\n0,0,0\n3\n"), C(3, 2), T("\n")},
         "\nTORUS> Center point: \nTORUS> Inner Radius: \nTORUS> Set Donut Radius: \nTORUS>  Set Segments <8>: ",
         Prim(PRIM_TORUS, {0, 0, 0}, 3, 2, 0)},
        {"cylinder picked", {T("CYLINDER\n"), C(1, 1), C(1, 4), C(2, 1), T("\n")},
         "\nCYLINDER> Start point: \nCYLINDER> Length of Cylinder: \nCYLINDER> Set Radius: "
         "\nCYLINDER>  Set Segments <8>: ",
         Prim(PRIM_CONE, {1, 0, 1}, 1, 1, 3)},
        {"disc", {T("DISC\n1,0,1\n2.5\n\n")}, "\nDISC> Center point: \nDISC> Outer Radius: \nDISC>  Set Segments <8>: ",
         Prim(PRIM_DISC, {1, 0, 1}, 0, 2.5, 0)},
        {"disc picked", {T("DISC\n"), C(-2, -2), C(-2, 1), T("\n")},
         "\nDISC> Center point: \nDISC> Outer Radius: \nDISC>  Set Segments <8>: ",
         Prim(PRIM_DISC, {-2, 0, -2}, 0, 3, 0)},
        {"plane typed", {T("PLANE\n0,0,1\n2\n")}, "\nPLANE> Center point: \nPLANE> Scale (for visual refrence): ",
         plane},
        {"plane: the distance is the visual scale; no segments", {T("PLANE\n"), C(0, 1), C(0, 3)},
         "\nPLANE> Center point: \nPLANE> Scale (for visual refrence): ", plane},
        {"cube, Y only", {T("CUBE\n1,2,3\n4\n\n\n")},
         "\nCUBE> Lower left corner: \nCUBE> Y Length: \nCUBE> X Length <4>: \nCUBE> Z Length <4>: ", cube},
        {"cube, each length", {T("CUBE\n0,0,0\n2\n3\n5\n")},
         "\nCUBE> Lower left corner: \nCUBE> Y Length: \nCUBE> X Length <2>: \nCUBE> Z Length <3>: ", box},
        {"cube, each length picked", {T("CUBE\n"), C(0, 0), C(0, 2), C(3, 0), C(0, -4)},
         "\nCUBE> Lower left corner: \nCUBE> Y Length: \nCUBE> X Length <2>: \nCUBE> Z Length <3>: ", picked_box},
        {"height field typed", {T("HEIGHTFIELD\n0,0,0\n1\n2\n3\n")},
         "\nHEIGHTFIELD> Lower left corner: \nHEIGHTFIELD> Y Length: \nHEIGHTFIELD> X Length <1>: "
         "\nHEIGHTFIELD> Z Length <2>: ",
         typed_hf},
        {"height field, Y only", {T("HEIGHTFIELD\n"), C(-1, -2), T("4\n\n\n")},
         "\nHEIGHTFIELD> Lower left corner: \nHEIGHTFIELD> Y Length: \nHEIGHTFIELD> X Length <4>: "
         "\nHEIGHTFIELD> Z Length <4>: ",
         hf},
    };
    for (const Row& r : rows) {
        SCOPED_TRACE(r.what);
        EXPECT_EQ(Session(r.steps), r.transcript + "\nCommand: ");
        ASSERT_EQ(Objects(), 1);
        const Object* o = g.scene.Current_Layer->first_object;
        ASSERT_EQ(o->kind, KIND_PRIMITIVE);
        const PrimitiveData& p = *(const PrimitiveData*)o->data;
        const PrimitiveData& w = r.want;
        EXPECT_EQ(p.prim_type, w.prim_type);
        EXPECT_P3(p.translate, w.translate);
        EXPECT_P3(p.size, w.size);
        EXPECT_P3(p.scale, w.scale);
        EXPECT_P3(p.rotate, (Point3{0, 0, 0}));
        EXPECT_NEAR(p.p1, w.p1, 1e-9);
        EXPECT_NEAR(p.p2, w.p2, 1e-9);
        EXPECT_NEAR(p.p3, w.p3, 1e-9);
        EXPECT_EQ(p.prim_aux, w.prim_aux);
        EXPECT_EQ(p.prim_flags, 0);
        EXPECT_EQ(p.hf_type, 0);
        EXPECT_STREQ(p.file, "");
    }
    // With AUTO-SEG the count is taken without a question.
    g.aids.Auto_Seg = 1;
    g.aids.Seg_Value = 12;
    EXPECT_EQ(Session({T("DISC\n0,0,0\n1\n")}), "\nDISC> Center point: \nDISC> Outer Radius: \nCommand: ");
    EXPECT_EQ(((const PrimitiveData*)g.scene.Current_Layer->first_object->data)->prim_aux, 12);
}

TEST_F(CreateTest, LightsAndCamera) {
    struct Row {
        std::vector<Step> input;
        std::string transcript;
        int flags;
        Point3 position, point_at;
        double radius, falloff, height, width;
    };
    const std::string spot = "\nSPOTLIGHT> Center point: \nSPOTLIGHT> Look at point: \nSPOTLIGHT> Set Radius <35>: ";
    const std::string area = "\nAREALIGHT> Center point: \nAREALIGHT> Look at point: \nAREALIGHT> Set Heigth of Area: "
                             "\nAREALIGHT> Set Width of Area: ";
    const Row rows[] = {
        {{T("POINTLIGHT\n1,5,2\n")}, "\nPOINTLIGHT> Center point: ", 0, {1, 5, 2}, {0, 0, 0}, 35, 40, 1, 1},
        {{T("POINTLIGHT\n"), C(1, 2)}, "\nPOINTLIGHT> Center point: ", 0, {1, 0, 2}, {0, 0, 0}, 35, 40, 1, 1},
        {{T("AREALIGHT\n"), C(0, 0), C(3, 4), T("0.5\n4\n")}, area, LIGHT_AREA, {0, 0, 0}, {3, 0, 4}, 35, 40, 0.5, 4},
        {{T("SPOTLIGHT\n"), C(1, 1), C(-2, -3), T("\n\n")}, spot + "\nSPOTLIGHT> Set Falloff <40>: ", LIGHT_SPOT,
         {1, 0, 1}, {-2, 0, -3}, 35, 40, 1, 1},
        {{T("AREALIGHT\n0,5,0\n1,0,1\n2\n3\n")}, area, LIGHT_AREA, {0, 5, 0}, {1, 0, 1}, 35, 40, 2, 3},
        {{T("SPOTLIGHT\n0,9,0\n0,0,0\n\n\n")}, spot + "\nSPOTLIGHT> Set Falloff <40>: ", LIGHT_SPOT, {0, 9, 0}, {0, 0, 0},
         35, 40, 1, 1},
        {{T("SPOTLIGHT\n0,9,0\n0,0,0\n\n20\n")}, spot + "\nSPOTLIGHT> Set Falloff <40>: ", LIGHT_SPOT, {0, 9, 0}, {0, 0, 0},
         35, 35, 1, 1},   // a falloff below the radius is raised to it
        {{T("SPOTLIGHT\n0,9,0\n0,0,0\n400\n\n")}, spot + "\nSPOTLIGHT> Set Falloff <45>: ", LIGHT_SPOT, {0, 9, 0},
         {0, 0, 0}, 40, 45, 1, 1},
        // Brought into [0, 360); the falloff is read as a whole number.
        {{T("SPOTLIGHT\n0,9,0\n0,0,0\n-30\n-20.7\n")}, spot + "\nSPOTLIGHT> Set Falloff <335>: ", LIGHT_SPOT, {0, 9, 0},
         {0, 0, 0}, 330, 340, 1, 1},
    };
    for (const Row& r : rows) {
        SCOPED_TRACE(r.transcript);
        EXPECT_EQ(Session(r.input), r.transcript + "\nCommand: ");
        ASSERT_EQ(Objects(), 1);
        const Object* o = g.scene.Current_Layer->first_object;
        ASSERT_EQ(o->kind, KIND_LIGHT);
        const LightData& l = *(const LightData*)o->data;
        EXPECT_EQ(l.light_flags, r.flags);
        EXPECT_P3(l.position, r.position);
        EXPECT_P3(l.point_at, r.point_at);
        EXPECT_EQ(l.radius, r.radius);
        EXPECT_EQ(l.falloff, r.falloff);
        EXPECT_EQ(l.area_height, r.height);
        EXPECT_EQ(l.area_width, r.width);
        EXPECT_P3(l.color, (Point3{1, 1, 1}));
        EXPECT_EQ(l.light_segments, 16);
        EXPECT_EQ(l.area_n1 * 10 + l.area_n2, 44);
        EXPECT_EQ(l.adaptive, 1);
        EXPECT_EQ(l.tightness, 10);
    }

    // CAMERA: a picked location, a typed target that first repeats it.
    EXPECT_EQ(Session({T("CAMERA\n"), C(2, -6), T("2,0,-6\n0,1,0\n")}),
              "\nCAMERA> Camera point: \nCAMERA> Look_At point: \nThe camera can't look at its own point."
              "\nCAMERA> Look_At point: \nCommand: ");
    EXPECT_EQ(Objects(), 0);
    Point3 cam, tar;
    ASSERT_TRUE(Var_GetPoint("CAM", &cam));
    ASSERT_TRUE(Var_GetPoint("TAR", &tar));
    EXPECT_P3(cam, (Point3{2, 0, -6}));
    EXPECT_P3(tar, (Point3{0, 1, 0}));
    EXPECT_EQ(g.view.Active_Viewport.camera_valid, 1);
    for (int i = 1; i <= 4; i++) EXPECT_P3(g.view.Viewports[i].TAR, (Point3{0, 1, 0}));
}

// CAMERA redraws the views only when one of them shows the camera.
TEST_F(CreateTest, CameraRedrawsWhenTheCameraIsShown) {
    for (int shown : {0, 1}) {
        g.view.Active_Viewport.CAMERA = shown;
        Headless_ClearSegments();
        Session({T("CAMERA\n0,5,-9\n0,0,0\n")});
        int icon = 0;
        for (const Headless_Segment& s : Headless_Segments()) icon += s.colour == g.config.colors.view_camera;
        EXPECT_EQ(icon > 0, shown == 1) << shown;
    }
}

// Cancelling at each prompt of each command leaves the scene and the camera
// as they were.
TEST_F(CreateTest, CancelAtEveryPrompt) {
    const std::vector<std::vector<const char*>> commands = {
        {"SPHERE", "1,0,1", "2", "8"},        {"CONE", "0,0,0", "4", "2", "1", "8"},
        {"CYLINDER", "0,0,0", "4", "1", "8"}, {"TORUS", "0,0,0", "3", "1", "8"},
        {"DISC", "0,0,0", "2", "8"},          {"PLANE", "0,0,0", "2"},
        {"CUBE", "0,0,0", "1", "2", "3"},     {"HEIGHTFIELD", "0,0,0", "1", "2", "3"},
        {"POINTLIGHT", "0,5,0"},              {"AREALIGHT", "0,5,0", "0,0,0", "1", "1"},
        {"SPOTLIGHT", "0,5,0", "0,0,0", "30", "40"},
        {"CAMERA", "9,9,9", "1,1,1"},
    };
    Point3 cam0, tar0;
    Var_GetPoint("CAM", &cam0);
    Var_GetPoint("TAR", &tar0);
    for (const auto& answers : commands)
        for (size_t k = 1; k < answers.size(); k++) {   // cancel at the k-th prompt
            SCOPED_TRACE(std::string(answers[0]) + " cancelled at prompt " + std::to_string(k));
            std::string typed;
            for (size_t i = 0; i < k; i++) typed += std::string(answers[i]) + "\n";
            Scene_Clear();
            Layer_NewFirst();
            Headless_ClearTranscript();
            Headless_PushText(typed.c_str());
            Headless_PushKey(3);   // Ctrl-C
            EXPECT_FALSE(RunLoop());
            EXPECT_EQ(Objects(), 0);
            const std::string t = Headless_Transcript(), end = "*cancel* \nCommand: ";
            EXPECT_EQ(t.substr(t.size() - end.size()), end);
            Point3 cam, tar;
            Var_GetPoint("CAM", &cam);
            Var_GetPoint("TAR", &tar);
            EXPECT_P3(cam, cam0);
            EXPECT_P3(tar, tar0);
        }
}

// Out of memory at either allocation of a new primitive or light (the
// record, the node): the message, nothing added, nothing left allocated.
TEST_F(CreateTest, OutOfMemory) {
    for (const char* input : {"SPHERE\n0,0,0\n1\n\n", "SPOTLIGHT\n0,5,0\n0,0,0\n\n\n"})
        for (long n = 1; n <= 2; n++) {
            SCOPED_TRACE(std::string(input) + " allocation " + std::to_string(n));
            Scene_Clear();
            Layer_NewFirst();
            const long blocks = g.mem.live_blocks;
            Headless_ClearTranscript();
            Headless_PushText(input);
            Mem_FailAfter(n);
            EXPECT_FALSE(RunLoop());
            Mem_FailAfter(0);
            EXPECT_NE(Headless_Transcript().find("Out Of Memory!\nCommand: "), std::string::npos);
            EXPECT_EQ(Objects(), 0);
            EXPECT_EQ(g.mem.live_blocks, blocks);
        }
}

}  // namespace
