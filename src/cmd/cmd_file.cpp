// cmd_file.cpp - the file commands: EXIT, NEW, SAVE, SAVE AS, CLEAR.
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
#include "ui/menu.h"
#include "view/view_commands.h"
#include "workfile/workfile.h"

namespace {

// SAVE AS without its file browser: nothing is chosen, so nothing is saved.
int SaveAs(int* saved) {
    *saved = 0;
    return 0;
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

int Com_SaveAs() {
    int saved;
    return SaveAs(&saved);
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
