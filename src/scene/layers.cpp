// layers.cpp - the layer list, nesting, instancing and whole-scene release.
#include "scene/layers.h"

#include <cstring>

#include "scene/mem.h"
#include "state.h"
#include "base/field.h"

namespace {

Layer* NewLayer() {
    Layer* l = static_cast<Layer*>(Mem_Alloc(sizeof(Layer)));
    if (!l) return nullptr;
    memset(l, 0, sizeof *l);
    strcpy(l->name, "Untitled");
    l->scale = {1, 1, 1};
    l->texture_scale = {1, 1, 1};
    l->csg = CSG_UNION;
    l->color = 15;
    l->on = 1;
    return l;
}

void Unlink(Layer* l) {
    if (l->prev) l->prev->next = l->next;
    else g.scene.First_Layer = l->next;
    if (l->next) l->next->prev = l->prev;
    l->prev = l->next = nullptr;
}

void InsertBefore(Layer* l, Layer* before) {
    l->next = before;
    l->prev = before->prev;
    if (before->prev) before->prev->next = l;
    else g.scene.First_Layer = l;
    before->prev = l;
}

void InsertAfter(Layer* l, Layer* after) {
    l->prev = after;
    l->next = after->next;
    if (after->next) after->next->prev = l;
    after->next = l;
}

// Children of l move up one level.
void PromoteChildren(Layer* l) {
    for (Layer* c = l->next; c && c->level > l->level; c = c->next) c->level--;
}

bool IsBlock(const Layer* l) {
    for (Layer* x = g.scene.First_Layer; x; x = x->next)
        if (x->instance == l) return true;
    return false;
}

// Drops every instance that points at one of its own layer's ancestors.
bool SweepAncestorInstances() {
    bool dropped = false;
    for (Layer* l = g.scene.First_Layer; l; l = l->next) {
        if (!l->instance) continue;
        int lowest = l->level;
        for (Layer* a = l->prev; a; a = a->prev) {
            if (a->level >= lowest) continue;
            lowest = a->level;
            if (a == l->instance) {
                l->instance = nullptr;
                dropped = true;
                break;
            }
        }
    }
    return dropped;
}

const LayerErrorBox kErrorBoxes[3] = {
    {38, 7, 2, {"The BLOCK Layer must NOT", "be Nested from another Layer.", nullptr}},
    {39, 8, 3,
     {"Two seporate BLOCK Layers must", "NOT call each other. This would",
      "lead to an endless recusive loop."}},
    {39, 7, 2, {"The Current_Layer may NOT", "contain an instance of it-self.", nullptr}},
};

}  // namespace

Layer* Layer_NewFirst() {
    Layer* l = NewLayer();
    if (!l) return nullptr;
    l->next = g.scene.First_Layer;
    if (l->next) l->next->prev = l;
    g.scene.First_Layer = l;
    g.scene.Current_Layer = l;
    return l;
}

Layer* Layer_Append() {
    Layer* l = NewLayer();
    if (!l) return nullptr;
    Layer* last = g.scene.First_Layer;
    while (last && last->next) last = last->next;
    if (last) InsertAfter(l, last);
    else g.scene.First_Layer = l;
    g.scene.Current_Layer = l;
    return l;
}

int Layer_Find(const char* name) {
    for (Layer* l = g.scene.First_Layer; l; l = l->next) {
        if (SameName(l->name, name)) {
            g.scene.Current_Layer = l;
            return 1;
        }
    }
    return 0;
}

int Layer_Make(const char* name) {
    if (Layer_Find(name)) return 1;
    Layer* l = Layer_NewFirst();
    if (!l) return 0;
    CopyCut(l->name, sizeof l->name, name);
    return 1;
}

Layer* Layer_At(int position) {
    if (position < 1) return nullptr;
    Layer* l = g.scene.First_Layer;
    for (int i = 1; l && i < position; i++) l = l->next;
    return l;
}

int Layer_Count() {
    int n = 0;
    for (Layer* l = g.scene.First_Layer; l; l = l->next) n++;
    return n;
}

int Layer_SelectByIndex(int n) {
    Layer* l = n >= 1 ? Layer_At(n + g.scene.Layer_Base) : nullptr;
    if (!l) {
        g.scene.Current_Layer = g.scene.First_Layer;
        return 0;
    }
    g.scene.Current_Layer = l;
    return 1;
}

int Layer_Delete(Layer* layer) {
    if (!layer || layer->first_object) return 0;
    if (!layer->prev && !layer->next) return 0;   // the only layer
    for (Layer* l = g.scene.First_Layer; l; l = l->next)
        if (l->instance == layer) l->instance = nullptr;
    PromoteChildren(layer);
    Layer* successor = layer->next ? layer->next : layer->prev;
    Unlink(layer);
    Mem_Free(layer);
    g.scene.Current_Layer = successor;
    return 1;
}

void Scene_Clear() {
    Layer* l = g.scene.First_Layer;
    while (l) {
        Object* o = l->first_object;
        while (o) {
            Object* older = o->next;
            Object_Free(o);
            o = older;
        }
        Layer* next = l->next;
        Mem_Free(l);
        l = next;
    }
    g.scene.First_Layer = g.scene.Current_Layer = nullptr;
    g.scene.Selected_Count = 0;
}

const LayerErrorBox* Layer_ErrorBox(int n) {
    return n >= 1 && n <= 3 ? &kErrorBoxes[n - 1] : nullptr;
}

Layer* Layer_TopAncestor(Layer* layer) {
    Layer* a = layer;
    while (a && a->level != 0) a = a->prev;
    return a ? a : g.scene.First_Layer;
}

int Layer_ApplyOption(Layer* target, int option, int* error_box) {
    *error_box = 0;
    Layer* c = g.scene.Current_Layer;
    if (!target || !c || target == c) return 0;
    switch (option) {
        case LAYER_OPT_DEL_INSTANCE:
            target->instance = nullptr;
            return 1;
        case LAYER_OPT_INSTANCE: {
            if (c->level != 0) {
                *error_box = 1;
                return 0;
            }
            Layer* a = Layer_TopAncestor(target);
            for (Layer* l = c; l && (l == c || l->level != 0); l = l->next) {
                if (l->instance == a) {
                    *error_box = 2;
                    return 0;
                }
            }
            target->instance = c;
            break;
        }
        case LAYER_OPT_NEST:
        case LAYER_OPT_SLIDE:
            if (IsBlock(c) && target->level != 0) {
                *error_box = 1;
                return 0;
            }
            PromoteChildren(c);
            Unlink(c);
            if (option == LAYER_OPT_SLIDE) {
                c->level = target->level;
                InsertBefore(c, target);
            } else {
                c->level = target->level + 1;
                InsertAfter(c, target);
            }
            break;
        default:
            return 0;
    }
    if (SweepAncestorInstances()) *error_box = 3;
    return 1;
}
