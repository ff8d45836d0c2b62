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

// Writes the scene into *s (freed first). 1, or 0 out of memory (s empty).
int WorkFile_Snapshot(WfSnapshot* s);
// 1 when the scene now writes the same bytes as s up to its views; this
// allocates nothing.
int WorkFile_SameScene(const WfSnapshot* s);
// Replaces the scene, the settings and the stored viewports by those of s;
// stored viewport `slot` becomes the working one. Neither prints "Redrawing"
// nor redraws. 1, or 0 when memory ran out on the way (part is restored).
int WorkFile_Restore(const WfSnapshot* s, int slot);
void WorkFile_FreeSnapshot(WfSnapshot* s);
