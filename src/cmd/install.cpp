// install.cpp - the hooks through which the layers below reach up: the
// consumer of each facet-sink mode and the prompt's transparent commands.
#include "cmd/cmd.h"
#include "exchange/exchange.h"
#include "input/input.h"
#include "model/output.h"
#include "pov/pov.h"
#include "view/shade.h"
#include "view/view_commands.h"
#include "view/view_draw.h"

namespace {

// The scene file takes every facet as triangles into its spool.
int SpoolTriangle(Point3 a, Point3 b, Point3 c) {
    Pov_SpoolTriangle(a, b, c);
    return 0;
}

}  // namespace

void Commands_Install() {
    OutputConsumer screen{};
    screen.on_screen = 1;
    screen.move_to = View_ScreenMoveTo;
    screen.line_to = View_ScreenLineTo;
    screen.redraw_all = Views_RedrawAll;
    screen.use_layer = View_UseLayerTransform;
    screen.nothing_drawn = View_PollStop;
    Output_SetConsumer(OUTPUT_SCREEN, screen);

    OutputConsumer pov{};
    pov.triangle = SpoolTriangle;
    Output_SetConsumer(OUTPUT_POV, pov);

    OutputConsumer dxf{};   // 3DFACE entities: facets with their corners
    dxf.facet = Dxf_Facet;
    Output_SetConsumer(OUTPUT_DXF, dxf);

    OutputConsumer raw{};   // triangle lines: quads arrive split (0,1,2), (2,3,0)
    raw.triangle = Raw_Triangle;
    Output_SetConsumer(OUTPUT_RAW, raw);

    Output_SetConsumer(OUTPUT_EXPLODE, Output_ExplodeConsumer());

    OutputConsumer shade{};   // filled polygons: facets with their corners and edges
    shade.facet = Shade_Facet;
    Output_SetConsumer(OUTPUT_SHADE, shade);

    Input_SetTransparentHook(Command_Transparent);
    Input_SetIdleHook(Render_ReportEnded);
}
