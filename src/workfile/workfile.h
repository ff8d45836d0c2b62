// workfile.h - the program's own binary scene file (.qmr): writer (always
// version 2.10), readers for 2.10 and the older 2.0A, and merge.
#pragma once
#include <cstdio>

#include "workfile/workfile_state.h"


// Each returns 1 on success, 0 on failure with a message already printed
// where the format has one. A save that failed in its writes (out of disk
// space, as opposed to a file that could not be created) leaves
// g.workfile.Write_Error set;
// a failed load or merge says why in g.workfile.Load_Problem.
int WorkFile_Load(const char* path);
int WorkFile_Save(const char* path);
int WorkFile_Merge(const char* path);
// Reads the 35-byte magic from f: 1 for version 2.10, 2 for 2.0A. Otherwise
// closes f, prints the "Not a ... work file!" message and returns 0.
int WorkFile_CheckMagic(FILE* f);
