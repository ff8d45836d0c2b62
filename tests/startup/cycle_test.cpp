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
    EXPECT_EQ(First({"./a.qmr"}), "/qmr/work/.qmr");
    EXPECT_EQ(First({"/abs/x", "ignored"}), "/qmr/work//abs/x.qmr");
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

    // A "." in the work directory cuts the path there: /home/u/x.qmr is not
    // found and the scene keeps the default name, so it becomes "untitled".
    strcpy(g.config.WORK_DIR, "/home/u/x.d/work");
    strcpy(g.run.workFileName, "qmr");
    testing::internal::CaptureStdout();
    First({"scene"});
    EXPECT_EQ(Startup_LoadWorkFile(), 0);
    EXPECT_EQ(testing::internal::GetCapturedStdout(), "\nCan't Find File </home/u/x.qmr>.");
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

}  // namespace
