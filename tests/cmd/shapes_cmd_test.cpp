// The facet, polygon-solid, complex and Bezier shape commands in headless
// sessions of a TOP view (screen right +x, screen up +z; heights go up +y,
// round shapes turn from +x towards -z) with SNAP at 1: their prompts,
// the records they make worked out by hand, the edge cases (B_CYLINDER2
// clamps its patches, STAIRCASE makes at least 3 stairs, a radius picked
// equals the same radius typed), cancelling at every prompt, the choosers
// and running out of memory.
#include <cmath>

#include "poly_session.h"
#include "scene/mem.h"
#include "ui/dialog_support.h"

namespace {

#define ADD_FAILURE_IF_NONE() \
    if (!Newest()) ADD_FAILURE() << "nothing made: " << Headless_Transcript()

#define EXPECT_PT3(p, ex, ey, ez)                                                                    \
    do {                                                                                             \
        const Point3 got_ = (p);                                                                     \
        EXPECT_NEAR(got_.x, (ex), 1e-9);                                                             \
        EXPECT_NEAR(got_.y, (ey), 1e-9);                                                             \
        EXPECT_NEAR(got_.z, (ez), 1e-9);                                                             \
    } while (0)

class ShapesCmdTest : public PolySessionTest {
  protected:
    void SetUp() override {
        PolySessionTest::SetUp();
        g.view.Active_Viewport.SNAP = 1;   // a click 0.3 out from a grid point gives the point
    }
    // The transcript after the first "\nCommand: ", on an empty layer.
    std::string Session(const std::string& script) {
        Scene_Clear();
        Layer_NewFirst();
        const std::string t = Run(script);
        return t.rfind("\nCommand: ", 0) == 0 ? t.substr(10) : t;
    }
    // The newest polyline record; a dummy mesh when nothing was made (the
    // caller's expectations then fail instead of crashing).
    static const PolylineData* Poly() {
        static PolylineData none = Poly_Default();
        ADD_FAILURE_IF_NONE();
        return Newest() && Newest()->kind == KIND_POLYLINE ? (const PolylineData*)Newest()->data : &none;
    }
};

std::string Joined(const std::vector<const char*>& prompts) {
    std::string s;
    for (const char* p : prompts) s += p;
    return s;
}

// Each command typed through, line k answering prompt k, and Ctrl-C at
// each prompt leaving the layer empty.
struct Prompts {
    const char* typed;
    std::vector<const char*> prompts;
};
const Prompts kPrompts[] = {
    {"FACE\n0,0,0\n1,0,0\n1,0,1\n0,0,1\n",
     {"\nFACE> Corner #1: ", "\nFACE> Corner #2 <Undo>: ", "\nFACE> Corner #3 <Undo>: ", "\nFACE> Corner #4 <Undo>: "}},
    {"TRIANGLE\n0,0,0\n1,0,0\n1,0,1\n",
     {"\nTRIANGLE> Corner #1: ", "\nTRIANGLE> Corner #2 <Undo>: ", "\nTRIANGLE> Corner #3 <Undo>: "}},
    {"PCUBE\n0,0,0\n2\n\n\n",
     {"\nPCUBE> Lower left corner: ", "\nPCUBE> Y Length: ", "\nPCUBE> X Length <2>: ", "\nPCUBE> Z Length <2>: "}},
    {"PYRAMID\n0,0,0\n2\n2\n3\n",
     {"\nPYRAMID> Center point: ", "\nPYRAMID> Base Length: ", "\nPYRAMID> Base Width: ",
      "\nPYRAMID> Height of tip point: "}},
    {"WEDGE\n0,0,0\n2\n2\n3\n",
     {"\nWEDGE> Center point of trianlge edge #1: ", "\nWEDGE> Height of Wedge: ", "\nWEDGE> Width of Wedge: ",
      "\nWEDGE> Extrusion Length of Wedge: "}},
    {"MESH\n0,0,0\n1,0,0\n1,0,1\n0,0,1\n2\n2\n",
     {"\nMESH> Define corner #1: ", "\nMESH> Define corner #2: ", "\nMESH> Define corner #3: ",
      "\nMESH> Define corner #4: ", "\nSet N Number <7>: ", "\nSet M Number <7>: "}},
    {"STAIRCASE\n0,0,0\n1\n1\n2\n4\n",
     {"\nSTAIRCASE> Center point: ", "\nSTAIRCASE> Height of a single stair step: ", "\nSTAIRCASE> Inner Radius: ",
      "\nSTAIRCASE> Outter Radius: ", "\nSTAIRCASE> Enter n (to draw n stairs): "}},
    {"SCREWTHREAD\n0,0,0\n10\n1\n0.5\n1\n4\n\n",
     {"\nSCREWTHREAD> Center point: ", "\nSCREWTHREAD> Height: ", "\nSCREWTHREAD> Inner Radius of screw: ",
      "\nSCREWTHREAD> Threads width: ", "\nSCREWTHREAD> Threads height: ", "\nSCREWTHREAD> Number of Revolutions: ",
      "\nSCREWTHREAD> Finally, Number of Segments <16>: "}},
    {"SPRING\n0,0,0\n4\n0.5\n1\n0\n2\n90\n",
     {"\nStart point for spring: ", "\nSPRING> Spring Diameter: ", "\nSPRING> Wire Diameter: ",
      "\nSPRING> Vertical Dist between windings: ", "\nSPRING> Horizontal Dist between windings: ",
      "\nSPRING> Revolutions: ", "\nSPRING> Degree resolution: "}},
};

TEST_F(ShapesCmdTest, PromptsAndCancelAtEachOfThem) {
    for (const Prompts& p : kPrompts) {
        SCOPED_TRACE(p.typed);
        EXPECT_EQ(Session(p.typed), Joined(p.prompts) + "\nCommand: ");
        EXPECT_EQ(ObjectCount(), 1);
        const std::string typed = p.typed;
        for (size_t k = 0, at = 0; k < p.prompts.size(); k++) {
            at = typed.find('\n', at) + 1;
            Session(typed.substr(0, at) + "\x03");
            EXPECT_EQ(ObjectCount(), 0) << "cancelled at " << p.prompts[k];
            EXPECT_NE(Headless_Transcript().find(std::string(p.prompts[k]) + "*cancel* "), std::string::npos);
        }
    }
}

// The Bezier shapes through bezier.dlg (pictures 1..5), the solids and
// complex shapes through complex.dlg (1..6): the prompts of the shape
// clicked, Ctrl-C at each of them, and Cancel in the chooser.
TEST_F(ShapesCmdTest, ChoosersAndBezierPrompts) {
    struct Chosen {
        const char* file;
        int id;
        std::vector<const char*> answers;
        std::vector<const char*> prompts;
    };
    const Chosen kChosen[] = {
        {"bezier.dlg", 1, {"0,0,0\n", "3\n", "1\n"},
         {"\nB_TORUS> Center point: ", "\nB_TORUS> Set Inner Radius: ", "\nB_TORUS> Set Radius of donut: "}},
        {"bezier.dlg", 2, {"0,0,0\n", "2\n"}, {"\nB_DISH> Center point: ", "\nB_DISH> Set Radius: "}},
        {"bezier.dlg", 3, {"0,0,0\n", "2\n"}, {"\nB_SPHERE> Center point: ", "\nB_SPHERE> Set Radius: "}},
        {"bezier.dlg", 4, {"0,0,0\n", "6\n", "2\n", "1\n"},
         {"\nB_CYLINDER> Center point: ", "\nB_CYLINDER> Height of Cylinder: ", "\nB_CYLINDER> Set Radius: ",
          "\nB_CYLINDER> Number of Patchs for M direction <1, 2, 3 or 4>?: "}},
        {"bezier.dlg", 5, {"0,0,0\n", "6\n", "2\n", "7\n"},
         {"\nB_CYLINDER2> Center point: ", "\nB_CYLINDER2> Height of Cylinder: ", "\nB_CYLINDER2> Set Radius: ",
          "\nB_CYLINDER2> Number of Patchs for M direction <1, 2, 3 or 4>?: "}},
        {"complex.dlg", 4, {"0,0,0\n", "1\n", "1\n", "2\n", "2\n"},
         {"\nSTAIRCASE> Center point: ", "\nSTAIRCASE> Height of a single stair step: ",
          "\nSTAIRCASE> Inner Radius: ", "\nSTAIRCASE> Outter Radius: ",
          "\nSTAIRCASE> Enter n (to draw n stairs): "}},
        {"complex.dlg", 1, {"0,0,0\n", "1\n", "\n", "\n"},
         {"\nPCUBE> Lower left corner: ", "\nPCUBE> Y Length: ", "\nPCUBE> X Length <1>: ",
          "\nPCUBE> Z Length <1>: "}},
    };
    for (const Chosen& c : kChosen) {
        SCOPED_TRACE(std::string(c.file) + " " + std::to_string(c.id));
        for (size_t stop = 0; stop <= c.answers.size(); stop++) {
            Scene_Clear();
            Layer_NewFirst();
            Headless_ClearTranscript();
            Play(std::string(c.file) == "bezier.dlg" ? "BEZIER\n" : "COMPLEX\n");
            Dlg_Click(c.file, "SHAPE", c.id);
            std::string answers;
            for (size_t k = 0; k < stop; k++) answers += c.answers[k];
            Play(answers);
            if (stop < c.answers.size()) Headless_PushKey(3);
            EXPECT_FALSE(RunLoop());
            const std::string said = Headless_Transcript();
            if (stop == c.answers.size()) {
                EXPECT_NE(said.find(Joined(c.prompts) + "\nCommand: "), std::string::npos) << said;
                EXPECT_EQ(ObjectCount(), 1);
            } else {
                EXPECT_NE(said.find(std::string(c.prompts[stop]) + "*cancel* "), std::string::npos) << said;
                EXPECT_EQ(ObjectCount(), 0);
            }
        }
    }
    // Cancel in either chooser makes nothing.
    for (const char* file : {"bezier.dlg", "complex.dlg"}) {
        Scene_Clear();
        Layer_NewFirst();
        Play(std::string(file) == "bezier.dlg" ? "BEZIER\n" : "COMPLEX\n");
        Dlg_Click(file, "BUTTON", 0);
        EXPECT_FALSE(RunLoop());
        EXPECT_EQ(ObjectCount(), 0);
    }
}

// The solids' records: points laid out in the view's frame from the picked
// corner or centre.
TEST_F(ShapesCmdTest, SolidsAndMeshRecords) {
    // PCUBE 3 x 2 x 4 at (1, 0, 2): x along the screen's right (+x), y up
    // the screen (+z), z towards the viewer (+y); the ring turned so the
    // faces look out.
    Session("PCUBE\n1,0,2\n2\n3\n4\n");
    EXPECT_EQ(Dump(Newest()),
              "f6 c0 s8 m16 n16 a0 p1 0,0,0 p2 0,0,0 : 1,0,2 1,0,4 4,0,4 4,0,2 1,4,2 1,4,4 4,4,4 4,4,2");
    Session("PYRAMID\n0,0,0\n4\n2\n3\n");
    EXPECT_EQ(Dump(Newest()),
              "f8 c0 s8 m16 n16 a0 p1 0,0,0 p2 0,0,0 : -2,0,-1 -2,0,1 2,0,1 2,0,-1 0,3,0 0,3,0 0,3,0 0,3,0");
    Session("WEDGE\n0,0,0\n2\n4\n5\n");
    EXPECT_EQ(Dump(Newest()),
              "f7 c0 s8 m16 n16 a0 p1 0,0,0 p2 0,0,0 : -2,0,0 2,0,0 0,2,0 0,2,0 -2,0,5 2,0,5 0,2,5 0,2,5");
    // MESH over the corners (0,0,0) (4,0,0) (4,0,2) (0,0,2) with N 2, M 4.
    Session("MESH\n0,0,0\n4,0,0\n4,0,2\n0,0,2\n2\n4\n");
    EXPECT_EQ(Dump(Newest()),
              "f5 c0 s8 m2 n4 a0 p1 0,0,0 p2 0,0,0 : 0,0,0 1,0,0 2,0,0 3,0,0 4,0,0 0,0,1 1,0,1 2,0,1 3,0,1 "
              "4,0,1 0,0,2 1,0,2 2,0,2 3,0,2 4,0,2");
}

// STAIRCASE: n = 2 builds 3 stairs, anything but a number 16; the top
// tread is n steps up. SCREWTHREAD refuses a thread higher than the pitch.
TEST_F(ShapesCmdTest, StaircaseScrewAndSpringRecords) {
    auto top = [] {
        double y = 0;
        for (int i = 0; i < Poly()->count; i++) y = std::max(y, Poly()->points[i].y);
        return y;
    };
    Session("STAIRCASE\n0,0,0\n0.5\n1\n2\n2\n");
    EXPECT_EQ(Poly()->size_m, 3 * 7 + 1);   // 3 stairs of 6 chords: 23 rows
    EXPECT_EQ(Poly()->size_n, 3);
    EXPECT_DOUBLE_EQ(top(), 1.5);
    EXPECT_EQ(Poly()->poly_flags, 0);
    EXPECT_EQ(Poly()->segments, 8);
    EXPECT_EQ(Poly()->angle, 8.0);
    EXPECT_EQ(Poly()->param1.x, 0.01);
    Session("STAIRCASE\n0,0,0\n0.5\n1\n2\n1e999\n");   // not a number
    EXPECT_DOUBLE_EQ(top(), 8);
    EXPECT_EQ(Poly()->size_m, 16 * 2 + 1);   // one chord a tread

    const std::string said = Session("SCREWTHREAD\n0,0,0\n10\n1\n0.5\n2\n4\n1\n4\n\n");
    EXPECT_NE(said.find("\nSCREWTHREAD> Number of Revolutions: \nThreads Height value is to large!"
                        "\nSCREWTHREAD> Threads height: "),
              std::string::npos)
        << said;
    EXPECT_EQ(Poly()->size_m, 64);
    EXPECT_DOUBLE_EQ(top(), 10);
    EXPECT_EQ(Poly()->count, 65 * 4);

    // SPRING: 4 across, wire 0.5, gap 1: the pitch is 1.5; quarter turns.
    Session("SPRING\n0,0,0\n4\n0.5\n1\n0\n2\n90\n");
    EXPECT_EQ(Dump(Newest()),
              "f9 c0 s8 m32 n8 a0 p1 0.25,0.25,0 p2 0,0,0 : 2,0,0 0,0.375,-2 -2,0.75,0 0,1.125,2 2,1.5,0 "
              "0,1.875,-2 -2,2.25,0 0,2.625,2 2,3,0");
}

// The Bezier records: their settings, and the cylinder clamped to 4 patches.
TEST_F(ShapesCmdTest, BezierRecords) {
    auto bezier = [&](int id, const std::string& answers) {
        Scene_Clear();
        Layer_NewFirst();
        Play("BEZIER\n");
        Dlg_Click("bezier.dlg", "SHAPE", id);
        Play(answers);
        EXPECT_FALSE(RunLoop());
        return Poly();
    };
    const PolylineData* p = bezier(5, "0,0,0\n6\n2\n7\n");   // 7 patches: 4, 9 rows
    EXPECT_EQ(p->size_n, 9);
    EXPECT_EQ(p->size_m, 7);
    EXPECT_EQ(p->count, 80);
    EXPECT_EQ(p->poly_flags, POLY_M_CLOSED | POLY_BSPLINE);
    EXPECT_EQ(p->param1.x, 0.01);
    EXPECT_EQ(p->segments, 8);
    EXPECT_EQ(p->angle, 8.0);
    EXPECT_PT3(p->points[1], 2, 6.0 / 9, 1.1);   // row spacing height / rows
    p = bezier(5, "0,0,0\n6\n2\n1e999\n");     // not a number: 1 patch, 3 rows
    EXPECT_EQ(p->size_n, 3);
    p = bezier(4, "0,0,0\n6\n2\n0\n");         // clamped up to 1 patch; radius 1.5 x 2
    EXPECT_EQ(p->size_n, 3);
    EXPECT_EQ(p->size_m, 9);
    EXPECT_EQ(p->poly_flags, POLY_BSPLINE);
    EXPECT_PT3(p->points[0], 3, 0, 0);
    EXPECT_PT3(p->points[9 * 4 + 3], 3, 6, 0);
    p = bezier(1, "0,0,0\n3\n1\n");
    EXPECT_EQ(p->size_m, 9);
    EXPECT_EQ(p->size_n, 7);
    EXPECT_EQ(p->poly_flags, POLY_N_CLOSED | POLY_BSPLINE);
    EXPECT_PT3(p->points[0], 4, -0.55, 0);
    p = bezier(3, "1,0,1\n2\n");
    EXPECT_EQ(p->size_m, 7);
    EXPECT_EQ(p->size_n, 5);
    EXPECT_PT3(p->points[0], 1, -2, 1);            // the south pole
    EXPECT_PT3(p->points[2], 3, -1.1, 2.1);        // 0.55 r on either side of the equator point (3, 0, 1)
    EXPECT_PT3(p->points[3], 3, 1.1, 2.1);
    p = bezier(2, "0,0,0\n2\n");
    EXPECT_EQ(p->size_m, 7);
    EXPECT_EQ(p->size_n, 3);
    EXPECT_PT3(p->points[3], 2, 2, 1.1);
}

// A radius or length picked at a distance gives what the same distance
// typed gives.
TEST_F(ShapesCmdTest, PickedDistanceEqualsTyped) {
    const std::pair<const char*, const char*> kPairs[] = {
        {"STAIRCASE\n0,0,0\n1\n1\n3\n5\n", "STAIRCASE\n0,0,0\n{0.3,1.3}{1.3,0.3}{3.3,0.3}5\n"},
        {"PYRAMID\n1,0,1\n2\n3\n4\n", "PYRAMID\n1,0,1\n{3.3,1.3}{1.3,4.3}{5.3,1.3}"},
        {"SCREWTHREAD\n0,0,0\n6\n2\n1\n0.5\n2\n8\n", "SCREWTHREAD\n0,0,0\n{6.3,0.3}{2.3,0.3}{1.3,0.3}0.5\n2\n8\n"},
        {"SPRING\n0,0,0\n4\n1\n2\n0\n3\n30\n", "SPRING\n0,0,0\n{4.3,0.3}{0.3,1.3}{0.3,-2.3}0\n3\n30\n"},
    };
    for (const auto& [typed, picked] : kPairs) {
        SCOPED_TRACE(typed);
        Session(typed);
        const std::string a = Dump(Newest());
        Session(picked);
        EXPECT_EQ(Dump(Newest()), a);
    }
    for (int id = 1; id <= 5; id++) {
        SCOPED_TRACE(id);
        std::string dumps[2];
        for (int k = 0; k < 2; k++) {
            Scene_Clear();
            Layer_NewFirst();
            Play("BEZIER\n");
            Dlg_Click("bezier.dlg", "SHAPE", id);
            if (id == 1) Play(k ? "0,0,0\n{3.3,0.3}{3.3,1.3}" : "0,0,0\n3\n1\n");   // the donut from the inner point
            else if (id <= 3) Play(k ? "0,0,0\n{0.3,-2.3}" : "0,0,0\n2\n");
            else Play(k ? "0,0,0\n{0.3,5.3}{-2.3,0.3}2\n" : "0,0,0\n5\n2\n2\n");
            EXPECT_FALSE(RunLoop());
            dumps[k] = Dump(Newest());
        }
        EXPECT_EQ(dumps[0], dumps[1]);
    }
}

// FACE and TRIANGLE: Undo takes the last corner back; Enter at FACE's
// fourth corner makes a triangular face.
TEST_F(ShapesCmdTest, FacesAndTriangles) {
    Session("TRIANGLE\n0,0,0\n5,0,0\nU\n1,0,0\n1,0,1\n");
    EXPECT_EQ(Scene(), "tri 0,0,0 1,0,0 1,0,1\n");
    Session("FACE\n0,0,0\n1,0,0\n\n");
    EXPECT_EQ(ObjectCount(), 0);
    Session("FACE\n0,0,0\n1,0,0\n1,0,1\n\n");
    ASSERT_EQ(ObjectCount(), 1);
    const FaceData* f = (const FaceData*)Newest()->data;
    EXPECT_PT3(f->corner[2], 1, 0, 1);
    EXPECT_PT3(f->corner[3], 1, 0, 1);
    Session("FACE\n0,0,0\nU\n2,0,0\n3,0,0\n3,0,3\n2,0,3\n");
    f = (const FaceData*)Newest()->data;
    EXPECT_PT3(f->corner[0], 2, 0, 0);
    EXPECT_PT3(f->corner[3], 2, 0, 3);
}

// TRIANGLE Edit and FACE Edit from 302: the corner shown, moved, stepped
// forward and back with wrapping; EDIT typed at the prompt is ignored.
TEST_F(ShapesCmdTest, CornerEditMachines) {
    Scene_Clear();
    Layer_NewFirst();
    TriangleData t{{{0, 0, 0}, {4, 0, 0}, {0, 0, 4}}};
    Add_Triangle(&t);
    const std::string said = Run("EDIT\n{2,0}M\n1,0,1\nP\nM\n0,0,5\nEDIT\nN\nN\nE\n");
    EXPECT_EQ(Scene(), "tri 1,0,1 4,0,0 0,0,5\n");
    EXPECT_NE(said.find("\nPosition: 1\nTRIANGLE Edit <Move,Next,Prev,Exit>: \nPoint <0,0,0>: \nPosition: 1"
                        "\nTRIANGLE Edit <Move,Next,Prev,Exit>: \nPosition: 3\nTRIANGLE Edit <Move,Next,Prev,Exit>: "
                        "\nPoint <0,0,4>: \nPosition: 3"),
              std::string::npos)
        << said;

    Scene_Clear();
    Layer_NewFirst();
    FaceData f{{{0, 0, 0}, {4, 0, 0}, {4, 0, 4}, {0, 0, 4}}};
    Add_Face(&f);
    const std::string face = Run("EDIT\n{2,0}N\nN\nM\n5,0,5\nN\nN\nM\n-1,0,0\nE\n");
    const FaceData* g2 = (const FaceData*)Newest()->data;
    EXPECT_PT3(g2->corner[2], 5, 0, 5);
    EXPECT_PT3(g2->corner[0], -1, 0, 0);
    EXPECT_NE(face.find("\nFACE Edit <Move,Next,Prev,Exit>: "), std::string::npos);
    EXPECT_NE(face.find("\nPosition: 4"), std::string::npos);
}

// Out of memory at each allocation: the command's own message, nothing
// added, nothing left allocated.
TEST_F(ShapesCmdTest, OutOfMemory) {
    struct Case {
        const char* script;   // the command typed through; "#n" clicks picture n of bezier.dlg
        const char* message;
    };
    const Case kCases[] = {
        {"PCUBE\n0,0,0\n1\n\n\n", "\nCan't create PCube...Out Of Memory"},
        {"PYRAMID\n0,0,0\n1\n1\n1\n", "\nCan't create Pyramid...Out Of Memory"},
        {"WEDGE\n0,0,0\n1\n1\n1\n", "\nCan't create Wedge...Out Of Memory"},
        {"MESH\n0,0,0\n1,0,0\n1,0,1\n0,0,1\n2\n2\n", "\nCan't create Mesh...Out Of Memory"},
        {"STAIRCASE\n0,0,0\n1\n1\n2\n4\n", "\nCan't create Staircase...Out Of Memory"},
        {"SCREWTHREAD\n0,0,0\n10\n1\n0.5\n1\n4\n\n", "\nCan't create Screwthread...Out Of Memory"},
        {"SPRING\n0,0,0\n4\n0.5\n1\n0\n2\n90\n", "Out of Memory!"},
        {"#1", "\nCan't create B_Torus...Out Of Memory"},
        {"#2", "\nCan't create B_Dish...Out Of Memory"},
        {"#3", "\nCan't create B_Sphere...Out Of Memory"},
        {"#4", "\nCan't create B_Cylinder...Out Of Memory"},
        {"#5", "\nCan't create B_Cylinder2...Out Of Memory"},
        {"FACE\n0,0,0\n1,0,0\n1,0,1\n0,0,1\n", "\nOut of Memory"},
        {"TRIANGLE\n0,0,0\n1,0,0\n1,0,1\n", "\nOut of Memory"},
    };
    const char* kBezierAnswers[] = {"0,0,0\n3\n1\n", "0,0,0\n2\n", "0,0,0\n2\n", "0,0,0\n4\n1\n2\n",
                                    "0,0,0\n4\n1\n2\n"};
    for (const Case& c : kCases) {
        SCOPED_TRACE(c.script);
        auto play = [&] {
            if (c.script[0] == '#') {
                const int id = c.script[1] - '0';
                Play("BEZIER\n");
                Dlg_Click("bezier.dlg", "SHAPE", id);
                Play(kBezierAnswers[id - 1]);
            } else {
                Play(c.script);
            }
        };
        // The first failure is the point array (or the record for facets),
        // the next ones the object and its record when adding.
        for (long n = 1;; n++) {
            SCOPED_TRACE(n);
            Scene_Clear();
            Layer_NewFirst();
            const long blocks = g.mem.live_blocks;
            Headless_ClearTranscript();
            play();
            Mem_FailAfter(n);
            EXPECT_FALSE(RunLoop());
            const bool failed = g.mem.fail_countdown == 0;
            Mem_FailAfter(0);
            if (!failed) {
                EXPECT_EQ(ObjectCount(), 1);
                EXPECT_GE(n, 2);
                break;
            }
            const std::string said = Headless_Transcript();
            EXPECT_NE(said.find(n == 1 ? c.message : "\nOut of Memory"), std::string::npos) << said;
            EXPECT_EQ(ObjectCount(), 0);
            EXPECT_EQ(g.mem.live_blocks, blocks);
            ASSERT_LT(n, 10);
        }
    }
}

}  // namespace
