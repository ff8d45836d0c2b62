// dxf_read.cpp - reading DXF drawings: header variables, the layer table,
// 3DFACE entities and POLYLINE entities (plain, meshes, polyface meshes).
//
// A line-oriented scanner written against the files this program and common
// CAD programs write; it does not validate. Every loop ends at the end of
// the file, and every count read from the file only bounds a loop that also
// consumes lines, so no input can make it run longer than the file.
#include <cctype>
#include <cstring>
#include <strings.h>

#include "base/message.h"
#include "exchange/exchange.h"
#include "exchange/exchange_internal.h"
#include "input/settings.h"
#include "scene/layers.h"
#include "scene/mem.h"
#include "state.h"
#include "view/viewport.h"

namespace {

enum { DXF_LINE = 256 };   // at most 255 characters a line

struct Reader {
    FILE* f;
    char line[DXF_LINE];
    int out_of_memory = 0;   // an object could not be stored: reading has stopped
};

// After an object that could not be stored nothing more is read, so every
// loop of the reader ends there.
int Next(Reader& r) { return !r.out_of_memory && Exchange_ReadLine(r.f, r.line, sizeof r.line); }

// Notes whether what the reader made could be stored; says so once when not.
void Stored(Reader& r, bool ok) {
    if (ok || r.out_of_memory) return;
    Msg_Printf("Out Of Memory");
    r.out_of_memory = 1;
}

// The line without its surrounding blanks.
const char* Trimmed(Reader& r, char* out, size_t size) {
    const char* s = r.line;
    while (*s == ' ' || *s == '\t') s++;
    size_t n = strlen(s);
    while (n > 0 && (s[n - 1] == ' ' || s[n - 1] == '\t')) n--;
    if (n >= size) n = size - 1;
    memcpy(out, s, n);
    out[n] = '\0';
    return out;
}

// The line as a whole word, case ignored.
bool Is(Reader& r, const char* word) {
    char t[DXF_LINE];
    return strcasecmp(Trimmed(r, t, sizeof t), word) == 0;
}

// A group-code line; 0 at the end of the file.
int NextCode(Reader& r, int* code) {
    if (!Next(r)) return 0;
    *code = Exchange_Int(r.line);
    return 1;
}

// --- header ---

void SetInt(const char* name, const char* text) {
    int v = Exchange_Int(text);
    Var_SetInt(name, &v);
}

// A positive finite value into a double setting (spacings and view size).
void SetSize(const char* name, const char* text) {
    double v;
    if (Exchange_Double(text, &v) && v > 0) Var_SetDouble(name, &v);
}

// The working plane moved to elevation e along the viewing axis.
void SetElevation(const char* text) {
    double e;
    if (!Exchange_Double(text, &e)) return;
    const Viewport& vp = g.view.Active_Viewport;
    Point3 c = View_GetCentre(&vp);
    double a = c.x * vp.axis_h.x + c.y * vp.axis_h.y + c.z * vp.axis_h.z;
    double b = c.x * vp.axis_v.x + c.y * vp.axis_v.y + c.z * vp.axis_v.z;
    Point3 p{a * vp.axis_h.x + b * vp.axis_v.x + e * vp.axis_d.x,
             a * vp.axis_h.y + b * vp.axis_v.y + e * vp.axis_d.y,
             a * vp.axis_h.z + b * vp.axis_v.z + e * vp.axis_d.z};
    Var_SetPoint("ELEVATION", &p);
}

struct HeaderVar {
    const char* name;
    int values;                                  // 1, or 2 for the unit pairs
    void (*take)(const char* v1, const char* v2);
};

const HeaderVar kHeaderVars[] = {
    {"$BLIPMODE", 1, [](const char* v, const char*) { SetInt("BLIPS", v); }},
    {"$COORDS", 1, [](const char* v, const char*) { SetInt("COORDS_MODE", v); }},
    {"$ELEVATION", 1, [](const char* v, const char*) { SetElevation(v); }},
    {"$ORTHOMODE", 1, [](const char* v, const char*) { SetInt("ORTHO", v); }},
    {"$SHADEDGE", 1,
     [](const char* v, const char*) {
         int t = Exchange_Int(v);
         g.shade.Shade_Type = t < 0 ? 0 : t > 3 ? 3 : t;
     }},
    {"$SHADEDIF", 1, [](const char* v, const char*) { g.exchange.Shade_Dif = Exchange_Int(v); }},
    {"$GRIDMODE", 1, [](const char* v, const char*) { SetInt("GRID", v); }},
    {"$GRIDUNIT", 2,
     [](const char* x, const char* y) {
         SetSize("GRIDX", x);
         SetSize("GRIDY", y);
     }},
    {"$SNAPMODE", 1, [](const char* v, const char*) { SetInt("SNAP", v); }},
    {"$SNAPUNIT", 2,
     [](const char* x, const char* y) {
         SetSize("SNAPX", x);
         SetSize("SNAPY", y);
     }},
    {"$VIEWCTR", 2, [](const char*, const char*) {}},
    {"$VIEWSIZE", 1, [](const char* v, const char*) { SetSize("AREA", v); }},
};

void HeaderScan(Reader& r) {
    char v1[DXF_LINE], v2[DXF_LINE];
    while (Next(r) && !Is(r, "ENDSEC")) {
        for (const HeaderVar& var : kHeaderVars) {
            if (!Is(r, var.name)) continue;
            if (!Next(r) || !Next(r)) return;
            Trimmed(r, v1, sizeof v1);
            v2[0] = '\0';
            if (var.values == 2) {
                if (!Next(r) || !Next(r)) return;
                Trimmed(r, v2, sizeof v2);
            }
            var.take(v1, v2);
            break;
        }
    }
}

// --- tables ---

void LayerEntry(Reader& r) {
    int made = 0;
    int code;
    char name[DXF_LINE];
    while (NextCode(r, &code) && code != 0) {
        if (!Next(r)) return;
        if (code == 2) {
            made = Layer_Make(Trimmed(r, name, sizeof name));
        } else if (code == 62 && made && g.scene.Current_Layer) {
            int c = Exchange_Int(r.line);
            int magnitude = c < 0 ? -c : c;
            g.scene.Current_Layer->color = magnitude > 255 ? 255 : magnitude;
            g.scene.Current_Layer->on = c >= 0;
        }
        // 6 (the linetype) and every other group: value skipped
    }
}

// The entries of the layer table; 1 when its ENDTAB was met (a count larger
// than the table is not followed past it).
int LayerTable(Reader& r) {
    if (!Next(r) || !Next(r)) return 0;
    int n = Exchange_Int(r.line);
    if (!Next(r)) return 0;
    for (int i = 0; i < n; i++) {
        if (!Next(r)) return 0;   // the entry's "LAYER" line
        if (Is(r, "ENDTAB")) return 1;
        LayerEntry(r);
    }
    return 0;
}

void TableScan(Reader& r) {
    for (;;) {
        if (!Next(r) || !Next(r)) return;
        if (Is(r, "ENDSEC")) return;
        if (!Is(r, "TABLE")) continue;
        if (!Next(r)) return;
        while (Next(r) && !Is(r, "ENDTAB"))
            if (Is(r, "LAYER") && LayerTable(r)) break;
    }
}

// --- entities ---

// Group codes 10..13, 20..23, 30..33 into corner[code % 10].
bool CornerGroup(int code, const char* text, Point3* corner, int corners) {
    int axis = code / 10, k = code % 10;
    if (axis < 1 || axis > 3 || k >= corners) return false;
    double v;
    if (!Exchange_Double(text, &v)) return true;   // not a number: the value stays
    double* xyz[3] = {&corner[k].x, &corner[k].y, &corner[k].z};
    *xyz[axis - 1] = v;
    return true;
}

void FaceReader(Reader& r) {
    FaceData face{};
    int code;
    char name[DXF_LINE];
    while (NextCode(r, &code) && code != 0) {
        if (!Next(r)) break;
        if (code == 8) Layer_Find(Trimmed(r, name, sizeof name));
        else if (code >= 10 && code <= 33) CornerGroup(code, r.line, face.corner, 4);
    }
    Stored(r, Add_Face(&face) != nullptr);
    Msg_Printf(".");
}

struct Vertex {
    Point3 p{0, 0, 0};
    int flags = 0;
    int corner[4] = {-1, -1, -1, -1};   // face record: point numbers, -1 = none
    bool appended = false;
};

void Append(Reader& r, PolylineData& poly, Point3 p) {
    if (poly.count < 2147483647) Stored(r, Poly_InsertPoint(&poly, p, poly.count));
}

bool Known(const PolylineData& poly, int k) { return k >= 0 && k < poly.count; }

void FaceRecord(Reader& r, const PolylineData& poly, const Vertex& v) {
    const int* c = v.corner;
    if (!Known(poly, c[0]) || !Known(poly, c[1]) || !Known(poly, c[2])) return;
    if (c[3] >= 0) {
        if (!Known(poly, c[3])) return;
        FaceData face;
        for (int k = 0; k < 4; k++) face.corner[k] = poly.points[c[k]];
        Stored(r, Add_Face(&face) != nullptr);
    } else {
        TriangleData tri;
        for (int k = 0; k < 3; k++) tri.corner[k] = poly.points[c[k]];
        Stored(r, Add_Triangle(&tri) != nullptr);
    }
}

void VertexReader(Reader& r, PolylineData& poly, bool polyface) {
    Vertex v;
    int code;
    while (NextCode(r, &code) && code != 0) {
        if (!Next(r)) break;
        if (code >= 10 && code <= 30 && code % 10 == 0) {
            CornerGroup(code, r.line, &v.p, 1);
        } else if (code >= 71 && code <= 74) {
            int n = Exchange_Int(r.line);
            v.corner[code - 71] = (n < 0 ? -n : n) - 1;   // negative: invisible edge
        } else if (code == 70) {
            v.flags = Exchange_Int(r.line);
            if (!polyface && !v.appended) {
                Append(r, poly, v.p);
                v.appended = true;
            }
        }
    }
    if (!polyface) {
        if (!v.appended) Append(r, poly, v.p);
    } else if (v.flags & 64) {
        Append(r, poly, v.p);
    } else {
        FaceRecord(r, poly, v);
    }
}

void PolylineReader(Reader& r) {
    PolylineData poly = Poly_Default();
    poly.size_m = poly.size_n = 0;
    bool polyface = false;
    int code;
    char name[DXF_LINE];
    bool more = true;
    while ((more = NextCode(r, &code)) && code != 0) {
        if (!(more = Next(r))) break;
        if (code == 8) {
            Layer_Find(Trimmed(r, name, sizeof name));
        } else if (code == 70) {
            int f = Exchange_Int(r.line);
            if (f & 1) poly.poly_flags |= POLY_CLOSED | POLY_N_CLOSED;
            if (f & 4) poly.poly_flags |= POLY_BSPLINE;
            if (f & 8) poly.form = FORM_POLYLINE;
            if (f & 16) poly.form = FORM_POLY_MESH;
            if (f & 32) poly.poly_flags |= POLY_M_CLOSED;
            if (f & 64) polyface = true;
        } else if (code == 71) {
            poly.size_n = Exchange_Int(r.line) - 1;
        } else if (code == 72) {
            poly.size_m = Exchange_Int(r.line) - 1;
        }
    }
    while (more && Next(r) && !Is(r, "SEQEND"))
        if (Is(r, "VERTEX")) VertexReader(r, poly, polyface);
    if (poly.count >= 2 && !polyface && !r.out_of_memory) Stored(r, Poly_AddToScene(&poly) != nullptr);
    Mem_Free(poly.points);
    Msg_Printf(".");
}

void EntityScan(Reader& r) {
    while (Next(r) && !Is(r, "ENDSEC")) {
        if (Is(r, "3DFACE")) FaceReader(r);
        else if (Is(r, "POLYLINE")) PolylineReader(r);
    }
}

struct Section {
    const char* name;
    int question;   // DxfQuestion; DXF_ALWAYS: scanned without asking
    void (*scan)(Reader&);
};

const Section kSections[] = {
    {"HEADER", DXF_ASK_HEADER, HeaderScan},
    {"TABLES", DXF_ASK_TABLES, TableScan},
    {"BLOCKS", DXF_ASK_BLOCKS, EntityScan},
    {"ENTITIES", DXF_ALWAYS, EntityScan},
};

}  // namespace

int Dxf_Import(const char* path, DxfAskFn ask) {
    Reader r;
    r.f = fopen(path, "r");
    if (!r.f) return 0;
    Msg_Printf("\nPlease wait");
    while (Next(r)) {
        const Section* s = nullptr;
        for (const Section& sec : kSections)
            if (Is(r, sec.name)) s = &sec;
        if (!s) continue;
        int yes = 1;
        if (s->question != DXF_ALWAYS && !ask(s->question, &yes)) break;
        if (yes) s->scan(r);
    }
    fclose(r.f);
    return 1;
}
