// read210_test.cpp - the 2.10 reader on files written by hand: unknown tags
// and keys, files cut short, the Current_Layer position, instance links.
#include <gtest/gtest.h>

#include "test_support.h"
#include "workfile/wf_test_util.h"
#include "workfile/workfile.h"

namespace {

class Read210 : public WorkFileTest {};

// A triangle object (kind 2) with its three corners.
Bytes& Triangle(Bytes& b, double x) {
    b.u8(1).u8(2).u8(2).text("", 21).u8(6).u8(1).u8(100);
    b.u8(1).pt(x, 0, 0).u8(2).pt(0, x, 0).u8(3).pt(0, 0, x).u8(101);
    return b;
}

TEST_F(Read210, UnknownTagsAndKeysAreSkippedAsSingleBytes) {
    Bytes b = Magic210();
    b.u8(0x33).u8(0x07);                       // unknown tags between sections
    b.u8(1).u8(77).u8(14).i32(9).u8(0xFF);     // settings: unknown key 77, SEG_VALUE 9
    b.u8(2).u8(200).u8(2).i32(12).u8(0xFF);    // output: unknown key, Max_Trace_Level
    b.u8(4).u8(1).i32(1).u8(60).u8(2).text("Alpha", 12).u8(5).i32(3).u8(0xFF);
    b.u8(5).u8(99);                            // unknown object-level key
    b.u8(3).pt(7, 7, 7);                       // object-level point, read and ignored
    Triangle(b, 2.0);
    b.u8(102).u8(0xFF);
    std::string out;
    EXPECT_EQ(Load(b.s, &out), 1);
    EXPECT_EQ(out, "\nRedrawing...");
    EXPECT_EQ(g.aids.Seg_Value, 9);
    EXPECT_EQ(g.pov.Max_Trace_Level, 12);
    ASSERT_EQ(Layer_Count(), 1);
    EXPECT_STREQ(g.scene.First_Layer->name, "Alpha");
    EXPECT_EQ(g.scene.First_Layer->color, 3);
    auto objs = ObjectsOf(g.scene.First_Layer);
    ASSERT_EQ(objs.size(), 1u);
    EXPECT_EQ(objs[0]->flags, 1);
    EXPECT_EQ(static_cast<TriangleData*>(objs[0]->data)->corner[1].y, 2.0);
}

TEST_F(Read210, FileCutInsideASectionKeepsWhatCameBeforeAndGivesZero) {
    Bytes b = Magic210();
    LayerSection(b, 1, "One");
    b.u8(5);
    Triangle(b, 1.0);
    Triangle(b, 2.0);
    b.u8(102);
    LayerSection(b, 2, "Two");
    b.u8(4).u8(1).i32(3).u8(2).text("Thr", 5);   // cut inside the name
    std::string out;
    EXPECT_EQ(Load(b.s, &out), 0);
    EXPECT_EQ(out, "");   // no redraw after a cut
    auto layers = Layers();
    ASSERT_EQ(layers.size(), 3u);
    EXPECT_STREQ(layers[0]->name, "One");
    auto objs = ObjectsOf(layers[0]);   // newest first: the file's last comes first
    ASSERT_EQ(objs.size(), 2u);
    EXPECT_EQ(static_cast<TriangleData*>(objs[0]->data)->corner[0].x, 2.0);
    EXPECT_STREQ(layers[1]->name, "Two");
    EXPECT_EQ(SceneProblem(), "");
    // Whole sections but no end tag: still 0.
    Bytes whole = Magic210();
    LayerSection(whole, 1, "Only");
    EXPECT_EQ(Load(whole.s), 0);
    EXPECT_EQ(Layer_Count(), 1);
}

TEST_F(Read210, CurrentLayerPositionAndLinksToLaterLayers) {
    Bytes b = Magic210();
    b.u8(1).u8(21).i32(2).u8(0xFF);
    LayerSection(b, 1, "A", 3);   // links to a layer not read yet
    LayerSection(b, 2, "B");
    LayerSection(b, 3, "C");
    b.u8(0xFF);
    ASSERT_EQ(Load(b.s), 1);
    auto layers = Layers();
    ASSERT_EQ(layers.size(), 3u);
    EXPECT_EQ(g.scene.Current_Layer, layers[1]);
    EXPECT_EQ(layers[0]->instance, layers[2]);
    EXPECT_EQ(layers[1]->instance, nullptr);

    Bytes outside = Magic210();   // a position past the list: the first layer
    outside.u8(1).u8(21).i32(9).u8(0xFF);
    LayerSection(outside, 1, "A");
    LayerSection(outside, 2, "B");
    outside.u8(0xFF);
    ASSERT_EQ(Load(outside.s), 1);
    EXPECT_EQ(g.scene.Current_Layer, g.scene.First_Layer);
}

TEST_F(Read210, LinksToNoLayerToItselfOrRoundALoopAreDropped) {
    Bytes b = Magic210();
    LayerSection(b, 1, "Self", 1);
    LayerSection(b, 2, "Ghost", 40);
    LayerSection(b, 3, "Neg", -7);
    LayerSection(b, 4, "P", 5);   // 4 -> 5 -> 4
    LayerSection(b, 5, "Q", 4);
    b.u8(4).u8(1).i32(6).u8(7).i32(1).u8(8).i32(5).u8(0xFF);   // child of Q showing Q
    b.u8(0xFF);
    ASSERT_EQ(Load(b.s), 1);
    auto l = Layers();
    ASSERT_EQ(l.size(), 6u);
    EXPECT_EQ(l[0]->instance, nullptr);
    EXPECT_EQ(l[1]->instance, nullptr);
    EXPECT_EQ(l[2]->instance, nullptr);
    EXPECT_TRUE((l[3]->instance == nullptr) != (l[4]->instance == nullptr));   // loop cut once
    EXPECT_EQ(l[5]->instance, nullptr);
    EXPECT_EQ(SceneProblem(), "");
}

TEST_F(Read210, NoMemoryForAnInstanceLinkLoadsTheLayerWithoutIt) {
    Bytes b = Magic210();
    LayerSection(b, 1, "A");
    LayerSection(b, 2, "Linked", 1);
    b.u8(0xFF);
    // Allocations: layer 1, layer 2, then the pending link.
    Mem_FailAfter(3);
    std::string out;
    EXPECT_EQ(Load(b.s, &out), 1);
    EXPECT_EQ(out, "Warning: could not sistain instance for Layer: Linked\nRedrawing...");
    ASSERT_EQ(Layer_Count(), 2);
    EXPECT_EQ(Layer_At(2)->instance, nullptr);
}

TEST_F(Read210, NoMemoryForAPolylinePointStopsTheLoadWithOne) {
    Bytes b = Magic210();
    LayerSection(b, 1, "A");
    b.u8(5);
    Triangle(b, 1.0);
    b.u8(1).u8(1).u8(100).u8(9).i32(2).u8(10).pt(1, 1, 1).pt(2, 2, 2).u8(101);
    b.u8(102);
    LayerSection(b, 2, "After");
    b.u8(0xFF);
    // Layer, triangle record, triangle node, then the point list.
    Mem_FailAfter(4);
    std::string out;
    EXPECT_EQ(Load(b.s, &out), 1);
    EXPECT_EQ(out, "\nNot enough memory for Polylines!\nRedrawing...");
    EXPECT_EQ(Layer_Count(), 1);
    EXPECT_EQ(ObjectsOf(g.scene.First_Layer).size(), 1u);
    EXPECT_EQ(SceneProblem(), "");
}

TEST_F(Read210, LongNamesAreCutAndPolylineCountFollowsThePointsRead) {
    Bytes b = Magic210();
    b.u8(4).u8(1).i32(1).u8(2).text("ABCDEFGHIJKLMNOP", 12).u8(3);
    b.text("TTTTTTTTTTTTTTTTTTTTTTTT", 21).u8(0xFF);   // no NUL inside the texture
    b.u8(5).u8(1).u8(1).u8(100).u8(9).i32(0).u8(10).u8(101).u8(102).u8(0xFF);
    ASSERT_EQ(Load(b.s), 1);
    EXPECT_STREQ(g.scene.First_Layer->name, "ABCDEFGHIJKL");
    EXPECT_EQ(strlen(g.scene.First_Layer->texture), 20u);
    auto* p = static_cast<PolylineData*>(g.scene.First_Layer->first_object->data);
    EXPECT_EQ(p->count, 0);
    EXPECT_EQ(p->points, nullptr);
}

}  // namespace
