// xform.cpp - the transform engine, its point arithmetic and the per-kind
// modifiers, the drag preview and EXPLODE.
//
// Every change to an object is drawn as erase (background colour), change,
// draw again (highlighted while still selected). The walk first takes a list
// of the selected objects of the layers that are on and then works through
// it, so copies, moved objects and exploded pieces linked in on the way are
// never visited. Objects of layers that are off are never visited, so they
// keep their marks.
#include "model/xform.h"

#include <cmath>
#include <cstdio>
#include <utility>
#include <vector>

#include "base/message.h"
#include "gfx/gfx.h"
#include "model/geometry.h"
#include "model/output.h"
#include "model/selection.h"
#include "scene/layers.h"
#include "scene/mem.h"
#include "state.h"

namespace {

constexpr double kDegrees = 57.29577951;   // degrees per radian

// What one application of the current mode does to a point.
enum Arith { NONE, OFFSET, SCALE, GRAVITY, ROTATE, MIRROR };

struct Step {
    Arith arith = NONE;
    Point3 offset{0, 0, 0};   // OFFSET
    int axis = 2;             // ROTATE: 0 about axis_h, 1 axis_v, 2 axis_d
    double angle = 0;         // ROTATE: radians
};

bool IsRotation(int mode) {
    return mode == XFORM_ROTATE_H || mode == XFORM_ROTATE_V || mode == XFORM_ROTATE;
}
bool IsMirror(int mode) {
    return mode == XFORM_MIRROR || mode == XFORM_MIRROR_COPY || mode == XFORM_MIRROR_MOVE;
}

Step CurrentStep() {
    const XformState& x = g.xform;
    Step s;
    switch (x.xform_mode) {
        case XFORM_COPY:
        case XFORM_MOVE: s.arith = OFFSET; s.offset = x.xform_delta; break;
        case XFORM_SCALE: s.arith = SCALE; break;
        case XFORM_GRAVITY: s.arith = GRAVITY; break;
        case XFORM_ROTATE_H: s.arith = ROTATE; s.axis = 0; s.angle = x.xform_angle; break;
        case XFORM_ROTATE_V: s.arith = ROTATE; s.axis = 1; s.angle = x.xform_angle; break;
        case XFORM_ROTATE: s.arith = ROTATE; s.axis = 2; s.angle = x.xform_angle; break;
        case XFORM_MIRROR:
        case XFORM_MIRROR_COPY:
        case XFORM_MIRROR_MOVE: s.arith = MIRROR; break;
        case XFORM_ARRAY:
            switch (x.array_type) {
                case ARRAY_RECT: s.arith = OFFSET; s.offset = x.xform_delta; break;
                case ARRAY_POLAR:   // each copy turns a share of the angle; the source keeps share 0
                    s.arith = ROTATE;
                    s.angle = x.array_angle / kDegrees / (x.array_count + 1);
                    break;
                case ARRAY_SCALE: s.arith = SCALE; break;
                case ARRAY_PATH: s.arith = OFFSET; s.offset = x.array_step; break;
            }
            break;
        default: break;
    }
    return s;
}

const Point3& Axis(int k) {
    const XformState& x = g.xform;
    return k == 0 ? x.axis_h : k == 1 ? x.axis_v : x.axis_d;
}

double Get(Point3 p, int k) { return k == 0 ? p.x : k == 1 ? p.y : p.z; }
void Set(Point3* p, int k, double v) { (k == 0 ? p->x : k == 1 ? p->y : p->z) = v; }

double ScaleFactor() { return Vec_Length(g.xform.xform_delta); }

Point3 ScalePoint(Point3 p, double s) {
    const XformState& x = g.xform;
    for (int k = 0; k < 3; k++)
        if (!(x.scale_off & (1 << k))) Set(&p, k, (Get(p, k) - Get(x.xform_base, k)) * s + Get(x.xform_base, k));
    return p;
}

// Gravity towards the second point: a step of Gravity / r^Power along the
// direction to it; a point on the attractor stays.
Point3 GravityPoint(Point3 p) {
    const XformState& x = g.xform;
    Point3 d = Vec_Sub(x.xform_second, p);
    double r = Vec_Length(d);
    if (!(r > 0)) return p;
    return Vec_Add(p, Vec_Scale(d, x.Gravity / std::pow(r, x.Power) / r));
}

// Turns p about the base: the pair of view axes after `axis` (cyclically),
// the first towards the second.
Point3 RotatePoint(Point3 p, int axis, double angle) {
    const Point3 base = g.xform.xform_base;
    const Point3 &A = Axis((axis + 1) % 3), &B = Axis((axis + 2) % 3), &N = Axis(axis);
    Point3 q = Vec_Sub(p, base);
    double a = Vec_Dot(q, A), b = Vec_Dot(q, B), n = Vec_Dot(q, N);
    double c = std::cos(angle), s = std::sin(angle);
    double a2 = a * c - b * s, b2 = a * s + b * c;
    return Vec_Add(base, Vec_Add(Vec_Add(Vec_Scale(A, a2), Vec_Scale(B, b2)), Vec_Scale(N, n)));
}

// Reflection in the line through the base along mirror_angle in the view plane.
Point3 MirrorPoint(Point3 p) {
    const XformState& x = g.xform;
    Point3 q = Vec_Sub(p, x.xform_base);
    double a = Vec_Dot(q, x.axis_h), b = Vec_Dot(q, x.axis_v), n = Vec_Dot(q, x.axis_d);
    double c = std::cos(x.mirror_angle), s = std::sin(x.mirror_angle);
    double u = a * c + b * s, w = -(-a * s + b * c);   // turned by -phi, second negated
    double a2 = u * c - w * s, b2 = u * s + w * c;     // turned back by +phi
    return Vec_Add(x.xform_base,
                   Vec_Add(Vec_Add(Vec_Scale(x.axis_h, a2), Vec_Scale(x.axis_v, b2)), Vec_Scale(x.axis_d, n)));
}

Point3 Apply(const Step& s, Point3 p) {
    switch (s.arith) {
        case OFFSET: return Vec_Add(p, s.offset);
        case SCALE: return ScalePoint(p, ScaleFactor());
        case GRAVITY: return GravityPoint(p);
        case ROTATE: return RotatePoint(p, s.axis, s.angle);
        case MIRROR: return MirrorPoint(p);
        default: return p;
    }
}

void TransformAll(const Step& s, Point3* p, int n) {
    if (s.arith == OFFSET) {   // the common case without the dispatch per point
        for (int i = 0; i < n; i++) p[i] = Vec_Add(p[i], s.offset);
        return;
    }
    for (int i = 0; i < n; i++) p[i] = Apply(s, p[i]);
}

// Angle brought into [0, 360).
double Normalise(double deg) {
    double r = std::fmod(deg, 360.0);
    if (r < 0) r += 360.0;
    return r >= 360.0 ? 0.0 : r;
}

// The `rotate` triple's component along `axis` becomes `value`.
void SetComponent(Point3* r, const Point3& axis, double value) {
    *r = Vec_Add(*r, Vec_Scale(axis, value - Vec_Dot(*r, axis)));
}

// World axis (0 x, 1 y, 2 z) a view axis runs along; -1 when none.
int WorldAxis(const Point3& a) {
    for (int k = 0; k < 3; k++)
        if (std::fabs(Get(a, k)) > 0.999999) return k;
    return -1;
}

// Forms whose parameters are points in space (the others hold sizes).
bool ParamsArePoints(int form) {
    return form == FORM_EXTRUSION || form == FORM_REVOLUTION || form == FORM_CONE_SWEEP;
}

void ModifyPolyline(const Step& s, PolylineData* poly) {
    if (poly->points && poly->count > 0) TransformAll(s, poly->points, poly->count);
    if (ParamsArePoints(poly->form)) {
        poly->param1 = Apply(s, poly->param1);
        poly->param2 = Apply(s, poly->param2);
        if (s.arith == MIRROR && poly->form == FORM_REVOLUTION) std::swap(poly->param1, poly->param2);
    }
}

void ModifyPrimitive(const Step& s, PrimitiveData* p) {
    const XformState& x = g.xform;
    p->translate = Apply(s, p->translate);
    switch (s.arith) {
        case SCALE: {
            double f = ScaleFactor();
            for (int k = 0; k < 3; k++)
                if (!(x.scale_off & (1 << k))) Set(&p->scale, k, Get(p->scale, k) * f);
            break;
        }
        case ROTATE: {
            const Point3& A = Axis(s.axis);
            SetComponent(&p->rotate, A, Normalise(Vec_Dot(p->rotate, A) + 360 - kDegrees * s.angle));
            break;
        }
        case MIRROR: {
            if (int k = WorldAxis(x.axis_v); k >= 0) Set(&p->scale, k, -Get(p->scale, k));
            SetComponent(&p->rotate, x.axis_h, Normalise(-Vec_Dot(p->rotate, x.axis_h)));
            SetComponent(&p->rotate, x.axis_d,
                         Normalise(-Vec_Dot(p->rotate, x.axis_d) - 2 * kDegrees * x.mirror_angle));
            break;
        }
        default: break;
    }
}

void ModifyLight(const Step& s, LightData* l) {
    l->position = Apply(s, l->position);
    l->point_at = Apply(s, l->point_at);
}

// The kind modifier for the current mode. Nothing here allocates, so it
// cannot fail; the copying modes allocate before they call it.
void Modify(Object* obj) {
    const Step s = CurrentStep();
    switch (obj->kind) {
        case KIND_POLYLINE: ModifyPolyline(s, (PolylineData*)obj->data); break;
        case KIND_TRIANGLE: TransformAll(s, ((TriangleData*)obj->data)->corner, 3); break;
        case KIND_3DFACE: TransformAll(s, ((FaceData*)obj->data)->corner, 4); break;
        case KIND_PRIMITIVE: ModifyPrimitive(s, (PrimitiveData*)obj->data); break;
        case KIND_LIGHT: ModifyLight(s, (LightData*)obj->data); break;
        default: break;
    }
}

void Deselect(Object* obj) {
    if (!obj->selected) return;
    obj->selected = 0;
    g.scene.Selected_Count--;
}

void Draw(const Object* obj, const Layer* layer, int colour) { Selection_DrawObject(obj, layer, colour); }
void Redraw(const Object* obj, const Layer* layer) { Draw(obj, layer, Selection_ColourOf(obj, layer)); }
void Undraw(const Object* obj, const Layer* layer) { Draw(obj, layer, g.config.colors.view_bkcolor); }

// Unlinks obj from layer and frees its record, points and node.
void EraseObject(Object* obj, Layer* layer) {
    void* data = obj->data;
    int kind = obj->kind;
    Object_Unlink(obj, layer);
    if (data && kind == KIND_POLYLINE) Mem_Free(((PolylineData*)data)->points);
    Mem_Free(data);
}

// Removes the newest objects of layer down to (not including) `keep`,
// wiping them off the screen first when they were drawn.
void DropNewest(Layer* layer, const Object* keep, bool drawn) {
    while (layer->first_object && layer->first_object != keep) {
        Object* o = layer->first_object;
        if (drawn) Undraw(o, layer);
        EraseObject(o, layer);
    }
}

// A changed, unselected copy of `from` as the newest object of layer;
// nullptr (nothing added) when memory runs out.
Object* CopyObject(const Object* from, Layer* layer) {
    Object* copy = Object_Copy(from);
    if (!copy) return nullptr;
    copy->selected = 0;
    Modify(copy);
    Object_LinkHead(copy, layer);
    Draw(copy, layer, Selection_LayerColour(layer));
    return copy;
}

// Offsets of the path array's copies from the path's start: copy k lies at
// arc length k * step. An open path is shared out so that the last copy
// reaches its end; round a closed one the copies keep clear of the source,
// which sits at the start.
std::vector<Point3> PathOffsets() {
    const XformState& x = g.xform;
    std::vector<Point3> out((size_t)x.array_count + 1, Point3{0, 0, 0});
    const PolylineData* path = x.array_path;
    if (!path || !path->points || path->count < 2 || x.array_count < 1) return out;
    PathSampler s;
    const bool fast = PathSampler_Init(&s, path);   // without memory: one walk per copy
    const double length = fast ? s.length : Poly_Length(path);
    auto at = [&](double d) { return fast ? PathSampler_At(&s, d) : Poly_PointAt(path, d); };
    const int shares = (path->poly_flags & POLY_CLOSED) ? x.array_count + 1 : x.array_count;
    const Point3 start = at(0);
    for (int k = 1; k <= x.array_count; k++) out[k] = Vec_Sub(at(length * k / shares), start);
    if (fast) PathSampler_Free(&s);
    return out;
}

// ARRAY: array_count copies, each made from the one before. When one cannot
// be made, the copies of this object are taken away again: 0.
int ArrayObject(Object* src, Layer* layer, const std::vector<Point3>& path) {
    const Object* keep = layer->first_object;
    const Object* from = src;
    for (int k = 1; k <= g.xform.array_count; k++) {
        if (g.xform.array_type == ARRAY_PATH) g.xform.array_step = Vec_Sub(path[k], path[k - 1]);
        from = CopyObject(from, layer);
        if (!from) {
            DropNewest(layer, keep, true);
            return 0;
        }
    }
    return 1;
}

// Change of layer: a new object of the same kind and data in Current_Layer
// (selected as the source is now), the source unlinked. 0 out of memory.
int MoveToCurrentLayer(Object* obj, Layer* layer) {
    Layer* target = g.scene.Current_Layer;
    if (!target || layer == target) {
        Redraw(obj, layer);
        return 1;
    }
    Object* copy = Object_Copy(obj);
    if (!copy) return 0;
    Undraw(obj, layer);
    Object_LinkHead(copy, target);
    EraseObject(obj, layer);   // the mark (and its count) passes to the copy
    Redraw(copy, target);
    return 1;
}

struct Visit {
    Object* obj;
    Layer* layer;
};

// Selected objects of the layers that are on, in walk order.
std::vector<Visit> SelectedObjects() {
    std::vector<Visit> out;
    out.reserve((size_t)(g.scene.Selected_Count > 0 ? g.scene.Selected_Count : 0));
    for (Layer* layer = g.scene.First_Layer; layer; layer = layer->next) {
        if (!layer->on) continue;
        for (Object* obj = layer->first_object; obj; obj = obj->next)
            if (obj->selected) out.push_back({obj, layer});
    }
    return out;
}

// Applies the mode to one object; 0 when it could not be done (then nothing changed).
int Process(Object* obj, Layer* layer, int mode, const std::vector<Point3>& path) {
    switch (mode) {
        case XFORM_ERASE:
            Undraw(obj, layer);
            Deselect(obj);
            EraseObject(obj, layer);
            return 1;
        case XFORM_LAYER:
            if (MoveToCurrentLayer(obj, layer)) return 1;
            Msg_Printf("\nUnable to Change");
            return 0;
        case XFORM_COPY:
        case XFORM_MIRROR_COPY:
            Redraw(obj, layer);
            return CopyObject(obj, layer) != nullptr;
        case XFORM_ARRAY:
            Redraw(obj, layer);
            return ArrayObject(obj, layer, path);
        case XFORM_TEXTURE:
            if (obj->kind != KIND_LIGHT) snprintf(obj->texture, sizeof obj->texture, "%s", g.xform.assign_texture);
            Redraw(obj, layer);
            return 1;
        case XFORM_NO_SHADOW:
        case XFORM_SMOOTH: {
            const u8 bit = mode == XFORM_NO_SHADOW ? No_shadow : Smooth_triangle;
            const int on = mode == XFORM_NO_SHADOW ? g.xform.assign_no_shadow : g.xform.assign_smooth;
            obj->flags = (u8)(on ? (obj->flags | bit) : (obj->flags & ~bit));
            Redraw(obj, layer);
            return 1;
        }
        default:   // changed in place
            Undraw(obj, layer);
            Modify(obj);
            Redraw(obj, layer);
            return 1;
    }
}

}  // namespace

Point3 Transform_Point(Point3 p) { return Apply(CurrentStep(), p); }

void Xform_Setup(Point3 base, Point3 second, int mode) {
    XformState& x = g.xform;
    const Viewport& vp = g.view.Active_Viewport;
    if (mode == XFORM_MIRROR) mode = x.mirror_erase ? XFORM_MIRROR_MOVE : XFORM_MIRROR_COPY;
    x.xform_base = base;
    x.xform_second = second;
    x.xform_delta = Vec_Sub(second, base);
    x.xform_mode = mode;
    x.axis_h = vp.axis_h;
    x.axis_v = vp.axis_v;
    x.axis_d = vp.axis_d;
    const double a = Vec_Dot(x.xform_delta, x.axis_h), b = Vec_Dot(x.xform_delta, x.axis_v);
    if (IsRotation(mode)) x.xform_angle = std::atan2(b, a);
    if (IsMirror(mode)) {
        double phi = std::atan2(b, a);
        x.mirror_angle = phi < 0 ? phi + 2 * M_PI : phi;
    }
}

int Xform_Run(Point3 base, Point3 second, int mode) {
    Msg_Printf("\nPlease wait...");
    Xform_Setup(base, second, mode);
    mode = g.xform.xform_mode;
    if (g.scene.Selected_Count <= 0) return 1;

    const std::vector<Point3> path =
        mode == XFORM_ARRAY && g.xform.array_type == ARRAY_PATH ? PathOffsets() : std::vector<Point3>();
    int failed = 0;   // an object could not be processed: the rest is only deselected
    for (const Visit& v : SelectedObjects()) {
        if (failed) {
            Deselect(v.obj);
            Redraw(v.obj, v.layer);
            continue;
        }
        if (g.aids.Auto_Deselect) Deselect(v.obj);
        if (!Process(v.obj, v.layer, mode, path)) {
            failed = 1;
            Deselect(v.obj);
            Redraw(v.obj, v.layer);
        }
    }
    X11_SetColor(Selection_LayerColour(g.scene.Current_Layer));   // no highlight left behind
    if (g.aids.Auto_Redraw) Output_RedrawScreen();
    return 1;
}

void Xform_DrawPreview(int mode, Point3 base, Point3 second) {
    const XformState keep = g.xform;
    Xform_Setup(base, second, mode);
    for (const Visit& v : SelectedObjects()) {
        // A copy on the stack (points in a scratch array) takes the change.
        Object tmp = *v.obj;
        PolylineData poly;
        TriangleData tri;
        FaceData face;
        PrimitiveData prim;
        LightData light;
        std::vector<Point3> points;
        switch (v.obj->kind) {
            case KIND_POLYLINE:
                poly = *(const PolylineData*)v.obj->data;
                if (poly.points && poly.count > 0) points.assign(poly.points, poly.points + poly.count);
                poly.points = points.empty() ? nullptr : points.data();
                tmp.data = &poly;
                break;
            case KIND_TRIANGLE: tri = *(const TriangleData*)v.obj->data; tmp.data = &tri; break;
            case KIND_3DFACE: face = *(const FaceData*)v.obj->data; tmp.data = &face; break;
            case KIND_PRIMITIVE: prim = *(const PrimitiveData*)v.obj->data; tmp.data = &prim; break;
            case KIND_LIGHT: light = *(const LightData*)v.obj->data; tmp.data = &light; break;
            default: continue;
        }
        Modify(&tmp);
        Output_UseLayer(v.layer);
        Object_Draw(&tmp);
    }
    Output_UseLayer(nullptr);
    g.xform = keep;
}

int Xform_Explode() {
    if (g.scene.Selected_Count <= 0) return 1;
    int failed = 0;
    for (const Visit& v : SelectedObjects()) {
        if (failed) {
            Deselect(v.obj);
            Redraw(v.obj, v.layer);
            continue;
        }
        if (g.aids.Auto_Deselect) Deselect(v.obj);
        Layer* target = g.scene.Current_Layer;
        if (v.obj->kind == KIND_TRIANGLE || v.obj->kind == KIND_LIGHT || !target) {
            Redraw(v.obj, v.layer);
            continue;
        }
        const Object* keep = target->first_object;
        const int mode = g.output.Output_Mode;
        g.output.explode_failed = 0;
        g.output.Output_Mode = OUTPUT_EXPLODE;
        Object_Draw(v.obj);
        g.output.Output_Mode = mode;
        if (g.output.explode_failed) {
            DropNewest(target, keep, false);
            failed = 1;
            Deselect(v.obj);
            Redraw(v.obj, v.layer);
            continue;
        }
        for (Object* o = target->first_object; o && o != keep; o = o->next) {
            snprintf(o->texture, sizeof o->texture, "%s", v.obj->texture);   // the pieces render as the source did
            o->flags = v.obj->flags;
            Draw(o, target, Selection_LayerColour(target));
        }
        if (g.xform.explode_erase && target->first_object != keep) {
            Undraw(v.obj, v.layer);
            Deselect(v.obj);
            EraseObject(v.obj, v.layer);
        } else {
            Redraw(v.obj, v.layer);
        }
    }
    if (g.aids.Auto_Redraw) Output_RedrawScreen();
    return 1;
}
