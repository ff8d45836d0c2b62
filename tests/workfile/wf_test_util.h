// wf_test_util.h - helpers of the work-file tests: a byte builder for files
// written by hand, a sample scene, scene comparison and a validity check.
#pragma once
#include <cstdint>
#include <cstring>
#include <string>
#include <vector>

#include "e2e/process.h"
#include "state.h"
#include "test_support.h"
#include "workfile/workfile.h"

// Little-endian bytes, built field by field from the documented layout.
struct Bytes {
    std::string s;
    Bytes& u8(int b) { s.push_back(static_cast<char>(b)); return *this; }
    Bytes& i32(int32_t v) {
        for (int i = 0; i < 4; i++) u8((static_cast<uint32_t>(v) >> (8 * i)) & 0xFF);
        return *this;
    }
    Bytes& f64(double d) {
        uint64_t b;
        memcpy(&b, &d, 8);
        for (int i = 0; i < 8; i++) u8((b >> (8 * i)) & 0xFF);
        return *this;
    }
    Bytes& pt(double x, double y, double z) { return f64(x).f64(y).f64(z); }
    Bytes& text(const char* t, size_t n) {   // exactly n bytes, NUL padded
        for (size_t i = 0; i < n; i++) u8(i < strlen(t) ? t[i] : 0);
        return *this;
    }
    Bytes& zeros(size_t n) { s.append(n, '\0'); return *this; }
    size_t size() const { return s.size(); }
};

inline Bytes Magic210() { return Bytes().text("Quillmoor Sculptor 2.10 work file!", 35); }
inline Bytes Magic20A() { return Bytes().text("Quillmoor Sculptor 2.0A work file!", 35); }

// A layer section (tag 4) with position, name and optional instance position.
inline Bytes& LayerSection(Bytes& b, int pos, const char* name, int instance = -1) {
    b.u8(4).u8(1).i32(pos).u8(2).text(name, 12).u8(8).i32(instance).u8(0xFF);
    return b;
}

// Objects of a layer, newest first.
std::vector<Object*> ObjectsOf(const Layer* l);
std::vector<Layer*> Layers();
int PositionOf(const Layer* l);   // 1-based, 0 when not in the list

// A scene with three layers, one object of every kind with distinctive values,
// an instance link (layer 3 shows layer 1) and Current_Layer = layer 2; also
// changes settings, output options and the stored viewports.
void BuildSampleScene();

// The int settings a work file keeps, with the value the sample scene gives each.
struct IntSetting {
    int* field;
    int sample;
};
const std::vector<IntSetting>& KeptIntSettings();

// The layers and objects with every field a save keeps, as text; the fields
// of one object's kind record alone.
std::string DumpScene();
std::string ObjectFields(const Object* ob);

// Structural validity: list links, Current_Layer in the list, instances in
// the list and not looping, object lists consistent, point arrays sized.
// Returns "" when valid, else what is wrong.
std::string SceneProblem();

// Runs fn with standard output captured; returns what it printed.
template <class Fn>
std::string Captured(Fn fn) {
    testing::internal::CaptureStdout();
    fn();
    return testing::internal::GetCapturedStdout();
}

// A fresh state and a temporary directory to load files from.
class WorkFileTest : public QmrTest {
  protected:
    TempDir dir;
    // Writes the bytes to t.qmr and loads it; *out gets what the load printed.
    int Load(const std::string& bytes, std::string* out = nullptr) {
        WriteFile(dir.file("t.qmr"), bytes);
        int r = -1;
        std::string printed = Captured([&] { r = WorkFile_Load(dir.file("t.qmr").c_str()); });
        if (out) *out = printed;
        return r;
    }
};
