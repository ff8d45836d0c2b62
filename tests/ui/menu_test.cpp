// The menu files: layout of the pull-down bar, the side menu's rows and
// answers, hostile files, and the consistency of the installed support
// files with the command codes.
#include <fstream>
#include <map>
#include <set>

#include "e2e/process.h"
#include "input/session.h"
#include "base/field.h"

namespace {

class MenuTest : public HeadlessTest {
  protected:
    void SetUp() override {
        HeadlessTest::SetUp();
        snprintf(g.config.SUPPORT_DIR, sizeof g.config.SUPPORT_DIR, "%s", dir.path().c_str());
        WriteFile(dir.file("command.dat"), "(NEW,102)\n(SAVE,104)\n(EXIT,101)\n(ZOOM,402)\n");
    }
    int LoadBar(const std::string& text) {
        WriteFile(dir.file("m.mnu"), text);
        return MenuBar_Load(&g.menus.bar, dir.file("m.mnu").c_str());
    }
    int LoadSide(const std::string& text) {
        WriteFile(dir.file("s.mnu"), text);
        return SideMenu_Load("s.mnu");
    }
    TempDir dir;
};

TEST_F(MenuTest, TitlesAndBoxesAreLaidOutFromTheText) {
    ASSERT_EQ(LoadBar("ITEM(\"Early\", NEW)\n// comment POPUP(\"No\")\nPOPUP(\"File\")\nITEM(\"New\", NEW)\n"
                      "ITEM(\"Save file\", SAVE)\nITEM(\"Bogus\", NOSUCH)\nPOPUP(\" Two words \")\n"),
              1);
    const MenuBar& b = g.menus.bar;
    ASSERT_EQ(b.titles.size(), 2u);
    EXPECT_STREQ(b.titles[0].text, "File");
    EXPECT_EQ(b.titles[0].x1, 0);
    EXPECT_EQ(b.titles[0].x2, 31);                 // 4 characters of 8 pixels
    EXPECT_STREQ(b.titles[1].text, " Two words ");   // blanks kept inside quotes
    EXPECT_EQ(b.titles[1].x1, 32);
    EXPECT_EQ(b.titles[1].x2, 32 + 88 - 1);
    ASSERT_EQ(b.titles[0].items.size(), 3u);
    EXPECT_STREQ(b.titles[0].items[1].text, "Save file ");
    EXPECT_EQ(b.titles[0].items[0].code, 102);
    EXPECT_EQ(b.titles[0].items[1].code, 104);
    EXPECT_EQ(b.titles[0].items[2].code, 0);     // unknown name: does nothing
    EXPECT_EQ(b.titles[0].by1, 15);
    EXPECT_EQ(b.titles[0].by2, 3 * 15 + 15 - 1);
    EXPECT_EQ(b.titles[0].bx2, 0 + 80 + 8);      // "Save file " and the width of "h"
    EXPECT_TRUE(b.titles[1].items.empty());
}

TEST_F(MenuTest, TitlesPastTheBarAndItemsBelowTheScreenAreDropped) {
    std::string text = "POPUP(\"" + std::string(20, 'A') + "\")\nPOPUP(\"" + std::string(20, 'B') + "\")\n"
                       "POPUP(\"" + std::string(20, 'C') + "\")\nPOPUP(\"DDD\")\n";
    for (int i = 0; i < 30; i++) text += "ITEM(\"" + std::string(40, 'i') + "\", SAVE)\n";
    text += "POPUP(\"" + std::string(20, 'E') + "\")\nITEM(\"x\", NEW)\nPOPUP(\"F\")\n";
    ASSERT_EQ(LoadBar(text), 1);
    const MenuBar& b = g.menus.bar;
    // 3 x 160 + 24 = 504 pixels fit left of 544; "EEE..." would end at 663.
    ASSERT_EQ(b.titles.size(), 4u);
    const MenuTitle& d = b.titles[3];
    EXPECT_EQ(d.x1, 3 * 160);
    EXPECT_EQ(d.items.size(), 27u);              // the 28th would reach the input line
    EXPECT_EQ(d.by2, 27 * 15 + 14);
    EXPECT_EQ(strlen(d.items[0].text), 30u);     // cut to 29, one blank added
    EXPECT_EQ(d.bx2 + 3, 640);                   // pushed left to stay inside the window
    EXPECT_EQ(d.bx2 - d.bx1, 30 * 8 + 8);
}

TEST_F(MenuTest, HostileMenuFilesNeverCrash) {
    std::string text = "POPUP(\"A\")\n" + std::string(1000, 'x') + "\nITEM(" + std::string(600, 'y') + ",NEW)\n"
                       "ITEM(\"unbalanced, NEW)\nITEM((((\nITEM)\nITEM(\"x\")\nPOPUP(\nPOPUP()\nITEM(,)\n"
                       "POPUP(\"" + std::string(300, 'T') + "\")\n";
    for (int c = 1; c < 256; c++) text += std::string(1, (char)c);
    EXPECT_EQ(LoadBar(text), 1);
    for (const MenuTitle& t : g.menus.bar.titles) EXPECT_LE(strlen(t.text), 29u);
    EXPECT_EQ(MenuBar_Load(&g.menus.bar, dir.file("missing.mnu").c_str()), 0);
    EXPECT_EQ(LoadSide("SIDEMENU(1000)\n" + std::string(900, 'z') + "\nCOMMAND(" + std::string(500, 'q') +
                       ",NEW)\nKEYWORD(\"open\nMENU(((,1)\nTEXT()\nNUMBER(a)\nSPACE\n"),
              1);
    for (const SideRow& r : g.menus.side.row) EXPECT_LE(strlen(r.text), 80u);
}

TEST_F(MenuTest, ClickingATitleTwiceOpensAndClosesIt) {
    ASSERT_EQ(LoadBar("POPUP(\"File\")\nITEM(\"New\",NEW)\nITEM(\"Save\",SAVE)\n"), 1);
    MenuBar* b = &g.menus.bar;
    EXPECT_EQ(MenuBar_Track(b, 300, 200, 0), -1);   // off the menus
    EXPECT_EQ(MenuBar_Track(b, 5, 5, MOUSE_LEFT), -2);
    EXPECT_EQ(b->open, 0);
    EXPECT_EQ(b->shown, 1);
    EXPECT_EQ(Headless_Pixel(40, 5), g.config.colors.menu_bkcolor);   // the bar over the status line
    EXPECT_EQ(MenuBar_Track(b, 5, 5, MOUSE_LEFT), -2);
    EXPECT_EQ(b->open, -1);
    EXPECT_EQ(MenuBar_Track(b, 5, 5, MOUSE_LEFT), -2);
    EXPECT_EQ(b->open, 0);
    // The second item, then a click on it.
    EXPECT_EQ(MenuBar_Track(b, 10, 15 + 15 + 7, 0), -2);
    EXPECT_TRUE(b->titles[0].items[1].highlighted);
    EXPECT_EQ(MenuBar_Track(b, 10, 15 + 15 + 7, MOUSE_LEFT), 104);
    EXPECT_EQ(b->open, -1);
    EXPECT_EQ(b->shown, 0);
    EXPECT_EQ(Headless_Pixel(40, 5), g.config.colors.background);
}

TEST_F(MenuTest, SideMenuRowsAndAnswers) {
    ASSERT_EQ(LoadSide("// rows\nSIDEMENU(1000)\nTEXT(\"Main\")\nSPACE\nCOMMAND(\"Save\", SAVE)\nMENU(\"More\", 2000)\n"
                       "MENU(\"Gone\", 3000)\nKEYWORD(\"Yes\", Y)\nNUMBER(\"Origin\", \"0,0,0\")\nSTRING(\"Wood\", \"Pine Wood\")\n"
                       "SIDEMENU(2000)\nCOMMAND(\"Zoom\", zoom)\nCOMMAND(\"Bad\", nothing)\n"),
              1);
    const SideMenu& s = g.menus.side;
    EXPECT_EQ(s.rows, (480 + 1) / 15 - 3);
    EXPECT_EQ(s.shown, 1000);
    EXPECT_STREQ(s.row[0].text, " QMR v2.1c");
    EXPECT_EQ(s.row[0].value, 1);
    EXPECT_EQ(s.row[1].type, SIDE_TEXT);
    EXPECT_EQ(s.row[2].type, SIDE_TEXT);   // SPACE
    EXPECT_EQ(s.row[3].value, 104);
    const int x = g.screen.sideMenuX + 10;
    auto at = [](int row) { return row * 15 + 7; };
    EXPECT_EQ(SideMenu_Track(x - 20, at(3), MOUSE_LEFT), -10);
    EXPECT_EQ(SideMenu_Track(x, at(1), MOUSE_LEFT), -9);       // a heading
    EXPECT_EQ(SideMenu_Track(x, at(3), 0), -9);
    EXPECT_TRUE(s.row[3].highlighted);
    EXPECT_EQ(SideMenu_Track(x, at(3), MOUSE_LEFT), 104);
    EXPECT_EQ(SideMenu_Track(x, at(6), MOUSE_LEFT), -4);
    EXPECT_STREQ(g.input.InputResult.text, "Y");
    EXPECT_EQ(SideMenu_Track(x, at(7), MOUSE_LEFT), -3);
    EXPECT_STREQ(g.input.InputResult.text, "0,0,0");
    EXPECT_EQ(SideMenu_Track(x, at(8), MOUSE_LEFT), -2);
    EXPECT_STREQ(g.input.InputResult.text, "Pine Wood");
    EXPECT_EQ(SideMenu_Track(x, at(4), MOUSE_LEFT), -9);       // to menu 2000
    EXPECT_EQ(s.shown, 2000);
    EXPECT_EQ(s.row[1].value, 402);
    EXPECT_EQ(s.row[2].value, 0);
    EXPECT_EQ(s.row[3].type, SIDE_TEXT);
    EXPECT_EQ(SideMenu_Track(x, at(0), MOUSE_LEFT), 1);        // cancel row: back to 1000
    EXPECT_EQ(s.shown, 1000);
    EXPECT_EQ(SideMenu_Show(3000), 0);                          // missing: only row 0
    EXPECT_EQ(s.row[1].type, SIDE_TEXT);
    EXPECT_STREQ(s.row[1].text, "");
    EXPECT_STREQ(s.row[0].text, " QMR v2.1c");
}

TEST_F(MenuTest, SideMenuFileErrorsAreFatalMessages) {
    EXPECT_EQ(SideMenu_Load("nofile.mnu"), 0);
    EXPECT_STREQ(g.run.fatalMessage, "Can't load SIDEMENU\n");
    EXPECT_EQ(LoadSide("SIDEMENU(1001)\nTEXT(\"x\")\n"), 0);
    EXPECT_STREQ(g.run.fatalMessage, "Main Menu <1000> is not present!\n");
    EXPECT_EQ(g.menus.side.file, nullptr);
    EXPECT_EQ(SideMenu_Track(600, 20, MOUSE_LEFT), -10);
}

TEST_F(MenuTest, LongSideMenuStopsAtTheLastRow) {
    std::string text = "SIDEMENU(1000)\n";
    for (int i = 0; i < 60; i++) text += "COMMAND(\"Row" + std::to_string(i) + "\", SAVE)\n";
    ASSERT_EQ(LoadSide(text), 1);
    const SideMenu& s = g.menus.side;
    EXPECT_STREQ(s.row[s.rows - 1].text, ("Row" + std::to_string(s.rows - 2)).c_str());
}

// --- the installed support files ---

std::vector<std::string> Lines(const std::string& path) {
    std::vector<std::string> out;
    std::ifstream in(path);
    for (std::string line; std::getline(in, line);) out.push_back(line);
    return out;
}

// Every entry of the installed files resolves, every code has a name, and
// the menus load whole on a 640 x 480 screen.
TEST_F(MenuTest, InstalledSupportFiles) {
    snprintf(g.config.SUPPORT_DIR, sizeof g.config.SUPPORT_DIR, "%s/support", QMR_SOURCE_DIR);
    const std::string support = g.config.SUPPORT_DIR;
    // Every command code the program knows, by group.
    std::vector<int> codes = {101, 102, 103, 104, 105, 106, 107, 108, 120, 121, 122, 150, 420, 501, 502,
                              503, 510, 511, 512, 802, 803, 804, 810, 801, 820, 951, 952, 953, 954, 955,
                              956, 957, 401, 402, 403, 404, 405, 407, 408, 410, 421, 422, 423, 424, 425,
                              426, 427, 428, 430, 602, 603, 604, 901, 701, 702, 705, 710, 711, 712, 713,
                              714, 715};
    for (int c = 201; c <= 232; c++) codes.push_back(c);
    for (int c = 301; c <= 318; c++) codes.push_back(c);
    ASSERT_EQ(Command_ReadTable(), 1);
    std::set<int> named;
    for (const CommandName& r : g.menus.CommandTable) {
        named.insert(r.code);
        if (r.hotKey == -1) continue;
        // Hot keys never take a character that is typed at prompts.
        EXPECT_FALSE(isalnum(r.hotKey) || strchr(".,@%<- ", r.hotKey) || r.hotKey == 3 || r.hotKey == 8 ||
                     r.hotKey == 13 || r.hotKey == 10 || r.hotKey == 27)
            << r.name << " " << r.hotKey;
        EXPECT_EQ(Command_Lookup(r.name), r.code) << r.name;   // no name hides another
    }
    for (int c : codes) EXPECT_TRUE(named.count(c)) << "code " << c << " has no name";

    // Every menu entry names a known command; every side MENU row an existing menu.
    std::set<int> reached, menus, targets;
    char field[FIELD_MAX], arg[FIELD_MAX];
    for (const std::string& line : Lines(support + "/main.mnu")) {
        if (!GetField(field, line.c_str(), 0) || !SameName(field, "ITEM")) continue;
        ASSERT_TRUE(GetField(arg, line.c_str(), 2)) << line;
        int code = Command_Lookup(arg);
        EXPECT_GT(code, 1) << line;
        reached.insert(code);
    }
    for (const std::string& line : Lines(support + "/side.mnu")) {
        if (!GetField(field, line.c_str(), 0)) continue;
        if (SameName(field, "SIDEMENU") && GetField(arg, line.c_str(), 1)) menus.insert(atoi(arg));
        if (SameName(field, "MENU") && GetField(arg, line.c_str(), 2)) targets.insert(atoi(arg));
        if (SameName(field, "COMMAND")) {
            ASSERT_TRUE(GetField(arg, line.c_str(), 2)) << line;
            int code = Command_Lookup(arg);
            EXPECT_GT(code, 1) << line;
            reached.insert(code);
        }
    }
    for (int t : targets) EXPECT_TRUE(menus.count(t)) << "menu " << t;
    for (int m : {1000, 1010, 1512}) EXPECT_TRUE(menus.count(m)) << "menu " << m;
    for (int c : codes)   // 404 does nothing: a name is enough
        EXPECT_TRUE(c == 404 || reached.count(c)) << "code " << c << " is in no menu";

    ASSERT_EQ(MenuBar_Load(&g.menus.bar, (support + "/main.mnu").c_str()), 1);
    int popups = 0, items = 0, loaded = 0;
    for (const std::string& line : Lines(support + "/main.mnu")) {
        popups += line.rfind("POPUP", 0) == 0;
        items += line.rfind("ITEM", 0) == 0;
    }
    for (const MenuTitle& t : g.menus.bar.titles) loaded += (int)t.items.size();
    EXPECT_EQ((int)g.menus.bar.titles.size(), popups);   // every title fits the bar at 640 pixels
    EXPECT_EQ(loaded, items);                            // every item fits above the input line
    ASSERT_EQ(SideMenu_Load("side.mnu"), 1);
    for (int m : {1001, 1002, 1003, 1004, 1005, 1006, 1010, 1020, 1700, 1512}) {
        EXPECT_EQ(SideMenu_Show(m), 1) << m;
        EXPECT_NE(g.menus.side.row[g.menus.side.rows - 1].type, SIDE_COMMAND) << m << " was cut";
    }
}

}  // namespace
