// output.cpp - the facet sink and the explode consumer (facets become
// objects, primitive grids become one mesh). The other consumers belong to
// the layers above; the command layer puts them into the table at start-up.
#include "model/output.h"

#include <cmath>
#include <cstdint>

#include "base/message.h"
#include "model/geometry.h"
#include "scene/mem.h"
#include "state.h"

namespace {

bool Finite(Point3 p) { return std::isfinite(p.x) && std::isfinite(p.y) && std::isfinite(p.z); }

// --- explode ---

int ExplodeFacet(const Point3* corner, int n, int) {
    FaceData face;
    for (int k = 0; k < 4; k++) face.corner[k] = corner[k < n ? k : n - 1];  // a triangle repeats c2
    if (!Add_Face(&face)) {
        Msg_Printf("\nOut of Memory");
        g.output.explode_failed = 1;
        return 1;
    }
    return 0;
}

int ExplodeGridBegin(int rows, int cols) {
    OutputState& o = g.output;
    Mem_Free(o.explode_grid);
    o.explode_grid = nullptr;
    int64_t points = (int64_t)(rows + 1) * (cols + 1);
    if (rows < 1 || cols < 1 || points > INT32_MAX / (int64_t)sizeof(Point3)) return 0;
    o.explode_grid = (Point3*)Mem_Alloc((size_t)points * sizeof(Point3));
    if (!o.explode_grid) {
        Msg_Printf("\nCan't create Mesh...Out Of Memory!");
        o.explode_failed = 1;
        return 0;
    }
    for (int64_t i = 0; i < points; i++) o.explode_grid[i] = Point3{0, 0, 0};
    o.explode_rows = rows;
    o.explode_cols = cols;
    return 1;
}

void ExplodeGridPoint(int r, int c, Point3 p) {
    OutputState& o = g.output;
    if (!o.explode_grid || r < 0 || c < 0 || r > o.explode_rows || c > o.explode_cols) return;
    o.explode_grid[(int64_t)r * (o.explode_cols + 1) + c] = p;
}

int ExplodeGridEnd() {
    OutputState& o = g.output;
    if (!o.explode_grid) return 0;
    PolylineData mesh = Poly_Default();
    mesh.form = FORM_POLY_MESH;
    mesh.poly_flags = 0;
    mesh.size_m = o.explode_rows;
    mesh.size_n = o.explode_cols;
    mesh.count = (o.explode_rows + 1) * (o.explode_cols + 1);
    mesh.points = o.explode_grid;
    int stop = 0;
    if (!Poly_AddToScene(&mesh)) {   // copies the points; ours are freed below
        Msg_Printf("\nOut of Memory!");
        o.explode_failed = 1;
        stop = 1;
    }
    Mem_Free(o.explode_grid);
    o.explode_grid = nullptr;
    return stop;
}

const OutputConsumer* Current() {
    // The one dispatch on Output_Mode: everything else asks the consumer.
    int mode = g.output.Output_Mode;
    static const OutputConsumer none{};
    return (mode >= 0 && mode < OUTPUT_MODES) ? &g.output.consumer[mode] : &none;
}

// Visible edges of a facet through the consumer's pen; consecutive edges
// continue from the pen position without a new move.
int OutlineFacet(const OutputConsumer* out, const Point3* corner, int n, int mask) {
    if (!out->line_to || !out->move_to) return 0;
    int at = -1;   // corner the pen stands on
    for (int k = 0; k < n; k++) {
        if (!(mask & (1 << k))) continue;
        if (at != k) out->move_to(corner[k]);
        if (out->line_to(corner[(k + 1) % n])) return 1;
        at = (k + 1) % n;
    }
    return 0;
}

}  // namespace

OutputConsumer Output_ExplodeConsumer() {
    OutputConsumer c{};
    c.facet = ExplodeFacet;
    c.grid_begin = ExplodeGridBegin;
    c.grid_point = ExplodeGridPoint;
    c.grid_end = ExplodeGridEnd;
    return c;
}

void Output_SetConsumer(int mode, const OutputConsumer& consumer) {
    if (mode >= 0 && mode < OUTPUT_MODES) g.output.consumer[mode] = consumer;
}

void Output_RedrawScreen() {
    if (g.output.consumer[OUTPUT_SCREEN].redraw_all) g.output.consumer[OUTPUT_SCREEN].redraw_all();
}

void Output_UseLayer(const Layer* layer) {
    if (g.output.consumer[OUTPUT_SCREEN].use_layer) g.output.consumer[OUTPUT_SCREEN].use_layer(layer);
}

int Output_ToScreen() { return Current()->on_screen; }

void Output_MoveTo(Point3 p) {
    const OutputConsumer* out = Current();
    g.output.pen_valid = Finite(p);
    if (g.output.pen_valid && out->move_to) out->move_to(p);
}

int Output_LineTo(Point3 p) {
    const OutputConsumer* out = Current();
    if (!Finite(p)) {
        g.output.pen_valid = 0;
        return 0;
    }
    if (!g.output.pen_valid) {   // coming back from a dropped point: start afresh
        g.output.pen_valid = 1;
        if (out->move_to) out->move_to(p);
        return 0;
    }
    return out->line_to ? out->line_to(p) : 0;
}

int Output_Line(Point3 a, Point3 b) {
    Output_MoveTo(a);
    return Output_LineTo(b);
}

int Output_Facet(const Point3* corner, int n, int mask) {
    if (n != 3 && n != 4) return 0;
    const OutputConsumer* out = Current();
    for (int k = 0; k < n; k++)   // dropped, but the drawing may still be stopped
        if (!Finite(corner[k])) return out->nothing_drawn ? out->nothing_drawn() : 0;
    if (out->facet) return out->facet(corner, n, mask);
    if (out->triangle) {
        if (out->triangle(corner[0], corner[1], corner[2])) return 1;
        return n == 4 ? out->triangle(corner[2], corner[3], corner[0]) : 0;
    }
    return OutlineFacet(out, corner, n, mask);
}

int Output_Quad(Point3 c0, Point3 c1, Point3 c2, Point3 c3, int mask) {
    Point3 c[4] = {c0, c1, c2, c3};
    return Output_Facet(c, 4, mask);
}

int Output_Triangle(Point3 c0, Point3 c1, Point3 c2, int mask) {
    Point3 c[3] = {c0, c1, c2};
    return Output_Facet(c, 3, mask);
}

int Output_GridMask(int r, int c) { return 2 | 4 | (c == 0 ? 1 : 0) | (r == 0 ? 8 : 0); }

void Output_GridBegin(int rows, int cols) {
    OutputState& o = g.output;
    const OutputConsumer* out = Current();
    o.grid_rows = rows;
    o.grid_cols = cols;
    o.grid_collect = out->grid_begin != nullptr;
    o.grid_skip = o.grid_collect ? !out->grid_begin(rows, cols) : 0;
}

int Output_GridFacet(const Point3 corner[4], int r, int c) {
    OutputState& o = g.output;
    if (o.grid_collect) {
        const OutputConsumer* out = Current();
        if (!o.grid_skip && out->grid_point) out->grid_point(r, c, corner[0]);
        return 0;
    }
    if (r < 0 || c < 0 || r >= o.grid_rows || c >= o.grid_cols) return 0;
    return Output_Facet(corner, 4, Output_GridMask(r, c));
}

int Output_GridEnd() {
    OutputState& o = g.output;
    int stop = 0;
    if (o.grid_collect && !o.grid_skip) {
        const OutputConsumer* out = Current();
        if (out->grid_end) stop = out->grid_end();
    }
    o.grid_collect = o.grid_skip = 0;
    o.grid_rows = o.grid_cols = 0;
    return stop;
}
