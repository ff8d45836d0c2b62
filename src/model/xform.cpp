// xform.cpp - the transform engine and the per-kind modifiers.
//
// Every change to an object is drawn as erase (background colour), change,
// draw again (highlighted while still selected). Objects of layers that are
// off are never visited, so they keep their marks.
#include "model/xform.h"

#include "base/message.h"
#include "model/output.h"
#include "model/selection.h"
#include "scene/layers.h"
#include "scene/mem.h"
#include "state.h"

namespace {


void TransformAll(Point3* p, int n) {
    for (int i = 0; i < n; i++) p[i] = Transform_Point(p[i]);
}

// Forms whose parameters are points in space (the others hold sizes).
bool ParamsArePoints(int form) {
    return form == FORM_EXTRUSION || form == FORM_REVOLUTION || form == FORM_CONE_SWEEP;
}

int ModifyPolyline(PolylineData* poly) {
    if (poly->points && poly->count > 0) TransformAll(poly->points, poly->count);
    if (ParamsArePoints(poly->form)) {
        poly->param1 = Transform_Point(poly->param1);
        poly->param2 = Transform_Point(poly->param2);
    }
    return 1;
}

int ModifyTriangle(TriangleData* t) {
    TransformAll(t->corner, 3);
    return 1;
}

int ModifyFace(FaceData* f) {
    TransformAll(f->corner, 4);
    return 1;
}

int ModifyPrimitive(PrimitiveData* p) {
    p->translate = Transform_Point(p->translate);
    return 1;
}

int ModifyLight(LightData* l) {
    l->position = Transform_Point(l->position);
    l->point_at = Transform_Point(l->point_at);
    return 1;
}

int Modify(Object* obj) {
    switch (obj->kind) {
        case KIND_POLYLINE: return ModifyPolyline((PolylineData*)obj->data);
        case KIND_TRIANGLE: return ModifyTriangle((TriangleData*)obj->data);
        case KIND_3DFACE: return ModifyFace((FaceData*)obj->data);
        case KIND_PRIMITIVE: return ModifyPrimitive((PrimitiveData*)obj->data);
        case KIND_LIGHT: return ModifyLight((LightData*)obj->data);
        default: return 0;
    }
}

void Deselect(Object* obj) {
    if (!obj->selected) return;
    obj->selected = 0;
    g.scene.Selected_Count--;
}

// Unlinks obj from layer and frees its record, points and node.
void EraseObject(Object* obj, Layer* layer) {
    void* data = obj->data;
    int kind = obj->kind;
    Object_Unlink(obj, layer);
    if (data && kind == KIND_POLYLINE) Mem_Free(((PolylineData*)data)->points);
    Mem_Free(data);
}

// A changed copy of obj, not selected, as the newest object of layer;
// 0 (nothing added) when memory or the modifier fails.
int CopyObject(const Object* obj, Layer* layer, int colour) {
    Object* copy = Object_Copy(obj);
    if (!copy) return 0;
    copy->selected = 0;
    if (!Modify(copy)) {
        Object_Free(copy);
        return 0;
    }
    Object_LinkHead(copy, layer);
    Selection_DrawObject(copy, colour);
    return 1;
}

}  // namespace

Point3 Transform_Point(Point3 p) {
    const XformState& x = g.xform;
    switch (x.xform_mode) {
        case XFORM_COPY:
        case XFORM_MOVE: return Vec_Add(p, x.xform_delta);
        default: return p;
    }
}

int Xform_Run(Point3 base, Point3 second, int mode) {
    Msg_Printf("\nPlease wait...");
    XformState& x = g.xform;
    x.xform_base = base;
    x.xform_second = second;
    x.xform_delta = Vec_Sub(second, base);
    x.xform_mode = mode;
    if (g.scene.Selected_Count <= 0) return 1;

    const int background = g.config.colors.view_bkcolor;
    const int highlight = g.config.colors.general_color;
    int failed = 0;   // a modifier failed: the rest is only deselected
    for (Layer* layer = g.scene.First_Layer; layer; layer = layer->next) {
        if (!layer->on) continue;
        const int colour = Selection_LayerColour(layer);
        Object* next;
        for (Object* obj = layer->first_object; obj; obj = next) {
            next = obj->next;
            if (!obj->selected) continue;
            if (failed) {
                Deselect(obj);
                Selection_DrawObject(obj, colour);
                continue;
            }
            if (g.aids.Auto_Deselect) Deselect(obj);
            if (mode == XFORM_COPY) {   // the original stays; a changed copy joins its layer
                Selection_DrawObject(obj, obj->selected ? highlight : colour);
                if (!CopyObject(obj, layer, colour)) {
                    failed = 1;
                    Deselect(obj);
                    Selection_DrawObject(obj, colour);
                }
                continue;
            }
            Selection_DrawObject(obj, background);
            if (mode == XFORM_ERASE) {
                Deselect(obj);
                EraseObject(obj, layer);
                continue;
            }
            if (!Modify(obj)) {
                failed = 1;
                Deselect(obj);
            }
            Selection_DrawObject(obj, obj->selected ? highlight : colour);
        }
    }
    if (g.aids.Auto_Redraw) Output_RedrawScreen();
    return 1;
}
