// command_names.cpp - command.dat: typed command names and hot keys to
// command codes.
//
// The file is read once, on the first lookup (normally while the menu files
// are loaded). Each line NAME(code[,hotkey]) becomes one record; lines
// without a name or a code are skipped. The table grows with the file, so
// no line is lost however long it is. A missing file is retried at the next
// lookup and leaves every name unknown.
#include <cstdio>
#include <cstdlib>
#include <cstring>

#include "ui/command_names.h"

#include "base/field.h"
#include "state.h"

namespace {

constexpr int kLineMax = 254;   // characters read per line

// Reads one line of at most kLineMax characters; the last character read
// (normally the newline) is removed, the rest of a longer line is left for
// the next read, as a fixed-size read would do.
bool ReadLine(FILE* f, char* line) {
    if (!fgets(line, kLineMax + 1, f)) return false;
    size_t n = strlen(line);
    if (n > 0) line[n - 1] = '\0';
    return true;
}

}  // namespace

int Command_ReadTable() {
    MenuState& in = g.menus;
    char path[FIELD_MAX * 2];
    snprintf(path, sizeof path, "%s/command.dat", g.config.SUPPORT_DIR);
    FILE* f = fopen(path, "r");
    if (!f) return 0;
    in.CommandTable.clear();
    char line[kLineMax + 2], field[FIELD_MAX];
    while (ReadLine(f, line)) {
        CommandName rec{};
        if (!GetField(field, line, 1)) continue;
        CopyCut(rec.name, sizeof rec.name, field);
        if (!GetField(field, line, 2)) continue;
        rec.code = atoi(field);
        rec.hotKey = GetField(field, line, 3) ? atoi(field) : -1;
        in.CommandTable.push_back(rec);
    }
    fclose(f);
    in.commandsUnread = 0;
    return 1;
}

int Command_Lookup(const char* name) {
    if (g.menus.commandsUnread && !Command_ReadTable()) return 0;
    for (const CommandName& r : g.menus.CommandTable)
        if (SameName(r.name, name)) return r.code;
    return 0;
}

int Command_HotKey(int character) {
    for (const CommandName& r : g.menus.CommandTable)
        if (r.hotKey != -1 && r.hotKey == character) return r.code;
    return 0;
}
