// The dialog runtime on the headless display: placement and drawing of a
// loaded file, what Dialog_Run returns for each element, text editing,
// the setters, picture files, and the load errors.
#include <cstring>
#include <vector>

#include "e2e/process.h"
#include "headless_session.h"
#include "ui/dialog.h"

namespace {

class DialogTest : public HeadlessTest {
  protected:
    void SetUp() override {
        HeadlessTest::SetUp();
        snprintf(g.config.SUPPORT_DIR, sizeof g.config.SUPPORT_DIR, "%s", dir.path().c_str());
        before.assign(Headless_Frame(), Headless_Frame() + 640 * 480);
    }
    int Load(const std::string& text) {
        WriteFile(dir.file("t.dlg"), text);
        Dialog_Init(&d);
        return Dialog_Load(&d, dir.file("t.dlg").c_str());
    }
    // Pixel at the centre of cell (c, r) of the dialog (relative cells).
    int X(int c) { return (d.left + c) * 8 + 4; }
    int Y(int r) { return (d.top + r) * 15 + 7; }
    DialogResult Run() {
        DialogResult r{};
        EXPECT_TRUE(Headless_RunSession([&] { Dialog_Run(&d, &r); }));
        return r;
    }
    bool ScreenAsBefore() { return memcmp(before.data(), Headless_Frame(), before.size()) == 0; }

    TempDir dir;
    Dialog d;
    std::vector<unsigned char> before;
};

const char kForm[] =
    "CAPTION(20,10)\n"
    "// a comment line, then a line with an unknown keyword and one short of fields\n"
    "FRAME(1,2,3)\nBUTTON(\"OK\",2)\n"
    "BUTTON(\" OK \",2,8,1)\n"
    "CHECK(\"Snap\",2,2,7)\n"
    "INPUT(\"Name\",2,4,5)\nTEXTBOX(8,4,6,5)\n"
    "GRAPH(2,5,12,7,9)\n";

TEST_F(DialogTest, CentredDrawnAndRestored) {
    ASSERT_EQ(Load(kForm), DIALOG_OK);
    // 20 x 10 cells on 80 x 32: left = 81/2 - 10 - 1, top = 33/2 - 5 - 1.
    EXPECT_EQ(d.left, 29);
    EXPECT_EQ(d.top, 10);
    EXPECT_EQ(d.right, 49);
    EXPECT_EQ(d.bottom, 20);
    const ScreenColors& c = g.config.colors;
    EXPECT_EQ(Headless_Pixel(29 * 8 + 1, 10 * 15 + 1), c.dialog_bk);
    EXPECT_EQ(Headless_Pixel(29 * 8, 12 * 15), c.dialog_trim);            // left edge
    EXPECT_EQ(Headless_Pixel(50 * 8 - 2, 10 * 15 + 2), Headless_Pixel(0, 20));   // shadow starts 4 down
    EXPECT_EQ(Headless_Pixel(50 * 8 - 2, 10 * 15 + 6), c.dialog_shadow);
    EXPECT_EQ(Headless_Pixel(29 * 8 + 6, 21 * 15 - 2), c.dialog_shadow);
    EXPECT_EQ(Headless_Pixel((29 + 2) * 8 - 1, (10 + 8) * 15 + 5), c.dialog_fg);   // button box
    EXPECT_EQ(Headless_Pixel((29 + 2) * 8 + 1, (10 + 5) * 15 + 1), c.view_bkcolor);   // graph
    ASSERT_EQ(d.buttonList.size(), 1u);   // the short BUTTON line was skipped
    EXPECT_EQ(d.buttonList[0].column, 31);
    EXPECT_EQ(d.buttonList[0].row, 18);
    Dialog_Close(&d);
    EXPECT_TRUE(ScreenAsBefore());
    EXPECT_TRUE(d.buttonList.empty());
}

TEST_F(DialogTest, RunReturnsTheClickedElement) {
    ASSERT_EQ(Load(kForm), DIALOG_OK);
    Headless_PushClick(X(3), Y(2));   // the check box: its id, the mark unchanged
    DialogResult r = Run();
    EXPECT_EQ(r.id, 7);
    EXPECT_EQ(Dialog_GetCheck(&d, 7), 0);
    EXPECT_EQ(Dialog_GetCheck(&d, 8), -1);

    Headless_PushClick(X(15), Y(1));   // on nothing; then the button's last cell
    Headless_PushClick(X(5), Y(8));
    EXPECT_EQ(Run().id, 1);
    Headless_PushClick(X(6), Y(8));    // past " OK ": nothing, then Ctrl-C
    Headless_PushKey(3);
    EXPECT_EQ(Run().id, -1);
    Headless_PushKey('x');             // other keys do nothing; Escape cancels
    Headless_PushKey(KEY_ESCAPE);
    EXPECT_EQ(Run().id, -1);

    Dialog_SetText(&d, 5, "abc");
    Headless_PushClick(X(13), Y(4));
    r = Run();
    EXPECT_EQ(r.id, 5);
    EXPECT_STREQ(r.text, "abc");

    // GRAPH: the row below its top; negative unless the left button.
    Headless_PushClick(X(2), Y(7));
    r = Run();
    EXPECT_EQ(r.id, 9);
    EXPECT_EQ(r.value, 2);
    Headless_PushClick(X(12), Y(7), MOUSE_RIGHT);
    EXPECT_EQ(Run().value, -2);
    Headless_PushClick(X(12), Y(5), MOUSE_RIGHT);
    r = Run();
    EXPECT_EQ(r.id, 9);
    EXPECT_EQ(r.value, 0);
    Headless_PushMove(X(2), Y(2));     // highlight follows the pointer; no click, no result
    Headless_PushKey(3);
    EXPECT_EQ(Run().id, -1);
    EXPECT_EQ(d.checks[0].highlighted, 1);
    Dialog_Close(&d);
    EXPECT_TRUE(ScreenAsBefore());
}

TEST_F(DialogTest, EditingAText) {
    ASSERT_EQ(Load(kForm), DIALOG_OK);
    Dialog_SetText(&d, 5, "old");
    auto edit = [&](const char* keys) {
        Headless_PushText(keys);
        int ok = -1;
        EXPECT_TRUE(Headless_RunSession([&] { ok = Dialog_EditText(&d, 5); }));
        return ok;
    };
    EXPECT_EQ(edit("n\n"), 1);          // the first character replaces the old text
    EXPECT_STREQ(d.editBuffer, "n");
    Dialog_SetText(&d, 5, "old");
    EXPECT_EQ(edit("\bx\n"), 1);        // Backspace first edits it
    EXPECT_STREQ(d.editBuffer, "olx");
    EXPECT_EQ(edit("abcdef\n"), 1);     // a 6-cell box takes 4 characters
    EXPECT_STREQ(d.editBuffer, "abcd");
    EXPECT_EQ(edit("zz\x1b"), 0);       // Escape
    Headless_PushKey(KEY_F(5));         // a function key does nothing; a left click is Enter
    Headless_PushClick(0, 0);
    EXPECT_EQ(edit(""), 1);
    EXPECT_STREQ(d.editBuffer, "old");
    Headless_PushClick(0, 0, MOUSE_RIGHT);
    EXPECT_EQ(edit("q"), 0);
    EXPECT_EQ(Dialog_EditText(&d, 99), 0);   // no such box
    char text[256];
    Dialog_GetText(&d, 5, text);
    EXPECT_STREQ(text, "old");               // editing never stores by itself
    // SetText keeps what fits: narrower than (6 - 1) cells.
    Dialog_SetText(&d, 5, "abcdefgh");
    Dialog_GetText(&d, 5, text);
    EXPECT_STREQ(text, "abcd");
    Dialog_Close(&d);
}

TEST_F(DialogTest, CheckMarkAndGraphText) {
    ASSERT_EQ(Load(kForm), DIALOG_OK);
    const int bk = g.config.colors.dialog_bk;
    auto marked = [&] {   // any pixel inside the box that is not the background
        for (int y = Y(2) - 6; y < Y(2) + 7; y++)
            for (int x = X(2) - 3; x < X(5); x++)
                if (Headless_Pixel(x, y) != bk) return true;
        return false;
    };
    EXPECT_FALSE(marked());
    Dialog_SetCheck(&d, 7, 1);
    EXPECT_EQ(Dialog_GetCheck(&d, 7), 1);
    EXPECT_TRUE(marked());
    Dialog_SetCheck(&d, 7, 0);
    EXPECT_FALSE(marked());

    const int fg = LGREEN;
    Dialog_GraphText(&d, 9, 1, 1, fg, "abcdefghijklmnop");   // cut at the right edge
    EXPECT_EQ(Headless_ReadText((d.left + 3) * 8, (d.top + 6) * 15 + 1, 10, fg), "abcdefghij");
    Dialog_GraphText(&d, 9, 0, 3, fg, "x");                  // below the area: nothing
    EXPECT_EQ(Headless_Pixel((d.left + 2) * 8 + 3, (d.top + 8) * 15 + 6), bk);
    Dialog_GraphText(&d, 9, 0, 0, -1, "");
    EXPECT_EQ(Headless_ReadText((d.left + 3) * 8, (d.top + 6) * 15 + 1, 10, fg), "          ");
    Dialog_Close(&d);
}

TEST_F(DialogTest, LoadErrorsAndTheOpeningMessage) {
    Dialog_Init(&d);
    EXPECT_EQ(Dialog_Load(&d, dir.file("none.dlg").c_str()), DIALOG_NOT_FOUND);
    EXPECT_EQ(Load("TEXT(\"a\",1,1)\nCAPTION(10,5)\n"), DIALOG_BEFORE_CAPTION);
    EXPECT_EQ(Load("CAPTION(10,5)\nCAPTION(10,5)\nBUTTON(\"x\",1,1,1)\n"), DIALOG_SECOND_CAPTION);
    EXPECT_TRUE(d.buttonList.empty());   // reading stopped there
    Dialog_Close(&d);
    EXPECT_TRUE(ScreenAsBefore());
    EXPECT_EQ(Load("CAPTION(10,5)\nSHAPE(\"\",\"missing.pic\",1,3,1)\n"), DIALOG_OK);   // nothing drawn
    Dialog_Close(&d);
    EXPECT_EQ(Dialog_Open(&d, "about.dlg"), 0);
    EXPECT_EQ(Headless_Transcript(), "Can't find about.dlg, or Out of Memory!");
}

// Picture records: x, y, colour, length, little-endian; offset by the position.
TEST_F(DialogTest, PictureFiles) {
    auto rec = [](int x, int y, int c, int len) {
        std::string s;
        for (int v : {x, y, c, len})
            for (int i = 0; i < 4; i++) s += (char)((unsigned)v >> (8 * i) & 255);
        return s;
    };
    WriteFile(dir.file("p.pic"), rec(0, 0, RED, 3) + rec(5, 1, 0x10F, 0) + rec(-100000, 3, GREEN, 2000000) +
                                     rec(0, -400, BLUE, 9) + rec(2000000000, 2000000000, BLUE, 2000000000) +
                                     std::string("\x01\x02\x03", 3));   // a cut record at the end
    Dialog_DrawFile(&d, dir.file("p.pic").c_str(), 100, 200);
    for (int x = 100; x <= 103; x++) EXPECT_EQ(Headless_Pixel(x, 200), RED);
    EXPECT_EQ(Headless_Pixel(104, 200), before[200 * 640 + 104]);
    EXPECT_EQ(Headless_Pixel(105, 201), WHITE);   // colour 0x10F: its low byte
    EXPECT_EQ(Headless_Pixel(0, 203), GREEN);     // clipped to the screen
    EXPECT_EQ(Headless_Pixel(639, 203), GREEN);
    Dialog_DrawFile(&d, dir.file("gone.pic").c_str(), 0, 0);
}

}  // namespace
