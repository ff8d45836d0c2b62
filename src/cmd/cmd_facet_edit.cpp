// cmd_facet_edit.cpp - the TRIANGLE Edit and FACE Edit machines: a corner
// cursor (1..3 or 1..4) marked by the XOR cross, M moves the corner, N and
// P step through the corners (wrapping round), E ends. A moved corner
// erases the facet (drawn in the background colour) and draws it again.
// The edit command itself (302, also what an empty Enter repeats) is
// ignored; another command ends the machine.
#include <cstdio>

#include "base/message.h"
#include "cmd/cmd.h"
#include "cmd/poly_support.h"
#include "input/input.h"
#include "state.h"
#include "ui/menu.h"

namespace {

const int MASK_MAIN = 17;   // keywords only; Enter repeats (the edit command: ignored)
const int SIDE_FACET_EDIT = 1033;

int Run(Object* obj, Layer* layer, Point3* corner, int count, const char* prompt) {
    int cur = 0;
    for (;;) {
        Msg_Printf("\nPosition: %d", cur + 1);
        PolyCmd_MarkShow(corner[cur], layer);
        AskAnswer a;
        const int ok = PolyCmd_Ask(prompt, "M,N,P,E", 0, MASK_MAIN, &a);
        PolyCmd_MarkHide();
        if (!ok) return 0;
        switch (a.kind) {
            case 1: {   // M
                char move[160];
                snprintf(move, sizeof move, "\nPoint <%g,%g,%g>: ", corner[cur].x, corner[cur].y, corner[cur].z);
                Point3 base = corner[cur];
                Input_SetRubberBand(&base, "LINE", nullptr);
                AskAnswer p;
                if (!PolyCmd_Ask(move, nullptr, 0, 0, &p)) return 0;
                if (p.kind == 0) {
                    Edit_DrawObject(obj, layer, 1);
                    corner[cur] = p.point;
                    Edit_DrawObject(obj, layer, 0);
                }
                break;
            }
            case 2: cur = (cur + 1) % count; break;           // N
            case 3: cur = (cur + count - 1) % count; break;   // P
            case 4: return 1;                                 // E
            default: break;
        }
    }
}

int WithMenu(Object* obj, Layer* layer, Point3* corner, int count, const char* prompt) {
    const int menu = g.menus.side.shown;
    SideMenu_Show(SIDE_FACET_EDIT);
    const int r = Run(obj, layer, corner, count, prompt);
    SideMenu_Show(menu);
    return r;
}

}  // namespace

int Triangle_Edit(Object* obj, Layer* layer) {
    return WithMenu(obj, layer, ((TriangleData*)obj->data)->corner, 3, "\nTRIANGLE Edit <Move,Next,Prev,Exit>: ");
}

int Face_Edit(Object* obj, Layer* layer) {
    return WithMenu(obj, layer, ((FaceData*)obj->data)->corner, 4, "\nFACE Edit <Move,Next,Prev,Exit>: ");
}
