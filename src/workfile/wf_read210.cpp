// wf_read210.cpp - the version 2.10 reader, used by load and merge.
//
// Tagged sections are read until the end tag. Instance links name layers by
// position, and a layer may point at one that comes later in the file, so
// they are collected while reading and resolved once every layer exists.
// Positions count after g.scene.Layer_Base (non-zero during a merge).
//
// A file cut short keeps what was read and gives 0. Corrupt files must
// leave a valid scene: links to no layer are dropped, and so are links that
// would make a layer show itself (directly, through an ancestor, or round a
// chain of instances), since drawing and writing such a scene never ends.
#include <unordered_map>
#include <vector>

#include "base/message.h"
#include "scene/mem.h"
#include "state.h"
#include "workfile/wf_internal.h"
#include "workfile/wf_io.h"

namespace {

struct LinkPair {
    int32_t layer;      // position of the layer (key 1)
    int32_t instance;   // position of its instance (key 8)
};

struct PendingLinks {
    LinkPair* pairs = nullptr;
    int count = 0;
};

int AddLink(PendingLinks* links, LinkPair pair) {
    void* grown = Mem_Realloc(links->pairs, sizeof(LinkPair) * (links->count + 1));
    if (!grown) return 0;
    links->pairs = static_cast<LinkPair*>(grown);
    links->pairs[links->count++] = pair;
    return 1;
}

void FreeLinks(PendingLinks* links) {
    Mem_Free(links->pairs);
    *links = PendingLinks{};
}

// Layer at a position of the file, counted after the merge base.
Layer* LayerAtFilePosition(int32_t pos) {
    if (pos < 1) return nullptr;
    long long at = static_cast<long long>(pos) + g.scene.Layer_Base;
    if (at > Layer_Count()) return nullptr;
    return Layer_At(static_cast<int>(at));
}

int ReadTableSection(WfIn* f, const WfField* table, size_t n, int32_t* current_layer) {
    for (;;) {
        int key;
        if (!Wf_GetByte(f, &key)) return 0;
        key &= 0xFF;
        if (key == KEY_END) return 1;
        if (const WfField* fld = Wf_FindField(table, n, key)) {
            if (!Wf_GetField(f, fld->type, fld->where(), fld->size)) return 0;
            continue;
        }
        if (!current_layer || key < 19 || key > 21) continue;   // unknown: one byte
        int32_t v;
        if (!Wf_GetInt32(f, &v)) return 0;
        if (key == 19) WfView_ApplyLayout(v);
        if (key == 21) *current_layer = v;   // key 20 is dropped
    }
}

int ReadLayer(WfIn* f, PendingLinks* links) {
    Layer* l = Layer_Append();
    if (!l) {
        Msg_Printf("\nOut of Memory for Layers!");
        return 0;
    }
    int32_t pos = 0, instance = -1;
    int32_t* ints[] = {&l->csg, &l->color, &l->on, &l->level, &instance, &l->rotation_order};
    Point3* points[] = {&l->translate,         &l->scale,         &l->rotate,
                        &l->texture_translate, &l->texture_scale, &l->texture_rotate};
    for (;;) {
        int key, ok = 1;
        if (!Wf_GetByte(f, &key)) return 0;
        key &= 0xFF;
        if (key == KEY_END) break;
        if (key == 1) ok = Wf_GetInt32(f, &pos);
        else if (key == 2) {
            ok = Wf_GetRaw(f, l->name, 12);   // 12 bytes in the file, terminated here
            l->name[12] = '\0';
        }
        else if (key == 3) ok = Wf_GetField(f, WF_TEXT, l->texture, sizeof l->texture);
        else if (key >= 4 && key <= 9) ok = Wf_GetInt32(f, ints[key - 4]);
        else if (key >= 10 && key <= 15) ok = Wf_GetPoint(f, points[key - 10]);
        if (!ok) return 0;
    }
    if (instance != -1 && !AddLink(links, {pos, instance}))
        Msg_Printf("Warning: could not sistain instance for Layer: %s", l->name);
    return 1;
}

// Is `a` an ancestor of `l` (a layer before it with a smaller level, each
// found one lower than the last)?
bool IsAncestor(const Layer* a, const Layer* l) {
    int lowest = l->level;
    for (const Layer* p = l->prev; p; p = p->prev) {
        if (p->level >= lowest) continue;
        lowest = p->level;
        if (p == a) return true;
    }
    return false;
}

// Drops instance links that would make a layer show itself.
void DropLoopingInstances() {
    std::vector<Layer*> order;
    std::unordered_map<const Layer*, int> index;
    for (Layer* l = g.scene.First_Layer; l; l = l->next) {
        index[l] = static_cast<int>(order.size());
        order.push_back(l);
    }
    for (Layer* l : order)
        if (l->instance && (l->instance == l || IsAncestor(l->instance, l))) l->instance = nullptr;
    // Each layer has at most one instance, so the links form chains; a chain
    // that comes back to a layer on the current walk is a loop, cut where it
    // closes.
    std::vector<int> state(order.size(), 0);   // 0 new, 1 on the walk, 2 done
    for (size_t start = 0; start < order.size(); start++) {
        int i = static_cast<int>(start);
        std::vector<int> walk;
        while (i >= 0 && state[i] == 0) {
            state[i] = 1;
            walk.push_back(i);
            Layer* next = order[i]->instance;
            int j = next ? index[next] : -1;
            if (j >= 0 && state[j] == 1) {
                order[i]->instance = nullptr;
                j = -1;
            }
            i = j;
        }
        for (int w : walk) state[w] = 2;
    }
}

void ResolveLinks(const PendingLinks* links) {
    for (int i = 0; i < links->count; i++) {
        Layer* target = LayerAtFilePosition(links->pairs[i].instance);
        if (!target) continue;
        if (Layer* l = LayerAtFilePosition(links->pairs[i].layer)) l->instance = target;
    }
    DropLoopingInstances();
}

}  // namespace

int Wf_Read210(WfIn* f) {
    PendingLinks links;
    int32_t current_layer = 0;
    for (;;) {
        int tag, ok = 1;
        if (!Wf_GetByte(f, &tag)) break;
        tag &= 0xFF;
        if (tag == TAG_END) break;
        switch (tag) {
            case TAG_SETTINGS:
                ok = ReadTableSection(f, kSettingsFields, kSettingsFieldCount, &current_layer);
                Wf_ClampSettings();
                break;
            case TAG_OUTPUT:
                ok = ReadTableSection(f, kOutputFields, kOutputFieldCount, nullptr);
                Wf_ClampSettings();
                break;
            case TAG_VIEWPORT: ok = WfView_ReadSlot(f); break;
            case TAG_LAYER: ok = ReadLayer(f, &links); break;
            case TAG_OBJECTS: ok = Wf_ReadObjects(f); break;
            default: break;   // unknown tag byte: skipped
        }
        if (!ok) break;
    }
    if (f->eof) {   // ended before the end tag
        FreeLinks(&links);
        return 0;
    }
    const int restoring = g.workfile.Restore_Slot;
    WfView_AfterLoad(restoring ? restoring : 1);
    ResolveLinks(&links);
    Layer* current = LayerAtFilePosition(current_layer);
    g.scene.Current_Layer = current ? current : g.scene.First_Layer;
    FreeLinks(&links);
    if (restoring) return 1;   // undo redraws once it has put the selection back
    Msg_Printf("\nRedrawing...");
    WfView_RedrawAll();
    return 1;
}
