// cmd_surface.cpp - the commands that make surfaces of polylines: EXTRUDE,
// REVOLUTION, CONE-SWEEP, THICKEN and WALL change a polyline's form in
// place; RULSURF and COONS build a mesh from two or four boundaries; JOIN
// makes one polyline of two; PARRAY copies objects along a polyline.
//
// A picked polyline is shown in the selection colour (without the mark)
// until the command ends, then in its layer's colour again. A command that
// is given up or replaced leaves the scene as it was; a new mesh or joined
// polyline is added only when it is complete, and the working arrays are
// freed on every way out.
#include <cstdio>
#include <initializer_list>

#include "base/message.h"
#include "cmd/cmd.h"
#include "cmd/poly_support.h"
#include "input/input.h"
#include "model/geometry.h"
#include "model/selection.h"
#include "model/xform.h"
#include "scene/mem.h"
#include "state.h"

namespace {

const int MASK_COUNT = 23;   // numbers only; Enter repeats the command
const int MAX_MESH_SIZE = GEOM_MAX_SEGMENTS;   // N or M above this is taken as this
const int MAX_PATH_COPIES = 1000000;

// A polyline picked for a command and its layer.
struct Picked {
    Object* obj = nullptr;
    Layer* layer = nullptr;
    PolylineData* poly() const { return (PolylineData*)obj->data; }
};

// What a command returns when a question was not answered: 0 when another
// command replaced it, 1 when it was given up.
int NotAnswered() { return g.input.InputResult.code > 0 ? 0 : 1; }

// Shows the picked polylines in their own colours again.
void Release(std::initializer_list<const Picked*> picked) {
    for (const Picked* p : picked)
        if (p && p->obj) PolyCmd_Draw(p->obj, p->layer);
}

// A point with flags 16. 1 given, 0 replaced, -1 given up.
int AskPoint(const char* prompt, Point3* p) {
    int got;
    if (!Ask_Point(prompt, ASK_ENTER_REPEATS, p, &got)) return 0;
    return got ? 1 : -1;
}

// One of the numbers of Ask_NM: 7 for Enter, else greater than zero.
int AskSize(const char* prompt, int* value) {
    for (;;) {
        AskAnswer a;
        if (!Ask_Any(prompt, nullptr, 1, 7, &a)) return 0;
        if (a.kind != -3) {
            *value = 7;
            return 1;
        }
        *value = PolyCmd_Int(a.number, 0, MAX_MESH_SIZE);
        if (*value > 0) return 1;
        Msg_Printf("\nMust be greater than ZERO.");
    }
}

// The two end points of a polyline's point list.
Point3 StartOf(const PolylineData* p) { return p->points[0]; }
Point3 EndOf(const PolylineData* p) { return p->points[p->count - 1]; }
bool HasEnds(const PolylineData* p) { return p->points && p->count >= 1; }

// EXTRUDE and REVOLUTION: the polyline and two points.
int ConvertByTwoPoints(const char* select, const char* first, const char* second, int form) {
    Picked p;
    if (!Select_Polyline(select, &p.obj, &p.layer)) return NotAnswered();
    Point3 a, b;
    int s = AskPoint(first, &a);
    if (s > 0) {
        Input_SetRubberBand(&a, "LINE", nullptr);
        s = AskPoint(second, &b);
    }
    if (s <= 0) {
        Release({&p});
        return s < 0 ? 1 : 0;
    }
    PolyCmd_Erase(p.obj, p.layer);
    PolylineData* poly = p.poly();
    poly->param1 = a;
    poly->param2 = b;
    poly->form = form;
    poly->size_m = poly->size_n = 16;
    if (form == FORM_REVOLUTION) poly->angle = 360.0;
    PolyCmd_Show(p.obj, p.layer);
    return 1;
}

// RULSURF and COONS: a finished grid of (n + 1) x (m + 1) points into the
// scene as a mesh; the caller frees the grid.
void AddMesh(Point3* grid, int n, int m) {
    PolylineData mesh = Poly_Default();
    mesh.form = FORM_POLY_MESH;
    mesh.poly_flags = 0;
    mesh.size_m = n;
    mesh.size_n = m;
    mesh.points = grid;
    mesh.count = (n + 1) * (m + 1);
    Object* obj = Poly_AddToScene(&mesh);
    if (!obj) {
        Msg_Printf("\nOut of Memory");
        return;
    }
    PolyCmd_Show(obj, g.scene.Current_Layer);
}

// The grid of a new mesh, or nullptr with the message.
Point3* NewGrid(int n, int m) {
    Point3* grid = (Point3*)Mem_Alloc(sizeof(Point3) * (size_t)(n + 1) * (size_t)(m + 1));
    if (!grid) Msg_Printf("\nCan't create Mesh...Out Of Memory");
    return grid;
}

// COONS: how boundary k (k >= 1) joins the loop after boundary k - 1,
// whose free end is `end`: 0 its start touches, 1 its end (it runs
// reversed), -1 it does not connect.
int Joins(const PolylineData* poly, Point3 end) {
    if (Points_Match(StartOf(poly), end)) return 0;
    if (Points_Match(EndOf(poly), end)) return 1;
    return -1;
}

// The end of boundary c at which the loop leaves it.
Point3 LoopEnd(const PolylineData* c, int reversed) { return reversed ? StartOf(c) : EndOf(c); }
Point3 LoopStart(const PolylineData* c, int reversed) { return reversed ? EndOf(c) : StartOf(c); }

}  // namespace

int Select_Polyline(const char* prompt, Object** obj, Layer** layer) {
    for (;;) {
        Msg_Printf("%s", prompt);
        g.selection.Select_Single = 1;
        if (Select_Objects() <= 0) return 0;
        Object* o = Selection_First();
        Layer* l = g.selection.first_layer;
        if (!o) return 0;
        Object_SetSelected(o, 0, l);
        if (o->kind != KIND_POLYLINE) {
            Msg_Printf("Object NOT a polyline ");
            continue;
        }
        PolyCmd_Highlight(o, l);
        *obj = o;
        *layer = l;
        return 1;
    }
}

int Ask_NM(int* n, int* m) {
    return AskSize("\nSet N Number <7>: ", n) && AskSize("\nSet M Number <7>: ", m);
}

int Com_Extrude() {   // 216
    return ConvertByTwoPoints("EXTRUDE> Select polyline to convert: ", "\nEXTRUDE> Set point #1: ",
                              "\nEXTRUDE> Set point #2: ", FORM_EXTRUSION);
}

int Com_Revolution() {   // 217
    return ConvertByTwoPoints("REVOLUTION> Select polyline to convert: ", "\nREVOLUTION> Set point #1: ",
                              "\nREVOLUTION> Set point #2: ", FORM_REVOLUTION);
}

int Com_ConeSweep() {   // 218
    Picked p;
    if (!Select_Polyline("CONE-SWEEP> Select polyline to convert: ", &p.obj, &p.layer)) return NotAnswered();
    Point3 cone;
    int s = AskPoint("\nCONE-SWEEP> Set CONE point: ", &cone);
    if (s <= 0) {
        Release({&p});
        return s < 0 ? 1 : 0;
    }
    PolyCmd_Erase(p.obj, p.layer);
    PolylineData* poly = p.poly();
    poly->param1 = cone;
    poly->form = FORM_CONE_SWEEP;
    poly->size_m = poly->size_n = 16;
    PolyCmd_Show(p.obj, p.layer);
    return 1;
}

int Com_Thicken() {   // 316
    Picked p;
    if (!Select_Polyline("THICKEN> Select a polyline: ", &p.obj, &p.layer)) return NotAnswered();
    double start = 1.0, end;
    int got, segments = 8;
    auto give_up = [&]() {
        Release({&p});
        return NotAnswered();
    };
    if (!Ask_Number("\nTHICKEN> Set starting Thickness value<1.0>: ", &start, &got)) return give_up();
    end = start;
    char prompt[100];
    snprintf(prompt, sizeof prompt, "\nTHICKEN> Set ending Thickness value<%g>: ", start);
    if (!Ask_Number(prompt, &end, &got)) return give_up();
    for (;;) {
        AskAnswer a;
        if (!Ask_Any("\nTHICKEN> Number of Segments <8>: ", nullptr, 1, 7, &a)) return give_up();
        if (a.kind != -3) break;
        segments = PolyCmd_Int(a.number, 0, GEOM_MAX_SEGMENTS);
        if (segments > 0) break;
        Msg_Printf("\nMust be greater than ZERO.");
    }
    PolyCmd_Erase(p.obj, p.layer);
    PolylineData* poly = p.poly();
    poly->form = FORM_POLY_PIPE;
    poly->size_m = 16;
    poly->size_n = segments;
    poly->param1 = Point3{start, end, 0};
    poly->param2.x = poly->param2.y = 0;
    PolyCmd_Show(p.obj, p.layer);
    return 1;
}

int Com_Wall() {   // 232
    Picked p;
    if (!Select_Polyline("WALL> Select a polyline: ", &p.obj, &p.layer)) return NotAnswered();
    double height = 4.0, width = 0.25;
    int got;
    char prompt[100];
    snprintf(prompt, sizeof prompt, "\nWALL> Set Width value of Wall <%g>: ", width);
    if (!Ask_Number("\nWALL> Set Height value of Wall <4>: ", &height, &got) || !Ask_Number(prompt, &width, &got)) {
        Release({&p});
        return NotAnswered();
    }
    PolyCmd_Erase(p.obj, p.layer);
    PolylineData* poly = p.poly();
    poly->form = FORM_POLY_WALL;
    poly->size_m = 16;
    poly->size_n = 8;
    poly->param1 = Point3{height, width, 0};
    PolyCmd_Show(p.obj, p.layer);
    return 1;
}

int Com_Rulsurf() {   // 215
    Picked a, b;
    if (!Select_Polyline("RULSURF> Select polyline #1: ", &a.obj, &a.layer)) return NotAnswered();
    for (;;) {
        if (!Select_Polyline("RULSURF> Select polyline #2: ", &b.obj, &b.layer)) {
            Release({&a});
            return NotAnswered();
        }
        if (b.obj != a.obj) break;
        Msg_Printf("\nPolylines can't be the same ");
        b = Picked{};
    }
    int n, m;
    if (!Ask_NM(&n, &m)) {
        Release({&a, &b});
        return NotAnswered();
    }
    Msg_Printf("\n*Please Wait*");
    if (Point3* grid = NewGrid(n, m)) {
        if (Mesh_Ruled(a.poly(), b.poly(), n, m, grid)) AddMesh(grid, n, m);
        else Msg_Printf("\nCan't create Mesh...Out Of Memory");
        Mem_Free(grid);
    }
    Release({&a, &b});
    return 1;
}

int Com_Coons() {   // 214
    static const char* const kSelect[4] = {"COONS> Select polyline #1: ", "COONS> Select polyline #2: ",
                                           "COONS> Select polyline #3: ", "COONS> Select polyline #4: "};
    Picked c[4];
    int reversed[4] = {0, 0, 0, 0};
    auto give_up = [&]() {
        Release({&c[0], &c[1], &c[2], &c[3]});
        return NotAnswered();
    };
    for (int k = 0; k < 4; k++) {
        for (;;) {
            Picked p;
            if (!Select_Polyline(kSelect[k], &p.obj, &p.layer)) return give_up();
            const PolylineData* poly = p.poly();
            bool repeated = false;
            for (int i = 0; i < k; i++) repeated = repeated || c[i].obj == p.obj;
            if (repeated) {   // it stays shown as picked
                Msg_Printf("\nPolylines can't be the same ");
                continue;
            }
            const char* refusal = nullptr;
            if ((poly->poly_flags & POLY_CLOSED) || !HasEnds(poly)) {
                refusal = "\nPolyline can't be closed ";
            } else if (k == 1) {   // which ends of #1 and #2 meet decides how both run
                const PolylineData* first = c[0].poly();
                int r = Joins(poly, EndOf(first));
                reversed[0] = 0;
                if (r < 0 && (r = Joins(poly, StartOf(first))) >= 0) reversed[0] = 1;
                if (r < 0) refusal = "\nPLine #1 doesn't connect with PLine #2 ";
                else reversed[1] = r;
            } else if (k >= 2) {
                const int r = Joins(poly, LoopEnd(c[k - 1].poly(), reversed[k - 1]));
                if (r < 0) {
                    refusal = k == 2 ? "\nPLine #2 doesn't connect with PLine #3 "
                                     : "\nPLine #3 doesn't connect with PLine #4 ";
                } else {
                    reversed[k] = r;
                    if (k == 3 && !Points_Match(LoopEnd(poly, r), LoopStart(c[0].poly(), reversed[0])))
                        refusal = "\nPLine #4 doesn't connect with PLine #1 ";
                }
            }
            if (refusal) {
                Msg_Printf("%s", refusal);
                PolyCmd_Draw(p.obj, p.layer);
                continue;
            }
            c[k] = p;
            break;
        }
    }
    int n, m;
    if (!Ask_NM(&n, &m)) return give_up();
    Msg_Printf("\n*Please Wait*");
    if (Point3* grid = NewGrid(n, m)) {
        const PolylineData* const boundary[4] = {c[0].poly(), c[1].poly(), c[2].poly(), c[3].poly()};
        if (Mesh_Coons(boundary, reversed, n, m, grid)) AddMesh(grid, n, m);
        else Msg_Printf("\nCan't create Mesh...Out Of Memory");
        Mem_Free(grid);
    }
    Release({&c[0], &c[1], &c[2], &c[3]});
    return 1;
}

int Com_Join() {   // 315
    Picked a, b;
    if (!Select_Polyline("JOIN> Select polyline #1: ", &a.obj, &a.layer)) return NotAnswered();
    for (;;) {
        if (!Select_Polyline("JOIN> Select polyline #2: ", &b.obj, &b.layer)) {
            Release({&a});
            return NotAnswered();
        }
        if (b.obj != a.obj) break;
        Msg_Printf("\nMust select a different polyline ");
        b = Picked{};
    }
    const PolylineData *A = a.poly(), *B = b.poly();
    // Which ends meet, in this order: A reversed or not, B forwards from its
    // second point or backwards from its second-to-last.
    int a_reversed = -1, b_backwards = 0;
    if (HasEnds(A) && HasEnds(B)) {
        if (Points_Match(StartOf(A), StartOf(B))) a_reversed = 1;
        else if (Points_Match(EndOf(A), StartOf(B))) a_reversed = 0;
        else if (Points_Match(EndOf(A), EndOf(B))) a_reversed = 0, b_backwards = 1;
        else if (Points_Match(StartOf(A), EndOf(B))) a_reversed = 1, b_backwards = 1;
    }
    if (a_reversed < 0) {
        Msg_Printf("\nPolylines must connect with each other");
        Release({&a, &b});
        return 1;
    }
    PolylineData joined = Poly_Default();
    joined.count = A->count + B->count - 1;
    joined.points = (Point3*)Mem_Alloc(sizeof(Point3) * (size_t)joined.count);
    Object* obj = nullptr;
    if (joined.points) {
        for (int i = 0; i < A->count; i++) joined.points[i] = A->points[a_reversed ? A->count - 1 - i : i];
        for (int i = 1; i < B->count; i++) joined.points[A->count - 1 + i] = B->points[b_backwards ? B->count - 1 - i : i];
        obj = Poly_AddToScene(&joined);
        Mem_Free(joined.points);
    }
    Release({&a, &b});
    if (!obj) {
        Msg_Printf("\nUnable to join...Out Of Memory");
        return 1;
    }
    PolyCmd_Show(obj, g.scene.Current_Layer);
    return 1;
}

int Com_Parray() {   // 312
    Picked path;
    if (!Select_Polyline("PARRAY> Select polyline: ", &path.obj, &path.layer)) return NotAnswered();
    Msg_Printf("\nPARRAY> Select Objects");
    auto finish = [&](int ret) {
        Selection_DrawObject(path.obj, path.layer, Selection_ColourOf(path.obj, path.layer));
        return ret;
    };
    if (Select_Objects() <= 0) return finish(NotAnswered());
    int count;
    for (;;) {
        AskAnswer a;
        if (!Ask_Any("\nPARRAY> Set Number of Copies: ", nullptr, 1, MASK_COUNT, &a)) return finish(0);
        if (a.kind != -3) return finish(1);
        count = PolyCmd_Int(a.number, 0, MAX_PATH_COPIES);
        if (count >= 1) break;
        Msg_Printf("\nMust be greater than ZERO.");
    }
    XformState& x = g.xform;
    x.array_type = ARRAY_PATH;
    x.array_count = count;
    x.array_path = path.poly();
    Xform_Run(Point3{0, 0, 0}, Point3{0, 0, 0}, XFORM_ARRAY);
    x.array_path = nullptr;
    return finish(1);
}
