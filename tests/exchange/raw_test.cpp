// raw_test.cpp - RAW export (exact lines, read by assimp) and import (blocks,
// the insertion prompt, erased blocks, number-line parsing) and bad input.
#include <cmath>
#include <random>
#include <sstream>

#include "exchange_test_util.h"
#include "file_limit.h"
#include "gfx/headless/headless.h"
#include "model/selection.h"

namespace {

class RawTest : public ExchangeTest {
  protected:
    int Import(const std::string& text, const std::vector<std::string>& answers) {
        WriteFile(File("in.raw"), text);
        Answer(answers);
        int result = -1;
        EXPECT_TRUE(Headless_RunSession([&] { result = Import_Raw(File("in.raw").c_str()); }));
        return result;
    }

    // Triangles of the current layer, oldest first.
    static std::vector<TriangleData> Triangles() {
        std::vector<TriangleData> v;
        for (const Object* o : Objects(g.scene.Current_Layer))
            if (o->kind == KIND_TRIANGLE) v.insert(v.begin(), *(const TriangleData*)o->data);
        return v;
    }
    // The same as lines of nine "%g" numbers.
    static std::string TriangleLines() {
        std::string s;
        for (const TriangleData& t : Triangles()) s += CornerText(t.corner, 3) + "\n";
        return s;
    }

    // "Faces:" of `assimp info` on path; -1 when assimp could not read it.
    static int AssimpFaces(const std::string& path, std::string* out) {
        RunOptions opt;
        opt.timeout_s = 60;
        RunResult r = RunProcess({"assimp", "info", path}, opt);
        *out = r.out;
        size_t at = r.out.find("\nFaces:");
        if (r.status != 0 || at == std::string::npos) return -1;
        return atoi(r.out.c_str() + at + 7);
    }
};

TEST_F(RawTest, ExportWritesOneBlockPerVisibleLayer) {
    Layer* a = AddLayer("A", 3);
    Layer* b = AddLayer("B", 4, 0);
    Layer* c = AddLayer("C", 5);
    g.scene.Current_Layer = a;
    FaceData f = Face({0, 0, 0}, {1, 0, 0}, {1, 1, 0}, {0, 1, 0.5});
    Add_Face(&f);
    TriangleData t = Tri({0, 0, 0}, {2, 0, 0}, {0, 2, 0});
    Add_Triangle(&t);
    g.scene.Current_Layer = b;
    TriangleData tb = Tri({9, 9, 9}, {8, 8, 8}, {7, 7, 7});
    Add_Triangle(&tb);
    g.scene.Current_Layer = c;
    TriangleData tc = Tri({-1.5, 0, 0}, {1e-7, 0, 0}, {0, 250000, 3});
    Add_Triangle(&tc);
    g.input.InputResult.code = 404;
    EXPECT_EQ(1, Com_ExportRaw());
    EXPECT_EQ(0, g.input.InputResult.code);
    EXPECT_EQ(OUTPUT_SCREEN, g.output.Output_Mode);
    EXPECT_EQ("A\n"
              "0 0 0 2 0 0 0 2 0\n"            // newest first: the triangle
              "0 0 0 1 0 0 1 1 0\n"            // the face as (0, 1, 2) ...
              "1 1 0 0 1 0.5 0 0 0\n"          // ... and (2, 3, 0)
              "C\n"
              "-1.5 0 0 1e-07 0 0 0 250000 3\n",
              ReadFile(File("scene.raw")));
    EXPECT_NE(std::string::npos, Headless_Transcript().find("\nRAW file created <scene.raw>!"));
}

// Both formats: an export into a missing directory is reported, an import of
// a missing file gives 0.
TEST_F(RawTest, MissingDirectoryAndMissingFile) {
    struct Case {
        int (*exporter)();
        int (*importer)(const char*);
        const char* ext;
    };
    const std::string none = dir_.path() + "/none";
    for (const Case& c : {Case{Dxf_Export, Import_Dxf, "dxf"}, Case{Raw_Export, Import_Raw, "raw"}}) {
        SCOPED_TRACE(c.ext);
        snprintf(g.config.WORK_DIR, sizeof g.config.WORK_DIR, "%s", none.c_str());
        Headless_ClearTranscript();
        EXPECT_EQ(2, c.exporter());   // not written
        const std::string& tr = Headless_Transcript();
        EXPECT_NE(std::string::npos, tr.find("\nError: Creating <" + none + "/scene." + c.ext + ">!")) << tr;
        EXPECT_EQ(std::string::npos, tr.find("file created"));
        EXPECT_EQ(0, c.importer((none + "/scene." + c.ext).c_str()));
    }
}

// A write that fails on the way (a real file-size limit) leaves the old
// export as it was and no temporary beside it; the result is 2.
TEST_F(RawTest, FailedExportWritesKeepTheOldFile) {
    AddLayer("Parts", 3);
    g.scene.Current_Layer = FindLayer("Parts");
    for (int i = 0; i < 200; i++) {
        TriangleData t = Tri({0, 0, (double)i}, {2, 0, (double)i}, {0, 2, (double)i});
        ASSERT_TRUE(Add_Triangle(&t));
    }
    struct Case {
        int (*exporter)();
        const char* ext;
    };
    for (const Case& c : {Case{Dxf_Export, "dxf"}, Case{Raw_Export, "raw"}}) {
        SCOPED_TRACE(c.ext);
        const std::string path = File(std::string("scene.") + c.ext);
        WriteFile(path, "old export");
        Headless_ClearTranscript();
        int r;
        {
            FileSizeLimit limit(1000);
            r = c.exporter();
        }
        EXPECT_EQ(r, 2);
        EXPECT_EQ(Headless_Transcript(), "\nError: Writing <" + path + "> failed (disk full?), the file is unchanged");
        EXPECT_EQ(ReadFile(path), "old export");
        EXPECT_FALSE(FileExists(File(std::string("$cene.") + c.ext)));
        EXPECT_EQ(g.exchange.file, nullptr);
        EXPECT_EQ(g.output.Output_Mode, 0);
        EXPECT_EQ(c.exporter(), 1);   // without the limit: the whole file
        EXPECT_GT(ReadFile(path).size(), 1000u);
    }
}

// assimp 5.2 reads a file of one block; with several blocks its RAW loader
// fails its own scene validation, so each block is also given to it alone.
TEST_F(RawTest, AssimpReadsTheExport) {
    Layer* a = AddLayer("Walls", 3);
    Layer* c = AddLayer("Box", 5);
    g.scene.Current_Layer = a;
    FaceData f = Face({0, 0, 0}, {1, 0, 0}, {1, 1, 0}, {0, 1, 0});
    Add_Face(&f);
    TriangleData t = Tri({0, 0, 0}, {2, 0, 0}, {0, 2, 4});
    Add_Triangle(&t);
    g.scene.Current_Layer = c;
    PrimitiveData box = Primitive_Default();
    box.prim_type = PRIM_BOX;
    box.size = {1, 2, 3};
    Add_Primitive(&box);   // six sides, twelve triangles
    Raw_Export();

    std::istringstream in(ReadFile(File("scene.raw")));
    std::vector<std::string> blocks;
    for (std::string line; std::getline(in, line);) {
        if (!line.empty() && !isdigit((unsigned char)line[0]) && line[0] != '-') blocks.push_back("");
        ASSERT_FALSE(blocks.empty());
        blocks.back() += line + "\n";
    }
    ASSERT_EQ(2u, blocks.size());
    WriteFile(File("walls.raw"), blocks[0]);
    WriteFile(File("box.raw"), blocks[1]);
    std::string out;
    EXPECT_EQ(3, AssimpFaces(File("walls.raw"), &out)) << out;
    EXPECT_NE(std::string::npos, out.find("Maximum point      (2.000000 2.000000 4.000000)")) << out;
    EXPECT_EQ(12, AssimpFaces(File("box.raw"), &out)) << out;
    EXPECT_NE(std::string::npos, out.find("Box (mesh 0)")) << out;
}

TEST_F(RawTest, NumberLinesWithBlanksAndShortLines) {
    AddLayer("L", 7);
    ASSERT_EQ(1, Import("  -1 0 0 1 0 0 0 1 0\n"
                        "\n"
                        "   \n"
                        "1  2   3 4\t5 6 7 8 9   \n"
                        "1 2 3 4 5 6 7 8\n"          // eight numbers: skipped
                        "+.5 0 0 0 0 0 0 0 0 99\n",  // the tenth field is not read
                        {""}));
    EXPECT_EQ("-1 0 0 1 0 0 0 1 0\n1 2 3 4 5 6 7 8 9\n0.5 0 0 0 0 0 0 0 0\n", TriangleLines());
    const std::string& tr = Headless_Transcript();
    EXPECT_NE(std::string::npos, tr.find("\nPlease wait\nLast BLOCK: <noname>"));
    EXPECT_NE(std::string::npos, tr.find("\nIMPORTRAW> Set Insertion point <0, 0, 0>: "));
    EXPECT_EQ(0, g.scene.Selected_Count);   // placed, and deselected by the move
}

TEST_F(RawTest, InsertionPointMovesEachBlockAndIsTheNextDefault) {
    AddLayer("L", 7);
    ASSERT_EQ(1, Import("first\n"
                        "0 0 0 1 0 0 0 1 0\n"
                        "0 0 1 1 0 1 0 1 1\n"
                        "second\n"
                        "1 1 1 2 1 1 1 2 1\n",
                        {"10,0,0", ""}));
    // the second block takes the default (10, 0, 0)
    EXPECT_EQ("10 0 0 11 0 0 10 1 0\n10 0 1 11 0 1 10 1 1\n11 1 1 12 1 1 11 2 1\n", TriangleLines());
    const std::string& tr = Headless_Transcript();
    size_t first = tr.find("\nCurrent BLOCK: first\nIMPORTRAW> Set Insertion point <0, 0, 0>: ");
    size_t second = tr.find("\nLast BLOCK: second\nIMPORTRAW> Set Insertion point <10, 0, 0>: ");
    EXPECT_NE(std::string::npos, first) << tr;
    EXPECT_NE(std::string::npos, second) << tr;
    EXPECT_LT(first, second);
    EXPECT_EQ(0, g.scene.Selected_Count);
}

TEST_F(RawTest, AReplacedPromptErasesTheBlockAndKeepsTheName) {
    AddLayer("L", 7);
    long blocks_before = g.mem.live_blocks;
    ASSERT_EQ(1, Import("a\n"
                        "0 0 0 1 0 0 0 1 0\n"
                        "0 0 0 2 0 0 0 2 0\n"
                        "b\n"
                        "5 5 5 6 5 5 5 6 5\n"
                        "c\n"
                        "7 7 7 8 7 7 7 8 7\n",
                        {kCancel, "0,5,0", ""}));
    // block a is gone; b moved by (0, 5, 0) and c by the same default
    EXPECT_EQ("5 10 5 6 10 5 5 11 5\n7 12 7 8 12 7 7 13 7\n", TriangleLines());
    EXPECT_EQ(blocks_before + 4, g.mem.live_blocks);   // a's records and nodes were freed
    const std::string& tr = Headless_Transcript();
    EXPECT_EQ(2, Count(tr, "\nCurrent BLOCK: a\n"));   // "b" was not stored
    EXPECT_EQ(std::string::npos, tr.find("BLOCK: b"));
    EXPECT_NE(std::string::npos, tr.find("\nLast BLOCK: c"));
    EXPECT_EQ(0, g.scene.Selected_Count);
}

TEST_F(RawTest, ObjectsSelectedBeforeTheImportMoveWithTheFirstBlock) {
    Layer* l = AddLayer("L", 7);
    TriangleData old = Tri({0, 0, 0}, {1, 0, 0}, {0, 1, 0});
    Object_SetSelected(Add_Triangle(&old), 1, l);
    ASSERT_EQ(1, Import("one\n0 0 0 1 0 0 0 1 0\ntwo\n0 0 0 1 0 0 0 1 0\n", {"1,0,0", "3,0,0"}));
    // the old triangle moved once, with "one"
    EXPECT_EQ("1 0 0 2 0 0 1 1 0\n1 0 0 2 0 0 1 1 0\n3 0 0 4 0 0 3 1 0\n", TriangleLines());
}

TEST_F(RawTest, ADotEveryTwentyOneTriangles) {
    AddLayer("L", 7);
    std::string text;
    for (int i = 0; i < 62; i++) text += "0 0 0 1 0 0 0 1 0\n";
    ASSERT_EQ(1, Import(text, {""}));
    EXPECT_EQ(62u, Triangles().size());
    EXPECT_NE(std::string::npos, Headless_Transcript().find("\nPlease wait..\nLast BLOCK: <noname>"));
}

TEST_F(RawTest, BlockDrawnHighlightedThenInItsLayerColour) {
    g.config.colors.general_color = YELLOW;
    g.config.colors.view_bkcolor = BLACK;
    AddLayer("L", LGREEN);
    Headless_ClearSegments();
    ASSERT_EQ(1, Import("0 0 0 1 0 0 0 1 0\n", {"2,0,0"}));
    std::vector<int> colours;
    for (const Headless_Segment& seg : Headless_Segments())   // XOR lines are the cursor
        if (seg.mode != GFX_XOR && (colours.empty() || colours.back() != seg.colour))
            colours.push_back(seg.colour);
    // read: highlighted; move: erased, drawn again in the layer's colour
    EXPECT_EQ((std::vector<int>{YELLOW, BLACK, LGREEN}), colours);
}

TEST_F(RawTest, AWaitingKeyStopsALayerOfTheExport) {
    Layer* a = AddLayer("A", 3);
    Layer* b = AddLayer("B", 4);
    g.scene.Current_Layer = a;
    TriangleData t = Tri({0, 0, 0}, {1, 0, 0}, {0, 1, 0});
    for (int i = 0; i < 1500; i++) Add_Triangle(&t);
    g.scene.Current_Layer = b;
    Add_Triangle(&t);
    Headless_PushKey('x');
    Raw_Export();
    std::string text = ReadFile(File("scene.raw"));
    EXPECT_EQ(1024 + 1, Count(text, "0 0 0 1 0 0 0 1 0\n"));   // A stops, B is written
    EXPECT_NE(std::string::npos, text.find("\nB\n"));
    EXPECT_NE(std::string::npos, Headless_Transcript().find(" Terminated...\nRAW file created"));
    Headless_ClearInput();
    Headless_ClearTranscript();
    Dxf_Export();   // no key: everything
    EXPECT_EQ(1501, Count(ReadFile(File("scene.dxf")), "3DFACE"));
    EXPECT_EQ(std::string::npos, Headless_Transcript().find("Terminated"));
}

TEST_F(RawTest, OutOfMemoryStopsReading) {
    AddLayer("L", 7);
    Mem_FailAfter(5);   // record and node of two triangles, then the third record fails
    EXPECT_EQ(1, Import("0 0 0 1 0 0 0 1 0\n0 0 0 1 0 0 0 1 0\n0 0 0 1 0 0 0 1 0\n", {""}));
    EXPECT_EQ(2u, Triangles().size());
    EXPECT_NE(std::string::npos, Headless_Transcript().find("Out Of Memory\nLast BLOCK: <noname>"));
}

// --- bad input ---

class RawBadInput : public RawTest {
  protected:
    int ImportAnything(const std::string& text) {
        int r = Import(text, std::vector<std::string>(4000, ""));
        for (const TriangleData& t : Triangles())
            for (const Point3& c : t.corner)
                EXPECT_TRUE(std::isfinite(c.x) && std::isfinite(c.y) && std::isfinite(c.z));
        return r;
    }
};

TEST_F(RawBadInput, NotNumbersAreSkipped) {
    AddLayer("L", 7);
    ASSERT_EQ(1, ImportAnything("0 nan 0 1 0 0 0 1 0\n"
                                "1e999 0 0 1 0 0 0 1 0\n"
                                "1 2 3 4 5 6 7 8 inf\n"
                                "- - - - - - - - -\n"
                                "1 2 3 4 5 6 7 8 9\n"));
    EXPECT_EQ("1 2 3 4 5 6 7 8 9\n", TriangleLines());
}

TEST_F(RawBadInput, TruncatedAnywhere) {
    std::string whole = "block one\n1 2 3 4 5 6 7 8 9\n-1 -2 -3 -4 -5 -6 -7 -8 -9\nblock two\n"
                        "0.5 0.25 0.125 1 1 1 2 2 2\n";
    for (size_t cut = 0; cut <= whole.size(); cut++) {
        Restart();
        AddLayer("L", 7);
        EXPECT_EQ(1, ImportAnything(whole.substr(0, cut))) << cut;
        size_t full_lines = 0;   // complete number lines before the cut
        for (size_t at : {size_t(28), size_t(55), size_t(92)}) full_lines += at <= cut;
        EXPECT_LE(full_lines, Triangles().size()) << cut;
    }
}

TEST_F(RawBadInput, LongLinesAreSplit) {
    AddLayer("L", 7);
    ASSERT_EQ(1, ImportAnything(std::string(300, 'n') + "\n" + std::string(400, '1') + "\n" +
                                "1 1 1 2 2 2 3 3 3" + std::string(500, ' ') + "4\n"
                                "5 5 5 6 6 6 7 7 7\n"));
    // the 400 digits become lines of 249 and 151 digits: one field each, skipped;
    // the padded line's rest is blanks and "4": skipped
    EXPECT_EQ("1 1 1 2 2 2 3 3 3\n5 5 5 6 6 6 7 7 7\n", TriangleLines());
}

TEST_F(RawBadInput, BinaryGarbage) {
    std::mt19937 rng(11);
    for (int round = 0; round < 5; round++) {
        std::string junk;
        for (int k = 0; k < 50; k++) {
            for (int i = 0; i < 600; i++) junk += (char)(rng() & 0xff);
            junk += "\n1 2 3 4 5 6 7 8 9\n";
        }
        Restart();
        AddLayer("L", 7);
        EXPECT_EQ(1, ImportAnything(junk)) << round;
        EXPECT_LE(50u, Triangles().size());
    }
}

}  // namespace
