// script.h - scripted sessions on the in-memory display (script.cpp).
#pragma once

// Runs the program with argc/argv as its own command line (the work file in
// argv[1]), typing the lines of the script at `path` ("-": standard input).
// The exit status: 0 every line consumed and the last command finished; 1 a
// line was refused; 2 the script ended while a prompt waits; 3 unreadable.
int Script_Run(const char* path, int argc, char** argv);
