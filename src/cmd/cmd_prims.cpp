// cmd_prims.cpp - the ray-tracer primitives: SPHERE, CONE, CYLINDER, TORUS,
// DISC, PLANE, CUBE and HEIGHTFIELD, the segments question most of them
// ask, and how an object a command made or changed is shown in the views.
//
// Every primitive is made upright in its own axes and placed by `translate`
// alone, whatever direction its points were picked in: a length or a radius
// is a distance answer, a typed number or the distance of a picked point
// from the rubber band's base point. So a cone whose length was picked to
// the side of its start still stands along +Y, as long as that distance.
//
// Prompt masks: 16 the first point (Enter repeats the command), 20 a
// distance without a default (Enter repeats too), 4 a distance with the
// default shown in brackets (Enter takes it), 5 the segments question (no
// points). A prompt replaced by another command ends the command with 0
// and nothing made; an answer that gives no value where there is no
// default (a typed number too large to be one) ends it with 1, nothing made.
#include <climits>
#include <cmath>
#include <cstdio>

#include "base/message.h"
#include "cmd/ask.h"
#include "cmd/cmd.h"
#include "input/input.h"
#include "input/settings.h"
#include "model/selection.h"
#include "state.h"
#include "view/view_commands.h"
#include "view/view_draw.h"
#include "view/view_object.h"

namespace {

const int MASK_FIRST = 16;
const int MASK_LENGTH = 20;
const int MASK_DEFAULT = 4;
const int MASK_SEGMENTS = 5;

enum Got { GOT_VALUE, GOT_NONE, GOT_REPLACED };

// The command's result when a question gave no value.
int Stop(Got got) { return got == GOT_REPLACED ? 0 : 1; }

Got AskFirst(const char* prompt, Point3* p) {
    int got;
    if (!Ask_Point(prompt, MASK_FIRST, p, &got)) return GOT_REPLACED;
    return got ? GOT_VALUE : GOT_NONE;
}

// A distance answer from `base` under `mask`, the rubber band `shape`
// ("LINE" or "CIRCLE") drawn from `base`. With `at`, the point the distance
// reaches: the picked point, or for a typed number the point that far to
// the screen right of `base` in the active view.
Got AskLength(const char* prompt, int mask, Point3 base, const char* shape, double* value, Point3* at = nullptr) {
    if (shape[0] == 'C') {   // the circle band: the shared radius question
        int got;
        Input_SetMask(mask);
        if (!Ask_Distance(prompt, base, value, &got)) return GOT_REPLACED;
        if (!got) return GOT_NONE;
        if (at)
            *at = g.input.InputResult.kind == 0 ? g.input.InputResult.point
                                                : Vec_AddScaled(base, g.view.Active_Viewport.axis_h, *value);
        return GOT_VALUE;
    }
    Input_SetRubberBand(&base, shape, nullptr);
    AskAnswer a;
    if (!Ask_Any(prompt, nullptr, 1, mask, &a)) return GOT_REPLACED;
    if (a.kind == 0) {
        *value = Vec_Length(Vec_Sub(a.point, base));
        if (at) *at = a.point;
        return GOT_VALUE;
    }
    if (a.kind == -3) {
        *value = a.number;
        if (at) *at = Vec_AddScaled(base, g.view.Active_Viewport.axis_h, a.number);
        return GOT_VALUE;
    }
    return GOT_NONE;
}

// A distance with its default shown by `format` ("...<%g>: "): Enter takes it.
Got AskLengthOr(const char* format, Point3 base, const char* shape, double dflt, double* value) {
    char prompt[160];
    snprintf(prompt, sizeof prompt, format, dflt);
    Got got = AskLength(prompt, MASK_DEFAULT, base, shape, value);
    if (got == GOT_NONE) {
        *value = dflt;
        got = GOT_VALUE;
    }
    return got;
}

PrimitiveData NewPrimitive(int type, Point3 at) {
    PrimitiveData p = Primitive_Default();
    p.prim_type = type;
    p.translate = at;
    return p;
}

// Adds the finished record to Current_Layer and shows it.
int Finish(const PrimitiveData& p) {
    Create_Show(Add_Primitive(&p));
    return 1;
}

// Box and height field: a corner, then the Y, X and Z lengths, X defaulting
// to Y and Z to X. The lengths go to `size` (box) or `scale` (height field).
int BoxLike(const char* name, int type) {
    char prompt[160];
    Point3 corner;
    snprintf(prompt, sizeof prompt, "\n%s> Lower left corner: ", name);
    Got got = AskFirst(prompt, &corner);
    if (got != GOT_VALUE) return Stop(got);
    double x, y, z;
    snprintf(prompt, sizeof prompt, "\n%s> Y Length: ", name);
    if ((got = AskLength(prompt, MASK_LENGTH, corner, "LINE", &y)) != GOT_VALUE) return Stop(got);
    snprintf(prompt, sizeof prompt, "\n%s> X Length <%%g>: ", name);
    if ((got = AskLengthOr(prompt, corner, "LINE", y, &x)) != GOT_VALUE) return Stop(got);
    snprintf(prompt, sizeof prompt, "\n%s> Z Length <%%g>: ", name);
    if ((got = AskLengthOr(prompt, corner, "LINE", x, &z)) != GOT_VALUE) return Stop(got);
    PrimitiveData p = NewPrimitive(type, corner);
    if (type == PRIM_BOX) {
        p.size = {x, y, z};
    } else {   // the height field's extent is its scale over a unit box
        p.size = {1, 1, 1};
        p.scale = {x, y, z};
    }
    return Finish(p);
}

}  // namespace

void Create_Show(Object* obj) {
    if (!obj) {
        Msg_Printf("Out Of Memory!");
        return;
    }
    if (g.aids.Auto_Redraw) Views_RedrawAll();
    else Views_DrawObject(obj, g.scene.Current_Layer, View_LayerColour(g.scene.Current_Layer));
}

void Edit_DrawObject(const Object* obj, Layer* layer, int erase) {
    if (erase) {
        Views_DrawObject(obj, layer, g.config.colors.view_bkcolor);
        return;
    }
    Views_DrawObject(obj, layer, View_LayerColour(layer));
    // The selection is shown in the view it is made in, as picking shows it.
    if (obj->selected && Layer_Shown(layer)) Selection_DrawObject(obj, layer, Selection_ColourOf(obj, layer));
}

int Ask_Segments(const char* prefix, int* segments) {
    int dflt = 8;
    Var_GetInt("SEG_VALUE", &dflt);
    *segments = dflt;
    if (g.aids.Auto_Seg) return 1;
    char prompt[200];
    snprintf(prompt, sizeof prompt, "%s Set Segments <%d>: ", prefix, dflt);
    for (;;) {
        AskAnswer a;
        if (!Ask_Any(prompt, nullptr, 1, MASK_SEGMENTS, &a)) return 0;
        if (a.kind != -3) return 1;   // Enter or anything else: the setting
        const double n = std::trunc(a.number);
        if (n > 1) {
            *segments = n > INT_MAX ? INT_MAX : (int)n;
            return 1;
        }
        Msg_Printf("\nMust be greater that 1.");
    }
}

int Com_Sphere() {   // 220
    Point3 c;
    double r;
    Got got = AskFirst("\nSPHERE> Center point: ", &c);
    if (got == GOT_VALUE) got = AskLength("\nSPHERE> Radius: ", MASK_LENGTH, c, "CIRCLE", &r);
    if (got != GOT_VALUE) return Stop(got);
    PrimitiveData p = NewPrimitive(PRIM_SPHERE, c);
    p.p1 = r;
    if (!Ask_Segments("\nSPHERE> ", &p.prim_aux)) return 0;
    return Finish(p);
}

int Com_Cone() {   // 224
    Point3 s;
    double length, r1, r2;
    Got got = AskFirst("\nCONE> Start point: ", &s);
    if (got == GOT_VALUE) got = AskLength("\nCONE> Length of Cone: ", MASK_LENGTH, s, "LINE", &length);
    if (got == GOT_VALUE) got = AskLength("\nCONE> Radius #1: ", MASK_LENGTH, s, "CIRCLE", &r1);
    if (got == GOT_VALUE) got = AskLengthOr("\nCONE> Radius #2 <%g>: ", s, "CIRCLE", r1, &r2);
    if (got != GOT_VALUE) return Stop(got);
    PrimitiveData p = NewPrimitive(PRIM_CONE, s);
    p.p1 = r1;
    p.p2 = r2;
    p.p3 = length;
    if (!Ask_Segments("\nCONE> ", &p.prim_aux)) return 0;
    return Finish(p);
}

int Com_Cylinder() {   // 225
    Point3 s;
    double length, r;
    Got got = AskFirst("\nCYLINDER> Start point: ", &s);
    if (got == GOT_VALUE) got = AskLength("\nCYLINDER> Length of Cylinder: ", MASK_LENGTH, s, "LINE", &length);
    if (got == GOT_VALUE) got = AskLength("\nCYLINDER> Set Radius: ", MASK_LENGTH, s, "CIRCLE", &r);
    if (got != GOT_VALUE) return Stop(got);
    PrimitiveData p = NewPrimitive(PRIM_CONE, s);
    p.p1 = p.p2 = r;
    p.p3 = length;
    if (!Ask_Segments("\nCYLINDER> ", &p.prim_aux)) return 0;
    return Finish(p);
}

// The donut radius is measured from the point that gave the inner radius;
// a typed inner radius stands for the point that far to the screen right.
int Com_Torus() {   // 221
    Point3 c, inner;
    double r1, r2;
    Got got = AskFirst("\nTORUS> Center point: ", &c);
    if (got == GOT_VALUE) got = AskLength("\nTORUS> Inner Radius: ", MASK_LENGTH, c, "CIRCLE", &r1, &inner);
    if (got == GOT_VALUE) got = AskLength("\nTORUS> Set Donut Radius: ", MASK_LENGTH, inner, "CIRCLE", &r2);
    if (got != GOT_VALUE) return Stop(got);
    PrimitiveData p = NewPrimitive(PRIM_TORUS, c);
    p.p1 = r1;
    p.p2 = r2;
    if (!Ask_Segments("\nTORUS> ", &p.prim_aux)) return 0;
    return Finish(p);
}

int Com_Disc() {   // 222
    Point3 c;
    double r;
    Got got = AskFirst("\nDISC> Center point: ", &c);
    if (got == GOT_VALUE) got = AskLength("\nDISC> Outer Radius: ", MASK_LENGTH, c, "CIRCLE", &r);
    if (got != GOT_VALUE) return Stop(got);
    PrimitiveData p = NewPrimitive(PRIM_DISC, c);
    p.p2 = r;   // p1, the hole, stays 0
    if (!Ask_Segments("\nDISC> ", &p.prim_aux)) return 0;
    return Finish(p);
}

int Com_Plane() {   // 227
    Point3 c;
    double s;
    Got got = AskFirst("\nPLANE> Center point: ", &c);
    if (got == GOT_VALUE) got = AskLength("\nPLANE> Scale (for visual refrence): ", MASK_LENGTH, c, "LINE", &s);
    if (got != GOT_VALUE) return Stop(got);
    PrimitiveData p = NewPrimitive(PRIM_PLANE, c);
    p.scale = {s, s, s};   // only the square drawn in the views: the plane itself is endless
    p.prim_aux = 1;
    return Finish(p);
}

int Com_Cube() { return BoxLike("CUBE", PRIM_BOX); }                  // 223
int Com_HeightField() { return BoxLike("HEIGHTFIELD", PRIM_HEIGHT_FIELD); }   // 226
