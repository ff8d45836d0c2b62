// startup_state.h - state of start-up: the configuration values and the
// work-file cycle. Types only.
#pragma once

// Colour indices of the screen elements, in the order of the [VIDEO] keys.
struct ScreenColors {
    int background, foreground, general_color;
    int view_bkcolor, view_fgcolor, view_boarder, view_text, view_center;
    int view_xaxis, view_yaxis, view_zaxis, view_grid, view_blip, view_camera;
    int dialog_bk, dialog_fg, dialog_trim, dialog_shadow;
    int menu_bkcolor, menu_fgcolor, menu_selectbk, menu_selectfg;
    int msub_bkcolor, msub_fgcolor, msub_selectbk, msub_selectfg, msub_shadow;
    int side_selectbk, side_selectfg;
};

struct ConfigState {
    char QMR_DIR[100];          // main directory
    char WORK_DIR[100];         // work directory: work files, textures.wrk
    char SUPPORT_DIR[100];      // menus, dialogs, command.dat
    char POV_DIR[100];          // where the ray-tracer program is
    char Scenes_Dir[100];       // scene files and option files are written here
    char Images_Dir[100];       // the ray tracer writes its image here
    char Include_Dir[100];      // the ray tracer's include directory
    char MainMenu_Name[13];     // pull-down menu file
    char SideMenu_Name[13];     // side menu file
    char Tracer_Program[13];    // ray-tracer program file name
    char Font_Name[13];         // system font file
    int Video_Mode;             // 18, 256..261
    int Optimize_PovOut;        // scene writer option
    int Beep_Sounds;            // beep on errors
    int Bezier_Output;          // scene writer option
    int Crosshairs_Color;       // WHITE or GRAY
    int Crosshairs_Full;        // 1: crosshair across the drawing area, 0: small cross
    int Crosshairs_Size;        // half-size of the small cross in pixels
    int Mouse_SpeedX, Mouse_SpeedY;
    int Undo_Steps;             // UNDO goes back at most this many commands
    long Undo_Memory;           // bytes the kept undo and redo steps may use together
    ScreenColors colors;
};

struct RunState {
    char workFilePath[256];     // work file to load next, or the browser's choice
    char currentFilePath[256];  // work file last loaded or saved
    char workFileName[13];      // name without directory and extension
    char Scene_Name[13];        // base name of the scene file
    char Image_Name[13];        // base name of the image and option file
    int restartFlag;            // NEW ended the command loop
    int cleanExit;              // set by Exit before cleanup
    char fatalMessage[256];     // last fatal error, "\n" appended
};
