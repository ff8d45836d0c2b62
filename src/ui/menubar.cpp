// menubar.cpp - the pull-down menu bar: the main menu file, the bar drawn
// over the status line while the mouse is on it, and the pull-down boxes.
//
// Titles sit side by side from x = 0 up to the side-menu column; a title
// that would pass it ends the file. Each pull-down box grows with its items
// and is kept above the input line and inside the window.
#include <cstring>

#include "base/field.h"
#include "gfx/gfx.h"
#include "state.h"
#include "ui/command_names.h"
#include "ui/menu.h"

namespace {

constexpr int kLineMax = 254;

int Limit() { return g.screen.sideMenuX - 1; }

void ReadLineEnd(char* line) { line[strcspn(line, "\r\n")] = '\0'; }

void DrawTitle(const MenuTitle& t) {
    const ScreenColors& c = g.config.colors;
    Screen_Fill(t.highlighted ? c.menu_selectbk : c.menu_bkcolor, t.x1, 0, t.x2, SCREEN_LINE - 1);
    Screen_Text(t.highlighted ? c.menu_selectfg : c.menu_fgcolor, t.x1, 1, t.text);
}

void DrawBar(MenuBar* bar) {
    Screen_Fill(g.config.colors.menu_bkcolor, 0, 0, Limit(), SCREEN_LINE - 1);
    for (const MenuTitle& t : bar->titles) DrawTitle(t);
    bar->shown = 1;
}

void DrawItem(const MenuTitle& t, int i) {
    const ScreenColors& c = g.config.colors;
    const MenuItem& it = t.items[i];
    const int y = t.by1 + i * SCREEN_LINE;
    Screen_Fill(it.highlighted ? c.msub_selectbk : c.msub_bkcolor, t.bx1 + 5, y + 1, t.bx2 - 3, y + SCREEN_LINE - 1);
    Screen_Text(it.highlighted ? c.msub_selectfg : c.msub_fgcolor, t.bx1 + X11_TextWidth("h"), y + 1, it.text);
}

void OpenPullDown(MenuBar* bar, int index) {
    MenuTitle& t = bar->titles[index];
    const ScreenColors& c = g.config.colors;
    bar->under = Screen_Save(t.bx1, t.by1, t.bx2 + 3, t.by2 + 4);
    Screen_Fill(c.msub_shadow, t.bx1 + 7, t.by2 + 2, t.bx2, t.by2 + 4);
    Screen_Fill(c.msub_shadow, t.bx2 - 2, t.by1 + 4, t.bx2, t.by2 + 4);
    Screen_Fill(c.msub_bkcolor, t.bx1 + 4, t.by1, t.bx2 - 3, t.by2 + 1);
    int keep = X11_GetColor(), mode = X11_GetWriteMode();
    X11_SetWriteMode(GFX_COPY);
    X11_SetColor(c.msub_shadow);
    X11_Rectangle(2, t.bx1 + 4, t.by1, t.bx2 - 2, t.by2 + 2);
    X11_SetColor(keep);
    X11_SetWriteMode(mode);
    for (MenuItem& it : t.items) it.highlighted = 0;
    t.itemHighlighted = 0;
    for (int i = 0; i < (int)t.items.size(); i++) DrawItem(t, i);
    bar->open = index;
}

void SetItemHighlight(MenuTitle& t, int row) {
    for (int i = 0; i < (int)t.items.size(); i++) {
        const int on = i == row;
        if (t.items[i].highlighted != on) {
            t.items[i].highlighted = on;
            DrawItem(t, i);
        }
    }
    t.itemHighlighted = row >= 0;
}

}  // namespace

void MenuBar_Free(MenuBar* bar) {
    if (bar->under.image) X11_FreeImage(bar->under.image);
    *bar = MenuBar{};
}

int MenuBar_Load(MenuBar* bar, const char* path) {
    if (bar->loaded || !bar->titles.empty()) MenuBar_Free(bar);
    FILE* f = fopen(path, "r");
    if (!f) return 0;
    char line[kLineMax + 2], field[FIELD_MAX], text[FIELD_MAX];
    const int hWidth = X11_TextWidth("h");
    while (fgets(line, kLineMax + 1, f)) {
        ReadLineEnd(line);
        if (!GetField(field, line, 0)) continue;
        if (SameName(field, "POPUP")) {
            if (!GetField(text, line, 1)) continue;
            MenuTitle t{};
            CopyCut(t.text, sizeof t.text, text);
            t.x1 = bar->titles.empty() ? 0 : bar->titles.back().x2 + 1;
            t.x2 = t.x1 + X11_TextWidth(t.text) - 1;
            if (t.x2 > Limit()) break;   // the rest of the file is ignored
            t.bx1 = t.bx2 = t.x1;
            t.by1 = t.by2 = SCREEN_LINE;
            bar->titles.push_back(t);
        } else if (SameName(field, "ITEM") && !bar->titles.empty()) {
            char name[FIELD_MAX];
            if (!GetField(text, line, 1) || !GetField(name, line, 2)) continue;
            MenuTitle& t = bar->titles.back();
            MenuItem it{};
            CopyCut(it.text, 30, text);
            strcat(it.text, " ");
            it.code = Command_Lookup(name);
            const int y2 = ((int)t.items.size() + 1) * SCREEN_LINE + t.by1 - 1;
            if (y2 + 3 >= g.screen.inputLineY) continue;   // no room above the input line
            t.by2 = y2;
            const int x2 = t.bx1 + X11_TextWidth(it.text) + hWidth;
            if (x2 > t.bx2) t.bx2 = x2;
            while (t.bx2 + 3 > g.screen.width) {
                t.bx1--;
                t.bx2--;
            }
            t.items.push_back(it);
        }
    }
    fclose(f);
    bar->loaded = 1;
    return 1;
}

void MenuBar_Close(MenuBar* bar) {
    if (bar->open < 0) return;
    MenuTitle& t = bar->titles[bar->open];
    for (MenuItem& it : t.items) it.highlighted = 0;
    t.itemHighlighted = 0;
    Screen_Restore(&bar->under);
    bar->open = -1;
}

int MenuBar_Track(MenuBar* bar, int x, int y, int buttons) {
    if (!bar->loaded || !g.screen.open) return -1;
    if (y >= 0 && y < SCREEN_LINE && x >= 0 && x <= Limit()) {
        SideMenu_Unhighlight();
        if (!bar->shown) DrawBar(bar);
        int under = -1;
        for (int i = 0; i < (int)bar->titles.size(); i++) {
            MenuTitle& t = bar->titles[i];
            const int on = x >= t.x1 && x <= t.x2;
            if (on) under = i;
            if (t.highlighted != on) {
                t.highlighted = on;
                DrawTitle(t);
            }
        }
        if (bar->open >= 0) SetItemHighlight(bar->titles[bar->open], -1);
        if (buttons) {
            const int wasOpen = bar->open;
            MenuBar_Close(bar);
            if (under >= 0 && under != wasOpen) OpenPullDown(bar, under);
        }
        return -2;
    }
    if (bar->shown) {
        Screen_Fill(g.config.colors.background, 0, 0, Limit(), SCREEN_LINE - 1);
        for (MenuTitle& t : bar->titles) t.highlighted = 0;
        bar->shown = 0;
    }
    if (bar->open < 0) return -1;
    MenuTitle& t = bar->titles[bar->open];
    const int h = X11_TextWidth("h");
    if (x >= t.bx1 + h && x <= t.bx2 - h && y >= t.by1 && y <= t.by2) {
        int row = (y - t.by1) / SCREEN_LINE;
        if (row >= (int)t.items.size()) row = (int)t.items.size() - 1;
        SetItemHighlight(t, row);
        if (buttons) {
            const int code = t.items[row].code;
            MenuBar_Close(bar);
            return code;
        }
        return -2;
    }
    SetItemHighlight(t, -1);
    if (buttons) MenuBar_Close(bar);   // a click elsewhere closes the pull-down
    return -1;
}
