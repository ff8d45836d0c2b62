// object.cpp - object nodes, kind records and point lists.
#include "scene/object.h"

#include <cstring>

#include "gfx/gfx.h"
#include "scene/layers.h"
#include "scene/mem.h"
#include "state.h"

namespace {

size_t RecordSize(int kind) {
    switch (kind) {
        case KIND_POLYLINE: return sizeof(PolylineData);
        case KIND_TRIANGLE: return sizeof(TriangleData);
        case KIND_3DFACE: return sizeof(FaceData);
        case KIND_PRIMITIVE: return sizeof(PrimitiveData);
        case KIND_LIGHT: return sizeof(LightData);
    }
    return 0;
}

// Heap copy of a record of `kind`; a polyline gets its own point array.
void* CopyRecord(const void* rec, int kind) {
    size_t size = RecordSize(kind);
    if (size == 0) return nullptr;
    void* copy = Mem_Alloc(size);
    if (!copy) return nullptr;
    memcpy(copy, rec, size);
    if (kind == KIND_POLYLINE) {
        PolylineData* poly = static_cast<PolylineData*>(copy);
        const PolylineData* src = static_cast<const PolylineData*>(rec);
        poly->points = nullptr;
        if (src->count > 0 && src->points) {
            poly->points = static_cast<Point3*>(Mem_Alloc(sizeof(Point3) * src->count));
            if (!poly->points) {
                Mem_Free(copy);
                return nullptr;
            }
            memcpy(poly->points, src->points, sizeof(Point3) * src->count);
        } else {
            poly->count = 0;
        }
    }
    return copy;
}

void FreeRecord(void* rec, int kind) {
    if (!rec) return;
    if (kind == KIND_POLYLINE) Mem_Free(static_cast<PolylineData*>(rec)->points);
    Mem_Free(rec);
}

Object* AddCopy(const void* rec, int kind) {
    void* data = CopyRecord(rec, kind);
    if (!data) return nullptr;
    Object* obj = Object_Add(data, kind);
    if (!obj) FreeRecord(data, kind);
    return obj;
}

}  // namespace

PolylineData Poly_Default() {
    PolylineData p{};
    p.form = FORM_POLYLINE;
    p.segments = 8;
    p.size_m = 16;
    p.size_n = 16;
    return p;
}

PrimitiveData Primitive_Default() {
    PrimitiveData p{};
    p.scale = {1, 1, 1};
    p.prim_aux = 8;
    return p;
}

LightData Light_Default() {
    LightData l{};
    l.color = {1, 1, 1};
    l.light_segments = 16;
    l.area_n1 = l.area_n2 = 4;
    l.area_height = l.area_width = 1.0;
    l.radius = 35;
    return l;
}

Object* Object_Add(void* data, int kind) {
    Layer* layer = g.scene.Current_Layer;
    if (!layer) return nullptr;
    Object* obj = static_cast<Object*>(Mem_Alloc(sizeof(Object)));
    if (!obj) return nullptr;
    memset(obj->texture, 0, sizeof obj->texture);   // the work file writes the whole field
    obj->prev = nullptr;
    obj->next = layer->first_object;
    obj->data = data;
    obj->selected = 0;
    obj->kind = static_cast<u8>(kind);
    obj->flags = static_cast<u8>((g.scene.Default_Smooth ? Smooth_triangle : 0) |
                                 (g.scene.Default_No_shadow ? No_shadow : 0));
    if (layer->first_object) layer->first_object->prev = obj;
    layer->first_object = obj;
    X11_SetColor(layer->color);
    return obj;
}

Object* Poly_AddToScene(const PolylineData* poly) { return AddCopy(poly, KIND_POLYLINE); }
Object* Add_Triangle(const TriangleData* rec) { return AddCopy(rec, KIND_TRIANGLE); }
Object* Add_Face(const FaceData* rec) { return AddCopy(rec, KIND_3DFACE); }
Object* Add_Primitive(const PrimitiveData* rec) { return AddCopy(rec, KIND_PRIMITIVE); }
Object* Add_Light(const LightData* rec) { return AddCopy(rec, KIND_LIGHT); }

void Object_Unlink(Object* obj, Layer* layer) {
    if (obj->prev) obj->prev->next = obj->next;
    if (obj->next) obj->next->prev = obj->prev;
    if (layer->first_object == obj) layer->first_object = obj->next;
    Mem_Free(obj);
}

void Object_Free(Object* obj) {
    if (!obj) return;
    FreeRecord(obj->data, obj->kind);
    Mem_Free(obj);
}

void Object_LinkHead(Object* obj, Layer* layer) {
    obj->prev = nullptr;
    obj->next = layer->first_object;
    if (layer->first_object) layer->first_object->prev = obj;
    layer->first_object = obj;
}

Object* Object_Copy(const Object* obj) {
    void* data = CopyRecord(obj->data, obj->kind);
    if (!data) return nullptr;
    Object* copy = static_cast<Object*>(Mem_Alloc(sizeof(Object)));
    if (!copy) {
        FreeRecord(data, obj->kind);
        return nullptr;
    }
    *copy = *obj;
    copy->data = data;
    copy->prev = copy->next = nullptr;
    return copy;
}

int Poly_InsertPoint(PolylineData* poly, Point3 p, int index) {
    if (index < 0 || index > poly->count) return 0;
    Point3* grown = static_cast<Point3*>(
        Mem_Realloc(poly->points, sizeof(Point3) * (static_cast<size_t>(poly->count) + 1)));
    if (!grown) return 0;
    for (int i = poly->count; i > index; i--) grown[i] = grown[i - 1];
    grown[index] = p;
    poly->points = grown;
    poly->count++;
    return 1;
}

int Poly_DeletePoint(PolylineData* poly, int index) {
    if (index < 0 || index >= poly->count) return 0;
    if (poly->count == 1) {
        Mem_Free(poly->points);
        poly->points = nullptr;
        poly->count = 0;
        return 1;
    }
    Point3* smaller = static_cast<Point3*>(Mem_Alloc(sizeof(Point3) * (poly->count - 1)));
    if (!smaller) return 0;
    for (int i = 0, j = 0; i < poly->count; i++)
        if (i != index) smaller[j++] = poly->points[i];
    Mem_Free(poly->points);
    poly->points = smaller;
    poly->count--;
    return 1;
}
