// cmd_file.cpp - the file commands: EXIT, NEW, OPEN, SAVE, SAVE AS, MERGE,
// IMPORT DXF, IMPORT RAW, CLEAR. The file names come from the browser.
//
// A save that EXIT or NEW asked for and that did not happen (SAVE AS
// cancelled, a failed write) keeps the program where it is, with the reason
// shown: no path loses the user's work without a word.
#include <cstdio>
#include <cstring>

#include "base/field.h"
#include "base/message.h"
#include "cmd/ask.h"
#include "cmd/cmd.h"
#include "gfx/gfx.h"
#include "scene/layers.h"
#include "startup/startup.h"
#include "state.h"
#include "ui/browser.h"
#include "ui/menu.h"
#include "view/view_commands.h"
#include "workfile/workfile.h"

namespace {

// SAVE AS: a name from the browser, then the scene written there. The
// command's result; *saved is 1 when the scene was written.
int SaveAs(int* saved) {
    *saved = 0;
    g.input.InputResult.code = 0;
    g.browser.saveAsMode = 1;
    const int chosen = Browser_Run(BROWSE_SAVE_AS);
    g.browser.saveAsMode = 0;
    if (!chosen) return 0;
    Msg_Printf("\nSaving <%s>...", g.run.workFilePath);
    *saved = WorkFile_Save(g.run.workFilePath);
    if (!*saved) {
        if (g.workfile.Write_Error && X11_IsOpen()) X11_GetKey();   // "...Press any key!"
        Msg_Printf("\nUnable to Save File!");
        return 0;
    }
    return 1;
}

// Browser in `mode` for an existing file: 1 with its path in workFilePath.
int ChooseFile(int mode) {
    g.input.InputResult.code = 0;
    return Browser_Run(mode);
}

// SAVE: the command's result; *saved is 1 when the scene was written.
int Save(int* saved) {
    *saved = 0;
    if (SameName(g.run.workFileName, "UNTITLED")) return SaveAs(saved);
    char scene[13], image[13];
    memcpy(scene, g.run.Scene_Name, sizeof scene);
    memcpy(image, g.run.Image_Name, sizeof image);
    Msg_Printf("\nSaving <%s>...", g.run.workFileName);
    *saved = WorkFile_Save(g.run.currentFilePath);
    if (!*saved) {
        if (g.workfile.Write_Error) {   // the file was created, a write failed
            Msg_Printf("\nUnable to save file, Out of disk space...Press any key!");
            if (X11_IsOpen()) X11_GetKey();   // no keyboard before the window exists
        }
        Msg_Printf("\nUnable to Save File!");
    }
    memcpy(g.run.Scene_Name, scene, sizeof scene);
    memcpy(g.run.Image_Name, image, sizeof image);
    return 1;
}

// The question "Save changes?" of EXIT and NEW answered Yes: 1 when the
// scene was saved, else 0 with the reason why `what` does not go on.
int SaveBefore(const char* what) {
    int saved;
    Save(&saved);
    if (saved) return 1;
    Msg_Printf("\n%s cancelled: the scene was not saved.", what);
    g.input.InputResult.code = 0;
    return 0;
}

}  // namespace

int Save_Scene(int* saved) { return Save(saved); }

int Com_SaveAs() {
    int saved;
    return SaveAs(&saved);
}

int Com_Open() {
    if (!ChooseFile(BROWSE_WORKFILE)) return 1;
    if (!SameName(g.run.workFileName, "UNTITLED")) {
        char prompt[128];
        snprintf(prompt, sizeof prompt, "\nOPEN> Save changes to <%s>? <Yes,No> <N>: ", g.run.workFileName);
        int yes;
        if (!Ask_YesNo("Y,N", prompt, 0, &yes)) return 0;
        if (yes) {
            char chosen[sizeof g.run.workFilePath];
            memcpy(chosen, g.run.workFilePath, sizeof chosen);
            if (!SaveBefore("OPEN")) return 1;
            memcpy(g.run.workFilePath, chosen, sizeof chosen);   // a save as may have used it
        }
    }
    if (WorkFile_Load(g.run.workFilePath)) Zoom_ResetAll();
    else Msg_Printf("...Can't Open or Import File!");
    return 1;
}

int Com_Merge() {
    if (!ChooseFile(BROWSE_WORKFILE)) return 1;
    if (!WorkFile_Merge(g.run.workFilePath)) Msg_Printf("...Can't Open or Merge File!");
    return 1;
}

int Com_ImportDxf() {
    if (!ChooseFile(BROWSE_DXF)) return 1;
    Import_Dxf(g.run.workFilePath);
    return 1;
}

int Com_ImportRaw() {
    if (!ChooseFile(BROWSE_RAW)) return 1;
    Import_Raw(g.run.workFilePath);
    return 1;
}

int Com_Save() {
    int saved;
    return Save(&saved);
}

int Com_Exit() {
    SideMenu_Show(1512);
    char prompt[128];
    snprintf(prompt, sizeof prompt, "\nEXIT> Save changes to <%s>? <Yes,No> <Yes>: ",
             g.run.workFileName);
    int yes;
    if (!Ask_YesNo("N,Y", prompt, 1, &yes)) return 0;
    if (yes) return SaveBefore("EXIT");
    return 1;
}

int Com_New() {
    char prompt[128];
    snprintf(prompt, sizeof prompt, "NEW> Save changes to <%s>? <Yes,No> <N>: ", g.run.workFileName);
    int yes;
    if (!Ask_YesNo("Y,N", prompt, 0, &yes)) return 0;
    if (yes) return SaveBefore("NEW");
    return 1;
}

int Com_Clear() {
    int yes;
    if (!Ask_YesNo("Y,N", "\nCLEAR> Are you Sure you want to start from scratch? <Y/N> <N>: ", 0, &yes))
        return 0;
    if (!yes) return 1;
    Scene_Clear();
    if (!Layer_NewFirst()) {
        SetFatalMessage("Unable to setup first layer.");
        Exit(1);
    }
    Views_RedrawAll();
    return 1;
}
