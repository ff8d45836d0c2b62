// Directory search: patterns, directories, long names, current directory.
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <set>
#include <string>

#include "e2e/process.h"
#include "gfx/gfx.h"

namespace {

std::set<std::string> FindAll(const std::string& pattern, int attribute, int* dirs = nullptr) {
    std::set<std::string> names;
    X11_FindRec r;
    for (int rc = X11_FindFirst(pattern.c_str(), attribute, &r); rc == 0; rc = X11_FindNext(&r)) {
        names.insert(r.name);
        if (dirs && r.attribute == 16) (*dirs)++;
    }
    EXPECT_EQ(r.search, nullptr);   // the search is freed at its end
    return names;
}

class FindTest : public ::testing::Test {
  protected:
    TempDir tmp;
    void SetUp() override {
        WriteFile(tmp.file("a.qmr"), "12345");
        WriteFile(tmp.file("b.qmr"), "");
        WriteFile(tmp.file("notes.txt"), "x");
        WriteFile(tmp.file("averyveryverylongname.qmr"), "");
        mkdir(tmp.file("sub.qmr").c_str(), 0755);
    }
};

// Files only, names cut to 12 characters; directories when asked.
TEST_F(FindTest, PatternFilesOnlyAndNamesCut) {
    EXPECT_EQ(FindAll(tmp.file("*.qmr"), 0),
              (std::set<std::string>{"a.qmr", "b.qmr", "averyveryver"}));
    int dirs = 0;
    EXPECT_EQ(FindAll(tmp.file("*.qmr"), 16, &dirs),
              (std::set<std::string>{"a.qmr", "b.qmr", "averyveryver", "sub.qmr"}));
    EXPECT_EQ(dirs, 1);
}

TEST_F(FindTest, SizeAttributeAndMisses) {
    X11_FindRec r;
    ASSERT_EQ(X11_FindFirst(tmp.file("a.*").c_str(), 0, &r), 0);
    EXPECT_STREQ(r.name, "a.qmr");
    EXPECT_EQ(r.size, 5);
    EXPECT_EQ(r.attribute, 0);
    EXPECT_EQ(X11_FindNext(&r), 1);
    EXPECT_EQ(X11_FindFirst(tmp.file("nodir/*.qmr").c_str(), 0, &r), 1);
    EXPECT_EQ(X11_FindFirst(tmp.file("*.dxf").c_str(), 0, &r), 1);
    EXPECT_EQ(r.search, nullptr);
}

TEST_F(FindTest, BarePatternSearchesCurrentDirectory) {
    char old[4096];
    ASSERT_NE(getcwd(old, sizeof old), nullptr);
    ASSERT_EQ(chdir(tmp.path().c_str()), 0);
    auto names = FindAll("*.txt", 0);
    ASSERT_EQ(chdir(old), 0);
    EXPECT_EQ(names, (std::set<std::string>{"notes.txt"}));
}

}  // namespace
