// scene_writer_test.cpp - the scene file: header, settings, camera, sections,
// layers, nesting, BLOCK Layers, transforms and the overwrite question.
#include <sys/stat.h>

#include "gfx/headless/headless.h"
#include "pov/pov_test_support.h"

namespace {

// The camera section with the three values a test changes.
std::string Camera(const char* direction = "0, 0, 1.20711", const char* sky = "0, 1, 0",
                   const char* right = "1.33333, 0, 0") {
    return std::string("\n\n/******************* CAMERA ***********************/\n") +
           "\ncamera {\n    location <0, 2, -10>\n   direction <" + direction + ">\n         sky <" + sky +
           ">\n          up <0, 1, 0>\n       right <" + right + ">\n     look_at <0, 0, 0>\n}" +
           kTexturesTitle + kBlocksTitle + kActionTitle;
}

TEST_F(PovTest, SceneWithoutLayersHasHeaderSettingsCameraAndTitlesOnly) {
    std::string text = Export();
    EXPECT_EQ(text, ExpectedHeader() + "\n\n#max_trace_level 5\n#max_intersections 100\n" + Camera());
    EXPECT_EQ(messages_, "\nMaking <qmr.pov>");
    // The six header comment lines are exactly 81 characters before their line feeds.
    for (size_t start = 0, i = 0; i < 6; i++, start += 82) EXPECT_EQ(text.find('\n', start), start + 81);
}

TEST_F(PovTest, FogBackgroundIncludeAndTraceSettings) {
    PovSettings& s = g.pov;
    s.Max_Trace_Level = 7;
    s.Max_Intersections = 64;
    s.Fog_On = 1;
    s.Fog_Color = {0.25, 0.5, 1};
    s.Fog_Distance = 250.5;
    s.Background_On = 1;
    s.Background_Color = {0.1, 0.2, 0.3};
    g.view.Active_Viewport.FOV = 90;   // d = 0.5 / tan(45 deg) = 0.5
    g.view.camera_aspect = 1.5;
    g.view.Active_Viewport.UP = {0, 0, 1};
    WriteFile(support_ + "/include.dat", "#declare Extra = 1;\n// copied verbatim\n");
    EXPECT_EQ(Export(), ExpectedHeader() + "#declare Extra = 1;\n// copied verbatim\n" +
                           "\n\n#max_trace_level 7\n#max_intersections 64\n"
                           "\nfog {\n    color rgb<0.25, 0.5, 1>\n    distance 250.5\n}\n"
                           "\nbackground { color rgb<0.1, 0.2, 0.3> }\n" +
                           Camera("0, 0, 0.5", "0, 0, 1", "1.5, 0, 0"));
}

TEST_F(PovTest, EmptyLayerAndScenesDirFallback) {
    NewLayer("Untitled");
    g.config.Scenes_Dir[0] = '\0';
    snprintf(g.config.POV_DIR, sizeof g.config.POV_DIR, "%s", scenes_.c_str());
    snprintf(g.run.Scene_Name, sizeof g.run.Scene_Name, "room");
    std::string text = Export();
    EXPECT_EQ(messages_, "\nMaking <room.pov>");
    EXPECT_EQ(Action(text), "\n\nunion {  // Layer name: Untitled\n}");
    EXPECT_EQ(Blocks(text), "");
}

TEST_F(PovTest, LayersNestingBlocksInstancesAndTransforms) {
    Layer* a = NewLayer("A");
    NewLayer("A1", 1);
    Layer* b = NewLayer("B");
    b->on = 0;
    NewLayer("B1", 1);
    Layer* c = NewLayer("C");
    c->csg = CSG_MERGE;
    c->instance = a;
    strcpy(c->texture, "Stone");
    c->texture_scale = {2, 2, 2};
    c->translate = {1, 2, 3};
    Layer* d = NewLayer("D");
    d->csg = CSG_DIFFERENCE;
    Layer* d1 = NewLayer("D1", 1);
    d1->csg = CSG_INTERSECTION;
    SaveTexture(Named("Stone"));

    std::string text = Export();
    EXPECT_EQ(Blocks(text),
              "\n#declare BLOCK_Layer_A ="
              "\n    union {  // Layer name: A"
              "\n        "
              "\n        union {  // Layer name: A1"
              "\n        }"
              "\n    }"
              "\n");
    EXPECT_EQ(Action(text),
              "\nobject { BLOCK_Layer_A }"
              "\n"   // B is off: only its line feed
              "\n\nunion {  // Layer name: B1\n}"
              "\n\nmerge {  // Layer name: C"
              "\n    object { BLOCK_Layer_A }"
              "\n    "
              "\n    texture { Stone "
              "\n        scale <2, 2, 2>}"
              "\n    translate <1, 2, 3>"
              "\n}"
              "\n\ndifference {  // Layer name: D"
              "\n    "
              "\n    intersection {  // Layer name: D1"
              "\n    }"
              "\n}");
    EXPECT_EQ(Textures(text),
              "\n\n#declare Stone = texture {\n    pigment { color rgbf<0, 0, 0, 0>\n    }\n}");
}

TEST_F(PovTest, BlockLayerThatIsOffIsNeitherDeclaredNorReferenced) {
    Layer* a = NewLayer("A");
    a->on = 0;
    NewLayer("A1", 1);
    Layer* c = NewLayer("C");
    c->instance = a;
    std::string text = Export();
    EXPECT_EQ(Blocks(text), "");
    EXPECT_EQ(Action(text), "\n\nunion {  // Layer name: C\n}");
    EXPECT_EQ(text.find("BLOCK_Layer_"), std::string::npos);
}

TEST_F(PovTest, LayerTransformsAndRotationOrders) {
    Layer* l = NewLayer("T");
    l->rotate = {30, 0, 10};
    strcpy(l->texture, "Jade");   // from textures.inc: needs no declaration
    l->texture_rotate = {0, 45, 0};
    l->texture_translate = {0.5, 0, 0};
    Layer* m = NewLayer("U");
    m->rotation_order = 1;
    m->scale = {1, 2, 1};
    m->rotate = {30, 0, 10};
    m->texture_rotate = {5, 6, 7};
    strcpy(m->texture, "Jade");
    strcpy(NewLayer("P")->texture, "Jade");   // no texture transform: closes on its line
    std::string text = Export();
    EXPECT_EQ(Action(text),
              "\n\nunion {  // Layer name: T"
              "\n    \n    texture { Jade "
              "\n        rotate <.0, 45, .0>"
              "\n        translate <0.5, 0, 0>}"
              "\n    rotate <30, .0, .0>"
              "\n    rotate <.0, .0, 10>"
              "\n}"
              "\n\nunion {  // Layer name: U"
              "\n    \n    texture { Jade "
              "\n        rotate <5, 6, 7>}"
              "\n    scale <1, 2, 1>"
              "\n    rotate <30, 0, 10>"
              "\n}"
              "\n\nunion {  // Layer name: P\n    \n    texture { Jade }\n}");
}

// --- the overwrite question ---

// An existing file "old" and the answer typed (none: Overwrite_Pov is set).
TEST_F(PovTest, OverwriteQuestion) {
    const std::string q = "\nEXPORTPOV> File already Exists, Overwrite it (Yes,No)? <Y>:";
    struct Case {
        const char* answer;
        int result;
        std::string messages;
        bool replaced;
    };
    const Case cases[] = {{"N\n", 2, q + "\nExport aborted", false},
                          {"Y\n", 1, q + "\nMaking <qmr.pov>", true},
                          {"\n", 1, q + "\nMaking <qmr.pov>", true},
                          {"SAVE\n", 0, "", false},   // another command: its code is kept
                          {nullptr, 1, "\nMaking <qmr.pov>", true}};
    WriteFile(support_ + "/command.dat", "(SAVE,104)\n");
    NewLayer("L");
    for (const Case& c : cases) {
        SCOPED_TRACE(c.answer ? c.answer : "Overwrite_Pov");
        WriteFile(ScenePath(), "old");
        g.input.currentCommand = 108;
        Headless_Reset();
        if (c.answer) Headless_PushText(c.answer);
        g.pov.Overwrite_Pov = c.answer == nullptr;
        std::string text = Export(c.result);
        if (!c.messages.empty()) {
            EXPECT_EQ(messages_, c.messages);
        }
        EXPECT_EQ(text.rfind(c.replaced ? ExpectedHeader() : "old", 0), 0u);
        if (c.result == 0) {
            EXPECT_EQ(g.input.InputResult.code, 104);
        }
    }
}

TEST_F(PovTest, UnwritableScenesDirectoryIsReported) {
    snprintf(g.config.Scenes_Dir, sizeof g.config.Scenes_Dir, "%s/missing/dir", scenes_.c_str());
    Export(2);
    EXPECT_EQ(messages_, "\nError: Creating file <" + scenes_ + "/missing/dir/qmr.pov>");
    EXPECT_EQ(g.writer.file, nullptr);
    EXPECT_EQ(g.output.Output_Mode, 0);
}

TEST_F(PovTest, LayerIsBlockOnlyWhenSomeLayerInstancesIt) {
    Layer* a = NewLayer("A");
    EXPECT_EQ(Layer_IsBlock(a), 0);
    a->instance = a;   // a layer naming itself counts too
    EXPECT_EQ(Layer_IsBlock(a), 1);
}

}  // namespace

// Failed writes, made real by a file-size limit: the old scene file stays as
// it was, no temporary is left, the result is 2 and the message names the
// file. A mesh whose spool outgrows the limit fails in the spool first.
TEST_F(PovTest, FailedWritesKeepTheOldSceneFile) {
    NewLayer("L");
    // Two meshes of 25 x 40 cells: 2000 triangles each, 144000 spool bytes
    // (the spool is written anew for each), over 50 bytes of text a triangle.
    PolylineData m = Poly_Default();
    m.form = FORM_POLY_MESH;
    m.size_m = 25;
    m.size_n = 40;
    std::vector<Point3> pts;
    for (int r = 0; r <= 25; r++)
        for (int c = 0; c <= 40; c++) pts.push_back({(double)c, (double)r, (double)((r * c) % 3)});
    m.points = pts.data();
    m.count = (int)pts.size();
    ASSERT_NE(Poly_AddToScene(&m), nullptr);
    ASSERT_NE(Poly_AddToScene(&m), nullptr);
    g.pov.Overwrite_Pov = 1;
    struct Case {
        rlim_t limit;
        std::string message;
    };
    const std::string path = ScenePath();
    const Case cases[] = {
        // the spool fails; the scene file would lack the mesh
        {20000, "\nError: Writing <triangle.tmp> failed (disk full?)\nError: <" + path + "> not written"},
        // each spool fits, the scene file's text of both meshes does not
        {160000, "\nError: Writing <" + path + "> failed (disk full?), the file is unchanged"},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.limit);
        WriteFile(path, "old scene");
        {
            FileSizeLimit limit(c.limit);
            Export(2);
        }
        EXPECT_EQ(messages_.find("\nMaking <qmr.pov>\nWriting: Poly_Mesh"), 0u) << messages_;
        EXPECT_EQ(messages_.size() - messages_.rfind(c.message), c.message.size()) << messages_;
        EXPECT_EQ(ReadFile(path), "old scene");
        EXPECT_FALSE(FileExists(scenes_ + "/$mr.pov"));
        EXPECT_EQ(g.writer.file, nullptr);
        EXPECT_EQ(g.output.Output_Mode, 0);
    }
    Export(1);   // the limit gone, the same scene is written in full
    EXPECT_EQ(ReadFile(path).rfind(ExpectedHeader(), 0), 0u);
    EXPECT_NE(ReadFile(path).find("union { // Poly_Mesh"), std::string::npos);
}

// The library is written anew through "work.tmp": a save that cannot be
// written completely leaves every record as it was.
TEST_F(PovTest, FailedTextureSaveKeepsTheLibrary) {
    for (const char* n : {"Red_Glass", "Gold", "Wood_7", "Sky"}) SaveTexture(Named(n));
    const std::string lib = work_ + "/textures.wrk";
    const std::string before = ReadFile(lib);
    ASSERT_EQ(before.size(), 4u * 960u);
    TextureRecord gold = Named("Gold");
    gold.reflection = 0.5f;
    testing::internal::CaptureStdout();
    int r;
    {
        FileSizeLimit limit(2000);
        r = Texture_Save(&gold);
    }
    std::string out = testing::internal::GetCapturedStdout();
    EXPECT_EQ(r, 0);
    EXPECT_EQ(out, "\nError: Writing <" + lib + "> failed (disk full?), the library is unchanged");
    EXPECT_EQ(ReadFile(lib), before);
    EXPECT_FALSE(FileExists(work_ + "/work.tmp"));

    ASSERT_EQ(Texture_Save(&gold), 1);   // in place: same size, Gold's record changed
    TextureRecord back;
    ASSERT_EQ(Texture_Load(&back, "GOLD"), 1);
    EXPECT_EQ(back.reflection, 0.5f);
    EXPECT_EQ(ReadFile(lib).size(), 4u * 960u);
    EXPECT_EQ(ReadFile(lib).compare(0, 960, before, 0, 960), 0);   // Red_Glass untouched
    parse_check_ = false;
}
