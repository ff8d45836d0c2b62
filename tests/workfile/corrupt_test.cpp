// corrupt_test.cpp - every corruption of a work file ends in a clean load
// result with a valid scene: truncation at every offset, flipped bytes,
// lying counts and positions. Run under the sanitizer build as well.
#include <gtest/gtest.h>

#include "test_support.h"
#include "view/view_commands.h"
#include "workfile/wf_test_util.h"
#include "workfile/workfile.h"

namespace {

class Corrupt : public WorkFileTest {
  protected:
    // Loads the bytes from a clean state; the scene must be valid and, once
    // cleared, every block handed out must have come back.
    // Returns the load result.
    int LoadChecked(const std::string& bytes, const std::string& what) {
        State_Reset();
        long live = g.mem.live_blocks;
        int r = Load(bytes);
        EXPECT_TRUE(r == 0 || r == 1) << what;
        // Past the magic the old scene is gone and a first layer always exists.
        if (bytes.size() >= 35) {
            EXPECT_NE(g.scene.First_Layer, nullptr) << what;
        }
        EXPECT_EQ(SceneProblem(), "") << what;
        Scene_Clear();
        Zoom_FreeAll();   // a load starts the views' zoom stacks afresh
        EXPECT_EQ(g.mem.live_blocks, live) << what;
        return r;
    }

    std::string SampleFile() {
        BuildSampleScene();
        std::string p = dir.file("good.qmr");
        EXPECT_EQ(WorkFile_Save(p.c_str()), 1);
        return ReadFile(p);
    }
};

TEST_F(Corrupt, TruncationAtEveryOffset) {
    std::string good = SampleFile();
    // Anything cut short, before or after the magic, loads with 0.
    for (size_t n = 0; n < good.size(); n++)
        ASSERT_EQ(LoadChecked(good.substr(0, n), "cut at " + std::to_string(n)), 0) << n;
    EXPECT_EQ(LoadChecked(good, "whole"), 1);
}

TEST_F(Corrupt, EveryByteFlipped) {
    std::string good = SampleFile();
    for (size_t i = 35; i < good.size(); i++) {
        for (int x : {0xFF, 0x80, 0x01}) {
            std::string bad = good;
            bad[i] = static_cast<char>(bad[i] ^ x);
            LoadChecked(bad, "byte " + std::to_string(i) + " ^ " + std::to_string(x));
        }
    }
}

TEST_F(Corrupt, LyingCountsAndPositions) {
    // A polyline that claims two billion points in a tiny file.
    Bytes b = Magic210();
    LayerSection(b, 1, "A");
    b.u8(5).u8(1).u8(1).u8(100).u8(9).i32(2000000000).u8(10).pt(1, 2, 3).u8(101);
    LoadChecked(b.s, "huge count");
    // Negative count: no points, the object is complete.
    Bytes n = Magic210();
    LayerSection(n, 1, "A");
    n.u8(5).u8(1).u8(1).u8(100).u8(9).i32(-5).u8(10).u8(101).u8(102).u8(0xFF);
    LoadChecked(n.s, "negative count");
    // Positions that name no layer, links to themselves, a huge current layer.
    Bytes p = Magic210();
    p.u8(1).u8(21).i32(0x7FFFFFFF).u8(19).i32(-9).u8(0xFF);
    LayerSection(p, 0x7FFFFFFF, "Big", 0x7FFFFFFF);
    LayerSection(p, 2, "Self", 2);
    LayerSection(p, -3, "Neg", 1);
    p.u8(3).i32(77).u8(4).f64(-1e308).u8(18).f64(0).u8(19).i32(1 << 30).u8(0xFF);
    p.u8(0xFF);
    LoadChecked(p.s, "positions");
    // Objects before any layer, an unknown kind, a kind byte of 0xFF.
    Bytes o = Magic210();
    o.u8(5).u8(1).u8(2).u8(100).u8(1).pt(1, 1, 1).u8(101).u8(102);
    LayerSection(o, 1, "A");
    o.u8(5).u8(1).u8(9).u8(100).u8(1).u8(2).u8(101).u8(1).u8(0xFF).u8(100).u8(101).u8(102);
    o.u8(0xFF);
    LoadChecked(o.s, "odd kinds");
    // 2.0A with two billion layers and a negative layer count.
    Bytes a = Magic20A();
    a.i32(1).i32(1).zeros(4 * 668 + 248 + 22 * 4).i32(0).i32(0).i32(0).i32(2000000000).i32(0);
    a.zeros(72 * 2);
    LoadChecked(a.s, "2.0A huge layer count");
    Bytes a2 = Magic20A();
    a2.i32(99).i32(-4).zeros(4 * 668 + 248 + 22 * 4).i32(0).i32(0).i32(0).i32(-7).i32(0);
    a2.i32(5).i32(77).zeros(41).i32(-1);
    LoadChecked(a2.s, "2.0A negative layer count, unknown kind");
}

}  // namespace
