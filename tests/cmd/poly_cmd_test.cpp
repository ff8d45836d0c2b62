// The commands that make polylines and surfaces, each in a typed and
// clicked session of a TOP view: what they print and the records they
// leave, worked out by hand (newest object first).
#include "poly_session.h"

namespace {

using Pts = std::vector<Point3>;

struct Row {
    std::vector<Pts> polylines;   // made first, in this order
    const char* script;
    const char* transcript;       // after the first "\nCommand: "
    const char* scene;            // the new or changed records, newest first
};

const char kLine[] = "f1 c0 s8 m16 n16 a0 p1 0,0,0 p2 0,0,0 :";

class PolyCmdTest : public PolySessionTest {
  protected:
    // The scene after the row's script: the objects other than the ones
    // the row made first, and those that changed.
    void RunRows(const std::vector<Row>& rows) {
        for (const Row& r : rows) {
            SCOPED_TRACE(r.script);
            Scene_Clear();
            Layer_NewFirst();
            for (const Pts& p : r.polylines) {
                if (p.size() == 3 && p[0].y == 9) {   // y = 9 marks a triangle (drawn at y = 0)
                    TriangleData t{{{p[0].x, 0, p[0].z}, {p[1].x, 0, p[1].z}, {p[2].x, 0, p[2].z}}};
                    Add_Triangle(&t);
                } else if (p[0].y == 7) {   // y = 7 marks a closed polyline (drawn at y = 0)
                    Pts flat = p;
                    for (Point3& q : flat) q.y = 0;
                    ((PolylineData*)AddPolyline(flat)->data)->poly_flags = POLY_CLOSED;
                } else {
                    AddPolyline(p);
                }
            }
            const std::string before = Scene();
            EXPECT_EQ(Run(r.script), std::string("\nCommand: ") + r.transcript);
            std::string after = Scene();
            // Objects that were there and did not change are left out of the comparison.
            size_t at = 0;
            for (size_t nl; (nl = before.find('\n', at)) != std::string::npos; at = nl + 1) {
                const std::string line = before.substr(at, nl - at + 1);
                if (size_t found = after.rfind(line); found != std::string::npos) after.erase(found, line.size());
            }
            EXPECT_EQ(after, r.scene);
        }
    }
};

TEST_F(PolyCmdTest, PolylineCircleArc) {
    RunRows({
        {{}, "POLYLINE\n0,0,0\n2,0,0\nU\n3,0,0\n3,0,3\nC\n",
         "\nPOLYLINE> From: \nPOLYLINE> <Undo> to: \nPOLYLINE> <Undo> to: \nPOLYLINE> <Undo> to: "
         "\nPOLYLINE> <Undo> to: \nPOLYLINE> <Undo,Close> to: \nPolyline Closed \nPOLYLINE> From: ",
         "f1 c1 s8 m16 n16 a0 p1 0,0,0 p2 0,0,0 : 0,0,0 3,0,0 3,0,3\n"},
        {{}, "POLYLINE\n1,0,1\nU\n", "\nPOLYLINE> From: \nPOLYLINE> <Undo> to: \nPOLYLINE> From: ", ""},
        // Another command ends it with the polyline added; so does Enter, which repeats POLYLINE.
        {{}, "POLYLINE\n0,0,0\n1,0,0\nCIRCLE\n",
         "\nPOLYLINE> From: \nPOLYLINE> <Undo> to: \nPOLYLINE> <Undo> to: *cancel* \nCIRCLE> Set center point: ",
         "f1 c0 s8 m16 n16 a0 p1 0,0,0 p2 0,0,0 : 0,0,0 1,0,0\n"},
        {{}, "POLYLINE\n0,0,0\n1,0,0\n\n",
         "\nPOLYLINE> From: \nPOLYLINE> <Undo> to: \nPOLYLINE> <Undo> to: *cancel* \nPOLYLINE> From: ",
         "f1 c0 s8 m16 n16 a0 p1 0,0,0 p2 0,0,0 : 0,0,0 1,0,0\n"},
        // 2 segments are refused; the circle starts at angle 0 on screen right and turns up.
        {{}, "CIRCLE\n1,0,1\n2\n2\n4\n",
         "\nCIRCLE> Set center point: \nCIRCLE> Set Radius: \nCENTER> Set Segment value <16>: "
         "\nMust be greater than 2.\nCENTER> Set Segment value <16>: \nCommand: ",
         "f1 c1 s8 m16 n16 a0 p1 0,0,0 p2 0,0,0 : 3,0,1 1,0,3 -1,0,1 1,0,-1\n"},
        {{}, "CIRCLE\n0,0,0\n0,0,2\n4\n",   // the radius as the distance of a point
         "\nCIRCLE> Set center point: \nCIRCLE> Set Radius: \nCENTER> Set Segment value <16>: \nCommand: ",
         "f1 c1 s8 m16 n16 a0 p1 0,0,0 p2 0,0,0 : 2,0,0 0,0,2 -2,0,0 0,0,-2\n"},
        // 300 to 60 sweeps 120 degrees through 0: 300, 330, 0, 30, 60.
        {{}, "ARC\n0,0,0\n2\n300\n60\n4\n",
         "\nARC> Set center point: \nARC> Set Radius: \nARC> Set Start Angle <0>: \nARC> Set End Angle <360>: "
         "\nARC> Set Segment value <16>: \nCommand: ",
         "f1 c0 s8 m16 n16 a0 p1 0,0,0 p2 0,0,0 : 1,0,-1.73205 1.73205,0,-1 2,0,0 1.73205,0,1 1,0,1.73205\n"},
        // A start of 400 is 0, an end of 500 is 360; 2 segments refused, 3 taken.
        {{}, "ARC\n0,0,0\n1\n400\n500\n2\n3\n",
         "\nARC> Set center point: \nARC> Set Radius: \nARC> Set Start Angle <0>: \nARC> Set End Angle <360>: "
         "\nARC> Set Segment value <16>: \nMust be greater than 3.\nARC> Set Segment value <16>: \nCommand: ",
         "f1 c0 s8 m16 n16 a0 p1 0,0,0 p2 0,0,0 : 1,0,0 -0.5,0,0.866025 -0.5,0,-0.866025 1,0,0\n"},
    });
    // Anything but a number at the segment question gives 16.
    Run("CIRCLE\n0,0,0\n1\n\n");
    EXPECT_EQ(((const PolylineData*)Newest()->data)->count, 16);
}

TEST_F(PolyCmdTest, ConversionsThickenAndWall) {
    const Pts line = {{0, 0, 0}, {2, 0, 0}};
    const Pts tri = {{5, 9, 5}, {6, 9, 5}, {5, 9, 6}};
    const std::string pts = " 0,0,0 2,0,0\n";
    RunRows({
        {{line, tri}, "EXTRUDE\n{5.5,5}{1,0}0,0,0\n0,5,0\n",
         "EXTRUDE> Select polyline to convert: \nSelect Objects> Object NOT a polyline "
         "EXTRUDE> Select polyline to convert: \nSelect Objects> \nEXTRUDE> Set point #1: "
         "\nEXTRUDE> Set point #2: \nCommand: ",
         ("f2 c0 s8 m16 n16 a0 p1 0,0,0 p2 0,5,0 :" + pts).c_str()},
        {{line}, "REVOLUTION\n{1,0}0,0,0\n0,0,1\n",
         "REVOLUTION> Select polyline to convert: \nSelect Objects> \nREVOLUTION> Set point #1: "
         "\nREVOLUTION> Set point #2: \nCommand: ",
         ("f3 c0 s8 m16 n16 a360 p1 0,0,0 p2 0,0,1 :" + pts).c_str()},
        {{line}, "CONE-SWEEP\n{1,0}1,3,1\n",
         "CONE-SWEEP> Select polyline to convert: \nSelect Objects> \nCONE-SWEEP> Set CONE point: \nCommand: ",
         ("f4 c0 s8 m16 n16 a0 p1 1,3,1 p2 0,0,0 :" + pts).c_str()},
        {{line}, "THICKEN\n{1,0}0.5\n\n0\n3\n",
         "THICKEN> Select a polyline: \nSelect Objects> \nTHICKEN> Set starting Thickness value<1.0>: "
         "\nTHICKEN> Set ending Thickness value<0.5>: \nTHICKEN> Number of Segments <8>: "
         "\nMust be greater than ZERO.\nTHICKEN> Number of Segments <8>: \nCommand: ",
         ("f9 c0 s8 m16 n3 a0 p1 0.5,0.5,0 p2 0,0,0 :" + pts).c_str()},
        {{line}, "WALL\n{1,0}\n1\n",
         "WALL> Select a polyline: \nSelect Objects> \nWALL> Set Height value of Wall <4>: "
         "\nWALL> Set Width value of Wall <0.25>: \nCommand: ",
         ("f10 c0 s8 m16 n8 a0 p1 4,1,0 p2 0,0,0 :" + pts).c_str()},
    });
}

TEST_F(PolyCmdTest, RulsurfAndCoons) {
    const Pts closed_tri = {{-3, 7, -3}, {-2, 7, -3}, {-3, 7, -2}};
    RunRows({
        {{{{-4, 0, -2}, {4, 0, -2}}, {{-4, 0, 2}, {4, 0, 2}}}, "RULSURF\n{0,-2}{0,-2}{0,2}0\n1\n2\n",
         "RULSURF> Select polyline #1: \nSelect Objects> RULSURF> Select polyline #2: \nSelect Objects> "
         "\nPolylines can't be the same RULSURF> Select polyline #2: \nSelect Objects> \nSet N Number <7>: "
         "\nMust be greater than ZERO.\nSet N Number <7>: \nSet M Number <7>: \n*Please Wait*\nCommand: ",
         "f5 c0 s8 m1 n2 a0 p1 0,0,0 p2 0,0,0 : -4,0,-2 0,0,-2 4,0,-2 -4,0,2 0,0,2 4,0,2\n"},
        // #3 runs against the loop; #4 starts 5e-7 off #3's end, which still meets.
        {{{{0, 0, 0}, {4, 0, 0}}, {{4, 0, 0}, {4, 0, 4}}, {{0, 0, 4}, {4, 0, 4}}, {{5e-7, 0, 4}, {0, 0, 0}},
          {{-3, 0, 3}, {-2, 0, 3}}, closed_tri},
         "COONS\n{-2.5,-3}{2,0}{-2.5,3}{4,2}{2,4}{0,2}1\n1\n",
         "COONS> Select polyline #1: \nSelect Objects> \nPolyline can't be closed COONS> Select polyline #1: "
         "\nSelect Objects> COONS> Select polyline #2: \nSelect Objects> "
         "\nPLine #1 doesn't connect with PLine #2 COONS> Select polyline #2: \nSelect Objects> "
         "COONS> Select polyline #3: \nSelect Objects> COONS> Select polyline #4: \nSelect Objects> "
         "\nSet N Number <7>: \nSet M Number <7>: \n*Please Wait*\nCommand: ",
         "f5 c0 s8 m1 n1 a0 p1 0,0,0 p2 0,0,0 : 0,0,0 4,0,0 5e-07,0,4 4,0,4\n"},
    });
}

// JOIN by which ends meet (A runs (0,0,0) -> (1,0,0)), the refusals, and
// PARRAY along an open path of length 6: copies 3 and 6 along it.
TEST_F(PolyCmdTest, JoinAndPathArray) {
    const Pts a = {{0, 0, 0}, {1, 0, 0}};
    const std::string head = std::string("JOIN> Select polyline #1: \nSelect Objects> JOIN> Select polyline #2: ") +
                             "\nSelect Objects> ";
    const std::string done = head + "\nCommand: ";
    const std::string joined = std::string(kLine);
    RunRows({
        {{a, {{0, 0, 0}, {0, 0, 1}, {0, 0, 2}}}, "JOIN\n{0.5,0}{0,1.5}", done.c_str(),
         (joined + " 1,0,0 0,0,0 0,0,1 0,0,2\n").c_str()},
        {{a, {{1, 0, 0}, {1, 0, 1}}}, "JOIN\n{0.5,0}{1,0.5}", done.c_str(), (joined + " 0,0,0 1,0,0 1,0,1\n").c_str()},
        {{a, {{1, 0, 2}, {1, 0, 1}, {1, 0, 0}}}, "JOIN\n{0.5,0}{1,1.5}", done.c_str(),
         (joined + " 0,0,0 1,0,0 1,0,1 1,0,2\n").c_str()},
        {{a, {{-1, 0, 1}, {0, 0, 0}}}, "JOIN\n{0.5,0}{-0.5,0.5}", done.c_str(),
         (joined + " 1,0,0 0,0,0 -1,0,1\n").c_str()},
        {{a, {{5, 0, 5}, {6, 0, 5}}}, "JOIN\n{0.5,0}{5.5,5}",
         (head + "\nPolylines must connect with each other\nCommand: ").c_str(), ""},
        {{a}, "JOIN\n{0.5,0}{0.5,0}",
         (head + "\nMust select a different polyline JOIN> Select polyline #2: \nSelect Objects> ").c_str(), ""},
        {{{{0, 0, 0}, {6, 0, 0}}, {{0, 9, 2}, {1, 9, 2}, {0, 9, 3}}}, "PARRAY\n{3,0}{0.5,2}E\n2\n",
         "PARRAY> Select polyline: \nSelect Objects> \nPARRAY> Select Objects\nSelect Objects> "
         "\nStatus <Found: 1, Total: 1> \nSelect Objects> Done!\nPARRAY> Set Number of Copies: \nPlease wait..."
         "\nCommand: ",
         "tri 6,0,2 7,0,2 6,0,3\ntri 3,0,2 4,0,2 3,0,3\n"},
    });
}

}  // namespace
