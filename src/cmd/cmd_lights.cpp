// cmd_lights.cpp - lights and the camera: POINTLIGHT, AREALIGHT, SPOTLIGHT,
// the light dialog (editlght.dlg, also 302's edit of a light), CAMERA and
// the camera dialog (camera.dlg, 510).
//
// A light starts from the defaults every command shares and becomes one
// object of Current_Layer. The camera is no object: its location, target,
// sky vector and field of view are the views' named settings CAM, TAR, UP
// and FOV, and its aspect ratio the scene's; the scene file's camera block
// is written from them.
//
// CAMERA redraws every viewport when the camera is on the screen: a
// viewport of the layout shows the camera icon (its CAMERA setting) or is
// the 3D view, whose picture the camera makes. Otherwise nothing on the
// screen depends on it and nothing is redrawn.
#include <cmath>
#include <cstdio>

#include "base/message.h"
#include "cmd/ask.h"
#include "cmd/cmd.h"
#include "input/input.h"
#include "input/settings.h"
#include "state.h"
#include "ui/dialog.h"
#include "ui/form.h"
#include "view/view_commands.h"
#include "view/viewport.h"

namespace {

const int MASK_POINT = 16;    // Enter repeats the command
const int MASK_SIZE = 23;     // a number; no points; Enter repeats the command
const int MASK_ANGLE = 5;     // a number; no points; Enter takes the default

// The record every light command starts from.
LightData NewLight(int flags, Point3 position) {
    LightData l = Light_Default();
    l.light_flags = (u8)flags;
    l.position = position;
    l.adaptive = 1;
    l.radius = 35;
    l.falloff = 40;
    l.tightness = 10;
    return l;
}

int Finish(const LightData& l) {
    Create_Show(Add_Light(&l));
    return 1;
}

// A point under the repeat mask: 1 with *p, 0 replaced, -1 no point.
int AskPoint(const char* prompt, Point3* p) {
    int got;
    if (!Ask_Point(prompt, MASK_POINT, p, &got)) return 0;
    return got ? 1 : -1;
}

// The centre, then the look-at point with a line from it.
int AskAimed(const char* first, const char* second, Point3* position, Point3* point_at) {
    int r = AskPoint(first, position);
    if (r != 1) return r;
    Input_SetRubberBand(position, "LINE", nullptr);
    return AskPoint(second, point_at);
}

// A number typed under `mask`: 1 with *v, 0 replaced, -1 none typed.
int AskTyped(const char* prompt, int mask, double* v) {
    AskAnswer a;
    if (!Ask_Any(prompt, nullptr, 1, mask, &a)) return 0;
    if (a.kind != -3) return -1;
    *v = a.number;
    return 1;
}

// Any viewport of the layout shows the camera: its icon, or the 3D view.
int CameraOnScreen() {
    static const int kLastSlot[8] = {0, 1, 2, 2, 3, 3, 4, 4};
    const ViewState& v = g.view;
    const Viewport& a = v.Active_Viewport;
    if (a.CAMERA || a.VIEW == VIEW_3D) return 1;
    const int layout = v.Viewport_Layout < 1 ? 1 : v.Viewport_Layout > 7 ? 7 : v.Viewport_Layout;
    if (layout == 1) return 0;
    for (int slot = 1; slot <= kLastSlot[layout]; slot++)
        if (slot != v.Current_Viewport && (v.Viewports[slot].CAMERA || v.Viewports[slot].VIEW == VIEW_3D)) return 1;
    return 0;
}

}  // namespace

int Com_PointLight() {   // 229
    Point3 c;
    int r = AskPoint("\nPOINTLIGHT> Center point: ", &c);
    if (r != 1) return r < 0 ? 1 : 0;
    return Finish(NewLight(0, c));
}

int Com_AreaLight() {   // 230
    Point3 c, at;
    int r = AskAimed("\nAREALIGHT> Center point: ", "\nAREALIGHT> Look at point: ", &c, &at);
    if (r != 1) return r < 0 ? 1 : 0;
    LightData l = NewLight(LIGHT_AREA, c);
    l.point_at = at;
    if (!AskTyped("\nAREALIGHT> Set Heigth of Area: ", MASK_SIZE, &l.area_height)) return 0;
    if (!AskTyped("\nAREALIGHT> Set Width of Area: ", MASK_SIZE, &l.area_width)) return 0;
    return Finish(l);
}

int Com_SpotLight() {   // 228
    Point3 c, at;
    int r = AskAimed("\nSPOTLIGHT> Center point: ", "\nSPOTLIGHT> Look at point: ", &c, &at);
    if (r != 1) return r < 0 ? 1 : 0;
    LightData l = NewLight(LIGHT_SPOT, c);
    l.point_at = at;
    double v;
    if (!(r = AskTyped("\nSPOTLIGHT> Set Radius <35>: ", MASK_ANGLE, &v))) return 0;
    l.radius = r > 0 ? View_NormAngle(v) : 35;
    char prompt[80];
    snprintf(prompt, sizeof prompt, "\nSPOTLIGHT> Set Falloff <%g>: ", l.radius + 5);
    if (!(r = AskTyped(prompt, MASK_ANGLE, &v))) return 0;
    // The falloff is read as a whole number of degrees.
    l.falloff = r > 0 ? View_NormAngle(Form_ReadInt(g.input.InputResult.text)) : l.radius + 5;
    if (l.falloff < l.radius) l.falloff = l.radius;
    return Finish(l);
}

int Light_Dialog(Object* object) {
    Dialog d;
    if (!Dialog_Open(&d, "editlght.dlg")) return 0;
    LightData* rec = (LightData*)object->data;
    LightData c = *rec;
    int area = (c.light_flags & LIGHT_AREA) != 0, spot = (c.light_flags & LIGHT_SPOT) != 0,
        jitter = (c.light_flags & LIGHT_JITTER) != 0;
    const FormField fields[] = {
        {2, FORM_CHECK, &area, nullptr, nullptr, 0},
        {3, FORM_CHECK, &spot, nullptr, nullptr, 0},
        {4, FORM_CHECK, &jitter, nullptr, nullptr, 0},
        {5, FORM_DOUBLE, &c.position.x, "%g", nullptr, 0},
        {6, FORM_DOUBLE, &c.position.y, "%g", nullptr, 0},
        {7, FORM_DOUBLE, &c.position.z, "%g", nullptr, 0},
        {8, FORM_DOUBLE, &c.color.x, "%g", nullptr, 0},
        {9, FORM_DOUBLE, &c.color.y, "%g", nullptr, 0},
        {10, FORM_DOUBLE, &c.color.z, "%g", nullptr, 0},
        {11, FORM_DOUBLE, &c.point_at.x, "%g", nullptr, 0},
        {12, FORM_DOUBLE, &c.point_at.y, "%g", nullptr, 0},
        {13, FORM_DOUBLE, &c.point_at.z, "%g", nullptr, 0},
        {14, FORM_DOUBLE, &c.area_height, "%g", nullptr, 0},
        {15, FORM_DOUBLE, &c.area_width, "%g", nullptr, 0},
        {16, FORM_INT, &c.adaptive, "%d", nullptr, 0},
        {17, FORM_INT, &c.area_n1, "%d", nullptr, 0},
        {18, FORM_INT, &c.area_n2, "%d", nullptr, 0},
        {19, FORM_INT, &c.tightness, "%d", nullptr, 0},
        {20, FORM_DOUBLE, &c.radius, "%g", nullptr, 0},
        {21, FORM_DOUBLE, &c.falloff, "%g", nullptr, 0},
    };
    if (!Form_Run(&d, fields, (int)(sizeof fields / sizeof fields[0]))) return 0;
    c.light_flags = (u8)((c.light_flags & ~(LIGHT_AREA | LIGHT_SPOT | LIGHT_JITTER)) | (area ? LIGHT_AREA : 0) |
                         (spot ? LIGHT_SPOT : 0) | (jitter ? LIGHT_JITTER : 0));
    *rec = c;
    return 1;
}

int Light_Edit(Object* obj, Layer* layer) {
    LightData* rec = (LightData*)obj->data;
    const LightData before = *rec;
    if (!Light_Dialog(obj)) return 1;
    const LightData after = *rec;
    *rec = before;   // erase the light where it was, then draw it as it is now
    Edit_DrawObject(obj, layer, 1);
    *rec = after;
    Edit_DrawObject(obj, layer, 0);
    return 1;
}

int Com_Camera() {   // 231
    Point3 cam, tar;
    int r = AskPoint("\nCAMERA> Camera point: ", &cam);
    if (r != 1) return r < 0 ? 1 : 0;
    for (;;) {
        Input_SetRubberBand(&cam, "LINE", nullptr);
        if ((r = AskPoint("\nCAMERA> Look_At point: ", &tar)) != 1) return r < 0 ? 1 : 0;
        if (tar.x != cam.x || tar.y != cam.y || tar.z != cam.z) break;
        Msg_Printf("\nThe camera can't look at its own point.");
    }
    Var_SetPoint("CAM", &cam);
    Var_SetPoint("TAR", &tar);
    if (CameraOnScreen()) Views_RedrawAll();
    return 1;
}

// The aspect ratio typed as 0 means the usual 4:3.
void AspectRule(void* v) {
    double* d = static_cast<double*>(v);
    if (*d == 0) *d = 1.333333;
}
void FovRule(void* v) {
    double* d = static_cast<double*>(v);
    *d = View_NormAngle(*d);
}

int Camera_Dialog() {
    Dialog d;
    if (!Dialog_Open(&d, "camera.dlg")) return 0;
    Point3 cam{0, 0, 0}, tar{0, 0, 0}, up{0, 1, 0};
    double fov = 45, aspect = g.view.camera_aspect;
    int shown = 0;
    Var_GetPoint("CAM", &cam);
    Var_GetPoint("TAR", &tar);
    Var_GetPoint("UP", &up);
    Var_GetDouble("FOV", &fov);
    Var_GetInt("CAMERA", &shown);
    const FormField fields[] = {
        {2, FORM_DOUBLE, &cam.x, "%g", nullptr, 0},  {3, FORM_DOUBLE, &cam.y, "%g", nullptr, 0},
        {4, FORM_DOUBLE, &cam.z, "%g", nullptr, 0},  {5, FORM_DOUBLE, &tar.x, "%g", nullptr, 0},
        {6, FORM_DOUBLE, &tar.y, "%g", nullptr, 0},  {7, FORM_DOUBLE, &tar.z, "%g", nullptr, 0},
        {8, FORM_DOUBLE, &up.x, "%g", nullptr, 0},   {9, FORM_DOUBLE, &up.y, "%g", nullptr, 0},
        {10, FORM_DOUBLE, &up.z, "%g", nullptr, 0},  {11, FORM_CHECK, &shown, nullptr, nullptr, 0},
        {12, FORM_DOUBLE, &fov, "%3.2f", FovRule, 0}, {13, FORM_DOUBLE, &aspect, "%3.2f", AspectRule, 0},
    };
    if (!Form_Run(&d, fields, (int)(sizeof fields / sizeof fields[0]))) return 0;
    Var_SetPoint("UP", &up);   // first, so that aiming uses the new sky
    Var_SetPoint("CAM", &cam);
    Var_SetPoint("TAR", &tar);
    Var_SetDouble("FOV", &fov);
    Var_SetInt("CAMERA", &shown);
    g.view.camera_aspect = aspect;
    return 1;
}

int Com_CameraDialog() {   // 510
    g.input.InputResult.code = 0;
    if (Camera_Dialog() && g.aids.Auto_Regen) Views_RedrawAll();
    return 1;
}
