// fuzz_textures.cpp - the texture library "textures.wrk": loading a record
// by name and writing the declarations of every record a layer uses.
#include <cstring>

#include "fuzz_common.h"
#include "pov/pov.h"
#include "pov/textures.h"
#include "scene/layers.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    FuzzFreshState();
    FuzzFile("textures.wrk", data, size);
    TextureRecord rec;
    Texture_Load(&rec, size >= 20 ? std::string((const char*)data, strnlen((const char*)data, 20)).c_str() : "X");
    Layer* l = Layer_NewFirst();
    if (l && size >= 20) {   // the layer uses the texture named by the first bytes
        size_t n = strnlen((const char*)data, 20);
        memcpy(l->texture, data, n);
        l->texture[n] = '\0';
    }
    g.writer.file = fopen("/dev/null", "w");
    Pov_WriteTextures();
    fclose(g.writer.file);
    g.writer.file = nullptr;
    State_Reset();
    return 0;
}
