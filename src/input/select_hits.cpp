// select_hits.cpp - one hit pass of the selection: every object is drawn
// with the active viewport's pen in hit-test mode, and those whose drawing
// enters the rectangle change their mark.
//
// Layers are walked as the redraw walks them (a layer that is off hides its
// nested layers; an instance is drawn inside the layer that instances it),
// with the same layer transforms, so an object is hit where it is seen.
// Marks change during the pass; the objects are redrawn afterwards, when
// the pen draws again.
#include <cmath>
#include <utility>
#include <vector>

#include "input/input.h"
#include "model/geometry.h"
#include "model/selection.h"
#include "scene/layers.h"
#include "state.h"
#include "view/view_draw.h"
#include "view/viewport.h"

namespace {

const int INSTANCE_DEPTH_MAX = 8;   // as deep as the redraw follows instances

struct Pass {
    SelectRequest* r;
    bool stop = false;
    std::vector<std::pair<Object*, Layer*>> changed;   // to redraw after the pass
};

bool Candidate(const Object* o, int remove) { return remove ? o->selected : !o->selected; }

void Mark(Pass& p, Object* o, Layer* layer) {
    const u8 mark = p.r->remove ? 0 : 1;
    if (o->selected == mark) return;
    o->selected = mark;
    g.scene.Selected_Count += mark ? 1 : -1;
    p.changed.push_back({o, layer});
}

void TestObjects(Pass& p, Layer* layer) {
    for (Object* o = layer->first_object; o && !p.stop; o = o->next) {
        if (!Candidate(o, p.r->remove) || !Object_Draw(o)) continue;
        p.r->found++;
        Mark(p, o, layer);
        if (p.r->by_layer && !g.selection.Select_Single)
            for (Object* q = layer->first_object; q; q = q->next) Mark(p, q, layer);
        if (p.r->first_only) p.stop = true;
    }
}

Layer* SkipFamily(Layer* l) {
    Layer* n = l->next;
    while (n && n->level > l->level) n = n->next;
    return n;
}

// An `on` layer with its instance and nested layers; returns the layer after its family.
Layer* TestLayer(Pass& p, Layer* layer, int depth) {
    View_PushLayerTransform(layer);
    TestObjects(p, layer);
    Layer* inst = layer->instance;
    if (!p.stop && inst && inst->on && depth < INSTANCE_DEPTH_MAX) TestLayer(p, inst, depth + 1);
    Layer* n = layer->next;
    while (!p.stop && n && n->level > layer->level) {
        if (!n->on) {
            n = SkipFamily(n);
            continue;
        }
        n = TestLayer(p, n, depth);
    }
    View_PopLayerTransform();
    return n;
}

}  // namespace

SelectRequest Select_Around(Point3 p, int half) {
    Viewport* vp = &g.view.Active_Viewport;
    View_Project(vp, p);
    SelectRequest r{};
    const double x = vp->screen_x, y = vp->screen_y;
    const bool finite = std::isfinite(x) && std::isfinite(y) && std::fabs(x) < 1e7 && std::fabs(y) < 1e7;
    r.x1 = finite ? (int)x - half : -1;   // a point off every screen hits nothing
    r.y1 = finite ? (int)y - half : -1;
    r.x2 = finite ? (int)x + half : -2;
    r.y2 = finite ? (int)y + half : -2;
    return r;
}

int Select_Hits(SelectRequest* r) {
    Viewport* vp = &g.view.Active_Viewport;
    if (r->x1 > r->x2) std::swap(r->x1, r->x2);
    if (r->y1 > r->y2) std::swap(r->y1, r->y2);
    r->found = 0;
    const int keepMode = vp->line_mode, keepOutput = g.output.Output_Mode, keepDepth = g.view.xform_depth;
    int keepBox[4];
    for (int i = 0; i < 4; i++) keepBox[i] = vp->pick_box[i];
    vp->line_mode = LINE_HIT_TEST;
    vp->pick_box[0] = r->x1;
    vp->pick_box[1] = r->y1;
    vp->pick_box[2] = r->x2;
    vp->pick_box[3] = r->y2;
    g.output.Output_Mode = OUTPUT_SCREEN;
    g.view.xform_depth = 0;

    Pass p;
    p.r = r;
    for (Layer* l = g.scene.First_Layer; l && !p.stop;) {
        if (!l->on) {
            l = SkipFamily(l);
            continue;
        }
        l = TestLayer(p, l, 0);
    }

    g.view.xform_depth = keepDepth;
    vp->line_mode = keepMode;
    for (int i = 0; i < 4; i++) vp->pick_box[i] = keepBox[i];
    g.output.Output_Mode = keepOutput;
    for (const auto& [o, layer] : p.changed) Selection_DrawObject(o, layer, Selection_ColourOf(o, layer));
    r->total = g.scene.Selected_Count;
    return r->found;
}
