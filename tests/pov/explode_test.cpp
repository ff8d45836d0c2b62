// EXPLODE against the exported files: the scene file written after the
// explosion holds the same triangles (as a set, within the writer's six
// significant digits) as the scene before it - taken from the scene file
// for the kinds written as triangles, and from the RAW export for those
// written as the ray tracer's own shapes (primitives, pipes, walls).
#include <cstdlib>
#include <sstream>

#include "pov_test_support.h"

namespace {

struct Tri {
    Point3 v[3];
};

// The triangles of a scene file: "triangle {<a>, <b>, <c>" and
// "smooth_triangle {<a>, <na>, <b>, <nb>, <c>, <nc>".
std::vector<Tri> PovTriangles(const std::string& text) {
    std::vector<Tri> out;
    for (size_t at = text.find("triangle {"); at != std::string::npos; at = text.find("triangle {", at + 1)) {
        const bool smooth = at >= 7 && text.compare(at - 7, 7, "smooth_") == 0;
        std::vector<Point3> vecs;
        size_t p = at;
        while ((int)vecs.size() < (smooth ? 6 : 3)) {
            p = text.find('<', p);
            Point3 v;
            if (p == std::string::npos || sscanf(text.c_str() + p, "<%lf, %lf, %lf>", &v.x, &v.y, &v.z) != 3) break;
            vecs.push_back(v);
            p++;
        }
        if (smooth && vecs.size() == 6) out.push_back({{vecs[0], vecs[2], vecs[4]}});
        if (!smooth && vecs.size() == 3) out.push_back({{vecs[0], vecs[1], vecs[2]}});
    }
    return out;
}

// The triangles of a RAW file, degenerate ones left out (as the scene file does).
std::vector<Tri> RawTriangles(const std::string& text) {
    std::vector<Tri> out;
    std::istringstream in(text);
    std::string line;
    while (std::getline(in, line)) {
        Tri t;
        if (sscanf(line.c_str(), "%lf %lf %lf %lf %lf %lf %lf %lf %lf", &t.v[0].x, &t.v[0].y, &t.v[0].z, &t.v[1].x,
                   &t.v[1].y, &t.v[1].z, &t.v[2].x, &t.v[2].y, &t.v[2].z) == 9 &&
            !Triangle_IsDegenerate(t.v[0], t.v[1], t.v[2]))
            out.push_back(t);
    }
    return out;
}

bool Near(Point3 a, Point3 b, double tol) {
    return std::fabs(a.x - b.x) <= tol && std::fabs(a.y - b.y) <= tol && std::fabs(a.z - b.z) <= tol;
}

// Same triangles (corners in any order), each matched once.
::testing::AssertionResult SameTriangles(const std::vector<Tri>& a, const std::vector<Tri>& b) {
    if (a.size() != b.size())
        return ::testing::AssertionFailure() << a.size() << " triangles against " << b.size();
    const double tol = 2e-4;
    std::vector<bool> used(b.size(), false);
    for (size_t i = 0; i < a.size(); i++) {
        bool found = false;
        for (size_t j = 0; j < b.size() && !found; j++) {
            if (used[j]) continue;
            int matched = 0;
            for (const Point3& p : a[i].v)
                for (const Point3& q : b[j].v)
                    if (Near(p, q, tol)) {
                        matched++;
                        break;
                    }
            if (matched == 3) used[j] = found = true;
        }
        if (!found)
            return ::testing::AssertionFailure() << "triangle " << i << " <" << a[i].v[0].x << "," << a[i].v[0].y << ","
                                                 << a[i].v[0].z << "> has no match";
    }
    return ::testing::AssertionSuccess();
}

class ExplodeTest : public PovTest {
  protected:
    void SetUp() override {
        PovTest::SetUp();
        ASSERT_NE(Layer_NewFirst(), nullptr);
    }
    Object* Poly(int form, std::vector<Point3> pts, Point3 p1 = {}, Point3 p2 = {}, int m = 16, int n = 16) {
        PolylineData p = Poly_Default();
        p.form = form;
        p.points = pts.data();
        p.count = (int)pts.size();
        p.param1 = p1;
        p.param2 = p2;
        p.size_m = m;
        p.size_n = n;
        p.angle = 270;
        return Poly_AddToScene(&p);
    }
    void Prim(int type, Point3 at, double p1, double p2 = 0, double p3 = 0) {
        PrimitiveData p = Primitive_Default();
        p.prim_type = type;
        p.translate = at;
        p.rotate = {10, 20, 30};   // the primitive's transform goes into its pieces
        p.p1 = p1;
        p.p2 = p2;
        p.p3 = p3;
        p.prim_aux = 6;
        p.size = {1, 2, 3};
        Add_Primitive(&p);
    }
    std::string WriteScene(const char* name) {
        const std::string path = dir_.file(name);
        testing::internal::CaptureStdout();
        EXPECT_EQ(Pov_WriteScene(path.c_str()), 1);
        testing::internal::GetCapturedStdout();
        EXPECT_EQ(PovrayParseErrors(path), "");
        return ReadFile(path);
    }
};

// Layer `flat` holds what the scene file writes as triangles, layer
// `shapes` what it writes as the ray tracer's shapes (primitives, a pipe, a
// wall). Before: the scene file of `flat` alone and the RAW export of
// `shapes` alone. After exploding both: the scene file of everything.
TEST_F(ExplodeTest, TheSceneFileKeepsItsTriangles) {
    Layer* flat = g.scene.Current_Layer;
    Poly(FORM_EXTRUSION, {{0, 0, 0}, {1, 0.5, 0}, {2, 0, 0.5}}, {0, 0, 0}, {0, 2, 1});
    Poly(FORM_REVOLUTION, {{1, 0, 0}, {1.5, 1, 0}, {1, 2, 0}}, {0, 0, 0}, {0, 1, 0}, 16, 8);
    Poly(FORM_CONE_SWEEP, {{1, 0, 0}, {0, 0, 1}, {-1, 0, 0.5}}, {0, 3, 0});
    Poly(FORM_POLY_MESH, {{0, 0, 0}, {1, 0.2, 0}, {2, 0, 0}, {0, 0, 1}, {1, 0.5, 1}, {2, 0, 1}}, {}, {}, 1, 2);
    Poly(FORM_POLY_PYRAMID, {{0, 0, 0}, {2, 0, 0}, {2, 0, 2}, {0, 0, 2}, {1, 3, 1}, {1, 3, 1}, {1, 3, 1}, {1, 3, 1}})
        ->flags = Smooth_triangle;   // written as smooth triangles
    FaceData f{{{5, 0, 0}, {6, 0, 0}, {6, 1, 1}, {5, 1, 1.5}}};
    Add_Face(&f)->flags = No_shadow;   // its piece keeps that
    TriangleData t{{{7, 0, 0}, {8, 0.5, 0}, {7, 1, 1}}};
    Add_Triangle(&t);
    Layer* shapes = Layer_Append();
    Prim(PRIM_SPHERE, {0, 0, 0}, 1.5);
    Prim(PRIM_CONE, {3, 0, 0}, 1, 0.5, 2);
    Prim(PRIM_TORUS, {6, 0, 0}, 2, 0.5);
    Prim(PRIM_DISC, {9, 0, 0}, 0.3, 1.5);
    Prim(PRIM_PLANE, {12, 0, 0}, 0);
    Prim(PRIM_BOX, {15, 0, 0}, 0);
    Prim(PRIM_HEIGHT_FIELD, {18, 0, 0}, 0.2);
    Poly(FORM_POLY_PIPE, {{0, 5, 0}, {2, 6, 0}, {3, 6, 2}}, {0.2, 0.3, 0}, {}, 16, 6);
    Poly(FORM_POLY_WALL, {{0, 9, 0}, {2, 9, 1}, {4, 9, 0}}, {1.5, 0.2, 0}, {}, 16, 8);

    shapes->on = 0;
    std::vector<Tri> before = PovTriangles(WriteScene("before.pov"));
    shapes->on = 1;
    flat->on = 0;
    strcpy(g.run.workFileName, "shapes");
    testing::internal::CaptureStdout();
    ASSERT_EQ(Raw_Export(), 1);
    testing::internal::GetCapturedStdout();
    flat->on = 1;
    const std::vector<Tri> raw = RawTriangles(ReadFile(work_ + "/shapes.raw"));
    ASSERT_GT(before.size(), 50u);
    ASSERT_GT(raw.size(), 100u);
    before.insert(before.end(), raw.begin(), raw.end());

    for (Layer* l : {flat, shapes})
        for (Object* o = l->first_object; o; o = o->next) Object_SetSelected(o, 1, l);
    g.scene.Current_Layer = flat;
    g.xform.explode_erase = 1;
    Xform_Explode();
    EXPECT_EQ(shapes->first_object, nullptr);
    int shadowless = 0;
    for (const Object* o = flat->first_object; o; o = o->next) {   // faces, the triangle and the primitives' meshes
        EXPECT_TRUE(o->kind == KIND_3DFACE || o->kind == KIND_TRIANGLE ||
                    (o->kind == KIND_POLYLINE && ((const PolylineData*)o->data)->form == FORM_POLY_MESH));
        shadowless += (o->flags & No_shadow) != 0;
    }
    EXPECT_EQ(shadowless, 1);
    EXPECT_TRUE(SameTriangles(before, PovTriangles(WriteScene("after.pov"))));
}

}  // namespace
