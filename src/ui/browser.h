// browser.h - the file browser: browser.dlg with a ten-row list of
// subdirectories and matching files, the name, directory and drive fields,
// scroll buttons and five pattern check boxes.
//
// Modes and their patterns: 0 "*.*", 1 "*.exe", 2 "*.dxf", 3 "*.raw",
// 4 "*.qmr"; any other mode (SAVE AS uses 5) starts with the work file's
// name + ".qmr". From mode 4 on, a typed name is cut at its first "." or
// at 8 characters and ".qmr" is put there. The state (directory, name)
// is kept between calls.
#pragma once

#include "ui/ui_state.h"

enum BrowserMode {
    BROWSE_ALL = 0,
    BROWSE_EXE = 1,
    BROWSE_DXF = 2,
    BROWSE_RAW = 3,
    BROWSE_WORKFILE = 4,
    BROWSE_SAVE_AS = 5,
};

// 1 with the chosen full path in g.run.workFilePath; 0 when cancelled or
// browser.dlg is missing ("Can't find browser.dlg, or Out of Memory!").
int Browser_Run(int mode);
// Reads the directory and fills rows 20..29 from entry `offset` on;
// returns the number of entries.
int Browser_List(Dialog* dialog, int offset);
// The name rule of modes 4 and up: text cut at its first "." or at 8
// characters, ".qmr" put there. out holds 128 bytes.
void Browser_WorkFileName(const char* text, char* out);
