// workfile.cpp - placeholder until the work-file format lands: nothing can be
// read or written yet, so every load fails and every save reports failure.
#include "workfile/workfile.h"

int WorkFile_Load(const char*) { return 0; }
int WorkFile_Save(const char*) { return 0; }
int WorkFile_Merge(const char*) { return 0; }
