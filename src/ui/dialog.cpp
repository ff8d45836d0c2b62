// dialog.cpp - dialog files: the reader, the element records and their
// drawing. The runtime (Dialog_Run, editing, setters) is in dialog_run.cpp.
//
// Positions are character cells: a column times the width of "h", a row
// times the line height. Every element is drawn when its line is read.
// Drawing goes through clipped fills, so that a file with absurd positions
// costs no more than one the size of the screen.
#include "ui/dialog.h"

#include <cerrno>
#include <climits>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <new>

#include "base/field.h"
#include "base/message.h"
#include "gfx/screen.h"
#include "state.h"
#include "ui/dialog_draw.h"

namespace {

constexpr int kCoordLimit = 10000;       // cells; larger numbers are taken as this
constexpr size_t kMaxElements = 65536;   // beyond this a file counts as out of memory
constexpr long kMaxPictureRecords = 1L << 20;

const ScreenColors& C() { return g.config.colors; }

// A decimal integer field in the manner of atoi, kept within +-kCoordLimit.
int Number(const char* text) {
    errno = 0;
    long v = strtol(text, nullptr, 10);
    if (v > kCoordLimit) return kCoordLimit;
    if (v < -kCoordLimit) return -kCoordLimit;
    return (int)v;
}

size_t ElementCount(const Dialog* d) {
    return d->buttonList.size() + d->checks.size() + d->inputs.size() + d->textBoxes.size() +
           d->shapes.size() + d->graphs.size();
}

// Appends to one of the element arrays; out of memory gives DIALOG_NO_MEMORY.
template <typename T>
int Append(Dialog* d, std::vector<T>& list, const T& element) {
    if (!d->open) return DIALOG_BEFORE_CAPTION;
    if (ElementCount(d) >= kMaxElements) return DIALOG_NO_MEMORY;
    try {
        list.push_back(element);
    } catch (const std::bad_alloc&) {
        return DIALOG_NO_MEMORY;
    }
    return DIALOG_OK;
}

void SupportPath(char* out, size_t size, const char* name) {
    snprintf(out, size, "%s/%s", g.config.SUPPORT_DIR, name);
}

// Reads one line of at most 254 characters; the rest of a longer line is
// dropped. 0 at the end of the file.
int ReadLine(FILE* f, char* line, size_t size) {
    if (!fgets(line, (int)size, f)) return 0;
    size_t n = strlen(line);
    if (n > 0 && line[n - 1] == '\n') {
        line[n - 1] = '\0';
    } else if (!feof(f)) {
        int c;
        while ((c = fgetc(f)) != EOF && c != '\n') {
        }
    }
    return 1;
}

int Fields(const char* line, int count, char fields[][FIELD_MAX]) {
    for (int i = 1; i <= count; i++)
        if (!GetField(fields[i - 1], line, i)) return 0;
    return 1;
}

int ReadElement(Dialog* d, const char* line) {
    char key[FIELD_MAX];
    char f[5][FIELD_MAX];
    if (!GetField(key, line, 0)) return DIALOG_OK;
    if (SameName(key, "CAPTION")) {
        if (!Fields(line, 2, f)) return DIALOG_OK;
        if (d->open) return DIALOG_SECOND_CAPTION;
        return Dialog_Caption(d, Number(f[0]), Number(f[1]));
    }
    if (SameName(key, "GRAPH")) {
        if (!Fields(line, 5, f)) return DIALOG_OK;
        return Dialog_AddGraph(d, Number(f[0]), Number(f[1]), Number(f[2]), Number(f[3]), Number(f[4]));
    }
    if (SameName(key, "SHAPE")) {
        if (!Fields(line, 5, f)) return DIALOG_OK;
        return Dialog_AddShape(d, f[0], f[1], Number(f[2]), Number(f[3]), Number(f[4]));
    }
    if (SameName(key, "TEXT")) {
        if (!Fields(line, 3, f)) return DIALOG_OK;
        return Dialog_AddText(d, f[0], Number(f[1]), Number(f[2]));
    }
    if (SameName(key, "TEXTBOX")) {
        if (!Fields(line, 4, f)) return DIALOG_OK;
        return Dialog_AddTextBox(d, Number(f[0]), Number(f[1]), Number(f[2]), Number(f[3]));
    }
    struct Labelled {
        const char* key;
        int (*add)(Dialog*, const char*, int, int, int);
    };
    static const Labelled kLabelled[] = {
        {"INPUT", Dialog_AddInput}, {"CHECK", Dialog_AddCheck}, {"BUTTON", Dialog_AddButton}};
    for (const Labelled& l : kLabelled) {
        if (!SameName(key, l.key)) continue;
        if (!Fields(line, 4, f)) return DIALOG_OK;
        return l.add(d, f[0], Number(f[1]), Number(f[2]), Number(f[3]));
    }
    return DIALOG_OK;   // unknown keyword
}

}  // namespace

// --- metrics ------------------------------------------------------------------

int Dialog_CellWidth() {
    int w = X11_TextWidth("h");
    return w > 0 ? w : 8;
}
int Dialog_Columns() { return g.screen.width / Dialog_CellWidth(); }
int Dialog_Rows() { return g.screen.height / SCREEN_LINE; }

// --- drawing ------------------------------------------------------------------

void DlgDraw_ClipTo(const Dialog* d) {
    DialogClip& c = g.dialogClip;
    c = DialogClip{0, 0, g.screen.width - 1L, g.screen.height - 1L};
    if (!d || !d->open) return;   // a picture drawn on its own: the screen
    const long cw = Dialog_CellWidth();
    c.x1 = d->left * cw < 0 ? 0 : d->left * cw;
    c.y1 = d->top * (long)SCREEN_LINE < 0 ? 0 : d->top * (long)SCREEN_LINE;
    c.x2 = (d->right + 1L) * cw - 1;
    c.y2 = (d->bottom + 1L) * SCREEN_LINE - 1;
    if (c.x2 >= g.screen.width) c.x2 = g.screen.width - 1;
    if (c.y2 >= g.screen.height) c.y2 = g.screen.height - 1;
}

static bool InClip(long x1, long y1, long x2, long y2) {
    const DialogClip& c = g.dialogClip;
    return x1 >= c.x1 && y1 >= c.y1 && x2 <= c.x2 && y2 <= c.y2;
}

void DlgDraw_Fill(int colour, long x1, long y1, long x2, long y2) {
    const DialogClip& c = g.dialogClip;
    if (x1 < c.x1) x1 = c.x1;
    if (y1 < c.y1) y1 = c.y1;
    if (x2 > c.x2) x2 = c.x2;
    if (y2 > c.y2) y2 = c.y2;
    if (x1 > x2 || y1 > y2) return;
    Screen_Fill(colour, (int)x1, (int)y1, (int)x2, (int)y2);
}

void DlgDraw_Frame(int colour, long x1, long y1, long x2, long y2) {
    DlgDraw_Fill(colour, x1, y1, x2, y1);
    DlgDraw_Fill(colour, x1, y2, x2, y2);
    DlgDraw_Fill(colour, x1, y1, x1, y2);
    DlgDraw_Fill(colour, x2, y1, x2, y2);
}

void DlgDraw_Text(int colour, int column, int row, const char* text) {
    const DialogClip& c = g.dialogClip;
    const long cw = Dialog_CellWidth();
    const long x = column * cw, y = (long)row * SCREEN_LINE + 1;
    if (y < c.y1 || y + X11_FontHeight() - 1 > c.y2) return;
    // Only the characters whose cells lie wholly inside are drawn.
    const long n = (long)strlen(text);
    long first = x < c.x1 ? (c.x1 - x + cw - 1) / cw : 0;
    long last = (c.x2 + 1 - x) / cw;   // one past the last that fits
    if (last > n) last = n;
    if (first >= last) return;
    char part[256];
    CopyCut(part, sizeof part, text + first);
    part[last - first < 255 ? last - first : 255] = '\0';
    Screen_Text(colour, (int)(x + first * cw), (int)y, part);
}

void DlgDraw_Box(int column, int row, int width, int highlighted) {
    const long cw = Dialog_CellWidth(), lh = SCREEN_LINE;
    const long x1 = column * cw - 1, y1 = row * lh - 1;
    const long x2 = (column + (long)width) * cw - 1, y2 = (row + 1) * lh - 1;
    if (highlighted) {
        DlgDraw_Fill(C().dialog_fg, x1, y1, x2, y2);
    } else {
        DlgDraw_Frame(C().dialog_fg, x1, y1, x2, y2);
        DlgDraw_Fill(C().dialog_bk, x1 + 1, y1 + 1, x2 - 1, y2 - 1);
    }
}

void DlgDraw_CheckMark(int column, int row) {
    const int cw = Dialog_CellWidth(), lh = SCREEN_LINE;
    const long x = (long)column * cw, y = (long)row * lh;
    if (!InClip(x, y, x + 3L * cw, y + lh)) return;   // XOR drawing must stay where closing restores
    int keep = X11_GetColor(), mode = X11_GetWriteMode();
    X11_SetWriteMode(GFX_XOR);
    X11_SetColor(C().dialog_bk);
    X11_MoveTo((int)x + cw, (int)y + lh / 2);
    X11_LineTo((int)x + cw + 5, (int)y + lh - 4);
    X11_LineTo((int)x + 3 * cw - 2, (int)y + 3);
    X11_SetColor(keep);
    X11_SetWriteMode(mode);
}

void DlgDraw_ShapeFrame(const DlgShape& s) {
    if (!s.hasPicture) return;
    const int x = s.pictureX + 1, y = s.pictureY - 2;
    if (!InClip(x, y, x + 117L, y + 72L)) return;
    int keep = X11_GetColor(), mode = X11_GetWriteMode();
    X11_SetWriteMode(GFX_XOR);
    X11_SetColor(C().dialog_fg ^ C().dialog_bk);   // shows as dialog_fg on the face
    X11_Rectangle(0, x, y, x + 117, y + 72);
    X11_SetColor(keep);
    X11_SetWriteMode(mode);
}

void DlgDraw_Graph(const DlgGraph& a) {
    const long cw = Dialog_CellWidth(), lh = SCREEN_LINE;
    const long x1 = a.left * cw - 1, y1 = a.top * lh - 1;
    const long x2 = (a.right + 1L) * cw - 1, y2 = (a.bottom + 1L) * lh - 1;
    DlgDraw_Fill(C().view_bkcolor, x1, y1, x2, y2);
    DlgDraw_Frame(C().view_boarder, x1, y1, x2, y2);
}

void DlgDraw_Button(const DlgButton& b) {
    DlgDraw_Box(b.column, b.row, (int)strlen(b.text), b.highlighted);
    DlgDraw_Text(b.highlighted ? C().dialog_bk : C().dialog_fg, b.column, b.row, b.text);
}

void DlgDraw_Input(const DlgInput& in, int highlighted) {
    DlgDraw_Box(in.column, in.row, (int)strlen(in.text), highlighted);
    DlgDraw_Text(highlighted ? C().dialog_bk : C().dialog_fg, in.column, in.row, in.text);
}

void DlgDraw_TextBox(const DlgTextBox& t) {
    DlgDraw_Box(t.column, t.row, t.width, t.highlighted);
    DlgDraw_Text(t.highlighted ? C().dialog_bk : C().dialog_fg, t.column + 1, t.row, t.text);
}

void DlgDraw_Check(const DlgCheck& k) {
    DlgDraw_Box(k.column, k.row, 4, k.highlighted);
    if (k.checked) DlgDraw_CheckMark(k.column, k.row);
}

void DlgDraw_Pointer(int x, int y) {
    int keep = X11_GetColor(), mode = X11_GetWriteMode();
    X11_SetWriteMode(GFX_XOR);
    X11_SetColor(C().dialog_bk);
    X11_MoveTo(x, y);
    X11_LineTo(x, y + 14);
    X11_MoveTo(x + 1, y + 1);
    X11_LineTo(x + 10, y + 10);
    X11_MoveTo(x + 1, y + 2);
    X11_LineTo(x + 8, y + 20);
    X11_SetColor(keep);
    X11_SetWriteMode(mode);
}

// --- building -------------------------------------------------------------------

void Dialog_Init(Dialog* d) {
    d->buttonList.clear();
    d->checks.clear();
    d->inputs.clear();
    d->textBoxes.clear();
    d->shapes.clear();
    d->graphs.clear();
    d->editBuffer[0] = '\0';
    d->open = 0;
    d->left = d->top = d->right = d->bottom = 0;
    d->saved = ScreenSave{nullptr, 0, 0};
    // The pointer starts where the prompt saw the mouse last. The events
    // still queued belong to the dialog, so none is taken here.
    d->mouseX = g.input.lastMouse[0] < 0 ? g.screen.width / 2 : g.input.lastMouse[0];
    d->mouseY = g.input.lastMouse[1] < 0 ? g.screen.height / 2 : g.input.lastMouse[1];
    d->buttons = d->previousButtons = 0;
    d->clicked = 0;
    d->closesSeen = g.dialogCloses;
    d->pointerX = d->mouseX;
    d->pointerY = d->mouseY;
    d->pointerShown = 0;
}

int Dialog_Caption(Dialog* d, int width, int height) {
    if (d->open) return DIALOG_SECOND_CAPTION;
    width = width < 0 ? 0 : width > kCoordLimit ? kCoordLimit : width;
    height = height < 0 ? 0 : height > kCoordLimit ? kCoordLimit : height;
    d->left = (Dialog_Columns() + 1) / 2 - width / 2 - 1;
    d->top = (Dialog_Rows() + 1) / 2 - height / 2 - 1;
    d->right = d->left + width;
    d->bottom = d->top + height;
    const long cw = Dialog_CellWidth(), lh = SCREEN_LINE;
    const long x1 = d->left * cw, y1 = d->top * lh;
    const long x2 = (d->right + 1L) * cw - 1, y2 = (d->bottom + 1L) * lh - 1;
    // The save-under clamps to the screen; nothing on the screen means
    // nothing could be saved.
    if (x2 < 0 || y2 < 0 || x1 >= g.screen.width || y1 >= g.screen.height) return DIALOG_NO_MEMORY;
    d->saved = Screen_Save((int)(x1 < 0 ? 0 : x1), (int)(y1 < 0 ? 0 : y1),
                           (int)(x2 >= g.screen.width ? g.screen.width - 1 : x2),
                           (int)(y2 >= g.screen.height ? g.screen.height - 1 : y2));
    if (!d->saved.image) return DIALOG_NO_MEMORY;
    d->open = 1;
    DlgDraw_ClipTo(d);
    DlgDraw_Fill(C().dialog_bk, x1, y1, x2 - 4, y2 - 4);
    DlgDraw_Frame(C().dialog_trim, x1, y1, x2 - 4, y2 - 4);
    DlgDraw_Fill(C().dialog_shadow, x2 - 3, y1 + 4, x2, y2);
    DlgDraw_Fill(C().dialog_shadow, x1 + 4, y2 - 3, x2, y2);
    return DIALOG_OK;
}

int Dialog_AddText(Dialog* d, const char* text, int column, int row) {
    if (!d->open) return DIALOG_BEFORE_CAPTION;
    char t[41];
    CopyCut(t, sizeof t, text);
    DlgDraw_Text(C().dialog_fg, column + d->left, row + d->top, t);
    return DIALOG_OK;
}

int Dialog_AddButton(Dialog* d, const char* text, int column, int row, int id) {
    DlgButton b{};
    CopyCut(b.text, sizeof b.text, text);
    b.column = column + d->left;
    b.row = row + d->top;
    b.id = id;
    int rc = Append(d, d->buttonList, b);
    if (rc == DIALOG_OK) DlgDraw_Button(b);
    return rc;
}

int Dialog_AddCheck(Dialog* d, const char* text, int column, int row, int id) {
    DlgCheck k{};
    k.column = column + d->left;
    k.row = row + d->top;
    k.id = id;
    int rc = Append(d, d->checks, k);
    if (rc != DIALOG_OK) return rc;
    DlgDraw_Box(k.column, k.row, 4, 0);
    char t[41];
    CopyCut(t, sizeof t, text);
    DlgDraw_Text(C().dialog_fg, k.column + 5, k.row, t);
    return DIALOG_OK;
}

int Dialog_AddInput(Dialog* d, const char* text, int column, int row, int id) {
    DlgInput in{};
    CopyCut(in.text, sizeof in.text, text);
    in.column = column + d->left;
    in.row = row + d->top;
    in.id = id;
    int rc = Append(d, d->inputs, in);
    if (rc == DIALOG_OK) DlgDraw_Input(in, 0);
    return rc;
}

int Dialog_AddTextBox(Dialog* d, int column, int row, int width, int id) {
    DlgTextBox t{};
    t.column = column + d->left;
    t.row = row + d->top;
    t.width = width < 0 ? 0 : width;
    t.id = id;
    int rc = Append(d, d->textBoxes, t);
    if (rc == DIALOG_OK) DlgDraw_TextBox(t);
    return rc;
}

int Dialog_AddShape(Dialog* d, const char* label, const char* picture, int column, int row, int id) {
    DlgShape s{};
    CopyCut(s.label, sizeof s.label, label);
    s.column = column + d->left;
    s.row = row + d->top;
    s.id = id;
    const int cw = Dialog_CellWidth(), lh = SCREEN_LINE;
    s.pictureX = (s.column + 2) * cw + 3;
    s.pictureY = (s.row - 2) * lh - lh / 2;
    s.hasPicture = picture[0] != '\0';
    int rc = Append(d, d->shapes, s);
    if (rc != DIALOG_OK) return rc;
    DlgDraw_Box(s.column, s.row, 2, 0);
    if (s.hasPicture) {
        char path[FIELD_MAX * 2];
        SupportPath(path, sizeof path, picture);
        Dialog_DrawFile(d, path, s.pictureX, s.pictureY);
    }
    DlgDraw_Text(C().dialog_fg, s.column + 3, s.row, s.label);
    return DIALOG_OK;
}

int Dialog_AddGraph(Dialog* d, int left, int top, int right, int bottom, int id) {
    DlgGraph a{};
    a.left = left + d->left;
    a.top = top + d->top;
    a.right = right + d->left;
    a.bottom = bottom + d->top;
    a.id = id;
    int rc = Append(d, d->graphs, a);
    if (rc == DIALOG_OK) DlgDraw_Graph(a);
    return rc;
}

// --- the file -------------------------------------------------------------------

int Dialog_Load(Dialog* d, const char* path) {
    FILE* f = fopen(path, "r");
    if (!f) return DIALOG_NOT_FOUND;
    char line[256];   // 254 characters, the newline and the terminator
    int rc = DIALOG_OK;
    while (rc == DIALOG_OK && ReadLine(f, line, sizeof line)) rc = ReadElement(d, line);
    fclose(f);
    return rc;
}

int Dialog_Open(Dialog* d, const char* name, const char* failure) {
    Dialog_Init(d);
    char path[FIELD_MAX * 2];
    SupportPath(path, sizeof path, name);
    if (Dialog_Load(d, path) == DIALOG_OK && d->open) return 1;
    Dialog_Close(d);
    if (failure) Msg_Printf("%s", failure);
    else Msg_Printf("Can't find %s, or Out of Memory!", name);
    return 0;
}

void Dialog_DrawFile(Dialog* d, const char* path, int x, int y) {
    DlgDraw_ClipTo(d);
    FILE* f = fopen(path, "rb");
    if (!f) return;
    unsigned char rec[16];
    for (long n = 0; n < kMaxPictureRecords && fread(rec, 1, sizeof rec, f) == sizeof rec; n++) {
        long v[4];
        for (int i = 0; i < 4; i++) {
            const unsigned char* p = rec + 4 * i;
            v[i] = (int32_t)((uint32_t)p[0] | (uint32_t)p[1] << 8 | (uint32_t)p[2] << 16 | (uint32_t)p[3] << 24);
        }
        const long x1 = x + v[0], y1 = y + v[1], x2 = x1 + v[3];
        DlgDraw_Fill((int)(v[2] & 255), x1 < x2 ? x1 : x2, y1, x1 < x2 ? x2 : x1, y1);
    }
    fclose(f);
}
