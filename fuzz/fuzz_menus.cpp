// fuzz_menus.cpp - one input read as the pull-down menu file and as the
// side menu file (whose menus are then all shown), and as command.dat.
#include "fuzz_common.h"
#include "ui/command_names.h"
#include "ui/menu.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    FuzzFreshState();
    std::string path = FuzzFile("menu.mnu", data, size);
    FuzzFile("command.dat", data, size);
    Command_Lookup("EXIT");   // reads command.dat
    Command_HotKey('a');
    MenuBar_Load(&g.menus.bar, path.c_str());
    if (SideMenu_Load("menu.mnu")) {
        for (int n : {1000, 1001, 1010, 1512}) SideMenu_Show(n);
    }
    State_Reset();
    return 0;
}
