// read20a_test.cpp - the 2.0A reader on files built byte by byte from the
// fixed layout: settings, layers and every object kind.
#include <gtest/gtest.h>

#include "test_support.h"
#include "workfile/wf_test_util.h"
#include "workfile/workfile.h"

namespace {

// Everything up to the layer blocks, with recognisable values.
Bytes Header20A(int layers) {
    Bytes b = Magic20A();
    b.i32(3).i32(2);                         // layout 3, current viewport 2
    b.zeros(4 * 668);                        // viewport blocks (skipped)
    Bytes out;                               // output block, 248 bytes
    out.text("+L/inc", 54).zeros(2);
    out.i32(6).i32(90).i32(1).i32(1);        // 56 trace, 60 intersections, 64 fog, 68 bg
    out.pt(0.1, 0.2, 0.3).pt(0.4, 0.5, 0.6); // 72 background, 96 fog colour
    out.f64(33.0);                           // 120 fog distance
    for (int v = 128; v < 224; v += 4) out.i32(v);   // 128..220: the value is its offset
    out.f64(0.7).f64(0.8).f64(0.9);          // 224, 232, 240
    EXPECT_EQ(out.size(), 248u);
    b.s += out.s;
    for (int i = 0; i < 22; i++) b.i32(1000 + i);   // the 22 settings
    b.i32(0).i32(0).i32(0).i32(layers).i32(0);
    return b;
}

Bytes& Layer20A(Bytes& b, const char* name, const char* texture, int flag, int color) {
    Bytes l;
    l.text(name, 12).zeros(28).text(texture, 21).u8(flag).zeros(2).i32(color).zeros(4);
    EXPECT_EQ(l.size(), 72u);
    b.s += l.s;
    return b;
}

// Object record head: layer number, kind, 40-byte node, flags byte.
Bytes& Object20A(Bytes& b, int layer, int kind, const char* texture, int flags) {
    b.i32(layer).i32(kind);
    b.text(texture, 21).zeros(3).i32(0).i32(0).i32(0).u8(1).u8(kind).u8(0x7F).u8(0);
    b.u8(flags);
    return b;
}

class Read20A : public WorkFileTest {};

TEST_F(Read20A, SettingsOutputOptionsAndLayers) {
    Bytes b = Header20A(3);
    Layer20A(b, "Ground", "Grass", 0x80 | 0x02, 2);
    Layer20A(b, "Sky", "", 0x04, 9);
    Layer20A(b, "ABCDEFGHIJKLMN", "Wood", 0x80 | 0x08, 14);
    b.i32(-1);
    ASSERT_EQ(Load(b.s), 1);
    EXPECT_EQ(g.view.Viewport_Layout, 3);
    EXPECT_EQ(g.view.Current_Viewport, 2);
    EXPECT_STREQ(g.render.Extra_Options, "+L/inc");
    EXPECT_EQ(g.pov.Max_Trace_Level, 6);
    EXPECT_EQ(g.pov.Max_Intersections, 90);
    EXPECT_EQ(g.pov.Fog_On, 1);
    EXPECT_EQ(g.pov.Background_On, 1);
    EXPECT_EQ(g.pov.Background_Color.z, 0.3);
    EXPECT_EQ(g.pov.Fog_Color.x, 0.4);
    EXPECT_EQ(g.pov.Fog_Distance, 33.0);
    EXPECT_EQ(g.render.Antialias_Threshold, 0.7);
    EXPECT_EQ(g.render.Antialias_Jitter, 0.8);
    EXPECT_EQ(g.render.Spare_Double34, 0.9);
    // Output ints carry their own offset; the 22 settings are 1000..1021 in
    // file order, with 4, 8, 12 and 13 skipped.
    const std::pair<const int*, int> ints[] = {
        {&g.render.Palette_Type, 128},       {&g.render.Render_Quality, 136},
        {&g.render.Render_Width, 164},       {&g.render.End_Col, 188},
        {&g.render.Spare_Int12, 200},        {&g.render.Bounding_Threshold, 208},
        {&g.render.Spare_Int32, 220},        {&g.pov.Overwrite_Pov, 1000},
        {&g.pov.Export_Before_Render, 1001}, {&g.aids.orthoOn, 1002},
        {&g.aids.blipsOn, 1003},             {&g.aids.Erase_No_Confirm, 1005},
        {&g.aids.Auto_Seg, 1006},            {&g.aids.Seg_Value, 1007},
        {&g.aids.Auto_Redraw, 1009},         {&g.render.Reload_After_Render, 1010},
        {&g.shade.Shade_Type, 1011},         {&g.aids.coordsMode, 3},   // 1014 brought into 1..3
        {&g.aids.Input_Line_Option, 1015},   {&g.aids.Auto_Regen, 1016},
        {&g.scene.Default_No_shadow, 1017},  {&g.scene.Default_Smooth, 1018},
        {&g.render.Write_Render_Bat, 1019},  {&g.aids.Auto_Deselect, 1020},
        {&g.shade.Shade_UseEdge, 1021},
    };
    for (const auto& [field, expected] : ints) EXPECT_EQ(*field, expected);

    auto l = Layers();
    ASSERT_EQ(l.size(), 3u);
    EXPECT_STREQ(l[0]->name, "Ground");
    EXPECT_STREQ(l[0]->texture, "Grass");
    EXPECT_EQ(l[0]->on, 1);
    EXPECT_EQ(l[0]->csg, CSG_MERGE);
    EXPECT_EQ(l[0]->color, 2);
    EXPECT_EQ(l[1]->on, 0);
    EXPECT_EQ(l[1]->csg, CSG_INTERSECTION);
    EXPECT_EQ(l[1]->color, 9);
    EXPECT_STREQ(l[2]->name, "ABCDEFGHIJKL");
    EXPECT_EQ(l[2]->csg, CSG_DIFFERENCE);
    EXPECT_EQ(l[2]->on, 1);
}

TEST_F(Read20A, EveryObjectKindAndTheConeTurn) {
    Bytes b = Header20A(2);
    Layer20A(b, "A", "", 0x80, 1);
    Layer20A(b, "B", "", 0x80, 2);
    // Polyline in layer 1 (the second), 2 points.
    Object20A(b, 1, 1, "PolyTex", 0x02);
    b.i32(0x11111111).pt(1, 2, 3).pt(4, 5, 6).f64(90).i32(5).u8(0x81).zeros(3);
    b.i32(4).i32(200).i32(7).i32(2);
    b.pt(1, 1, 1).pt(2, 2, 2);
    Object20A(b, 0, 2, "", 0x01);
    b.pt(1, 0, 0).pt(0, 1, 0).pt(0, 0, 1);
    Object20A(b, 0, 3, "", 0);
    b.pt(1, 0, 0).pt(0, 1, 0).pt(0, 0, 1).pt(1, 1, 1);
    Object20A(b, 0, 4, "Cone", 0);     // cone
    b.text("hf.tga", 13).zeros(3).pt(1, 2, 3).pt(4, 5, 6).pt(1, 1, 1).pt(10, 20, 30);
    b.i32(16).i32(1).i32(2).f64(1.5).f64(0.5).f64(3).u8(0x02).zeros(3);
    Object20A(b, 0, 4, "", 0);         // sphere: no turn
    b.zeros(16).pt(0, 0, 0).pt(0, 0, 0).pt(1, 1, 1).pt(0, 0, 5);
    b.i32(8).i32(0).i32(1).f64(2).f64(0).f64(0).u8(0).zeros(3);
    Object20A(b, 9, 5, "", 0);         // layer 9 does not exist: first layer
    b.u8(0x04).zeros(3).pt(1, 2, 3).pt(0.5, 0.5, 0.5).i32(16).i32(2).i32(3).i32(1);
    b.f64(1.25).f64(2.5).pt(0, 0, 0).f64(30).f64(40).i32(5);
    b.i32(-1);
    ASSERT_EQ(Load(b.s), 1);

    auto l = Layers();
    auto a = ObjectsOf(l[0]);
    auto bb = ObjectsOf(l[1]);
    ASSERT_EQ(bb.size(), 1u);
    ASSERT_EQ(a.size(), 5u);
    // The polyline: separate flags byte used, not the node's own (0x7F);
    // size_m is a full int32 in this format.
    EXPECT_EQ(bb[0]->flags, 0x02);
    EXPECT_STREQ(bb[0]->texture, "PolyTex");
    EXPECT_EQ(ObjectFields(bb[0]),
              "form 5 p1=1,2,3 p2=4,5,6 angle 90 pf 129 seg 4 m 200 n 7 count 2 pt=1,1,1 pt=2,2,2 ");
    // Layer 0, newest first: light, sphere, cone (turned by 270), face, triangle.
    EXPECT_EQ(ObjectFields(a[0]),
              "lf 4 pos=1,2,3 col=0.5,0.5,0.5 seg 16 n 2,3 ad 1 hw 1.25,2.5 at=0,0,0 rf 30,40 tight 5");
    EXPECT_EQ(ObjectFields(a[1]),
              "file '' hf 0 t=0,0,0 size=0,0,0 s=1,1,1 r=0,0,5 aux 8 type 1 p 2,0,0 pf 0");
    EXPECT_EQ(ObjectFields(a[2]),
              "file 'hf.tga' hf 1 t=1,2,3 size=4,5,6 s=1,1,1 r=10,20,300 aux 16 type 2 p 1.5,0.5,3 pf 2");
    EXPECT_STREQ(a[2]->texture, "Cone");
    EXPECT_EQ(ObjectFields(a[3]), "c=1,0,0 c=0,1,0 c=0,0,1 c=1,1,1 ");
    EXPECT_EQ(ObjectFields(a[4]), "c=1,0,0 c=0,1,0 c=0,0,1 ");
    EXPECT_EQ(a[4]->flags, 0x01);
    EXPECT_EQ(SceneProblem(), "");
}

TEST_F(Read20A, CutFilesGiveZeroAndNoMemoryMessages) {
    Bytes b = Header20A(1);
    Layer20A(b, "A", "", 0x80, 1);
    Object20A(b, 0, 1, "", 0);
    b.i32(0).zeros(48).f64(0).i32(1).u8(0).zeros(3).i32(8).i32(16).i32(16).i32(1000000);
    b.pt(1, 1, 1);   // far fewer points than the count says
    EXPECT_EQ(Load(b.s), 0);
    EXPECT_EQ(ObjectsOf(g.scene.First_Layer).size(), 0u);
    EXPECT_EQ(SceneProblem(), "");

    Bytes c = Header20A(1);
    Layer20A(c, "A", "", 0x80, 1);
    Mem_FailAfter(1);
    std::string out;
    EXPECT_EQ(Load(c.s, &out), 0);
    EXPECT_EQ(out, "Out of Memory for Layers!");
    EXPECT_EQ(Layer_Count(), 1);   // the first layer made after the load

    Bytes d = Header20A(1);
    Layer20A(d, "A", "", 0x80, 1);
    Object20A(d, 0, 1, "", 0);
    d.i32(0).zeros(48).f64(0).i32(1).u8(0).zeros(3).i32(8).i32(16).i32(16).i32(1);
    d.pt(1, 1, 1).i32(-1);
    Mem_FailAfter(2);   // the layer, then the point list
    EXPECT_EQ(Load(d.s, &out), 0);
    EXPECT_EQ(out, "\nNot enough memory for Polylines!");
}

TEST_F(Read20A, MergeRefusesOldAndForeignFiles) {
    Bytes b = Header20A(0);
    b.i32(-1);
    std::string path = dir.file("old.qmr");
    WriteFile(path, b.s);
    Layer_NewFirst();
    std::string out = Captured([&] { EXPECT_EQ(WorkFile_Merge(path.c_str()), 0); });
    EXPECT_EQ(out, "\nMerge only works with 2.1 files.");
    WriteFile(path, "hello");
    out = Captured([&] { EXPECT_EQ(WorkFile_Merge(path.c_str()), 0); });
    EXPECT_EQ(out,
              "\nNot a Quillmoor Sculptor 2.0A or greater work file!"
              "\nMerge only works with 2.1 files.");
    EXPECT_EQ(Layer_Count(), 1);
}

}  // namespace
