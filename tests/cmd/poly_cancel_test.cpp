// Ctrl-C at every prompt of the polyline commands and edit machines leaves
// the scene as it was; out of memory at every allocation of RULSURF,
// COONS, JOIN, BREAK and the insertion of a point gives the command's own
// message, adds nothing and keeps nothing allocated.
#include "poly_session.h"

namespace {

class PolyCancelTest : public PolySessionTest {
  protected:
    // The square of four polylines (picked at their middles {1,0} {2,1}
    // {1,2} {0,1}, running round it), a triangle picked at {4.5,4} and a
    // pipe of 3 points picked at {-2.5,-3}.
    void Build() {
        Scene_Clear();
        empty_blocks_ = g.mem.live_blocks;   // the menus' blocks
        Layer_NewFirst();
        PolylineData* pipe = (PolylineData*)AddPolyline({{-3, 0, -3}, {-2, 0, -3}, {-2, 0, -2}})->data;
        pipe->form = FORM_POLY_PIPE;
        pipe->param1 = {0.1, 0.1, 0};
        AddPolyline({{0, 0, 0}, {2, 0, 0}});
        AddPolyline({{2, 0, 0}, {2, 0, 2}});
        AddPolyline({{2, 0, 2}, {0, 0, 2}});
        AddPolyline({{0, 0, 2}, {0, 0, 0}});
        TriangleData t{{{4, 0, 4}, {5, 0, 4}, {4, 0, 5}}};
        Add_Triangle(&t);
        base_blocks_ = g.mem.live_blocks;
    }
    long base_blocks_ = 0, empty_blocks_ = 0;
};

TEST_F(PolyCancelTest, CtrlCAtEveryPrompt) {
    const std::vector<std::vector<std::string>> scripts = {
        {"POLYLINE\n", "0,0,0\n", "1,0,0\n", "1,0,1\n"},
        {"CIRCLE\n", "0,0,0\n", "1\n"},
        {"ARC\n", "0,0,0\n", "1\n", "0\n", "90\n"},
        {"EXTRUDE\n", "{1,0}", "0,0,0\n"},
        {"REVOLUTION\n", "{1,0}", "0,0,0\n"},
        {"CONE-SWEEP\n", "{1,0}"},
        {"THICKEN\n", "{1,0}", "1\n", "1\n"},
        {"WALL\n", "{1,0}", "4\n"},
        {"RULSURF\n", "{1,0}", "{1,2}", "3\n"},
        {"COONS\n", "{1,0}", "{2,1}", "{1,2}", "{0,1}", "3\n"},
        {"JOIN\n", "{1,0}"},
        {"PARRAY\n", "{1,0}", "{4.5,4}", "E\n"},
        {"EDIT\n", "{1,0}", "M\n"},
        {"EDIT\n", "{1,0}", "A\n"},
        {"EDIT\n", "{1,0}", "R\n"},
        {"EDIT\n", "{1,0}", "N\n", "B\n"},
        {"EDIT\n", "{-2.5,-3}", "R1\n"},
    };
    for (const auto& steps : scripts) {
        for (size_t k = 1; k <= steps.size(); k++) {
            std::string script;
            for (size_t i = 0; i < k; i++) script += steps[i];
            SCOPED_TRACE(script);
            Build();
            const std::string before = Scene();
            Play(script);
            Headless_PushKey(3);
            Headless_ClearTranscript();
            EXPECT_FALSE(RunLoop());
            EXPECT_NE(Headless_Transcript().find("*cancel* "), std::string::npos);
            EXPECT_EQ(Scene(), before);
            EXPECT_EQ(g.mem.live_blocks, base_blocks_);
            EXPECT_EQ(g.scene.Selected_Count, 0);
            EXPECT_EQ(g.view.marker_pending, 0);
        }
    }
}

TEST_F(PolyCancelTest, OutOfMemoryAtEveryAllocation) {
    struct Case {
        std::string script;
        std::vector<std::pair<int, const char*>> messages;   // up to allocation n: this message
    };
    const char* mesh = "\nCan't create Mesh...Out Of Memory";
    const Case cases[] = {
        // The grid, the two boundaries' samples, then the mesh added (record, points, node).
        {"RULSURF\n{1,0}{1,2}2\n3\n", {{6, mesh}, {9, "\nOut of Memory"}}},
        {"COONS\n{1,0}{2,1}{1,2}{0,1}2\n3\n", {{10, mesh}, {13, "\nOut of Memory"}}},
        {"JOIN\n{1,0}{2,1}", {{4, "\nUnable to join...Out Of Memory"}}},
        {"EDIT\n{1,0}A\n1,0,0\n", {{1, "Out Of Memory"}}},
        {"EDIT\n{-2.5,-3}N\nB\nY\n", {{3, "\nUnable to make Polyline #1"}, {6, "\nUnable to make Polyline #2"}}},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.script);
        const int last = c.messages.back().first;
        for (int n = 1; n <= last + 1; n++) {
            SCOPED_TRACE(n);
            Build();
            const std::string before = Scene();
            Mem_FailAfter(n);
            const std::string said = Run(c.script);
            const bool failed = g.mem.fail_countdown == 0;
            Mem_FailAfter(0);
            EXPECT_EQ(failed, n <= last);
            if (!failed) {   // it ran through: something was made or changed
                EXPECT_NE(Scene(), before);
                break;
            }
            const char* want = nullptr;
            for (const auto& m : c.messages)
                if (!want && n <= m.first) want = m.second;
            EXPECT_NE(said.find(want), std::string::npos) << said;
            EXPECT_EQ(Scene(), before);
            Scene_Clear();
            EXPECT_EQ(g.mem.live_blocks, empty_blocks_);
        }
    }
}

}  // namespace
