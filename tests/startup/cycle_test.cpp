// The first work file from the command line and the renaming of default scenes.

#include "e2e/process.h"
#include "test_support.h"

namespace {

class CycleTest : public QmrTest {
  protected:
    void SetUp() override {
        QmrTest::SetUp();
        strcpy(g.config.WORK_DIR, "/qmr/work");
    }
    std::string First(std::vector<const char*> args) {
        args.insert(args.begin(), "qmr");
        Startup_FirstWorkFile(static_cast<int>(args.size()), const_cast<char**>(args.data()));
        return g.run.workFilePath;
    }
};

TEST_F(CycleTest, FirstWorkFilePath) {
    EXPECT_EQ(First({}), "/qmr/work/qmr.qmr");
    EXPECT_EQ(First({"scene.v2.qmr"}), "/qmr/work/scene.qmr");
    EXPECT_EQ(First({"./a.qmr"}), "/qmr/work/./a.qmr");   // only the file name is cut
    EXPECT_EQ(First({"sub/b.v1"}), "/qmr/work/sub/b.qmr");
    EXPECT_EQ(First({"/abs/x", "ignored"}), "/abs/x.qmr");    // absolute: as it stands
    EXPECT_EQ(First({"/home/jo.doe/s.qmr"}), "/home/jo.doe/s.qmr");
}

TEST_F(CycleTest, MissingFileLeavesAnUntitledScene) {
    testing::internal::CaptureStdout();
    First({});
    EXPECT_EQ(Startup_LoadWorkFile(), 0);
    EXPECT_EQ(testing::internal::GetCapturedStdout(), "\nCan't Find File </qmr/work/qmr.qmr>.");
    EXPECT_STREQ(g.run.workFilePath, "/qmr/work/untitled");
    EXPECT_STREQ(g.run.workFileName, "untitled");
    EXPECT_STREQ(g.run.Scene_Name, "untitled");
    EXPECT_STREQ(g.run.Image_Name, "untitled");

    // A "." in the work directory does not cut the path: the file is looked
    // for where the user said; missing, the scene keeps the default name and
    // becomes "untitled".
    strcpy(g.config.WORK_DIR, "/home/u/x.d/work");
    strcpy(g.run.workFileName, "qmr");
    testing::internal::CaptureStdout();
    First({"scene"});
    EXPECT_EQ(Startup_LoadWorkFile(), 0);
    EXPECT_EQ(testing::internal::GetCapturedStdout(), "\nCan't Find File </home/u/x.d/work/scene.qmr>.");
    EXPECT_STREQ(g.run.workFileName, "untitled");
    EXPECT_STREQ(g.run.workFilePath, "/home/u/x.d/work/untitled");
}

TEST_F(CycleTest, LoadedSceneKeepsItsNameUntilNew) {
    TempDir dir;   // no "." before the file name
    const std::string work = dir.path(), bridge = dir.file("bridge.qmr");
    strcpy(g.config.WORK_DIR, work.c_str());
    Layer_NewFirst();
    ASSERT_EQ(WorkFile_Save(bridge.c_str()), 1);
    Scene_Clear();
    strcpy(g.run.workFileName, "qmr");
    testing::internal::CaptureStdout();
    First({"bridge"});
    EXPECT_EQ(Startup_LoadWorkFile(), 1);
    EXPECT_STREQ(g.run.workFileName, "bridge");
    EXPECT_STREQ(g.run.workFilePath, bridge.c_str());
    // NEW: the default file is missing and the new scene is not "bridge".
    Startup_Restart();
    EXPECT_EQ(g.scene.First_Layer, nullptr);
    EXPECT_EQ(Startup_LoadWorkFile(), 0);
    std::string out = testing::internal::GetCapturedStdout();
    EXPECT_NE(out.find("\n<bridge> File Loaded!"), std::string::npos) << out;
    EXPECT_NE(out.find("\nCan't Find File <" + work + "/qmr.qmr>."), std::string::npos)
        << out;
    EXPECT_STREQ(g.run.workFileName, "untitled");
    EXPECT_STREQ(g.run.Scene_Name, "untitled");
}

// A work file that is there but is not one, or is cut short, is reported as
// such. The part of a damaged file that was read is loaded without a name,
// so that a SAVE cannot write it over what is left of the original.
TEST_F(CycleTest, DamagedOrForeignFileIsNotReportedAsMissing) {
    TempDir dir;
    strcpy(g.config.WORK_DIR, dir.path().c_str());
    Layer_NewFirst();
    PolylineData line = Poly_Default();
    Point3 pts[2] = {{0, 0, 0}, {1, 0, 0}};
    line.points = pts;
    line.count = 2;
    for (int i = 0; i < 20; i++) Poly_AddToScene(&line);
    const std::string good = dir.file("good.qmr"), cut = dir.file("cut.qmr"), junk = dir.file("junk.qmr");
    ASSERT_EQ(WorkFile_Save(good.c_str()), 1);
    const std::string bytes = ReadFile(good);
    WriteFile(cut, bytes.substr(0, bytes.size() - 100));   // inside the objects
    WriteFile(junk, "not a scene at all, just some text that is long enough");
    Scene_Clear();

    testing::internal::CaptureStdout();
    First({"cut"});
    EXPECT_EQ(Startup_LoadWorkFile(), 0);
    EXPECT_EQ(testing::internal::GetCapturedStdout(),
              "\nFile <" + cut + "> is cut short or damaged: what could be read is loaded, untitled.");
    EXPECT_STREQ(g.run.workFileName, "untitled");
    EXPECT_STREQ(g.run.workFilePath, dir.file("untitled").c_str());
    ASSERT_NE(g.scene.First_Layer, nullptr);
    EXPECT_NE(g.scene.First_Layer->first_object, nullptr);   // the objects before the cut
    EXPECT_EQ(ReadFile(cut), bytes.substr(0, bytes.size() - 100));

    Scene_Clear();
    strcpy(g.run.workFileName, "qmr");
    testing::internal::CaptureStdout();
    First({"junk"});
    EXPECT_EQ(Startup_LoadWorkFile(), 0);
    EXPECT_EQ(testing::internal::GetCapturedStdout(),
              "\nNot a Quillmoor Sculptor 2.0A or greater work file!\n<" + junk + "> was not loaded.");
    EXPECT_STREQ(g.run.workFileName, "untitled");
}

}  // namespace
