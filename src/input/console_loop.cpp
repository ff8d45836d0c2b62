// console_loop.cpp - a line-oriented stand-in for the interactive prompt.
//
// Until the window, menus and command.dat drive input, commands are read as
// lines from standard input: a command name at "Command: ", keywords, numbers
// or words at a command's prompt. End of input at "Command: " leaves through
// the orderly exit.
#include <cstdio>
#include <cstdlib>
#include <cstring>

#include "input/message.h"
#include "state.h"
#include "ui/field.h"

namespace {

struct NameCode {
    const char* name;
    int code;
};

const NameCode kCommands[] = {
    {"EXIT", 101}, {"NEW", 102}, {"SAVE", 104}, {"CLEAR", 150},
};

int ReadLine(char* buf, int size) {
    if (!fgets(buf, size, stdin)) return 0;
    size_t n = strcspn(buf, "\r\n");
    if (buf[n] == '\0' && n == (size_t)size - 1) {   // drop the rest of a long line
        int c;
        while ((c = getchar()) != EOF && c != '\n') {
        }
    }
    buf[n] = '\0';
    return 1;
}

}  // namespace

int Command_Lookup(const char* name) {
    for (const NameCode& c : kCommands)
        if (SameName(c.name, name)) return c.code;
    return 0;
}

int Input_MatchKeyword(const char* list, const char* word) {
    if (!list || !*word) return 0;
    int index = 1;
    const char* p = list;
    while (*p) {
        const char* end = strchr(p, ',');
        size_t len = end ? (size_t)(end - p) : strlen(p);
        if (len == strlen(word) && strncasecmp(p, word, len) == 0) return index;
        if (!end) break;
        p = end + 1;
        index++;
    }
    return 0;
}

void Input_SetMask(int flags) { g.input.inputMask = flags; }

// The stand-in draws no rubber band; typed points are taken as absolute.
void Input_SetRubberBand(const double*, const char*, const char*) {}

namespace {

// "x,y" or "x,y,z" typed at a prompt that accepts points.
bool TypedPoint(const char* text, double* out) {
    double v[3] = {0, 0, 0};
    int n = 0;
    const char* p = text;
    while (n < 3) {
        char* end;
        v[n] = strtod(p, &end);
        if (end == p) return false;
        n++;
        if (*end == '\0') break;
        if (*end != ',') return false;
        p = end + 1;
    }
    if (n < 2) return false;
    if (out) memcpy(out, v, sizeof v);
    return true;
}

}  // namespace

void Input_SetKeywords(const char* keywords, int allowNumber, int allowString) {
    g.input.keywordsOn = keywords != nullptr;
    snprintf(g.input.keywordText, sizeof g.input.keywordText, "%s", keywords ? keywords : "");
    g.input.allowNumber = allowNumber;
    g.input.allowString = allowString;
}

int Input_Get(const char* prompt, double* pointOut) {
    InputResultRec& r = g.input.InputResult;
    snprintf(g.input.promptText, sizeof g.input.promptText, "%s", prompt);
    int result = 1;
    for (;;) {
        Msg_Printf("%s", g.input.promptText);
        r.code = 0;
        if (!ReadLine(r.text, sizeof r.text)) {
            if (g.input.currentCommand == 0) Exit(0);
            r.kind = -1;   // end of input answers like an empty Enter
            r.text[0] = '\0';
            break;
        }
        if (r.text[0] == '\0') {
            r.kind = -1;
            break;
        }
        int k = g.input.keywordsOn ? Input_MatchKeyword(g.input.keywordText, r.text) : 0;
        if (k > 0) {
            r.kind = k;
            break;
        }
        if (int code = Command_Lookup(r.text); code > 0) {
            r.code = code;
            result = 0;
            break;
        }
        if (!(g.input.inputMask & 1) && g.input.currentCommand != 0 && TypedPoint(r.text, pointOut)) {
            r.kind = 0;
            break;
        }
        char* end;
        double v = strtod(r.text, &end);
        if (g.input.allowNumber && end != r.text && *end == '\0') {
            r.kind = -3;
            r.number = v;
            break;
        }
        if (g.input.allowString) {
            r.kind = -2;
            break;
        }
        if (g.input.currentCommand == 0) {
            Msg_Printf("\nUnknown Command");
            continue;
        }
        Msg_Printf("\nInvalid input");
    }
    g.input.inputMask = 0;
    g.input.keywordsOn = 0;
    g.input.keywordText[0] = '\0';
    g.input.allowNumber = g.input.allowString = 0;
    return result;
}

int Command_Run(int code) {
    switch (code) {
        case 101: return Com_Exit();
        case 102: return Com_New();
        case 104: return Com_Save();
        case 150: return Com_Clear();
    }
    return 1;
}

void CommandLoop() {
    int next = 0;   // a code that replaced the last command's input
    for (;;) {
        int code = next;
        next = 0;
        if (code == 0) {
            g.input.currentCommand = 0;
            Input_SetKeywords(nullptr, 0, 0);
            Input_Get("\nCommand: ", nullptr);
            code = g.input.InputResult.code;
            if (code <= 1) continue;
        }
        g.input.currentCommand = code;
        g.input.InputResult.lastCode = code;
        int done = Command_Run(code);
        g.input.currentCommand = 0;
        if (!done) {
            Msg_Printf("*cancel* ");
            next = g.input.InputResult.code;
            continue;
        }
        if (code == 101) return;
        if (code == 102) {
            g.run.restartFlag = 1;
            return;
        }
    }
}
