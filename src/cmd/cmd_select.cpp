// cmd_select.cpp - the selection prompts (Select_Objects, Select_One,
// Select_Window) and the selection commands 307 and 951 to 957.
//
// While a selection prompt runs, SNAP is off in the working viewport and in
// the four stored ones (and F9 refuses to switch it on), and picks show the
// pick box. A pick tests the 7 x 7 pixel square round the picked point, a
// window the rectangle of its two corners; the hit pass itself is
// Select_Hits of the input layer.
//
//   Select_Objects:   point -> one pass, first hit only
//                     W -> window, every hit      A/R -> add/remove mode
//                     E -> done                   B -> whole layers on/off
//                     another command -> selection cleared, 0
//                     the running command again (Enter, Space) -> kept
#include <cmath>

#include "cmd/ask.h"
#include "cmd/cmd.h"
#include "cmd/codes.h"
#include "base/message.h"
#include "input/input.h"
#include "model/selection.h"
#include "state.h"
#include "ui/menu.h"

namespace {

const int PICK_HALF = 3;          // a pick tests the square of +-3 pixels
const int PICK_CURSOR = 3;        // cursorStyle: the pick box
const int SELECT_SIDE_MENU = 1010;

// SNAP of the working viewport and of the stored ones while selecting.
struct SelectSession {
    int active_snap;
    int slot;
    int snap[5];

    SelectSession() {
        ViewState& v = g.view;
        active_snap = v.Active_Viewport.SNAP;
        slot = v.Current_Viewport;
        v.Active_Viewport.SNAP = 0;
        for (int i = 1; i <= 4; i++) {
            snap[i] = v.Viewports[i].SNAP;
            v.Viewports[i].SNAP = 0;
        }
        g.input.selectMode = 1;
    }
    ~SelectSession() {
        ViewState& v = g.view;
        for (int i = 1; i <= 4; i++) v.Viewports[i].SNAP = snap[i];
        if (slot >= 1 && slot <= 4) v.Viewports[slot].SNAP = active_snap;
        const int now = v.Current_Viewport;
        v.Active_Viewport.SNAP = now >= 1 && now <= 4 ? v.Viewports[now].SNAP : active_snap;
        g.input.selectMode = 0;
    }
    SelectSession(const SelectSession&) = delete;
    SelectSession& operator=(const SelectSession&) = delete;
};

bool Replaced() { return g.input.InputResult.code > 0; }
int Finished() { return Replaced() ? 0 : 1; }

void PrintStatus(const char* lead, int found, int total) {
    Msg_Printf("%sStatus <Found: %d, Total: %d> ", lead, found, total);
}

// The two corners of a window: 1 both given, 0 given up (C or Enter;
// "*Cancle*" when `say_cancel`), -1 another command replaced the prompt.
int AskWindow(const char* first, Point3* a, Point3* b, bool say_cancel) {
    AskAnswer ans;
    if (!Ask_Any(first, "C", 0, 0, &ans)) return -1;
    if (ans.kind != 0) {
        if (ans.kind == 1 && say_cancel) Msg_Printf("*Cancle*");
        return 0;
    }
    *a = ans.point;
    Input_SetRubberBand(a, "RECT", nullptr);
    if (!Ask_Any("\nWindow> Lower/Right corner <Cancle>: ", "C", 0, 0, &ans)) return -1;
    if (ans.kind != 0) {
        if (ans.kind == 1 && say_cancel) Msg_Printf("*Cancle*");
        return 0;
    }
    *b = ans.point;
    return 1;
}

SelectRequest Window(Point3 a, Point3 b) {
    SelectRequest r = Select_Around(a, 0);
    SelectRequest s = Select_Around(b, 0);
    r.x2 = s.x1;
    r.y2 = s.y1;
    return r;
}

}  // namespace

int Select_Objects() {
    Selection_Clear();
    const int entry = g.input.currentCommand;
    const bool single = g.selection.Select_Single != 0;
    int result = -1;        // still selecting
    bool replaced = false;  // a command code replaced a prompt
    {
        SelectSession session;
        int remove = 0, by_layer = 0;
        const char* prompt = "\nSelect Objects> ";
        while (result < 0 && !replaced) {
            g.input.cursorStyle = PICK_CURSOR;
            AskAnswer ans;
            if (!Ask_Any(prompt, "W,A,R,E,B", 0, ASK_ENTER_REPEATS, &ans)) {
                replaced = true;
                break;
            }
            const int total = g.scene.Selected_Count;
            switch (ans.kind) {
                case 0: {   // a pick
                    SelectRequest r = Select_Around(ans.point, PICK_HALF);
                    r.remove = remove;
                    r.first_only = 1;
                    r.by_layer = by_layer;
                    Select_Hits(&r);
                    if (single && r.total == 1) result = 1;
                    else PrintStatus("\n", r.found, r.total);
                    break;
                }
                case 1: {   // W
                    Point3 a, b;
                    const int got = AskWindow("\nWindow> Upper/Left corner <Cancel>: ", &a, &b, true);
                    if (got < 0) {
                        replaced = true;
                        break;
                    }
                    if (got == 0) break;
                    SelectRequest r = Window(a, b);
                    r.remove = remove;
                    r.first_only = single;
                    r.by_layer = by_layer;
                    Select_Hits(&r);
                    if (single && r.total == 1) result = 1;
                    else PrintStatus("\n", r.found, r.total);
                    break;
                }
                case 2:   // A
                    remove = 0;
                    prompt = "\nSelect Objects> ";
                    break;
                case 3:   // R
                    if (total >= 1) {
                        remove = 1;
                        prompt = "\nRemove Objects> ";
                    } else {
                        Msg_Printf("Nothing to Remove!");
                    }
                    break;
                case 4:   // E
                    if (total >= 1) {
                        Msg_Printf("Done!");
                        result = total;
                    } else {
                        Msg_Printf("Must Select an Object First!");
                    }
                    break;
                case 5:   // B
                    if (single) {
                        Msg_Printf("Can only select ONE object!");
                    } else {
                        by_layer = !by_layer;
                        Msg_Printf(by_layer ? "Select by LAYER = ON" : "Select by LAYER = OFF");
                    }
                    break;
                default: break;
            }
        }
    }
    if (replaced) {
        if (g.input.InputResult.code == entry) {   // the running command again: go on with it
            g.input.InputResult.code = CMD_NONE;
            result = g.scene.Selected_Count;
        } else {
            Selection_Clear();
            result = 0;
        }
    }
    g.selection.Select_Single = 0;
    return result;
}

int Select_One(int by_layer, int remove) {
    SelectSession session;
    for (;;) {
        g.input.cursorStyle = PICK_CURSOR;
        AskAnswer ans;
        if (!Ask_Any("\nSelect an Object> ", nullptr, 0, 0, &ans) || ans.kind != 0) break;
        SelectRequest r = Select_Around(ans.point, PICK_HALF);
        r.remove = remove;
        r.first_only = 1;
        r.by_layer = by_layer;
        if (Select_Hits(&r)) {
            PrintStatus("", r.found, g.scene.Selected_Count);
            break;
        }
        Msg_Printf("\nNo Objects found");
    }
    return 1;
}

int Select_Window(int by_layer, int remove) {
    SelectSession session;
    Point3 a, b;
    if (AskWindow("\nSELECT> Upper/Left corner of Window <Cancel>: ", &a, &b, false) != 1) return 1;
    SelectRequest r = Window(a, b);
    r.remove = remove;
    r.by_layer = by_layer;
    if (Select_Hits(&r)) PrintStatus("\n", r.found, r.total);
    else Msg_Printf("\nNo Objects found");
    return 1;
}

int Edit_UseSelection() {
    if (g.scene.Selected_Count > 0) return 1;
    if (Select_Objects() > 0) return 1;
    return Replaced() ? -1 : 0;
}

int Com_Select() {
    if (g.scene.Selected_Count == 0) SideMenu_Show(SELECT_SIDE_MENU);
    Select_Objects();
    return Finished();
}

int Com_DeselectAll() {
    Selection_Clear();
    g.input.InputResult.code = CMD_NONE;
    return 1;
}

// 952 to 955: one pick (by layer; remove); 956, 957: one window (remove).
int Com_PickLayer() {
    Select_One(1, 0);
    return Finished();
}
int Com_UnpickLayer() {
    Select_One(1, 1);
    return Finished();
}
int Com_PickObject() {
    Select_One(0, 0);
    return Finished();
}
int Com_UnpickObject() {
    Select_One(0, 1);
    return Finished();
}
int Com_WindowSelect() {
    Select_Window(0, 0);
    return Finished();
}
int Com_WindowDeselect() {
    Select_Window(0, 1);
    return Finished();
}
