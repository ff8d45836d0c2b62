// The edit machines behind EDIT (302): every keyword of POLYLINE Edit,
// SWEEP Edit and MESH Edit (and the reduced PRIMPOLY Edit) in typed
// sessions on one object, with the prompts printed and the record left,
// worked out by hand.
#include "model/recorder.h"
#include "poly_session.h"

namespace {

const std::string PE = "\nPOLYLINE Edit <PI,ED,ST,TN,W,H,WI,WR,R1,R2,TS,TR,C,O,S,F,R,M,N,P,A,D,B,E>: ";
const std::string SE = "\nSWEEP Edit <C,O,NS,MS,S,F,R,M,N,P,A,D,E>: ";
const std::string SR = "\nSWEEP Edit <C,O,NS,MS,S,F,R,M,N,P,A,D,ANG,E>: ";
const std::string ME = "\nMESH Edit <E,MC,NC,B,F,U,V,FL,M,S,R,W,P,D,SM,C>: ";
const std::string PP = "\nPRIMPOLY Edit <E,M,S,R,W,P,D,SM>: ";

struct Row {
    std::string keys;         // typed after the pick
    std::string transcript;   // after the machine's first prompt
    std::string scene;        // the records afterwards, newest first ("...:" compares up to the points)
};

class PolyEditTest : public PolySessionTest {
  protected:
    // Each row on a fresh object made by `make`, picked at (x, 0, z).
    template <typename Make>
    void RunRows(Make make, double x, double z, const std::string& prompt, const std::vector<Row>& rows) {
        for (const Row& r : rows) {
            SCOPED_TRACE(r.keys);
            Scene_Clear();
            Layer_NewFirst();
            make();
            char pick[64];
            snprintf(pick, sizeof pick, "EDIT\n{%g,%g}", x, z);
            EXPECT_EQ(Run(pick + r.keys), "\nCommand: \nSelect Objects> " + prompt + r.transcript);
            const std::string scene = Scene();
            if (r.scene.back() == ':') EXPECT_EQ(scene.substr(0, r.scene.size()), r.scene);
            else EXPECT_EQ(scene, r.scene);
            EXPECT_EQ(g.view.marker_pending, 0);   // no cross left behind
        }
    }
    static void Square() { AddPolyline({{0, 0, 0}, {2, 0, 0}, {2, 0, 2}, {0, 0, 2}}); }
    static PolylineData* Made() { return (PolylineData*)g.scene.Current_Layer->first_object->data; }
};

TEST_F(PolyEditTest, PolylineEdit) {
    const std::string head = "f1 c0 s8 m16 n16 a0 p1 0,0,0 p2 0,0,0 :";
    RunRows(Square, 1, 0, PE, {
        {"C\nO\nC\nS\nF\nE\n", "\npolyline Closed" + PE + "\npolyline Opened" + PE + "\npolyline Closed" + PE +
                                  "\nB-Spline = ON" + PE + "\nFrame = ON" + PE + "\nCommand: ",
         "f1 c7 s8 m16 n16 a0 p1 0,0,0 p2 0,0,0 : 0,0,0 2,0,0 2,0,2 0,0,2\n"},
        {"R\n0\nR\n5\nE\n", "\nSet New Resolution/Segments <8>: " + PE + "\nSet New Resolution/Segments <1>: " + PE +
                                "\nCommand: ",
         "f1 c0 s5 m16 n16 a0 p1 0,0,0 p2 0,0,0 : 0,0,0 2,0,0 2,0,2 0,0,2\n"},
        // N and P wrap round; M shows the vertex it replaces.
        {"N\nN\nM\n5,0,5\nP\nP\nP\nM\n9,0,9\nE\n",
         PE + PE + "\nPoint <2,0,2>: " + PE + PE + PE + PE + "\nPoint <0,0,2>: " + PE + "\nCommand: ",
         head + " 0,0,0 2,0,0 5,0,5 9,0,9\n"},
        // A inserts before the current vertex, which stays current; D takes it.
        {"N\nA\n1,0,0\nA\n1.5,0,0\nD\nE\n",
         PE + "\nInsert/Add a Point: " + PE + "\nInsert/Add a Point: " + PE + PE + "\nCommand: ",
         head + " 0,0,0 1,0,0 1.5,0,0 2,0,2 0,0,2\n"},
        // Deleting the last vertex makes the new last one current; 2 points stay.
        {"P\nD\nD\nD\nM\n7,0,7\nE\n",
         PE + PE + PE + "Sorry...Can't Delete point with only 2 votrex's" + PE + "\nPoint <2,0,0>: " + PE +
             "\nCommand: ",
         head + " 0,0,0 7,0,7\n"},
        // B: not at an end; N keeps editing; Y (Enter) makes two polylines that replace it.
        {"B\nN\nB\nN\nB\n\n",
         "\nCan't BREAK edge of polyline" + PE + PE + "\nSure you want to Seporate into 2 polylines? <Y,N> (Y): " +
             PE + "\nSure you want to Seporate into 2 polylines? <Y,N> (Y): \nCommand: ",
         head + " 2,0,0 2,0,2 0,0,2\n" + head + " 0,0,0 2,0,0\n"},
        {"R1\nPI\nR1\n0.5\nR2\n\nTS\n1\nTR\n0\nTN\nED\n5\nST\n9\nE\n",
         "\nPolyline not Pipened. Type \"PI\" to enable." + PE + "PolyPIPE enabled" + PE +
             "\nSet Radius #1 value <0.2>: " + PE + "\nSet Radius #2 value <0.2>: " + PE + "\nSet Pipe Segments <8>: " +
             PE + "\nSet Pipe Resolution (Splined only) <16>: " + PE + "\nThis option disabled for release 3" + PE +
             "\nSet Edge type (0=Spheres, 1=Sharpened) <0>: " + PE +
             "\nSet Sphered type (0=None, 1=Start, 2=End, 3=Both) <0>: " + PE + "\nCommand: ",
         "f9 c0 s8 m1 n2 a0 p1 0.5,0.2,0 p2 1,3,0 : 0,0,0 2,0,0 2,0,2 0,0,2\n"},
        {"H\nW\nH\n3\nWI\n0.5\nWR\n1\nW\nE\n",
         "\nPolyline not a Wall. Type \"W\" to enable." + PE + "PolyWALL enabled" + PE + "\nSet Height of Wall <4>: " +
             PE + "\nSet Width of Wall <0.25>: " + PE + "\nSet Wall Resolution (Splined only) <16>: " + PE +
             "PolyWALL disabled" + PE + "\nCommand: ",
         "f1 c0 s8 m2 n8 a0 p1 3,0.5,0 p2 0,0,0 : 0,0,0 2,0,0 2,0,2 0,0,2\n"},
        // Enter repeats EDIT, which is ignored; another command ends the edit.
        {"\nCIRCLE\n", PE + "*cancel* \nCIRCLE> Set center point: ",
         "f1 c0 s8 m16 n16 a0 p1 0,0,0 p2 0,0,0 : 0,0,0 2,0,0 2,0,2 0,0,2\n"},
    });
}

// While POLYLINE Edit runs its keywords are on the side menu: the row
// "Next" (row 3, under the title and a space) moves the cursor; the menu
// shown before comes back at the end.
TEST_F(PolyEditTest, KeywordsOnTheSideMenu) {
    Square();
    ASSERT_EQ(g.menus.side.shown, 1000);
    Play("EDIT\n{1,0}");
    PickSide(3);
    Play("M\n\nE\n");
    EXPECT_EQ(Run(""), "\nCommand: \nSelect Objects> " + PE + PE + "\nPoint <2,0,0>: " + PE + "\nCommand: ");
    EXPECT_EQ(g.menus.side.shown, 1000);
}

TEST_F(PolyEditTest, SweepEdit) {
    auto sweep = [](int form) {
        return [form] {
            PolylineData* p = (PolylineData*)AddPolyline({{0, 0, 0}, {2, 0, 0}})->data;
            p->form = form;
            p->param1 = {1, 5, 1};
            p->param2 = {0, 3, 0};
            if (form == FORM_REVOLUTION) {
                p->param1 = {0, 0, 0};
                p->param2 = {0, 1, 0};
                p->angle = 360;
                p->points[0] = {1, 0, 0};
                p->points[1] = {1, 0, 1};
            }
        };
    };
    // Cursor 0, 1, then param2 (-2), param1 (-1), 0; back -1, -2, 1.
    RunRows(sweep(FORM_EXTRUSION), 1, 0, SE, {
        {"N\nN\nM\n0,4,0\nA\nD\nN\nM\n1,1,1\nN\nM\n5,0,0\nP\nP\nP\nM\n6,0,0\nE\n",
         SE + SE + "\nPoint <0,3,0>: " + SE + "Can't Insert Here" + SE + "Can't Delete this point" + SE + SE +
             "\nPoint <1,5,1>: " + SE + SE + "\nPoint <0,0,0>: " + SE + SE + SE + SE + "\nPoint <2,0,0>: " + SE +
             "\nCommand: ",
         "f2 c0 s8 m16 n16 a0 p1 1,1,1 p2 0,4,0 : 5,0,0 6,0,0\n"},
        {"C\nO\nS\nF\nNS\n0\nMS\n4\nR\n-3\nD\nBP\nN\nBP\n\n",
         "\npolyline Closed" + SE + "\npolyline Opened" + SE + "\nB-Spline = ON" + SE + "\nFrame = ON" + SE +
             "\nSet N segments <16>: " + SE + "\nSet M segments <16>: " + SE + "\nSet New Resolution/Segments <8>: " + SE +
             "Sorry...Can't Delete point with only 2 votrex's" + SE +
             "\nChange SWEEP back to Polyline? <Y,N> (Y): " + SE + "\nChange SWEEP back to Polyline? <Y,N> (Y): " +
             "\nCommand: ",
         "f1 c6 s1 m1 n4 a0 p1 1,5,1 p2 0,3,0 : 0,0,0 2,0,0\n"},
    });
    // A cone sweep has no param2: back from 0 is param1, then the last point.
    RunRows(sweep(FORM_CONE_SWEEP), 1, 0, SE, {
        {"P\nM\n0,9,0\nP\nM\n3,0,3\nN\nM\n4,0,4\nE\n",
         SE + "\nPoint <1,5,1>: " + SE + SE + "\nPoint <2,0,0>: " + SE + SE + "\nPoint <0,9,0>: " + SE + "\nCommand: ",
         "f4 c0 s8 m16 n16 a0 p1 4,0,4 p2 0,3,0 : 0,0,0 3,0,3\n"},
    });
    // ANG 90 with 16 steps: the profile turns in steps of 5.625 degrees
    // about the y axis, (1, 0, 0) to (cos, 0, -sin) and (0, 0, 1) to (sin, 0, cos).
    RunRows(sweep(FORM_REVOLUTION), 1, 0.5, SR, {
        {"ANG\n90\nE\n", "\nSet new Angle <360>: " + SR + "\nCommand: ", "f3 c0 s8 m16 n16 a90 p1 0,0,0 p2 0,1,0 :"},
    });
    Rec() = Recording{};
    g.output.consumer[OUTPUT_DXF] = rec_hooks::Consumer(0, rec_hooks::Facet);
    g.output.Output_Mode = OUTPUT_DXF;
    Object_Draw(g.scene.Current_Layer->first_object);
    g.output.Output_Mode = OUTPUT_SCREEN;
    ASSERT_EQ(Rec().facets.size(), 16u);
    const double step = 5.625 * 3.141592653589793 / 180;
    for (int j = 1; j <= 16; j++) {
        EXPECT_PT(Rec().facets[j - 1].c[3], std::cos(j * step), 0, -std::sin(j * step));
        EXPECT_PT(Rec().facets[j - 1].c[2], std::cos(j * step) + std::sin(j * step), 0, std::cos(j * step) - std::sin(j * step));
    }
}

TEST_F(PolyEditTest, MeshEdit) {
    auto mesh = [] {   // 3 x 3 points (j, 0, i)
        std::vector<Point3> pts;
        for (int i = 0; i < 3; i++)
            for (int j = 0; j < 3; j++) pts.push_back({(double)j, 0, (double)i});
        PolylineData* p = (PolylineData*)AddPolyline(pts)->data;
        p->form = FORM_POLY_MESH;
        p->size_m = p->size_n = 2;
    };
    const std::string grid = " 0,0,0 1,0,0 2,0,0 0,0,1 1,0,1 2,0,1 0,0,2 1,0,2 2,0,2\n";
    RunRows(mesh, 0.5, 0, ME, {
        {"MC\nNC\nB\nF\nU\nE\n",
         "\nM Closed" + ME + "\nN Closed" + ME + "\nMesh size must be greater than 2x2 and of ODD values" + ME +
             "\nBezier smoothing is not selected" + ME + "\nBezier smoothing is not selected" + ME + "\nCommand: ",
         "f5 cc0 s8 m2 n2 a0 p1 0,0,0 p2 0,0,0 :" + grid},
        // A window round the lower left 2 x 2 points, moved up 5.
        {"M\nW\n-0.5,0,-0.5\n1.5,0,1.5\nM\n0,0,0\n0,5,0\nE\n",
         "\nNo Points selected...use keyword \"W\"" + ME +
             "\nWindow> Upper/Left corner <Cancel>: \nWindow> Lower/Right corner <Cancle>: "
             "\nNumber of Selected Points: 4" + ME + "\nSet BASE Point: \nSet offset Point: " + ME + "\nCommand: ",
         "f5 c0 s8 m2 n2 a0 p1 0,0,0 p2 0,0,0 : 0,5,0 1,5,0 2,0,0 0,5,1 1,5,1 2,0,1 0,0,2 1,0,2 2,0,2\n"},
        // P adds, SM switches to removing, W given up, D drops all; S with none selected.
        {"P\n1,0,1\nSM\nP\n1,0,1\nSM\n2,0,2\nW\nC\nD\nS\nE\n",
         "\nSelect Point: \nNumber of Selected Points: 1" + ME + "\nSelection Mode now equals: REMOVING Points" + ME +
             "\nSelect Point: \nNumber of Selected Points: 0" + ME + "\nSelection Mode now equals: ADDING Points" +
             ME + "\nNumber of Selected Points: 1" + ME + "\nWindow> Upper/Left corner <Cancel>: *Cancle*" + ME +
             "\nNumber of Selected Points: 0" + ME + "\nNo Points selected...use keyword \"W\"" + ME + "\nCommand: ",
         "f5 c0 s8 m2 n2 a0 p1 0,0,0 p2 0,0,0 :" + grid},
        // R turns the point (2, 0, 0) a quarter about the origin, screen right towards up.
        {"P\n2,0,0\nR\n0,0,0\n0,0,1\nE\n",
         "\nSelect Point: \nNumber of Selected Points: 1" + ME + "\nSet BASE Point: \nSet offset Point: " + ME +
             "\nCommand: ",
         "f5 c0 s8 m2 n2 a0 p1 0,0,0 p2 0,0,0 : 0,0,0 1,0,0 0,0,2 0,0,1 1,0,1 2,0,1 0,0,2 1,0,2 2,0,2\n"},
        // C samples the grid again: 5 rows (z = 0, 0.5 .. 2) of 2 columns (x = 0, 2).
        {"C\n4\n1\nE\n", "\nSet N Number <2>: \nSet M Number <2>: " + ME + "\nCommand: ",
         "f5 c0 s8 m4 n1 a0 p1 0,0,0 p2 0,0,0 : 0,0,0 2,0,0 0,0,0.5 2,0,0.5 0,0,1 2,0,1 0,0,1.5 2,0,1.5 0,0,2 2,0,2\n"},
        // Bezier needs odd sizes above 2 and not both directions closed; then
        // F, U, V and FL; V SIZE and flatness start at 8 and 0.01.
        {"C\n3\n4\nB\nC\n3\n3\nMC\nNC\nB\nMC\nB\nF\nU\n2\nV\n\nFL\n0.5\nMC\nE\n",
         "\nSet N Number <2>: \nSet M Number <2>: " + ME + "\nMesh size must be of ODD values...currently it's <3x4>" +
             ME + "\nSet N Number <3>: \nSet M Number <4>: " + ME + "\nM Closed" + ME + "\nN Closed" + ME +
             "\nSorry, N and M can't both be closed while smoothing is ON" + ME + "\nM Opened" + ME +
             "\nBezier_Patch = ON" + ME + "\nFrame = ON" + ME + "\nSet U SIZE <8>: " + ME + "\nSet V SIZE <8>: " +
             ME + "\nSet Flatness value <0.01>: " + ME + "\nSorry, N and M can't both be closed while smoothing is ON" +
             ME + "\nCommand: ",
         "f5 c46 s2 m3 n3 a8 p1 0.5,0,0 p2 0,0,0 :"},
    });
    // PRIMPOLY Edit: the two cube corners over the origin (bottom and top)
    // are taken by one window and scaled by 2 about it.
    auto cube = [] {
        PolylineData* p = (PolylineData*)AddPolyline({{0, 0, 0}, {1, 0, 0}, {1, 0, 1}, {0, 0, 1}, {0, 1, 0}, {1, 1, 0},
                                                      {1, 1, 1}, {0, 1, 1}})->data;
        p->form = FORM_POLY_CUBE;
    };
    RunRows(cube, 0.5, 0, PP, {
        {"W\n-0.5,0,-0.5\n0.5,0,0.5\nS\n0,0,0\n2,0,0\nE\n",
         "\nWindow> Upper/Left corner <Cancel>: \nWindow> Lower/Right corner <Cancle>: "
         "\nNumber of Selected Points: 2" + PP + "\nSet BASE Point: \nSet offset Point: " + PP + "\nCommand: ",
         "f6 c0 s8 m16 n16 a0 p1 0,0,0 p2 0,0,0 : 0,0,0 1,0,0 1,0,1 0,0,1 0,2,0 1,1,0 1,1,1 0,1,1\n"},
    });
}

}  // namespace
