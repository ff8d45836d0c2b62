// wf_read20a.cpp - the reader of the older fixed-layout version 2.0A.
//
// The blocks are raw in-memory records of a 32-bit x86 build: every field
// that is not a byte or a character array starts on a 4-byte boundary
// (doubles included), pointers are 4 bytes and ignored. The offsets below
// are those of that layout.
//
// The 668-byte viewport blocks are skipped: their layout is the old
// program's own viewport record, which nothing documents field by field, so
// an old file keeps the views that are open and loses only its own.
#include <cstring>

#include "base/message.h"
#include "state.h"
#include "workfile/wf_internal.h"
#include "workfile/wf_io.h"

namespace {

enum {
    OUTPUT_BLOCK = 248,
    LAYER_BLOCK = 72,
    NODE_BLOCK = 40,
    POLY_BLOCK = 84,
    TRIANGLE_BLOCK = 72,
    FACE_BLOCK = 96,
    PRIMITIVE_BLOCK = 152,
    LIGHT_BLOCK = 128,
};

struct IntAt {
    int offset;
    int* (*where)();
};
#define AT(expr) [] { return &(expr); }

const IntAt kOutputInts[] = {
    {56, AT(g.pov.Max_Trace_Level)},     {60, AT(g.pov.Max_Intersections)},
    {64, AT(g.pov.Fog_On)},              {68, AT(g.pov.Background_On)},
    {128, AT(g.render.Palette_Type)},    {132, AT(g.render.Display_Type)},
    {136, AT(g.render.Render_Quality)},  {140, AT(g.render.Antialias_Depth)},
    {144, AT(g.render.Render_Abort)},    {148, AT(g.render.Render_Pause)},
    {152, AT(g.render.Render_Continue)}, {156, AT(g.render.Output_Type)},
    {160, AT(g.render.Render_Display)},  {164, AT(g.render.Render_Width)},
    {168, AT(g.render.Render_Height)},   {172, AT(g.render.Render_Partial)},
    {176, AT(g.render.Start_Row)},       {180, AT(g.render.Start_Col)},
    {184, AT(g.render.End_Row)},         {188, AT(g.render.End_Col)},
    {192, AT(g.render.Buffer_Size)},     {196, AT(g.render.Max_Symbols)},
    {200, AT(g.render.Spare_Int12)},     {204, AT(g.render.Render_Verbose)},
    {208, AT(g.render.Bounding_Threshold)}, {212, AT(g.render.Bounding_On)},
    {216, AT(g.render.Antialias_On)},    {220, AT(g.render.Spare_Int32)},
};

// The 22 settings in file order; nullptr marks one that is skipped.
int* (*const kSettings[22])() = {
    AT(g.pov.Overwrite_Pov),         AT(g.pov.Export_Before_Render),
    AT(g.aids.orthoOn),              AT(g.aids.blipsOn),
    nullptr,                         AT(g.aids.Erase_No_Confirm),
    AT(g.aids.Auto_Seg),             AT(g.aids.Seg_Value),
    nullptr,                         AT(g.aids.Auto_Redraw),
    AT(g.render.Reload_After_Render), AT(g.shade.Shade_Type),
    nullptr,                         nullptr,
    AT(g.aids.coordsMode),           AT(g.aids.Input_Line_Option),
    AT(g.aids.Auto_Regen),           AT(g.scene.Default_No_shadow),
    AT(g.scene.Default_Smooth),      AT(g.render.Write_Render_Bat),
    AT(g.aids.Auto_Deselect),        AT(g.shade.Shade_UseEdge),
};
#undef AT

int ReadOutputBlock(WfIn* f) {
    unsigned char b[OUTPUT_BLOCK];
    if (!Wf_GetRaw(f, b, sizeof b)) return 0;
    Wf_TextAt(g.render.Extra_Options, b, sizeof g.render.Extra_Options - 1);
    for (const IntAt& i : kOutputInts) *i.where() = Wf_Int32At(b + i.offset);
    g.pov.Background_Color = Wf_PointAt(b + 72);
    g.pov.Fog_Color = Wf_PointAt(b + 96);
    g.pov.Fog_Distance = Wf_DoubleAt(b + 120);
    g.render.Antialias_Threshold = Wf_DoubleAt(b + 224);
    g.render.Antialias_Jitter = Wf_DoubleAt(b + 232);
    g.render.Spare_Double34 = Wf_DoubleAt(b + 240);
    return 1;
}

int ReadSettings(WfIn* f) {
    for (auto where : kSettings) {
        int32_t v;
        if (!Wf_GetInt32(f, &v)) return 0;
        if (where) *where() = v;
    }
    Wf_ClampSettings();
    return 1;
}

int ReadLayerBlock(WfIn* f) {
    unsigned char b[LAYER_BLOCK];
    if (!Wf_GetRaw(f, b, sizeof b)) return 0;
    Layer* l = Layer_Append();
    if (!l) {
        Msg_Printf("Out of Memory for Layers!");
        return -1;
    }
    Wf_TextAt(l->name, b, 12);
    Wf_TextAt(l->texture, b + 40, 20);
    int flag = b[61];
    l->on = (flag & 0x80) ? 1 : 0;
    l->csg = (flag & 0x02) ? CSG_MERGE
             : (flag & 0x04) ? CSG_INTERSECTION
             : (flag & 0x08) ? CSG_DIFFERENCE
                             : CSG_UNION;
    l->color = Wf_Int32At(b + 64);
    return 1;
}

void DecodePolyline(const unsigned char* b, PolylineData* p) {
    p->param1 = Wf_PointAt(b + 4);
    p->param2 = Wf_PointAt(b + 28);
    p->angle = Wf_DoubleAt(b + 52);
    p->form = Wf_Int32At(b + 60);
    p->poly_flags = b[64];
    p->segments = Wf_Int32At(b + 68);
    p->size_m = Wf_Int32At(b + 72);
    p->size_n = Wf_Int32At(b + 76);
    p->count = Wf_Int32At(b + 80);
}

void DecodePrimitive(const unsigned char* b, PrimitiveData* p) {
    Wf_TextAt(p->file, b, 12);
    p->translate = Wf_PointAt(b + 16);
    p->size = Wf_PointAt(b + 40);
    p->scale = Wf_PointAt(b + 64);
    p->rotate = Wf_PointAt(b + 88);
    p->prim_aux = Wf_Int32At(b + 112);
    p->hf_type = Wf_Int32At(b + 116);
    p->prim_type = Wf_Int32At(b + 120);
    p->p1 = Wf_DoubleAt(b + 124);
    p->p2 = Wf_DoubleAt(b + 132);
    p->p3 = Wf_DoubleAt(b + 140);
    p->prim_flags = b[148];
    if (p->prim_type == PRIM_CONE) p->rotate.z += 270.0;   // old cones lay on their side
}

void DecodeLight(const unsigned char* b, LightData* l) {
    l->light_flags = b[0];
    l->position = Wf_PointAt(b + 4);
    l->color = Wf_PointAt(b + 28);
    l->light_segments = Wf_Int32At(b + 52);
    l->area_n1 = Wf_Int32At(b + 56);
    l->area_n2 = Wf_Int32At(b + 60);
    l->adaptive = Wf_Int32At(b + 64);
    l->area_height = Wf_DoubleAt(b + 68);
    l->area_width = Wf_DoubleAt(b + 76);
    l->point_at = Wf_PointAt(b + 84);
    l->radius = Wf_DoubleAt(b + 108);
    l->falloff = Wf_DoubleAt(b + 116);
    l->tightness = Wf_Int32At(b + 124);
}

int RecordSize(int kind) {
    switch (kind) {
        case KIND_POLYLINE: return POLY_BLOCK;
        case KIND_TRIANGLE: return TRIANGLE_BLOCK;
        case KIND_3DFACE: return FACE_BLOCK;
        case KIND_PRIMITIVE: return PRIMITIVE_BLOCK;
        case KIND_LIGHT: return LIGHT_BLOCK;
    }
    return 0;
}

// One object after its layer number. 1 read, 0 end of file or a kind with
// no known record size, -1 no memory for a polyline point, -2 no memory for
// another kind of object.
int ReadObject(WfIn* f) {
    int32_t kind;
    unsigned char node[NODE_BLOCK], rec[PRIMITIVE_BLOCK];
    int flags;
    if (!Wf_GetInt32(f, &kind) || !Wf_GetRaw(f, node, sizeof node) || !Wf_GetByte(f, &flags))
        return 0;
    int size = RecordSize(kind);
    if (size == 0 || !Wf_GetRaw(f, rec, size)) return 0;
    char texture[21];
    Wf_TextAt(texture, node, 20);
    switch (kind) {
        case KIND_POLYLINE: {
            PolylineData p = Poly_Default();
            DecodePolyline(rec, &p);
            WfPointList points;
            for (int i = 0; i < p.count; i++) {
                Point3 pt;
                if (!Wf_GetPoint(f, &pt)) {
                    Wf_PointListFree(&points);
                    return 0;
                }
                if (!Wf_PointListAdd(&points, pt)) {
                    Wf_PointListFree(&points);
                    return -1;
                }
            }
            p.points = points.points;
            p.count = points.count;
            int ok = Wf_AddObject(kind, &p, texture, flags);
            Wf_PointListFree(&points);
            return ok ? 1 : -1;
        }
        case KIND_TRIANGLE: {
            TriangleData t;
            for (int i = 0; i < 3; i++) t.corner[i] = Wf_PointAt(rec + 24 * i);
            return Wf_AddObject(kind, &t, texture, flags) ? 1 : -2;
        }
        case KIND_3DFACE: {
            FaceData fc;
            for (int i = 0; i < 4; i++) fc.corner[i] = Wf_PointAt(rec + 24 * i);
            return Wf_AddObject(kind, &fc, texture, flags) ? 1 : -2;
        }
        case KIND_PRIMITIVE: {
            PrimitiveData p = Primitive_Default();
            DecodePrimitive(rec, &p);
            return Wf_AddObject(kind, &p, texture, flags) ? 1 : -2;
        }
        default: {
            LightData l = Light_Default();
            DecodeLight(rec, &l);
            return Wf_AddObject(kind, &l, texture, flags) ? 1 : -2;
        }
    }
}

}  // namespace

int Wf_Read20A(WfIn* f) {
    int32_t layout, current;
    if (!Wf_GetInt32(f, &layout) || !Wf_GetInt32(f, &current)) return 0;
    WfView_ApplyLayout(layout);
    for (int n = 1; n <= 4; n++)
        if (!WfView_Skip20A(f)) return 0;
    WfView_AfterLoad(current >= 1 && current <= 4 ? current : 1);
    if (!ReadOutputBlock(f) || !ReadSettings(f)) return 0;
    int32_t words[5];
    for (int32_t& w : words)
        if (!Wf_GetInt32(f, &w)) return 0;
    for (int32_t i = 0; i < words[3]; i++) {
        int r = ReadLayerBlock(f);
        if (r != 1) return 0;
    }
    const int layers = Layer_Count();
    for (;;) {
        int32_t layer;
        if (!Wf_GetInt32(f, &layer)) return 0;
        if (layer == -1) break;
        if (layer < 0 || layer >= layers) g.scene.Current_Layer = g.scene.First_Layer;
        else Layer_SelectByIndex(layer + 1);
        int r = ReadObject(f);
        if (r == -1) Msg_Printf("\nNot enough memory for Polylines!");
        if (r == -2) Msg_Printf("\nOut of Memory for Objects!");
        if (r != 1) return 0;
    }
    WfView_RedrawAll();
    return 1;
}
