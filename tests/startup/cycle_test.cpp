// The first work file from the command line and the renaming of default scenes.
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
    strcpy(g.config.WORK_DIR, "/home/u/x.d/work");
    EXPECT_EQ(First({"scene"}), "/home/u/x.qmr");
}

TEST_F(CycleTest, DefaultSceneIsRenamedUntitled) {
    testing::internal::CaptureStdout();
    First({});
    EXPECT_EQ(Startup_LoadWorkFile(), 0);
    std::string out = testing::internal::GetCapturedStdout();
    EXPECT_EQ(out, "\nCan't Find File </qmr/work/qmr.qmr>.");
    EXPECT_STREQ(g.run.workFilePath, "/qmr/work/untitled");
    EXPECT_STREQ(g.run.workFileName, "untitled");
    EXPECT_STREQ(g.run.Scene_Name, "untitled");
    EXPECT_STREQ(g.run.Image_Name, "untitled");
}

TEST_F(CycleTest, NamedSceneKeepsItsName) {
    testing::internal::CaptureStdout();
    First({"bridge"});
    Startup_LoadWorkFile();
    testing::internal::GetCapturedStdout();
    EXPECT_STREQ(g.run.workFileName, "bridge");
    EXPECT_STREQ(g.run.workFilePath, "/qmr/work/bridge.qmr");
    EXPECT_STREQ(g.run.Scene_Name, "qmr");
}

TEST_F(CycleTest, SetFatalMessageAppendsNewline) {
    EXPECT_STREQ(SetFatalMessage("Unable to setup first layer."), "Unable to setup first layer.\n");
    EXPECT_STREQ(g.run.fatalMessage, "Unable to setup first layer.\n");
}

}  // namespace
