// Every transform mode on every object kind (kind x mode), in two views:
// there and back restores the record; the facets of the changed record are
// the changed facets (the primitives' parameter rules included); the drag
// preview draws what the edit gives; a copy or an array's last copy is the
// source changed once; gravity moves each point straight at the attractor.
// Then records worked out by hand.
#include <algorithm>
#include <functional>
#include <string>
#include <vector>

#include "headless_session.h"
#include "model/recorder.h"

namespace {

const double kPi = 3.141592653589793;

Object* Poly(int form, std::vector<Point3> pts, Point3 p1 = {}, Point3 p2 = {}, int m = 16, int n = 16) {
    PolylineData p = Poly_Default();
    p.form = form;
    p.points = pts.data();
    p.count = (int)pts.size();
    p.param1 = p1;
    p.param2 = p2;
    p.size_m = m;
    p.size_n = n;
    p.angle = 90;
    return Poly_AddToScene(&p);
}
Object* Prim(int type, Point3 at, double p1, double p2 = 0, double p3 = 0) {
    PrimitiveData p = Primitive_Default();
    p.prim_type = type;
    p.translate = at;
    p.p1 = p1;
    p.p2 = p2;
    p.p3 = p3;
    p.prim_aux = 6;
    p.size = {1, 2, 3};
    if (type == PRIM_PLANE || type == PRIM_HEIGHT_FIELD) p.scale = {2, 1, 3};
    return Add_Primitive(&p);
}
Object* Light(int flags) {
    LightData l = Light_Default();
    l.light_flags = (u8)flags;
    l.position = {3, 4, -2};
    l.point_at = {1, 0, 1};
    return Add_Light(&l);
}

struct Kind {
    const char* name;
    bool facets_follow;   // its facets are a function of its points (not pipes, walls, lights)
    std::function<Object*()> make;
};
const std::vector<Kind> kKinds = {
    {"polyline", true, [] { return Poly(FORM_POLYLINE, {{1, 0.5, 2}, {3, 1, 2.5}, {2, 0, 4}}); }},
    {"extrusion", true, [] { return Poly(FORM_EXTRUSION, {{1, 0, 1}, {2, 0, 1.5}, {3, 0, 1}}, {}, {0, 2, 0.5}); }},
    {"revolution", true,
     [] { return Poly(FORM_REVOLUTION, {{1, 0, 0}, {1.5, 1, 0}, {1, 2, 0}}, {0.5, 0, 0.2}, {0.5, 1, 0.4}, 16, 6); }},
    {"cone sweep", true, [] { return Poly(FORM_CONE_SWEEP, {{1, 0, 0}, {0, 0, 1}, {-1, 0, 0.5}}, {0, 3, 0}); }},
    {"mesh", true, [] {
         return Poly(FORM_POLY_MESH, {{0, 0, 0}, {1, 0.2, 0}, {2, 0, 0}, {0, 0, 1}, {1, 0.5, 1}, {2, 0, 1}}, {}, {}, 1, 2);
     }},
    {"pipe", false, [] { return Poly(FORM_POLY_PIPE, {{0, 0, 0}, {2, 1, 0}, {3, 1, 2}}, {0.2, 0.3, 0}, {}, 16, 6); }},
    {"wall", false, [] { return Poly(FORM_POLY_WALL, {{0, 0, 0}, {2, 0, 1}}, {1.5, 0.2, 0}, {}, 16, 8); }},
    {"pyramid", true, [] {
         return Poly(FORM_POLY_PYRAMID, {{0, 0, 0}, {2, 0, 0}, {2, 0, 2}, {0, 0, 2}, {1, 3, 1}, {1, 3, 1}, {1, 3, 1},
                                         {1, 3, 1}});
     }},
    {"triangle", true, [] {
         TriangleData t{{{1, 0, 0}, {2, 0.5, 0}, {1, 1, 1}}};
         return Add_Triangle(&t);
     }},
    {"face", true, [] {
         FaceData f{{{1, 0, 0}, {2, 0, 0}, {2, 1, 1}, {1, 1, 1.5}}};
         return Add_Face(&f);
     }},
    {"sphere", true, [] { return Prim(PRIM_SPHERE, {2, 1, 3}, 1.2); }},
    {"cone", true, [] { return Prim(PRIM_CONE, {1, 0, 2}, 1, 0.5, 2); }},
    {"torus", true, [] { return Prim(PRIM_TORUS, {2, 0.5, 1}, 2, 0.5); }},
    {"disc", true, [] { return Prim(PRIM_DISC, {1, 1, 1}, 0.3, 1.5); }},
    {"plane", true, [] { return Prim(PRIM_PLANE, {0.5, 0, 2}, 0); }},
    {"box", true, [] { return Prim(PRIM_BOX, {1, 0, 2}, 0); }},
    {"height field", true, [] { return Prim(PRIM_HEIGHT_FIELD, {-1, 0, 2}, 0.2); }},
    {"spot light", false, [] { return Light(LIGHT_SPOT); }},
    {"area light", false, [] { return Light(LIGHT_AREA); }},
};

// A record as numbers; angles by where they point (360 is 0, -90 is 270).
std::vector<double> Numbers(const Object* o) {
    std::vector<double> v;
    auto push = [&](std::initializer_list<Point3> ps) {
        for (const Point3& p : ps) v.insert(v.end(), {p.x, p.y, p.z});
    };
    if (o->kind == KIND_POLYLINE) {
        const PolylineData& p = *(const PolylineData*)o->data;
        for (int i = 0; i < p.count; i++) push({p.points[i]});
        push({p.param1, p.param2});
        v.insert(v.end(), {p.angle, (double)p.form, (double)p.size_m, (double)p.size_n});
    } else if (o->kind == KIND_TRIANGLE || o->kind == KIND_3DFACE) {
        const Point3* c = o->kind == KIND_TRIANGLE ? ((const TriangleData*)o->data)->corner : ((const FaceData*)o->data)->corner;
        for (int k = 0; k < (o->kind == KIND_TRIANGLE ? 3 : 4); k++) push({c[k]});
    } else if (o->kind == KIND_PRIMITIVE) {
        const PrimitiveData& p = *(const PrimitiveData*)o->data;
        push({p.translate, p.size, p.scale});
        for (double a : {p.rotate.x, p.rotate.y, p.rotate.z}) v.insert(v.end(), {std::cos(a * kPi / 180), std::sin(a * kPi / 180)});
        v.insert(v.end(), {p.p1, p.p2, p.p3, (double)p.prim_type});
    } else {
        const LightData& l = *(const LightData*)o->data;
        push({l.position, l.point_at, l.color});
        v.insert(v.end(), {l.area_width, l.area_height, l.radius, (double)l.light_flags});
    }
    return v;
}
// The points that follow the point arithmetic.
std::vector<Point3> Points(const Object* o) {
    const std::vector<double> n = Numbers(o);
    size_t count = o->kind == KIND_PRIMITIVE ? 1 : o->kind == KIND_LIGHT ? 2 : n.size() / 3;
    if (o->kind == KIND_POLYLINE) {
        const PolylineData& p = *(const PolylineData*)o->data;
        count = p.count + (p.form >= FORM_EXTRUSION && p.form <= FORM_CONE_SWEEP ? 2 : 0);
    }
    std::vector<Point3> v;
    for (size_t i = 0; i < count; i++) v.push_back({n[3 * i], n[3 * i + 1], n[3 * i + 2]});
    return v;
}
bool Same(const std::vector<double>& a, const std::vector<double>& b) {
    if (a.size() != b.size()) return false;
    for (size_t i = 0; i < a.size(); i++)
        if (!(std::fabs(a[i] - b[i]) <= 1e-8 * (1 + std::fabs(a[i])))) return false;
    return true;
}

// Every facet corner the generator hands out, rounded and sorted.
std::vector<Point3> Facets(const Object* o) {
    Rec() = Recording{};
    g.output.consumer[OUTPUT_DXF] = rec_hooks::Consumer(0, rec_hooks::Facet);
    g.output.consumer[OUTPUT_DXF].move_to = nullptr;
    g.output.consumer[OUTPUT_DXF].line_to = nullptr;
    g.output.Output_Mode = OUTPUT_DXF;
    Object_Draw(o);
    g.output.Output_Mode = OUTPUT_SCREEN;
    std::vector<Point3> v;
    for (const RecFacet& f : Rec().facets) v.insert(v.end(), f.c, f.c + f.n);
    return v;
}
std::vector<Point3> Sorted(std::vector<Point3> v) {
    for (Point3& p : v) p = {std::round(p.x * 1e6) / 1e6, std::round(p.y * 1e6) / 1e6, std::round(p.z * 1e6) / 1e6};
    std::sort(v.begin(), v.end(), [](Point3 a, Point3 b) { return a.x != b.x ? a.x < b.x : a.y != b.y ? a.y < b.y : a.z < b.z; });
    return v;
}
bool SameFacets(std::vector<Point3> a, std::vector<Point3> b) {
    if (a.size() != b.size()) return false;
    a = Sorted(a);
    b = Sorted(b);
    for (size_t i = 0; i < a.size(); i++)
        if (Vec_Length(Vec_Sub(a[i], b[i])) > 1e-5) return false;
    return true;
}

// What a drawing puts on the (headless) screen.
template <typename F>
std::vector<Headless_Segment> Drawn(F draw) {
    Headless_ClearSegments();
    draw();
    return Headless_Segments();
}
bool SameSegments(const std::vector<Headless_Segment>& a, const std::vector<Headless_Segment>& b) {
    if (a.size() != b.size() || a.empty()) return false;
    for (size_t i = 0; i < a.size(); i++)
        if (a[i].x1 != b[i].x1 || a[i].y1 != b[i].y1 || a[i].x2 != b[i].x2 || a[i].y2 != b[i].y2) return false;
    return true;
}

class XformModesTest : public HeadlessTest {
  protected:
    void Fresh() {
        Scene_Clear();
        Layer_NewFirst();
        g.xform = XformState{};
    }
    void Run(Object* o, Point3 base, Point3 second, int mode) {
        Object_SetSelected(o, 1, g.scene.Current_Layer);
        Xform_Run(base, second, mode);
    }
    // The point at `angle` radians (distance 1) from base in the view plane.
    static Point3 At(Point3 base, double angle) {
        const Viewport& v = g.view.Active_Viewport;
        return Vec_Add(base, Vec_Add(Vec_Scale(v.axis_h, std::cos(angle)), Vec_Scale(v.axis_v, std::sin(angle))));
    }
    // A fresh object of the kind changed once.
    std::vector<double> Once(const Kind& k, Point3 base, Point3 second, int mode) {
        Object* o = k.make();
        Run(o, base, second, mode);
        return Numbers(o);
    }
};

const Point3 B{0.5, -1, 0.25};

TEST_F(XformModesTest, EveryModeOnEveryKind) {
    struct Way {
        int mode;
        Point3 there, back;
    };
    for (int view : {VIEW_TOP, VIEW_FRONT})
        for (const Kind& k : kKinds) {
            SCOPED_TRACE(std::string(k.name) + " view " + std::to_string(view));
            Fresh();
            View_SetKind(&g.view.Active_Viewport, view);
            const Way ways[] = {{XFORM_MOVE, {2, -1.5, 2.25}, B},          {XFORM_ROTATE_H, At(B, 0.7), At(B, -0.7)},
                                {XFORM_ROTATE_V, At(B, 2.1), At(B, -2.1)}, {XFORM_ROTATE, At(B, -1), At(B, 1)},
                                {XFORM_MIRROR_MOVE, At(B, 0.4), At(B, 0.4)},
                                {XFORM_SCALE, Vec_Add(B, {0, 2.5, 0}), Vec_Add(B, {0, 0, 0.4})}};
            for (const Way& w : ways) {   // there and back; on the way the facets follow the points
                Object* o = k.make();
                const std::vector<double> before = Numbers(o);
                std::vector<Point3> want = Facets(o);
                Xform_Setup(B, w.there, w.mode);
                for (Point3& p : want) p = Transform_Point(p);
                Object_SetSelected(o, 1, g.scene.Current_Layer);
                const std::vector<Headless_Segment> preview = Drawn([&] { Xform_DrawPreview(w.mode, B, w.there); });
                EXPECT_TRUE(Same(before, Numbers(o))) << w.mode;   // the preview changes nothing
                Xform_Run(B, w.there, w.mode);
                EXPECT_FALSE(Same(before, Numbers(o))) << w.mode;
                EXPECT_TRUE(SameSegments(preview, Drawn([&] { Object_Draw(o); }))) << w.mode;
                if (k.facets_follow) {
                    EXPECT_TRUE(SameFacets(want, Facets(o))) << w.mode;
                }
                Run(o, w.mode == XFORM_MOVE ? w.there : B, w.back, w.mode);
                EXPECT_TRUE(Same(before, Numbers(o))) << w.mode;
            }
            g.xform.scale_off = SCALE_OFF_Y;   // a left-out axis, there and back
            Object* o = k.make();
            const std::vector<double> before = Numbers(o);
            Run(o, B, Vec_Add(B, {2, 0, 0}), XFORM_SCALE);
            Run(o, B, Vec_Add(B, {0.5, 0, 0}), XFORM_SCALE);
            EXPECT_TRUE(Same(before, Numbers(o)));
            g.xform.scale_off = 0;

            // Copies: the newest is the source changed once; the source stays.
            struct Copy {
                int mode, type;
                Point3 second;
                int once_mode;
                Point3 once;
            };
            std::vector<Point3> path_pts = {{0, 0, 0}, {3, 0, 0}, {3, 0, 1}};   // length 4, open
            PolylineData path = Poly_Default();
            path.points = path_pts.data();
            path.count = 3;
            const Copy copies[] = {
                {XFORM_COPY, 0, {2, 0, 1}, XFORM_MOVE, {2, 0, 1}},
                {XFORM_MIRROR_COPY, 0, At(B, 2), XFORM_MIRROR_MOVE, At(B, 2)},
                {XFORM_ARRAY, ARRAY_RECT, {2, 0, 1}, XFORM_MOVE, Vec_Add(B, Vec_Scale(Vec_Sub({2, 0, 1}, B), 3))},
                {XFORM_ARRAY, ARRAY_POLAR, B, XFORM_ROTATE, At(B, 1.5 * kPi)},   // 3 of 4 shares of 360
                {XFORM_ARRAY, ARRAY_SCALE, Vec_Add(B, {0, 0, 1.5}), XFORM_SCALE, Vec_Add(B, {3.375, 0, 0})},
                {XFORM_ARRAY, ARRAY_PATH, B, XFORM_MOVE, Vec_Add(B, {3, 0, 1})},   // the path's end
            };
            for (const Copy& c : copies) {
                Fresh();
                View_SetKind(&g.view.Active_Viewport, view);
                g.xform.array_type = c.type;
                g.xform.array_count = 3;
                g.xform.array_path = &path;
                Object* src = k.make();
                const std::vector<double> before_src = Numbers(src);
                Run(src, B, c.second, c.mode);
                const Object* newest = g.scene.Current_Layer->first_object;
                ASSERT_NE(newest, src);
                EXPECT_EQ(newest->selected, 0);
                const std::vector<double> got = Numbers(newest);
                EXPECT_TRUE(Same(before_src, Numbers(src))) << c.mode << " " << c.type;
                EXPECT_TRUE(Same(Once(k, B, c.once, c.once_mode), got)) << c.mode << " " << c.type;
            }

            // Gravity: every point straight towards the attractor by Gravity / r^Power.
            const Point3 G{-5, 2, -4};
            g.xform.Gravity = 0.5;
            g.xform.Power = 1;
            o = k.make();
            const std::vector<Point3> p0 = Points(o);
            Object_SetSelected(o, 1, g.scene.Current_Layer);
            const std::vector<Headless_Segment> preview = Drawn([&] { Xform_DrawPreview(XFORM_GRAVITY, G, G); });
            Xform_Run(G, G, XFORM_GRAVITY);
            EXPECT_TRUE(SameSegments(preview, Drawn([&] { Object_Draw(o); })));
            const std::vector<Point3> p1 = Points(o);
            for (size_t i = 0; i < p0.size(); i++) {
                const double r = Vec_Length(Vec_Sub(G, p0[i]));
                EXPECT_NEAR(Vec_Length(Vec_Sub(G, p1[i])), r - 0.5 / r, 1e-9) << i;
                EXPECT_NEAR(Vec_Length(Vec_Cross(Vec_Sub(p1[i], p0[i]), Vec_Sub(G, p0[i]))), 0, 1e-9) << i;
            }

            // Texture and No_shadow; the change of layer keeps them; erase.
            const bool light = o->kind == KIND_LIGHT;
            const std::vector<double> after = Numbers(o);
            strcpy(g.xform.assign_texture, "Jade");
            g.xform.assign_no_shadow = 1;
            Run(o, B, B, XFORM_TEXTURE);
            Run(o, B, B, XFORM_NO_SHADOW);
            Layer* to = Layer_Append();
            Run(o, B, B, XFORM_LAYER);
            ASSERT_NE(to->first_object, nullptr);
            EXPECT_TRUE(Same(after, Numbers(to->first_object)));
            EXPECT_STREQ(to->first_object->texture, light ? "" : "Jade");
            EXPECT_EQ(to->first_object->flags, No_shadow);
            const long blocks = g.mem.live_blocks;
            Run(to->first_object, B, B, XFORM_ERASE);
            EXPECT_EQ(to->first_object, nullptr);
            EXPECT_LT(g.mem.live_blocks, blocks);
        }
}

// Records worked out by hand: TOP view (right +x, up +z, viewer +y), then FRONT (right +x, up +y, viewer -z).
TEST_F(XformModesTest, RecordsByHand) {
    Fresh();
    // A sphere at (3,0,1) turned 90 degrees about (1,0,1): at (1,0,3), rotate.y 0 + 360 - 90.
    Object* s = Prim(PRIM_SPHERE, {3, 0, 1}, 1);
    Run(s, {1, 0, 1}, {1, 0, 2}, XFORM_ROTATE);
    const PrimitiveData* p = (const PrimitiveData*)s->data;
    EXPECT_NEAR(p->translate.x, 1, 1e-12);
    EXPECT_NEAR(p->translate.z, 3, 1e-12);
    EXPECT_NEAR(p->rotate.y, 270, 1e-6);
    // A box mirrored in x = 5: the corner (0,0,0) goes to (10,0,0); flipped along
    // z and turned 180 about y, which together flip it along x.
    Object* b = Prim(PRIM_BOX, {0, 0, 0}, 0);
    Run(b, {5, 0, 0}, {5, 0, 7}, XFORM_MIRROR_MOVE);
    p = (const PrimitiveData*)b->data;
    EXPECT_NEAR(p->translate.x, 10, 1e-12);
    EXPECT_NEAR(p->scale.z, -1, 1e-12);
    EXPECT_NEAR(p->rotate.y, 180, 1e-6);
    // Y left out of a scale by 2 about the origin: the scale's y stays.
    g.xform.scale_off = SCALE_OFF_Y;
    Object* c = Prim(PRIM_CONE, {1, 1, 1}, 1, 1, 2);
    Run(c, {0, 0, 0}, {0, 0, 2}, XFORM_SCALE);
    p = (const PrimitiveData*)c->data;
    EXPECT_EQ(std::vector<double>({p->translate.y, p->scale.x, p->scale.y, p->scale.z}), std::vector<double>({1, 2, 1, 2}));
    // FRONT: a cylinder of height 2 turned 90 about its base (1,1,1): the
    // component along -z becomes 270 (rotate.z -270) and the top points to -x.
    View_SetKind(&g.view.Active_Viewport, VIEW_FRONT);
    Object* fc = Prim(PRIM_CONE, {1, 1, 1}, 1, 1, 2);
    Run(fc, {1, 1, 1}, {1, 2, 1}, XFORM_ROTATE);
    EXPECT_NEAR(((const PrimitiveData*)fc->data)->rotate.z, -270, 1e-6);
    double min_x = 1e9;
    for (const Point3& q : Facets(fc)) min_x = std::min(min_x, q.x);
    EXPECT_NEAR(min_x, -1, 1e-9);
}

}  // namespace
