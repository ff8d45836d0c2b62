// workfile.h - the program's own binary scene file.
#pragma once

// Each returns 1 on success, 0 on failure with a message already printed
// where the format says so.
int WorkFile_Load(const char* path);
int WorkFile_Save(const char* path);
int WorkFile_Merge(const char* path);
