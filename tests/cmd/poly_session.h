// poly_session.h - sessions of the polyline commands in a TOP view (screen
// right +x, screen up +z): scripts of typed text with clicks at world
// points, and polyline records written out as text to compare with
// records worked out by hand.
#pragma once

#include <cmath>
#include <cstdlib>
#include <string>
#include <vector>

#include "input/session.h"

// Queues typed text, where "{x,z}" is a click at the world point (x, 0, z)
// of the active viewport.
inline void PlayScript(const std::string& script) {
    std::string text;
    for (size_t i = 0; i < script.size(); i++) {
        if (script[i] != '{') {
            text += script[i];
            continue;
        }
        if (!text.empty()) Headless_PushText(text.c_str());
        text.clear();
        char* end;
        const double x = strtod(script.c_str() + i + 1, &end);
        const double z = strtod(end + 1, &end);
        Viewport& vp = g.view.Active_Viewport;
        View_Project(&vp, {x, 0, z});
        Headless_PushClick((int)vp.screen_x, (int)vp.screen_y);
        i = end - script.c_str();   // at the '}'
    }
    if (!text.empty()) Headless_PushText(text.c_str());
}

class PolySessionTest : public SessionTest {
  protected:
    void SetUp() override {
        SessionTest::SetUp();
        g.cmd.extraCommands.clear();   // the real POLYLINE and CIRCLE, not the stand-ins
    }

    void Play(const std::string& script) { PlayScript(script); }

    // Plays the script through the command loop until the input runs out;
    // returns what was printed.
    std::string Run(const std::string& script) {
        Headless_ClearTranscript();
        Play(script);
        EXPECT_FALSE(RunLoop());
        return Headless_Transcript();
    }

    // A polyline record as text: form, flags, segments, sizes, angle, the
    // two parameters and the points ("%g").
    static std::string Dump(const Object* o) {
        if (!o || o->kind != KIND_POLYLINE) return "<no polyline>";
        const PolylineData* p = (const PolylineData*)o->data;
        char buf[256];
        snprintf(buf, sizeof buf, "f%d c%x s%d m%d n%d a%g p1 %g,%g,%g p2 %g,%g,%g :", p->form, p->poly_flags,
                 p->segments, p->size_m, p->size_n, p->angle, p->param1.x, p->param1.y, p->param1.z, p->param2.x,
                 p->param2.y, p->param2.z);
        std::string s = buf;
        for (int i = 0; i < p->count; i++) {
            snprintf(buf, sizeof buf, " %g,%g,%g", Round(p->points[i].x), Round(p->points[i].y),
                     Round(p->points[i].z));
            s += buf;
        }
        return s;
    }
    // Noise below 1e-12 written as the value it stands for.
    static double Round(double v) {
        const double r = std::round(v * 1e6) / 1e6;
        return (std::fabs(v - r) < 1e-12 ? r : v) + 0.0;   // + 0.0: no "-0"
    }

    static Object* Newest() { return g.scene.Current_Layer->first_object; }
    static int ObjectCount() {
        int n = 0;
        for (const Layer* l = g.scene.First_Layer; l; l = l->next)
            for (const Object* o = l->first_object; o; o = o->next) n++;
        return n;
    }
    // Every object of the scene as text, newest first.
    static std::string Scene() {
        std::string s;
        for (const Layer* l = g.scene.First_Layer; l; l = l->next)
            for (const Object* o = l->first_object; o; o = o->next) {
                if (o->kind == KIND_POLYLINE) {
                    s += Dump(o) + "\n";
                } else if (o->kind == KIND_TRIANGLE) {
                    const Point3* c = ((const TriangleData*)o->data)->corner;
                    char buf[160];
                    snprintf(buf, sizeof buf, "tri %g,%g,%g %g,%g,%g %g,%g,%g\n", Round(c[0].x), Round(c[0].y),
                             Round(c[0].z), Round(c[1].x), Round(c[1].y), Round(c[1].z), Round(c[2].x),
                             Round(c[2].y), Round(c[2].z));
                    s += buf;
                } else {
                    s += "kind " + std::to_string(o->kind) + "\n";
                }
            }
        return s;
    }
};
