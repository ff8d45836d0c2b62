// sidemenu.cpp - the side menu column: numbered menus read from the side
// menu file, rows that give commands, other menus, or strings, numbers and
// keywords to the waiting prompt.
//
// The file stays open for the whole run; showing a menu reads it again from
// the start. Row 0 is always the cancel row " QMR v2.1c", which also brings
// back menu 1000.
#include <cstdlib>
#include <cstring>

#include "base/field.h"
#include "base/message.h"
#include "gfx/gfx.h"
#include "state.h"
#include "ui/command_names.h"
#include "ui/menu.h"

namespace {

constexpr int kLineMax = 254;
constexpr int kMainMenu = 1000;

SideMenu& S() { return g.menus.side; }

void DrawRow(int i) {
    if (!g.screen.open) return;
    const SideRow& r = S().row[i];
    const ScreenColors& c = g.config.colors;
    const int y = i * SCREEN_LINE, left = g.screen.sideMenuX;
    Screen_Fill(r.highlighted ? c.side_selectbk : c.background, left, y, g.screen.width - 1, y + SCREEN_LINE - 1);
    Screen_Text(r.highlighted ? c.side_selectfg : c.foreground, left + 2, y + 1, r.text);
}

void Highlight(int i, int on) {
    SideRow& r = S().row[i];
    if (r.highlighted == on) return;
    r.highlighted = on;
    DrawRow(i);
}

struct RowKind {
    const char* keyword;
    int type;
    int fields;   // fields after the keyword: 0 none, 1 label, 2 label and argument
};
const RowKind kRowKinds[] = {
    {"SPACE", SIDE_TEXT, 0},     {"COMMAND", SIDE_COMMAND, 2}, {"TEXT", SIDE_TEXT, 1},
    {"MENU", SIDE_MENU, 2},      {"STRING", SIDE_STRING, 2},   {"NUMBER", SIDE_NUMBER, 2},
    {"KEYWORD", SIDE_KEYWORD, 2},
};

// Fills row from a line of the wanted menu; false when the line fills no row.
bool FillRow(SideRow* row, const char* line, const char* keyword) {
    char label[FIELD_MAX], arg[FIELD_MAX];
    for (const RowKind& k : kRowKinds) {
        if (!SameName(keyword, k.keyword)) continue;
        *row = SideRow{};
        row->type = k.type;
        if (k.fields == 0) return true;
        if (!GetField(label, line, 1)) return false;
        CopyCut(row->text, sizeof row->text, label);
        if (k.fields == 2 && GetField(arg, line, 2)) CopyCut(row->argument, sizeof row->argument, arg);
        if (k.type == SIDE_COMMAND) row->value = Command_Lookup(row->argument);
        if (k.type == SIDE_MENU) row->value = atoi(row->argument);
        return true;
    }
    return false;
}

}  // namespace

void SideMenu_Close() {
    if (S().file) fclose(S().file);
    S() = SideMenu{};
}

int SideMenu_Load(const char* name) {
    SideMenu_Close();
    char path[FIELD_MAX * 2];
    snprintf(path, sizeof path, "%s/%s", g.config.SUPPORT_DIR, name);
    FILE* f = fopen(path, "r");
    if (!f) {
        SetFatalMessage("Can't load SIDEMENU");
        return 0;
    }
    setvbuf(f, nullptr, _IOFBF, 4096);
    S().file = f;
    S().rows = (g.screen.height + 1) / SCREEN_LINE - 3;
    if (S().rows < 1) S().rows = 1;
    S().row.assign(S().rows, SideRow{});
    if (!SideMenu_Show(kMainMenu)) {
        SideMenu_Close();
        SetFatalMessage("Main Menu <1000> is not present!");
        return 0;
    }
    return 1;
}

int SideMenu_Show(int number) {
    SideMenu& s = S();
    if (!s.file) return 0;
    if (s.shown == number) return 1;
    if (g.screen.open)
        Screen_Fill(g.config.colors.background, g.screen.sideMenuX, 0, g.screen.width - 1,
                    s.rows * SCREEN_LINE - 1);
    for (SideRow& r : s.row) r = SideRow{SIDE_TEXT, 0, 0, "", ""};
    s.row[0] = SideRow{SIDE_COMMAND, 1, 0, " QMR v2.1c", ""};
    DrawRow(0);
    s.shown = 0;

    rewind(s.file);
    char line[kLineMax + 2], keyword[FIELD_MAX], field[FIELD_MAX];
    bool inside = false;
    int next = 1;
    while (fgets(line, kLineMax + 1, s.file)) {
        line[strcspn(line, "\r\n")] = '\0';
        if (!GetField(keyword, line, 0)) continue;
        if (SameName(keyword, "SIDEMENU")) {
            if (inside) break;
            inside = GetField(field, line, 1) && atoi(field) == number;
            continue;
        }
        if (!inside) continue;
        if (next >= s.rows) break;
        if (FillRow(&s.row[next], line, keyword)) DrawRow(next++);
    }
    if (inside) s.shown = number;
    return inside ? 1 : 0;
}

void SideMenu_Unhighlight() {
    for (int i = 0; i < (int)S().row.size(); i++) Highlight(i, 0);
}

int SideMenu_Track(int x, int y, int buttons) {
    SideMenu& s = S();
    if (!s.file) return -10;
    if (x < g.screen.sideMenuX || x >= g.screen.width || y < 0 || y >= s.rows * SCREEN_LINE) {
        SideMenu_Unhighlight();
        return -10;
    }
    MenuBar_Close(&g.menus.bar);
    const int i = y / SCREEN_LINE;
    for (int k = 0; k < s.rows; k++)
        if (k != i) Highlight(k, 0);
    if (s.row[i].type != SIDE_TEXT) Highlight(i, 1);
    if (!buttons) return -9;
    const SideRow r = s.row[i];
    switch (r.type) {
        case SIDE_COMMAND:
            if (i == 0) {
                SideMenu_Show(kMainMenu);
                Highlight(0, 1);
            }
            return r.value;
        case SIDE_MENU:
            SideMenu_Show(r.value);
            if (s.row[i].type != SIDE_TEXT) Highlight(i, 1);
            return -9;
        case SIDE_STRING:
        case SIDE_NUMBER:
        case SIDE_KEYWORD:
            CopyCut(g.input.InputResult.text, sizeof g.input.InputResult.text, r.argument);
            return r.type == SIDE_STRING ? -2 : r.type == SIDE_NUMBER ? -3 : -4;
    }
    return -9;
}
