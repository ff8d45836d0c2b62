// startup.h - the program's outer loop, orderly exit and file commands.
#pragma once

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

[[noreturn]] void Exit(int status);
[[noreturn]] void Shutdown();
const char* SetFatalMessage(const char* text);

// Start-up steps 1 to 8 and the work-file cycle; never returns.
[[noreturn]] void Startup_Run(int argc, char** argv);
// Start-up step 8: the first work file from the command line.
void Startup_FirstWorkFile(int argc, char** argv);
// Cycle step 1 and 2: load workFilePath, rename a default scene to "untitled".
// Returns the load result.
int Startup_LoadWorkFile();
// After NEW: the default work file next, an empty scene.
void Startup_Restart();

int Com_New();
int Com_Save();
int Com_SaveAs();
int Com_Clear();
int Com_Exit();
