// message.cpp - the message area: the bottom two text lines of the window
// (standard output until the window exists).
//
// Text goes onto the bottom line at msgColumn; "\n" copies the bottom line
// one line up through an off-screen image and clears it. Every message is
// also handed to the display's transcript.
#include "base/message.h"

#include <cstdarg>
#include <cstdio>
#include <cstring>

#include "gfx/gfx.h"
#include "gfx/screen.h"
#include "state.h"

namespace {

constexpr int kBufSize = 256;
constexpr int kWrapLimit = 254;   // no "\n" is inserted once the text is this long

void ScrollUp() {
    const ScreenState& s = g.screen;
    int bottom = Screen_MessageLineY(1);
    ScreenSave line = Screen_Save(0, bottom, s.width - 1, bottom + SCREEN_LINE - 1);
    line.y = Screen_MessageLineY(0);
    Screen_Restore(&line);
    Screen_Fill(g.config.colors.background, 0, bottom, s.width - 1, bottom + SCREEN_LINE - 1);
    g.screen.msgColumn = 0;
}

void DrawPiece(const char* text) {
    if (!*text) return;
    int y = Screen_MessageLineY(1);
    int w = X11_TextWidth(text);
    int x = g.screen.msgColumn;
    Screen_Fill(g.config.colors.background, x, y, x + w - 1, y + SCREEN_LINE - 1);
    Screen_Text(g.config.colors.foreground, x, y + 1, text);
    g.screen.msgColumn += w;
}

}  // namespace

void Msg_Wrap(char* buf, int column, int width) {
    size_t len = strlen(buf);
    for (size_t i = 0; i < len; i++) {
        if (buf[i] == '\n') {
            column = 0;
            continue;
        }
        char one[2] = {buf[i], '\0'};
        int w = X11_TextWidth(one);
        if (column + w > width && column > 0 && len < kWrapLimit) {
            memmove(buf + i + 1, buf + i, len - i + 1);
            buf[i] = '\n';
            len++;
            column = 0;
            continue;   // the character itself is looked at again
        }
        column += w;
    }
}

void Msg_Printf(const char* format, ...) {
    char buf[kBufSize];
    va_list ap;
    va_start(ap, format);
    vsnprintf(buf, sizeof buf, format, ap);   // cut at 255 characters
    va_end(ap);
    X11_Transcript(buf);
    if (!g.screen.open) {
        fputs(buf, stdout);
        fflush(stdout);
        return;
    }
    Msg_Wrap(buf, g.screen.msgColumn, g.screen.width);
    int keep = X11_GetColor();
    char* p = buf;
    for (;;) {
        char* nl = strchr(p, '\n');
        if (nl) *nl = '\0';
        DrawPiece(p);
        if (!nl) break;
        ScrollUp();
        p = nl + 1;
    }
    X11_SetColor(keep);
    X11_Flush();   // the prompt must show even while the program waits elsewhere
}

const char* SetFatalMessage(const char* text) {
    snprintf(g.run.fatalMessage, sizeof g.run.fatalMessage, "%s\n", text);
    return g.run.fatalMessage;
}
