// script.cpp - scripted sessions: `qmr --script FILE [workfile]` runs the
// lines of FILE as if typed at the prompts, on the in-memory display.
//
// The program starts as usual (configuration, menus, the work file) and its
// command loop runs; the script feeds it one line at a time, only when the
// program waits and the display's queue is empty, so the line being typed
// and the prompt waiting for it are always known. A line is typed and ended
// with Enter; an empty line is Enter alone. Lines starting with "#" are
// comments; lines starting with "!" are the things a keyboard line cannot
// carry:
//
//   !key NAME         Escape, Enter, Insert, F1..F10, Ctrl-A..Ctrl-Z
//   !click x,y,z      a left click at a world point of the active viewport
//   !pixel x,y        a left click at a pixel (menus)
//   !dialog FILE KIND ID
//                     a left click on the element of a support dialog
//                     (KIND BUTTON, CHECK, TEXTBOX or SHAPE), placed as the
//                     dialog runtime centres the dialog on the screen
//   !button LABEL     a left click on the button of the waiting dialog whose
//                     label, blanks trimmed, is LABEL (any case)
//   !box ID           a left click on the text box ID of the waiting dialog
//   !row ID N [right] a left (or right) click on row N of its list area ID
//   !screenshot FILE  the screen as it is now, written as a PNG picture
//
// The session ends when the script is used up and the program waits again.
// Status: 0 when that wait is at "Command:" (every line consumed, the last
// command finished); 1 when a line was refused (an unknown command, invalid
// coordinates, a keyword or point not accepted) or a directive is wrong; 2
// when the script ended while a command still waits; 3 when the script
// cannot be read. The reason goes to standard error as FILE:LINE: text.
#include "startup/script.h"

#include <algorithm>
#include <cctype>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <string>
#include <vector>

#include "base/field.h"
#include "cmd/undo.h"
#include "gfx/gfx.h"
#include "gfx/headless/headless.h"
#include "scene/layers.h"
#include "startup/startup.h"
#include "state.h"
#include "ui/menu.h"
#include "view/view_commands.h"
#include "view/viewport.h"

namespace {

struct Script {
    std::string name;                 // as given, for messages
    std::vector<std::string> lines;
    size_t next = 0;                  // index of the next line to feed
    size_t fed = 0;                   // 1-based number of the line fed last, 0 none
    std::string log;                  // the program's messages since that line
    int status = 0;
    std::string reason;
};

Script* s_script = nullptr;

// Messages that mean the prompt refused what the line typed.
const char* const kRefusals[] = {
    "Unknown Command",
    "Invalid coordinates",
    "Can't accept a KEYWORD",
    "Can't Accept a Point",
    "Can't accept a STRING",
    "*Can't be in 3D View*",
};

std::string Trimmed(const char* prompt) {
    std::string p = prompt;
    while (!p.empty() && (p[0] == '\n' || p[0] == ' ')) p.erase(0, 1);
    while (!p.empty() && p.back() == ' ') p.pop_back();
    return p;
}

void Fail(int status, const std::string& reason) {
    s_script->status = status;
    s_script->reason = reason;
}

int KeyNamed(const std::string& name) {
    struct Named {
        const char* name;
        int key;
    };
    static const Named kNamed[] = {
        {"Escape", KEY_ESCAPE}, {"Enter", KEY_ENTER}, {"Insert", KEY_INSERT},
        {"Backspace", KEY_BACKSPACE},
    };
    for (const Named& n : kNamed)
        if (strcasecmp(name.c_str(), n.name) == 0) return n.key;
    if (name.size() == 6 && strncasecmp(name.c_str(), "Ctrl-", 5) == 0 && isalpha((unsigned char)name[5]))
        return toupper((unsigned char)name[5]) - 'A' + 1;
    if ((name[0] == 'F' || name[0] == 'f') && name.size() <= 3) {
        int n = atoi(name.c_str() + 1);
        if (n >= 1 && n <= 10) return KEY_F1 + (n - 1) * 256;
    }
    return 0;
}

// The pixel of the first cell of element `id` of `kind` in a support dialog;
// 0 when the file or the element is not there.
int DialogSpot(const char* file, const char* kind, int id, int* x, int* y) {
    char path[FIELD_MAX * 2];
    snprintf(path, sizeof path, "%s/%s", g.config.SUPPORT_DIR, file);
    FILE* f = fopen(path, "r");
    if (!f) return 0;
    const int cw = X11_TextWidth("h"), cols = g.screen.width / cw, rows = g.screen.height / SCREEN_LINE;
    // Where the column, row and id fields are for each kind.
    int c = 1, r = 2, i = 3;
    if (SameName(kind, "TEXTBOX")) c = 0, r = 1, i = 3;
    if (SameName(kind, "SHAPE")) c = 2, r = 3, i = 4;
    int left = 0, top = 0, found = 0;
    char line[256], key[FIELD_MAX], v[6][FIELD_MAX];
    while (!found && fgets(line, sizeof line, f)) {
        if (!GetField(key, line, 0)) continue;
        int n = 0;
        while (n < 6 && GetField(v[n], line, n + 1)) n++;
        if (SameName(key, "CAPTION") && n >= 2) {
            left = (cols + 1) / 2 - atoi(v[0]) / 2 - 1;
            top = (rows + 1) / 2 - atoi(v[1]) / 2 - 1;
        } else if (SameName(key, kind) && n > i && atoi(v[i]) == id) {
            *x = (left + atoi(v[c])) * cw + cw / 2;
            *y = (top + atoi(v[r])) * SCREEN_LINE + SCREEN_LINE / 2;
            found = 1;
        }
    }
    fclose(f);
    return found;
}

std::string Blanks(const char* text) {
    std::string t = text;
    while (!t.empty() && t.back() == ' ') t.pop_back();
    return t.substr(std::min(t.size(), t.find_first_not_of(' ')));
}

// The centre of cell (column, row) of the screen.
void ClickCell(int column, int row, int button = MOUSE_LEFT) {
    const int cw = X11_TextWidth("h");
    Headless_PushClick(column * cw + cw / 2, row * SCREEN_LINE + SCREEN_LINE / 2, button);
}

// A click on an element of the dialog waiting in its run; 0 when there is
// no such dialog or element.
int WaitingDialogClick(const char* word, const std::string& rest) {
    const Dialog* d = g.runningDialog;
    if (!d) return 0;
    if (strcasecmp(word, "button") == 0) {
        for (const DlgButton& b : d->buttonList) {
            const std::string label = Blanks(b.text);
            if (!label.empty() && strcasecmp(label.c_str(), rest.c_str()) == 0) {
                ClickCell(b.column + (int)(strlen(b.text) / 2), b.row);
                return 1;
            }
        }
        return 0;
    }
    if (strcasecmp(word, "box") == 0) {
        for (const DlgTextBox& t : d->textBoxes)
            if (t.id == atoi(rest.c_str())) {
                ClickCell(t.column, t.row);
                return 1;
            }
        return 0;
    }
    int id = 0, n = 0;
    char side[16] = "";
    if (sscanf(rest.c_str(), "%d %d %15s", &id, &n, side) < 2 || (side[0] && strcasecmp(side, "right") != 0))
        return 0;
    for (const DlgGraph& a : d->graphs)
        if (a.id == id && n >= 0 && n <= a.bottom - a.top) {
            ClickCell(a.left + 2, a.top + n, side[0] ? MOUSE_RIGHT : MOUSE_LEFT);
            return 1;
        }
    return 0;
}

// Queues a "!" line: 1 when input was queued, 2 when it was done without
// input, 0 when it is not understood.
int Directive(const std::string& line) {
    char word[16] = "";
    int used = 0;
    if (sscanf(line.c_str(), "!%15s %n", word, &used) < 1) return 0;
    const std::string rest = line.substr(used);
    if (strcasecmp(word, "key") == 0) {
        int key = KeyNamed(rest);
        if (!key) return 0;
        Headless_PushKey(key);
        return 1;
    }
    if (strcasecmp(word, "click") == 0) {
        Point3 p{0, 0, 0};
        if (sscanf(rest.c_str(), "%lf,%lf,%lf", &p.x, &p.y, &p.z) != 3) return 0;
        Viewport& vp = g.view.Active_Viewport;
        View_Project(&vp, p);
        Headless_PushClick((int)vp.screen_x, (int)vp.screen_y);
        return 1;
    }
    if (strcasecmp(word, "dialog") == 0) {
        char file[64], kind[16];
        int id, x, y;
        if (sscanf(rest.c_str(), "%63s %15s %d", file, kind, &id) != 3) return 0;
        if (!DialogSpot(file, kind, id, &x, &y)) return 0;
        Headless_PushClick(x, y);
        return 1;
    }
    if (strcasecmp(word, "button") == 0 || strcasecmp(word, "box") == 0 || strcasecmp(word, "row") == 0)
        return WaitingDialogClick(word, rest);
    if (strcasecmp(word, "screenshot") == 0) {
        if (rest.empty() || !Headless_DumpPNG(rest.c_str())) return 0;
        return 2;   // nothing queued: the next line follows at once
    }
    if (strcasecmp(word, "pixel") == 0) {
        int x, y;
        if (sscanf(rest.c_str(), "%d,%d", &x, &y) != 2) return 0;
        Headless_PushClick(x, y);
        return 1;
    }
    return 0;
}

// Did the line fed last make the program refuse something?
void CheckLastLine() {
    Script& s = *s_script;
    s.log += Headless_Transcript();
    Headless_ClearTranscript();
    if (s.fed == 0 || s.status) return;
    for (const char* r : kRefusals)
        if (s.log.find(r) != std::string::npos) {
            Fail(1, "\"" + s.lines[s.fed - 1] + "\": " + r + ", at prompt \"" +
                        Trimmed(g.input.promptText) + "\"");
            return;
        }
}

// The display's feeder: the next line, or 0 to end the session.
int Feed() {
    Script& s = *s_script;
    CheckLastLine();
    if (s.status) return 0;
    while (s.next < s.lines.size()) {
        const std::string& line = s.lines[s.next++];
        s.fed = s.next;
        s.log.clear();
        if (!line.empty() && line[0] == '#') continue;
        if (!line.empty() && line[0] == '!') {
            const int done = Directive(line);
            if (done == 2) continue;
            if (done) return 1;
            Fail(1, "\"" + line + "\": not a directive, or nothing for it to click (!key NAME, !click x,y,z, "
                    "!pixel x,y, !dialog FILE KIND ID, !button LABEL, !box ID, !row ID N [right], !screenshot FILE)");
            return 0;
        }
        Headless_PushText(line.c_str());
        Headless_PushKey(KEY_ENTER);
        return 1;
    }
    // Used up: finished only when the command loop asks for a command.
    if (g.input.currentCommand != 0 || g.input.transparentActive)
        Fail(2, "the script ended while a prompt waits: \"" + Trimmed(g.input.promptText) + "\"");
    return 0;
}

int ReadLines(const char* path, Script* s) {
    FILE* f = strcmp(path, "-") == 0 ? stdin : fopen(path, "r");
    if (!f) return 0;
    std::string line;
    for (int c; (c = fgetc(f)) != EOF;) {
        if (c == '\n') {
            if (!line.empty() && line.back() == '\r') line.pop_back();
            s->lines.push_back(line);
            line.clear();
        } else {
            line += (char)c;
        }
    }
    if (!line.empty()) s->lines.push_back(line);
    if (f != stdin) fclose(f);
    return 1;
}

}  // namespace

int Script_Run(const char* path, int argc, char** argv) {
    Script script;
    script.name = strcmp(path, "-") == 0 ? "<stdin>" : path;
    if (!ReadLines(path, &script)) {
        fprintf(stderr, "%s: can't read the script\n", script.name.c_str());
        return 3;
    }
    s_script = &script;
    Headless_SetFeeder(Feed);
    try {
        Startup_Run(argc, argv);   // returns only through the display's end of input
    } catch (const Headless_InputExhausted&) {
    }
    Headless_SetFeeder(nullptr);
    s_script = nullptr;
    if (script.status)
        fprintf(stderr, "%s:%zu: %s\n", script.name.c_str(), script.status == 2 ? script.lines.size() : script.fed,
                script.reason.c_str());
    // The orderly exit's frees, without its exit().
    MenuBar_Free(&g.menus.bar);
    Undo_Clear();
    Scene_Clear();
    Zoom_FreeAll();
    return script.status;
}
