// config.cpp - configuration defaults, the configuration file and the
// directory check.
//
// The file is found once (qmr.ini here, then $QMRRC, then ~/.qmrrc, then the
// installation's qmr.ini) and read section by section; each "key = a, b" line
// is rewritten as key(a,b) for the shared field reader. Nothing in the file
// can stop the program: unknown or malformed lines are skipped.
#include "startup/config.h"

#include <unistd.h>

#include <algorithm>
#include <cstddef>
#include <cstdio>
#include <cstdlib>
#include <cstring>

#include "base/field.h"
#include "startup/startup.h"
#include "state.h"

namespace {

const char* const kColourNames[16] = {
    "BLACK", "BLUE",  "GREEN",  "CYAN",  "RED",  "MAGENTA",  "BROWN",  "GRAY",
    "DGRAY", "LBLUE", "LGREEN", "LCYAN", "LRED", "LMAGENTA", "YELLOW", "WHITE",
};

const char* const kModeNames[] = {
    "640x480x16", "640x400x256", "640x480x256", "800x600x16",
    "800x600x256", "1024x768x16", "1024x768x256",
};

struct ColourKey {
    const char* key;
    int ScreenColors::*field;
    int deflt;
};

const ColourKey kColourKeys[] = {
    {"background", &ScreenColors::background, 1},
    {"foreground", &ScreenColors::foreground, 15},
    {"general_color", &ScreenColors::general_color, 14},
    {"view_bkcolor", &ScreenColors::view_bkcolor, 0},
    {"view_fgcolor", &ScreenColors::view_fgcolor, 7},
    {"view_boarder", &ScreenColors::view_boarder, 12},
    {"view_text", &ScreenColors::view_text, 15},
    {"view_center", &ScreenColors::view_center, 15},
    {"view_xaxis", &ScreenColors::view_xaxis, 1},
    {"view_yaxis", &ScreenColors::view_yaxis, 14},
    {"view_zaxis", &ScreenColors::view_zaxis, 12},
    {"view_grid", &ScreenColors::view_grid, 15},
    {"view_blip", &ScreenColors::view_blip, 15},
    {"view_camera", &ScreenColors::view_camera, 4},
    {"dialog_bk", &ScreenColors::dialog_bk, 14},
    {"dialog_fg", &ScreenColors::dialog_fg, 0},
    {"dialog_trim", &ScreenColors::dialog_trim, 7},
    {"dialog_shadow", &ScreenColors::dialog_shadow, 8},
    {"menu_bkcolor", &ScreenColors::menu_bkcolor, 15},
    {"menu_fgcolor", &ScreenColors::menu_fgcolor, 1},
    {"menu_selectbk", &ScreenColors::menu_selectbk, 1},
    {"menu_selectfg", &ScreenColors::menu_selectfg, 15},
    {"msub_bkcolor", &ScreenColors::msub_bkcolor, 15},
    {"msub_fgcolor", &ScreenColors::msub_fgcolor, 1},
    {"msub_selectbk", &ScreenColors::msub_selectbk, 1},
    {"msub_selectfg", &ScreenColors::msub_selectfg, 15},
    {"msub_shadow", &ScreenColors::msub_shadow, 8},
    {"side_selectbk", &ScreenColors::side_selectbk, 15},
    {"side_selectfg", &ScreenColors::side_selectfg, 1},
};

enum Section { SEC_NONE, SEC_DIRECTORIES, SEC_FILENAMES, SEC_VIDEO, SEC_OTHER };

// Key -> directory field of [DIRECTORIES].
struct DirKey {
    const char* key;
    size_t offset;
};

const DirKey kDirKeys[] = {
    {"qmrmain", offsetof(ConfigState, QMR_DIR)},
    {"qmrwork", offsetof(ConfigState, WORK_DIR)},
    {"support", offsetof(ConfigState, SUPPORT_DIR)},
    {"povray", offsetof(ConfigState, POV_DIR)},
    {"scenes", offsetof(ConfigState, Scenes_Dir)},
    {"pov_out", offsetof(ConfigState, Images_Dir)},
    {"library", offsetof(ConfigState, Include_Dir)},
};

const DirKey kFileKeys[] = {
    {"popup", offsetof(ConfigState, MainMenu_Name)},
    {"side", offsetof(ConfigState, SideMenu_Name)},
    {"povray", offsetof(ConfigState, Tracer_Program)},
};

char* ConfigField(size_t offset) { return reinterpret_cast<char*>(&g.config) + offset; }

// The first blank-delimited word of a line.
void FirstWord(char* word, size_t size, const char* line) {
    CopyCut(word, size, line);
    word[strcspn(word, " \t")] = '\0';
}

Section SectionByName(const char* line) {
    char word[FIELD_MAX];
    FirstWord(word, sizeof word, line);
    if (SameName(word, "[DIRECTORIES]")) return SEC_DIRECTORIES;
    if (SameName(word, "[FILENAMES]")) return SEC_FILENAMES;
    if (SameName(word, "[VIDEO]")) return SEC_VIDEO;
    if (SameName(word, "[OTHER]")) return SEC_OTHER;
    return SEC_NONE;
}

bool IsEnd(const char* line) {
    char word[FIELD_MAX];
    FirstWord(word, sizeof word, line);
    return SameName(word, "[END]");
}

// Value n of a key line; false when it is missing or empty.
bool Value(char* out, const char* line, int n) {
    return GetField(out, line, n) && out[0] != '\0';
}

void ReadDirectoryKey(const char* key, const char* line) {
    char value[FIELD_MAX];
    for (const DirKey& d : kDirKeys) {
        if (!SameName(key, d.key)) continue;
        if (Value(value, line, 1)) CopyCut(ConfigField(d.offset), 100, value);
        return;
    }
}

void ReadFileNameKey(const char* key, const char* line) {
    char value[FIELD_MAX];
    for (const DirKey& d : kFileKeys) {
        if (!SameName(key, d.key)) continue;
        if (Value(value, line, 1)) CopyCut(ConfigField(d.offset), 13, value);
        return;
    }
}

void ReadVideoKey(const char* key, const char* line) {
    char value[FIELD_MAX];
    if (SameName(key, "videomode")) {
        if (Value(value, line, 1)) g.config.Video_Mode = Config_VideoMode(value);
        return;
    }
    for (const ColourKey& c : kColourKeys) {
        if (!SameName(key, c.key)) continue;
        g.config.colors.*c.field = Value(value, line, 1) ? Config_ColourByName(value) : 0;
        return;
    }
}

void ReadOtherKey(const char* key, const char* line) {
    char v1[FIELD_MAX], v2[FIELD_MAX];
    bool has1 = Value(v1, line, 1);
    bool has2 = Value(v2, line, 2);
    ConfigState& c = g.config;
    if (SameName(key, "optimize_povout")) {
        if (has1) c.Optimize_PovOut = atoi(v1);
    } else if (SameName(key, "beep_sounds")) {
        if (has1) c.Beep_Sounds = atoi(v1);
    } else if (SameName(key, "bezier_output")) {
        if (has1) c.Bezier_Output = atoi(v1);
    } else if (SameName(key, "crosshairs_color")) {
        if (has1) c.Crosshairs_Color = abs(atoi(v1)) == 1 ? 15 : 7;
    } else if (SameName(key, "chrosshairs_type")) {
        if (has1) {
            c.Crosshairs_Full = atoi(v1) == 0;
            if (!c.Crosshairs_Full && has2) c.Crosshairs_Size = abs(atoi(v2));
        }
    } else if (SameName(key, "mouse_speed")) {
        if (has1) c.Mouse_SpeedX = atoi(v1);
        if (has2) c.Mouse_SpeedY = atoi(v2);
    } else if (SameName(key, "undo_steps")) {
        if (has1) c.Undo_Steps = std::clamp(atoi(v1), 0, 1000);
    } else if (SameName(key, "undo_memory")) {   // megabytes
        if (has1) c.Undo_Memory = (long)std::clamp(atoi(v1), 1, 4096) << 20;
    }
}

// Reads one line of at most 253 characters; the rest of a longer line is
// skipped. False at the end of the file.
bool ReadConfigLine(FILE* f, char* line) {
    if (!fgets(line, 254, f)) return false;
    size_t n = strlen(line);
    if (n > 0 && line[n - 1] != '\n' && !feof(f)) {
        int ch;
        while ((ch = fgetc(f)) != EOF && ch != '\n') {
        }
    }
    line[strcspn(line, ";\r\n")] = '\0';
    return true;
}

}  // namespace

int Config_ColourByName(const char* line) {
    for (int i = 0; i < 16; i++)
        if (SameName(line, kColourNames[i])) return i;
    return 16;
}

int Config_VideoMode(const char* name) {
    for (int i = 0; i < (int)(sizeof kModeNames / sizeof kModeNames[0]); i++)
        if (SameName(name, kModeNames[i])) return i == 0 ? 18 : 255 + i;
    printf("\nWarning: Couldn't find match <%s>, using default \"640x480x16\" mode\n", name);
    return 18;
}

void Config_SetDefaults() {
    ConfigState& c = g.config;
    for (const ColourKey& k : kColourKeys) c.colors.*k.field = k.deflt;
    c.Video_Mode = 18;
    strcpy(c.QMR_DIR, "/qmr");
    strcpy(c.WORK_DIR, "/qmr/work");
    strcpy(c.SUPPORT_DIR, "/qmr/support");
    strcpy(c.POV_DIR, "/povray");
    strcpy(c.Scenes_Dir, "/povray/scenes");
    strcpy(c.Images_Dir, "/povray/scenes");
    strcpy(c.Include_Dir, "/povray/include");
    strcpy(c.MainMenu_Name, "main.mnu");
    strcpy(c.SideMenu_Name, "side.mnu");
    strcpy(c.Tracer_Program, "povray.exe");
    strcpy(c.Font_Name, "system.fon");
    c.Optimize_PovOut = 1;
    c.Beep_Sounds = 1;
    c.Bezier_Output = 1;
    c.Crosshairs_Color = 7;
    c.Crosshairs_Full = 1;
    c.Crosshairs_Size = 10;
    c.Mouse_SpeedX = c.Mouse_SpeedY = 8;
    c.Undo_Steps = 50;
    c.Undo_Memory = 32L << 20;
    strcpy(g.run.workFileName, "qmr");
    strcpy(g.run.Scene_Name, "qmr");
    strcpy(g.run.Image_Name, "qmr");
}

void Config_ReadFile(const char* path) {
    FILE* f = fopen(path, "r");
    if (!f) return;
    char line[256];
    Section section = SEC_NONE;
    while (ReadConfigLine(f, line)) {
        if (line[0] == '\0') continue;
        if (section == SEC_NONE) {
            section = SectionByName(line);
            continue;
        }
        if (IsEnd(line)) {
            section = SEC_NONE;
            continue;
        }
        // key = a, b  ->  key(a,b)
        char keyed[FIELD_MAX];
        size_t n = 0;
        for (const char* p = line; *p && n < sizeof keyed - 2; p++) keyed[n++] = *p == '=' ? '(' : *p;
        keyed[n++] = ')';
        keyed[n] = '\0';
        char key[FIELD_MAX];
        if (!GetField(key, keyed, 0)) continue;
        switch (section) {
            case SEC_DIRECTORIES: ReadDirectoryKey(key, keyed); break;
            case SEC_FILENAMES: ReadFileNameKey(key, keyed); break;
            case SEC_VIDEO: ReadVideoKey(key, keyed); break;
            case SEC_OTHER: ReadOtherKey(key, keyed); break;
            case SEC_NONE: break;
        }
    }
    fclose(f);
}

void Config_Read() {
    char path[FIELD_MAX * 2];
    FILE* f = nullptr;
    auto tryOpen = [&](const char* p) {
        CopyCut(path, sizeof path, p);
        f = fopen(path, "r");
        return f != nullptr;
    };
    if (!tryOpen("qmr.ini")) {
        if (const char* rc = getenv("QMRRC")) {
            tryOpen(rc);
        } else if (const char* home = getenv("HOME")) {
            char p[FIELD_MAX * 2];
            snprintf(p, sizeof p, "%s/.qmrrc", home);
            if (!tryOpen(p)) {
                const char* qmr = getenv("QMR");
                if (qmr)
                    snprintf(p, sizeof p, "%s/qmr.ini", qmr);
                else
                    snprintf(p, sizeof p, "/usr/local/lib/qmr/qmr.ini");
                tryOpen(p);
            }
        }
    }
    if (!f) {
        printf("\nWARNING: Can't open qmr.ini");
        printf("\nPlease read QMR.DOC for help on installing QMR\n");
        return;
    }
    fclose(f);
    Config_ReadFile(path);
}

void Config_CheckDirs() {
    struct Check {
        const char* key;
        const char* dir;
        bool fatal;
    };
    const Check checks[] = {
        {"qmrmain", g.config.QMR_DIR, true},   {"qmrwork", g.config.WORK_DIR, true},
        {"support", g.config.SUPPORT_DIR, true}, {"povray", g.config.POV_DIR, false},
        {"scenes", g.config.Scenes_Dir, false}, {"pov_out", g.config.Images_Dir, false},
    };
    for (const Check& c : checks) {
        if (chdir(c.dir) == 0) continue;
        if (c.fatal) {
            printf("\nFAITAL ERROR: QMR.INI contains an invalid directory");
            printf("\nDirectory in question: %s", c.dir);
            printf("\nPlease modify the \"%s\" statement in QMR.INI,", c.key);
            printf("\nand read QMR.DOC for more information on");
            if (c.dir == g.config.QMR_DIR) {
                printf("\nInstalling QMR.");
            } else {
                printf("\nInstalling QMR.\n");
                if (chdir(g.config.QMR_DIR) != 0) {
                }
            }
            fflush(stdout);
            Shutdown();
        }
        printf("\nWarning: QMR.INI contains an invalid directory");
        printf("\nDirectory in question: %s", c.dir);
        printf("\nPlease modify the \"%s\" statement in QMR.INI,", c.key);
        printf("\nand read QMR.DOC for more information on");
        printf("\nInstalling QMR before proceeding.");
        printf("\n\nPress any key to continue\n");
    }
    if (chdir(g.config.WORK_DIR) != 0) {
    }
    fflush(stdout);
}
