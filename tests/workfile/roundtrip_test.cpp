// roundtrip_test.cpp - save then load gives the scene back; the save goes
// through the "$" temporary file and a failed write keeps the old file.
#include <gtest/gtest.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <csignal>
#include <sstream>

#include "test_support.h"
#include "workfile/wf_test_util.h"
#include "workfile/workfile.h"

namespace {

std::string DumpSettings() {
    std::ostringstream o;
    o.precision(17);
    for (const IntSetting& s : KeptIntSettings()) o << *s.field << " ";
    const PovSettings& p = g.pov;
    const RenderSettings& r = g.render;
    o << r.Extra_Options << "|" << p.Fog_Distance << " " << p.Fog_Color.x << p.Fog_Color.y
      << p.Fog_Color.z << " " << p.Background_Color.x << p.Background_Color.y
      << p.Background_Color.z << " " << r.Antialias_Threshold << " " << r.Antialias_Jitter << " "
      << r.Spare_Double34 << " layout " << g.view.Viewport_Layout;
    return o.str();
}

std::string DumpView(const Viewport& v) {
    std::ostringstream o;
    o.precision(17);
    auto pt = [&](const Point3& p) { o << p.x << "," << p.y << "," << p.z << " "; };
    pt(v.CAM);
    pt(v.TAR);
    pt(v.UP);
    o << v.FOV << " " << v.focal << " " << v.CAMERA << v.CENTER << v.AXIS << v.title_on
      << v.SNAP << " " << v.SNAPX << " " << v.SNAPY << " " << v.GRID << " " << v.GRIDX << " "
      << v.GRIDY << " " << v.WORLD << " " << v.PITCH << " " << v.cos_pitch << " " << v.HEADING
      << " " << v.sin_heading << " " << v.AREA << " " << v.pixels_per_unit << " " << v.VIEW
      << " ";
    pt(v.axis_d);
    pt(v.ELEVATION);
    return o.str();
}

class WorkFileRoundTrip : public WorkFileTest {};

TEST_F(WorkFileRoundTrip, SaveThenLoadGivesTheSceneBack) {
    BuildSampleScene();
    std::string scene = DumpScene(), settings = DumpSettings();
    Views_StoreActive();
    std::string views[5];
    for (int n = 1; n <= 4; n++) views[n] = DumpView(g.view.Viewports[n]);
    std::string path = dir.file("scene.qmr");
    ASSERT_EQ(WorkFile_Save(path.c_str()), 1);
    EXPECT_FALSE(FileExists(dir.file("$cene.qmr")));
    EXPECT_STREQ(g.run.workFileName, "scene");
    EXPECT_STREQ(g.run.currentFilePath, path.c_str());

    State_Reset();
    std::string out = Captured([&] { EXPECT_EQ(WorkFile_Load(path.c_str()), 1); });
    EXPECT_EQ(out, "\nRedrawing...");
    EXPECT_EQ(DumpScene(), scene);
    EXPECT_EQ(DumpSettings(), settings);
    for (int n = 1; n <= 4; n++) EXPECT_EQ(DumpView(g.view.Viewports[n]), views[n]) << n;
    EXPECT_EQ(g.view.Viewports[2].AREA, 77.0);   // the working record was stored first
    EXPECT_EQ(g.view.Current_Viewport, 1);
    EXPECT_EQ(DumpView(g.view.Active_Viewport), views[1]);
    EXPECT_STREQ(g.scene.Current_Layer->name, "TwelveChars!");
    EXPECT_STREQ(g.run.workFileName, "scene");
    EXPECT_STREQ(g.run.Scene_Name, "scene");
    EXPECT_STREQ(g.run.Image_Name, "scene");
    EXPECT_EQ(SceneProblem(), "");
    // Saving the loaded scene and loading it again changes nothing more.
    ASSERT_EQ(WorkFile_Save(dir.file("again.qmr").c_str()), 1);
    State_Reset();
    Captured([&] { EXPECT_EQ(WorkFile_Load(dir.file("again.qmr").c_str()), 1); });
    EXPECT_EQ(DumpScene(), scene);
}

TEST_F(WorkFileRoundTrip, FileStartsWithMagicThenSettingsAndEndsWithEndTag) {
    Layer_NewFirst();
    ASSERT_EQ(WorkFile_Save(dir.file("a.qmr").c_str()), 1);
    std::string s = ReadFile(dir.file("a.qmr"));
    ASSERT_GT(s.size(), 40u);
    EXPECT_EQ(s.substr(0, 35), std::string("Quillmoor Sculptor 2.10 work file!\0", 35));
    EXPECT_EQ(s[35], 1);   // tag 1
    EXPECT_EQ(s[36], 1);   // key 1 (ORTHO)
    EXPECT_EQ(static_cast<unsigned char>(s.back()), 0xFF);
    // Section 1 is 21 int32 keys: 21 * 5 bytes, then 0xFF, then tag 2.
    EXPECT_EQ(static_cast<unsigned char>(s[36 + 105]), 0xFF);
    EXPECT_EQ(s[36 + 106], 2);
}

// Files several times the 64 KiB I/O buffers. A triangle object takes 103
// bytes (kind 2, texture 22, flags 2, key 100, three keyed corners 75, key
// 101) and a polyline of n points 109 + 24 n (its keys 1..9 take 80); the
// objects add tag 5 and key 102 to the file of the same layer without them.
TEST_F(WorkFileRoundTrip, ScenesLargerThanTheBuffersRoundTripAndCutsKeepWholeObjects) {
    Layer_NewFirst();
    std::string empty = dir.file("empty.qmr"), path = dir.file("big.qmr");
    ASSERT_EQ(WorkFile_Save(empty.c_str()), 1);
    const size_t base = ReadFile(empty).size();
    const int triangles = 2000, points = 3001;
    for (int i = 0; i < triangles; i++) {
        TriangleData t{{{i + 0.5, 1.0 / (i + 1), -i * 0.25}, {0, i * 3.0, 1}, {7, 8, -i * 1e-3}}};
        ASSERT_NE(Add_Triangle(&t), nullptr);
    }
    std::vector<Point3> pts;
    for (int i = 0; i < points; i++) pts.push_back({i * 0.1, i * -2.5, 1.0 / (i + 3)});
    PolylineData p = Poly_Default();
    p.points = pts.data();
    p.count = points;
    ASSERT_NE(Poly_AddToScene(&p), nullptr);
    std::string scene = DumpScene();
    ASSERT_EQ(WorkFile_Save(path.c_str()), 1);
    std::string bytes = ReadFile(path);
    EXPECT_EQ(bytes.size(), base + 2 + 103u * triangles + 109 + 24u * points);
    State_Reset();
    Captured([&] { EXPECT_EQ(WorkFile_Load(path.c_str()), 1); });
    EXPECT_EQ(DumpScene(), scene);

    // Cut inside the triangles (oldest first, from offset base): the whole
    // ones before the cut are kept, across buffer refills.
    for (size_t cut : {size_t(65536), size_t(65536 + 50), size_t(131072 + 3)}) {
        ASSERT_EQ(Load(bytes.substr(0, cut)), 0) << cut;
        EXPECT_EQ(ObjectsOf(g.scene.First_Layer).size(), (cut - base) / 103) << cut;
        EXPECT_EQ(SceneProblem(), "") << cut;
    }
}

TEST_F(WorkFileRoundTrip, MeshSizesAboveOneByteComeBackNegative) {
    Layer_NewFirst();
    PolylineData p = Poly_Default();
    Point3 pt{1, 2, 3};
    p.points = &pt;
    p.count = 1;
    p.size_m = 200;
    p.size_n = 127;
    Poly_AddToScene(&p);
    ASSERT_EQ(WorkFile_Save(dir.file("m.qmr").c_str()), 1);
    State_Reset();
    Captured([&] { ASSERT_EQ(WorkFile_Load(dir.file("m.qmr").c_str()), 1); });
    auto* q = static_cast<PolylineData*>(g.scene.First_Layer->first_object->data);
    EXPECT_EQ(q->size_m, -56);
    EXPECT_EQ(q->size_n, 127);
}

TEST_F(WorkFileRoundTrip, EmptyNameFailsAtOnceAndTemporaryNameReplacesFirstCharacter) {
    Layer_NewFirst();
    EXPECT_EQ(WorkFile_Save((dir.path() + "/.qmr").c_str()), 0);
    EXPECT_EQ(WorkFile_Save((dir.path() + "/").c_str()), 0);
    // An unwritable temporary file (its directory is missing) fails with no
    // message and no change to the names.
    strcpy(g.run.workFileName, "before");
    std::string out =
        Captured([&] { EXPECT_EQ(WorkFile_Save(dir.file("nodir/x.qmr").c_str()), 0); });
    EXPECT_EQ(out, "");
    EXPECT_STREQ(g.run.workFileName, "before");
    // A one-character name becomes "$" alone.
    ASSERT_EQ(WorkFile_Save(dir.file("z.qmr").c_str()), 1);
    EXPECT_TRUE(FileExists(dir.file("z.qmr")));
    EXPECT_FALSE(FileExists(dir.file("$.qmr")));
}

// The save runs in a child whose file-size limit makes writes fail; the
// child reports the result and whether the write error was flagged. At 300 bytes
// the first 64 KiB block fails; at 100,000 the second of a scene of more
// than 200 KB does.
TEST_F(WorkFileRoundTrip, FailedWriteKeepsTheOldFileAndRemovesTheTemporary) {
    std::string path = dir.file("scene.qmr");
    BuildSampleScene();
    for (int i = 0; i < 2000; i++) {
        TriangleData t{{{i * 1.0, 0, 0}, {0, i * 1.0, 0}, {0, 0, 1}}};
        ASSERT_NE(Add_Triangle(&t), nullptr);
    }
    for (rlim_t limit : {rlim_t(300), rlim_t(100000)}) {
        WriteFile(path, "old contents");
        fflush(stdout);
        pid_t pid = fork();
        ASSERT_GE(pid, 0);
        if (pid == 0) {
            signal(SIGXFSZ, SIG_IGN);
            struct rlimit lim = {limit, limit};
            setrlimit(RLIMIT_FSIZE, &lim);
            testing::internal::CaptureStdout();
            int r = WorkFile_Save(path.c_str());
            std::string out = testing::internal::GetCapturedStdout();
            // The command that asked tells the user; the writer only flags it.
            bool flagged = out.empty() && g.workfile.Write_Error == 1;
            _exit(r * 10 + (flagged ? 1 : 0));
        }
        int status = 0;
        waitpid(pid, &status, 0);
        ASSERT_TRUE(WIFEXITED(status));
        EXPECT_EQ(WEXITSTATUS(status), 1) << limit;   // result 0, the write error flagged
        EXPECT_EQ(ReadFile(path), "old contents") << limit;
        EXPECT_FALSE(FileExists(dir.file("$cene.qmr"))) << limit;
    }
}

TEST_F(WorkFileRoundTrip, LoadOfMissingOrForeignFileLeavesTheSceneAlone) {
    BuildSampleScene();
    std::string before = DumpScene();
    EXPECT_EQ(WorkFile_Load(dir.file("none.qmr").c_str()), 0);
    WriteFile(dir.file("junk.qmr"), "Quillmoor Sculptor 2.11 work file!");
    std::string out = Captured([&] { EXPECT_EQ(WorkFile_Load(dir.file("junk.qmr").c_str()), 0); });
    EXPECT_EQ(out, "\nNot a Quillmoor Sculptor 2.0A or greater work file!");
    EXPECT_EQ(DumpScene(), before);
}

}  // namespace
