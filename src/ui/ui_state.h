// ui_state.h - state of the interface resources: the pull-down menus, the
// side menu and the command names of command.dat. Types only.
#pragma once

#include <cstdio>
#include <vector>

#include "gfx/gfx_state.h"

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

// command.dat: one typed name with its code and hot key.
struct CommandName {
    char name[40];       // as typed, at most 39 characters
    int code;            // command code
    int hotKey;          // character code, -1 none
};

struct MenuState {
    MenuBar bar;      // the pull-down menus
    SideMenu side;    // the side menu column
    std::vector<CommandName> CommandTable;   // command.dat, grows past 200 lines
    int commandsUnread = 1;                  // command.dat not read yet
};
