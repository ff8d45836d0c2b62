// The shared line-field reader.
#include <cstdlib>

#include "test_support.h"
#include "ui/field.h"

namespace {

std::string Field(const char* line, int n) {
    char out[FIELD_MAX];
    if (!GetField(out, line, n)) return "<none>";
    return out;
}

TEST(GetFieldTest, NameAndFields) {
    EXPECT_EQ(Field("NAME(a,b,c)", 0), "NAME");
    EXPECT_EQ(Field("NAME(a,b,c)", 1), "a");
    EXPECT_EQ(Field("NAME(a,b,c)", 2), "b");
    EXPECT_EQ(Field("NAME(a,b,c)", 3), "c");
    EXPECT_EQ(Field("NAME(a,b,c)", 4), "<none>");
    EXPECT_EQ(Field("NAME", 0), "NAME");
    EXPECT_EQ(Field("NAME", 1), "<none>");          // no "("
    EXPECT_EQ(Field("NAME(a,b", 1), "<none>");      // no ")"
}

TEST(GetFieldTest, BlanksAndQuotes) {
    EXPECT_EQ(Field("  ITEM ( \"Open  File\" , OPEN )", 0), "ITEM");
    EXPECT_EQ(Field("  ITEM ( \"Open  File\" , OPEN )", 1), "Open  File");
    EXPECT_EQ(Field("  ITEM ( \"Open  File\" , OPEN )", 2), "OPEN");
    EXPECT_EQ(Field("X(\"a,b)\",c)", 1), "a,b)");   // separators inside quotes
    EXPECT_EQ(Field("X(\"a,c)", 1), "<none>");      // quote never closed
}

TEST(GetFieldTest, Comments) {
    EXPECT_EQ(Field("// a comment", 0), "<none>");
    EXPECT_EQ(Field("   // indented", 0), "<none>");   // blanks go first
    EXPECT_EQ(Field("A(x)// later", 1), "x");
    EXPECT_EQ(Field("A(\"//x\")", 1), "//x");
}

TEST(GetFieldTest, EnvironmentExpansion) {
    setenv("QMR_T_DIR", "/opt/q", 1);
    setenv("HOME", "/home/u", 1);
    unsetenv("QMR_T_NOPE");
    EXPECT_EQ(Field("D(%QMR_T_DIR%/x)", 1), "/opt/q/x");
    EXPECT_EQ(Field("D(~/work)", 1), "/home/u/work");
    EXPECT_EQ(Field("D(%QMR_T_NOPE%/x)", 1), "%QMR_T_NOPE%/x");
    EXPECT_EQ(Field("D(50%)", 1), "50%");
    EXPECT_EQ(Field("D(%QMR_T_DIR%%QMR_T_DIR%)", 1), "/opt/q/opt/q");
}

TEST(GetFieldTest, ExpansionIsBounded) {
    std::string big(1000, 'v');
    setenv("QMR_T_BIG", big.c_str(), 1);
    EXPECT_EQ(Field("D(%QMR_T_BIG%)", 1).size(), (size_t)FIELD_MAX - 1);
    std::string longline = "D(" + std::string(600, 'x') + ")";
    char out[FIELD_MAX];
    GetField(out, longline.c_str(), 1);   // no overflow; the result is cut
    EXPECT_LT(strlen(out), (size_t)FIELD_MAX);
}

TEST(SameNameTest, LengthAndCase) {
    EXPECT_TRUE(SameName("Untitled", "untitled"));
    EXPECT_FALSE(SameName("wall", "walls"));
    EXPECT_FALSE(SameName("", "a"));
    EXPECT_TRUE(SameName("", ""));
}

}  // namespace
