// config.h - configuration values, their defaults, the configuration file
// reader and the directory check.
#pragma once

#include "startup/startup_state.h"

void Config_SetDefaults();
void Config_Read();
void Config_ReadFile(const char* path);   // one file, already chosen
void Config_CheckDirs();
int Config_ColourByName(const char* line);
int Config_VideoMode(const char* name);
