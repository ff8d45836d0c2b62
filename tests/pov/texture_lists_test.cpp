// texture_lists_test.cpp - the three readers behind the texture chooser:
// "textures.dat", "colors.dat" and the library "textures.wrk". The shipped
// lists against the ray tracer's include files, then hostile files: every
// truncation and a few thousand random mutations, never a crash, never a
// name that is not in the file, and no whole library record ever lost.
#include <dirent.h>

#include <algorithm>
#include <fstream>
#include <map>
#include <random>
#include <regex>
#include <set>

#include "e2e/process.h"
#include "pov/texture_lists.h"
#include "test_support.h"

namespace {

const char kInclude[] = "/usr/share/povray-3.7/include";

class TextureLists : public QmrTest {
   protected:
    std::vector<std::string> Names(const std::string& text, TextListReport* report = nullptr) {
        WriteFile(dir.file("textures.dat"), text);
        std::vector<std::string> names;
        TextListReport r;
        EXPECT_EQ(TextureNames_Read(dir.file("textures.dat").c_str(), &names, &r), 1);
        if (report) *report = r;
        return names;
    }
    std::vector<NamedColour> Colours(const std::string& text, TextListReport* report = nullptr) {
        WriteFile(dir.file("colors.dat"), text);
        std::vector<NamedColour> colours;
        TextListReport r;
        EXPECT_EQ(Colours_Read(dir.file("colors.dat").c_str(), &colours, &r), 1);
        if (report) *report = r;
        return colours;
    }
    TempDir dir;
};

// The names a ray-tracer include file declares with #declare NAME =.
std::set<std::string> Declared(const std::string& file) {
    std::set<std::string> names;
    std::ifstream in(std::string(kInclude) + "/" + file);
    const std::regex decl(R"(^\s*#declare\s+([A-Za-z_][A-Za-z0-9_]*)\s*=)");
    for (std::string line; std::getline(in, line);) {
        std::smatch m;
        if (std::regex_search(line, m, decl)) names.insert(m[1]);
    }
    return names;
}

TEST_F(TextureLists, LinesOfBothListsAsTheyAreReadOrSkipped) {
    TextListReport r;
    const std::string longLine(300, 'x');
    EXPECT_EQ(Names("Jade\nRed_Marble\r\n\nABCDEFGHIJKLMNOPQRSTUVWXYZ\ntwo words\n" + longLine +
                        "\nbin\x01ary\nGold_Nugget",
                    &r),
              (std::vector<std::string>{"Jade", "Red_Marble", "ABCDEFGHIJKLMNOPQRST", "Gold_Nugget"}));
    EXPECT_EQ(r.badLines, 3);
    EXPECT_EQ(r.firstBadLine, 5);
    EXPECT_STREQ(r.firstReason, "not one name");
    Names(longLine + "\n", &r);
    EXPECT_STREQ(r.firstReason, "longer than 254 characters");
    Names(std::string("Ja\0de\n", 6), &r);
    EXPECT_STREQ(r.firstReason, "not text");

    std::vector<NamedColour> c = Colours(
        "// a comment\n\nRed(1, 0, 0)\nClear ( 1 , 1 , 1 , 1 )  // glass\nTabbed(\t0.5,\t0.25,\t0)\n"
        "Short(1, 2)\nWord(1, a, 0)\nHuge(1e999, 0, 0)\nNoParens\nFive(1, 2, 3, 4, 5)\nBin(1, 0, 0)\x80\n"
        "Bad-name(1, 0, 0)\n",
        &r);
    ASSERT_EQ(c.size(), 3u);
    EXPECT_STREQ(c[0].name, "Red");
    EXPECT_STREQ(c[1].name, "Clear");
    EXPECT_STREQ(c[2].name, "Tabbed");
    EXPECT_EQ(std::vector<float>(c[1].rgbf, c[1].rgbf + 4), (std::vector<float>{1, 1, 1, 1}));
    EXPECT_EQ(std::vector<float>(c[2].rgbf, c[2].rgbf + 4), (std::vector<float>{0.5f, 0.25f, 0, 0}));
    EXPECT_EQ(c[0].hasFilter + 2 * c[1].hasFilter, 2);
    EXPECT_EQ(r.badLines, 7);
    EXPECT_EQ(r.firstBadLine, 6);
    EXPECT_STREQ(r.firstReason, "not name(r, g, b) or name(r, g, b, f)");
}

// textures.dat holds textures.inc's names (each one fits an object's texture
// field); colors.dat holds exactly the colours of colors.inc, with the
// values that file gives them.
TEST_F(TextureLists, ShippedListsMatchTheRayTracersIncludeFiles) {
    std::vector<std::string> textures;
    TextListReport r;
    ASSERT_EQ(TextureNames_Read(QMR_SOURCE_DIR "/support/textures.dat", &textures, &r), 1);
    EXPECT_EQ(r.badLines, 0);
    const std::set<std::string> declared = Declared("textures.inc");
    EXPECT_GT(textures.size(), 80u);
    for (const std::string& n : textures) EXPECT_TRUE(declared.count(n) && n.size() <= 20) << n;
    auto listed = [&](const char* n) { return std::find(textures.begin(), textures.end(), n) != textures.end(); };
    for (const char* n : {"Jade", "Polished_Chrome", "Cherry_Wood", "Starfield"}) EXPECT_TRUE(listed(n)) << n;
    for (const char* n : {"Jade_Map", "M_Glass", "Glass_Interior", "Metal"}) EXPECT_FALSE(listed(n)) << n;

    std::vector<NamedColour> colours;
    ASSERT_EQ(Colours_Read(QMR_SOURCE_DIR "/support/colors.dat", &colours, &r), 1);
    EXPECT_EQ(r.badLines, 0);
    std::set<std::string> declaredColours = Declared("colors.inc"), names;
    declaredColours.erase("Colors_Inc_Temp");
    std::map<std::string, std::vector<float>> values;
    for (const NamedColour& c : colours) {
        names.insert(c.name);
        values[c.name] = std::vector<float>(c.rgbf, c.rgbf + 3 + c.hasFilter);
    }
    EXPECT_EQ(names, declaredColours);
    // From the declarations "rgb <1, 0, 0>", "rgbf 1", "White*0.05",
    // "color red 0.498039 blue 1.0" and "color Black".
    EXPECT_EQ(values["Red"], (std::vector<float>{1, 0, 0}));
    EXPECT_EQ(values["Clear"], (std::vector<float>{1, 1, 1, 1}));
    EXPECT_EQ(values["Gray05"], (std::vector<float>{0.05f, 0.05f, 0.05f}));
    EXPECT_EQ(values["MediumSlateBlue"], (std::vector<float>{0.498039f, 0, 1}));
    EXPECT_EQ(values["Mica"], (std::vector<float>{0, 0, 0}));
}

// --- hostile files ---

std::string Mutate(std::string t, std::mt19937& rng) {
    for (int k = rng() % 8 + 1; k > 0 && !t.empty(); k--) {
        size_t at = rng() % t.size();
        switch (rng() % 5) {
            case 0: t[at] = (char)(rng() % 256); break;
            case 1: t.erase(at, rng() % 40); break;
            case 2: t.insert(at, std::string(rng() % 4 + 1, "(),\n\r\t /-9e\0"[rng() % 13])); break;
            case 3: t.insert(at, std::string(rng() % 600, 'x')); break;
            default: t.insert(at, t.substr(rng() % t.size(), rng() % 80)); break;
        }
    }
    return t;
}

bool Printable(const std::string& s) {
    return std::all_of(s.begin(), s.end(), [](char c) { return c > ' ' && c < 127; });
}

TEST_F(TextureLists, TruncatedAndMutatedListsNeverYieldForeignNames) {
    std::mt19937 rng(1812);
    const std::string textures = ReadFile(QMR_SOURCE_DIR "/support/textures.dat");
    const std::string colours = ReadFile(QMR_SOURCE_DIR "/support/colors.dat");
    auto checkNames = [&](const std::string& text) {
        for (const std::string& n : Names(text)) {
            ASSERT_TRUE(!n.empty() && n.size() <= 20 && Printable(n)) << n;
            ASSERT_NE(text.find(n), std::string::npos) << n;
        }
    };
    auto checkColours = [&](const std::string& text) {
        std::string unblanked = text;  // the field reader drops blanks
        unblanked.erase(std::remove_if(unblanked.begin(), unblanked.end(),
                                       [](char c) { return c == ' ' || c == '\t'; }),
                        unblanked.end());
        for (const NamedColour& c : Colours(text)) {
            ASSERT_TRUE(c.name[0] && Printable(c.name)) << c.name;
            ASSERT_NE(unblanked.find(c.name), std::string::npos) << c.name;
            for (float v : c.rgbf) ASSERT_TRUE(std::isfinite(v));
        }
    };
    for (size_t n = 0; n <= textures.size(); n++) checkNames(textures.substr(0, n));
    for (size_t n = 0; n <= colours.size(); n++) checkColours(colours.substr(0, n));
    for (int i = 0; i < 1000; i++) {
        checkNames(Mutate(textures, rng));
        checkColours(Mutate(colours, rng));
    }
}

class DamagedLibrary : public TextureLists {
   protected:
    void SetUp() override {
        TextureLists::SetUp();
        snprintf(g.config.WORK_DIR, sizeof g.config.WORK_DIR, "%s", dir.path().c_str());
        testing::internal::CaptureStdout();  // the messages of a torn record
    }
    void TearDown() override {
        testing::internal::GetCapturedStdout();
        TextureLists::TearDown();
    }
    std::string lib() { return dir.file("textures.wrk"); }
};

// Whatever the library file holds, listing and loading read only whole
// records, and a save keeps every whole record of the old file, byte for
// byte and in order, moves a torn last record to textures.bad, and puts
// the saved record last (or in the place of the one with its name).
TEST_F(DamagedLibrary, ListingAndSavingNeverLoseAWholeRecord) {
    std::string good;
    for (const char* n : {"Stone", "ABCDEFGHIJKLMNOPQRST", "Wood"}) {
        TextureRecord r = Texture_Default();
        memcpy(r.name, n, strlen(n));
        r.diffuse = (float)strlen(n);
        good += std::string(reinterpret_cast<const char*>(&r), sizeof r);
    }
    std::mt19937 rng(960);
    TextureRecord fresh = Texture_Default();
    strcpy(fresh.name, "Fresh");
    auto check = [&](const std::string& bytes, bool save) {
        WriteFile(lib(), bytes);
        remove(dir.file("textures.bad").c_str());
        std::vector<std::string> names;
        LibraryReport report;
        ASSERT_EQ(Texture_ListNames(&names, &report), 1);
        ASSERT_EQ(report.records, (long)(bytes.size() / 960));
        ASSERT_EQ(report.tailBytes, (long)(bytes.size() % 960));
        ASSERT_EQ((long)names.size() + report.badNames, report.records);
        for (const std::string& n : names) ASSERT_TRUE(n.size() <= 20 && Printable(n)) << n;
        TextureRecord got;
        for (const std::string& n : names) ASSERT_EQ(Texture_Load(&got, n.c_str()), 1) << n;
        if (!save) return;
        ASSERT_EQ(Texture_Save(&fresh), 1);
        std::string expect;
        bool placed = false;
        for (long i = 0; i < report.records; i++) {
            std::string rec = bytes.substr(i * 960, 960);
            if (!Texture_SameName(rec.c_str(), "Fresh"))
                expect += rec;
            else if (!placed)
                expect += std::string(reinterpret_cast<const char*>(&fresh), 960), placed = true;
        }
        if (!placed) expect += std::string(reinterpret_cast<const char*>(&fresh), 960);
        ASSERT_EQ(ReadFile(lib()), expect);
        if (report.tailBytes)
            ASSERT_EQ(ReadFile(dir.file("textures.bad")),
                      bytes.substr(bytes.size() - report.tailBytes));
        else
            ASSERT_FALSE(FileExists(dir.file("textures.bad")));
    };
    for (size_t n = 0; n <= good.size(); n++) check(good.substr(0, n), n % 61 == 0 || n % 960 == 0);
    for (int i = 0; i < 2000; i++) {
        std::string t = good;
        for (int k = rng() % 6 + 1; k > 0; k--) {
            size_t at = rng() % t.size();
            if (rng() % 4 == 0)
                t.erase(at, rng() % 50);
            else
                t[at] = (char)(rng() % 256);
        }
        check(t, i % 20 == 0);
    }
}

}  // namespace
