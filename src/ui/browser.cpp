// browser.cpp - the file browser over browser.dlg.
//
// Element ids: 1 accept, 0 cancel; 3, 4 scroll up a page / a row; 5, 6 down a page /
// a row; 10 drive, 11 file name, 12 directory (text boxes); 13..17 the
// patterns of modes 0..4 (check boxes); 20..29 the ten list rows.
//
// The list is: "[.]" first when no directory is set, then every
// subdirectory as "[name]", then the files matching the name field. Names
// are sorted and kept whole here, so a row cut to fit its box still
// chooses the right file. "*.*" means every name, as users know it.
#include "ui/browser.h"

#include <dirent.h>
#include <fnmatch.h>
#include <sys/stat.h>

#include <algorithm>
#include <cstdio>
#include <cstring>
#include <string>

#include "base/field.h"
#include "gfx/gfx.h"
#include "state.h"
#include "ui/dialog.h"

namespace {

enum {
    ID_ACCEPT = 1,
    ID_PAGE_UP = 3,
    ID_ROW_UP = 4,
    ID_PAGE_DOWN = 5,
    ID_ROW_DOWN = 6,
    ID_DRIVE = 10,
    ID_NAME = 11,
    ID_DIR = 12,
    ID_PATTERN_FIRST = 13,   // 13..17: modes 0..4
    ID_PATTERN_LAST = 17,
    ID_ROW_FIRST = 20,       // 20..29
    ID_ROW_LAST = 29,
};
constexpr int kRows = 10;
constexpr size_t kMaxEntries = 100000;   // a larger directory lists its first names

const char* const kPatterns[] = {"*.*", "*.exe", "*.dxf", "*.raw", "*.qmr"};

BrowserState& B() { return g.browser; }

bool Matches(const char* pattern, const char* name) {
    if (strcmp(pattern, "*.*") == 0) pattern = "*";
    return fnmatch(pattern, name, FNM_CASEFOLD) == 0;
}

void ReadDirectory(std::vector<std::string>* out) {
    out->clear();
    const std::string dir = B().browseDir[0] ? B().browseDir : ".";
    if (!B().browseDir[0]) out->push_back("[.]");
    DIR* dp = opendir(dir.c_str());
    if (!dp) return;
    std::vector<std::string> dirs, files;
    while (dirent* e = readdir(dp)) {
        if (dirs.size() + files.size() >= kMaxEntries) break;
        std::string full = dir + "/" + e->d_name;
        struct stat st;
        if (stat(full.c_str(), &st) != 0) continue;
        if (S_ISDIR(st.st_mode)) dirs.push_back(std::string("[") + e->d_name + "]");
        else if (Matches(B().browseName, e->d_name)) files.push_back(e->d_name);
    }
    closedir(dp);
    // "[.]" and "[..]" first, in that order; then by name
    std::sort(dirs.begin(), dirs.end(), [](const std::string& a, const std::string& b) {
        const int ra = a == "[.]" ? 0 : a == "[..]" ? 1 : 2, rb = b == "[.]" ? 0 : b == "[..]" ? 1 : 2;
        return ra != rb ? ra < rb : a < b;
    });
    std::sort(files.begin(), files.end());
    out->insert(out->end(), dirs.begin(), dirs.end());
    out->insert(out->end(), files.begin(), files.end());
}

void ShowFields(Dialog* d) {
    Dialog_SetText(d, ID_DRIVE, B().browseDrive);
    Dialog_SetText(d, ID_NAME, B().browseName);
    Dialog_SetText(d, ID_DIR, B().browseDir);
}

void CheckPattern(Dialog* d, int mode) {
    for (int id = ID_PATTERN_FIRST; id <= ID_PATTERN_LAST; id++)
        Dialog_SetCheck(d, id, id - ID_PATTERN_FIRST == mode);
}

// The directory one level up: the last "/" part removed. The root stays
// the root, so that going up never falls back to the current directory.
void GoUp() {
    char* dir = B().browseDir;
    const bool absolute = dir[0] == '/';
    char* slash = strrchr(dir, '/');
    if (slash) *slash = '\0';
    else dir[0] = '\0';
    if (absolute && !dir[0]) strcpy(dir, "/");
}

void Enter(const std::string& name) {
    char* dir = B().browseDir;
    std::string next = !dir[0] ? name : std::string(dir) + (dir[strlen(dir) - 1] == '/' ? "" : "/") + name;
    CopyCut(dir, sizeof B().browseDir, next.c_str());
}

// A list row was clicked; 1 when the listing changed.
int Row(Dialog* d, int entry) {
    if (entry < 0 || entry >= (int)B().entries.size()) return 0;
    const std::string text = B().entries[entry];
    if (text.empty()) return 0;
    if (text[0] != '[') {
        CopyCut(B().browseName, sizeof B().browseName, text.c_str());
        Dialog_SetText(d, ID_NAME, B().browseName);
        return 0;
    }
    const std::string name = text.substr(1, text.size() - 2);
    if (name == ".") return 0;
    if (name == "..") GoUp();
    else Enter(name);
    Dialog_SetText(d, ID_DIR, B().browseDir);
    return 1;
}

// The chosen path into workFilePath; 1 when it may be accepted.
int Accept() {
    const char* dir = B().browseDir;
    std::string path;
    if (!dir[0]) path = B().browseName;   // the current directory, which is the one listed
    else path = std::string(dir) + (dir[strlen(dir) - 1] == '/' ? "" : "/") + B().browseName;
    CopyCut(g.run.workFilePath, sizeof g.run.workFilePath, path.c_str());
    if (B().saveAsMode) {
        // A pattern or a bare extension names no file to write.
        const char* n = B().browseName;
        if (!n[0] || strpbrk(n, "*?[") || n[0] == '.') return 0;
        return 1;
    }
    struct stat st;
    if (stat(path.c_str(), &st) != 0 || S_ISDIR(st.st_mode)) return 0;
    FILE* f = fopen(path.c_str(), "r");
    if (!f) return 0;
    fclose(f);
    return 1;
}

}  // namespace

void Browser_WorkFileName(const char* text, char* out) {
    size_t n = strcspn(text, ".");
    if (n > 8) n = 8;
    snprintf(out, 128, "%.*s.qmr", (int)n, text);
}

int Browser_List(Dialog* d, int offset) {
    ReadDirectory(&B().entries);
    const int total = (int)B().entries.size();
    for (int row = 0; row < kRows; row++) {
        const int entry = offset + row;
        Dialog_SetText(d, ID_ROW_FIRST + row, entry >= 0 && entry < total ? B().entries[entry].c_str() : "");
    }
    return total;
}

int Browser_Run(int mode) {
    Dialog d;
    if (!Dialog_Open(&d, "browser.dlg")) return 0;
    if (B().browseFirstUse) {
        B().browseFirstUse = 0;
        char path[FIELD_MAX], dir[100];
        snprintf(path, sizeof path, "%s/*.*", g.config.WORK_DIR);
        X11_SplitPath(path, nullptr, dir, nullptr, nullptr);
        CopyCut(B().browseDir, sizeof B().browseDir, dir);
        strcpy(B().browseName, "*.*");
    }
    if (mode >= 0 && mode <= 4) strcpy(B().browseName, kPatterns[mode]);
    else snprintf(B().browseName, sizeof B().browseName, "%s.qmr", g.run.workFileName);
    ShowFields(&d);
    CheckPattern(&d, mode);
    int offset = 0;
    int total = Browser_List(&d, offset);

    int result = -1;
    DialogResult r;
    while (result < 0) {
        Dialog_Run(&d, &r);
        int relist = 0;
        switch (r.id) {
            case -1:
            case 0: result = 0; break;   // Ctrl-C, or the Cancel button
            case ID_ACCEPT:
                if (Accept()) result = 1;
                break;
            case ID_PAGE_UP:
            case ID_ROW_UP:
            case ID_PAGE_DOWN:
            case ID_ROW_DOWN: {
                static const int kStep[] = {-kRows, -1, kRows, 1};
                int next = offset + kStep[r.id - ID_PAGE_UP];
                if (next > total - kRows) next = total - kRows;
                if (next < 0) next = 0;
                if (next != offset) {
                    offset = next;
                    total = Browser_List(&d, offset);
                }
                break;
            }
            case ID_DRIVE:
                if (Dialog_EditText(&d, ID_DRIVE)) {
                    B().browseDrive[0] = d.editBuffer[0];
                    B().browseDrive[1] = '\0';
                    B().browseDir[0] = '\0';
                    relist = 1;
                }
                ShowFields(&d);
                break;
            case ID_NAME:
                if (Dialog_EditText(&d, ID_NAME)) {
                    if (mode >= BROWSE_WORKFILE) Browser_WorkFileName(d.editBuffer, B().browseName);
                    else CopyCut(B().browseName, sizeof B().browseName, d.editBuffer);
                    relist = 1;
                }
                Dialog_SetText(&d, ID_NAME, B().browseName);
                break;
            case ID_DIR:
                if (Dialog_EditText(&d, ID_DIR)) {
                    CopyCut(B().browseDir, sizeof B().browseDir, d.editBuffer);
                    relist = 1;
                }
                Dialog_SetText(&d, ID_DIR, B().browseDir);
                break;
            default:
                if (r.id >= ID_PATTERN_FIRST && r.id <= ID_PATTERN_LAST) {
                    CheckPattern(&d, r.id - ID_PATTERN_FIRST);
                    strcpy(B().browseName, kPatterns[r.id - ID_PATTERN_FIRST]);
                    Dialog_SetText(&d, ID_NAME, B().browseName);
                    relist = 1;
                } else if (r.id >= ID_ROW_FIRST && r.id <= ID_ROW_LAST) {
                    relist = Row(&d, offset + r.id - ID_ROW_FIRST);
                }
                break;
        }
        if (relist) {
            offset = 0;
            total = Browser_List(&d, offset);
        }
    }
    Dialog_Close(&d);
    return result;
}
