// undo.cpp - UNDO and REDO: the scene kept before each command that
// changed it.
//
// No command knows about undo. The command loop calls Undo_Before ahead of
// every command and Undo_After behind it. Undo_Before writes the scene
// through the work-file writer into memory (objects, layers, settings, the
// stored views) and notes the selection and the camera; Undo_After has the
// writer compare the scene with those bytes as it writes them, allocating
// nothing, and keeps the snapshot as an undo step only when the scene or the
// camera differs. So every command, including those added later, is undone
// in one step, and commands that only look, select or zoom leave no step.
//
// UNDO takes a snapshot of the scene as it is onto the redo list and reads
// the step back with the work-file reader; REDO does the opposite. A command
// that changes the scene empties the redo list; a load (OPEN, NEW, start-up)
// empties both.
//
// Bounds: at most Undo_Steps steps, and the snapshots of both lists
// together within Undo_Memory bytes; the oldest steps go first. When memory
// runs out while a snapshot is taken, the oldest steps are dropped until it
// fits; the command itself always runs. The user is told the first time
// this happens to a scene.
#include "cmd/undo.h"

#include <cstdlib>
#include <cstring>

#include "base/message.h"
#include "cmd/codes.h"
#include "scene/layers.h"
#include "state.h"
#include "ui/command_names.h"
#include "view/view_commands.h"
#include "workfile/workfile.h"

namespace {

UndoState& U() { return g.cmd.undo; }

// Commands that never change the scene: no snapshot is taken for them.
const int kLookOnly[] = {
    CMD_EXIT,         CMD_NEW,          CMD_SAVE,           CMD_SAVE_AS,     CMD_EXPORT_POV,
    CMD_EXPORT_RAW,   CMD_EXPORT_DXF,   CMD_RENDER,         CMD_RENDER_BAT,  CMD_SHADE,
    CMD_SYSTEM_INFO,  CMD_SELECT,       CMD_DESELECT_ALL,   CMD_PICK_LAYER,  CMD_UNPICK_LAYER,
    CMD_PICK_OBJECT,  CMD_UNPICK_OBJECT, CMD_WINDOW_SELECT, CMD_WINDOW_DESELECT,
    CMD_UNDO,         CMD_REDO,
};

bool LookOnly(int code) {
    for (int c : kLookOnly)
        if (c == code) return true;
    return false;
}

UndoCamera CameraNow() {
    const Viewport& v = g.view.Active_Viewport;
    return {v.CAM, v.TAR, v.UP, v.FOV, g.view.camera_aspect, v.CAMERA};
}

bool SameCamera(const UndoCamera& a, const UndoCamera& b) {
    auto same = [](const Point3& p, const Point3& q) { return p.x == q.x && p.y == q.y && p.z == q.z; };
    return same(a.cam, b.cam) && same(a.tar, b.tar) && same(a.up, b.up) && a.fov == b.fov &&
           a.aspect == b.aspect && a.shown == b.shown;
}

void FreeStep(UndoStep* s) {
    WorkFile_FreeSnapshot(&s->scene);
    free(s->selected);
    *s = UndoStep{};
}

size_t StepBytes(const UndoStep& s) { return s.scene.size + sizeof(long) * s.selected_count; }

// Drops the oldest step of the undo list, else of the redo list; false when
// both are empty.
bool DropOldest() {
    UndoState& u = U();
    std::vector<UndoStep>* from = !u.undo.empty() ? &u.undo : !u.redo.empty() ? &u.redo : nullptr;
    if (!from) return false;
    u.bytes -= StepBytes(from->front());
    FreeStep(&from->front());
    from->erase(from->begin());
    return true;
}

void Warn() {
    if (U().warned) return;
    U().warned = 1;
    Msg_Printf("\nLow on memory: the oldest undo steps were dropped");
}

// The ordinals of the selected objects, layers in list order and objects
// from the newest, as the reader rebuilds them. 0 when out of memory.
int CaptureSelection(UndoStep* s) {
    if (g.scene.Selected_Count <= 0) return 1;
    if (g.workfile.Snapshot_Fail > 0 && --g.workfile.Snapshot_Fail == 0) return 0;
    s->selected = static_cast<long*>(malloc(sizeof(long) * g.scene.Selected_Count));
    if (!s->selected) return 0;
    long n = 0;
    for (const Layer* l = g.scene.First_Layer; l; l = l->next)
        for (const Object* o = l->first_object; o; o = o->next, n++)
            if (o->selected && s->selected_count < g.scene.Selected_Count)
                s->selected[s->selected_count++] = n;
    return 1;
}

void RestoreSelection(const UndoStep& s) {
    long n = 0, k = 0;
    int count = 0;
    for (Layer* l = g.scene.First_Layer; l; l = l->next)
        for (Object* o = l->first_object; o; o = o->next, n++) {
            o->selected = k < s.selected_count && s.selected[k] == n;
            if (o->selected) {
                k++;
                count++;
            }
        }
    g.scene.Selected_Count = count;
}

// The scene as it is now, as a step of `code`. Memory is made by dropping
// the oldest steps; 0 when even that was not enough.
int Capture(UndoStep* s, int code) {
    *s = UndoStep{};
    for (;;) {
        if (WorkFile_Snapshot(&s->scene) && CaptureSelection(s)) break;
        FreeStep(s);
        if (!DropOldest()) return 0;
        Warn();
    }
    s->code = code;
    s->slot = g.view.Current_Viewport;
    s->camera = CameraNow();
    return 1;
}

// Adds a step to a list, then keeps both lists within their bounds.
void Keep(std::vector<UndoStep>* list, UndoStep* s) {
    UndoState& u = U();
    list->push_back(*s);
    *s = UndoStep{};
    u.bytes += StepBytes(list->back());
    const size_t limit = g.config.Undo_Memory > 0 ? (size_t)g.config.Undo_Memory : 0;
    while (u.undo.size() > (size_t)g.config.Undo_Steps) {
        u.bytes -= StepBytes(u.undo.front());
        FreeStep(&u.undo.front());
        u.undo.erase(u.undo.begin());
    }
    while (u.bytes > limit && DropOldest()) {
    }
}

void ClearList(std::vector<UndoStep>* list) {
    for (UndoStep& s : *list) {
        U().bytes -= StepBytes(s);
        FreeStep(&s);
    }
    list->clear();
}

const char* NameOf(int code) {
    for (const CommandName& c : g.menus.CommandTable)
        if (c.code == code) return c.name;
    return "command";
}

// Puts a step's scene back and shows it.
void Apply(const UndoStep& s) {
    if (!WorkFile_Restore(&s.scene, s.slot)) Msg_Printf("\nOut Of Memory!");
    RestoreSelection(s);
    g.view.camera_aspect = s.camera.aspect;
    Views_RedrawAll();
}

// UNDO (from the undo list to the redo list) and REDO (the other way).
int Step(std::vector<UndoStep>* from, std::vector<UndoStep>* to, const char* what) {
    if (from->empty()) {
        Msg_Printf("\nNothing to %s", what);
        return 1;
    }
    UndoState& u = U();
    UndoStep step = from->back();
    from->pop_back();
    u.bytes -= StepBytes(step);
    UndoStep now;
    const int kept = Capture(&now, step.code);
    Apply(step);
    Msg_Printf("\n%s %s", what[0] == 'u' ? "Undone:" : "Redone:", NameOf(step.code));
    FreeStep(&step);
    if (kept) Keep(to, &now);
    else Msg_Printf("\nNo memory to keep this step for %s", what[0] == 'u' ? "REDO" : "UNDO");
    return 1;
}

}  // namespace

void Undo_Clear() {
    UndoState& u = U();
    ClearList(&u.undo);
    ClearList(&u.redo);
    FreeStep(&u.pending);
    u.have_pending = 0;
    u.bytes = 0;
    u.warned = 0;
}

void Undo_Before(int code) {
    UndoState& u = U();
    FreeStep(&u.pending);
    u.have_pending = 0;
    if (LookOnly(code) || g.config.Undo_Steps <= 0) return;
    u.loads = g.workfile.Load_Count;
    if (Capture(&u.pending, code)) u.have_pending = 1;
    else Warn();
}

void Undo_After() {
    UndoState& u = U();
    if (!u.have_pending) return;
    u.have_pending = 0;
    if (g.workfile.Load_Count != u.loads) {   // a new scene: nothing before it to go back to
        FreeStep(&u.pending);
        Undo_Clear();
        return;
    }
    if (WorkFile_SameScene(&u.pending.scene) && SameCamera(u.pending.camera, CameraNow())) {
        FreeStep(&u.pending);
        return;
    }
    ClearList(&u.redo);
    Keep(&u.undo, &u.pending);
}

int Undo_Count() { return (int)U().undo.size(); }
int Redo_Count() { return (int)U().redo.size(); }
size_t Undo_Bytes() { return U().bytes; }

int Com_Undo() { return Step(&U().undo, &U().redo, "undo"); }
int Com_Redo() { return Step(&U().redo, &U().undo, "redo"); }
