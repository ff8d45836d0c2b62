// object_writers_test.cpp - primitives, lights, stand-alone triangles and
// faces, the triangle spool with smooth normals, pipes, walls and patches.
#include <sys/stat.h>

#include <cmath>

#include "pov/pov_test_support.h"

namespace {

const std::string kCont = "\n" + std::string(25, ' ');   // continuation of a smooth_triangle in a layer

Object* AddPrim(int type, double p1 = 0, double p2 = 0, double p3 = 0,
                void (*fill)(PrimitiveData&) = nullptr) {
    PrimitiveData p = Primitive_Default();
    p.prim_type = type;
    p.p1 = p1;
    p.p2 = p2;
    p.p3 = p3;
    if (fill) fill(p);
    return Add_Primitive(&p);
}

Object* AddTri(Point3 a, Point3 b, Point3 c, u8 flags = 0, const char* texture = "") {
    TriangleData t{{a, b, c}};
    Object* o = Add_Triangle(&t);
    o->flags = flags;
    snprintf(o->texture, sizeof o->texture, "%s", texture);
    return o;
}

Object* AddFace(Point3 a, Point3 b, Point3 c, Point3 d, u8 flags = 0) {
    FaceData f{{a, b, c, d}};
    Object* o = Add_Face(&f);
    o->flags = flags;
    return o;
}

Object* AddPoly(int form, std::initializer_list<Point3> pts, void (*fill)(PolylineData&) = nullptr) {
    PolylineData p = Poly_Default();
    p.form = form;
    std::vector<Point3> v(pts);
    p.points = v.data();
    p.count = (int)v.size();
    if (fill) fill(p);
    return Poly_AddToScene(&p);
}

TEST_F(PovTest, PrimitivesInEveryForm) {
    NewLayer("P");
    // Objects are written newest first: add them in reverse.
    AddPrim(PRIM_BOX, 0, 0, 0, [](PrimitiveData& p) {
        p.size = {1, 1, 1};
        p.rotate = {30, 20, 10};
        p.prim_flags = PRIM_ROT_XYZ;
    });
    Object* box = AddPrim(PRIM_BOX, 0, 0, 0, [](PrimitiveData& p) {
        p.size = {1, 2, 3};
        p.scale = {2, 2, 2};
        p.rotate = {30, 20, 10};
    });
    box->flags = No_shadow;
    Object* plane =
        AddPrim(PRIM_PLANE, 0, 0, 0, [](PrimitiveData& p) { p.translate = {0, -1, 0}; });
    strcpy(plane->texture, "Jade");
    AddPrim(PRIM_DISC, 1, 3);
    AddPrim(PRIM_TORUS, 2, 0.5);
    AddPrim(PRIM_CONE, 1, 0.5, 3, [](PrimitiveData& p) { p.prim_flags = PRIM_OPEN; });
    AddPrim(PRIM_CONE, 1, 0.5, 3);
    AddPrim(PRIM_SPHERE, 2);
    std::string text = Export();
    EXPECT_EQ(Action(text),
              "\n\nunion {  // Layer name: P"
              "\n    sphere { <0.0, 0.0, 0.0>, 2 }"
              "\n    cone { <0.0, 0.0, 0.0>, 1, <0.0, 3, 0.0>, 0.5  }"
              "\n    cone { <0.0, 0.0, 0.0>, 1, <0.0, 3, 0.0>, 0.5 open }"
              "\n    torus { 2, 0.5 sturm }"
              "\n    disc { <0.0, 0.0, 0.0>, <0.0, 1.0, 0.0>, 3, 1 }"
              "\n    plane { y, 0.0 "
              "\n        texture { Jade }"
              "\n        translate <0, -1, 0>"
              "\n    }"
              "\n    box { <0.0, 0.0, 0.0>, <1, 2, 3> "
              "\n        scale <2, 2, 2>"
              "\n        rotate <30, .0, .0>"
              "\n        rotate <.0, .0, 10>"
              "\n        rotate <.0, 20, .0>"
              "\n        no_shadow"
              "\n    }"
              "\n    box { <0.0, 0.0, 0.0>, <1, 1, 1> "
              "\n        rotate <30, 20, 10>"
              "\n    }"
              "\n}");
}

TEST_F(PovTest, TorusWithoutOptimizeAndHeightFields) {
    parse_check_ = false;   // the height-field images do not exist
    g.config.Optimize_PovOut = 0;
    NewLayer("H");
    AddPrim(PRIM_HEIGHT_FIELD, 0, 0, 0, [](PrimitiveData& p) {
        strcpy(p.file, "hills.pot");
        p.hf_type = 7;
    });
    Object* hf = AddPrim(PRIM_HEIGHT_FIELD, 0.25, 0, 0, [](PrimitiveData& p) {
        strcpy(p.file, "land.tga");
        p.hf_type = 1;
    });
    hf->flags = Smooth_triangle;
    AddPrim(PRIM_HEIGHT_FIELD, 0, 0, 0, [](PrimitiveData& p) { strcpy(p.file, "abcdefgh.gif"); });
    AddPrim(PRIM_TORUS, 2, 0.5);
    EXPECT_EQ(Action(Export()),
              "\n\nunion {  // Layer name: H"
              "\n    torus { 2, 0.5 }"
              "\n    height_field { gif \"abcdefgh.gif\"  water_level 0 }"
              "\n    height_field { tga \"land.tga\"  water_level 0.25 smooth }"
              "\n    height_field { pot \"hills.pot\"  water_level 0 }"
              "\n}");
}

TEST_F(PovTest, PointAreaAndSpotLights) {
    NewLayer("L");
    LightData spot = Light_Default();
    spot.light_flags = LIGHT_SPOT;
    spot.position = {0, 5, 0};
    spot.falloff = 40;
    spot.tightness = 10;
    Add_Light(&spot);
    LightData area = Light_Default();
    area.light_flags = LIGHT_AREA | LIGHT_JITTER;
    area.point_at = {1, 0, 0};   // no turn: the axes come straight from the corners
    area.area_width = 2;
    area.area_height = 1;
    area.area_n2 = 5;
    area.adaptive = 1;
    Add_Light(&area);
    LightData point = Light_Default();
    point.position = {1, 2, 3};
    point.color = {1, 0.5, 0.25};
    Add_Light(&point);
    std::string text = Export();
    EXPECT_EQ(Action(text),
              "\n\nunion {  // Layer name: L"
              "\n    light_source {  <1, 2, 3>"
              "\n        color rgb<1, 0.5, 0.25>"
              "\n    }"
              "\n    light_source {  <0, 0, 0>"
              "\n        color rgb<1, 1, 1>"
              "\n    "
              "\n        area_light <0, -1, 1>, <0, 2, 0.5>, 4, 5  adaptive 1   jitter"
              "\n    }"
              "\n    light_source {  <0, 5, 0>"
              "\n        color rgb<1, 1, 1>"
              "\n    "
              "\n        spotlight"
              "\n        point_at <0, 0, 0>"
              "\n        radius 35"
              "\n        falloff 40"
              "\n        tightness 10"
              "\n    }"
              "\n}");
}

TEST_F(PovTest, AreaLightAxesAreTurnedTowardsPointAt) {
    NewLayer("L");
    LightData area = Light_Default();
    area.light_flags = LIGHT_AREA;
    area.point_at = {0, 1, 0};   // a1 = 90 degrees, a2 = 0
    area.area_width = 2;
    area.area_height = 1;
    Add_Light(&area);
    std::string text = Export();
    size_t at = text.find("area_light <");
    ASSERT_NE(at, std::string::npos);
    double v[6];
    ASSERT_EQ(sscanf(text.c_str() + at, "area_light <%lf, %lf, %lf>, <%lf, %lf, %lf>", &v[0], &v[1], &v[2],
                     &v[3], &v[4], &v[5]),
              6);
    // Corners turned by 90 degrees: (2, 0, -1), (2, 0, 1), (-2, 0, 1).
    const double expected[6] = {1, 0, 1, -2, 0, 0.5};
    for (int i = 0; i < 6; i++) EXPECT_NEAR(v[i], expected[i], 1e-5) << i;
}

// Stand-alone triangles and faces each form one union where the newest of
// them stands; a degenerate triangle is dropped, a face with its last two
// corners equal is one triangle, any other face two.
TEST_F(PovTest, StandAloneTrianglesAndFacesFormOneUnionEach) {
    NewLayer("T");
    AddTri({0, 0, 0}, {1, 0, 0}, {0, 1, 0});
    AddTri({0, 0, 0}, {1, 1, 1}, {2, 2, 2});
    AddTri({1, 0, 0}, {1, 1, 0}, {0, 1, 0}, 0, "Jade");
    AddPrim(PRIM_SPHERE, 1);
    AddTri({0, 0, 0}, {0, 1, 0}, {0, 0, 1}, No_shadow);
    NewLayer("F");
    AddFace({0, 0, 0}, {1, 0, 0}, {1, 1, 0}, {0, 1, 0});
    AddTri({5, 0, 0}, {6, 0, 0}, {5, 1, 0});
    AddFace({0, 0, 1}, {1, 0, 1}, {1, 1, 1}, {1, 1, 1}, No_shadow);
    std::string text = Export();
    EXPECT_EQ(Action(text),
              "\n\nunion {  // Layer name: T"
              "\n    union { // Stand alone Triangles"
              "\n        triangle {<0, 0, 0>, <0, 1, 0>, <0, 0, 1>  no_shadow }"
              "\n        triangle {<1, 0, 0>, <1, 1, 0>, <0, 1, 0>  texture { Jade } }"
              "\n        triangle {<0, 0, 0>, <1, 0, 0>, <0, 1, 0> }"
              "\n    }"
              "\n    sphere { <0.0, 0.0, 0.0>, 1 }"
              "\n}"
              "\n\nunion {  // Layer name: F"
              "\n    union { // Stand alone Faces"
              "\n        triangle {<0, 0, 1>, <1, 0, 1>, <1, 1, 1>  no_shadow }"
              "\n        triangle {<0, 0, 0>, <1, 0, 0>, <1, 1, 0> }"
              "\n        triangle {<1, 1, 0>, <0, 1, 0>, <0, 0, 0> }"
              "\n    }"
              "\n    union { // Stand alone Triangles"
              "\n        triangle {<5, 0, 0>, <6, 0, 0>, <5, 1, 0> }"
              "\n    }"
              "\n}");
    EXPECT_EQ(messages_.rfind("\nMaking <qmr.pov>\nWriting: Triangles..._", 0), 0u) << messages_;
}

TEST_F(PovTest, SmoothNormalsAreAreaWeightedOverSmoothTrianglesOnly) {
    NewLayer("S");
    AddTri({0, 0, 0}, {-1, 0, 0}, {0, 0, -1});                    // not smooth: no part in normals
    AddTri({0, 0, 0}, {1, 0, 0}, {0, 1, 0}, Smooth_triangle);     // normal (0, 0, 1)
    AddTri({0, 0, 0}, {0, 0, 2}, {2, 0, 0}, Smooth_triangle);     // normal (0, 4, 0)
    std::string text = Export();
    EXPECT_EQ(Action(text),
              "\n\nunion {  // Layer name: S"
              "\n    union { // Stand alone Triangles"
              "\n        smooth_triangle {<0, 0, 0>, <0, 2, 0.5>," +
                  kCont + "<0, 0, 2>, <0, 4, 0>," + kCont + "<2, 0, 0>, <0, 4, 0> }" +
                  "\n        smooth_triangle {<0, 0, 0>, <0, 2, 0.5>," + kCont + "<1, 0, 0>, <0, 0, 1>," + kCont +
                  "<0, 1, 0>, <0, 0, 1> }" +
                  "\n        triangle {<0, 0, 0>, <-1, 0, 0>, <0, 0, -1> }"
                  "\n    }"
                  "\n}");
}

int Count(const std::string& text, const std::string& what) {
    int n = 0;
    for (size_t at = text.find(what); at != std::string::npos; at = text.find(what, at + 1)) n++;
    return n;
}

TEST_F(PovTest, VertexToleranceJoinsNearbyVertices) {
    NewLayer("S");
    const double e = 0.0009765625;   // 2^-10: coordinates and differences stay exact
    AddTri({0, 0, 0}, {1, 0, 0}, {0, 1, 0}, Smooth_triangle);   // normal (0, 0, 1)
    AddTri({e, 0, 0}, {e, 0, 2}, {2 + e, 0, 0}, Smooth_triangle);   // normal (0, 4, 0)
    std::string exact = Action(Export());
    EXPECT_EQ(Count(exact, "<0, 2, 0.5>,"), 0) << exact;
    EXPECT_EQ(Count(exact, "<0, 4, 0>"), 3) << exact;
    g.writer.Vertex_Tolerance = 0.001;
    g.pov.Overwrite_Pov = 1;
    std::string joined = Action(Export());
    // The two corners within 0.001 of each other share the mean normal.
    EXPECT_EQ(Count(joined, "smooth_triangle {<0.000976562, 0, 0>, <0, 2, 0.5>,"), 1) << joined;
    EXPECT_EQ(Count(joined, "smooth_triangle {<0, 0, 0>, <0, 2, 0.5>,"), 1) << joined;
    EXPECT_EQ(Count(joined, "<0, 4, 0>"), 2) << joined;
}

// --- the spool ---

int g_spool_seen = 0;   // the generator found triangle.tmp in the current directory

void TwoTriangles(Object*) {
    g_spool_seen = FileExists("triangle.tmp") && g.output.Output_Mode == 1;
    Pov_SpoolTriangle({0, 0, 0}, {1, 0, 0}, {0, 1, 0});   // normal (0, 0, 1)
    Pov_SpoolTriangle({3, 3, 3}, {3, 3, 3}, {4, 4, 4});   // degenerate
    Pov_SpoolTriangle({1, 0, 0}, {0, 1, 0}, {0, 0, 1});   // normal (1, 1, 1)
}

class PovSpoolTest : public PovTest {
  protected:
    void SetUp() override {
        PovTest::SetUp();
        Pov_SetSurfaceGenerator(TwoTriangles);
        g_spool_seen = 0;
    }
    void TearDown() override {
        Pov_SetSurfaceGenerator(nullptr);
        PovTest::TearDown();
    }
};

TEST_F(PovSpoolTest, SpooledSurfaceWithSmoothNormalsAndSpoolRemoved) {
    NewLayer("X");
    Object* o = AddPoly(FORM_EXTRUSION, {{0, 0, 0}, {1, 0, 0}});
    o->flags = Smooth_triangle;
    strcpy(o->texture, "Jade");
    std::string text = Export();
    EXPECT_EQ(g_spool_seen, 1);
    EXPECT_FALSE(FileExists(run_ + "/triangle.tmp"));
    EXPECT_EQ(Action(text), "\n\nunion {  // Layer name: X\n    union { // Extrusion"
                            "\n        smooth_triangle {<0, 0, 0>, <0, 0, 1>," +
                                kCont + "<1, 0, 0>, <0.5, 0.5, 1>," + kCont + "<0, 1, 0>, <0.5, 0.5, 1> }" +
                                "\n        smooth_triangle {<1, 0, 0>, <0.5, 0.5, 1>," + kCont +
                                "<0, 1, 0>, <0.5, 0.5, 1>," + kCont + "<0, 0, 1>, <1, 1, 1> }" +
                                "\n        texture { Jade }\n    }\n}");
    EXPECT_EQ(messages_, "\nMaking <qmr.pov>\nWriting: Extrusion.._");
    EXPECT_EQ(g.writer.Spool_Count, 3);
}

TEST_F(PovSpoolTest, PlainTrianglesWithNoShadowAndFormComments) {
    NewLayer("X");
    Object* o = AddPoly(FORM_POLY_CUBE, {{0, 0, 0}, {1, 0, 0}});
    o->flags = No_shadow;
    AddPoly(FORM_POLYLINE, {{0, 0, 0}, {1, 0, 0}});   // a plain polyline writes nothing
    std::string text = Export();
    EXPECT_EQ(Action(text),
              "\n\nunion {  // Layer name: X"
              "\n    "
              "\n    union { // Poly_Cube"
              "\n        triangle {<0, 0, 0>, <1, 0, 0>, <0, 1, 0>  no_shadow }"
              "\n        triangle {<1, 0, 0>, <0, 1, 0>, <0, 0, 1>  no_shadow }"
              "\n    }"
              "\n}");
    EXPECT_EQ(messages_, "\nMaking <qmr.pov>\nWriting: Poly_Cube.._");
}

TEST_F(PovSpoolTest, SpoolThatCannotBeCreatedLeavesTheObjectOut) {
    ASSERT_EQ(mkdir((run_ + "/triangle.tmp").c_str(), 0755), 0);   // fopen of a directory fails
    NewLayer("X");
    AddPoly(FORM_REVOLUTION, {{0, 0, 0}, {1, 0, 0}});
    AddPrim(PRIM_SPHERE, 1);
    std::string text = Export();
    EXPECT_EQ(Action(text), "\n\nunion {  // Layer name: X\n    sphere { <0.0, 0.0, 0.0>, 1 }\n    \n}");
    EXPECT_EQ(messages_, "\nMaking <qmr.pov>\nError: Creating <triangle.tmp>...can't add poly to POV file!");
    rmdir((run_ + "/triangle.tmp").c_str());
}

// --- pipes, walls, patches ---

// Layer P: spheres at the joints and ends. Layer M: a mitred right angle,
// each cone going on past the joint by r * tan(45 deg) = 0.2. Layer S:
// splined, sampled at the length fractions i/size_m; evenly spaced points
// on a line give a straight curve, so the samples fall on x = 0, 1, 2, 3 and
// the radius grows by (0.4 - 0.1) / 3 per sample.
TEST_F(PovTest, PipesWithSpheresMitresAndSplines) {
    for (double mitre : {0, 1}) {
        NewLayer(mitre ? "M" : "P");
        Object* o = AddPoly(FORM_POLY_PIPE, {{0, 0, 0}, {0, 2, 0}, {2, 2, 0}}, [](PolylineData& p) {
            p.param1 = {0.1, 0.3, 0};
            p.param2 = {0, 3, 0};
        });
        ((PolylineData*)o->data)->param2.x = mitre;
    }
    NewLayer("S");
    AddPoly(FORM_POLY_PIPE, {{0, 0, 0}, {1, 0, 0}, {2, 0, 0}, {3, 0, 0}}, [](PolylineData& p) {
        p.poly_flags = POLY_BSPLINE;
        p.size_m = 3;
        p.param1 = {0.1, 0.4, 0};
        p.param2 = {0, 0, 0};
    });
    std::string text = Export();
    EXPECT_EQ(Action(text),
              "\n\nunion {  // Layer name: P"
              "\n    union { // Poly_Pipe"
              "\n        cone { <0, 0, 0>, 0.1, <0, 2, 0>, 0.2 }"
              "\n        cone { <0, 2, 0>, 0.2, <2, 2, 0>, 0.3 }"
              "\n        sphere { <0, 2, 0>, 0.2 }"
              "\n        sphere { <0, 0, 0>, 0.1 }"
              "\n        sphere { <2, 2, 0>, 0.3 }"
              "\n    }"
              "\n}"
              "\n\nunion {  // Layer name: M"
              "\n    union { // Poly_Pipe"
              "\n        cone { <0, 0, 0>, 0.1, <0, 2, 0>, 0.2 }"
              "\n        cone { <0, 2, 0>, 0.2, <2, 2, 0>, 0.3 }"
              "\n        intersection {"
              "\n            cone { <0, 0, 0>, 0.1, <0, 2.2, 0>, 0.2 }"
              "\n            cone { <-0.2, 2, 0>, 0.2, <2, 2, 0>, 0.3 }"
              "\n        }"
              "\n    }"
              "\n}"
              "\n\nunion {  // Layer name: S"
              "\n    union { // Poly_Pipe"
              "\n        cone { <0, 0, 0>, 0.1, <1, 0, 0>, 0.2 }"
              "\n        cone { <1, 0, 0>, 0.2, <2, 0, 0>, 0.3 }"
              "\n        cone { <2, 0, 0>, 0.3, <3, 0, 0>, 0.4 }"
              "\n        sphere { <1, 0, 0>, 0.2 }"
              "\n        sphere { <2, 0, 0>, 0.3 }"
              "\n    }"
              "\n}");
    EXPECT_EQ(messages_.rfind("\nMaking <qmr.pov>\nWriting: Poly_Pipe", 0), 0u) << messages_;
}

// Layer W: atan2(4, 3) = 53.1301 degrees; atan2(-4, 0) = -90, brought to
// 270. Layer S: a splined wall uses the sampled path, two boxes of length 1.5.
TEST_F(PovTest, WallSegmentsAreBoxes) {
    NewLayer("W");
    AddPoly(FORM_POLY_WALL, {{0, 0, 0}, {3, 0, 4}, {3, 0, 0}}, [](PolylineData& p) { p.param1 = {4, 0.5, 0}; });
    NewLayer("S");
    AddPoly(FORM_POLY_WALL, {{0, 0, 0}, {1, 0, 0}, {2, 0, 0}, {3, 0, 0}}, [](PolylineData& p) {
        p.poly_flags = POLY_BSPLINE;
        p.size_m = 2;
        p.param1 = {4, 0.5, 0};
    });
    std::string text = Export();
    EXPECT_EQ(Action(text),
              "\n\nunion {  // Layer name: W"
              "\n    union { // Poly_Wall"
              "\n        box { <-0.25, 0, -0.25>, <5.25, 4, 0.25>  rotate y*-53.1301  translate <0, 0, 0> }"
              "\n        box { <-0.25, 0, -0.25>, <4.25, 4, 0.25>  rotate y*-270  translate <3, 0, 4> }"
              "\n    }"
              "\n}"
              "\n\nunion {  // Layer name: S"
              "\n    union { // Poly_Wall"
              "\n        box { <-0.25, 0, -0.25>, <1.75, 4, 0.25>  rotate y*-0  translate <0, 0, 0> }"
              "\n        box { <-0.25, 0, -0.25>, <1.75, 4, 0.25>  rotate y*-0  translate <1.5, 0, 0> }"
              "\n    }"
              "\n}");
}

// A Bezier mesh of size_m x size_n cells whose grid point (r, c) is (c, r, 0).
// `missing` points are left off its end.
void AddBezierMesh(int size_m, int size_n, int flags, int missing = 0) {
    PolylineData m = Poly_Default();
    m.form = FORM_POLY_MESH;
    m.poly_flags = POLY_BSPLINE | flags;
    m.size_m = size_m;
    m.size_n = size_n;
    m.segments = 4;
    m.angle = 5.9;
    m.param1 = {0.01, 0, 0};
    std::vector<Point3> pts;
    for (int r = 0; r <= size_m; r++)
        for (int c = 0; c <= size_n; c++) pts.push_back({(double)c, (double)r, 0});
    m.points = pts.data();
    m.count = (int)pts.size() - missing;
    Poly_AddToScene(&m);
}

// One control row of four points (x0 .. x0 + 3, y, 0) as "%3.8f" writes it.
std::string Row(double y, double x0 = 0) {
    std::string s = "\n            ";
    char buf[80];
    for (int c = 0; c < 4; c++) {
        snprintf(buf, sizeof buf, "<%.8f, %.8f, 0.00000000>%s", x0 + c, y, c < 3 ? ", " : "");
        s += buf;
    }
    return s;
}

std::string Patch(double y0, double y1, double y2, double y3) {
    return "\n        bicubic_patch { type 1  flatness 0.01  u_steps 4  v_steps 5" + Row(y0) + "," + Row(y1) +
           "," + Row(y2) + "," + Row(y3);
}

// Layer B: one patch. Layer C (M Closed): the border rows of the one regular
// patch have a neighbour across the seam, so they move to the midpoints
// (y 0.5 and 2.5); the seam patch (rows 2, 3, 0, 1) then meets it in those rows.
TEST_F(PovTest, BezierMeshesAsBicubicPatches) {
    g.config.Optimize_PovOut = 0;
    NewLayer("B");
    AddBezierMesh(3, 3, 0);
    NewLayer("C");
    AddBezierMesh(3, 3, POLY_M_CLOSED);
    std::string text = Export();
    EXPECT_EQ(Action(text), "\n\nunion {  // Layer name: B\n    union {" + Patch(0, 1, 2, 3) + "\n        }\n    }\n}" +
                                "\n\nunion {  // Layer name: C\n    union {" + Patch(0.5, 1, 2, 2.5) +
                                "\n        }" + Patch(2.5, 3, 0, 0.5) + "\n        }\n    }\n}");
    EXPECT_EQ(messages_.rfind("\nMaking <qmr.pov>\nWriting: Poly_Mesh", 0), 0u) << messages_;
}

TEST_F(PovTest, NeighbouringPatchesMeetAtMidpoints) {
    NewLayer("B");
    AddBezierMesh(3, 5, 0);   // two patches side by side sharing columns 2 and 3
    std::string text = Export();
    // First patch: its right column becomes the midpoints of columns 2 and 3;
    // the second patch's left column is the same midpoints.
    EXPECT_NE(text.find("<0.00000000, 0.00000000, 0.00000000>, <1.00000000, 0.00000000, 0.00000000>, "
                        "<2.00000000, 0.00000000, 0.00000000>, <2.50000000, 0.00000000, 0.00000000>,"),
              std::string::npos);
    EXPECT_NE(text.find("<2.50000000, 0.00000000, 0.00000000>, <3.00000000, 0.00000000, 0.00000000>, "
                        "<4.00000000, 0.00000000, 0.00000000>, <5.00000000, 0.00000000, 0.00000000>,"),
              std::string::npos);
}

// Sizes must be odd for patches; an even one has no grid line for the last
// patch's fourth row, which is left out instead of read past the points. A
// mesh with fewer points than its sizes claim writes no patch at all.
TEST_F(PovTest, EvenMeshSizeWritesOnlyWholePatches) {
    NewLayer("B");
    AddBezierMesh(3, 3, 0, 4);
    AddBezierMesh(4, 3, 0);
    std::string text = Export();
    size_t first = text.find("bicubic_patch");
    ASSERT_NE(first, std::string::npos);
    EXPECT_EQ(text.find("bicubic_patch", first + 1), std::string::npos);
}

// --- bad input ---

TEST_F(PovTest, InvalidNumbersNeverReachTheFile) {
    NewLayer("N");
    AddPrim(PRIM_SPHERE, NAN);
    LightData l = Light_Default();
    l.position = {INFINITY, 0, 0};
    Add_Light(&l);
    AddTri({NAN, 0, 0}, {1, 0, 0}, {0, 1, 0}, Smooth_triangle);
    AddTri({0, 0, 0}, {1, 0, 0}, {0, 1, 0}, Smooth_triangle);
    std::string text = Export();
    EXPECT_EQ(text.find("nan"), std::string::npos);
    EXPECT_EQ(text.find("inf"), std::string::npos);
    EXPECT_NE(messages_.find("invalid"), std::string::npos) << messages_;
    EXPECT_NE(text.find("smooth_triangle {<0, 0, 0>, <0, 0, 1>,"), std::string::npos);
}

TEST_F(PovTest, ParseCheckCatchesABrokenScene) {
    WriteFile(scenes_ + "/broken.pov", "camera { location <0, 0, -5> look_at <0, 0, 0> }\nsphere { <0, 0, 0>, }\n");
    EXPECT_NE(PovrayParseErrors(scenes_ + "/broken.pov"), "");
}

// A bumpy 12 x 10 grid whose shared corners are off by up to 0.004.
void JitteredGrid(Object*) {
    auto at = [](int c, int r, int k) {
        double j = ((c * 7 + r * 13 + k * 5) % 9 - 4) * 0.001;
        return Point3{c + j, sin(c * 0.5) * cos(r * 0.3), r - j};
    };
    for (int r = 0; r < 10; r++)
        for (int c = 0; c < 12; c++) {
            Pov_SpoolTriangle(at(c, r, 0), at(c + 1, r, 1), at(c + 1, r + 1, 2));
            Pov_SpoolTriangle(at(c + 1, r + 1, 3), at(c, r + 1, 4), at(c, r, 5));
        }
}

// The three normal passes give the same text. In memory: the spool loaded,
// a cell index. Memory refused for the spool: the vertices sorted through
// temporary files, here with room for 28 records at a time, so the sort
// spills dozens of runs and merges them in several passes. Not even that
// memory: the plain pass, comparing every pair over the file.
TEST_F(PovTest, NormalPassesInMemorySortedOnDiskAndPlainWriteTheSameText) {
    Pov_SetSurfaceGenerator(JitteredGrid);
    g.pov.Overwrite_Pov = 1;
    NewLayer("G");
    AddPoly(FORM_EXTRUSION, {{0, 0, 0}, {1, 0, 0}})->flags = Smooth_triangle;
    std::string first;
    for (double tol : {0.0, 0.003, 0.01}) {
        g.writer.Vertex_Tolerance = tol;
        std::string indexed = Export();
        std::string told = messages_;
        EXPECT_EQ(g.writer.Normal_Pass, NORMALS_INDEXED);
        long live = g.mem.live_blocks;
        g.writer.Sort_Budget = 2048;
        Mem_FailAfter(1);   // the spool's buffer fails
        std::string sorted = Export();
        EXPECT_EQ(g.writer.Normal_Pass, NORMALS_SORTED);
        EXPECT_EQ(messages_, told);   // the lack of memory is not reported
        EXPECT_EQ(g.mem.live_blocks, live);
        g.writer.Sort_Budget = 0;
        Mem_FailAfter(1);
        std::string plain = Export();
        EXPECT_EQ(g.writer.Normal_Pass, NORMALS_PLAIN);
        Mem_FailAfter(0);
        EXPECT_EQ(Count(indexed, "smooth_triangle"), 240);
        EXPECT_EQ(sorted, indexed) << "tolerance " << tol;
        EXPECT_EQ(plain, indexed) << "tolerance " << tol;
        if (first.empty()) first = indexed;
        else EXPECT_NE(indexed, first) << "the tolerance joined no corners at " << tol;
    }
    Pov_SetSurfaceGenerator(nullptr);
}

// Surfaces reach the scene file through their real generator and the facet
// sink: an extrusion of one segment is one quad, written as two triangles
// split (c0, c1, c2), (c2, c3, c0).
TEST_F(PovTest, ExtrusionThroughItsGeneratorBecomesTwoTriangles) {
    NewLayer("S");
    AddPoly(FORM_EXTRUSION, {{0, 0, 0}, {1, 0, 0}}, [](PolylineData& p) {
        p.param1 = {0, 0, 0};
        p.param2 = {0, 0, 1};
    });
    std::string text = Export();
    EXPECT_EQ(Action(text),
              "\n\nunion {  // Layer name: S"
              "\n    union { // Extrusion"
              "\n        triangle {<0, 0, 0>, <1, 0, 0>, <1, 0, 1> }"
              "\n        triangle {<1, 0, 1>, <0, 0, 1>, <0, 0, 0> }"
              "\n    }"
              "\n}");
    EXPECT_FALSE(FileExists(run_ + "/triangle.tmp"));
}

}  // namespace
