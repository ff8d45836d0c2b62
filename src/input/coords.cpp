// coords.cpp - typed coordinates and numbers, and the acceptance of a point
// with its point modifiers (End point, Mid point, Click screen) and point
// filters (X, Y, Z collected over several picks).
//
// Typed forms: x,y[,z] absolute; @x,y[,z] or %x,y[,z] relative to the base
// point; @d<a[,z] polar in the active viewport's own axes. A missing z is the
// third coordinate of the active viewport's elevation point.
#include <cctype>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <cstring>

#include "base/field.h"
#include "base/message.h"
#include "gfx/gfx.h"
#include "input/input.h"
#include "state.h"
#include "view/viewport.h"

namespace {

constexpr double kPi = 3.141592653589793;
constexpr int kPickHalf = 3;   // pick box half-size for End/Mid point


void Beep() {
    if (g.config.Beep_Sounds) X11_Beep();
}

// Reduced into [0, 360]: 360 itself stays 360.
double ReduceAngle(double a) {
    if (!std::isfinite(a)) return 0;
    if (std::fabs(a) > 1e6) a = std::fmod(a, 360.0);
    while (a > 360) a -= 360;
    while (a < 0) a += 360;
    return a;
}

void ScreenOfCursor() {
    Viewport* vp = &g.view.Active_Viewport;
    View_Project(vp, g.input.cursorPoint);
    g.input.cursorScreen[0] = vp->screen_x;
    g.input.cursorScreen[1] = vp->screen_y;
}

// End point (701) or Mid point (702) of the edge under the cursor.
int ResolveSnap(int which) {
    InputState& in = g.input;
    in.pendingSnap = 0;
    in.cursorStyle = 1;
    ScreenOfCursor();
    const double sx = in.cursorScreen[0], sy = in.cursorScreen[1];
    Point3 a, b;
    if (!std::isfinite(sx) || !std::isfinite(sy) || std::fabs(sx) > 1e7 || std::fabs(sy) > 1e7 ||
        !Snap_FindEdge((int)sx, (int)sy, kPickHalf, &a, &b)) {
        Msg_Printf(which == 701 ? "ENDpoint Not Found" : "MIDpoint Not Found");
        Beep();
        return 0;
    }
    if (which == 702) {
        in.cursorPoint = Vec_Add(a, Vec_Scale(Vec_Add(b, Vec_Scale(a, -1)), 0.5));
        return 1;
    }
    Viewport* vp = &g.view.Active_Viewport;
    View_Project(vp, a);
    const double da = std::hypot(vp->screen_x - sx, vp->screen_y - sy);
    View_Project(vp, b);
    const double db = std::hypot(vp->screen_x - sx, vp->screen_y - sy);
    in.cursorPoint = db < da ? b : a;   // the first end on a tie
    return 1;
}

// One step of a point filter; 1 when all three coordinates are collected.
int ResolveFilter() {
    InputState& in = g.input;
    struct Filter {
        int code;
        int takeX, takeY, takeZ;
        int next;           // the filter that collects the rest
        const char* need;
    };
    static const Filter kFilters[] = {
        {710, 1, 0, 0, 715, "(need Y,Z) "}, {711, 0, 1, 0, 714, "(need X,Z) "},
        {712, 0, 0, 1, 713, "(need X,Y) "}, {713, 1, 1, 0, 712, "(need Z) "},
        {714, 1, 0, 1, 711, "(need Y) "},   {715, 0, 1, 1, 710, "(need X) "},
    };
    for (const Filter& f : kFilters) {
        if (f.code != in.pointFilter) continue;
        if (f.takeX) in.filterPoint.x = in.cursorPoint.x, in.haveX = 1;
        if (f.takeY) in.filterPoint.y = in.cursorPoint.y, in.haveY = 1;
        if (f.takeZ) in.filterPoint.z = in.cursorPoint.z, in.haveZ = 1;
        if (in.haveX && in.haveY && in.haveZ) {
            in.cursorPoint = in.filterPoint;
            in.pointFilter = 0;
            in.haveX = in.haveY = in.haveZ = 0;
            return 1;
        }
        in.pointFilter = f.next;
        Msg_Printf("%s", f.need);
        return 0;
    }
    in.pointFilter = 0;
    return 1;
}

// A field read as a number; blanks were removed by the field reader.
double Number(const char* text) {
    double v = atof(text);
    return std::isfinite(v) ? v : 0;
}

}  // namespace

Point3 Input_OrthoDelta(Point3 d) {
    const double ax = std::fabs(d.x), ay = std::fabs(d.y), az = std::fabs(d.z);
    if (ay <= ax && az <= ax) return {d.x, 0, 0};
    if (ax < ay && az <= ay) return {0, d.y, 0};
    return {0, 0, d.z};
}

int Input_ParseCoords(const char* text) {
    InputState& in = g.input;
    const unsigned char first = (unsigned char)text[0];
    if (!first || !(isdigit(first) || strchr(".-,@%", first))) return 0;
    const char* sep = strpbrk(text, ",<");
    if (!sep) {
        if (!in.allowNumber) return 0;
        in.InputResult.number = Number(text);
        return -3;
    }
    const bool polar = *sep == '<';
    bool relative = false;
    const char* body = text;
    if (first == '@' || first == '%') {
        if (in.rubberShape == RUBBER_NONE) return 1;   // nothing to be relative to
        relative = true;
        body++;
    }
    char line[FIELD_MAX];
    snprintf(line, sizeof line, "(%s)", body);
    for (char* p = line; *p; p++)
        if (*p == '<') *p = ',';
    char f1[FIELD_MAX], f2[FIELD_MAX], f3[FIELD_MAX];
    if (!GetField(f1, line, 1) || !GetField(f2, line, 2)) return 0;
    const double x = Number(f1), y = Number(f2);
    const double z = GetField(f3, line, 3) ? Number(f3) : g.view.Active_Viewport.ELEVATION.z;

    if (relative && polar) {
        const Viewport& v = g.view.Active_Viewport;
        in.polarDist = std::fabs(x);
        in.polarAngle = ReduceAngle(y);
        const double rad = in.polarAngle * kPi / 180.0;
        Point3 p = Vec_Add(Vec_Add(Vec_Scale(v.axis_h, in.polarDist * std::cos(rad)),
                           Vec_Scale(v.axis_v, in.polarDist * std::sin(rad))),
                       Vec_Scale(v.axis_d, z));
        in.cursorPoint = Vec_Add(in.basePoint, p);
    } else if (relative) {
        in.cursorPoint = Vec_Add(in.basePoint, {x, y, z});
    } else {
        in.cursorPoint = {x, y, z};
    }
    in.typedPoint = 1;
    ScreenOfCursor();
    return -5;
}

int Input_AcceptPoint() {
    InputState& in = g.input;
    const int typed = in.typedPoint;
    in.typedPoint = 0;
    if (in.currentCommand == 0) return 0;
    const Viewport& v = g.view.Active_Viewport;
    if ((in.inputMask & 1) || v.VIEW == VIEW_3D) {
        Msg_Printf(v.VIEW == VIEW_3D ? " *Can't be in 3D View*" : "Can't Accept a Point");
        Beep();
        in.cursorStyle = 1;
        in.reprompt = 1;
        return 0;
    }
    if (in.pendingSnap == 705) {
        in.pendingSnap = 0;   // the raw point under the cursor
    } else {
        if (!typed && g.aids.orthoOn && in.rubberShape != RUBBER_NONE && in.rubberShape != RUBBER_RECT) {
            Point3 d = {in.cursorPoint.x - in.basePoint.x, in.cursorPoint.y - in.basePoint.y,
                        in.cursorPoint.z - in.basePoint.z};
            in.cursorPoint = Vec_Add(in.basePoint, Input_OrthoDelta(d));
        }
        if (in.pendingSnap == 701 || in.pendingSnap == 702) {
            if (!ResolveSnap(in.pendingSnap)) {
                in.reprompt = 1;
                return 0;
            }
        }
        if (in.pointFilter && !ResolveFilter()) return 0;
    }
    if (g.aids.blipsOn && g.screen.open) {
        Cursor_Erase();
        ScreenOfCursor();
        const int x = (int)in.cursorScreen[0], y = (int)in.cursorScreen[1];
        int keep = X11_GetColor(), mode = X11_GetWriteMode();
        X11_SetWriteMode(GFX_COPY);
        X11_SetColor(g.config.colors.view_blip);
        X11_MoveTo(x - 3, y);
        X11_LineTo(x + 3, y);
        X11_MoveTo(x, y - 3);
        X11_LineTo(x, y + 3);
        X11_SetColor(keep);
        X11_SetWriteMode(mode);
    }
    return -5;
}
