// command_names.h - command.dat: typed command names and hot keys to
// command codes.
#pragma once

// The code of a typed name (same length, case ignored), or 0. The first
// lookup reads command.dat; a missing file is tried again next time.
int Command_Lookup(const char* name);
// The code of a hot key character, or 0 (none before the first lookup).
int Command_HotKey(int character);
// Reads command.dat from the support directory; 1 when it was read.
int Command_ReadTable();
