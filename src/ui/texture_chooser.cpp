// texture_chooser.cpp - the texture chooser (texture.dlg).
//
// Element ids: 10..19 ten names of the list from the first index on, 20 the
// chosen name; 6 and 7 move the window up by ten and by one, 8 and 9 down
// by ten and by one; 2 edits the chosen texture; 1 OK, 0 Cancel.
//
// The list is the file "texture.tmp" in the current directory, rebuilt
// each time the chooser opens and after every edit: 22-byte entries (a
// NUL-terminated name), first the library's names in file order, then the
// names of "textures.dat" in line order. It stays open while the chooser
// runs and is read an entry at a time, so a long list costs no memory.
#include <strings.h>

#include <cstdio>
#include <cstring>
#include <string>
#include <vector>

#include "base/message.h"
#include "pov/texture_lists.h"
#include "pov/textures.h"
#include "state.h"
#include "ui/dialog.h"
#include "ui/texture_dialogs.h"
#include "ui/texture_fields.h"

namespace {

enum {
    ID_CANCEL = 0,
    ID_OK = 1,
    ID_EDIT = 2,
    ID_UP_TEN = 6,
    ID_UP_ONE = 7,
    ID_DOWN_TEN = 8,
    ID_DOWN_ONE = 9,
    ID_ROW_FIRST = 10,
    ID_CHOSEN = 20,
};
constexpr int kRows = 10;
constexpr int kEntry = 22;

struct List {
    FILE* file = nullptr;  // "texture.tmp"
    int size = 0;          // entries
    int library = 0;       // entries that are library textures (the first ones)
};

// Rebuilds "texture.tmp"; 0 (its message printed) when a file can't be opened.
int Build(List* list) {
    if (list->file) fclose(list->file);
    *list = List{};
    std::vector<std::string> predefined, library;
    TextListReport lines;
    char path[256];
    snprintf(path, sizeof path, "%s/textures.dat", g.config.SUPPORT_DIR);
    if (!TextureNames_Read(path, &predefined, &lines)) {
        Msg_Printf("Can't open textures.dat");
        return 0;
    }
    LibraryReport lib;
    if (!Texture_ListNames(&library, &lib)) {
        Msg_Printf("Can't open/create textures.wrk");
        return 0;
    }
    list->file = fopen("texture.tmp", "w+b");
    if (!list->file) {
        Msg_Printf("Can't open/create texture.tmp");
        return 0;
    }
    if (lines.badLines)
        Msg_Printf("\ntextures.dat: %d damaged line%s skipped, the first is line %d: %s", lines.badLines,
                   lines.badLines == 1 ? "" : "s", lines.firstBadLine, lines.firstReason);
    if (lib.tailBytes)
        Msg_Printf("\ntextures.wrk: the last %ld bytes are not a whole record and are left out",
                   lib.tailBytes);
    if (lib.badNames)
        Msg_Printf(
            "\ntextures.wrk: %ld records without a usable name left out (the first is record %ld)",
            lib.badNames, lib.firstBadName);
    auto put = [&](const std::string& name) {
        char entry[kEntry] = {};
        memcpy(entry, name.data(), name.size() < 20 ? name.size() : 20);
        fwrite(entry, sizeof entry, 1, list->file);
    };
    for (const std::string& n : library) put(n);
    for (const std::string& n : predefined) put(n);
    if (fflush(list->file) != 0 || ferror(list->file)) {
        Msg_Printf("Can't open/create texture.tmp");
        fclose(list->file);
        list->file = nullptr;
        return 0;
    }
    list->library = (int)library.size();
    list->size = (int)(library.size() + predefined.size());
    return 1;
}

// Entry i of the list; "" past its end.
std::string Entry(const List& list, int i) {
    char entry[kEntry + 1] = {};
    if (i < 0 || i >= list.size || fseek(list.file, (long)i * kEntry, SEEK_SET) != 0 ||
        fread(entry, kEntry, 1, list.file) != 1)
        return "";
    entry[20] = '\0';
    return entry;
}

int LastFirst(const List& list) {
    return list.size > kRows ? list.size - kRows : 0;
}

void Show(Dialog* d, const List& list, int first, const char* chosen) {
    for (int i = 0; i < kRows; i++) {
        std::string shown = Entry(list, first + i);
        if (first + i < list.library) shown += "  (library)";
        Dialog_SetText(d, ID_ROW_FIRST + i, shown.c_str());
    }
    Dialog_SetText(d, ID_CHOSEN, chosen);
}

// The list's spelling of a name typed in any case; the typed text when the
// list does not have it.
std::string Lookup(const List& list, const char* typed) {
    for (int i = 0; i < list.size; i++) {
        std::string e = Entry(list, i);
        if (strcasecmp(e.c_str(), typed) == 0) return e;
    }
    char n[21];
    TextureName_Get(n, typed);
    return n;
}

// Opens the editor on the chosen texture: the library's record when it has
// one, else a new texture of that name.
void Edit(const char* chosen) {
    TextureState& ts = g.writer.textures;
    snprintf(ts.Current_Texture_Name, sizeof ts.Current_Texture_Name, "%s", chosen);
    TextureRecord r{};
    if (chosen[0] && Texture_Load(&r, chosen)) {
        Texture_Edit(&r, 0);
    } else {
        TextureName_Set(r.name, chosen);
        Texture_Edit(&r, 1);
    }
}

}  // namespace

int Texture_Choose(int allow_edit) {
    Dialog d;
    if (!Dialog_Open(&d, "texture.dlg")) return 0;
    List list;
    if (!Build(&list)) {
        Dialog_Close(&d);
        return 0;
    }
    char chosen[21];
    snprintf(chosen, sizeof chosen, "%s", g.writer.textures.Current_Texture_Name);
    int first = 0, result = 0;
    Show(&d, list, first, chosen);
    DialogResult r;
    for (;;) {
        Dialog_Run(&d, &r);
        if (r.id == ID_OK) {
            snprintf(g.writer.textures.Current_Texture_Name, sizeof chosen, "%s", chosen);
            result = 1;
            break;
        }
        if (r.id == ID_CANCEL || r.id == -1) break;
        if (r.id == ID_UP_TEN)
            first = first > kRows ? first - kRows : 0;
        else if (r.id == ID_UP_ONE)
            first = first > 0 ? first - 1 : 0;
        else if (r.id == ID_DOWN_TEN)
            first = first + kRows < LastFirst(list) ? first + kRows : LastFirst(list);
        else if (r.id == ID_DOWN_ONE)
            first = first < LastFirst(list) ? first + 1 : LastFirst(list);
        else if (r.id >= ID_ROW_FIRST && r.id < ID_ROW_FIRST + kRows &&
                 first + r.id - ID_ROW_FIRST < list.size)
            snprintf(chosen, sizeof chosen, "%s", Entry(list, first + r.id - ID_ROW_FIRST).c_str());
        else if (r.id == ID_CHOSEN && Dialog_EditText(&d, ID_CHOSEN))
            snprintf(chosen, sizeof chosen, "%s", Lookup(list, d.editBuffer).c_str());
        else if (r.id == ID_EDIT && allow_edit) {
            Edit(chosen);
            if (!Build(&list)) {
                Msg_Printf("\nFatal Error...aborting");
                break;
            }
            snprintf(chosen, sizeof chosen, "%s", g.writer.textures.Current_Texture_Name);
            if (first > LastFirst(list)) first = LastFirst(list);
        }
        Show(&d, list, first, chosen);
    }
    if (list.file) fclose(list.file);
    Dialog_Close(&d);
    return result;
}

const char* Texture_ChooseName() {
    return Texture_Choose(1) ? g.writer.textures.Current_Texture_Name : nullptr;
}
