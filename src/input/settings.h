// settings.h - named settings: a table of settings addressed by name, through
// which dialogs, menus and the work file read and write them.
//
// Each name has a type. Var_Access copies between the setting and a scratch
// value of that type; the typed accessors convert around it. Names compare
// exactly in length and without regard to case.
#pragma once
#include <cstddef>


#include "input/input_state.h"

// read = 1 copies the setting into the scratch value of its type, read = 0
// writes the scratch value into it (text settings ignore writes). 1 when the
// name is known.
int Var_Access(const char* name, int read);

// 1 when the name is known and the type fits: GetInt takes int and double
// (truncated) settings, GetDouble int and double, GetPoint only points,
// GetText any (double "%g", int "%d", point "%g,%g,%g").
int Var_GetInt(const char* name, int* out);
int Var_GetDouble(const char* name, double* out);
int Var_GetText(const char* name, char* out, size_t size);
int Var_GetPoint(const char* name, Point3* out);
// Write, then read the stored value back into *value (so a clamped value is
// seen). 1 when the name is known.
int Var_SetInt(const char* name, int* value);
int Var_SetDouble(const char* name, double* value);
int Var_SetPoint(const char* name, const Point3* value);
