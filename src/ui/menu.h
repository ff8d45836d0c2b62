// menu.h - the pull-down menu bar and the side menu, both read from text
// files in the support directory.
//
// Menu entries name commands by their command.dat name. The side menu file
// holds many numbered menus and stays open; showing a menu reads the file
// again from the start.
#pragma once

#include <cstdio>
#include <vector>

#include "gfx/screen.h"

struct MenuItem {
    char text[31];     // at most 29 characters and one blank
    int code;          // command code; 0 for an unknown name
    int highlighted;
};

struct MenuTitle {
    char text[30];     // at most 29 characters
    int x1, x2;        // extent on the bar
    int bx1, bx2, by1, by2;   // the pull-down box
    int highlighted;
    int itemHighlighted;
    std::vector<MenuItem> items;
};

struct MenuBar {
    std::vector<MenuTitle> titles;
    int loaded = 0;         // a file was read
    int open = -1;          // index of the open pull-down, -1 none
    int shown = 0;          // the bar is drawn over the status line
    int lastClosed = -1;    // pull-down closed by the click that is being handled
    ScreenSave under{};     // screen under the open pull-down
};

enum SideRowType { SIDE_COMMAND = 2, SIDE_TEXT = 3, SIDE_MENU = 4, SIDE_STRING = 5, SIDE_NUMBER = 6, SIDE_KEYWORD = 7 };

struct SideRow {
    int type;           // SideRowType
    int value;          // command code or menu number
    int highlighted;
    char text[81];      // label
    char argument[81];  // given to the prompt (STRING, NUMBER, KEYWORD)
};

struct SideMenu {
    FILE* file = nullptr;   // open for the whole run
    int shown = 0;          // number of the menu shown, 0 none
    int rows = 0;           // rows that fit the column
    std::vector<SideRow> row;
};

struct MenuState {
    MenuBar bar;      // the pull-down menus
    SideMenu side;    // the side menu column
};

// 1, or 0 when the file cannot be opened. path is the full path.
int MenuBar_Load(MenuBar* bar, const char* path);
void MenuBar_Free(MenuBar* bar);
// A command code, -1 (not on the menus) or -2 (on them, nothing chosen).
int MenuBar_Track(MenuBar* bar, int x, int y, int buttons);
void MenuBar_Close(MenuBar* bar);

// name is a file in the support directory. 0 on failure, with the reason
// kept as the fatal message ("Can't load SIDEMENU", "Main Menu <1000> is not
// present!").
int SideMenu_Load(const char* name);
int SideMenu_Show(int number);
// -10 off the side menu, -9 on it with nothing chosen, a command code, or
// -2 STRING, -3 NUMBER, -4 KEYWORD (the row's argument is then in the input line).
int SideMenu_Track(int x, int y, int buttons);
void SideMenu_Unhighlight();
void SideMenu_Close();
