// The real program under Xvfb: load a work file, type EXIT and answer the
// question with an empty Enter, and find the scene saved.
#include <stdlib.h>
#include <sys/stat.h>
#include <utime.h>

#include <filesystem>

#include "e2e/process.h"
#include "test_support.h"

namespace fs = std::filesystem;

namespace {

class ExitSaveTest : public QmrTest {};

// A temporary root without "." in its path: the start-up path is cut at its first ".".
class PlainDir {
  public:
    PlainDir() {
        char tmpl[] = "/tmp/qmrexitXXXXXX";
        path_ = mkdtemp(tmpl) ? tmpl : "";
    }
    ~PlainDir() {
        if (!path_.empty()) fs::remove_all(path_);
    }
    std::string file(const std::string& name) const { return path_ + "/" + name; }

  private:
    std::string path_;
};

TEST_F(ExitSaveTest, ExitWithEnterSavesTheLoadedScene) {
    PlainDir root;
    for (const char* d : {"qmr", "qmr/work", "qmr/support", "pov", "cwd"}) fs::create_directories(root.file(d));
    for (const auto& e : fs::directory_iterator(QMR_SOURCE_DIR "/support"))
        fs::copy(e.path(), root.file("qmr/support") / e.path().filename(), fs::copy_options::recursive);
    WriteFile(root.file("cwd/qmr.ini"), "[DIRECTORIES]\nqmrmain = " + root.file("qmr") + "\nqmrwork = " +
                                            root.file("qmr/work") + "\nsupport = " + root.file("qmr/support") +
                                            "\npovray = " + root.file("pov") + "\nscenes = " + root.file("pov") +
                                            "\npov_out = " + root.file("pov") + "\n[END]\n");

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

    XvfbServer x;
    ASSERT_TRUE(x.ok()) << "Xvfb did not start";
    RunOptions opt;
    opt.cwd = root.file("cwd");
    opt.env["HOME"] = root.file("cwd");
    opt.env["DISPLAY"] = x.display();
    opt.env["QMR_TRANSCRIPT"] = "/dev/stdout";
    const std::string xdo = "DISPLAY=" + x.display() + " xdotool ";
    opt.actions.push_back({"Command: ", xdo + "search --sync --name 'Quillmoor Sculptor' windowfocus --sync; " +
                                            xdo + "mousemove 300 200; " + xdo + "type --delay 20 EXIT; " + xdo +
                                            "key Return"});
    opt.actions.push_back({"<Yes>: ", xdo + "key Return"});
    RunResult r = RunProcess({QMR_BINARY, "bridge"}, opt);
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
