// exchange_test_util.h - fixture for the DXF and RAW tests: a fresh state,
// the headless screen, a temporary work directory, answers for the prompt
// and small scene helpers.
#pragma once
#include <cstdio>
#include <string>
#include <vector>

#include "e2e/process.h"
#include "exchange/exchange.h"
#include "headless_session.h"
#include "state.h"

// An answer that replaces the prompt's input by a command: Ctrl-C.
inline const char* const kCancel = "\x03";

class ExchangeTest : public HeadlessTest {
  protected:
    void SetUp() override {
        HeadlessTest::SetUp();
        snprintf(g.config.WORK_DIR, sizeof g.config.WORK_DIR, "%s", dir_.path().c_str());
        snprintf(g.run.workFileName, sizeof g.run.workFileName, "scene");
        g.input.currentCommand = 120;   // prompts answer as inside a command
        Answer({});
    }
    // A fresh state inside the same test; prompts still answer as inside a command.
    static void Restart() {
        State_Reset();
        g.input.currentCommand = 120;
    }

    // Replaces all pending answers by `lines`.
    void Answer(const std::vector<std::string>& lines) {
        Headless_ClearInput();
        for (const std::string& l : lines) {
            if (l == kCancel)
                Headless_PushKey(3);
            else
                Headless_PushText((l + "\n").c_str());
        }
    }

    std::string File(const std::string& name) const { return dir_.file(name); }

    static Layer* AddLayer(const char* name, int colour, int on = 1) {
        Layer* l = Layer_Append();
        snprintf(l->name, sizeof l->name, "%s", name);
        l->color = colour;
        l->on = on;
        return l;
    }

    static Layer* FindLayer(const char* name) {
        for (Layer* l = g.scene.First_Layer; l; l = l->next)
            if (strcasecmp(l->name, name) == 0) return l;
        return nullptr;
    }

    static std::vector<const Object*> Objects(const Layer* l) {
        std::vector<const Object*> v;
        for (const Object* o = l ? l->first_object : nullptr; o; o = o->next) v.push_back(o);
        return v;
    }

    static RunResult Python(const std::string& script) {
        RunOptions opt;
        opt.timeout_s = 60;
        return RunProcess({"/usr/bin/python3", "-c", script}, opt);
    }

    TempDir dir_;
};

inline FaceData Face(Point3 a, Point3 b, Point3 c, Point3 d) { return FaceData{{a, b, c, d}}; }
inline TriangleData Tri(Point3 a, Point3 b, Point3 c) { return TriangleData{{a, b, c}}; }

// Corners as "%g" numbers separated by blanks, for whole-record comparisons.
inline std::string CornerText(const Point3* c, int n) {
    std::string s;
    char buf[80];
    for (int k = 0; k < n; k++) {
        snprintf(buf, sizeof buf, "%s%g %g %g", k ? " " : "", c[k].x, c[k].y, c[k].z);
        s += buf;
    }
    return s;
}

// A layer as "name colour on" and one line per object, newest first: "F" and
// "T" with their corners, "P" with the polyline's points.
inline std::string LayerText(const Layer* l) {
    std::string s = std::string(l->name) + " " + std::to_string(l->color) + " " + std::to_string(l->on);
    for (const Object* o = l->first_object; o; o = o->next) {
        if (o->kind == KIND_3DFACE) s += "\nF " + CornerText(((const FaceData*)o->data)->corner, 4);
        if (o->kind == KIND_TRIANGLE) s += "\nT " + CornerText(((const TriangleData*)o->data)->corner, 3);
        if (o->kind == KIND_POLYLINE) {
            const PolylineData* p = (const PolylineData*)o->data;
            s += "\nP " + CornerText(p->points, p->count);
        }
    }
    return s + "\n";
}

inline int Count(const std::string& text, const std::string& what) {
    int n = 0;
    for (size_t at = text.find(what); at != std::string::npos; at = text.find(what, at + 1)) n++;
    return n;
}
