// Every transform mode on every object kind (a table: kind x mode), with
// invariants that hold for all (a move and its way back restore the
// record, a copy is the moved source, an array's last copy is the source
// transformed n times ...), records worked out by hand for a few, the
// primitives' parameter rules checked against their own facets, and the
// drag preview against the drawing of the result.
#include <algorithm>
#include <functional>
#include <string>
#include <vector>

#include "headless_session.h"
#include "model/recorder.h"
#include "model/xform.h"

namespace {

const double kPi = 3.141592653589793;

// --- the kinds ---

Object* Poly(int form, std::vector<Point3> pts, Point3 p1 = {0, 0, 0}, Point3 p2 = {0, 0, 0}, int m = 16, int n = 16,
             double angle = 0) {
    PolylineData p = Poly_Default();
    p.form = form;
    p.points = pts.data();
    p.count = (int)pts.size();
    p.param1 = p1;
    p.param2 = p2;
    p.size_m = m;
    p.size_n = n;
    p.angle = angle;
    return Poly_AddToScene(&p);
}

std::vector<Point3> Box8(Point3 o, Point3 s) {
    return {{o.x, o.y, o.z},           {o.x + s.x, o.y, o.z},           {o.x + s.x, o.y, o.z + s.z},
            {o.x, o.y, o.z + s.z},     {o.x, o.y + s.y, o.z},           {o.x + s.x, o.y + s.y, o.z},
            {o.x + s.x, o.y + s.y, o.z + s.z}, {o.x, o.y + s.y, o.z + s.z}};
}

Object* Prim(int type, Point3 at, double p1, double p2 = 0, double p3 = 0) {
    PrimitiveData p = Primitive_Default();
    p.prim_type = type;
    p.translate = at;
    p.p1 = p1;
    p.p2 = p2;
    p.p3 = p3;
    p.prim_aux = 6;
    if (type == PRIM_BOX || type == PRIM_HEIGHT_FIELD) p.size = {1, 2, 3};
    if (type == PRIM_PLANE) p.scale = {2, 2, 2};
    if (type == PRIM_HEIGHT_FIELD) p.scale = {2, 1, 3};
    return Add_Primitive(&p);
}

Object* Light(int flags) {
    LightData l = Light_Default();
    l.light_flags = (u8)flags;
    l.position = {3, 4, -2};
    l.point_at = {1, 0, 1};
    l.area_width = 2;
    return Add_Light(&l);
}

struct Kind {
    const char* name;
    std::function<Object*()> make;
};

const std::vector<Kind>& Kinds() {
    static const std::vector<Kind> kinds = {
        {"polyline", [] { return Poly(FORM_POLYLINE, {{1, 0.5, 2}, {3, 1, 2.5}, {2, 0, 4}}); }},
        {"extrusion", [] { return Poly(FORM_EXTRUSION, {{1, 0, 1}, {2, 0, 1.5}, {3, 0, 1}}, {0, 0, 0}, {0, 2, 0.5}); }},
        {"revolution",
         [] { return Poly(FORM_REVOLUTION, {{1, 0, 0}, {1.5, 1, 0}, {1, 2, 0}}, {0.5, 0, 0.2}, {0.5, 1, 0.4}, 16, 6, 90); }},
        {"cone sweep", [] { return Poly(FORM_CONE_SWEEP, {{1, 0, 0}, {0, 0, 1}, {-1, 0, 0.5}}, {0, 3, 0}); }},
        {"mesh", [] { return Poly(FORM_POLY_MESH, {{0, 0, 0}, {1, 0.2, 0}, {2, 0, 0}, {0, 0, 1}, {1, 0.5, 1}, {2, 0, 1}},
                                   {0, 0, 0}, {0, 0, 0}, 1, 2); }},
        {"pipe", [] { return Poly(FORM_POLY_PIPE, {{0, 0, 0}, {2, 1, 0}, {3, 1, 2}}, {0.2, 0.3, 0}, {0, 0, 0}, 16, 6); }},
        {"wall", [] { return Poly(FORM_POLY_WALL, {{0, 0, 0}, {2, 0, 1}}, {1.5, 0.2, 0}, {0, 0, 0}, 16, 8); }},
        {"cube", [] { return Poly(FORM_POLY_CUBE, Box8({1, 0, 1}, {2, 1, 1.5})); }},
        {"wedge", [] {
             std::vector<Point3> w = {{0, 0, 0}, {2, 0, 0}, {0, 1, 0}, {0, 1, 0}, {0, 0, 3}, {2, 0, 3}, {0, 1, 3}, {0, 1, 3}};
             return Poly(FORM_POLY_WEDGE, w);
         }},
        {"pyramid", [] {
             std::vector<Point3> p = {{0, 0, 0}, {2, 0, 0}, {2, 0, 2}, {0, 0, 2}, {1, 3, 1}, {1, 3, 1}, {1, 3, 1}, {1, 3, 1}};
             return Poly(FORM_POLY_PYRAMID, p);
         }},
        {"triangle", [] {
             TriangleData t{{{1, 0, 0}, {2, 0.5, 0}, {1, 1, 1}}};
             return Add_Triangle(&t);
         }},
        {"face", [] {
             FaceData f{{{1, 0, 0}, {2, 0, 0}, {2, 1, 1}, {1, 1, 1.5}}};
             return Add_Face(&f);
         }},
        {"sphere", [] { return Prim(PRIM_SPHERE, {2, 1, 3}, 1.2); }},
        {"cone", [] { return Prim(PRIM_CONE, {1, 0, 2}, 1, 0.5, 2); }},
        {"torus", [] { return Prim(PRIM_TORUS, {2, 0.5, 1}, 2, 0.5); }},
        {"disc", [] { return Prim(PRIM_DISC, {1, 1, 1}, 0.3, 1.5); }},
        {"plane", [] { return Prim(PRIM_PLANE, {0.5, 0, 2}, 0); }},
        {"box", [] { return Prim(PRIM_BOX, {1, 0, 2}, 0); }},
        {"height field", [] { return Prim(PRIM_HEIGHT_FIELD, {-1, 0, 2}, 0.2); }},
        {"point light", [] { return Light(0); }},
        {"spot light", [] { return Light(LIGHT_SPOT); }},
        {"area light", [] { return Light(LIGHT_AREA); }},
    };
    return kinds;
}

// --- records as numbers ---

void Push(std::vector<double>& v, Point3 p) { v.insert(v.end(), {p.x, p.y, p.z}); }
// Angles compare by where they point: 360 is 0, -90 is 270.
void PushAngles(std::vector<double>& v, Point3 r) {
    for (double a : {r.x, r.y, r.z}) v.insert(v.end(), {std::cos(a * kPi / 180), std::sin(a * kPi / 180)});
}

std::vector<double> Numbers(const Object* o) {
    std::vector<double> v;
    switch (o->kind) {
        case KIND_POLYLINE: {
            const PolylineData& p = *(const PolylineData*)o->data;
            for (int i = 0; i < p.count; i++) Push(v, p.points[i]);
            Push(v, p.param1);
            Push(v, p.param2);
            v.insert(v.end(), {p.angle, (double)p.form, (double)p.poly_flags, (double)p.segments, (double)p.size_m,
                               (double)p.size_n, (double)p.count});
            break;
        }
        case KIND_TRIANGLE:
            for (const Point3& c : ((const TriangleData*)o->data)->corner) Push(v, c);
            break;
        case KIND_3DFACE:
            for (const Point3& c : ((const FaceData*)o->data)->corner) Push(v, c);
            break;
        case KIND_PRIMITIVE: {
            const PrimitiveData& p = *(const PrimitiveData*)o->data;
            Push(v, p.translate);
            Push(v, p.size);
            Push(v, p.scale);
            PushAngles(v, p.rotate);
            v.insert(v.end(), {(double)p.prim_aux, (double)p.hf_type, (double)p.prim_type, p.p1, p.p2, p.p3,
                               (double)p.prim_flags});
            break;
        }
        case KIND_LIGHT: {
            const LightData& l = *(const LightData*)o->data;
            Push(v, l.position);
            Push(v, l.color);
            Push(v, l.point_at);
            v.insert(v.end(), {(double)l.light_flags, (double)l.light_segments, (double)l.area_n1, (double)l.area_n2,
                               (double)l.adaptive, l.area_height, l.area_width, l.radius, l.falloff,
                               (double)l.tightness});
            break;
        }
    }
    return v;
}

bool Same(const std::vector<double>& a, const std::vector<double>& b, double tol = 1e-9) {
    if (a.size() != b.size()) return false;
    for (size_t i = 0; i < a.size(); i++)
        if (!(std::fabs(a[i] - b[i]) <= tol * (1 + std::fabs(a[i])))) return false;
    return true;
}

// The points of a record that follow the point arithmetic.
std::vector<Point3> Points(const Object* o) {
    std::vector<Point3> v;
    switch (o->kind) {
        case KIND_POLYLINE: {
            const PolylineData& p = *(const PolylineData*)o->data;
            v.assign(p.points, p.points + p.count);
            if (p.form >= FORM_EXTRUSION && p.form <= FORM_CONE_SWEEP) v.insert(v.end(), {p.param1, p.param2});
            break;
        }
        case KIND_TRIANGLE: v.assign(((const TriangleData*)o->data)->corner, ((const TriangleData*)o->data)->corner + 3); break;
        case KIND_3DFACE: v.assign(((const FaceData*)o->data)->corner, ((const FaceData*)o->data)->corner + 4); break;
        case KIND_PRIMITIVE: v.push_back(((const PrimitiveData*)o->data)->translate); break;
        case KIND_LIGHT: v.insert(v.end(), {((const LightData*)o->data)->position, ((const LightData*)o->data)->point_at}); break;
    }
    return v;
}

class XformModesTest : public HeadlessTest {
  protected:
    void SetUp() override {
        HeadlessTest::SetUp();
        ASSERT_NE(Layer_NewFirst(), nullptr);
    }

  public:   // the mode table's checks use these
    void Fresh() {
        Scene_Clear();
        ASSERT_NE(Layer_NewFirst(), nullptr);
        g.xform = XformState{};
    }
    Layer* L() { return g.scene.Current_Layer; }
    void Run(Object* o, Point3 base, Point3 second, int mode) {
        Object_SetSelected(o, 1, L());
        Xform_Run(base, second, mode);
    }
    // The second point at `angle` radians from base in the view plane.
    static Point3 At(Point3 base, double angle, double r = 1) {
        const Viewport& v = g.view.Active_Viewport;
        return Vec_Add(base, Vec_Add(Vec_Scale(v.axis_h, r * std::cos(angle)), Vec_Scale(v.axis_v, r * std::sin(angle))));
    }
    // The newest objects of the layer down to (not including) `stop`, newest first.
    std::vector<Object*> NewerThan(const Object* stop) {
        std::vector<Object*> out;
        for (Object* o = L()->first_object; o && o != stop; o = o->next) out.push_back(o);
        return out;
    }
    // A fresh object of the kind, changed by mode from base to second.
    std::vector<double> Transformed(const Kind& k, Point3 base, Point3 second, int mode) {
        Object* o = k.make();
        Run(o, base, second, mode);
        return Numbers(o);
    }
};

const Point3 kBase{0.5, -1, 0.25};
const Point3 kDelta{1.5, -0.5, 2};

// Each mode with the invariant it must keep, tried on every kind.
TEST_F(XformModesTest, EveryModeOnEveryKind) {
    using Check = std::function<void(XformModesTest&, const Kind&)>;
    struct Mode {
        const char* name;
        Check check;
    };
    const std::vector<Mode> modes = {
        {"move and back",
         [](XformModesTest& t, const Kind& k) {
             Object* o = k.make();
             const auto before = Numbers(o);
             t.Run(o, kBase, Vec_Add(kBase, kDelta), XFORM_MOVE);
             EXPECT_FALSE(Same(before, Numbers(o)));
             t.Run(o, Vec_Add(kBase, kDelta), kBase, XFORM_MOVE);
             EXPECT_TRUE(Same(before, Numbers(o)));
         }},
        {"rotations and back",
         [](XformModesTest& t, const Kind& k) {
             for (int mode : {XFORM_ROTATE_H, XFORM_ROTATE_V, XFORM_ROTATE}) {
                 Object* o = k.make();
                 const auto before = Numbers(o);
                 t.Run(o, kBase, At(kBase, 0.7), mode);
                 EXPECT_FALSE(Same(before, Numbers(o))) << mode;
                 t.Run(o, kBase, At(kBase, -0.7), mode);
                 EXPECT_TRUE(Same(before, Numbers(o))) << mode;
             }
         }},
        {"mirror twice",
         [](XformModesTest& t, const Kind& k) {
             Object* o = k.make();
             const auto before = Numbers(o);
             t.Run(o, kBase, At(kBase, 0.4), XFORM_MIRROR_MOVE);
             EXPECT_FALSE(Same(before, Numbers(o)));
             t.Run(o, kBase, At(kBase, 0.4), XFORM_MIRROR_MOVE);
             EXPECT_TRUE(Same(before, Numbers(o)));
         }},
        {"scale and back",
         [](XformModesTest& t, const Kind& k) {
             for (int off : {0, (int)SCALE_OFF_Y}) {
                 g.xform.scale_off = off;
                 Object* o = k.make();
                 const auto before = Numbers(o);
                 t.Run(o, kBase, Vec_Add(kBase, {0, 2.5, 0}), XFORM_SCALE);
                 EXPECT_FALSE(Same(before, Numbers(o))) << off;
                 t.Run(o, kBase, Vec_Add(kBase, {0, 0, 0.4}), XFORM_SCALE);
                 EXPECT_TRUE(Same(before, Numbers(o))) << off;
             }
         }},
        {"copy is the moved source",
         [](XformModesTest& t, const Kind& k) {
             Object* o = k.make();
             const auto before = Numbers(o);
             t.Run(o, kBase, Vec_Add(kBase, kDelta), XFORM_COPY);
             std::vector<Object*> made = t.NewerThan(o);
             ASSERT_EQ(made.size(), 1u);
             EXPECT_TRUE(Same(before, Numbers(o)));
             EXPECT_TRUE(Same(t.Transformed(k, kBase, Vec_Add(kBase, kDelta), XFORM_MOVE), Numbers(made[0])));
         }},
        {"mirrored copy is the mirrored source",
         [](XformModesTest& t, const Kind& k) {
             Object* o = k.make();
             const auto before = Numbers(o);
             t.Run(o, kBase, At(kBase, 2.0), XFORM_MIRROR_COPY);
             std::vector<Object*> made = t.NewerThan(o);
             ASSERT_EQ(made.size(), 1u);
             EXPECT_TRUE(Same(before, Numbers(o)));
             EXPECT_TRUE(Same(t.Transformed(k, kBase, At(kBase, 2.0), XFORM_MIRROR_MOVE), Numbers(made[0])));
         }},
        {"arrays: the last copy is the source transformed n times",
         [](XformModesTest& t, const Kind& k) {
             struct Case {
                 int type;
                 Point3 second;
                 int mode;            // the single transform ...
                 Point3 once_second;  // ... that gives the last copy
             };
             const Case cases[] = {
                 {ARRAY_RECT, Vec_Add(kBase, kDelta), XFORM_MOVE, Vec_Add(kBase, Vec_Scale(kDelta, 3))},
                 {ARRAY_POLAR, kBase, XFORM_ROTATE, At(kBase, 1.5 * kPi)},   // 3 of 4 shares of 360
                 {ARRAY_SCALE, Vec_Add(kBase, {0, 0, 1.5}), XFORM_SCALE, Vec_Add(kBase, {3.375, 0, 0})},
             };
             for (const Case& c : cases) {
                 Object* o = k.make();
                 const auto before = Numbers(o);
                 g.xform.array_type = c.type;
                 g.xform.array_count = 3;
                 g.xform.array_angle = 360;
                 t.Run(o, kBase, c.second, XFORM_ARRAY);
                 std::vector<Object*> made = t.NewerThan(o);
                 ASSERT_EQ(made.size(), 3u) << c.type;
                 EXPECT_TRUE(Same(before, Numbers(o))) << c.type;
                 EXPECT_TRUE(Same(t.Transformed(k, kBase, c.once_second, c.mode), Numbers(made[0]), 1e-8)) << c.type;
                 for (Object* m : made) EXPECT_EQ(m->selected, 0);
                 Scene_Clear();
                 Layer_NewFirst();
             }
             // Along an open path of length 4 with 2 copies: 2 and 4 along it.
             std::vector<Point3> path_pts = {{0, 0, 0}, {3, 0, 0}, {3, 0, 1}};
             PolylineData path = Poly_Default();
             path.points = path_pts.data();
             path.count = 3;
             Object* o = k.make();
             g.xform.array_type = ARRAY_PATH;
             g.xform.array_count = 2;
             g.xform.array_path = &path;
             t.Run(o, kBase, kBase, XFORM_ARRAY);
             std::vector<Object*> made = t.NewerThan(o);
             ASSERT_EQ(made.size(), 2u);
             EXPECT_TRUE(Same(t.Transformed(k, kBase, Vec_Add(kBase, {3, 0, 1}), XFORM_MOVE), Numbers(made[0])));
             EXPECT_TRUE(Same(t.Transformed(k, kBase, Vec_Add(kBase, {2, 0, 0}), XFORM_MOVE), Numbers(made[1])));
         }},
        {"gravity pulls each point straight towards the attractor",
         [](XformModesTest& t, const Kind& k) {
             Object* o = k.make();
             const Point3 G{-5, 2, -4};
             g.xform.Gravity = 0.5;
             g.xform.Power = 1;
             const std::vector<Point3> before = Points(o);
             t.Run(o, G, G, XFORM_GRAVITY);
             const std::vector<Point3> after = Points(o);
             ASSERT_EQ(before.size(), after.size());
             for (size_t i = 0; i < before.size(); i++) {
                 const double r = Vec_Length(Vec_Sub(G, before[i]));
                 EXPECT_NEAR(Vec_Length(Vec_Sub(G, after[i])), r - 0.5 / r, 1e-9) << i;
                 EXPECT_NEAR(Vec_Length(Vec_Cross(Vec_Sub(after[i], before[i]), Vec_Sub(G, before[i]))), 0, 1e-9);
             }
         }},
        {"texture and flags",
         [](XformModesTest& t, const Kind& k) {
             Object* o = k.make();
             const auto before = Numbers(o);
             strcpy(g.xform.assign_texture, "Jade");
             t.Run(o, kBase, kBase, XFORM_TEXTURE);
             EXPECT_STREQ(o->texture, o->kind == KIND_LIGHT ? "" : "Jade");
             g.xform.assign_no_shadow = 1;
             t.Run(o, kBase, kBase, XFORM_NO_SHADOW);
             g.xform.assign_smooth = 1;
             t.Run(o, kBase, kBase, XFORM_SMOOTH);
             EXPECT_EQ(o->flags, No_shadow | Smooth_triangle);
             g.xform.assign_no_shadow = 0;
             t.Run(o, kBase, kBase, XFORM_NO_SHADOW);
             EXPECT_EQ(o->flags, Smooth_triangle);
             EXPECT_TRUE(Same(before, Numbers(o)));
         }},
        {"change of layer",
         [](XformModesTest& t, const Kind& k) {
             Layer* from = t.L();
             Object* o = k.make();
             const int kind = o->kind;
             strcpy(o->texture, "Stone");
             o->flags = No_shadow;
             const auto before = Numbers(o);
             Object_SetSelected(o, 1, from);
             Layer* to = Layer_Append();
             g.aids.Auto_Deselect = 0;
             Xform_Run(kBase, kBase, XFORM_LAYER);
             g.aids.Auto_Deselect = 1;
             EXPECT_EQ(from->first_object, nullptr);
             ASSERT_NE(to->first_object, nullptr);
             const Object* moved = to->first_object;
             EXPECT_EQ(moved->kind, kind);
             EXPECT_TRUE(Same(before, Numbers(moved)));
             EXPECT_STREQ(moved->texture, "Stone");
             EXPECT_EQ(moved->flags, No_shadow);
             EXPECT_EQ(moved->selected, 1);
             EXPECT_EQ(g.scene.Selected_Count, 1);
         }},
        {"erase",
         [](XformModesTest& t, const Kind& k) {
             const long blocks = g.mem.live_blocks;
             Object* o = k.make();
             t.Run(o, kBase, kBase, XFORM_ERASE);
             EXPECT_EQ(t.L()->first_object, nullptr);
             EXPECT_EQ(g.mem.live_blocks, blocks);
             EXPECT_EQ(g.scene.Selected_Count, 0);
         }},
    };
    for (const Kind& k : Kinds())
        for (const Mode& m : modes) {
            SCOPED_TRACE(std::string(k.name) + ": " + m.name);
            Fresh();
            m.check(*this, k);
        }
}

// Records worked out by hand in a TOP view (right +x, up +z, towards the
// viewer +y) and a FRONT view (right +x, up +y, towards the viewer -z).
TEST_F(XformModesTest, RecordsByHand) {
    // A sphere at (3, 0, 1) turned 90 degrees about (1, 0, 1): it moves to
    // (1, 0, 3), and its rotate component along +y becomes 0 + 360 - 90.
    Object* s = Prim(PRIM_SPHERE, {3, 0, 1}, 1);
    Run(s, {1, 0, 1}, {1, 0, 2}, XFORM_ROTATE);
    const PrimitiveData* p = (const PrimitiveData*)s->data;
    EXPECT_NEAR(p->translate.x, 1, 1e-12);
    EXPECT_NEAR(p->translate.z, 3, 1e-12);
    EXPECT_NEAR(p->rotate.y, 270, 1e-6);
    EXPECT_EQ(p->rotate.x, 0);
    EXPECT_EQ(p->rotate.z, 0);

    // A box mirrored in the line x = 5 (up the screen): corner (0,0,0)
    // goes to (10,0,0); the box is flipped along z and turned 180 about y,
    // which together flip it along x.
    Object* b = Prim(PRIM_BOX, {0, 0, 0}, 0);
    g.xform.mirror_erase = 1;
    Run(b, {5, 0, 0}, {5, 0, 7}, XFORM_MIRROR);
    p = (const PrimitiveData*)b->data;
    EXPECT_NEAR(p->translate.x, 10, 1e-12);
    EXPECT_NEAR(p->scale.z, -1, 1e-12);
    EXPECT_NEAR(p->scale.x, 1, 1e-12);
    EXPECT_NEAR(p->rotate.y, 180, 1e-6);

    // Scaling with Y left out: x and z of the primitive's scale double.
    g.xform.scale_off = SCALE_OFF_Y;
    Object* c = Prim(PRIM_CONE, {1, 1, 1}, 1, 1, 2);
    Run(c, {0, 0, 0}, {0, 0, 2}, XFORM_SCALE);
    p = (const PrimitiveData*)c->data;
    EXPECT_NEAR(p->translate.x, 2, 1e-12);
    EXPECT_NEAR(p->translate.y, 1, 1e-12);
    EXPECT_NEAR(p->translate.z, 2, 1e-12);
    EXPECT_NEAR(p->scale.x, 2, 1e-12);
    EXPECT_NEAR(p->scale.y, 1, 1e-12);
    EXPECT_NEAR(p->scale.z, 2, 1e-12);
    g.xform.scale_off = 0;

    // A spot light scaled by 2 about the origin: both points double, the
    // cone angle stays.
    Object* l = Light(LIGHT_SPOT);
    Run(l, {0, 0, 0}, {2, 0, 0}, XFORM_SCALE);
    const LightData* ld = (const LightData*)l->data;
    EXPECT_NEAR(ld->position.y, 8, 1e-12);
    EXPECT_NEAR(ld->point_at.z, 2, 1e-12);
    EXPECT_EQ(ld->radius, 35);

    // A revolution mirrored: the axis ends change places.
    Object* r = Poly(FORM_REVOLUTION, {{1, 0, 0}, {1, 1, 0}}, {0, 0, 0}, {0, 1, 0}, 16, 4, 90);
    Run(r, {2, 0, 0}, {2, 0, 1}, XFORM_MIRROR_MOVE);
    const PolylineData* rp = (const PolylineData*)r->data;
    EXPECT_NEAR(rp->param1.x, 4, 1e-12);
    EXPECT_NEAR(rp->param1.y, 1, 1e-12);
    EXPECT_NEAR(rp->param2.y, 0, 1e-12);
    EXPECT_NEAR(rp->points[0].x, 3, 1e-12);

    // FRONT view: a cone turned 90 degrees in the view plane about its own
    // base point; the component along -z goes to 270, so rotate.z = -270.
    View_SetKind(&g.view.Active_Viewport, VIEW_FRONT);
    Object* fc = Prim(PRIM_CONE, {1, 1, 1}, 1, 1, 2);
    Run(fc, {1, 1, 1}, {1, 2, 1}, XFORM_ROTATE);
    p = (const PrimitiveData*)fc->data;
    EXPECT_NEAR(p->rotate.z, -270, 1e-6);
    EXPECT_NEAR(p->translate.x, 1, 1e-12);
    // Its tip, 2 up its own axis, now points to -x (screen up turned left).
    Recording& rec = Rec();
    rec = Recording{};
    g.output.consumer[OUTPUT_DXF] = OutputConsumer{0, rec_hooks::Move, rec_hooks::Line, rec_hooks::Facet,
                                                   nullptr, nullptr, nullptr, nullptr, nullptr, nullptr};
    g.output.Output_Mode = OUTPUT_DXF;
    Object_Draw(fc);
    g.output.Output_Mode = OUTPUT_SCREEN;
    double min_x = 1e9;
    for (const RecFacet& f : rec.facets)
        for (int i = 0; i < f.n; i++) min_x = std::min(min_x, f.c[i].x);
    EXPECT_NEAR(min_x, -1, 1e-9);
}

// The primitives' rules give exactly the surface the point arithmetic gives
// their facets (for primitives not turned beforehand): moved, turned in the
// three ways, mirrored in a slanted line and scaled evenly, in three views.
TEST_F(XformModesTest, PrimitivesFollowTheirOwnFacets) {
    auto facets = [](const Object* o) {
        Rec() = Recording{};
        g.output.consumer[OUTPUT_DXF] = OutputConsumer{0, nullptr, nullptr, rec_hooks::Facet, nullptr,
                                                       nullptr, nullptr, nullptr, nullptr, nullptr};
        g.output.Output_Mode = OUTPUT_DXF;
        Object_Draw(o);
        g.output.Output_Mode = OUTPUT_SCREEN;
        std::vector<Point3> pts;
        for (const RecFacet& f : Rec().facets) pts.insert(pts.end(), f.c, f.c + f.n);
        return pts;
    };
    auto sorted = [](std::vector<Point3> v) {
        for (Point3& p : v) p = {std::round(p.x * 1e6) / 1e6, std::round(p.y * 1e6) / 1e6, std::round(p.z * 1e6) / 1e6};
        std::sort(v.begin(), v.end(), [](Point3 a, Point3 b) {
            return a.x != b.x ? a.x < b.x : a.y != b.y ? a.y < b.y : a.z < b.z;
        });
        return v;
    };
    struct Case {
        const char* name;
        int mode;
        Point3 second;
    };
    const Point3 base{0.3, -0.2, 0.7};
    for (int view : {VIEW_TOP, VIEW_FRONT, VIEW_RIGHT}) {
        View_SetKind(&g.view.Active_Viewport, view);
        const Case cases[] = {
            {"move", XFORM_MOVE, Vec_Add(base, kDelta)},
            {"rotate h", XFORM_ROTATE_H, At(base, 1.0)},
            {"rotate v", XFORM_ROTATE_V, At(base, 2.2)},
            {"rotate", XFORM_ROTATE, At(base, -0.6)},
            {"mirror", XFORM_MIRROR_MOVE, At(base, 0.5)},
            {"scale", XFORM_SCALE, Vec_Add(base, {0, 1.75, 0})},
        };
        for (const Kind& k : Kinds()) {
            Fresh();
            Object* probe = k.make();
            if (probe->kind != KIND_PRIMITIVE) continue;
            for (const Case& c : cases) {
                SCOPED_TRACE(std::string(k.name) + " " + c.name + " view " + std::to_string(view));
                Object* o = k.make();
                std::vector<Point3> want = facets(o);
                Xform_Setup(base, c.second, c.mode);
                for (Point3& p : want) p = Transform_Point(p);
                Run(o, base, c.second, c.mode);
                std::vector<Point3> got = facets(o);
                ASSERT_EQ(got.size(), want.size());
                want = sorted(want);
                got = sorted(got);
                for (size_t i = 0; i < got.size(); i++) {
                    EXPECT_NEAR(got[i].x, want[i].x, 2e-6) << i;
                    EXPECT_NEAR(got[i].y, want[i].y, 2e-6) << i;
                    EXPECT_NEAR(got[i].z, want[i].z, 2e-6) << i;
                }
            }
        }
    }
}

// What the drag preview draws is, segment for segment, what the object
// looks like after the edit.
TEST_F(XformModesTest, PreviewDrawsWhatTheEditGives) {
    struct Case {
        int mode;
        Point3 second;
    };
    const Point3 base{0.5, 0, -0.5};
    const Case cases[] = {{XFORM_MOVE, {2, 0, 1}},         {XFORM_SCALE, {1.5, 0, -0.5}}, {XFORM_GRAVITY, {-3, 0, 2}},
                          {XFORM_ROTATE_H, {1, 0, 0.5}},    {XFORM_ROTATE_V, {0, 0, 0.5}}, {XFORM_ROTATE, {0, 0, 1}},
                          {XFORM_MIRROR, {1.5, 0, 0.25}}};
    g.xform.mirror_erase = 1;   // MIRROR changes the objects themselves
    for (const Kind& k : Kinds())
        for (const Case& c : cases) {
            SCOPED_TRACE(std::string(k.name) + " mode " + std::to_string(c.mode));
            Fresh();
            g.xform.mirror_erase = 1;
            Object* o = k.make();
            Object_SetSelected(o, 1, L());
            const std::vector<double> before = Numbers(o);
            g.xform.xform_mode = XFORM_ERASE;
            Headless_ClearSegments();
            Xform_DrawPreview(c.mode, c.mode == XFORM_GRAVITY ? c.second : base, c.second);
            const std::vector<Headless_Segment> preview = Headless_Segments();
            EXPECT_EQ(before, Numbers(o));                 // the preview changes nothing ...
            EXPECT_EQ(g.xform.xform_mode, XFORM_ERASE);    // ... not even the engine's state
            Xform_Run(c.mode == XFORM_GRAVITY ? c.second : base, c.second, c.mode);
            Headless_ClearSegments();
            Object_Draw(o);
            const std::vector<Headless_Segment>& result = Headless_Segments();
            ASSERT_EQ(preview.size(), result.size());
            ASSERT_FALSE(result.empty());
            for (size_t i = 0; i < result.size(); i++) {
                EXPECT_EQ(preview[i].x1, result[i].x1) << i;
                EXPECT_EQ(preview[i].y1, result[i].y1) << i;
                EXPECT_EQ(preview[i].x2, result[i].x2) << i;
                EXPECT_EQ(preview[i].y2, result[i].y2) << i;
            }
        }
}

}  // namespace
