// crash_save_test.cpp - a save that is killed at any moment leaves the old
// file or the new one, whole; a save on a full filesystem fails with its
// messages, keeps the old file and the program goes on.
#include <sched.h>
#include <signal.h>
#include <sys/mount.h>
#include <sys/wait.h>
#include <unistd.h>

#include <chrono>
#include <thread>

#include "headless_session.h"
#include "workfile/wf_test_util.h"

namespace {

class CrashSave : public WorkFileTest {
  protected:
    // One polyline of n points whose coordinates depend on `seed`.
    static void BigScene(int n, double seed) {
        Scene_Clear();
        Layer_NewFirst();
        std::vector<Point3> pts(n);
        for (int i = 0; i < n; i++) pts[i] = {i * 0.001, seed, -i * 0.5};
        PolylineData p = Poly_Default();
        p.points = pts.data();
        p.count = n;
        ASSERT_NE(Poly_AddToScene(&p), nullptr);
    }
};

TEST_F(CrashSave, KilledAtAnyMomentTheOldOrTheNewFileIsThereWhole) {
    const std::string path = dir.file("scene.qmr"), copy = dir.file("copy.qmr");
    BigScene(200000, 1);
    ASSERT_EQ(WorkFile_Save(path.c_str()), 1);
    const std::string old_bytes = ReadFile(path);
    BigScene(500000, 2);   // about 12 MB
    auto t0 = std::chrono::steady_clock::now();
    ASSERT_EQ(WorkFile_Save(copy.c_str()), 1);
    const double seconds = std::chrono::duration<double>(std::chrono::steady_clock::now() - t0).count();
    const std::string new_bytes = ReadFile(copy);
    ASSERT_NE(old_bytes, new_bytes);

    int olds = 0, news = 0;
    for (int i = 0; i < 14; i++) {
        WriteFile(path, old_bytes);
        fflush(stdout);
        pid_t pid = fork();
        ASSERT_GE(pid, 0);
        if (pid == 0) _exit(WorkFile_Save(path.c_str()) ? 0 : 1);
        // From the start of the save to a little past its end.
        std::this_thread::sleep_for(std::chrono::duration<double>(seconds * 1.2 * i / 13));
        kill(pid, SIGKILL);
        int status;
        waitpid(pid, &status, 0);
        const std::string now = ReadFile(path);
        ASSERT_TRUE(now == old_bytes || now == new_bytes) << "kill " << i << ": " << now.size() << " bytes";
        (now == old_bytes ? olds : news)++;
    }
    EXPECT_GT(olds, 0);   // some kills came in the middle of a save
    RecordProperty("old_new", std::to_string(olds) + "/" + std::to_string(news));

    // The "$"-file of a killed save is harmless: the next save writes it
    // anew and renames it over the file.
    WriteFile(dir.file("$cene.qmr"), "left behind");
    ASSERT_EQ(WorkFile_Save(path.c_str()), 1);
    EXPECT_EQ(ReadFile(path), new_bytes);
    EXPECT_FALSE(FileExists(dir.file("$cene.qmr")));
}

// The child runs in a mount namespace of its own with a 192 KiB filesystem.
// Exit 77: the machine does not allow it (the test is then skipped).
TEST_F(CrashSave, FullFilesystemFailsWithTheMessagesAndKeepsTheOldFile) {
    const std::string mnt = dir.file("small");
    ASSERT_EQ(mkdir(mnt.c_str(), 0755), 0);
    fflush(stdout);
    pid_t pid = fork();
    ASSERT_GE(pid, 0);
    if (pid == 0) {
        if (unshare(CLONE_NEWNS) != 0 || mount(nullptr, "/", nullptr, MS_REC | MS_PRIVATE, nullptr) != 0 ||
            mount("qmrtest", mnt.c_str(), "tmpfs", 0, "size=192k") != 0)
            _exit(77);
        const std::string path = mnt + "/scene.qmr";
        WriteFile(path, "old contents");
        State_Reset();
        Headless_Reset();
        Screen_Open(18);
        BigScene(20000, 3);   // about 480 KB of points: more than the filesystem holds
        for (int i = 0; i < 2000; i++) {   // and some 400 KB of DXF faces
            TriangleData t{{{0, 0, i * 1.0}, {1, 0, 0}, {0, 1, 0}}};
            Add_Triangle(&t);
        }
        strcpy(g.run.workFileName, "scene");
        snprintf(g.run.currentFilePath, sizeof g.run.currentFilePath, "%s", path.c_str());
        snprintf(g.config.WORK_DIR, sizeof g.config.WORK_DIR, "%s", mnt.c_str());
        Headless_PushKey('x');   // "...Press any key!"
        int done = Com_Save() == 1 && Dxf_Export() == 2;
        const std::string said = Headless_Transcript();
        int messages = said == "\nSaving <scene>...\nUnable to save file, Out of disk space...Press any key!"
                               "\nUnable to Save File!\nError: Writing <" + mnt +
                               "/scene.dxf> failed (disk full?), the file is unchanged";
        int kept = ReadFile(path) == "old contents" && !FileExists(mnt + "/$cene.qmr") &&
                   !FileExists(mnt + "/scene.dxf") && !FileExists(mnt + "/$cene.dxf");
        // The program goes on: a smaller scene is saved on the same filesystem.
        BigScene(100, 4);
        int later = WorkFile_Save(path.c_str()) == 1;
        if (!messages) fprintf(stderr, "said: %s\n", said.c_str());
        _exit((done ? 1 : 0) | (messages ? 2 : 0) | (kept ? 4 : 0) | (later ? 8 : 0));
    }
    int status;
    waitpid(pid, &status, 0);
    ASSERT_TRUE(WIFEXITED(status));
    if (WEXITSTATUS(status) == 77) GTEST_SKIP() << "no private mount namespace here";
    EXPECT_EQ(WEXITSTATUS(status), 15) << "1 results, 2 messages, 4 old file kept, 8 a later save";
}

}  // namespace
