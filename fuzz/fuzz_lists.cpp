// fuzz_lists.cpp - one input read as "textures.dat" (the predefined
// texture names) and as "colors.dat" (the named colours).
#include <string>
#include <vector>

#include "fuzz_common.h"
#include "pov/texture_lists.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    FuzzFreshState();
    std::string names_path = FuzzFile("textures.dat", data, size);
    std::string colours_path = FuzzFile("colors.dat", data, size);
    std::vector<std::string> names;
    std::vector<NamedColour> colours;
    TextListReport report{};
    TextureNames_Read(names_path.c_str(), &names, &report);
    TextListReport colour_report{};
    Colours_Read(colours_path.c_str(), &colours, &colour_report);
    // Whatever was kept must be what the readers promise.
    for (const std::string& n : names)
        if (n.empty() || n.size() > 20) __builtin_trap();
    for (const NamedColour& c : colours)
        if (c.name[0] == '\0') __builtin_trap();
    State_Reset();
    return 0;
}
