// menu.h - the pull-down menu bar and the side menu, both read from text
// files in the support directory.
//
// Menu entries name commands by their command.dat name. The side menu file
// holds many numbered menus and stays open; showing a menu reads the file
// again from the start.
#pragma once

#include "gfx/screen.h"
#include "ui/ui_state.h"

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
