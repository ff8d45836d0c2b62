// The layer list, deletion, and the nesting and instancing rules.
#include <cstring>
#include <sstream>
#include <string>
#include <vector>

#include "test_support.h"

namespace {

class LayerTest : public QmrTest {
  protected:
    // Appends layers from words such as "A0 B1>A": name, level, and after ">"
    // the layer it shows.
    void Build(const std::string& words) {
        std::vector<std::pair<Layer*, std::string>> links;
        std::istringstream in(words);
        for (std::string w; in >> w;) {
            size_t gt = w.find('>');
            std::string head = w.substr(0, gt);
            Layer* l = Layer_Append();
            ASSERT_NE(l, nullptr);
            strcpy(l->name, head.substr(0, head.size() - 1).c_str());
            l->level = head.back() - '0';
            if (gt != std::string::npos) links.push_back({l, w.substr(gt + 1)});
        }
        for (auto& [l, target] : links) l->instance = L(target.c_str());
    }
    Layer* L(const char* name) {
        for (Layer* l = g.scene.First_Layer; l; l = l->next)
            if (strcmp(l->name, name) == 0) return l;
        return nullptr;
    }
    // The list in the words of Build, checking the back links on the way.
    std::string Order() {
        std::string s;
        Layer* prev = nullptr;
        for (Layer* l = g.scene.First_Layer; l; l = l->next) {
            EXPECT_EQ(l->prev, prev) << l->name;
            prev = l;
            s += (s.empty() ? "" : " ") + std::string(l->name) + std::to_string(l->level);
            if (l->instance) s += ">" + std::string(l->instance->name);
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
    Build("A0 B0");
    Layer* first = Layer_NewFirst();
    EXPECT_EQ(g.scene.First_Layer, first);
    EXPECT_EQ(first->next, L("A"));
    EXPECT_EQ(L("A")->prev, first);
    EXPECT_EQ(Order(), "Untitled0 A0 B0");
    Layer* last = Layer_Append();
    EXPECT_EQ(g.scene.Current_Layer, last);
    EXPECT_EQ(L("B")->next, last);
    // Out of memory: none, and the list is as it was.
    Mem_FailAfter(1);
    EXPECT_EQ(Layer_NewFirst(), nullptr);
    Mem_FailAfter(1);
    EXPECT_EQ(Layer_Append(), nullptr);
    EXPECT_EQ(Order(), "Untitled0 A0 B0 Untitled0");
    EXPECT_EQ(g.scene.Current_Layer, last);
}

TEST_F(LayerTest, FindIgnoresCaseButNotLength) {
    Build("Untitled0 Walls0");
    SetCurrent("Walls");
    EXPECT_EQ(Layer_Find("untitled"), 1);
    EXPECT_EQ(g.scene.Current_Layer, L("Untitled"));
    EXPECT_EQ(Layer_Find("wall"), 0);
    EXPECT_EQ(g.scene.Current_Layer, L("Untitled"));
}

TEST_F(LayerTest, MakeFindsOrCreatesWithCutName) {
    Build("A0");
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
    Build("A0 B0 C0 D0");
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
    Build("A0");
    EXPECT_EQ(Layer_Delete(L("A")), 0);
    Build("B0");
    TriangleData t{};
    Add_Triangle(&t);   // into B
    EXPECT_EQ(Layer_Delete(L("B")), 0);
    EXPECT_EQ(Layer_Count(), 2);
    EXPECT_EQ(Layer_Delete(L("A")), 1);   // the first: the new first layer is current
    EXPECT_EQ(Order(), "B0");
    EXPECT_EQ(g.scene.Current_Layer, L("B"));
    Build("C0");
    EXPECT_EQ(Layer_Delete(L("C")), 1);   // the last: the one before
    EXPECT_EQ(g.scene.Current_Layer, L("B"));
}

TEST_F(LayerTest, DeletePromotesChildrenAndClearsInstances) {
    Build("A0>P P0 C1 D2 E0>P");
    EXPECT_EQ(Layer_Delete(L("P")), 1);
    EXPECT_EQ(Order(), "A0 C0 D1 E0");
    EXPECT_EQ(g.scene.Current_Layer, L("C"));   // the layer that followed
}

// The layer options with their three rules. A row with layers starts a new
// list; one without goes on with the list the row before left. Box -1: not checked.
TEST_F(LayerTest, OptionsAndTheirRules) {
    const int INST = LAYER_OPT_INSTANCE, NEST = LAYER_OPT_NEST, SLIDE = LAYER_OPT_SLIDE;
    struct Step {
        const char* layers;
        const char* current;
        const char* target;
        int option, result, box;
        const char* after;
    } steps[] = {
        {"T0 X0 C0", "C", "T", NEST, 1, 0, "T0 C1 X0"},
        {nullptr, "C", "X", SLIDE, 1, -1, "T0 C0 X0"},
        // A moved layer leaves its children behind, one level up.
        {"C0 K1 M2 T0", "C", "T", NEST, 1, -1, "K0 M1 T0 C1"},
        {nullptr, "C", "K", SLIDE, 1, -1, "C0 K0 M1 T0"},
        // Cancel and the current layer as target do nothing.
        {"A0 B0", "A", "B", LAYER_OPT_CANCEL, 0, -1, "A0 B0"},
        {nullptr, "A", "A", NEST, 0, -1, "A0 B0"},
        {"A0 B0", "B", "A", INST, 1, 0, "A0>B B0"},
        {nullptr, "B", "A", LAYER_OPT_DEL_INSTANCE, 1, -1, "A0 B0"},
        // Rule 1: a nested current layer cannot be instanced, a BLOCK layer
        // cannot be nested, though it may slide to a top-level layer.
        {"P0 C1 T0", "C", "T", INST, 0, 1, "P0 C1 T0"},
        {"B0 X0>B P0 Q1", "B", "Q", NEST, 0, 1, "B0 X0>B P0 Q1"},
        {nullptr, "B", "Q", SLIDE, 0, 1, "B0 X0>B P0 Q1"},
        {nullptr, "B", "P", SLIDE, 1, -1, "X0>B B0 P0 Q1"},
        // Rule 2: blocks may not call each other, also through a child of
        // the current layer.
        {"A0>B A11 B0 B11", "A", "B1", INST, 0, 2, "A0>B A11 B0 B11"},
        {"A0 A11>B B0 B11", "A", "B", INST, 0, 2, "A0 A11>B B0 B11"},
        // Rule 3: nested under the layer it shows, C loses the link.
        {"B0 X0 C0>B", "C", "B", NEST, 1, 3, "B0 C1 X0"},
        // The sweep looks past siblings (S is not D's ancestor) to real ancestors.
        {"R0 S1 P1 D2>S Z0", "Z", "S", INST, 1, 0, "R0 S1>Z P1 D2>S Z0"},
        {"R0 S1>Z P1 D2>R Z0", "Z", "P", INST, 1, 3, "R0 S1>Z P1>Z D2 Z0"},
    };
    for (const Step& st : steps) {
        SCOPED_TRACE(std::string(st.layers ? st.layers : "...") + " " + st.target);
        if (st.layers) {
            Scene_Clear();
            Build(st.layers);
        }
        SetCurrent(st.current);
        int box = -1;
        EXPECT_EQ(Layer_ApplyOption(L(st.target), st.option, &box), st.result);
        if (st.box >= 0) {
            EXPECT_EQ(box, st.box);
        }
        EXPECT_EQ(Order(), st.after);
    }
}

TEST_F(LayerTest, ErrorBoxes) {
    const LayerErrorBox* two = Layer_ErrorBox(2);
    ASSERT_NE(two, nullptr);
    EXPECT_EQ(two->columns, 39);
    EXPECT_EQ(two->rows, 8);
    EXPECT_STREQ(two->lines[2], "lead to an endless recusive loop.");
    EXPECT_STREQ(Layer_ErrorBox(3)->lines[1], "contain an instance of it-self.");
    EXPECT_EQ(Layer_ErrorBox(1)->rows, 7);
    EXPECT_EQ(Layer_ErrorBox(4), nullptr);
}

}  // namespace
