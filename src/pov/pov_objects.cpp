// pov_objects.cpp - primitives, lights, stand-alone triangles and faces.
//
// Each writer starts on the line the scene writer opened with Pov_Indent.
// Primitives are built at the origin and placed by scale, rotate and
// translate, always in that order.
#include <cmath>
#include <vector>

#include "base/message.h"
#include "pov/pov.h"
#include "pov/pov_triangles.h"
#include "state.h"

namespace {

int Finite3(Point3 p) { return std::isfinite(p.x) && std::isfinite(p.y) && std::isfinite(p.z); }

int PrimitiveFinite(const PrimitiveData& p) {
    return Finite3(p.translate) && Finite3(p.size) && Finite3(p.scale) && Finite3(p.rotate) &&
           std::isfinite(p.p1) && std::isfinite(p.p2) && std::isfinite(p.p3);
}

void WriteShape(const Object* object, const PrimitiveData& p) {
    switch (p.prim_type) {
        case PRIM_SPHERE: Pov_Printf("sphere { <0.0, 0.0, 0.0>, %g ", p.p1); break;
        case PRIM_CONE:
            Pov_Printf("cone { <0.0, 0.0, 0.0>, %g, <0.0, %g, 0.0>, %g %s", p.p1, p.p3, p.p2,
                       (p.prim_flags & PRIM_OPEN) ? "open " : " ");
            break;
        case PRIM_TORUS:
            Pov_Printf("torus { %g, %g ", p.p1, p.p2);
            if (g.config.Optimize_PovOut) Pov_Printf("sturm ");
            break;
        case PRIM_DISC: Pov_Printf("disc { <0.0, 0.0, 0.0>, <0.0, 1.0, 0.0>, %g, %g ", p.p2, p.p1); break;
        case PRIM_PLANE: Pov_Printf("plane { y, 0.0 "); break;
        case PRIM_BOX: Pov_Printf("box { <0.0, 0.0, 0.0>, <%g, %g, %g> ", p.size.x, p.size.y, p.size.z); break;
        case PRIM_HEIGHT_FIELD: {
            static const char* const kTypes[] = {"gif", "tga"};
            char file[14];
            snprintf(file, sizeof file, "%.12s", p.file);
            Pov_Printf("height_field { ");
            Pov_Printf("%s \"%s\"  water_level %g ", p.hf_type == 0 || p.hf_type == 1 ? kTypes[p.hf_type] : "pot",
                       file, p.p1);
            if (object->flags & Smooth_triangle) Pov_Printf("smooth ");
            break;
        }
    }
}

// One member line of a primitive: new line, then the text.
void Line(int* lines, const char* format, double a = 0, double b = 0, double c = 0) {
    Pov_Indent();
    Pov_Printf(format, a, b, c);
    (*lines)++;
}

void WriteStandalone(Layer* layer, int kind) {
    std::vector<PovTri> tris;
    std::vector<long> group;
    std::vector<unsigned char> member;
    std::vector<const Object*> owner;
    long n = 0;
    for (Object* o = layer->first_object; o; o = o->next, n++) {
        if (o->kind != kind) continue;
        int smooth = (o->flags & Smooth_triangle) != 0;
        if (kind == KIND_TRIANGLE) {
            const TriangleData* t = (const TriangleData*)o->data;
            tris.push_back({{t->corner[0], t->corner[1], t->corner[2]}});
        } else {
            const FaceData* f = (const FaceData*)o->data;
            tris.push_back({{f->corner[0], f->corner[1], f->corner[2]}});
            group.push_back(n);
            member.push_back(smooth);
            owner.push_back(o);
            tris.push_back({{f->corner[2], f->corner[3], f->corner[0]}});
        }
        group.push_back(n);
        member.push_back(smooth);
        owner.push_back(o);
    }
    PovTriangleList list;
    list.count = (long)tris.size();
    list.tris = tris.data();
    list.group = group.data();
    list.member = member.data();
    list.owner = owner.data();
    list.standalone = 1;
    Pov_WriteTriangleList(list);
}

}  // namespace

void Pov_WritePrimitive(Object* object) {
    PrimitiveData p = *(const PrimitiveData*)object->data;
    if (!PrimitiveFinite(p)) {
        // Keep the file valid: a comment stands where the shape would be.
        Pov_Printf("// primitive left out: invalid numbers");
        Msg_Printf("\nWarning: a primitive with invalid numbers was left out");
        return;
    }
    WriteShape(object, p);
    int lines = 0;
    if (object->texture[0]) {
        Pov_Indent();
        Pov_Printf("    texture { %s }", object->texture);
        lines++;
    }
    if (!(p.scale.x == 1 && p.scale.y == 1 && p.scale.z == 1))
        Line(&lines, "    scale <%g, %g, %g>", p.scale.x, p.scale.y, p.scale.z);
    Point3 r = p.rotate;
    if (!(r.x == 0 && r.y == 0 && r.z == 0)) {
        if (p.prim_flags & PRIM_ROT_XYZ) {
            Line(&lines, "    rotate <%g, %g, %g>", r.x, r.y, r.z);
        } else {
            if (r.x != 0) Line(&lines, "    rotate <%g, .0, .0>", r.x);
            if (r.z != 0) Line(&lines, "    rotate <.0, .0, %g>", r.z);
            if (r.y != 0) Line(&lines, "    rotate <.0, %g, .0>", r.y);
        }
    }
    if (!(p.translate.x == 0 && p.translate.y == 0 && p.translate.z == 0))
        Line(&lines, "    translate <%g, %g, %g>", p.translate.x, p.translate.y, p.translate.z);
    if (object->flags & No_shadow) {
        Pov_Indent();
        Pov_Printf("    no_shadow");
        lines++;
    }
    if (lines) Pov_Indent();
    Pov_Printf("}");
}

int Light_IsFinite(const LightData* l) {
    return Finite3(l->position) && Finite3(l->color) && Finite3(l->point_at) && std::isfinite(l->area_height) &&
           std::isfinite(l->area_width) && std::isfinite(l->radius) && std::isfinite(l->falloff);
}

void Pov_WriteLight(const LightData* light) {
    const LightData& l = *light;
    Pov_Printf(" <%g, %g, %g>", l.position.x, l.position.y, l.position.z);
    Pov_Indent();
    Pov_Printf("    color rgb<%g, %g, %g>", l.color.x, l.color.y, l.color.z);
    if (l.light_flags & LIGHT_AREA) {
        double dx = l.point_at.x - l.position.x, dy = l.point_at.y - l.position.y;
        double dz = l.point_at.z - l.position.z;
        double a1 = atan2(dy, dx), a2 = atan2(dz, sqrt(dx * dx + dy * dy));
        double w = l.area_width, h = l.area_height;
        Point3 c[3] = {{0, -w, -h}, {0, -w, h}, {0, w, h}};
        for (Point3& p : c) {
            double t = p.x * cos(a2) - p.z * sin(a2);
            double z = p.z * cos(a2) + p.x * sin(a2);
            double x = t * cos(a1) - p.y * sin(a1);
            double y = p.y * cos(a1) + t * sin(a1);
            p = {x, y, z};
        }
        auto axis = [](Point3 a, Point3 b) {   // ((b - a) / 2 + b) / 2
            return Point3{((b.x - a.x) / 2 + b.x) / 2, ((b.y - a.y) / 2 + b.y) / 2, ((b.z - a.z) / 2 + b.z) / 2};
        };
        Point3 ax1 = axis(c[0], c[1]), ax2 = axis(c[1], c[2]);
        Pov_Indent();
        Pov_Indent();
        Pov_Printf("    area_light <%g, %g, %g>, ", ax1.x, ax1.y, ax1.z);
        Pov_Printf("<%g, %g, %g>, %d, %d", ax2.x, ax2.y, ax2.z, l.area_n1, l.area_n2);
        Pov_Printf("  adaptive %d ", l.adaptive);
        if (l.light_flags & LIGHT_JITTER) Pov_Printf("  jitter");
    }
    if (l.light_flags & LIGHT_SPOT) {
        Pov_Indent();
        Pov_Indent();
        Pov_Printf("    spotlight");
        Pov_Indent();
        Pov_Printf("    point_at <%g, %g, %g>", l.point_at.x, l.point_at.y, l.point_at.z);
        Pov_Indent();
        Pov_Printf("    radius %g", l.radius);
        Pov_Indent();
        Pov_Printf("    falloff %g", l.falloff);
        Pov_Indent();
        Pov_Printf("    tightness %d", l.tightness);
    }
}

void Pov_WriteTriangles(Layer* layer) {
    Pov_Printf("union { // Stand alone Triangles");
    Msg_Printf("\nWriting: Triangles");
    WriteStandalone(layer, KIND_TRIANGLE);
    Pov_Indent();
    Pov_Printf("}");
    Msg_Printf("_");
}

void Pov_WriteFaces(Layer* layer) {
    Pov_Printf("union { // Stand alone Faces");
    Msg_Printf("\nWriting: Triangles");
    WriteStandalone(layer, KIND_3DFACE);
    Pov_Indent();
    Pov_Printf("}");
    Msg_Printf("_");
}
