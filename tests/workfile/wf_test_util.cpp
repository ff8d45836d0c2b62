// wf_test_util.cpp - helpers of the work-file tests.
#include <gtest/gtest.h>

#include "workfile/wf_test_util.h"

#include <cstdio>
#include <set>
#include <sstream>

std::vector<Object*> ObjectsOf(const Layer* l) {
    std::vector<Object*> v;
    for (Object* o = l->first_object; o; o = o->next) v.push_back(o);
    return v;
}

std::vector<Layer*> Layers() {
    std::vector<Layer*> v;
    for (Layer* l = g.scene.First_Layer; l; l = l->next) v.push_back(l);
    return v;
}

int PositionOf(const Layer* l) {
    int pos = 1;
    for (Layer* x = g.scene.First_Layer; x; x = x->next, pos++)
        if (x == l) return pos;
    return 0;
}

const std::vector<IntSetting>& KeptIntSettings() {
    static const std::vector<IntSetting> table = {
        {&g.aids.orthoOn, 1},           {&g.aids.blipsOn, 1},
        {&g.aids.coordsMode, 3},        {&g.shade.Shade_Type, 1},
        {&g.shade.Shade_UseEdge, 1}, {&g.scene.Default_No_shadow, 1},
        {&g.scene.Default_Smooth, 1},   {&g.aids.Input_Line_Option, 0},
        {&g.aids.Auto_Regen, 0},        {&g.aids.Auto_Redraw, 1},
        {&g.aids.Auto_Deselect, 0},     {&g.aids.Erase_No_Confirm, 1},
        {&g.aids.Auto_Seg, 1},          {&g.aids.Seg_Value, 17},
        {&g.render.Write_Render_Bat, 1}, {&g.render.Reload_After_Render, 1},
        {&g.pov.Overwrite_Pov, 1},      {&g.pov.Export_Before_Render, 0},
        {&g.pov.Max_Trace_Level, 7},    {&g.pov.Max_Intersections, 64},
        {&g.pov.Fog_On, 1},             {&g.pov.Background_On, 1},
        {&g.render.Palette_Type, 2},    {&g.render.Display_Type, 12},
        {&g.render.Render_Display, 0},  {&g.render.Spare_Int12, 42},
        {&g.render.Render_Verbose, 1},  {&g.render.Render_Width, 640},
        {&g.render.Render_Height, 480}, {&g.render.Render_Partial, 1},
        {&g.render.Start_Row, 5},       {&g.render.Start_Col, 6},
        {&g.render.End_Row, 7},         {&g.render.Render_Quality, 3},
        {&g.render.Render_Abort, 0},    {&g.render.Render_Pause, 0},
        {&g.render.Render_Continue, 1}, {&g.render.Output_Type, 4},
        {&g.render.Buffer_Size, 30},    {&g.render.Max_Symbols, 2000},
        {&g.render.Bounding_On, 0},     {&g.render.Bounding_Threshold, 9},
        {&g.render.Antialias_On, 1},    {&g.render.Antialias_Depth, 3},
        {&g.render.Spare_Int32, -8},
    };
    return table;
}

void BuildSampleScene() {
    Layer* a = Layer_Append();
    strcpy(a->name, "Walls");
    strcpy(a->texture, "Red_Marble");
    a->translate = {1, 2, 3};
    a->scale = {2, 2, 2};
    a->rotate = {10, 20, 30};
    a->texture_translate = {0.5, 0, 0};
    a->texture_scale = {3, 3, 3};
    a->texture_rotate = {0, 45, 0};
    a->csg = CSG_DIFFERENCE;
    a->color = 4;
    a->rotation_order = 1;

    PolylineData p = Poly_Default();
    Point3 pts[3] = {{0, 0, 0}, {1, 0.25, -1}, {2, 1e-9, 1e9}};
    p.points = pts;
    p.count = 3;
    p.form = FORM_POLY_MESH;
    p.param1 = {1, 2, 3};
    p.param2 = {-4, -5, -6};
    p.angle = 123.5;
    p.poly_flags = POLY_CLOSED | POLY_M_CLOSED;
    p.segments = 12;
    p.size_m = 100;
    p.size_n = -3;
    Object* o = Poly_AddToScene(&p);
    strcpy(o->texture, "Chrome_Big_Name_20c");
    TriangleData t{{{1, 2, 3}, {4, 5, 6}, {7, 8, 9}}};
    Add_Triangle(&t)->flags = No_shadow | Smooth_triangle;

    Layer* b = Layer_Append();
    strcpy(b->name, "TwelveChars!");
    b->on = 0;
    b->level = 1;
    FaceData f{{{1, 0, 0}, {0, 1, 0}, {0, 0, 1}, {1, 1, 1}}};
    Add_Face(&f);
    PrimitiveData pr = Primitive_Default();
    strcpy(pr.file, "mountain.gif");
    pr.hf_type = 1;
    pr.translate = {1, 1, 1};
    pr.size = {2, 3, 4};
    pr.scale = {1, 2, 1};
    pr.rotate = {0, 90, 270};
    pr.prim_aux = 24;
    pr.prim_type = PRIM_CONE;
    pr.p1 = 1.5;
    pr.p2 = 0.25;
    pr.p3 = 4;
    pr.prim_flags = PRIM_OPEN;
    Add_Primitive(&pr);
    LightData li = Light_Default();
    li.light_flags = LIGHT_SPOT | LIGHT_JITTER;
    li.position = {10, 20, 30};
    li.color = {0.1, 0.2, 0.3};
    li.light_segments = 7;
    li.area_n1 = 3;
    li.area_n2 = 5;
    li.area_height = 2.5;
    li.area_width = 3.5;
    li.adaptive = 2;
    li.point_at = {-1, -2, -3};
    li.radius = 20;
    li.falloff = 30;
    li.tightness = 10;
    Add_Light(&li);

    Layer* c = Layer_Append();
    strcpy(c->name, "Copy");
    c->instance = a;
    g.scene.Current_Layer = b;

    for (const IntSetting& s : KeptIntSettings()) *s.field = s.sample;
    strcpy(g.render.Extra_Options, "+L/povray/include");
    g.pov.Fog_Distance = 55.5;
    g.pov.Fog_Color = {0.1, 0.2, 0.3};
    g.pov.Background_Color = {0.4, 0.5, 0.6};
    g.render.Antialias_Threshold = 0.1;
    g.render.Antialias_Jitter = 0.5;
    g.render.Spare_Double34 = 2.25;

    // Stored viewports: distinct values per slot; the working record is in
    // slot 2, so the save must copy it back there first.
    Views_SetLayout(6, 0);
    for (int n = 1; n <= 4; n++) {
        Viewport& v = g.view.Viewports[n];
        v.GRID = n & 1;
        v.SNAP = 1;
        v.SNAPX = 0.5 * n;
        v.SNAPY = 0.25 * n;
        v.GRIDX = 2.0 * n;
        v.GRIDY = 3.0 * n;
        v.WORLD = n == 3;
        v.CAMERA = n == 4;
        v.title_on = 0;
        v.AXIS = 0;
        v.CENTER = n != 2;
        View_SetPitch(&v, 10.0 * n);
        View_SetHeading(&v, 20.0 * n);
        View_SetArea(&v, 5.0 * n);
        View_SetKind(&v, n + 2);
        View_SetCentre(&v, {1.0 * n, 2.0 * n, 3.0 * n});
    }
    g.view.Current_Viewport = 2;
    g.view.Active_Viewport = g.view.Viewports[2];
    View_SetArea(&g.view.Active_Viewport, 77.0);   // only in the working record
    Views_SetFov(60);
    Views_SetUp({0, 1, 0});
    Views_SetCam({1, 5, -20});
    Views_SetTar({0, 1, 0});
}

namespace {

void P(std::ostringstream& o, const char* what, const Point3& p) {
    o << what << "=" << p.x << "," << p.y << "," << p.z << " ";
}

}  // namespace

std::string ObjectFields(const Object* ob) {
    std::ostringstream o;
    o.precision(17);
    switch (ob->kind) {
        case KIND_POLYLINE: {
            auto* p = static_cast<PolylineData*>(ob->data);
            o << "form " << p->form << " ";
            P(o, "p1", p->param1);
            P(o, "p2", p->param2);
            o << "angle " << p->angle << " pf " << int(p->poly_flags) << " seg "
              << p->segments << " m " << p->size_m << " n " << p->size_n << " count "
              << p->count << " ";
            for (int i = 0; i < p->count; i++) P(o, "pt", p->points[i]);
            break;
        }
        case KIND_TRIANGLE:
            for (auto& c : static_cast<TriangleData*>(ob->data)->corner) P(o, "c", c);
            break;
        case KIND_3DFACE:
            for (auto& c : static_cast<FaceData*>(ob->data)->corner) P(o, "c", c);
            break;
        case KIND_PRIMITIVE: {
            auto* p = static_cast<PrimitiveData*>(ob->data);
            o << "file '" << p->file << "' hf " << p->hf_type << " ";
            P(o, "t", p->translate);
            P(o, "size", p->size);
            P(o, "s", p->scale);
            P(o, "r", p->rotate);
            o << "aux " << p->prim_aux << " type " << p->prim_type << " p " << p->p1
              << "," << p->p2 << "," << p->p3 << " pf " << int(p->prim_flags);
            break;
        }
        case KIND_LIGHT: {
            auto* l2 = static_cast<LightData*>(ob->data);
            o << "lf " << int(l2->light_flags) << " ";
            P(o, "pos", l2->position);
            P(o, "col", l2->color);
            o << "seg " << l2->light_segments << " n " << l2->area_n1 << ","
              << l2->area_n2 << " ad " << l2->adaptive << " hw " << l2->area_height
              << "," << l2->area_width << " ";
            P(o, "at", l2->point_at);
            o << "rf " << l2->radius << "," << l2->falloff << " tight " << l2->tightness;
            break;
        }
    }
    return o.str();
}

std::string DumpScene() {
    std::ostringstream o;
    o.precision(17);
    for (Layer* l : Layers()) {
        o << "layer " << PositionOf(l) << " '" << l->name << "' tex '" << l->texture << "' csg "
          << l->csg << " color " << l->color << " on " << l->on << " level " << l->level
          << " inst " << (l->instance ? PositionOf(l->instance) : -1) << " rot "
          << l->rotation_order << " ";
        P(o, "t", l->translate);
        P(o, "s", l->scale);
        P(o, "r", l->rotate);
        P(o, "tt", l->texture_translate);
        P(o, "ts", l->texture_scale);
        P(o, "tr", l->texture_rotate);
        o << (l == g.scene.Current_Layer ? " CURRENT" : "") << "\n";
        for (Object* ob : ObjectsOf(l)) {
            o << "  obj kind " << int(ob->kind) << " tex '" << ob->texture << "' flags "
              << int(ob->flags) << " sel " << int(ob->selected) << ": ";
            o << ObjectFields(ob);
            o << "\n";
        }
    }
    return o.str();
}

std::string SceneProblem() {
    std::set<const Layer*> in_list;
    const Layer* prev = nullptr;
    for (Layer* l = g.scene.First_Layer; l; l = l->next) {
        if (l->prev != prev) return "layer prev link broken";
        if (!in_list.insert(l).second) return "layer list loops";
        if (l->name[12] != '\0' || memchr(l->texture, 0, sizeof l->texture) == nullptr)
            return "layer text not terminated";
        const Object* oprev = nullptr;
        for (Object* o = l->first_object; o; o = o->next) {
            if (o->prev != oprev) return "object prev link broken";
            if (o->kind < 1 || o->kind > 5) return "object kind out of range";
            if (!memchr(o->texture, 0, sizeof o->texture)) return "object texture not terminated";
            if (o->kind == KIND_POLYLINE) {
                auto* p = static_cast<PolylineData*>(o->data);
                if (p->count < 0 || (p->count > 0) != (p->points != nullptr))
                    return "polyline count and array disagree";
            }
            oprev = o;
        }
        prev = l;
    }
    if (g.scene.First_Layer && !in_list.count(g.scene.Current_Layer))
        return "Current_Layer not in the list";
    for (const Layer* l : in_list) {
        if (l->instance && !in_list.count(l->instance)) return "instance outside the list";
        const Layer* x = l->instance;
        for (size_t steps = 0; x; x = x->instance)
            if (x == l || ++steps > in_list.size()) return "instance loop";
    }
    return "";
}
