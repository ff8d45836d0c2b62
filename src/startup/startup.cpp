// startup.cpp - start-up order, the work-file cycle and the orderly exit.
//
// Start reading at Startup_Run(): banner, signals, configuration, directory
// check, display, menus, then load -> command loop -> (NEW: load again |
// EXIT: Exit(0)). Every way out goes through Exit() or, for the fatal
// directory check, Shutdown() directly.
#include "startup/startup.h"

#include <unistd.h>

#include <cerrno>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <cstring>

#include "base/field.h"
#include "base/message.h"
#include "cmd/cmd.h"
#include "cmd/undo.h"
#include "gfx/gfx.h"
#include "gfx/screen.h"
#include "input/status_line.h"
#include "scene/layers.h"
#include "startup/config.h"
#include "state.h"
#include "ui/menu.h"
#include "view/view_commands.h"
#include "view/viewport.h"
#include "workfile/workfile.h"

namespace {

void OnTerminate(int sig) { Exit(sig); }
void OnFpe(int) {}   // floating-point errors are ignored

void InstallSignals() {
    signal(SIGTERM, OnTerminate);
    signal(SIGINT, OnTerminate);
    signal(SIGQUIT, OnTerminate);
    signal(SIGABRT, SIG_DFL);
    signal(SIGILL, SIG_DFL);
    signal(SIGSEGV, SIG_DFL);
    signal(SIGFPE, OnFpe);
    signal(SIGXFSZ, SIG_IGN);   // a file-size limit fails the write, which is reported
}

void BuildScreenAndMenus() {
    // Viewports fill the screen between the menu bar and the three bottom lines.
    Views_SetScreen(g.screen.width, g.screen.height, SCREEN_LINE, g.screen.inputLineY);
    Views_SetAreaWidth(g.screen.sideMenuX);
    Views_Reset();
    Screen_DrawFrame();
    Msg_Printf("\nLoading-> %s", g.config.MainMenu_Name);
    char path[FIELD_MAX * 2];
    snprintf(path, sizeof path, "%s/%s", g.config.SUPPORT_DIR, g.config.MainMenu_Name);
    if (!MenuBar_Load(&g.menus.bar, path)) {
        SetFatalMessage("Error: Unable to load Menu File");
        Exit(1);
    }
    Msg_Printf("\nLoading-> %s", g.config.SideMenu_Name);
    if (!SideMenu_Load(g.config.SideMenu_Name)) Exit(1);   // its message is the fatal one
}

void SetWorkPath(const char* name) {
    snprintf(g.run.workFilePath, sizeof g.run.workFilePath, "%s/%s", g.config.WORK_DIR, name);
}

}  // namespace

void Shutdown() {
    MenuBar_Free(&g.menus.bar);
    Undo_Clear();
    Scene_Clear();
    Zoom_FreeAll();
    X11_MouseReset();
    unlink("texture.tmp");
    fflush(stdout);
    exit(g.run.cleanExit ? 0 : 1);
}

void Exit(int status) {
    g.run.cleanExit = 1;
    if (status != 0) fputs(g.run.fatalMessage, stdout);
    Shutdown();
}

void Startup_FirstWorkFile(int argc, char** argv) {
    if (argc < 2) {
        SetWorkPath("qmr.qmr");
        return;
    }
    // An absolute argument stands as it is; a relative one is taken in the
    // work directory. Only the file name is cut at its first ".": a dot in a
    // directory (~/.qmr/work, /home/jo.doe) never cuts the path.
    if (argv[1][0] == '/')
        snprintf(g.run.workFilePath, sizeof g.run.workFilePath, "%s", argv[1]);
    else
        SetWorkPath(argv[1]);
    char* p = g.run.workFilePath;
    char* name = strrchr(p, '/');
    name = name ? name + 1 : p;
    name[strcspn(name, ".")] = '\0';
    size_t n = strlen(p);
    snprintf(p + n, sizeof g.run.workFilePath - n, ".qmr");
}

void Startup_MakeUntitled() {
    SetWorkPath("untitled");
    strcpy(g.run.workFileName, "untitled");
    strcpy(g.run.Scene_Name, "untitled");
    strcpy(g.run.Image_Name, "untitled");
}

void Startup_ReportLoadProblem(const char* path) {
    switch (g.workfile.Load_Problem) {
        case WF_CANT_OPEN:
            if (g.workfile.Load_Errno == ENOENT || g.workfile.Load_Errno == ENOTDIR)
                Msg_Printf("\nCan't Find File <%s>.", path);
            else
                Msg_Printf("\nCan't Open File <%s>: %s.", path, strerror(g.workfile.Load_Errno));
            break;
        case WF_FOREIGN:   // the reader has said what it is not
            Msg_Printf("\n<%s> was not loaded.", path);
            break;
        case WF_DAMAGED:
            // Saving the part over the damaged file would lose what could
            // still be recovered from it: the scene gets no name.
            Msg_Printf("\nFile <%s> is cut short or damaged: what could be read is loaded, untitled.",
                       path);
            Startup_MakeUntitled();
            break;
        default: break;
    }
}

int Startup_LoadWorkFile() {
    // Only a file that opens renames the scene (the reader does it); a missing
    // one leaves the name as it was, so a default scene becomes "untitled".
    int ok = WorkFile_Load(g.run.workFilePath);
    if (ok)
        Msg_Printf("\n<%s> File Loaded!", g.run.workFileName);
    else
        Startup_ReportLoadProblem(g.run.workFilePath);
    if (SameName(g.run.workFileName, "qmr")) Startup_MakeUntitled();
    return ok;
}

void Startup_Restart() {
    SetWorkPath("qmr.qmr");
    // The default file normally does not exist: the new scene is "untitled"
    // and not the one that was open.
    strcpy(g.run.workFileName, "qmr");
    Scene_Clear();
}

void Startup_Run(int argc, char** argv) {
    printf("\"Quillmoor Sculptor\" version 2.10");
    printf("-X11-pl2, %s\n\n", "Jan  8 1996");
    fflush(stdout);
    InstallSignals();
    Commands_Install();
    Config_SetDefaults();
    Config_Read();
    Config_CheckDirs();
    Screen_Open(g.config.Video_Mode);
    BuildScreenAndMenus();
    Startup_FirstWorkFile(argc, argv);
    for (;;) {
        int loaded = Startup_LoadWorkFile();
        if (!g.scene.First_Layer && !Layer_NewFirst()) {
            SetFatalMessage("Unable to setup first layer.");
            Exit(1);
        }
        g.run.restartFlag = 0;
        const Layer* layer = g.scene.Current_Layer;
        Status_Draw({layer ? layer->name : "", layer ? (int)layer->color : 0, g.aids.orthoOn,
                     g.view.Active_Viewport.SNAP, "0, 0, 0"});
        if (!loaded) Views_RedrawAll();   // a loaded file has drawn its views
        Zoom_ResetAll();
        Undo_Clear();   // nothing before a loaded or new scene to go back to
        CommandLoop();
        if (!g.run.restartFlag) Exit(0);
        Startup_Restart();
    }
}
