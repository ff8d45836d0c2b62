// dialog_run.cpp - the modal dialog runtime: the event loop with its own
// pointer, text editing, the setters and getters, and closing.
//
// While a dialog runs only its elements, Ctrl-C (or Escape) and the mouse
// are served. A click is a change from no button to some button; the
// buttons seen last stay in the record between calls, so the release of the
// click that ended one Dialog_Run never counts as a click in the next.
#include <cstring>

#include "base/field.h"
#include "gfx/screen.h"
#include "state.h"
#include "ui/dialog.h"
#include "ui/dialog_draw.h"

namespace {

constexpr int kCtrlC = 3;

const ScreenColors& C() { return g.config.colors; }

DlgTextBox* FindTextBox(Dialog* d, int id) {
    for (DlgTextBox& t : d->textBoxes)
        if (t.id == id) return &t;
    return nullptr;
}

DlgCheck* FindCheck(Dialog* d, int id) {
    for (DlgCheck& k : d->checks)
        if (k.id == id) return &k;
    return nullptr;
}

bool OnRow(int column, int row, int first, int cells, int elementRow) {
    return row == elementRow && column >= first && column < first + cells;
}

void ShowPointer(Dialog* d) {
    if (d->pointerShown) return;
    d->pointerX = d->mouseX;
    d->pointerY = d->mouseY;
    DlgDraw_Pointer(d->pointerX, d->pointerY);
    d->pointerShown = 1;
}

void HidePointer(Dialog* d) {
    if (!d->pointerShown) return;
    DlgDraw_Pointer(d->pointerX, d->pointerY);
    d->pointerShown = 0;
}

// Reads the mouse into the record; 1 when the position or the buttons changed.
int ReadMouse(Dialog* d) {
    int x, y, b;
    X11_ReadMouse(&x, &y, &b);
    if (x == d->mouseX && y == d->mouseY && b == d->buttons) return 0;
    d->previousButtons = d->buttons;
    d->buttons = b;
    d->clicked = d->previousButtons == 0 && b != 0;
    d->mouseX = x;
    d->mouseY = y;
    return 1;
}

// Highlight follows the pointer; 1 when `inside` and this is a click.
template <typename T, typename Draw>
int Track(T& element, bool inside, int clicked, Draw draw) {
    if (inside != (element.highlighted != 0)) {
        element.highlighted = inside;
        draw(element);
    }
    return inside && clicked;
}

void SetResult(DialogResult* r, int id, const char* text, int value) {
    r->id = id;
    CopyCut(r->text, sizeof r->text, text ? text : "");
    r->value = value;
}

// The elements under cell (column, row): highlights follow, and a click on
// one fills the result. 1 when the dialog returns.
int Hit(Dialog* d, int column, int row, DialogResult* r) {
    const int click = d->clicked;
    if (click) {
        for (const DlgGraph& a : d->graphs)
            if (column >= a.left && column <= a.right && row >= a.top && row <= a.bottom) {
                int offset = row - a.top;
                SetResult(r, a.id, nullptr, (d->buttons & MOUSE_LEFT) ? offset : -offset);
                return 1;
            }
    }
    for (DlgShape& s : d->shapes) {
        auto draw = [](const DlgShape& e) {
            DlgDraw_Box(e.column, e.row, 2, e.highlighted);
            DlgDraw_ShapeFrame(e);
        };
        if (Track(s, OnRow(column, row, s.column, 2, s.row), click, draw)) {
            SetResult(r, s.id, nullptr, 0);
            return 1;
        }
    }
    for (DlgButton& b : d->buttonList)
        if (Track(b, OnRow(column, row, b.column, (int)strlen(b.text), b.row), click, DlgDraw_Button)) {
            SetResult(r, b.id, nullptr, 0);
            return 1;
        }
    for (DlgCheck& k : d->checks)
        if (Track(k, OnRow(column, row, k.column, 4, k.row), click, DlgDraw_Check)) {
            SetResult(r, k.id, nullptr, 0);
            return 1;
        }
    for (DlgTextBox& t : d->textBoxes)
        if (Track(t, OnRow(column, row, t.column, t.width, t.row), click, DlgDraw_TextBox)) {
            SetResult(r, t.id, t.text, 0);
            return 1;
        }
    return 0;
}

// Takes one key: 1 when it cancels the dialog (Ctrl-C or Escape); other
// keys are dropped.
int CancelKey() {
    int key = X11_GetKey();
    return key == kCtrlC || key == KEY_ESCAPE;
}

}  // namespace

Dialog::~Dialog() {
    if (saved.image) X11_FreeImage(saved.image);
}

int Dialog_Run(Dialog* d, DialogResult* r) {
    DlgDraw_ClipTo(d);
    // A dialog opened over this one since its last run took the release of
    // the click that opened it (closing waits for every button to be up):
    // the button this one saw go down is up, or its next click is lost.
    if (d->closesSeen != g.dialogCloses) d->buttons = d->previousButtons = 0;
    SetResult(r, -1, nullptr, 0);
    ShowPointer(d);
    struct Running {   // restored also when a session ends inside the run
        const Dialog* outer = g.runningDialog;
        ~Running() { g.runningDialog = outer; }
    } running;
    g.runningDialog = d;
    const int cw = Dialog_CellWidth();
    // The mouse goes first: keys typed right after a click on a text box
    // stay queued for the editing that the click starts.
    for (;;) {
        if (g.input.abortFlag) break;
        if (ReadMouse(d)) {
            HidePointer(d);
            int stop = Hit(d, d->mouseX / cw, d->mouseY / SCREEN_LINE, r);
            ShowPointer(d);
            if (stop) break;
        } else if (X11_KeyPressed()) {
            if (CancelKey()) break;
        } else {
            X11_WaitEvent();
        }
    }
    HidePointer(d);
    d->closesSeen = g.dialogCloses;
    return 1;
}

int Dialog_EditText(Dialog* d, int id) {
    DlgDraw_ClipTo(d);
    DlgTextBox* t = FindTextBox(d, id);
    if (!t) return 0;
    DlgInput* label = nullptr;
    for (DlgInput& in : d->inputs)
        if (in.id == id) label = &in;
    HidePointer(d);
    if (label) DlgDraw_Input(*label, 1);
    CopyCut(d->editBuffer, sizeof d->editBuffer, t->text);
    const int cw = Dialog_CellWidth();
    int colour = C().general_color;
    auto redraw = [&]() {
        DlgDraw_Box(t->column, t->row, t->width, 0);
        DlgDraw_Text(colour, t->column + 1, t->row, d->editBuffer);
    };
    redraw();
    int first = 1, result = -1;
    while (result < 0) {
        if (X11_KeyPressed()) {
            const int key = X11_GetKey();
            const int enter = key == KEY_ENTER || key == '\n';
            const int escape = key == KEY_ESCAPE || key == kCtrlC;
            const int character = key >= 32 && key < 256 && key != KEY_DELETE;
            if (first) {
                first = 0;
                colour = C().dialog_fg;
                if (character) d->editBuffer[0] = '\0';   // typing replaces the old value
            }
            size_t n = strlen(d->editBuffer);
            if (enter) result = 1;
            else if (escape) result = 0;
            else if (key == KEY_BACKSPACE) {
                if (n > 0) d->editBuffer[n - 1] = '\0';
            } else if (character && n < 249 && X11_TextWidth(d->editBuffer) < (t->width - 2) * cw) {
                d->editBuffer[n] = (char)key;
                d->editBuffer[n + 1] = '\0';
            }
            redraw();
        } else if (ReadMouse(d)) {
            if (d->clicked) result = (d->buttons & MOUSE_LEFT) ? 1 : 0;
        } else {
            X11_WaitEvent();
        }
    }
    if (label) DlgDraw_Input(*label, 0);
    t->highlighted = 1;
    DlgDraw_TextBox(*t);
    return result;
}

void Dialog_SetText(Dialog* d, int id, const char* text) {
    DlgDraw_ClipTo(d);
    DlgTextBox* t = FindTextBox(d, id);
    if (!t) return;
    const int cw = Dialog_CellWidth();
    CopyCut(t->text, sizeof t->text, text);
    size_t n = strlen(t->text);
    while (n > 0 && X11_TextWidth(t->text) >= (t->width - 1) * cw) t->text[--n] = '\0';
    const int pointer = d->pointerShown;
    HidePointer(d);
    DlgDraw_TextBox(*t);
    if (pointer) ShowPointer(d);
}

void Dialog_GetText(Dialog* d, int id, char* out) {
    DlgTextBox* t = FindTextBox(d, id);
    CopyCut(out, 256, t ? t->text : "");
}

void Dialog_SetCheck(Dialog* d, int id, int state) {
    DlgDraw_ClipTo(d);
    DlgCheck* k = FindCheck(d, id);
    if (!k) return;
    k->checked = state != 0;
    DlgDraw_Check(*k);
}

int Dialog_GetCheck(Dialog* d, int id) {
    DlgCheck* k = FindCheck(d, id);
    return k ? k->checked : -1;
}

void Dialog_GraphText(Dialog* d, int id, int column, int row, int colour, const char* text) {
    DlgDraw_ClipTo(d);
    for (const DlgGraph& a : d->graphs) {
        if (a.id != id) continue;
        if (colour == -1) {
            DlgDraw_Graph(a);
            return;
        }
        const int width = a.right - a.left + 1 - column;   // cells left on the row
        if (row < 0 || row > a.bottom - a.top || column < 0 || width <= 0) return;
        char t[256];
        CopyCut(t, sizeof t, text);
        if ((int)strlen(t) > width) t[width] = '\0';
        DlgDraw_Text(colour, a.left + column, a.top + row, t);
        return;
    }
}

void Dialog_Close(Dialog* d) {
    HidePointer(d);
    Screen_Restore(&d->saved);
    d->open = 0;
    // swap with empty vectors: the memory goes back now, not at the next Init
    std::vector<DlgButton>().swap(d->buttonList);
    std::vector<DlgCheck>().swap(d->checks);
    std::vector<DlgInput>().swap(d->inputs);
    std::vector<DlgTextBox>().swap(d->textBoxes);
    std::vector<DlgShape>().swap(d->shapes);
    std::vector<DlgGraph>().swap(d->graphs);
    while (d->buttons) {
        X11_WaitEvent();
        int x, y;
        X11_ReadMouse(&x, &y, &d->buttons);
    }
    d->previousButtons = 0;
    g.dialogCloses++;
    // The prompt's cursor is drawn again from this position.
    g.input.lastMouse[0] = d->mouseX;
    g.input.lastMouse[1] = d->mouseY;
}
