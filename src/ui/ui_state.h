// ui_state.h - state of the interface resources: the pull-down menus, the
// side menu, the command names of command.dat, dialogs and the file
// browser. Types only.
#pragma once

#include <cstdio>
#include <string>
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

// --- dialogs ------------------------------------------------------------------

// Elements of a dialog; positions are character cells, absolute on the
// screen once loaded (the dialog's top-left cell added).
struct DlgButton {
    char text[41];
    int column, row;
    int highlighted;
    int id;
};

struct DlgCheck {
    int column, row;
    int checked;
    int highlighted;
    int id;
};

// The label of the TEXTBOX with the same id.
struct DlgInput {
    char text[41];
    int column, row;
    int id;
};

struct DlgTextBox {
    char text[256];
    int column, row;
    int width;          // cells
    int highlighted;
    int id;
};

struct DlgShape {
    char label[41];
    int column, row;
    int highlighted;
    int id;
    int pictureX, pictureY;   // pixel position of its picture; the frame is drawn around it
    int hasPicture;
};

struct DlgGraph {
    int left, top, right, bottom;   // cells, inclusive
    int id;
    int flag;
};

struct Dialog {
    Dialog() = default;
    Dialog(const Dialog&) = delete;   // it owns the screen saved under it
    Dialog& operator=(const Dialog&) = delete;
    ~Dialog();   // frees a screen save still held when a run was cut short
    char editBuffer[256] = "";   // the text typed by Dialog_EditText
    int open = 0;                // 1 after CAPTION
    int left = 0, top = 0, right = 0, bottom = 0;   // cells
    ScreenSave saved{};          // what lay under the dialog
    int mouseX = 0, mouseY = 0;  // the dialog's own pointer state
    int buttons = 0, previousButtons = 0;
    int clicked = 0;
    int pointerX = 0, pointerY = 0;   // where its pointer is drawn
    int pointerShown = 0;
    long closesSeen = 0;         // dialogs closed before this one's last run
    std::vector<DlgButton> buttonList;
    std::vector<DlgCheck> checks;
    std::vector<DlgInput> inputs;
    std::vector<DlgTextBox> textBoxes;
    std::vector<DlgShape> shapes;
    std::vector<DlgGraph> graphs;
};

// The pixel rectangle dialog drawing is kept inside: the box of the dialog
// being drawn, so that closing it restores every pixel it touched.
struct DialogClip {
    long x1 = 0, y1 = 0, x2 = -1, y2 = -1;
};

struct DialogResult {
    int id;          // -1 cancelled
    char text[128];  // a TEXTBOX's text
    int value;       // row offset inside a GRAPH, negative unless the left button
};

// --- file browser ---------------------------------------------------------------

// Kept between calls, so the browser reopens where it was left.
struct BrowserState {
    char browseDrive[2] = "";     // always empty on this system
    char browseDir[256] = "";     // the directory being listed
    char browseName[128] = "";    // the file-name field: a pattern or a name
    int browseFirstUse = 1;       // 1 until the first call
    int saveAsMode = 0;           // SAVE AS: the chosen file need not exist
    std::vector<std::string> entries;   // the list as last read, whole names
};
