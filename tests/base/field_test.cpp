// The shared line-field reader.
#include <cstdlib>

#include "test_support.h"
#include "base/field.h"

namespace {

std::string Field(const char* line, int n) {
    char out[FIELD_MAX];
    if (!GetField(out, line, n)) return "<none>";
    return out;
}

// Field 0 is the name, then the fields between "(" and ")": blanks around
// them skipped, separators inside quotes kept, "//" outside quotes a comment,
// %NAME% and ~ expanded when set.
TEST(GetFieldTest, NamesFieldsQuotesCommentsAndExpansion) {
    setenv("QMR_T_DIR", "/opt/q", 1);
    setenv("HOME", "/home/u", 1);
    unsetenv("QMR_T_NOPE");
    const char* quoted = "  ITEM ( \"Open  File\" , OPEN )";
    const struct {
        const char* line;
        int n;
        const char* field;
    } cases[] = {
        {"NAME(a,b,c)", 0, "NAME"},   {"NAME(a,b,c)", 1, "a"},      {"NAME(a,b,c)", 2, "b"},
        {"NAME(a,b,c)", 3, "c"},      {"NAME(a,b,c)", 4, "<none>"}, {"NAME", 0, "NAME"},
        {"NAME", 1, "<none>"},        {"NAME(a,b", 1, "<none>"},    {quoted, 0, "ITEM"},
        {quoted, 1, "Open  File"},    {quoted, 2, "OPEN"},          {"X(\"a,b)\",c)", 1, "a,b)"},
        {"X(\"a,c)", 1, "<none>"},     {"// a comment", 0, "<none>"}, {"   // indented", 0, "<none>"},
        {"A(x)// later", 1, "x"},     {"A(\"//x\")", 1, "//x"},
        {"D(%QMR_T_DIR%/x)", 1, "/opt/q/x"},
        {"D(~/work)", 1, "/home/u/work"},
        {"D(%QMR_T_NOPE%/x)", 1, "%QMR_T_NOPE%/x"},
        {"D(50%)", 1, "50%"},
        {"D(%QMR_T_DIR%%QMR_T_DIR%)", 1, "/opt/q/opt/q"},
    };
    for (const auto& c : cases) EXPECT_EQ(Field(c.line, c.n), c.field) << c.line << " field " << c.n;
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
