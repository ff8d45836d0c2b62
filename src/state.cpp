// state.cpp - the global state record and its reset.
#include "state.h"

#include "cmd/cmd.h"
#include "cmd/undo.h"
#include "scene/layers.h"
#include "startup/config.h"
#include "ui/menu.h"
#include "view/shade.h"
#include "view/view_commands.h"

State g;

void State_Reset() {
    Undo_Clear();   // its snapshots are scene blocks
    Scene_Clear();
    Zoom_FreeAll();
    Shade_End();   // a run cut short keeps no buffers
    MenuBar_Free(&g.menus.bar);
    SideMenu_Close();   // the side menu file stays open until here
    long live = g.mem.live_blocks;
    g = State{};
    g.mem.live_blocks = live;   // blocks outside the scene are still out there
    Config_SetDefaults();
    Commands_Install();
}
