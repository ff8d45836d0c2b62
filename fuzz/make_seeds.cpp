// make_seeds.cpp - writes the seed corpora of the fuzz targets with the
// program's own writers: a work file, DXF and RAW exports and a texture
// library of a small scene with every kind of object.
//
// Usage: make_seeds OUTDIR   (OUTDIR/<target>/ must exist)
#include <cstdio>
#include <cstring>
#include <string>

#include "exchange/exchange.h"
#include "fuzz_common.h"
#include "pov/textures.h"
#include "scene/layers.h"
#include "scene/object.h"
#include "workfile/workfile.h"

namespace {

void BuildScene() {
    Layer* a = Layer_NewFirst();
    snprintf(a->name, sizeof a->name, "Base");
    strcpy(a->texture, "Gold");
    Layer* b = Layer_Append();
    snprintf(b->name, sizeof b->name, "Block");
    b->level = 1;
    a->instance = b;
    g.scene.Current_Layer = a;
    PolylineData line = Poly_Default();
    Point3 pts[4] = {{0, 0, 0}, {2, 0, 0}, {2, 2, 0}, {0, 2, 1}};
    line.points = pts;
    line.count = 4;
    Poly_AddToScene(&line);
    line.form = FORM_REVOLUTION;
    line.param2 = {0, 1, 0};
    line.angle = 270;
    Poly_AddToScene(&line);
    TriangleData t{{{0, 0, 0}, {1, 0, 0}, {0, 1, 0}}};
    Add_Triangle(&t);
    FaceData f{{{0, 0, 1}, {1, 0, 1}, {1, 1, 1}, {0, 1, 1}}};
    Add_Face(&f);
    g.scene.Current_Layer = b;
    PrimitiveData p = Primitive_Default();
    p.prim_type = PRIM_BOX;
    p.size = {1, 2, 3};
    Add_Primitive(&p);
    p.prim_type = PRIM_TORUS;
    p.p1 = 2;
    p.p2 = 0.5;
    Add_Primitive(&p);
    LightData l = Light_Default();
    l.light_flags = LIGHT_SPOT;
    l.position = {0, 5, -5};
    Add_Light(&l);
}

void Copy(const std::string& from, const std::string& to) {
    FILE* in = fopen(from.c_str(), "rb");
    FILE* out = fopen(to.c_str(), "wb");
    if (!in || !out) {
        fprintf(stderr, "make_seeds: cannot copy %s to %s\n", from.c_str(), to.c_str());
        exit(1);
    }
    char buf[4096];
    size_t n;
    while ((n = fread(buf, 1, sizeof buf, in)) > 0) fwrite(buf, 1, n, out);
    fclose(in);
    fclose(out);
}

// A 2.0A work file (the older fixed layout): two layers, a triangle and a
// cone. Only reading old files needs it, so it is built byte by byte here.
void Write20A(const std::string& path) {
    std::string b;
    auto raw = [&](const void* p, size_t n) { b.append((const char*)p, n); };
    auto i32 = [&](int32_t v) { raw(&v, 4); };
    auto f64 = [&](double v) { raw(&v, 8); };
    auto zeros = [&](size_t n) { b.append(n, '\0'); };
    raw("Quillmoor Sculptor 2.0A work file!", 35);
    i32(4);
    i32(1);                                   // layout, current viewport
    zeros(4 * 668);                           // viewport blocks
    zeros(248);                               // output options
    for (int i = 0; i < 22; i++) i32(i % 3);  // settings
    i32(0);
    i32(0);
    i32(0);
    i32(2);                                   // two layers
    i32(0);
    for (const char* name : {"Ground", "Sky"}) {
        char layer[72] = {};
        memcpy(layer, name, strlen(name));
        layer[61] = (char)0x80;               // on
        layer[64] = 3;                        // colour
        raw(layer, sizeof layer);
    }
    auto object = [&](int layer, int kind) {
        i32(layer);
        i32(kind);
        char node[40] = {};
        memcpy(node, "Gold", 4);
        raw(node, sizeof node);
        b.push_back(0);                       // flags
    };
    object(0, KIND_TRIANGLE);
    for (double v : {0.0, 0.0, 0.0, 1.0, 0.0, 0.0, 0.0, 1.0, 0.0}) f64(v);
    object(1, KIND_PRIMITIVE);
    std::string prim(152, '\0');
    int32_t cone = PRIM_CONE;
    memcpy(&prim[120], &cone, 4);             // prim_type: after file, four points, prim_aux, hf_type
    b += prim;
    i32(-1);
    FILE* f = fopen(path.c_str(), "wb");
    if (!f) exit(1);
    fwrite(b.data(), 1, b.size(), f);
    fclose(f);
}

}  // namespace

int main(int argc, char** argv) {
    if (argc != 2) {
        fprintf(stderr, "usage: make_seeds OUTDIR\n");
        return 2;
    }
    const std::string out = argv[1];
    FuzzFreshState();
    snprintf(g.run.workFileName, sizeof g.run.workFileName, "scene");
    BuildScene();
    if (!WorkFile_Save((out + "/workfile/scene.qmr").c_str())) return 1;
    Write20A(out + "/workfile/old20a.qmr");
    if (Dxf_Export() != 1 || Raw_Export() != 1) return 1;
    Copy(FuzzDir() + "/scene.dxf", out + "/dxf/scene.dxf");
    Copy(FuzzDir() + "/scene.raw", out + "/raw/scene.raw");
    TextureRecord r = Texture_Default();
    memcpy(r.name, "Gold", 4);
    r.pigment_kind = 1;
    r.normal_kind = 3;
    Texture_Save(&r);
    r = Texture_Default();
    memcpy(r.name, "Stone_Wall_Texture_1", 20);   // a full 20-character name
    r.texture_kind = 2;
    memcpy(r.layer2_name, "Gold", 4);
    Texture_Save(&r);
    Copy(FuzzDir() + "/textures.wrk", out + "/textures/textures.wrk");
    State_Reset();
    return 0;
}
