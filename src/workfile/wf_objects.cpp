// wf_objects.cpp - section 5 of a 2.10 work file: the objects of one layer,
// oldest first, each kind record as keyed fields.
//
// The kind records are described by tables (key, type, offset), shared by the
// writer and the reader. A polyline's points (key 10) are the one field with
// a length; the reader collects them in a temporary list and the kind's
// constructor copies them into an exact-size block.
#include <cstddef>
#include <cstring>

#include "base/message.h"
#include "scene/mem.h"
#include "state.h"
#include "workfile/wf_internal.h"
#include "workfile/wf_io.h"

namespace {

struct KindField {
    int key;
    WfType type;
    size_t offset;
    size_t size;   // WF_TEXT only
};

#define F(rec, key, type, field) {key, type, offsetof(rec, field), sizeof(rec::field)}

const KindField kPolyFields[] = {
    F(PolylineData, 1, WF_INT, form),
    F(PolylineData, 2, WF_POINT, param1),
    F(PolylineData, 3, WF_POINT, param2),
    F(PolylineData, 4, WF_DOUBLE, angle),
    F(PolylineData, 5, WF_BYTE, poly_flags),
    F(PolylineData, 6, WF_INT, segments),
    F(PolylineData, 7, WF_BYTE, size_m),   // one byte in the file, int32 in memory
    F(PolylineData, 8, WF_BYTE, size_n),
    F(PolylineData, 9, WF_INT, count),
};
const int KEY_POLY_POINTS = 10;

// Corner n of a triangle or face is key n + 1.
#define CORNER(rec, n) {(n) + 1, WF_POINT, offsetof(rec, corner) + (n) * sizeof(Point3), 0}

const KindField kTriangleFields[] = {CORNER(TriangleData, 0), CORNER(TriangleData, 1),
                                     CORNER(TriangleData, 2)};

const KindField kFaceFields[] = {CORNER(FaceData, 0), CORNER(FaceData, 1), CORNER(FaceData, 2),
                                 CORNER(FaceData, 3)};

const KindField kPrimitiveFields[] = {
    F(PrimitiveData, 1, WF_TEXT, file),
    F(PrimitiveData, 2, WF_INT, hf_type),
    F(PrimitiveData, 3, WF_POINT, translate),
    F(PrimitiveData, 4, WF_POINT, size),
    F(PrimitiveData, 5, WF_POINT, scale),
    F(PrimitiveData, 6, WF_POINT, rotate),
    F(PrimitiveData, 7, WF_INT, prim_aux),
    F(PrimitiveData, 8, WF_INT, prim_type),
    F(PrimitiveData, 9, WF_DOUBLE, p1),
    F(PrimitiveData, 10, WF_DOUBLE, p2),
    F(PrimitiveData, 11, WF_DOUBLE, p3),
    F(PrimitiveData, 12, WF_BYTE, prim_flags),
};

const KindField kLightFields[] = {
    F(LightData, 1, WF_BYTE, light_flags),
    F(LightData, 2, WF_POINT, position),
    F(LightData, 3, WF_POINT, color),
    F(LightData, 4, WF_INT, light_segments),
    F(LightData, 5, WF_INT, area_n1),
    F(LightData, 6, WF_INT, area_n2),
    F(LightData, 7, WF_DOUBLE, area_height),
    F(LightData, 8, WF_DOUBLE, area_width),
    F(LightData, 9, WF_INT, adaptive),
    F(LightData, 10, WF_POINT, point_at),
    F(LightData, 11, WF_DOUBLE, radius),
    F(LightData, 12, WF_DOUBLE, falloff),
    F(LightData, 13, WF_INT, tightness),
};

#undef F
#undef CORNER

struct KindTable {
    const KindField* fields;
    size_t count;
};

#define TABLE(t) {t, sizeof t / sizeof t[0]}
const KindTable kKinds[6] = {
    {nullptr, 0},   TABLE(kPolyFields),      TABLE(kTriangleFields),
    TABLE(kFaceFields), TABLE(kPrimitiveFields), TABLE(kLightFields),
};
#undef TABLE

const KindTable* TableOf(int kind) {
    return kind >= KIND_POLYLINE && kind <= KIND_LIGHT ? &kKinds[kind] : nullptr;
}

const KindField* FindKindField(const KindTable* t, int key) {
    for (size_t i = 0; i < t->count; i++)
        if (t->fields[i].key == key) return &t->fields[i];
    return nullptr;
}

// Largest kind record, so that one stack buffer holds any of them.
union AnyRecord {
    PolylineData poly;
    TriangleData triangle;
    FaceData face;
    PrimitiveData primitive;
    LightData light;
};

void ClearRecord(AnyRecord* rec, int kind) {
    memset(rec, 0, sizeof *rec);
    if (kind == KIND_POLYLINE) rec->poly = Poly_Default();
    if (kind == KIND_PRIMITIVE) rec->primitive = Primitive_Default();
    if (kind == KIND_LIGHT) rec->light = Light_Default();
}

int WriteRecord(WfOut* f, const Object* obj) {
    const KindTable* t = TableOf(obj->kind);
    if (!t) return 1;   // not a kind the format knows: empty field list
    const char* base = static_cast<const char*>(obj->data);
    for (size_t i = 0; i < t->count; i++) {
        const KindField& fld = t->fields[i];
        Wf_PutByte(f, fld.key);
        Wf_PutField(f, fld.type, base + fld.offset, fld.size);
    }
    if (obj->kind == KIND_POLYLINE) {
        const PolylineData* poly = static_cast<const PolylineData*>(obj->data);
        Wf_PutByte(f, KEY_POLY_POINTS);
        for (int i = 0; i < poly->count; i++) Wf_PutPoint(f, poly->points[i]);
    }
    return !g.workfile.Write_Error;
}

// Reads the kind's keyed fields up to key 101 into rec. For a polyline, key
// 10 reads `count` points into `points`. Returns 1 at key 101, 0 at end of
// file, -1 when a point could not be stored.
int ReadRecord(WfIn* f, int kind, AnyRecord* rec, WfPointList* points) {
    const KindTable* t = TableOf(kind);
    char* base = reinterpret_cast<char*>(rec);
    for (;;) {
        int key;
        if (!Wf_GetByte(f, &key)) return 0;
        key &= 0xFF;
        if (key == OBJ_FIELDS_END) return 1;
        if (kind == KIND_POLYLINE && key == KEY_POLY_POINTS) {
            Wf_PointListFree(points);
            for (int i = 0; i < rec->poly.count; i++) {
                Point3 p;
                if (!Wf_GetPoint(f, &p)) return 0;
                if (!Wf_PointListAdd(points, p)) return -1;
            }
            continue;
        }
        const KindField* fld = t ? FindKindField(t, key) : nullptr;
        if (!fld) continue;   // unknown key: a single byte with no value
        if (!Wf_GetField(f, fld->type, base + fld->offset, fld->size)) return 0;
    }
}

}  // namespace

int Wf_PointListAdd(WfPointList* list, const Point3& p) {
    if (list->count == list->capacity) {
        // Doubling keeps a long polyline linear to read; the list grows only
        // with points actually read, so a lying count cannot ask for much.
        if (list->capacity > (1 << 28)) return 0;
        int cap = list->capacity ? list->capacity * 2 : 16;
        void* grown = Mem_Realloc(list->points, sizeof(Point3) * static_cast<size_t>(cap));
        if (!grown) return 0;
        list->points = static_cast<Point3*>(grown);
        list->capacity = cap;
    }
    list->points[list->count++] = p;
    return 1;
}

void Wf_PointListFree(WfPointList* list) {
    Mem_Free(list->points);
    *list = WfPointList{};
}

int Wf_PutField(WfOut* f, WfType type, const void* p, size_t size) {
    switch (type) {
        case WF_BYTE: return Wf_PutByte(f, *static_cast<const u8*>(p));
        case WF_INT: return Wf_PutInt32(f, *static_cast<const int32_t*>(p));
        case WF_DOUBLE: return Wf_PutDouble(f, *static_cast<const double*>(p));
        case WF_POINT: return Wf_PutPoint(f, *static_cast<const Point3*>(p));
        case WF_TEXT: return Wf_PutRaw(f, p, size);
    }
    return 0;
}

int Wf_GetField(WfIn* f, WfType type, void* p, size_t size) {
    switch (type) {
        case WF_BYTE: {
            // Read back sign-extended; a byte into an int32 field (the mesh
            // sizes) keeps the sign, so 200 comes back as -56.
            int b;
            if (!Wf_GetByte(f, &b)) return 0;
            if (size == 1) *static_cast<u8*>(p) = static_cast<u8>(b);
            else *static_cast<int32_t*>(p) = b;
            return 1;
        }
        case WF_INT: return Wf_GetInt32(f, static_cast<int32_t*>(p));
        case WF_DOUBLE: return Wf_GetDouble(f, static_cast<double*>(p));
        case WF_POINT: return Wf_GetPoint(f, static_cast<Point3*>(p));
        case WF_TEXT: {
            if (!Wf_GetRaw(f, p, size)) return 0;
            static_cast<char*>(p)[size - 1] = '\0';
            return 1;
        }
    }
    return 0;
}

int Wf_WriteObjects(WfOut* f, const Layer* layer) {
    Wf_PutByte(f, TAG_OBJECTS);
    const Object* obj = layer->first_object;
    while (obj->next) obj = obj->next;   // oldest
    for (;; obj = obj->prev) {
        Wf_PutByte(f, OBJ_KIND);
        Wf_PutByte(f, obj->kind);
        Wf_PutByte(f, OBJ_TEXTURE);
        Wf_PutRaw(f, obj->texture, sizeof obj->texture);
        Wf_PutByte(f, OBJ_FLAGS);
        Wf_PutByte(f, obj->flags);
        Wf_PutByte(f, OBJ_FIELDS);
        WriteRecord(f, obj);
        Wf_PutByte(f, OBJ_FIELDS_END);
        if (obj == layer->first_object) break;
    }
    return Wf_PutByte(f, OBJ_SECTION_END);
}

int Wf_AddObject(int kind, void* record, const char* texture, int flags) {
    if (!g.scene.Current_Layer) return 1;   // objects before any layer: nowhere to go
    Object* obj = nullptr;
    switch (kind) {
        case KIND_POLYLINE: obj = Poly_AddToScene(static_cast<PolylineData*>(record)); break;
        case KIND_TRIANGLE: obj = Add_Triangle(static_cast<TriangleData*>(record)); break;
        case KIND_3DFACE: obj = Add_Face(static_cast<FaceData*>(record)); break;
        case KIND_PRIMITIVE: obj = Add_Primitive(static_cast<PrimitiveData*>(record)); break;
        case KIND_LIGHT: obj = Add_Light(static_cast<LightData*>(record)); break;
    }
    if (!obj) return 0;
    memcpy(obj->texture, texture, sizeof obj->texture);   // all of it, as it was written
    obj->flags = static_cast<u8>(flags);
    return 1;
}

int Wf_ReadObjects(WfIn* f) {
    int kind = 0, flags = 0;
    char texture[21] = "";
    for (;;) {
        int key;
        if (!Wf_GetByte(f, &key)) return 0;
        switch (key & 0xFF) {
            case OBJ_SECTION_END: return 1;
            case OBJ_KIND:
                if (!Wf_GetByte(f, &kind)) return 0;
                break;
            case OBJ_TEXTURE:
                if (!Wf_GetField(f, WF_TEXT, texture, sizeof texture)) return 0;
                break;
            case OBJ_FLAGS:
                if (!Wf_GetByte(f, &flags)) return 0;
                break;
            case 3: case 4: case 5: {   // older object-level points, ignored
                Point3 ignored;
                if (!Wf_GetPoint(f, &ignored)) return 0;
                break;
            }
            case OBJ_FIELDS: {
                AnyRecord rec;
                ClearRecord(&rec, kind);
                WfPointList points;
                int r = ReadRecord(f, kind, &rec, &points);
                if (r == 1 && kind == KIND_POLYLINE) {
                    rec.poly.points = points.points;
                    rec.poly.count = points.count;
                }
                // A polyline whose exact-size copy fails counts as a point
                // that could not be stored; another kind that can't be
                // stored stops the reading just as well, and says so.
                int stored = r != 1 || !TableOf(kind) || Wf_AddObject(kind, &rec, texture, flags);
                if (!stored) r = kind == KIND_POLYLINE ? -1 : -2;
                Wf_PointListFree(&points);
                if (r == -1) {
                    Msg_Printf("\nNot enough memory for Polylines!");
                    return 0;
                }
                if (r == -2) {
                    Msg_Printf("\nOut of Memory for Objects!");
                    return 0;
                }
                if (r == 0) return 0;
                break;
            }
            default: break;   // unknown key: a single byte with no value
        }
    }
}
