// view_layer.cpp - the layer transforms of one layer, for drawing a single
// object where the traversal would draw it (selection highlight, the edit
// commands' erase and redraw, the drag preview).
#include "state.h"
#include "view/view_draw.h"

void View_UseLayerTransform(const Layer* layer) {
    g.view.xform_depth = 0;
    if (!layer) return;
    // The ancestors are the nearest earlier layers of each lower level.
    const Layer* chain[VIEW_XFORM_MAX];
    int n = 0;
    chain[n++] = layer;
    int level = layer->level;
    for (const Layer* l = layer->prev; l && level > 0 && n < VIEW_XFORM_MAX; l = l->prev)
        if (l->level < level) {
            chain[n++] = l;
            level = l->level;
        }
    while (n > 0) View_PushLayerTransform(chain[--n]);   // outermost first
}
