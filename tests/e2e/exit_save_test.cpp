// The real program under Xvfb: load a work file, type EXIT and answer the
// question with an empty Enter, and find the scene saved.
#include <sys/stat.h>
#include <utime.h>

#include "e2e/program_fixture.h"

namespace {

TEST_F(ProgramTest, ExitWithEnterSavesTheLoadedScene) {
    WriteFile(root.file("cwd/qmr.ini"), Config());
    // A scene with one layer and one sphere, written by the work-file writer.
    ASSERT_NE(Layer_NewFirst(), nullptr);
    PrimitiveData sphere = Primitive_Default();
    sphere.prim_type = PRIM_SPHERE;
    sphere.translate = {1, 2, 3};
    ASSERT_NE(Add_Primitive(&sphere), nullptr);
    const std::string path = root.file("qmr/work/bridge.qmr");
    ASSERT_EQ(WorkFile_Save(path.c_str()), 1);
    State_Reset();
    utimbuf old{1000000000, 1000000000};   // 2001: any save afterwards is newer
    ASSERT_EQ(utime(path.c_str(), &old), 0);

    TypeWhen("Command: ", "EXIT\n");
    TypeWhen("<Yes>: ", "\n");
    RunResult r = Run({"bridge"}, true);
    ASSERT_FALSE(r.timed_out) << r.out;
    EXPECT_EQ(r.status, 0) << r.out;
    EXPECT_NE(r.out.find("\n<bridge> File Loaded!"), std::string::npos) << r.out;
    EXPECT_NE(r.out.find("\nEXIT> Save changes to <bridge>? <Yes,No> <Yes>: \nSaving <bridge>..."),
              std::string::npos) << r.out;

    struct stat st {};
    ASSERT_EQ(stat(path.c_str(), &st), 0);
    EXPECT_GT(st.st_mtime, 1000000000);   // written again
    // What was saved is still the scene.
    testing::internal::CaptureStdout();
    ASSERT_EQ(WorkFile_Load(path.c_str()), 1);
    testing::internal::GetCapturedStdout();
    ASSERT_NE(g.scene.First_Layer, nullptr);
    const Object* o = g.scene.First_Layer->first_object;
    ASSERT_NE(o, nullptr);
    EXPECT_EQ(o->kind, KIND_PRIMITIVE);
    EXPECT_DOUBLE_EQ(((const PrimitiveData*)o->data)->translate.y, 2);
}

}  // namespace
