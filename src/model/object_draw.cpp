// object_draw.cpp - Object_Draw, the dispatch from an object to its
// generator, and the light's star.
#include "model/geometry.h"
#include "model/output.h"
#include "state.h"

namespace {

using PolyGenerator = int (*)(const PolylineData*);

// Generator of each polyline form (index = form).
const PolyGenerator kFormGenerator[] = {
    nullptr,              // 0: no such form
    Poly_DrawPlain,       // 1 polyline
    Poly_DrawExtrusion,   // 2
    Poly_DrawRevolution,  // 3
    Poly_DrawConeSweep,   // 4
    Poly_DrawMesh,        // 5
    Poly_DrawCube,        // 6
    Poly_DrawWedge,       // 7
    Poly_DrawPyramid,     // 8
    Poly_DrawPipe,        // 9
    Poly_DrawWall,        // 10
};
const int kFormCount = sizeof kFormGenerator / sizeof kFormGenerator[0];

// The star: three axis lines and four diagonals through the centre.
const Point3 kStar[7][2] = {
    {{-1, 0, 0}, {1, 0, 0}},    {{0, -1, 0}, {0, 1, 0}},    {{0, 0, -1}, {0, 0, 1}},
    {{-1, -1, -1}, {1, 1, 1}},  {{-1, -1, 1}, {1, 1, -1}},  {{-1, 1, -1}, {1, -1, 1}},
    {{1, -1, -1}, {-1, 1, 1}},
};

int DrawPolyline(const PolylineData* poly) {
    if (!poly || !poly->points || poly->count < 2) return 0;
    if (poly->form < 1 || poly->form >= kFormCount) return 0;
    return kFormGenerator[poly->form](poly);
}

}  // namespace

// The star is sized by the active viewport (its world half-height / 50) so
// that it looks the same at every zoom; spot and area lights add a line to
// the point they look at.
int Light_Draw(const LightData* light) {
    if (!light) return 0;
    const double k = g.view.Active_Viewport.AREA / 50.0;
    const Point3 c = light->position;
    for (const auto& seg : kStar) {
        Point3 a{c.x + k * seg[0].x, c.y + k * seg[0].y, c.z + k * seg[0].z};
        Point3 b{c.x + k * seg[1].x, c.y + k * seg[1].y, c.z + k * seg[1].z};
        if (Output_Line(a, b)) return 1;
    }
    if (light->light_flags & (LIGHT_SPOT | LIGHT_AREA)) return Output_Line(c, light->point_at);
    return 0;
}

int Object_Draw(const Object* obj) {
    if (!obj || !obj->data) return 0;
    switch (obj->kind) {
        case KIND_POLYLINE: return DrawPolyline((const PolylineData*)obj->data);
        case KIND_TRIANGLE: {
            const TriangleData* t = (const TriangleData*)obj->data;
            return Output_Facet(t->corner, 3, 7);
        }
        case KIND_3DFACE: {
            const FaceData* f = (const FaceData*)obj->data;
            return Output_Facet(f->corner, 4, 15);
        }
        case KIND_PRIMITIVE: return Prim_Draw((const PrimitiveData*)obj->data);
        case KIND_LIGHT: return Light_Draw((const LightData*)obj->data);
        default: return 0;
    }
}
