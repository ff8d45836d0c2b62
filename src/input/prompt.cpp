// prompt.cpp - the general prompt: Input_Get and its wait loop, the mouse
// step, the keyboard step with its function keys, and the Enter action that
// interprets the typed line.
//
// Each pass of the wait handles what the display has pending: the mouse
// first (menus, side menu, viewport picks), then every waiting key. A step
// answers 0 (nothing yet), kReprompt (clear the line and print the prompt
// again) or a result of Input_Wait. The cursor is erased before anything
// else draws and redrawn by the next mouse step, so XOR drawing never
// leaves marks.
#include <strings.h>

#include <cstdio>
#include <cstring>

#include "base/message.h"
#include "gfx/screen.h"
#include "input/input.h"
#include "state.h"
#include "ui/command_names.h"
#include "ui/menu.h"
#include "view/view_commands.h"
#include "view/view_draw.h"
#include "view/viewport.h"

namespace {

constexpr int kReprompt = 2;   // step answer: print the prompt again
constexpr int kCtrlC = 3;

InputResultRec& R() { return g.input.InputResult; }
bool CommandRunning() { return g.input.currentCommand != 0; }

void Beep() {
    if (g.config.Beep_Sounds) X11_Beep();
}

// --- the input line ----------------------------------------------------------

void DrawInputLine() {
    if (!g.screen.open) return;
    const int y = g.screen.inputLineY;
    Screen_Fill(g.config.colors.background, 0, y, g.screen.width - 1, y + SCREEN_LINE - 1);
    char line[INPUT_TEXT_MAX + 16];
    snprintf(line, sizeof line, "INPUT: %s", R().text);
    Screen_Text(g.config.colors.foreground, 0, y + 1, line);
}

void ClearInputLine() {
    R().text[0] = '\0';
    g.input.textLength = 0;
    DrawInputLine();
}

// A character joins the line while it has room and still fits the screen.
void TypeCharacter(int c) {
    InputState& in = g.input;
    if (in.textLength >= INPUT_TEXT_MAX) return;
    char probe[INPUT_TEXT_MAX + 16];
    snprintf(probe, sizeof probe, "INPUT: %sW", R().text);   // "W": room for the new character
    if (g.screen.open && X11_TextWidth(probe) > g.screen.width) return;
    R().text[in.textLength++] = (char)c;
    R().text[in.textLength] = '\0';
    DrawInputLine();
}

// --- interpretation of a finished line ---------------------------------------

int Unknown() {
    Msg_Printf("\nUnknown Command");
    Beep();
    return kReprompt;
}

// Keyword, string, then command name (coordinates were tried before).
int MatchWord(const char* text) {
    InputState& in = g.input;
    if (in.keywordsOn) {
        if (int k = Input_MatchKeyword(in.keywordText, text)) {
            R().kind = k;
            return -4;
        }
    }
    if (in.allowString) return -2;
    if (int code = Command_Lookup(text); code > 0) {
        R().code = code;
        return 1;
    }
    return Unknown();
}

int Interpret(const char* text) {
    if (CommandRunning()) {
        switch (Input_ParseCoords(text)) {
            case 1:
                Msg_Printf("\nInvalid coordinates");
                Beep();
                return kReprompt;
            case -3: return -3;
            case -5: return Input_AcceptPoint();
            default: break;
        }
    }
    return MatchWord(text);
}

int EnterAction() {
    InputState& in = g.input;
    if (in.textLength == 0 && R().text[0] == '\0') {
        if (!CommandRunning() || (in.inputMask & 16)) {
            // The repeat code ends the wait at once (a choice: the alternative
            // waits for the next mouse event).
            R().code = in.transparentActive ? 1 : R().lastCode;
            if (R().code > 0) return 1;
            R().code = 0;
            return 0;
        }
        R().kind = -1;
        return -1;
    }
    return Interpret(R().text);
}

// --- side-menu answers -------------------------------------------------------

int SideAnswer(int answer) {
    InputState& in = g.input;
    in.textLength = (int)strlen(R().text);
    DrawInputLine();
    switch (answer) {
        case -4:
            if (CommandRunning() && in.keywordsOn) {
                if (int k = Input_MatchKeyword(in.keywordText, R().text)) {
                    R().kind = k;
                    return -4;
                }
            }
            Msg_Printf("\nCan't accept a KEYWORD, or Input value must match KEYWORD");
            Beep();
            return kReprompt;
        case -3: return Interpret(R().text);
        case -2:
            if (!CommandRunning()) {   // at the Command prompt: ignored, the line stays empty
                ClearInputLine();
                return 0;
            }
            if (in.allowString) return -2;
            Msg_Printf("\nCan't accept a STRING value");
            return kReprompt;
    }
    return 0;
}

// --- mouse step --------------------------------------------------------------

bool InActiveView(int x, int y) {
    const Viewport& v = g.view.Active_Viewport;
    return x >= v.rect_left && x <= v.rect_right && y >= v.rect_top && y <= v.rect_bottom;
}

void WaitForRelease(int x, int y, int buttons) {
    while (buttons) {
        X11_WaitEvent();
        int mx, my;
        X11_ReadMouse(&mx, &my, &buttons);
    }
    X11_WarpMouse(x, y);
    g.input.lastButtons = 0;
}

int MouseStep(int x, int y, int buttons) {
    InputState& in = g.input;
    if (x == in.lastMouse[0] && y == in.lastMouse[1] && buttons == 0 && !in.cursorHidden) return 0;
    Cursor_Erase();
    in.lastMouse[0] = x;
    in.lastMouse[1] = y;
    in.lastButtons = buttons;

    int answer = MenuBar_Track(&g.menus.bar, x, y, buttons);   // -2: on the bar or a pull-down
    const bool onBar = answer == -2;
    if (answer == -1) answer = SideMenu_Track(x, y, buttons);
    const bool offMenus = answer == -10;
    in.inActiveView = offMenus && InActiveView(x, y);
    if (buttons == 0) {
        Cursor_Update(x, y);
        Cursor_Draw();
        return 0;
    }

    int result = 0;
    if (in.inActiveView) {
        if (int bits = View_DragBits(buttons, X11_GetShiftFlags())) {   // Ctrl + button: drag the view
            View_Drag(bits);
            in.lastButtons = 0;
            return 0;
        }
    }
    if (buttons & ~MOUSE_LEFT) {
        MenuBar_Close(&g.menus.bar);
        result = EnterAction();
        WaitForRelease(x, y, buttons);
    } else if (offMenus) {
        if (in.inActiveView) {
            Cursor_Update(x, y);
            View_ScreenToWorld(&g.view.Active_Viewport, x, y);   // the pixel becomes the cursor point
            g.input.cursorPoint = g.view.Active_Viewport.picked_point;
            result = Input_AcceptPoint();
        } else if (Views_SwitchAt(x, y) && g.view.select_viewport) {
            result = -3;
        }
        WaitForRelease(x, y, buttons);
    } else {
        WaitForRelease(x, y, buttons);
        if (!onBar && (answer == -2 || answer == -3 || answer == -4)) {
            result = SideAnswer(answer);
        } else if (answer > 0) {
            R().code = answer;
            result = 1;
        }
    }
    if (result == 1 && R().code <= 0) {
        R().code = 0;
        result = 0;
    }
    return result;
}

// --- keyboard step -----------------------------------------------------------

const char* OnOff(int v) { return v ? "ON" : "OFF"; }

int KeyCoords(int mode, const char* text) {
    g.aids.coordsMode = mode;
    Msg_Printf("%s", text);
    return kReprompt;
}

int ToggleView(int Viewport::*flag, const char* name) {
    Viewport& v = g.view.Active_Viewport;
    v.*flag = !(v.*flag);
    View_Refresh();
    Msg_Printf("\n%s = %s", name, OnOff(v.*flag));
    return kReprompt;
}

int KeyF1() {
    Msg_Printf("\nLargest available block (in bytes): (enough...) bytes");
    return 0;
}
int KeyF2() { return KeyCoords(1, "\nSwitching to ACTUAL coordinates"); }
int KeyF3() { return KeyCoords(3, "\nSwitching to POLAR coordinates"); }
int KeyF4() { return KeyCoords(2, "\nSwitching to RELATIVE coordinates"); }
int KeyF5() { return ToggleView(&Viewport::GRID, "GRID"); }
int KeyF6() { return ToggleView(&Viewport::CENTER, "CENTER"); }
int KeyF7() { return ToggleView(&Viewport::AXIS, "AXIS"); }
int KeyF8() {
    g.aids.orthoOn = !g.aids.orthoOn;
    Cursor_Update(g.input.lastMouse[0], g.input.lastMouse[1]);
    return 0;
}
int KeyF9() {
    if (g.input.selectMode) {
        Msg_Printf("Unable to set SNAP in Select Mode");
        return kReprompt;
    }
    Viewport& v = g.view.Active_Viewport;
    v.SNAP = !v.SNAP;
    Cursor_Update(g.input.lastMouse[0], g.input.lastMouse[1]);
    return 0;
}
int KeyF10() {
    ViewState& vs = g.view;
    int on = !vs.Active_Viewport.title_on;
    vs.Active_Viewport.title_on = on;
    for (int i = 1; i <= 4; i++) vs.Viewports[i].title_on = on;
    Views_RedrawAll();
    Msg_Printf("\nTEXT = %s", OnOff(on));
    return kReprompt;
}
int KeyInsert() {
    Views_ToggleMaximise();
    return 0;
}

struct FunctionKey {
    int key;
    int (*run)();
};
const FunctionKey kFunctionKeys[] = {
    {KEY_F(1), KeyF1}, {KEY_F(2), KeyF2}, {KEY_F(3), KeyF3}, {KEY_F(4), KeyF4},
    {KEY_F(5), KeyF5}, {KEY_F(6), KeyF6}, {KEY_F(7), KeyF7}, {KEY_F(8), KeyF8},
    {KEY_F(9), KeyF9}, {KEY_F(10), KeyF10}, {KEY_INSERT, KeyInsert},
};

int KeyStep(int key) {
    InputState& in = g.input;
    Cursor_Erase();
    MenuBar_Close(&g.menus.bar);   // typing closes an open pull-down first
    if (key > 0 && key < 256) {
        if (int code = Command_HotKey(key)) {
            R().code = code;
            return 1;
        }
    }
    for (const FunctionKey& f : kFunctionKeys)
        if (f.key == key) return f.run();
    switch (key) {
        case kCtrlC: R().code = 1; return 1;
        case KEY_BACKSPACE:
            if (in.textLength > 0) R().text[--in.textLength] = '\0';
            DrawInputLine();
            return 0;
        case KEY_ENTER:
        case '\n': {
            const int result = EnterAction();
            if (result == 0) ClearInputLine();   // taken (a filter step) or nothing to repeat
            return result;
        }
        case KEY_ESCAPE: return 0;
        case ' ':
            R().code = R().lastCode;
            if (R().code > 0) return 1;
            R().code = 0;
            return 0;
    }
    if (key >= 32 && key < 256 && key != KEY_DELETE) TypeCharacter(key);
    return 0;
}

// One prompt's worth of waiting: until a step answers.
int WaitForAnswer() {
    InputState& in = g.input;
    for (;;) {
        int x, y, buttons;
        X11_ReadMouse(&x, &y, &buttons);
        if (in.idleHook) in.idleHook();
        int result = MouseStep(x, y, buttons);
        while (result == 0 && !in.reprompt && X11_KeyPressed()) {
            result = KeyStep(X11_GetKey());
        }
        if (result == 0 && in.reprompt) result = kReprompt;
        in.reprompt = 0;
        if (result == 1 && R().code == 1 && !CommandRunning()) {
            R().code = 0;   // cancel at the Command prompt: nothing to cancel
            result = 0;
        }
        if (result) return result;
        if (x == in.lastMouse[0] && y == in.lastMouse[1] && !in.cursorHidden) X11_WaitEvent();
    }
}

}  // namespace

int Input_MatchKeyword(const char* list, const char* word) {
    if (!list || !*word) return 0;
    int index = 1;
    for (const char* p = list;; index++) {
        const char* end = strchr(p, ',');
        size_t len = end ? (size_t)(end - p) : strlen(p);
        if (len == strlen(word) && strncasecmp(p, word, len) == 0) return index;
        if (!end) return 0;
        p = end + 1;
    }
}

void Input_SetMask(int flags) { g.input.inputMask = flags; }

void Input_SetTransparentHook(int (*hook)(int result)) { g.input.transparentHook = hook; }

void Input_SetIdleHook(void (*hook)()) { g.input.idleHook = hook; }

int Input_GetCommand(const char* prompt) {
    InputState& in = g.input;
    snprintf(in.promptText, sizeof in.promptText, "%s", prompt);
    if (in.InputResult.code <= 0) {
        do Input_SetMask(17);
        while (Input_Wait() != 1);
        Input_ResetContext();
    }
    int code = in.InputResult.code;
    if (code != 1) in.InputResult.lastCode = code;
    return code;
}

void Input_SetKeywords(const char* keywords, int allowNumber, int allowString) {
    InputState& in = g.input;
    in.keywordsOn = keywords != nullptr;
    snprintf(in.keywordText, sizeof in.keywordText, "%s", keywords ? keywords : "");
    in.allowNumber = allowNumber;
    in.allowString = allowString;
}

void Input_SetRubberBand(const Point3* base, const char* shape, const char* transform) {
    InputState& in = g.input;
    struct Name {
        const char* name;
        int value;
    };
    static const Name kShapes[] = {{"LINE", RUBBER_LINE}, {"RECT", RUBBER_RECT}, {"CIRCLE", RUBBER_CIRCLE}};
    static const Name kTransforms[] = {{"XROT", 9},     {"YROT", 10},    {"ZROT", 11},
                                       {"SCALE", 3},    {"GRAVITY", 5},  {"MIRROR", 16}};
    if (base) in.basePoint = *base;
    in.rubberShape = RUBBER_DRAG;
    in.rubberTransform = 2;   // MOVE
    for (const Name& s : kShapes)
        if (shape && strncasecmp(shape, s.name, strlen(s.name)) == 0) {
            in.rubberShape = s.value;
            return;
        }
    for (const Name& t : kTransforms)
        if (transform && strncasecmp(transform, t.name, strlen(t.name)) == 0) in.rubberTransform = t.value;
}

void Input_SaveContext() {
    InputState& in = g.input;
    InputContext& c = in.saved;
    memcpy(c.promptText, in.promptText, sizeof c.promptText);
    memcpy(c.keywordText, in.keywordText, sizeof c.keywordText);
    c.keywordsOn = in.keywordsOn;
    c.allowNumber = in.allowNumber;
    c.allowString = in.allowString;
    c.inputMask = in.inputMask;
    c.rubberShape = in.rubberShape;
    c.rubberTransform = in.rubberTransform;
    c.basePoint = in.basePoint;
    c.cursorStyle = in.cursorStyle;
    c.currentCommand = in.currentCommand;
}

void Input_RestoreContext() {
    InputState& in = g.input;
    const InputContext& c = in.saved;
    memcpy(in.promptText, c.promptText, sizeof c.promptText);
    memcpy(in.keywordText, c.keywordText, sizeof c.keywordText);
    in.keywordsOn = c.keywordsOn;
    in.allowNumber = c.allowNumber;
    in.allowString = c.allowString;
    in.inputMask = c.inputMask;
    in.rubberShape = c.rubberShape;
    in.rubberTransform = c.rubberTransform;
    in.basePoint = c.basePoint;
    in.cursorStyle = c.cursorStyle;
    in.currentCommand = c.currentCommand;
}

int Input_Wait() {
    InputState& in = g.input;
    in.pendingSnap = 0;
    in.pointFilter = 0;
    in.haveX = in.haveY = in.haveZ = 0;
    int result;
    for (;;) {
        Cursor_Erase();
        ClearInputLine();
        R().code = 0;
        R().kind = 0;
        Msg_Printf("%s", in.promptText);
        result = WaitForAnswer();
        if (result == kReprompt) continue;
        if (!in.transparentHook || !in.transparentHook(result)) break;
    }
    in.cursorStyle = 1;
    return result;
}

void Input_ResetContext() {
    InputState& in = g.input;
    in.inputMask = 0;
    in.keywordsOn = 0;
    in.keywordText[0] = '\0';
    in.allowNumber = in.allowString = 0;
    in.rubberShape = RUBBER_NONE;
    in.rubberTransform = 0;
}

int Input_Get(const char* prompt, Point3* pointOut) {
    InputState& in = g.input;
    snprintf(in.promptText, sizeof in.promptText, "%s", prompt);
    int result = Input_Wait();
    switch (result) {
        case -5:
            R().kind = 0;
            R().point = in.cursorPoint;
            if (pointOut) *pointOut = in.cursorPoint;
            break;
        case -1: case -2: case -3: R().kind = result; break;
        default: break;   // -4: the keyword index is already in kind
    }
    Cursor_Erase();
    Input_ResetContext();
    return result == 1 ? 0 : 1;
}
