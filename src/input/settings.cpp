// settings.cpp - the named-settings table.
//
// Viewport settings act on the working record (Active_Viewport) unless the
// table says otherwise: CAM, TAR, UP and FOV act on all five records,
// ELEVATION on the working record and its slot, COORDINATES on all five.
#include "input/settings.h"

#include <cmath>
#include <cstdio>
#include <cstring>

#include "base/field.h"
#include "state.h"
#include "view/viewport.h"

namespace {

VarState& S() { return g.vars; }
Viewport& A() { return g.view.Active_Viewport; }

int Flag(int v) { return v != 0; }

struct VarEntry {
    const char* name;
    VarType type;
    void (*get)();   // setting -> scratch
    void (*set)();   // scratch -> setting; nullptr: read only
};

#define INT_VAR(name, expr, store) \
    {name, VAR_INT, [] { S().Var_Int = (expr); }, [] { store; }}
#define DBL_VAR(name, expr, store) \
    {name, VAR_DOUBLE, [] { S().Var_Double = (expr); }, [] { store; }}
#define TEXT_VAR(name, expr) \
    {name, VAR_TEXT, [] { CopyCut(S().Var_Text, sizeof S().Var_Text, (expr)); }, nullptr}

const VarEntry kVars[] = {
    INT_VAR("WORLD", A().WORLD, A().WORLD = Flag(S().Var_Int)),
    INT_VAR("CAMERA", A().CAMERA, A().CAMERA = Flag(S().Var_Int)),
    INT_VAR("COORDINATES", A().COORDINATES, {
        A().COORDINATES = Flag(S().Var_Int);
        for (int i = 1; i <= 4; i++) g.view.Viewports[i].COORDINATES = A().COORDINATES;
    }),
    INT_VAR("ORTHO", g.aids.orthoOn, g.aids.orthoOn = Flag(S().Var_Int)),
    INT_VAR("BLIPS", g.aids.blipsOn, g.aids.blipsOn = Flag(S().Var_Int)),
    INT_VAR("GRID", A().GRID, A().GRID = Flag(S().Var_Int)),
    INT_VAR("SNAP", A().SNAP, A().SNAP = Flag(S().Var_Int)),
    INT_VAR("CENTER", A().CENTER, A().CENTER = Flag(S().Var_Int)),
    INT_VAR("AXIS", A().AXIS, A().AXIS = Flag(S().Var_Int)),
    INT_VAR("AUTO-SEG", g.aids.Auto_Seg, g.aids.Auto_Seg = Flag(S().Var_Int)),
    INT_VAR("SEG_VALUE", g.aids.Seg_Value,
            g.aids.Seg_Value = S().Var_Int < 2 ? 2 : S().Var_Int),
    INT_VAR("COORDS_MODE", g.aids.coordsMode,
            g.aids.coordsMode = S().Var_Int < 1 ? 1 : S().Var_Int > 3 ? 3 : S().Var_Int),
    DBL_VAR("GRIDX", A().GRIDX, A().GRIDX = S().Var_Double),
    DBL_VAR("GRIDY", A().GRIDY, A().GRIDY = S().Var_Double),
    DBL_VAR("GRIDZ", A().GRIDZ, A().GRIDZ = S().Var_Double),
    DBL_VAR("SNAPX", A().SNAPX, A().SNAPX = S().Var_Double),
    DBL_VAR("SNAPY", A().SNAPY, A().SNAPY = S().Var_Double),
    DBL_VAR("SNAPZ", A().SNAPZ, A().SNAPZ = S().Var_Double),
    DBL_VAR("PITCH", A().PITCH, View_SetPitch(&A(), S().Var_Double)),
    DBL_VAR("HEADING", A().HEADING, View_SetHeading(&A(), S().Var_Double)),
    DBL_VAR("FOV", A().FOV, Views_SetFov(S().Var_Double)),
    DBL_VAR("CAM_HEADING", A().CAM_HEADING, View_SetCamHeading(&A(), S().Var_Double)),
    DBL_VAR("CAM_PITCH", A().CAM_PITCH, View_SetCamPitch(&A(), S().Var_Double)),
    DBL_VAR("CAM_TWIST", A().CAM_TWIST, View_SetCamTwist(&A(), S().Var_Double)),
    {"CAM", VAR_POINT, [] { S().Var_Point = A().CAM; }, [] { Views_SetCam(S().Var_Point); }},
    {"TAR", VAR_POINT, [] { S().Var_Point = A().TAR; }, [] { Views_SetTar(S().Var_Point); }},
    {"UP", VAR_POINT, [] { S().Var_Point = A().UP; }, [] { Views_SetUp(S().Var_Point); }},
    INT_VAR("VIEW", A().VIEW, View_SetKind(&A(), S().Var_Int)),
    {"ELEVATION", VAR_POINT, [] { S().Var_Point = View_GetCentre(&A()); },
     [] {
         View_SetCentre(&A(), S().Var_Point);
         int slot = g.view.Current_Viewport;
         if (slot >= 1 && slot <= 4) View_SetCentre(&g.view.Viewports[slot], S().Var_Point);
     }},
    DBL_VAR("AREA", A().AREA, View_SetArea(&A(), S().Var_Double)),
    TEXT_VAR("WORK_FILENAME", g.run.workFileName),
    TEXT_VAR("MAINMENU_NAME", g.config.MainMenu_Name),
    TEXT_VAR("SIDEMENU_NAME", g.config.SideMenu_Name),
    TEXT_VAR("SUPPORT_DIR", g.config.SUPPORT_DIR),
    TEXT_VAR("WORK_DIR", g.config.WORK_DIR),
    TEXT_VAR("QMR_DIR", g.config.QMR_DIR),
    TEXT_VAR("POV_DIR", g.config.POV_DIR),
};

#undef INT_VAR
#undef DBL_VAR
#undef TEXT_VAR

const VarEntry* Find(const char* name) {
    if (!name) return nullptr;
    for (const VarEntry& v : kVars)
        if (SameName(v.name, name)) return &v;
    return nullptr;
}

// Double to int as a C cast truncates, kept inside the int range.
int Truncate(double d) {
    if (std::isnan(d)) return 0;
    if (d >= 2147483647.0) return 2147483647;
    if (d <= -2147483648.0) return -2147483647 - 1;
    return static_cast<int>(d);
}

// Sets the scratch int and double, writes, and reads the stored value back.
const VarEntry* WriteNumber(const char* name, int i, double d) {
    const VarEntry* v = Find(name);
    if (!v) return nullptr;
    S().Var_Int = i;
    S().Var_Double = d;
    S().Var_Type = v->type;
    if (v->set && (v->type == VAR_INT || v->type == VAR_DOUBLE)) v->set();
    v->get();
    return v;
}

}  // namespace

int Var_Access(const char* name, int read) {
    const VarEntry* v = Find(name);
    if (!v) return 0;
    S().Var_Type = v->type;
    if (read) v->get();
    else if (v->set) v->set();
    return 1;
}

int Var_GetInt(const char* name, int* out) {
    const VarEntry* v = Find(name);
    if (!v || (v->type != VAR_INT && v->type != VAR_DOUBLE)) return 0;
    Var_Access(name, 1);
    *out = v->type == VAR_INT ? S().Var_Int : Truncate(S().Var_Double);
    return 1;
}

int Var_GetDouble(const char* name, double* out) {
    const VarEntry* v = Find(name);
    if (!v || (v->type != VAR_INT && v->type != VAR_DOUBLE)) return 0;
    Var_Access(name, 1);
    *out = v->type == VAR_INT ? S().Var_Int : S().Var_Double;
    return 1;
}

int Var_GetText(const char* name, char* out, size_t size) {
    const VarEntry* v = Find(name);
    if (!v || size == 0) return 0;
    Var_Access(name, 1);
    switch (v->type) {
        case VAR_INT: snprintf(out, size, "%d", S().Var_Int); break;
        case VAR_DOUBLE: snprintf(out, size, "%g", S().Var_Double); break;
        case VAR_POINT:
            snprintf(out, size, "%g,%g,%g", S().Var_Point.x, S().Var_Point.y, S().Var_Point.z);
            break;
        case VAR_TEXT: CopyCut(out, size, S().Var_Text); break;
    }
    return 1;
}

int Var_GetPoint(const char* name, Point3* out) {
    const VarEntry* v = Find(name);
    if (!v || v->type != VAR_POINT) return 0;
    Var_Access(name, 1);
    *out = S().Var_Point;
    return 1;
}

int Var_SetInt(const char* name, int* value) {
    const VarEntry* v = WriteNumber(name, *value, *value);
    if (!v) return 0;
    if (v->type == VAR_INT) *value = S().Var_Int;
    if (v->type == VAR_DOUBLE) *value = Truncate(S().Var_Double);
    return 1;
}

int Var_SetDouble(const char* name, double* value) {
    const VarEntry* v = WriteNumber(name, Truncate(*value), *value);
    if (!v) return 0;
    if (v->type == VAR_INT) *value = S().Var_Int;
    if (v->type == VAR_DOUBLE) *value = S().Var_Double;
    return 1;
}

int Var_SetPoint(const char* name, const Point3* value) {
    const VarEntry* v = Find(name);
    if (!v) return 0;
    if (v->type == VAR_POINT && v->set) {
        S().Var_Point = *value;
        S().Var_Type = VAR_POINT;
        v->set();
    }
    return 1;
}
