// startup.h - the program's outer loop, orderly exit and file commands.
#pragma once

#include "startup/startup_state.h"


[[noreturn]] void Exit(int status);
[[noreturn]] void Shutdown();

// Start-up steps 1 to 8 and the work-file cycle; never returns.
[[noreturn]] void Startup_Run(int argc, char** argv);
// Start-up step 8: the first work file from the command line.
void Startup_FirstWorkFile(int argc, char** argv);
// Cycle step 1 and 2: load workFilePath, rename a default scene to "untitled".
// Returns the load result.
int Startup_LoadWorkFile();
// After a failed load of `path`: says why (missing, unreadable, not a work
// file, damaged). A damaged file's part that was loaded becomes "untitled",
// so that no SAVE writes over what is left of the original.
void Startup_ReportLoadProblem(const char* path);
// The scene is called "untitled", its path the work directory's "untitled".
void Startup_MakeUntitled();
// After NEW: the default work file next, an empty scene.
void Startup_Restart();
