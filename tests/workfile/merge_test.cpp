// merge_test.cpp - merging a 2.10 file: positions count after the existing
// layers, links between merged layers are kept.
#include <gtest/gtest.h>

#include "test_support.h"
#include "workfile/wf_test_util.h"
#include "workfile/workfile.h"

namespace {

class Merge : public WorkFileTest {};

TEST_F(Merge, LayersAreAppendedAndLinksCountAfterTheExistingOnes) {
    // The file: two layers, the first showing the second; current layer 1.
    Layer_NewFirst();
    strcpy(g.scene.First_Layer->name, "M1");
    Layer* m2 = Layer_Append();
    strcpy(m2->name, "M2");
    TriangleData t{{{1, 1, 1}, {2, 2, 2}, {3, 3, 3}}};
    Add_Triangle(&t);
    g.scene.First_Layer->instance = m2;
    g.scene.Current_Layer = g.scene.First_Layer;
    g.pov.Max_Trace_Level = 11;
    std::string path = dir.file("part.qmr");
    ASSERT_EQ(WorkFile_Save(path.c_str()), 1);

    State_Reset();
    strcpy(g.run.workFileName, "mine");
    for (const char* name : {"S1", "S2", "S3"}) strcpy(Layer_Append()->name, name);
    Layer_At(2)->instance = Layer_At(1);
    std::string out;
    out = Captured([&] { EXPECT_EQ(WorkFile_Merge(path.c_str()), 1); });
    EXPECT_EQ(out, "\nRedrawing...");
    auto l = Layers();
    ASSERT_EQ(l.size(), 5u);
    EXPECT_STREQ(l[3]->name, "M1");
    EXPECT_STREQ(l[4]->name, "M2");
    EXPECT_EQ(l[3]->instance, l[4]);
    EXPECT_EQ(l[1]->instance, l[0]);   // existing links untouched
    EXPECT_EQ(ObjectsOf(l[4]).size(), 1u);
    EXPECT_EQ(g.scene.Current_Layer, l[3]);
    EXPECT_EQ(g.scene.Layer_Base, 0);
    EXPECT_EQ(g.pov.Max_Trace_Level, 11);   // the merged file's settings win
    EXPECT_STREQ(g.run.workFileName, "mine");
    EXPECT_EQ(SceneProblem(), "");
}

TEST_F(Merge, MissingFileFailsSilentlyAndCutFileKeepsTheMergedPart) {
    std::string out = Captured([&] { EXPECT_EQ(WorkFile_Merge(dir.file("no.qmr").c_str()), 0); });
    EXPECT_EQ(out, "");
    Bytes b = Magic210();
    LayerSection(b, 1, "New");
    b.u8(4).u8(1);
    std::string path = dir.file("cut.qmr");
    WriteFile(path, b.s);
    Layer_NewFirst();
    EXPECT_EQ(WorkFile_Merge(path.c_str()), 0);
    EXPECT_EQ(Layer_Count(), 3);
    EXPECT_EQ(g.scene.Layer_Base, 0);
    EXPECT_EQ(SceneProblem(), "");
}

}  // namespace
