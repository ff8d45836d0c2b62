// wf_views.cpp - the work file's share of the viewports: the layout and
// current-viewport settings, the four stored viewports (section 3), and
// what a load does to the views afterwards.
#include "input/settings.h"
#include "state.h"
#include "view/view_commands.h"
#include "view/viewport.h"
#include "workfile/wf_internal.h"
#include "workfile/wf_io.h"


namespace {

enum { VIEW_BLOCK_20A = 668 };

// Section 3 keys 1..20: how each value reaches a viewport record.
enum Apply { DIRECT, FOV, AREA, PITCH, HEADING, KIND, CENTRE };

struct ViewField {
    int key;
    WfType type;
    size_t offset;
    Apply apply;
};

#define V(key, type, field, apply) {key, type, offsetof(Viewport, field), apply}
const ViewField kViewFields[] = {
    V(1, WF_POINT, CAM, DIRECT),      V(2, WF_POINT, TAR, DIRECT),
    V(3, WF_POINT, UP, DIRECT),       V(4, WF_DOUBLE, FOV, FOV),
    V(5, WF_INT, CAMERA, DIRECT),     V(6, WF_INT, CENTER, DIRECT),
    V(7, WF_INT, AXIS, DIRECT),       V(8, WF_INT, title_on, DIRECT),
    V(9, WF_INT, SNAP, DIRECT),       V(10, WF_DOUBLE, SNAPX, DIRECT),
    V(11, WF_DOUBLE, SNAPY, DIRECT),  V(12, WF_INT, GRID, DIRECT),
    V(13, WF_DOUBLE, GRIDX, DIRECT),  V(14, WF_DOUBLE, GRIDY, DIRECT),
    V(15, WF_INT, WORLD, DIRECT),     V(16, WF_DOUBLE, PITCH, PITCH),
    V(17, WF_DOUBLE, HEADING, HEADING), V(18, WF_DOUBLE, AREA, AREA),
    V(19, WF_INT, VIEW, KIND),        V(20, WF_POINT, ELEVATION, CENTRE),
};
#undef V

void ApplyValue(Viewport* vp, const ViewField& fld, const void* value) {
    char* at = reinterpret_cast<char*>(vp) + fld.offset;
    switch (fld.apply) {
        case DIRECT:
            if (fld.type == WF_INT) *reinterpret_cast<int*>(at) = *static_cast<const int32_t*>(value);
            else if (fld.type == WF_DOUBLE) *reinterpret_cast<double*>(at) = *static_cast<const double*>(value);
            else *reinterpret_cast<Point3*>(at) = *static_cast<const Point3*>(value);
            break;
        case FOV: View_SetFov(vp, *static_cast<const double*>(value)); break;
        case AREA: View_SetArea(vp, *static_cast<const double*>(value)); break;
        case PITCH: View_SetPitch(vp, *static_cast<const double*>(value)); break;
        case HEADING: View_SetHeading(vp, *static_cast<const double*>(value)); break;
        case KIND: View_SetKind(vp, *static_cast<const int32_t*>(value)); break;
        case CENTRE: View_SetCentre(vp, *static_cast<const Point3*>(value)); break;
    }
}

}  // namespace

int WfView_Layout() { return g.view.Viewport_Layout; }
int WfView_Current() { return g.view.Current_Viewport; }
// The redraw comes once, at the end of the load (WfView_RedrawAll).
void WfView_ApplyLayout(int n) {
    int keep = g.view.suppress_redraw;
    g.view.suppress_redraw = 1;
    Views_SetLayout(n, 0);
    g.view.suppress_redraw = keep;
}
void WfView_StoreWorking() { Views_StoreActive(); }

int WfView_WriteSlot(WfOut* f, int n) {
    const Viewport& vp = g.view.Viewports[n];
    Wf_PutByte(f, TAG_VIEWPORT);
    Wf_PutInt32(f, n);
    for (const ViewField& fld : kViewFields) {
        Wf_PutByte(f, fld.key);
        Wf_PutField(f, fld.type, reinterpret_cast<const char*>(&vp) + fld.offset, 0);
    }
    return Wf_PutByte(f, KEY_END);
}

int WfView_ReadSlot(WfIn* f) {
    int32_t n;
    if (!Wf_GetInt32(f, &n)) return 0;
    const bool slot = n >= 1 && n <= 4;
    Viewport copy = slot ? g.view.Viewports[n] : g.view.Active_Viewport;
    for (;;) {
        int key;
        if (!Wf_GetByte(f, &key)) return 0;
        key &= 0xFF;
        if (key == KEY_END) break;
        if (key < 1 || key > 20) continue;   // unknown: a single byte
        const ViewField& fld = kViewFields[key - 1];
        union {
            int32_t i;
            double d;
            Point3 p;
        } value;
        if (!Wf_GetField(f, fld.type, &value, 0)) return 0;
        ApplyValue(&copy, fld, &value);
    }
    // Re-aim the camera; a camera on its own target keeps the matrix.
    View_LookAt(&copy, copy.CAM, copy.TAR);
    if (slot) g.view.Viewports[n] = copy;
    return 1;
}

void WfView_AfterLoad(int slot) {
    ViewState& v = g.view;
    v.Current_Viewport = slot;
    v.Active_Viewport = v.Viewports[slot];
    // These settings act on all five records, so every view then has the
    // camera of this slot.
    Point3 tar = v.Active_Viewport.TAR, up = v.Active_Viewport.UP, cam = v.Active_Viewport.CAM;
    double fov = v.Active_Viewport.FOV;
    Var_SetPoint("TAR", &tar);
    Var_SetPoint("UP", &up);
    Var_SetPoint("CAM", &cam);
    Var_SetDouble("FOV", &fov);
}

// The one place a load asks for the views to be redrawn: the loaded views
// start their zoom stacks afresh.
void WfView_RedrawAll() {
    Zoom_ResetAll();
    Views_RedrawAll();
}

int WfView_Skip20A(WfIn* f) {
    unsigned char block[VIEW_BLOCK_20A];
    return Wf_GetRaw(f, block, sizeof block);
}
