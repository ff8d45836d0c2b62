// viewport.cpp - viewport records: defaults, setters, projection both ways, camera.
//
// Pure arithmetic on one record (plus the shared camera matrix of g.view):
// nothing here draws. Inputs are defended against NaN and huge values so
// that a bad number typed by the user or read from a file can only give a
// useless picture, never a crash: the pen rejects non-finite pixels.
#include "view/viewport.h"

#include <cfloat>
#include <cmath>

#include "state.h"

namespace {

const double DEG_PER_RAD = 57.29577951;
const double MIN_AREA = 1e-14;   // keeps pixels_per_unit finite

struct KindAxes {
    int kind;
    Point3 h, v, d;
    const char* title;
    const char* worldTitle;
};

const KindAxes kKinds[] = {
    {VIEW_TOP, {1, 0, 0}, {0, 0, 1}, {0, 1, 0}, "TOP", "WORLD [TOP]"},
    {VIEW_BOTTOM, {-1, 0, 0}, {0, 0, 1}, {0, -1, 0}, "BOTTOM", "WORLD [BOTTOM]"},
    {VIEW_RIGHT, {0, 0, 1}, {0, 1, 0}, {1, 0, 0}, "RIGHT", "WORLD [RIGHT]"},
    {VIEW_LEFT, {0, 0, -1}, {0, 1, 0}, {-1, 0, 0}, "LEFT", "WORLD [LEFT]"},
    {VIEW_FRONT, {1, 0, 0}, {0, 1, 0}, {0, 0, -1}, "FRONT", "WORLD [FRONT]"},
    {VIEW_BACK, {-1, 0, 0}, {0, 1, 0}, {0, 0, 1}, "BACK", "WORLD [BACK]"},
};

const KindAxes* FindKind(int kind) {
    for (const KindAxes& k : kKinds)
        if (k.kind == kind) return &k;
    return nullptr;
}

bool Finite(Point3 a) { return std::isfinite(a.x) && std::isfinite(a.y) && std::isfinite(a.z); }

// A pixel coordinate clamped into [0, limit]; NaN becomes 0.
double ClampPixel(double v, double limit) {
    if (!(v >= 0)) return 0;
    if (v > limit) return limit;
    return v;
}

// Fills the derived rectangle fields from rect_*; no clamping.
void DeriveRect(Viewport* vp) {
    vp->half_height_px = (int)((vp->rect_bottom - vp->rect_top) / 2);
    vp->half_width_px = (int)((vp->rect_right - vp->rect_left) / 2);
    vp->screen_cx = vp->rect_left + vp->half_width_px;
    vp->screen_cy = vp->rect_top + vp->half_height_px;
    View_SetArea(vp, vp->AREA);
}

}  // namespace

double View_NormAngle(double deg) {
    if (!std::isfinite(deg)) return 0;
    double a = std::fmod(deg, 360.0);
    if (a < 0) a += 360.0;
    if (a >= 360.0) a = 0;   // a tiny negative angle rounds up to 360
    return a;
}

void View_ResetExtents(Viewport* vp) {
    vp->ext_max_x = DBL_MIN;
    vp->ext_max_y = DBL_MIN;
    vp->ext_min_x = DBL_MAX;
    vp->ext_min_y = DBL_MAX;
    vp->extents_found = 0;
}

void View_Init(Viewport* vp) {
    *vp = Viewport{};
    View_SetKind(vp, VIEW_TOP);
    vp->AREA = 10.0;
    vp->rect_left = 0;
    vp->rect_right = 639;
    vp->rect_top = 0;
    vp->rect_bottom = 479;
    DeriveRect(vp);   // not View_SetRect: the defaults need no screen to clamp against
    View_SetPitch(vp, 0);
    View_SetHeading(vp, 0);
    View_SetCamPitch(vp, 0);
    View_SetCamHeading(vp, 0);
    View_SetCamTwist(vp, 0);
    View_SetFov(vp, vp->FOV);
    View_ResetExtents(vp);
}

Viewport View_Initial() {
    Viewport vp;
    View_Init(&vp);
    return vp;
}

void View_SetRect(Viewport* vp, double x1, double y1, double x2, double y2) {
    double w = g.view.screen_width, h = g.view.screen_height;
    x1 = ClampPixel(x1, w);
    x2 = ClampPixel(x2, w);
    y1 = ClampPixel(y1, h);
    y2 = ClampPixel(y2, h);
    vp->rect_left = std::fmin(x1, x2);
    vp->rect_right = std::fmax(x1, x2);
    vp->rect_top = std::fmin(y1, y2);
    vp->rect_bottom = std::fmax(y1, y2);
    DeriveRect(vp);
    vp->valid = 1;
}

void View_SetArea(Viewport* vp, double a) {
    if (!(a >= MIN_AREA)) a = MIN_AREA;   // also catches NaN
    if (a > 1e300) a = 1e300;
    vp->AREA = a;
    if (vp->half_height_px > 0) {
        vp->area_half_width = a * (2.0 * vp->half_width_px) / (2.0 * vp->half_height_px);
        vp->pixels_per_unit = vp->half_height_px / a;
    } else {
        // An empty rectangle shows nothing; keep the numbers finite.
        vp->area_half_width = a;
        vp->pixels_per_unit = 0;
    }
}

void View_SetKind(Viewport* vp, int kind) {
    if (const KindAxes* k = FindKind(kind)) {
        vp->axis_h = k->h;
        vp->axis_v = k->v;
        vp->axis_d = k->d;
    }
    vp->VIEW = kind;
}

const char* View_Title(const Viewport* vp) {
    if (vp->VIEW == VIEW_3D) return "3D";
    const KindAxes* k = FindKind(vp->VIEW);
    if (!k) return "";
    return vp->WORLD ? k->worldTitle : k->title;
}

void View_SetPitch(Viewport* vp, double deg) {
    vp->PITCH = View_NormAngle(deg);
    vp->cos_pitch = std::cos(vp->PITCH / DEG_PER_RAD);
    vp->sin_pitch = std::sin(vp->PITCH / DEG_PER_RAD);
}

void View_SetHeading(Viewport* vp, double deg) {
    vp->HEADING = View_NormAngle(deg);
    vp->cos_heading = std::cos(vp->HEADING / DEG_PER_RAD);
    vp->sin_heading = std::sin(vp->HEADING / DEG_PER_RAD);
}

void View_SetCamPitch(Viewport* vp, double deg) {
    if (!std::isfinite(deg)) deg = 0;
    vp->CAM_PITCH = deg;
    vp->cam_cos_pitch = -std::cos(deg / DEG_PER_RAD);
    vp->cam_sin_pitch = -std::sin(deg / DEG_PER_RAD);
}

void View_SetCamHeading(Viewport* vp, double deg) {
    if (!std::isfinite(deg)) deg = 0;
    vp->CAM_HEADING = deg;
    vp->cam_cos_heading = -std::cos(deg / DEG_PER_RAD);
    vp->cam_sin_heading = -std::sin(deg / DEG_PER_RAD);
}

void View_SetCamTwist(Viewport* vp, double deg) {
    if (!std::isfinite(deg)) deg = 0;
    vp->CAM_TWIST = deg;
    vp->cam_cos_twist = std::cos(deg / DEG_PER_RAD);
    vp->cam_sin_twist = std::sin(deg / DEG_PER_RAD);
}

void View_SetFov(Viewport* vp, double deg) {
    vp->FOV = View_NormAngle(deg);
    double t = std::tan(vp->FOV / DEG_PER_RAD / 2);
    // FOV 0 would give an infinite focal length; 180 a negative one on
    // rounding. Both are useless views but must stay finite numbers.
    vp->focal = (std::fabs(t) < 1e-14) ? 1e14 : 1.0 / t;
}

// Aims the shared camera. When cam equals tar (or either is not finite)
// there is no direction: CAM and TAR are still stored, so the settings read
// back what was written, but the matrix, the angles and camera_valid keep
// their previous values and 0 is returned. When UP is parallel to the view
// direction (or zero), the world axis most nearly at right angles to the
// direction stands in for it.
int View_LookAt(Viewport* vp, Point3 cam, Point3 tar) {
    vp->TAR = tar;
    vp->CAM = cam;
    Point3 d = Vec_Sub(tar, cam);
    double len = Vec_Length(d);
    if (!Finite(cam) || !Finite(tar) || !(len > 0) || !std::isfinite(len)) return 0;

    Point3 up = {-vp->UP.x, -vp->UP.y, -vp->UP.z};
    Point3 rz = Vec_Scale(d, 1.0 / len);
    Point3 rx = Vec_Cross(up, d);
    double lx = Vec_Length(rx);
    if (!Finite(up) || !(lx > 1e-12 * len * Vec_Length(up))) {
        Point3 axis = {0, -1, 0};
        if (std::fabs(rz.y) > 0.9) axis = {0, 0, -1};
        rx = Vec_Cross(axis, d);
        lx = Vec_Length(rx);
    }
    rx = Vec_Scale(rx, 1.0 / lx);
    Point3 ry = Vec_Cross(rz, rx);
    ry = Vec_Scale(ry, 1.0 / Vec_Length(ry));

    ViewState& v = g.view;
    v.row_x = rx;
    v.row_y = ry;
    v.row_z = rz;
    v.t_x = -Vec_Dot(rx, cam);
    v.t_y = -Vec_Dot(ry, cam);
    v.t_z = -Vec_Dot(rz, cam);
    vp->camera_valid = 1;

    // Heading about the Y axis from +Z, pitch above the horizontal.
    View_SetCamHeading(vp, View_NormAngle(std::atan2(d.x, d.z) * DEG_PER_RAD));
    View_SetCamPitch(vp, std::atan2(d.y, std::hypot(d.x, d.z)) * DEG_PER_RAD);
    View_SetCamTwist(vp, 0);
    return 1;
}

void View_SetCentre(Viewport* vp, Point3 p) { vp->ELEVATION = p; }

Point3 View_GetCentre(const Viewport* vp) { return vp->ELEVATION; }

double View_GetElevation(const Viewport* vp) { return Vec_Dot(vp->ELEVATION, vp->axis_d); }

void View_SetElevation(Viewport* vp, double e) {
    Point3 c = vp->ELEVATION;
    vp->ELEVATION = Vec_Add(Vec_Add(Vec_Scale(vp->axis_h, Vec_Dot(c, vp->axis_h)),
                                    Vec_Scale(vp->axis_v, Vec_Dot(c, vp->axis_v))),
                            Vec_Scale(vp->axis_d, e));
}

void View_CopyInto(Viewport* dst, const Viewport* src) {
    double l = dst->rect_left, t = dst->rect_top, r = dst->rect_right, b = dst->rect_bottom;
    *dst = *src;
    View_SetRect(dst, l, t, r, b);
}

void View_Project(Viewport* vp, Point3 p) {
    if (vp->VIEW == VIEW_3D) {
        const ViewState& v = g.view;
        vp->eye_point.x = (Vec_Dot(p, v.row_x) + v.t_x) * vp->focal;
        vp->eye_point.y = (Vec_Dot(p, v.row_y) + v.t_y) * vp->focal;
        vp->eye_point.z = Vec_Dot(p, v.row_z) + v.t_z;
        vp->screen_x = vp->screen_cx;   // the pen divides by depth per line
        vp->screen_y = vp->screen_cy;
        return;
    }
    if (vp->VIEW == VIEW_SCREEN) {
        vp->screen_x = p.x;
        vp->screen_y = p.y;
        return;
    }
    Point3 q = Vec_Sub(p, vp->ELEVATION);
    double a = Vec_Dot(q, vp->axis_h), b = Vec_Dot(q, vp->axis_v);
    if (vp->WORLD) {
        double n = Vec_Dot(q, vp->axis_d);
        double u = a * vp->cos_heading - b * vp->sin_heading;
        double w = n * vp->sin_pitch + (a * vp->sin_heading + b * vp->cos_heading) * vp->cos_pitch;
        a = u;
        b = w;
    }
    vp->screen_x = a * vp->pixels_per_unit + vp->screen_cx;
    vp->screen_y = vp->screen_cy - b * vp->pixels_per_unit;
}

void View_ScreenToWorld(Viewport* vp, int sx, int sy) {
    if (vp->VIEW == VIEW_3D) {
        vp->picked_point = {0, 0, 0};
        return;
    }
    if (!(vp->pixels_per_unit > 0)) {   // empty rectangle: every pixel is the centre
        vp->picked_point = vp->ELEVATION;
        return;
    }
    double h = (sx - vp->screen_cx) / vp->pixels_per_unit;
    double v = (vp->screen_cy - sy) / vp->pixels_per_unit;
    if (vp->WORLD) {
        if (vp->cos_pitch != 0) v = v / vp->cos_pitch;
        double r = std::sqrt(h * h + v * v);
        double th = std::atan2(v, h) - vp->HEADING / DEG_PER_RAD;
        h = r * std::cos(th);
        v = r * std::sin(th);
    }
    Point3 p = {vp->ELEVATION.x + h * vp->axis_h.x + v * vp->axis_v.x,
                vp->ELEVATION.y + h * vp->axis_h.y + v * vp->axis_v.y,
                vp->ELEVATION.z + h * vp->axis_h.z + v * vp->axis_v.z};
    if (vp->SNAP) {
        // Towards zero from the world origin; a zero spacing leaves that axis alone.
        double a = Vec_Dot(p, vp->axis_h), b = Vec_Dot(p, vp->axis_v), n = Vec_Dot(p, vp->axis_d);
        if (vp->SNAPX != 0) a -= std::fmod(a, vp->SNAPX);
        if (vp->SNAPY != 0) b -= std::fmod(b, vp->SNAPY);
        p = {a * vp->axis_h.x + b * vp->axis_v.x + n * vp->axis_d.x,
             a * vp->axis_h.y + b * vp->axis_v.y + n * vp->axis_d.y,
             a * vp->axis_h.z + b * vp->axis_v.z + n * vp->axis_d.z};
    }
    vp->picked_point = p;
}

namespace {

// The five records in the order the settings write them: the slots, then
// the working record last, so the shared camera matrix follows it.
template <typename F>
void ForAllRecords(F f) {
    for (int i = 1; i <= 4; i++) f(&g.view.Viewports[i]);
    f(&g.view.Active_Viewport);
}

}  // namespace

void Views_SetCam(Point3 cam) {
    ForAllRecords([&](Viewport* vp) { View_LookAt(vp, cam, vp->TAR); });
}

void Views_SetTar(Point3 tar) {
    ForAllRecords([&](Viewport* vp) { View_LookAt(vp, vp->CAM, tar); });
}

void Views_SetUp(Point3 up) {
    ForAllRecords([&](Viewport* vp) { vp->UP = up; });
    Viewport* a = &g.view.Active_Viewport;
    if (a->camera_valid) View_LookAt(a, a->CAM, a->TAR);   // the matrix follows the new up
}

void Views_SetFov(double deg) {
    ForAllRecords([&](Viewport* vp) { View_SetFov(vp, deg); });
}
