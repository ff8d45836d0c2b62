// view_draw.cpp - viewport furniture, the redraw of one or all viewports and
// the object traversal with its layer transforms.
//
// Furniture goes straight to the 3D pen of the record being drawn; objects go
// through Object_Draw and the facet sink, whose screen consumer passes each
// point through View_LayerPoint. The layer transforms form a stack of
// composed affine maps (entry k = levels 0..k), so a point costs one
// matrix product however deep the nesting is.
#include "view/view_draw.h"

#include <cmath>
#include <initializer_list>

#include "base/message.h"
#include "gfx/gfx.h"
#include "gfx/screen.h"
#include "model/geometry.h"
#include "state.h"
#include "view/view_commands.h"
#include "view/viewport.h"

namespace {

const double RAD_PER_DEG = 3.141592653589793 / 180.0;
const double GRID_LIMIT = 18;   // more spacings than this to an edge: too dense to draw
const int INSTANCE_DEPTH_MAX = 8;   // instances of instances (only corrupt files go deep)
const int MARKER_ARM = 14;      // half-size of the last-point cross in pixels

const ScreenColors& Colours() { return g.config.colors; }


void Segment(Viewport* vp, Point3 a, Point3 b) {
    View_MoveTo(vp, a);
    View_LineTo(vp, b);
}

// --- furniture ---

void DrawGrid(Viewport* vp) {
    const double gx = vp->GRIDX, gy = vp->GRIDY;
    if (!(gx > 0) || !(gy > 0)) return;
    Point3 c = View_GetCentre(vp);
    double offX = std::fmod(Vec_Dot(c, vp->axis_h), gx);
    double offY = std::fmod(Vec_Dot(c, vp->axis_v), gy);
    double hw = vp->area_half_width + gx, hh = vp->AREA + gy;
    if (hw / gx > GRID_LIMIT || hh / gy > GRID_LIMIT) return;
    int nx = (int)(hw / gx), ny = (int)(hh / gy);
    X11_SetColor(Colours().view_grid);
    // Centre minus its remainders lies on a multiple of the spacing.
    Point3 base = Vec_Add(c, Vec_Add(Vec_Scale(vp->axis_h, -offX), Vec_Scale(vp->axis_v, -offY)));
    for (int i = -nx; i <= nx; i++) {
        Point3 col = Vec_Add(base, Vec_Scale(vp->axis_h, i * gx));
        for (int j = -ny; j <= ny; j++) {
            View_Project(vp, Vec_Add(col, Vec_Scale(vp->axis_v, j * gy)));
            double x = vp->screen_x, y = vp->screen_y;
            if (x >= vp->rect_left && x <= vp->rect_right && y >= vp->rect_top &&
                y <= vp->rect_bottom)
                X11_PutPixel((int)x, (int)y);
        }
    }
}

// One axis with its two arrow triangles; `along` picks the axis, `across1`
// and `across2` the two planes that contain it.
void DrawAxis(Viewport* vp, float L, Point3 along, Point3 across1, Point3 across2, int colour) {
    X11_SetColor(colour);
    Point3 tip = Vec_Scale(along, L);
    Segment(vp, {0, 0, 0}, tip);
    Point3 foot = Vec_Scale(along, 0.8 * L);
    for (Point3 across : {across1, across2}) {
        Point3 a = Vec_Add(foot, Vec_Scale(across, 0.12 * L));
        Point3 b = Vec_Add(foot, Vec_Scale(across, -0.12 * L));
        Segment(vp, a, tip);
        Segment(vp, b, tip);
        Segment(vp, a, b);
    }
}

void DrawAxes(Viewport* vp) {
    float L = (float)(vp->AREA / 4);
    const Point3 X{1, 0, 0}, Y{0, 1, 0}, Z{0, 0, 1};
    DrawAxis(vp, L, X, Y, Z, Colours().view_xaxis);
    DrawAxis(vp, L, Y, X, Z, Colours().view_yaxis);
    DrawAxis(vp, L, Z, X, Y, Colours().view_zaxis);
}

void DrawOriginMark(Viewport* vp) {
    double k = vp->AREA / 19;
    X11_SetColor(Colours().view_center);
    Segment(vp, {-k, 0, 0}, {k, 0, 0});
    Segment(vp, {0, -k, 0}, {0, k, 0});
    Segment(vp, {0, 0, -k}, {0, 0, k});
}

// (c, s) of the direction of (x, y); (1, 0) when it has no length.
void Direction(double x, double y, double* c, double* s) {
    double r = std::sqrt(x * x + y * y);
    if (!(r > 0)) {
        *c = 1;
        *s = 0;
        return;
    }
    *c = x / r;
    *s = y / r;
}

void DrawCameraIcon(Viewport* vp) {
    X11_SetColor(Colours().view_camera);
    Point3 cam = vp->CAM, d = {vp->TAR.x - cam.x, vp->TAR.y - cam.y, vp->TAR.z - cam.z};
    Segment(vp, cam, vp->TAR);
    double c1, s1, c2, s2;
    Direction(d.x, d.y, &c1, &s1);
    Direction(std::sqrt(d.x * d.x + d.y * d.y), d.z, &c2, &s2);
    double half = vp->FOV / 2 * RAD_PER_DEG;
    double a = vp->AREA / 4 * std::cos(half), r = vp->AREA / 4 * std::tan(half);
    Point3 prev{0, 0, 0};
    for (int i = 0; i <= 4; i++) {
        double angle = i * 90 * RAD_PER_DEG;
        double u = std::cos(angle) * r * g.view.camera_aspect, w = std::sin(angle) * r;
        double t = a * c2 - w * s2;
        Point3 corner = Vec_Add({t * c1 - u * s1, u * c1 + t * s1, w * c2 + a * s2}, cam);
        Segment(vp, cam, corner);
        if (i > 0) Segment(vp, corner, prev);
        prev = corner;
    }
}

// --- layer transforms ---

using M3 = double[3][3];

void MatMul(const M3 a, const M3 b, M3 out) {
    for (int i = 0; i < 3; i++)
        for (int j = 0; j < 3; j++)
            out[i][j] = a[i][0] * b[0][j] + a[i][1] * b[1][j] + a[i][2] * b[2][j];
}

// Rotation about axis 0 (X), 1 (Y) or 2 (Z) by deg, the ray tracer's way.
void Rotation(int axis, double deg, M3 out) {
    double c = std::cos(deg * RAD_PER_DEG), s = std::sin(deg * RAD_PER_DEG);
    for (int i = 0; i < 3; i++)
        for (int j = 0; j < 3; j++) out[i][j] = i == j;
    int p = (axis + 1) % 3, q = (axis + 2) % 3;   // X: y,z  Y: z,x  Z: x,y
    out[p][p] = c;
    out[p][q] = -s;
    out[q][p] = s;
    out[q][q] = c;
}

// The layer's own map: scale, then the rotations in its order, then move.
ViewXform LayerMap(const Layer* l) {
    M3 m = {{l->scale.x, 0, 0}, {0, l->scale.y, 0}, {0, 0, l->scale.z}};
    // Order 0 turns about X, Z, Y one by one; otherwise X, Y, Z.
    const int order0[3] = {0, 2, 1}, order1[3] = {0, 1, 2};
    const int* order = l->rotation_order ? order1 : order0;
    const double angle[3] = {l->rotate.x, l->rotate.y, l->rotate.z};
    for (int k = 0; k < 3; k++) {
        if (angle[order[k]] == 0) continue;
        M3 r, out;
        Rotation(order[k], angle[order[k]], r);
        MatMul(r, m, out);
        for (int i = 0; i < 3; i++)
            for (int j = 0; j < 3; j++) m[i][j] = out[i][j];
    }
    ViewXform x;
    for (int i = 0; i < 3; i++)
        for (int j = 0; j < 3; j++) x.m[i][j] = m[i][j];
    x.t = l->translate;
    return x;
}

Point3 Apply(const ViewXform& x, Point3 p) {
    return {x.m[0][0] * p.x + x.m[0][1] * p.y + x.m[0][2] * p.z + x.t.x,
            x.m[1][0] * p.x + x.m[1][1] * p.y + x.m[1][2] * p.z + x.t.y,
            x.m[2][0] * p.x + x.m[2][1] * p.y + x.m[2][2] * p.z + x.t.z};
}

// --- traversal ---

struct Traversal {
    int interruptible;
    int stopped;
};

// Skips `l` and the layers nested under it; returns the next one after them.
Layer* SkipFamily(Layer* l) {
    Layer* n = l->next;
    while (n && n->level > l->level) n = n->next;
    return n;
}

Layer* DrawLayer(Traversal* t, Layer* layer, int instance_depth);

void DrawObjects(Traversal* t, Layer* layer) {
    int colour = View_LayerColour(layer);
    X11_SetColor(colour);
    for (Object* o = layer->first_object; o && !t->stopped; o = o->next) {
        if (g.view.user_interrupt) {
            Msg_Printf(" Terminated...");
            t->stopped = 1;
            return;
        }
        if (o->selected) X11_SetColor(Colours().general_color);
        int stop = Object_Draw(o);
        if (o->selected) X11_SetColor(colour);
        if (stop && t->interruptible) t->stopped = 1;
    }
}

// Draws an `on` layer with its instance and nested layers; returns the layer
// after its family.
Layer* DrawLayer(Traversal* t, Layer* layer, int instance_depth) {
    View_PushLayerTransform(layer);
    DrawObjects(t, layer);
    Layer* inst = layer->instance;
    if (!t->stopped && inst && inst->on && instance_depth < INSTANCE_DEPTH_MAX)
        DrawLayer(t, inst, instance_depth + 1);
    Layer* n = layer->next;
    while (!t->stopped && n && n->level > layer->level) {
        if (!n->on) {
            n = SkipFamily(n);
            continue;
        }
        n = DrawLayer(t, n, instance_depth);
    }
    View_PopLayerTransform();
    return t->stopped ? nullptr : n;
}

void DrawMarker() {
    Viewport* vp = &g.view.Active_Viewport;
    if (vp->extents_mode || vp->line_mode == LINE_HIT_TEST) return;   // measuring draws nothing
    View_Project(vp, g.view.marker_point);
    int x = (int)vp->screen_x, y = (int)vp->screen_y;
    int mode = X11_GetWriteMode(), colour = X11_GetColor();
    X11_SetWriteMode(GFX_XOR);
    X11_SetColor(g.view.marker_color);
    X11_MoveTo(x - MARKER_ARM, y);
    X11_LineTo(x + MARKER_ARM, y);
    X11_MoveTo(x, y - MARKER_ARM);
    X11_LineTo(x, y + MARKER_ARM);
    X11_SetColor(colour);
    X11_SetWriteMode(mode);
}

int Traverse(int interruptible) {
    Traversal t{interruptible, 0};
    int keep_depth = g.view.xform_depth;
    for (Layer* l = g.scene.First_Layer; l && !t.stopped;) {
        if (!l->on) {
            l = SkipFamily(l);
            continue;
        }
        l = DrawLayer(&t, l, 0);
    }
    g.view.xform_depth = keep_depth;
    if (!t.stopped && g.view.marker_pending) DrawMarker();
    return !t.stopped;
}

}  // namespace

// --- layer transforms ---

void View_PushLayerTransform(const Layer* layer) {
    ViewState& v = g.view;
    if (v.xform_depth >= VIEW_XFORM_MAX) {
        v.xform_depth++;   // counted so that the matching pop balances
        return;
    }
    ViewXform own = LayerMap(layer);
    ViewXform& out = v.xform[v.xform_depth];
    if (v.xform_depth == 0) {
        out = own;
    } else {
        // outer ∘ own: the own map first (innermost), then the enclosing ones.
        const ViewXform& outer = v.xform[v.xform_depth - 1];
        MatMul(outer.m, own.m, out.m);
        out.t = Apply(outer, own.t);
    }
    v.xform_depth++;
}

void View_PopLayerTransform() {
    if (g.view.xform_depth > 0) g.view.xform_depth--;
}

Point3 View_LayerPoint(Point3 p) {
    const ViewState& v = g.view;
    if (v.xform_depth <= 0) return p;
    int top = v.xform_depth <= VIEW_XFORM_MAX ? v.xform_depth - 1 : VIEW_XFORM_MAX - 1;
    return Apply(v.xform[top], p);
}

void View_ScreenMoveTo(Point3 p) { View_MoveTo(&g.view.Active_Viewport, View_LayerPoint(p)); }
int View_ScreenLineTo(Point3 p) { return View_LineTo(&g.view.Active_Viewport, View_LayerPoint(p)); }

int View_LayerColour(const Layer* layer) {
    int bk = Colours().view_bkcolor;
    return layer->color == bk ? (layer->color ^ bk) : layer->color;
}

// --- drawing ---

void View_Draw(Viewport* vp) {
    if (!vp->valid) return;
    const bool measuring = vp->extents_mode != 0;
    const bool flat = vp->VIEW != VIEW_3D;
    if (!measuring)
        Screen_Fill(Colours().view_bkcolor, (int)vp->rect_left, (int)vp->rect_top,
                    (int)vp->rect_right, (int)vp->rect_bottom);
    X11_SetWriteMode(GFX_COPY);
    if (flat && vp->GRID && !measuring) DrawGrid(vp);
    if (vp->AXIS && !measuring) DrawAxes(vp);
    if (vp->CENTER && flat && !measuring) DrawOriginMark(vp);
    if (vp->CAMERA && vp->camera_valid && flat) DrawCameraIcon(vp);
    if (vp->title_on && !measuring)
        Screen_Text(Colours().view_text, (int)vp->rect_left + 5, (int)vp->rect_top + 5,
                    View_Title(vp));
}

int Scene_DrawObjects() { return Traverse(0); }

int Scene_DrawObjectsInterruptible() {
    ViewState& v = g.view;
    int keep = v.interruptible;
    v.interruptible = 1;
    View_BeginInterruptible();
    int done = Traverse(1);
    v.interruptible = keep;
    return done;
}

namespace {

// A redraw, however nested, is one stretch of drawing that the user can stop
// (the pen sets user_interrupt); the outermost call starts and ends it.
void BeginRedraw() {
    ViewState& v = g.view;
    if (v.redraw_depth++ == 0) {
        v.user_interrupt = 0;
        v.redraw_start = X11_Clock();
        v.poll_last = v.redraw_start;
    }
}

void EndRedraw() {
    ViewState& v = g.view;
    if (--v.redraw_depth == 0) v.user_interrupt = 0;
}

void RedrawAll() {
    ViewState& v = g.view;
    Views_StoreActive();
    Screen_Fill(Colours().view_bkcolor, 0, v.area_top, v.area_width - 1, v.area_bottom - 1);
    if (v.Viewport_Layout <= 1) {
        View_Refresh();
        return;
    }
    // Highest slot first, so slot 1 ends up on top where rectangles touch.
    static const int kSlots[8] = {0, 1, 2, 2, 3, 3, 4, 4};
    const int current = v.Current_Viewport;
    int layout = v.Viewport_Layout > 7 ? 7 : v.Viewport_Layout;
    for (int slot = kSlots[layout]; slot >= 1; slot--) {
        v.Active_Viewport = v.Viewports[slot];
        View_Refresh();
        const Viewport& vp = v.Active_Viewport;
        int keep = X11_GetColor();
        X11_SetWriteMode(GFX_COPY);
        X11_SetColor(slot == current ? Colours().view_boarder : Colours().view_fgcolor);
        X11_Rectangle(0, (int)vp.rect_left - 1, (int)vp.rect_top - 1, (int)vp.rect_right + 1,
                      (int)vp.rect_bottom + 1);
        X11_SetColor(keep);
    }
    v.Active_Viewport = v.Viewports[current];
}

}  // namespace

void View_Refresh() {
    BeginRedraw();
    View_Draw(&g.view.Active_Viewport);
    X11_SetWriteMode(GFX_COPY);
    if (!g.view.user_interrupt) Scene_DrawObjects();   // stopped in an earlier viewport
    EndRedraw();
}

void Views_RedrawAll() {
    BeginRedraw();
    RedrawAll();
    EndRedraw();
}

