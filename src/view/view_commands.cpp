// view_commands.cpp - the view commands and the viewport side of the prompt.
//
// First cut: the entry points exist so the command loop can name them; the
// bodies are filled in by the following commits.
#include "view/view_commands.h"

#include "state.h"

int Com_Redraw() { return 1; }
int Com_ZoomIn() { return 1; }
int Com_Unzoom() { return 1; }
int Com_ZoomAll() { return 1; }
int Com_Pan() { return 1; }
int Com_ZoomOut() { return 1; }
int Com_RedrawAll() { return 1; }
int Com_View3D() { return 1; }
int Com_ToggleWorld() { return 1; }
int Com_ViewTop() { return 1; }
int Com_ViewBottom() { return 1; }
int Com_ViewRight() { return 1; }
int Com_ViewLeft() { return 1; }
int Com_ViewFront() { return 1; }
int Com_ViewBack() { return 1; }
int Com_Duplicate() { return 1; }
int Com_Area() { return 1; }
int Com_Elevation() { return 1; }
int Com_Vpoint() { return 1; }

void Views_RedrawAll() {}
void View_Refresh() {}
void Zoom_ResetAll() {}
void Zoom_FreeAll() {}
void SaveZoom() {}

int Views_ToggleMaximise() { return 1; }
int Views_SwitchAt(int, int) { return 0; }

int View_PickHandler(int x, int y) {
    View_ScreenToWorld(&g.view.Active_Viewport, x, y);
    return 0;
}
