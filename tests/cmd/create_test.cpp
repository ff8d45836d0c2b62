// The creation commands of the primitives, the lights and the camera in
// headless sessions of a TOP view (screen right +x, screen up +z) with SNAP
// on at spacing 1, so that a click near a grid point gives that point: the
// prompts of each command, cancelling at each of them, the records made
// from typed values and from clicks worked out by hand, and running out of
// memory.
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
    // Runs the steps from "Command:" on an empty layer; the transcript after it.
    std::string Session(const std::vector<Step>& steps) {
        Scene_Clear();
        Layer_NewFirst();
        Headless_ClearTranscript();
        for (const Step& s : steps) {
            int x, y;
            if (s.text) Headless_PushText(s.text);
            else PixelOf(s.at, &x, &y), Headless_PushClick(x, y);
        }
        EXPECT_FALSE(RunLoop());
        const std::string t = Headless_Transcript();
        return t.rfind("\nCommand: ", 0) == 0 ? t.substr(10) : t;
    }
    static int Objects() {
        int n = 0;
        for (const Object* o = g.scene.Current_Layer->first_object; o; o = o->next) n++;
        return n;
    }
    static const void* Made() { return g.scene.Current_Layer->first_object->data; }
};

void ExpectNear(Point3 a, Point3 b) {
    EXPECT_NEAR(a.x, b.x, 1e-9);
    EXPECT_NEAR(a.y, b.y, 1e-9);
    EXPECT_NEAR(a.z, b.z, 1e-9);
}

// Each command typed through with the prompts it prints; line k of `typed`
// answers prompt k.
struct Prompts {
    const char* typed;
    std::vector<const char*> prompts;
};
const Prompts kPrompts[] = {
    {"SPHERE\n1,0,2\n3\n\n", {"\nSPHERE> Center point: ", "\nSPHERE> Radius: ", "\nSPHERE>  Set Segments <8>: "}},
    {"CONE\n0,0,0\n5\n2\n\n\n",
     {"\nCONE> Start point: ", "\nCONE> Length of Cone: ", "\nCONE> Radius #1: ", "\nCONE> Radius #2 <2>: ",
      "\nCONE>  Set Segments <8>: "}},
    {"CYLINDER\n0,1,0\n3\n0.5\n\n",
     {"\nCYLINDER> Start point: ", "\nCYLINDER> Length of Cylinder: ", "\nCYLINDER> Set Radius: ",
      "\nCYLINDER>  Set Segments <8>: "}},
    {"TORUS\n0,0,0\n3\n1\n\n",
     {"\nTORUS> Center point: ", "\nTORUS> Inner Radius: ", "\nTORUS> Set Donut Radius: ",
      "\nTORUS>  Set Segments <8>: "}},
    {"DISC\n1,0,1\n2.5\n\n", {"\nDISC> Center point: ", "\nDISC> Outer Radius: ", "\nDISC>  Set Segments <8>: "}},
    {"PLANE\n0,0,1\n2\n", {"\nPLANE> Center point: ", "\nPLANE> Scale (for visual refrence): "}},
    {"CUBE\n1,2,3\n4\n\n\n",
     {"\nCUBE> Lower left corner: ", "\nCUBE> Y Length: ", "\nCUBE> X Length <4>: ", "\nCUBE> Z Length <4>: "}},
    {"HEIGHTFIELD\n0,0,0\n1\n2\n3\n",
     {"\nHEIGHTFIELD> Lower left corner: ", "\nHEIGHTFIELD> Y Length: ", "\nHEIGHTFIELD> X Length <1>: ",
      "\nHEIGHTFIELD> Z Length <2>: "}},
    {"POINTLIGHT\n1,5,2\n", {"\nPOINTLIGHT> Center point: "}},
    {"AREALIGHT\n0,5,0\n1,0,1\n2\n3\n",
     {"\nAREALIGHT> Center point: ", "\nAREALIGHT> Look at point: ", "\nAREALIGHT> Set Heigth of Area: ",
      "\nAREALIGHT> Set Width of Area: "}},
    {"SPOTLIGHT\n0,9,0\n0,0,0\n400\n\n",
     {"\nSPOTLIGHT> Center point: ", "\nSPOTLIGHT> Look at point: ", "\nSPOTLIGHT> Set Radius <35>: ",
      "\nSPOTLIGHT> Set Falloff <45>: "}},
    {"CAMERA\n9,9,9\n1,1,1\n", {"\nCAMERA> Camera point: ", "\nCAMERA> Look_At point: "}},
};

// The whole session prints the prompts; Ctrl-C at any of them cancels the
// command and leaves the scene empty and the camera where it was.
TEST_F(CreateTest, PromptsAndCancelAtEachOfThem) {
    for (const Prompts& p : kPrompts) {
        SCOPED_TRACE(p.typed);
        std::string all;
        for (const char* q : p.prompts) all += q;
        EXPECT_EQ(Session({T(p.typed)}), all + "\nCommand: ");
        Point3 cam0, tar0, cam, tar;
        Var_GetPoint("CAM", &cam0);
        Var_GetPoint("TAR", &tar0);
        const std::string typed = p.typed;
        for (size_t k = 0, at = 0; k < p.prompts.size(); k++) {
            at = typed.find('\n', at) + 1;   // the command and k answers
            Session({T(typed.substr(0, at).c_str()), T("\x03")});
            EXPECT_EQ(Objects(), 0) << "cancelled at " << p.prompts[k];
            EXPECT_NE(Headless_Transcript().find(std::string(p.prompts[k]) + "*cancel* \nCommand: "), std::string::npos);
            Var_GetPoint("CAM", &cam);
            Var_GetPoint("TAR", &tar);
            ExpectNear(cam, cam0);
            ExpectNear(tar, tar0);
        }
    }
}

TEST_F(CreateTest, PrimitivesTypedAndPicked) {
    struct Want {
        int type = 0;
        Point3 at{0, 0, 0};
        double p1 = 0, p2 = 0, p3 = 0;
        int aux = 8;
        Point3 size{0, 0, 0}, scale{1, 1, 1};
    };
    const std::pair<std::vector<Step>, Want> rows[] = {
        {{T("SPHERE\n1,0,2\n3\n\n")}, {.type = PRIM_SPHERE, .at = {1, 0, 2}, .p1 = 3}},
        {{T("SPHERE\n"), C(2, 1), C(5, 5), T("12\n")}, {.type = PRIM_SPHERE, .at = {2, 0, 1}, .p1 = 5, .aux = 12}},
        // Segments of 1 or less are asked again.
        {{T("SPHERE\n0,0,0\n1\n1\n0\n5\n")}, {.type = PRIM_SPHERE, .at = {0, 0, 0}, .p1 = 1, .aux = 5}},
        // Enter at radius #2: a cylinder.
        {{T("CONE\n0,0,0\n5\n2\n\n\n")}, {.type = PRIM_CONE, .at = {0, 0, 0}, .p1 = 2, .p2 = 2, .p3 = 5}},
        // Length picked sideways, 5 away: still upright along +Y.
        {{T("CONE\n"), C(-1, 1), C(3, 4), C(1, 1), T("0.5\n16\n")},
         {.type = PRIM_CONE, .at = {-1, 0, 1}, .p1 = 2, .p2 = 0.5, .p3 = 5, .aux = 16}},
        {{T("CYLINDER\n0,1,0\n3\n0.5\n\n")}, {.type = PRIM_CONE, .at = {0, 1, 0}, .p1 = 0.5, .p2 = 0.5, .p3 = 3}},
        {{T("CYLINDER\n"), C(1, 1), C(1, 4), C(2, 1), T("\n")},
         {.type = PRIM_CONE, .at = {1, 0, 1}, .p1 = 1, .p2 = 1, .p3 = 3}},
        // The donut radius is measured from the point that gave the inner
        // radius; a typed inner radius stands for the point that far right.
        {{T("TORUS\n"), C(0, 0), C(3, 0), C(3, 1), T("\n")}, {.type = PRIM_TORUS, .at = {0, 0, 0}, .p1 = 3, .p2 = 1}},
        {{T("TORUS\n0,0,0\n3\n"), C(3, 2), T("\n")}, {.type = PRIM_TORUS, .at = {0, 0, 0}, .p1 = 3, .p2 = 2}},
        {{T("DISC\n1,0,1\n2.5\n\n")}, {.type = PRIM_DISC, .at = {1, 0, 1}, .p2 = 2.5}},
        {{T("DISC\n"), C(-2, -2), C(-2, 1), T("\n")}, {.type = PRIM_DISC, .at = {-2, 0, -2}, .p2 = 3}},
        {{T("PLANE\n0,0,1\n2\n")}, {.type = PRIM_PLANE, .at = {0, 0, 1}, .aux = 1, .scale = {2, 2, 2}}},
        {{T("PLANE\n"), C(0, 1), C(0, 3)}, {.type = PRIM_PLANE, .at = {0, 0, 1}, .aux = 1, .scale = {2, 2, 2}}},
        {{T("CUBE\n1,2,3\n4\n\n\n")}, {.type = PRIM_BOX, .at = {1, 2, 3}, .size = {4, 4, 4}}},
        {{T("CUBE\n"), C(0, 0), C(0, 2), C(3, 0), C(0, -4)}, {.type = PRIM_BOX, .at = {0, 0, 0}, .size = {3, 2, 4}}},
        {{T("HEIGHTFIELD\n0,0,0\n1\n2\n3\n")},
         {.type = PRIM_HEIGHT_FIELD, .at = {0, 0, 0}, .size = {1, 1, 1}, .scale = {2, 1, 3}}},
        {{T("HEIGHTFIELD\n"), C(-1, -2), T("4\n\n\n")},
         {.type = PRIM_HEIGHT_FIELD, .at = {-1, 0, -2}, .size = {1, 1, 1}, .scale = {4, 4, 4}}},
    };
    for (const auto& [steps, w] : rows) {
        SCOPED_TRACE(steps[0].text);
        Session(steps);
        ASSERT_EQ(Objects(), 1);
        ASSERT_EQ(g.scene.Current_Layer->first_object->kind, KIND_PRIMITIVE);
        const PrimitiveData& p = *(const PrimitiveData*)Made();
        EXPECT_EQ(p.prim_type, w.type);
        ExpectNear(p.translate, w.at);
        ExpectNear(p.size, w.size);
        ExpectNear(p.scale, w.scale);
        ExpectNear(p.rotate, {0, 0, 0});
        ExpectNear({p.p1, p.p2, p.p3}, {w.p1, w.p2, w.p3});
        EXPECT_EQ(p.prim_aux, w.aux);
        EXPECT_EQ(p.prim_flags + p.hf_type + p.file[0], 0);
    }
    EXPECT_EQ(Count(Session({T("SPHERE\n0,0,0\n1\n1\n0\n5\n")}), "\nMust be greater that 1.\nSPHERE>  Set Segments"), 2);
    // With AUTO-SEG the count is taken without a question.
    g.aids.Auto_Seg = 1;
    g.aids.Seg_Value = 12;
    EXPECT_EQ(Session({T("DISC\n0,0,0\n1\n")}), "\nDISC> Center point: \nDISC> Outer Radius: \nCommand: ");
    EXPECT_EQ(((const PrimitiveData*)Made())->prim_aux, 12);
}

TEST_F(CreateTest, LightsTypedAndPicked) {
    struct Want {
        int flags = 0;
        Point3 position{0, 0, 0}, point_at{0, 0, 0};
        double radius = 35, falloff = 40, height = 1, width = 1;
    };
    const std::pair<std::vector<Step>, Want> rows[] = {
        {{T("POINTLIGHT\n1,5,2\n")}, {.flags = 0, .position = {1, 5, 2}}},
        {{T("POINTLIGHT\n"), C(1, 2)}, {.flags = 0, .position = {1, 0, 2}}},
        {{T("AREALIGHT\n0,5,0\n1,0,1\n2\n3\n")},
         {.flags = LIGHT_AREA, .position = {0, 5, 0}, .point_at = {1, 0, 1}, .height = 2, .width = 3}},
        {{T("AREALIGHT\n"), C(0, 0), C(3, 4), T("0.5\n4\n")},
         {.flags = LIGHT_AREA, .position = {0, 0, 0}, .point_at = {3, 0, 4}, .height = 0.5, .width = 4}},
        {{T("SPOTLIGHT\n"), C(1, 1), C(-2, -3), T("\n\n")}, {.flags = LIGHT_SPOT, .position = {1, 0, 1}, .point_at = {-2, 0, -3}}},
        // A falloff below the radius is raised to it; 400 is 40.
        {{T("SPOTLIGHT\n0,9,0\n0,0,0\n\n20\n")}, {.flags = LIGHT_SPOT, .position = {0, 9, 0}, .falloff = 35}},
        {{T("SPOTLIGHT\n0,9,0\n0,0,0\n400\n\n")}, {.flags = LIGHT_SPOT, .position = {0, 9, 0}, .radius = 40, .falloff = 45}},
        // Brought into [0, 360); the falloff is read as a whole number.
        {{T("SPOTLIGHT\n0,9,0\n0,0,0\n-30\n-20.7\n")},
         {.flags = LIGHT_SPOT, .position = {0, 9, 0}, .radius = 330, .falloff = 340}},
    };
    for (const auto& [steps, w] : rows) {
        SCOPED_TRACE(steps[0].text);
        Session(steps);
        ASSERT_EQ(Objects(), 1);
        ASSERT_EQ(g.scene.Current_Layer->first_object->kind, KIND_LIGHT);
        const LightData& l = *(const LightData*)Made();
        EXPECT_EQ(l.light_flags, w.flags);
        ExpectNear(l.position, w.position);
        ExpectNear(l.point_at, w.point_at);
        ExpectNear({l.radius, l.falloff, 0}, {w.radius, w.falloff, 0});
        ExpectNear({l.area_height, l.area_width, 0}, {w.height, w.width, 0});
        ExpectNear(l.color, {1, 1, 1});
        EXPECT_EQ(std::vector<int>({l.light_segments, l.area_n1, l.area_n2, l.adaptive, l.tightness}),
                  std::vector<int>({16, 4, 4, 1, 10}));
    }
}

// CAMERA: a picked location, a typed target that first repeats it; the
// views are redrawn only when one of them shows the camera.
TEST_F(CreateTest, Camera) {
    EXPECT_EQ(Session({T("CAMERA\n"), C(2, -6), T("2,0,-6\n0,1,0\n")}),
              "\nCAMERA> Camera point: \nCAMERA> Look_At point: \nThe camera can't look at its own point."
              "\nCAMERA> Look_At point: \nCommand: ");
    EXPECT_EQ(Objects(), 0);
    Point3 cam, tar;
    Var_GetPoint("CAM", &cam);
    Var_GetPoint("TAR", &tar);
    ExpectNear(cam, {2, 0, -6});
    ExpectNear(tar, {0, 1, 0});
    for (int i = 1; i <= 4; i++) ExpectNear(g.view.Viewports[i].TAR, {0, 1, 0});
    EXPECT_EQ(g.view.Active_Viewport.camera_valid, 1);
    for (int shown : {0, 1}) {
        g.view.Active_Viewport.CAMERA = shown;
        Headless_ClearSegments();
        Session({T("CAMERA\n0,5,-9\n0,0,0\n")});
        int icon = 0;
        for (const Headless_Segment& s : Headless_Segments()) icon += s.colour == g.config.colors.view_camera;
        EXPECT_EQ(icon > 0, shown == 1) << shown;
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
