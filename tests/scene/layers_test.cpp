// The layer list, deletion, and the nesting and instancing rules.
#include <cstring>
#include <string>
#include <vector>

#include "test_support.h"

namespace {

class LayerTest : public QmrTest {
  protected:
    // Appends layers named by `spec`, e.g. {"A0", "B1", "C0"}: name then level.
    void Build(const std::vector<std::string>& spec) {
        for (const std::string& s : spec) {
            Layer* l = Layer_Append();
            ASSERT_NE(l, nullptr);
            strcpy(l->name, s.substr(0, s.size() - 1).c_str());
            l->level = s.back() - '0';
        }
    }
    Layer* L(const char* name) {
        for (Layer* l = g.scene.First_Layer; l; l = l->next)
            if (strcmp(l->name, name) == 0) return l;
        return nullptr;
    }
    // The list as "name+level" words, checking the back links on the way.
    std::string Order() {
        std::string s;
        Layer* prev = nullptr;
        for (Layer* l = g.scene.First_Layer; l; l = l->next) {
            EXPECT_EQ(l->prev, prev) << l->name;
            prev = l;
            s += std::string(l->name) + std::to_string(l->level) + " ";
        }
        return s;
    }
    void SetCurrent(const char* name) { g.scene.Current_Layer = L(name); }
};

TEST_F(LayerTest, NewLayerDefaults) {
    Layer* l = Layer_NewFirst();
    ASSERT_NE(l, nullptr);
    EXPECT_STREQ(l->name, "Untitled");
    EXPECT_STREQ(l->texture, "");
    EXPECT_EQ(l->scale.x, 1);
    EXPECT_EQ(l->scale.z, 1);
    EXPECT_EQ(l->texture_scale.y, 1);
    EXPECT_EQ(l->translate.x, 0);
    EXPECT_EQ(l->csg, 1);
    EXPECT_EQ(l->color, 15);
    EXPECT_EQ(l->on, 1);
    EXPECT_EQ(l->level, 0);
    EXPECT_EQ(l->first_object, nullptr);
    EXPECT_EQ(g.scene.First_Layer, l);
    EXPECT_EQ(g.scene.Current_Layer, l);
}

TEST_F(LayerTest, NewFirstPrependsAppendAppends) {
    Build({"A0", "B0"});
    Layer* first = Layer_NewFirst();
    EXPECT_EQ(g.scene.First_Layer, first);
    EXPECT_EQ(first->next, L("A"));
    EXPECT_EQ(L("A")->prev, first);
    EXPECT_EQ(Order(), "Untitled0 A0 B0 ");
    Layer* last = Layer_Append();
    EXPECT_EQ(g.scene.Current_Layer, last);
    EXPECT_EQ(L("B")->next, last);
    // Out of memory: none, and the list is as it was.
    Mem_FailAfter(1);
    EXPECT_EQ(Layer_NewFirst(), nullptr);
    Mem_FailAfter(1);
    EXPECT_EQ(Layer_Append(), nullptr);
    EXPECT_EQ(Order(), "Untitled0 A0 B0 Untitled0 ");
    EXPECT_EQ(g.scene.Current_Layer, last);
}

TEST_F(LayerTest, FindIgnoresCaseButNotLength) {
    Build({"Untitled0", "Walls0"});
    SetCurrent("Walls");
    EXPECT_EQ(Layer_Find("untitled"), 1);
    EXPECT_EQ(g.scene.Current_Layer, L("Untitled"));
    EXPECT_EQ(Layer_Find("wall"), 0);
    EXPECT_EQ(g.scene.Current_Layer, L("Untitled"));
}

TEST_F(LayerTest, MakeFindsOrCreatesWithCutName) {
    Build({"A0"});
    EXPECT_EQ(Layer_Make("a"), 1);
    EXPECT_EQ(Layer_Count(), 1);
    EXPECT_EQ(Layer_Make("averyveryverylongname"), 1);
    EXPECT_EQ(Layer_Count(), 2);
    EXPECT_STREQ(g.scene.First_Layer->name, "averyveryver");
    EXPECT_EQ(g.scene.Current_Layer, g.scene.First_Layer);
    Mem_FailAfter(1);
    EXPECT_EQ(Layer_Make("other"), 0);
    EXPECT_EQ(Layer_Count(), 2);
}

TEST_F(LayerTest, SelectByIndexCountsAfterMergeBase) {
    Build({"A0", "B0", "C0", "D0"});
    EXPECT_EQ(Layer_SelectByIndex(2), 1);
    EXPECT_EQ(g.scene.Current_Layer, L("B"));
    g.scene.Layer_Base = 2;
    EXPECT_EQ(Layer_SelectByIndex(1), 1);
    EXPECT_EQ(g.scene.Current_Layer, L("C"));
    EXPECT_EQ(Layer_SelectByIndex(3), 0);
    EXPECT_EQ(g.scene.Current_Layer, L("A"));
    EXPECT_EQ(Layer_SelectByIndex(0), 0);
}

TEST_F(LayerTest, DeleteRefusesBusyOrOnlyLayerAndPicksTheNewCurrent) {
    Build({"A0"});
    EXPECT_EQ(Layer_Delete(L("A")), 0);
    Build({"B0"});
    TriangleData t{};
    Add_Triangle(&t);   // into B
    EXPECT_EQ(Layer_Delete(L("B")), 0);
    EXPECT_EQ(Layer_Count(), 2);
    EXPECT_EQ(Layer_Delete(L("A")), 1);   // the first: the new first layer is current
    EXPECT_EQ(Order(), "B0 ");
    EXPECT_EQ(g.scene.Current_Layer, L("B"));
    Build({"C0"});
    EXPECT_EQ(Layer_Delete(L("C")), 1);   // the last: the one before
    EXPECT_EQ(g.scene.Current_Layer, L("B"));
}

TEST_F(LayerTest, DeletePromotesChildrenAndClearsInstances) {
    Build({"A0", "P0", "C1", "D2", "E0"});
    L("E")->instance = L("P");
    L("A")->instance = L("P");
    EXPECT_EQ(Layer_Delete(L("P")), 1);
    EXPECT_EQ(Order(), "A0 C0 D1 E0 ");
    EXPECT_EQ(L("E")->instance, nullptr);
    EXPECT_EQ(L("A")->instance, nullptr);
    EXPECT_EQ(g.scene.Current_Layer, L("C"));   // the layer that followed
}

TEST_F(LayerTest, NestAndSlide) {
    Build({"T0", "X0", "C0"});
    SetCurrent("C");
    int box = -1;
    EXPECT_EQ(Layer_ApplyOption(L("T"), LAYER_OPT_NEST, &box), 1);
    EXPECT_EQ(box, 0);
    EXPECT_EQ(Order(), "T0 C1 X0 ");

    EXPECT_EQ(Layer_ApplyOption(L("X"), LAYER_OPT_SLIDE, &box), 1);
    EXPECT_EQ(Order(), "T0 C0 X0 ");
}

TEST_F(LayerTest, MovingLayerLeavesItsChildrenBehindOneLevelUp) {
    Build({"C0", "K1", "M2", "T0"});
    SetCurrent("C");
    int box;
    EXPECT_EQ(Layer_ApplyOption(L("T"), LAYER_OPT_NEST, &box), 1);
    EXPECT_EQ(Order(), "K0 M1 T0 C1 ");
    EXPECT_EQ(g.scene.First_Layer, L("K"));
    SetCurrent("C");
    EXPECT_EQ(Layer_ApplyOption(L("K"), LAYER_OPT_SLIDE, &box), 1);
    EXPECT_EQ(Order(), "C0 K0 M1 T0 ");
    EXPECT_EQ(g.scene.First_Layer, L("C"));
}

TEST_F(LayerTest, CancelAndSelfTargetDoNothing) {
    Build({"A0", "B0"});
    SetCurrent("A");
    int box;
    EXPECT_EQ(Layer_ApplyOption(L("B"), LAYER_OPT_CANCEL, &box), 0);
    EXPECT_EQ(Layer_ApplyOption(L("A"), LAYER_OPT_NEST, &box), 0);
    EXPECT_EQ(Order(), "A0 B0 ");
}

TEST_F(LayerTest, InstanceAndDeleteInstance) {
    Build({"A0", "B0"});
    SetCurrent("B");
    int box;
    EXPECT_EQ(Layer_ApplyOption(L("A"), LAYER_OPT_INSTANCE, &box), 1);
    EXPECT_EQ(box, 0);
    EXPECT_EQ(L("A")->instance, L("B"));
    EXPECT_EQ(Layer_ApplyOption(L("A"), LAYER_OPT_DEL_INSTANCE, &box), 1);
    EXPECT_EQ(L("A")->instance, nullptr);
}

TEST_F(LayerTest, Rule1NestedCurrentCannotBeInstanced) {
    Build({"P0", "C1", "T0"});
    SetCurrent("C");
    int box;
    EXPECT_EQ(Layer_ApplyOption(L("T"), LAYER_OPT_INSTANCE, &box), 0);
    EXPECT_EQ(box, 1);
    EXPECT_EQ(L("T")->instance, nullptr);
}

TEST_F(LayerTest, Rule1BlockLayerCannotBeNested) {
    Build({"B0", "X0", "P0", "Q1"});
    L("X")->instance = L("B");   // B is a BLOCK Layer
    SetCurrent("B");
    int box;
    EXPECT_EQ(Layer_ApplyOption(L("Q"), LAYER_OPT_NEST, &box), 0);
    EXPECT_EQ(box, 1);
    EXPECT_EQ(Layer_ApplyOption(L("Q"), LAYER_OPT_SLIDE, &box), 0);
    EXPECT_EQ(box, 1);
    EXPECT_EQ(Order(), "B0 X0 P0 Q1 ");
    // Sliding to a top-level layer is allowed.
    EXPECT_EQ(Layer_ApplyOption(L("P"), LAYER_OPT_SLIDE, &box), 1);
    EXPECT_EQ(Order(), "X0 B0 P0 Q1 ");
}

TEST_F(LayerTest, Rule2BlocksMayNotCallEachOther) {
    // A instances B; making a layer of B's family an instance of A would loop.
    Build({"A0", "A11", "B0", "B11"});
    L("A")->instance = L("B");
    SetCurrent("A");
    const LayerErrorBox* expected = Layer_ErrorBox(2);
    ASSERT_NE(expected, nullptr);
    EXPECT_EQ(expected->columns, 39);
    EXPECT_EQ(expected->rows, 8);
    EXPECT_STREQ(expected->lines[2], "lead to an endless recusive loop.");
    int box;
    EXPECT_EQ(Layer_ApplyOption(L("B1"), LAYER_OPT_INSTANCE, &box), 0);
    EXPECT_EQ(box, 2);
    EXPECT_EQ(L("B1")->instance, nullptr);
    // A child of the current layer that instances B's family also counts.
    L("A")->instance = nullptr;
    L("A1")->instance = L("B");
    EXPECT_EQ(Layer_ApplyOption(L("B"), LAYER_OPT_INSTANCE, &box), 0);
    EXPECT_EQ(box, 2);
}

TEST_F(LayerTest, Rule3InstanceOfOwnAncestorIsDropped) {
    // C instances B, then is nested under B: B becomes its ancestor.
    Build({"B0", "X0", "C0"});
    L("C")->instance = L("B");
    SetCurrent("C");
    int box;
    EXPECT_EQ(Layer_ApplyOption(L("B"), LAYER_OPT_NEST, &box), 1);
    EXPECT_EQ(box, 3);
    EXPECT_EQ(Order(), "B0 C1 X0 ");
    EXPECT_EQ(L("C")->instance, nullptr);
    EXPECT_STREQ(Layer_ErrorBox(3)->lines[1], "contain an instance of it-self.");
    EXPECT_EQ(Layer_ErrorBox(1)->rows, 7);
    EXPECT_EQ(Layer_ErrorBox(4), nullptr);
}

TEST_F(LayerTest, Rule3SweepLooksPastSiblingsToRealAncestors) {
    // D (level 2) under P (1) under R (0); S is P's sibling, not D's ancestor.
    Build({"R0", "S1", "P1", "D2", "Z0"});
    L("D")->instance = L("S");
    SetCurrent("Z");
    int box;
    EXPECT_EQ(Layer_ApplyOption(L("S"), LAYER_OPT_INSTANCE, &box), 1);
    EXPECT_EQ(box, 0);
    EXPECT_EQ(L("D")->instance, L("S"));
    EXPECT_EQ(L("S")->instance, L("Z"));

    L("D")->instance = L("R");   // R is D's top-level ancestor
    EXPECT_EQ(Layer_ApplyOption(L("P"), LAYER_OPT_INSTANCE, &box), 1);
    EXPECT_EQ(box, 3);
    EXPECT_EQ(L("D")->instance, nullptr);
    EXPECT_EQ(L("P")->instance, L("Z"));
}

}  // namespace
