// dxf_test.cpp - DXF export (exact text, read by ezdxf) and import (our own
// files, files written by ezdxf in the POLYLINE/VERTEX/SEQEND style, hand
// written files, the three questions) and bad input.
#include <strings.h>

#include <cmath>
#include <random>

#include "exchange_test_util.h"
#include "gfx/headless/headless.h"
#include "model/geometry.h"

namespace {

class DxfTest : public ExchangeTest {
  protected:
    // Layers A (colour 3, on) and B (colour 5, off); a face in A, a triangle in B.
    void TwoLayerScene() {
        Layer* a = AddLayer("A", 3);
        Layer* b = AddLayer("B", 5, 0);
        g.scene.Current_Layer = a;
        FaceData f = Face({0, 0, 0}, {1, 0, 0}, {1, 1, 0}, {0, 1, 0.5});
        ASSERT_TRUE(Add_Face(&f));
        g.scene.Current_Layer = b;
        TriangleData t = Tri({0, 0, 0}, {2, 0, 0}, {0, 2, 0});
        ASSERT_TRUE(Add_Triangle(&t));
    }

    // Imports path with the given answers; the import's result.
    int Import(const std::string& path, const std::vector<std::string>& answers) {
        Answer(answers);
        int result = -1;
        EXPECT_TRUE(Headless_RunSession([&] { result = Import_Dxf(path.c_str()); }));
        return result;
    }
};

const char kTwoLayerDxf[] =
    "  0\nSECTION\n  2\nHEADER\n  0\nENDSEC\n"
    "  0\nSECTION\n  2\nTABLES\n"
    "  0\nTABLE\n  2\nVPORT\n  70\n0\n  0\nENDTAB\n"
    "  0\nTABLE\n  2\nLTYPE\n 70\n     1\n  0\nLTYPE\n  2\nCONTINUOUS\n 70\n    64\n"
    "  3\nSolid Line\n 72\n    65\n 73\n     0\n 40\n0.0\n  0\nENDTAB\n"
    "  0\nTABLE\n  2\nLAYER\n  70\n      2\n"
    "  0\nLAYER\n  2\nA\n  70\n0\n  62\n3\n  6\nCONTINUOUS\n"
    "  0\nLAYER\n  2\nB\n  70\n0\n  62\n-5\n  6\nCONTINUOUS\n"
    "  0\nENDTAB\n  0\nENDSEC\n"
    "  0\nSECTION\n  2\nENTITIES\n"
    "  0\n3DFACE\n  8\nA\n"
    "  10\n0\n  20\n0\n  30\n0\n  11\n1\n  21\n0\n  31\n0\n"
    "  12\n1\n  22\n1\n  32\n0\n  13\n0\n  23\n1\n  33\n0.5\n"
    "  0\n3DFACE\n  8\nB\n"
    "  10\n0\n  20\n0\n  30\n0\n  11\n2\n  21\n0\n  31\n0\n"
    "  12\n0\n  22\n2\n  32\n0\n  13\n0\n  23\n2\n  33\n0\n"
    "  0\nENDSEC\n  0\nEOF\n";

TEST_F(DxfTest, ExportWritesTheFileLineForLine) {
    TwoLayerScene();
    g.input.InputResult.code = 305;
    EXPECT_EQ(1, Com_ExportDxf());
    EXPECT_EQ(kTwoLayerDxf, ReadFile(File("scene.dxf")));
    EXPECT_EQ(0, g.input.InputResult.code);
    EXPECT_EQ(OUTPUT_SCREEN, g.output.Output_Mode);
    EXPECT_NEAR(1e-6, g.writer.Vertex_Tolerance, 1e-18);
    EXPECT_NE(std::string::npos, Headless_Transcript().find("\nDXF file created <scene.dxf>!"));
}

// Surfaces and primitives go out as the facets their generators make: a
// mesh of 3 x 3 points is 4 faces, a box 6.
TEST_F(DxfTest, EzdxfReadsTheExport) {
    TwoLayerScene();
    Layer* c = AddLayer("SOLIDS", 12);
    g.scene.Current_Layer = c;
    PolylineData mesh = Poly_Default();
    mesh.form = FORM_POLY_MESH;
    mesh.size_m = 2;
    mesh.size_n = 2;
    Point3 pts[9];
    for (int i = 0; i < 9; i++) pts[i] = {double(i % 3), double(i / 3), 0.25 * i};
    mesh.points = pts;
    mesh.count = 9;
    ASSERT_TRUE(Poly_AddToScene(&mesh));
    PrimitiveData box = Primitive_Default();
    box.prim_type = PRIM_BOX;
    box.size = {1, 2, 3};
    ASSERT_TRUE(Add_Primitive(&box));
    Dxf_Export();

    RunResult r = Python(
        "import ezdxf, collections\n"
        "doc = ezdxf.readfile('" + File("scene.dxf") + "')\n"
        "for l in doc.layers:\n"
        "    if l.dxf.name in ('A', 'B', 'SOLIDS'):\n"
        "        print('layer', l.dxf.name, l.color, 'off' if l.is_off() else 'on')\n"
        "n = collections.Counter(e.dxf.layer for e in doc.modelspace() if e.dxftype() == '3DFACE')\n"
        "print('faces', n['A'], n['B'], n['SOLIDS'], len(doc.modelspace()))\n");
    ASSERT_EQ(0, r.status) << r.out;
    EXPECT_EQ("layer A 3 on\nlayer B 5 off\nlayer SOLIDS 12 on\nfaces 1 1 10 12\n", r.out);
}

TEST_F(DxfTest, ExportReadsBackIntoAnEmptyScene) {
    TwoLayerScene();
    Dxf_Export();
    Scene_Clear();
    ASSERT_EQ(1, Import(File("scene.dxf"), {"Y", "Y"}));
    // created at the head of the list, so in reverse order; the triangle's
    // third corner is repeated
    ASSERT_EQ(2, Layer_Count());
    EXPECT_EQ("B 5 0\nF 0 0 0 2 0 0 0 2 0 0 2 0\n", LayerText(Layer_At(1)));
    EXPECT_EQ("A 3 1\nF 0 0 0 1 0 0 1 1 0 0 1 0.5\n", LayerText(Layer_At(2)));
    const std::string& tr = Headless_Transcript();
    EXPECT_NE(std::string::npos, tr.find("\nPlease wait"));
    EXPECT_NE(std::string::npos, tr.find("\nIMPDXF> Parse Header info? <Yes,No> (Y): "));
    EXPECT_NE(std::string::npos, tr.find("\nIMPDXF> Parse Table info for Layers? <Yes,No> (Y): "));
}

// ezdxf writes R12 drawings with POLYLINE/VERTEX/SEQEND, a BLOCKS section
// and handles in every entity.
const char kEzdxfScript[] =
    "import ezdxf, sys\n"
    "doc = ezdxf.new('R12')\n"
    "doc.layers.new('WALLS', dxfattribs={'color': 3})\n"
    "doc.layers.new('OFF1', dxfattribs={'color': 5}).off()\n"
    "doc.header['$ORTHOMODE'] = 1\n"
    "doc.header['$ELEVATION'] = 2.5\n"
    "msp = doc.modelspace()\n"
    "msp.add_3dface([(0,0,0),(1,0,0),(1,1,0),(0,1,7)], dxfattribs={'layer': 'WALLS'})\n"
    "m = msp.add_polymesh(size=(4,3), dxfattribs={'layer': 'WALLS'})\n"
    "for i in range(4):\n"
    "    for j in range(3):\n"
    "        m.set_mesh_vertex((i, j), (i, j, i * j))\n"
    "pf = msp.add_polyface(dxfattribs={'layer': 'OFF1'})\n"
    "pf.append_face([(0,0,0),(1,0,0),(1,1,0),(0,1,0)])\n"
    "pf.append_face([(0,0,0),(1,0,0),(0,0,4)])\n"
    "msp.add_polyline3d([(0,0,0),(1,0,0),(1,1,1)], close=True, dxfattribs={'layer': 'OFF1'})\n"
    "doc.saveas(sys.argv[1] if len(sys.argv) > 1 else 'x.dxf')\n";

// What that drawing holds, newest first: on WALLS the 3DFACE and the mesh
// (vertex (i, j) at (i, j, i * j)); on OFF1 the polyface as one 3DFACE and
// one TRIANGLE, then the closed polyline.
const char kEzWalls[] =
    "\nP 0 0 0 0 1 0 0 2 0 1 0 0 1 1 1 1 2 2 2 0 0 2 1 2 2 2 4 3 0 0 3 1 3 3 2 6"
    "\nF 0 0 0 1 0 0 1 1 0 0 1 7";
const char kEzOff1[] = "\nP 0 0 0 1 0 0 1 1 1\nT 0 0 0 1 0 0 0 0 4\nF 0 0 0 1 0 0 1 1 0 0 1 0";

class EzdxfImport : public DxfTest {
  protected:
    void SetUp() override {
        DxfTest::SetUp();
        RunOptions opt;
        RunResult r = RunProcess({"/usr/bin/python3", "-c", kEzdxfScript, File("ez.dxf")}, opt);
        ASSERT_EQ(0, r.status) << r.out;
        Layer* start = AddLayer("START", 9);
        g.scene.Current_Layer = start;
    }
};

TEST_F(EzdxfImport, LayersFacesMeshesPolyfacesAndHeader) {
    ASSERT_EQ(1, Import(File("ez.dxf"), {"Y", "Y", "N"}));
    Layer* walls = FindLayer("WALLS");
    Layer* off = FindLayer("OFF1");
    ASSERT_TRUE(walls && off);
    EXPECT_EQ(std::string("WALLS 3 1") + kEzWalls + "\n", LayerText(walls));
    const PolylineData* mesh = (const PolylineData*)walls->first_object->data;
    EXPECT_EQ(FORM_POLY_MESH, mesh->form);
    EXPECT_EQ(3, mesh->size_n);   // 71 = 4
    EXPECT_EQ(2, mesh->size_m);   // 72 = 3
    EXPECT_EQ(std::string("OFF1 5 0") + kEzOff1 + "\n", LayerText(off));
    const PolylineData* closed = (const PolylineData*)off->first_object->data;
    EXPECT_EQ(FORM_POLYLINE, closed->form);
    EXPECT_EQ(POLY_CLOSED | POLY_N_CLOSED, closed->poly_flags);

    // header: ORTHO on, working plane of the TOP view at y = 2.5
    EXPECT_EQ(1, g.aids.orthoOn);
    EXPECT_EQ(2.5, g.view.Active_Viewport.ELEVATION.y);
    EXPECT_EQ(2.5, g.view.Viewports[g.view.Current_Viewport].ELEVATION.y);
    EXPECT_NE(std::string::npos,
              Headless_Transcript().find("\nIMPDXF> Parse Block info? <Yes,No> (Y): "));
}

TEST_F(EzdxfImport, AnsweringNoSkipsHeaderAndTable) {
    Layer* before = g.scene.First_Layer;
    ASSERT_EQ(1, Import(File("ez.dxf"), {"N", "N", "N"}));
    EXPECT_EQ(0, g.aids.orthoOn);
    EXPECT_EQ(0, g.view.Active_Viewport.ELEVATION.y);
    ASSERT_EQ(1, Layer_Count());   // the layer list is unchanged
    EXPECT_EQ(before, g.scene.First_Layer);
    // everything went to the current layer
    EXPECT_EQ(std::string("START 9 1") + kEzOff1 + kEzWalls + "\n", LayerText(before));
}

TEST_F(EzdxfImport, KnownLayersStillReceiveTheirEntitiesWithoutTheTable) {
    AddLayer("walls", 4);   // names compare without regard to case
    g.scene.Current_Layer = g.scene.First_Layer;
    ASSERT_EQ(1, Import(File("ez.dxf"), {"Y", "N", "N"}));
    EXPECT_EQ(2, Layer_Count());
    // the first entity makes "walls" current; the unknown OFF1 changes
    // nothing; the table was not read, so the colour stays
    EXPECT_EQ(std::string("walls 4 1") + kEzOff1 + kEzWalls + "\n", LayerText(FindLayer("walls")));
    EXPECT_EQ("START 9 1\n", LayerText(FindLayer("START")));
    EXPECT_EQ(1, g.aids.orthoOn);
}

TEST_F(EzdxfImport, BlocksAnsweredYesStillImportTheEntities) {
    ASSERT_EQ(1, Import(File("ez.dxf"), {"Y", "Y", "Y"}));
    // ezdxf's blocks are empty
    EXPECT_EQ(std::string("WALLS 3 1") + kEzWalls + "\n", LayerText(FindLayer("WALLS")));
}

TEST_F(EzdxfImport, ACommandInsteadOfAnAnswerStopsTheImport) {
    ASSERT_EQ(1, Import(File("ez.dxf"), {kCancel}));
    EXPECT_EQ(1, Layer_Count());
    EXPECT_EQ(nullptr, g.scene.First_Layer->first_object);
    EXPECT_EQ(0, g.aids.orthoOn);
    ASSERT_EQ(1, Import(File("ez.dxf"), {"Y", kCancel}));
    EXPECT_EQ(1, g.aids.orthoOn);   // the header was read, then the import stopped
    EXPECT_EQ(1, Layer_Count());
}

// Written by hand: header variables with two values, a polyface whose face
// records name missing points, negative (invisible-edge) corner numbers, a
// zero 74 meaning "no fourth corner", flags 4 and 32, and a short polyline.
const char kHandDxf[] =
    "  0\nSECTION\n  2\nHEADER\n"
    "  9\n$GRIDUNIT\n 10\n2.5\n 20\n4\n"
    "  9\n$SNAPUNIT\n 10\n0.5\n 20\n0.25\n"
    "  9\n$VIEWCTR\n 10\n99\n 20\n99\n"
    "  9\n$VIEWSIZE\n 40\n42\n"
    "  9\n$GRIDMODE\n 70\n0\n  9\n$SNAPMODE\n 70\n1\n"
    "  9\n$BLIPMODE\n 70\n1\n  9\n$COORDS\n 70\n3\n"
    "  9\n$SHADEDGE\n 70\n1\n  9\n$SHADEDIF\n 70\n70\n"
    "  0\nENDSEC\n"
    "  0\nSECTION\n  2\nENTITIES\n"
    "  0\nPOLYLINE\n  8\n0\n 66\n1\n 70\n64\n 71\n3\n 72\n3\n"
    "  0\nVERTEX\n 10\n1\n 20\n0\n 30\n0\n 70\n192\n"
    "  0\nVERTEX\n 10\n0\n 20\n1\n 30\n0\n 70\n192\n"
    "  0\nVERTEX\n 10\n0\n 20\n0\n 30\n1\n 70\n192\n"
    "  0\nVERTEX\n 70\n128\n 71\n1\n 72\n2\n 73\n9\n"          // point 9 is missing
    "  0\nVERTEX\n 70\n128\n 71\n1\n 72\n-2\n 73\n3\n 74\n0\n"  // a triangle
    "  0\nVERTEX\n 70\n128\n 71\n1\n 72\n2\n 73\n3\n 74\n5\n"   // point 5 is missing
    "  0\nSEQEND\n"
    "  0\nPOLYLINE\n 70\n37\n"
    "  0\nVERTEX\n 10\n1\n 20\n2\n 30\n3\n"
    "  0\nVERTEX\n 10\n4\n 20\n5\n 30\n6\n"
    "  0\nSEQEND\n"
    "  0\nPOLYLINE\n 70\n0\n  0\nVERTEX\n 10\n1\n  0\nSEQEND\n"  // one point: nothing
    "  0\nENDSEC\n  0\nEOF\n";

TEST_F(DxfTest, HandWrittenPolylinesAndHeader) {
    WriteFile(File("hand.dxf"), kHandDxf);
    AddLayer("L", 7);
    ASSERT_EQ(1, Import(File("hand.dxf"), {"Y"}));
    const Viewport& vp = g.view.Active_Viewport;
    EXPECT_EQ(2.5, vp.GRIDX);
    EXPECT_EQ(4, vp.GRIDY);
    EXPECT_EQ(0.5, vp.SNAPX);
    EXPECT_EQ(0.25, vp.SNAPY);
    EXPECT_EQ(42, vp.AREA);
    EXPECT_EQ(0, vp.GRID);
    EXPECT_EQ(1, vp.SNAP);
    EXPECT_EQ(1, g.aids.blipsOn);
    EXPECT_EQ(3, g.aids.coordsMode);
    EXPECT_EQ(1, g.shade.Shade_Type);
    EXPECT_EQ(70, g.exchange.Shade_Dif);
    EXPECT_EQ(0, vp.ELEVATION.x);   // $VIEWCTR changes nothing

    // the polyface's only whole face (corner 2 negative: an invisible edge)
    EXPECT_EQ("L 7 1\nP 1 2 3 4 5 6\nT 1 0 0 0 1 0 0 0 1\n", LayerText(g.scene.First_Layer));
    const PolylineData* p = (const PolylineData*)g.scene.First_Layer->first_object->data;
    EXPECT_EQ(POLY_CLOSED | POLY_N_CLOSED | POLY_BSPLINE | POLY_M_CLOSED, p->poly_flags);
    EXPECT_EQ(FORM_POLYLINE, p->form);
}

// --- bad input ---

class DxfBadInput : public DxfTest {
  protected:
    // Imports text; every object of the scene must have finite coordinates
    // and draw without trouble.
    int ImportText(const std::string& text, const std::string& name = "bad.dxf") {
        WriteFile(File(name), text);
        int r = Import(File(name), {"Y", "Y", "Y"});
        for (Layer* l = g.scene.First_Layer; l; l = l->next)
            for (const Object* o : Objects(l)) {
                Object_Draw(o);
                if (o->kind == KIND_3DFACE) {
                    for (const Point3& c : ((const FaceData*)o->data)->corner)
                        EXPECT_TRUE(std::isfinite(c.x) && std::isfinite(c.y) && std::isfinite(c.z));
                }
                if (o->kind == KIND_POLYLINE) {
                    const PolylineData* p = (const PolylineData*)o->data;
                    for (int i = 0; i < p->count; i++) EXPECT_TRUE(std::isfinite(p->points[i].x));
                }
            }
        return r;
    }
};

TEST_F(DxfBadInput, TruncatedAnywhere) {
    RunOptions opt;
    ASSERT_EQ(0, RunProcess({"/usr/bin/python3", "-c", kEzdxfScript, File("ez.dxf")}, opt).status);
    std::string whole = ReadFile(File("ez.dxf"));
    for (size_t cut = 0; cut < whole.size(); cut += 97) {
        Restart();
        AddLayer("L", 7);
        EXPECT_EQ(1, ImportText(whole.substr(0, cut))) << cut;
    }
    // cut in the middle of the polyface: what was read before it stays
    size_t polyface = whole.find("\n 70\n64\n");
    ASSERT_NE(std::string::npos, polyface);
    size_t at = whole.find("SEQEND", polyface);
    ASSERT_NE(std::string::npos, at);
    State_Reset();
    AddLayer("L", 7);
    ImportText(whole.substr(0, at - 6));
    Layer* walls = FindLayer("WALLS");
    ASSERT_TRUE(walls);
    EXPECT_EQ(2, (int)Objects(walls).size());
}

TEST_F(DxfBadInput, BinaryGarbage) {
    std::mt19937 rng(7);
    for (int round = 0; round < 5; round++) {
        std::string junk(20000, '\0');
        for (char& c : junk) c = (char)(rng() & 0xff);
        // sprinkle the words the scanner looks for
        for (const char* w : {"\nENTITIES\n", "\n3DFACE\n", "\nPOLYLINE\n", "\nVERTEX\n", "\nTABLES\n",
                              "\nLAYER\n", "\nTABLE\n", "\nHEADER\n", "\n$GRIDUNIT\n", "\n 70\n64\n"})
            for (int k = 0; k < 20; k++) junk.insert(rng() % junk.size(), w);
        Restart();
        AddLayer("L", 7);
        EXPECT_EQ(1, ImportText(junk)) << round;
    }
}

TEST_F(DxfBadInput, LinesOverTheLimitAreSplit) {
    std::string text = "  0\nSECTION\n  2\nENTITIES\n999\n" + std::string(3000, 'x') +
                       "\n  0\n3DFACE\n  8\n" + std::string(600, 'N') + "\n 10\n5\n  0\nENDSEC\n";
    AddLayer("L", 7);
    ASSERT_EQ(1, ImportText(text));
    // the long name's rest is read as group and value lines, not as x
    EXPECT_EQ("L 7 1\nF 0 0 0 0 0 0 0 0 0 0 0 0\n", LayerText(g.scene.First_Layer));
}

TEST_F(DxfBadInput, AbsurdCountsAndNumbers) {
    std::string text =
        "  0\nSECTION\n  2\nTABLES\n  0\nTABLE\n  2\nLAYER\n 70\n2147483647\n"
        "  0\nLAYER\n  2\nBIG\n 62\n-99999999999\n  0\nLAYER\n  2\nNEG\n 62\nnan\n  0\nENDTAB\n"
        "  0\nENDSEC\n"
        "  0\nSECTION\n  2\nENTITIES\n"
        "  0\nPOLYLINE\n  8\nBIG\n 70\n16\n 71\n2147483647\n 72\n-2147483648\n"
        "  0\nVERTEX\n 10\n1\n  0\nVERTEX\n 10\nnan\n 20\ninf\n  0\nVERTEX\n 10\n1e999\n  0\nSEQEND\n"
        "  0\n3DFACE\n 10\nNaN\n 21\n-inf\n 33\n3\n"
        "  0\nPOLYLINE\n 70\n64\n  0\nVERTEX\n 70\n128\n 71\n2147483647\n 72\n-2147483648\n 73\n1\n"
        "  0\nSEQEND\n  0\nENDSEC\n";
    AddLayer("L", 7);
    ASSERT_EQ(1, ImportText(text));
    // not numbers: the coordinates stay 0; the polyface's only face names
    // missing points
    Layer* big = FindLayer("BIG");
    ASSERT_TRUE(big);
    EXPECT_EQ("BIG 255 0\nF 0 0 0 0 0 0 0 0 0 0 0 3\nP 1 0 0 0 0 0 0 0 0\n", LayerText(big));
    EXPECT_EQ(2147483646, ((const PolylineData*)Objects(big)[1]->data)->size_n);
}

}  // namespace
