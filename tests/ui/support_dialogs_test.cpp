// The installed dialog files: each parses, has the ids the program reacts
// to with the right kind of element, no id twice, everything inside its
// box on the smallest and the largest screen, and its pictures present.
// Then hostile dialog and picture files: never a crash or a hang.
#include <dirent.h>

#include <cstring>
#include <fstream>
#include <map>
#include <random>
#include <set>
#include <vector>

#include "e2e/process.h"
#include "headless_session.h"
#include "ui/dialog.h"

namespace {

struct Want {
    const char* kind;
    std::vector<int> ids;
};

std::vector<int> Range(int a, int b) {
    std::vector<int> v;
    for (int i = a; i <= b; i++) v.push_back(i);
    return v;
}

// The ids the code reacts to, by file.
const std::map<std::string, std::vector<Want>>& Wanted() {
    static const std::map<std::string, std::vector<Want>> w = {
        {"about.dlg", {{"BUTTON", {1}}}},
        {"browser.dlg",
         {{"BUTTON", {0, 1, 3, 4, 5, 6}}, {"TEXTBOX", {10, 11, 12}}, {"TEXTBOX", Range(20, 29)},
          {"CHECK", Range(13, 17)}}},
        {"layers.dlg",
         {{"BUTTON", {1, 2, 3, 8, 11, 12, 13}}, {"GRAPH", {4}}, {"CHECK", {5}}, {"TEXTBOX", {6, 7, 9, 10}}}},
        {"trans.dlg", {{"BUTTON", {0, 1}}, {"TEXTBOX", Range(2, 10)}}},
        {"viewport.dlg", {{"SHAPE", Range(1, 7)}, {"BUTTON", {0}}}},
        {"bezier.dlg", {{"SHAPE", Range(1, 5)}, {"BUTTON", {0}}}},
        {"complex.dlg", {{"SHAPE", Range(1, 6)}, {"BUTTON", {0, 7}}}},
        {"variable.dlg", {{"BUTTON", {0, 1}}, {"TEXTBOX", Range(2, 13)}, {"CHECK", Range(14, 28)}}},
        {"options.dlg",
         {{"BUTTON", {0, 1, 2, 3}}, {"CHECK", Range(4, 10)}, {"TEXTBOX", {11, 12}}, {"TEXTBOX", Range(13, 21)}}},
        {"fog.dlg",
         {{"BUTTON", {0, 1, 20, 21}}, {"CHECK", {3, 9, 13}}, {"TEXTBOX", Range(4, 7)}, {"TEXTBOX", Range(10, 12)},
          {"TEXTBOX", Range(14, 19)}}},
        {"dirs.dlg", {{"BUTTON", {0, 1}}, {"TEXTBOX", Range(2, 11)}, {"CHECK", Range(12, 15)}}},
        {"display.dlg", {{"BUTTON", {0, 1}}, {"CHECK", Range(10, 28)}}},
        {"palette.dlg", {{"BUTTON", {0, 1}}, {"CHECK", Range(10, 14)}}},
        {"general.dlg", {{"BUTTON", {0, 1}}, {"CHECK", {2, 6}}, {"TEXTBOX", {3, 4, 5}}}},
        {"editlght.dlg", {{"BUTTON", {0, 1}}, {"CHECK", {2, 3, 4}}, {"TEXTBOX", Range(5, 21)}}},
        {"camera.dlg", {{"BUTTON", {0, 1}}, {"TEXTBOX", Range(2, 10)}, {"CHECK", {11}}, {"TEXTBOX", {12, 13}}}},
        {"texture.dlg", {{"BUTTON", {0, 1, 2, 6, 7, 8, 9}}, {"TEXTBOX", Range(10, 20)}}},
        {"maketext.dlg",
         {{"BUTTON", {0, 1, 2, 3, 4, 5, 6, 7}}, {"TEXTBOX", {9, 10, 11, 12}}, {"CHECK", {8, 13}}, {"GRAPH", {20}}}},
        {"pigment.dlg",
         {{"BUTTON", {0, 1, 64, 90}}, {"CHECK", Range(20, 24)}, {"TEXTBOX", Range(30, 33)}, {"TEXTBOX", Range(35, 38)},
          {"TEXTBOX", Range(40, 43)}, {"GRAPH", {34}}, {"CHECK", Range(50, 60)}, {"TEXTBOX", Range(61, 63)},
          {"TEXTBOX", {70, 71, 73, 74, 81, 82, 83, 84, 86, 88}}, {"CHECK", {72, 75, 80, 85, 87}}}},
        {"colormap.dlg",
         {{"BUTTON", {0, 1}}, {"CHECK", Range(100, 119)}, {"TEXTBOX", Range(120, 219)}, {"GRAPH", {99}}}},
        {"normal.dlg",
         {{"BUTTON", {0, 1, 90}}, {"CHECK", Range(20, 26)}, {"TEXTBOX", Range(31, 35)},
          {"TEXTBOX", {70, 71, 73, 74, 77, 81, 82, 83, 84, 86, 88}}, {"CHECK", {72, 75, 76, 80, 85, 87}}}},
        {"finish.dlg", {{"BUTTON", {0, 1}}, {"CHECK", Range(20, 28)}, {"TEXTBOX", Range(30, 40)}}},
        {"ccolor.dlg", {{"BUTTON", {0, 1, 6, 7, 8, 9}}, {"TEXTBOX", Range(10, 17)}, {"TEXTBOX", {20}}, {"GRAPH", {30}}}},
    };
    return w;
}

std::vector<std::string> SupportFiles(const char* ext) {
    std::vector<std::string> out;
    DIR* d = opendir(QMR_SOURCE_DIR "/support");
    while (dirent* e = d ? readdir(d) : nullptr) {
        std::string n = e->d_name;
        if (n.size() > 4 && n.compare(n.size() - 4, 4, ext) == 0) out.push_back(n);
    }
    if (d) closedir(d);
    return out;
}

class SupportDialogs : public HeadlessTest {
  protected:
    void OpenScreen(int mode) {
        Headless_Reset();
        Screen_Open(mode);
        snprintf(g.config.SUPPORT_DIR, sizeof g.config.SUPPORT_DIR, "%s/support", QMR_SOURCE_DIR);
    }
    // The pixel box inside the frame and shadow: every element stays in it.
    bool Inside(long x1, long y1, long x2, long y2) {
        return x1 >= d.left * 8L && y1 >= d.top * 15L && x2 <= (d.right + 1) * 8L - 5 &&
               y2 <= (d.bottom + 1) * 15L - 5;
    }
    bool BoxInside(int c, int r, int w) { return Inside(c * 8L - 1, r * 15L - 1, (c + w) * 8L - 1, (r + 1) * 15L - 1); }
    bool TextInside(int c, int r, const char* t) { return Inside(c * 8L, r * 15L + 1, (c + (long)strlen(t)) * 8 - 1, r * 15L + 13); }
    Dialog d;
};

TEST_F(SupportDialogs, EveryFileIsCompleteAndFitsItsBox) {
    const std::vector<std::string> files = SupportFiles(".dlg");
    for (const auto& [name, wants] : Wanted())
        EXPECT_NE(std::find(files.begin(), files.end(), name), files.end()) << name << " is missing";
    for (int mode : {18, 261}) {
        for (const std::string& name : files) {
            SCOPED_TRACE(name + " in mode " + std::to_string(mode));
            OpenScreen(mode);
            Dialog_Init(&d);
            const std::string path = std::string(g.config.SUPPORT_DIR) + "/" + name;
            ASSERT_EQ(Dialog_Load(&d, path.c_str()), DIALOG_OK);
            EXPECT_GE(d.left, 0);
            EXPECT_GE(d.top, 1);   // below the menu bar
            EXPECT_LE((d.right + 1) * 8, g.screen.width);
            EXPECT_LE((d.bottom + 1) * 15, g.screen.inputLineY);   // above the input line

            // Ids: each once, but an INPUT shares its TEXTBOX's id.
            std::multiset<int> ids;
            std::map<int, std::string> kindOf;
            auto note = [&](int id, const char* kind) {
                ids.insert(id);
                kindOf[id] = kind;
            };
            for (const DlgButton& b : d.buttonList) {
                note(b.id, "BUTTON");
                EXPECT_TRUE(BoxInside(b.column, b.row, (int)strlen(b.text))) << "button " << b.id;
            }
            for (const DlgCheck& k : d.checks) {
                note(k.id, "CHECK");
                EXPECT_TRUE(BoxInside(k.column, k.row, 4)) << "check " << k.id;
            }
            for (const DlgTextBox& t : d.textBoxes) {
                note(t.id, "TEXTBOX");
                EXPECT_TRUE(BoxInside(t.column, t.row, t.width)) << "text box " << t.id;
            }
            for (const DlgShape& s : d.shapes) {
                note(s.id, "SHAPE");
                EXPECT_TRUE(BoxInside(s.column, s.row, 2)) << "shape " << s.id;
                EXPECT_TRUE(TextInside(s.column + 3, s.row, s.label)) << "shape " << s.id;
                if (s.hasPicture) {
                    EXPECT_TRUE(Inside(s.pictureX + 1, s.pictureY - 2, s.pictureX + 118, s.pictureY + 70)) << s.id;
                }
            }
            for (const DlgGraph& a : d.graphs) {
                note(a.id, "GRAPH");
                EXPECT_TRUE(Inside(a.left * 8L - 1, a.top * 15L - 1, (a.right + 1) * 8L - 1, (a.bottom + 1) * 15L - 1));
            }
            for (int id : ids) EXPECT_EQ(ids.count(id), 1u) << "id " << id << " repeats";
            for (const DlgInput& in : d.inputs) {
                EXPECT_EQ(kindOf[in.id], "TEXTBOX") << "label " << in.text << " has no text box";
                EXPECT_TRUE(BoxInside(in.column, in.row, (int)strlen(in.text))) << in.text;
            }
            auto it = Wanted().find(name);
            if (it != Wanted().end()) {
                for (const Want& w : it->second)
                    for (int id : w.ids) EXPECT_EQ(kindOf[id], w.kind) << "id " << id;
            }

            // Static texts and labels, and the picture files, from the file itself.
            std::ifstream in(path);
            char key[FIELD_MAX], f[5][FIELD_MAX];
            for (std::string line; std::getline(in, line);) {
                if (!GetField(key, line.c_str(), 0)) continue;
                int n = 0;
                while (n < 5 && GetField(f[n], line.c_str(), n + 1)) n++;
                if (SameName(key, "TEXT") && n == 3) {
                    EXPECT_TRUE(TextInside(d.left + atoi(f[1]), d.top + atoi(f[2]), f[0])) << line;
                } else if (SameName(key, "CHECK") && n == 4) {
                    EXPECT_TRUE(TextInside(d.left + atoi(f[1]) + 5, d.top + atoi(f[2]), f[0])) << line;
                } else if (SameName(key, "SHAPE") && n == 5 && f[1][0]) {
                    EXPECT_TRUE(FileExists(std::string(g.config.SUPPORT_DIR) + "/" + f[1])) << line;
                }
            }
            Dialog_Close(&d);
        }
    }
}

// Every code that command.dat names is one the program knows.
TEST_F(SupportDialogs, CommandNamesNameKnownCodes) {
    snprintf(g.config.SUPPORT_DIR, sizeof g.config.SUPPORT_DIR, "%s/support", QMR_SOURCE_DIR);
    ASSERT_EQ(Command_ReadTable(), 1);
    std::set<int> known = {101, 102, 103, 104, 105, 106, 107, 108, 120, 121, 122, 150, 420, 501, 502, 503,
                           510, 511, 512, 802, 803, 804, 810, 801, 820, 901, 401, 402, 403, 404, 405, 407,
                           408, 410, 421, 422, 423, 424, 425, 426, 427, 428, 430, 602, 603, 604, 701, 702,
                           705, 710, 711, 712, 713, 714, 715};
    for (int c = 201; c <= 232; c++) known.insert(c);
    for (int c = 301; c <= 318; c++) known.insert(c);   // 318: change of layer
    for (int c = 951; c <= 957; c++) known.insert(c);
    known.insert({1101, 1102});   // UNDO, REDO
    for (const CommandName& r : g.menus.CommandTable) EXPECT_TRUE(known.count(r.code)) << r.name << " " << r.code;
}

// --- hostile files ---

class HostileDialogs : public SupportDialogs {
  protected:
    void SetUp() override {
        SupportDialogs::SetUp();
        before.assign(Headless_Frame(), Headless_Frame() + 640 * 480);
    }
    // Loads text as a dialog file, closes it, and checks the screen is back.
    int LoadAndClose(const std::string& text) {
        WriteFile(dir.file("h.dlg"), text);
        Dialog_Init(&d);
        int rc = Dialog_Load(&d, dir.file("h.dlg").c_str());
        Dialog_Close(&d);
        EXPECT_EQ(memcmp(before.data(), Headless_Frame(), before.size()), 0);
        return rc;
    }
    TempDir dir;
    std::vector<unsigned char> before;
};

TEST_F(HostileDialogs, NeverCrashNorHang) {
    EXPECT_EQ(LoadAndClose(""), DIALOG_OK);   // nothing wrong, and no dialog
    std::string binary;
    for (int i = 0; i < 4096; i++) binary += (char)(i * 37 % 256);
    LoadAndClose(binary);
    EXPECT_EQ(LoadAndClose("CAPTION(30,10)\nBUTTON(\"cut in the mi"), DIALOG_OK);
    std::string many = "CAPTION(60,20)\n";
    for (int i = 0; i < 10000; i++) many += "CHECK(\"c\"," + std::to_string(i % 50) + ",3," + std::to_string(i) + ")\n";
    EXPECT_EQ(LoadAndClose(many), DIALOG_OK);
    EXPECT_EQ(LoadAndClose("CAPTION(30,10)\nTEXT(\"" + std::string(400, 'x') + "\",1,1)\nBUTTON(\"a\",1,2,1)\n"),
              DIALOG_OK);
    EXPECT_EQ(LoadAndClose("CAPTION(30,10)\nBUTTON(\"" + std::string(300, 'y') + "\",1,2,1)\n"), DIALOG_OK);
    EXPECT_EQ(LoadAndClose("CAPTION(30,10)\nBUTTON(\"a\",-99999999999,-5,1)\nTEXTBOX(2147483647,9,2147483647,2)\n"
                           "GRAPH(-1000000,-1000000,1000000,1000000,3)\nSHAPE(\"s\",\"layout1.pic\",-900,900,4)\n"
                           "CHECK(\"x\",99999,99999,5)\nTEXT(\"t\",-3,-3)\n"),
              DIALOG_OK);
    EXPECT_EQ(LoadAndClose("CAPTION(99999999,-99999999)\n"), DIALOG_OK);
    EXPECT_EQ(LoadAndClose("CAPTION(30,10)\nBUTTON(\"a\",1,1,1)\nBUTTON(\"b\",1,2,1)\nCHECK(\"c\",1,3,1)\n"),
              DIALOG_OK);   // ids that repeat load; the first one wins a click
}

// Every truncation and a few thousand random mutations of every shipped
// dialog file: each loads, or stops with one of its results, and closes.
TEST_F(HostileDialogs, TruncationsAndMutationsOfTheShippedFiles) {
    snprintf(g.config.SUPPORT_DIR, sizeof g.config.SUPPORT_DIR, "%s/support", QMR_SOURCE_DIR);
    std::mt19937 rng(20240613);
    int loads = 0;
    for (const std::string& name : SupportFiles(".dlg")) {
        const std::string text = ReadFile(std::string(g.config.SUPPORT_DIR) + "/" + name);
        for (size_t n = 0; n <= text.size(); n += 1 + n / 64) {
            int rc = LoadAndClose(text.substr(0, n));
            EXPECT_GE(rc, DIALOG_OK);
            EXPECT_LE(rc, DIALOG_SECOND_CAPTION);
            loads++;
        }
        for (int m = 0; m < 300; m++) {
            std::string t = text;
            for (int k = rng() % 8 + 1; k > 0 && !t.empty(); k--) {
                size_t at = rng() % t.size();
                switch (rng() % 4) {
                    case 0: t[at] = (char)(rng() % 256); break;
                    case 1: t.erase(at, rng() % 20); break;
                    case 2: t.insert(at, std::string(rng() % 4 + 1, "(),\"-9\n"[rng() % 7])); break;
                    default: t.insert(at, t.substr(rng() % t.size(), rng() % 80)); break;
                }
            }
            int rc = LoadAndClose(t);
            EXPECT_GE(rc, DIALOG_OK);
            EXPECT_LE(rc, DIALOG_SECOND_CAPTION);
            loads++;
        }
    }
    EXPECT_GT(loads, 3000);
}

}  // namespace
