// render.h - what RENDER hands the ray tracer: the option file of its
// command-line switches, the DOS batch file "render.bat", and the start of
// the ray tracer as a child process.
//
// Both files are written through a temporary, so a failed write leaves the
// old file, and the failure is reported in the message area. The child is
// never waited for here: the event pump of the display layer reaps it.
#pragma once

#include <cstddef>
#include <string>

// The option file's path: Scenes_Dir (POV_DIR when it is empty) + "/" +
// Scene_Name + ".cml".
void Render_OptionPath(char* out, size_t size);

// The texts of the two files for the current settings, as they are written.
std::string Render_OptionText();
std::string Render_BatText();

// Writes the option file, and "render.bat" when Write_Render_Bat is set.
// 1 written; 2 failed (message printed).
int Write_Render_Options();

// Writes "render.bat" in the current directory. 0 written; 2 failed
// (message printed).
int Write_Render_Bat();

// Starts POV_DIR + "/" + Tracer_Program with the option file's path as its
// one argument, without waiting. The child reports a failed exec on
// standard error and exits with status 1. Returns the child's pid, or -1
// when no process could be made.
int Render_StartTracer();
