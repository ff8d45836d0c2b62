// object_draw.cpp - Object_Draw, the dispatch from an object to its
// generator, and the light's star.
#include <cmath>

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

const double kPi = 3.14159265358979323846;

// The circle of the spot light's cone round `point_at` and four lines from
// the light to it; nothing for a cone of 90 degrees or more, or a light
// aimed at itself.
int SpotCone(const LightData* l) {
    const Point3 d = Vec_Sub(l->point_at, l->position);
    const double len = Vec_Length(d);
    if (!(len > 0) || !(l->radius < 90)) return 0;
    const double rho = len * std::tan(l->radius * kPi / 180.0);
    const Point3 dir = Vec_Scale(d, 1.0 / len);
    const Point3 axis = std::fabs(dir.y) < 0.9 ? Point3{0, 1, 0} : Point3{1, 0, 0};
    Point3 u = Vec_Cross(dir, axis);
    u = Vec_Scale(u, 1.0 / Vec_Length(u));
    const Point3 v = Vec_Cross(dir, u);
    auto at = [&](double t) {
        return Vec_Add(l->point_at, Vec_Add(Vec_Scale(u, rho * std::cos(t)), Vec_Scale(v, rho * std::sin(t))));
    };
    const int n = l->light_segments < 3 ? 3 : l->light_segments > GEOM_MAX_SEGMENTS ? GEOM_MAX_SEGMENTS
                                                                                      : l->light_segments;
    Output_MoveTo(at(0));
    for (int i = 1; i <= n; i++)
        if (Output_LineTo(at(i * 2 * kPi / n))) return 1;
    for (int q = 0; q < 4; q++)
        if (Output_Line(l->position, at(q * kPi / 2))) return 1;
    return 0;
}

// The area light's two axes as the scene file writes them: corners of the
// area in the light's own frame (x towards point_at) turned into the world,
// then combined.
int AreaOutline(const LightData* l) {
    const Point3 d = Vec_Sub(l->point_at, l->position);
    const double a1 = std::atan2(d.y, d.x), a2 = std::atan2(d.z, std::sqrt(d.x * d.x + d.y * d.y));
    auto turn = [&](Point3 p) {
        const double t = p.x * std::cos(a2) - p.z * std::sin(a2);
        const double z = p.z * std::cos(a2) + p.x * std::sin(a2);
        return Point3{t * std::cos(a1) - p.y * std::sin(a1), p.y * std::cos(a1) + t * std::sin(a1), z};
    };
    const double W = l->area_width, H = l->area_height;
    const Point3 c0 = turn({0, -W, -H}), c1 = turn({0, -W, H}), c2 = turn({0, W, H});
    const Point3 ax1 = Vec_Scale(Vec_Add(Vec_Scale(Vec_Sub(c1, c0), 0.5), c1), 0.5);
    const Point3 ax2 = Vec_Scale(Vec_Add(Vec_Scale(Vec_Sub(c2, c1), 0.5), c2), 0.5);
    const Point3 h1 = Vec_Scale(ax1, 0.5), h2 = Vec_Scale(ax2, 0.5);
    const Point3 corner[4] = {Vec_Sub(Vec_Sub(l->position, h1), h2), Vec_Sub(Vec_Add(l->position, h1), h2),
                              Vec_Add(Vec_Add(l->position, h1), h2), Vec_Add(Vec_Sub(l->position, h1), h2)};
    Output_MoveTo(corner[3]);
    for (const Point3& p : corner)
        if (Output_LineTo(p)) return 1;
    return 0;
}

int DrawPolyline(const PolylineData* poly) {
    if (!poly || !poly->points || poly->count < 2) return 0;
    if (poly->form < 1 || poly->form >= kFormCount) return 0;
    return kFormGenerator[poly->form](poly);
}

}  // namespace

// The light: a star of seven segments through `position` (the three axes
// and the four cube diagonals), its arm the active viewport's AREA / 50 so
// that it keeps its size on the screen at every zoom. Spot and area lights
// show where they shine with a line to `point_at`. A spot light adds, at
// `point_at`, the circle its `radius` cone makes there (light_segments
// sides) and four lines from the light to that circle; an area light adds
// the outline of its area as the scene file hands it to the ray tracer:
// the parallelogram of its two area_light axes, centred on the light.
int Light_Draw(const LightData* light) {
    if (!light) return 0;
    const double k = g.view.Active_Viewport.AREA / 50.0;
    const Point3 c = light->position;
    for (const auto& seg : kStar) {
        Point3 a{c.x + k * seg[0].x, c.y + k * seg[0].y, c.z + k * seg[0].z};
        Point3 b{c.x + k * seg[1].x, c.y + k * seg[1].y, c.z + k * seg[1].z};
        if (Output_Line(a, b)) return 1;
    }
    if (!(light->light_flags & (LIGHT_SPOT | LIGHT_AREA))) return 0;
    if (Output_Line(c, light->point_at)) return 1;
    if ((light->light_flags & LIGHT_SPOT) && SpotCone(light)) return 1;
    if ((light->light_flags & LIGHT_AREA) && AreaOutline(light)) return 1;
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
