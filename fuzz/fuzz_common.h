// fuzz_common.h - what every fuzz target shares: a private directory, the
// input written to a file there (the readers take paths), and a fresh state
// with the headless screen open for each input.
#pragma once
#include <unistd.h>

#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <string>

#include "gfx/headless/headless.h"
#include "gfx/screen.h"
#include "state.h"

// A directory of this process, made once.
inline const std::string& FuzzDir() {
    static std::string dir = [] {
        char tmpl[] = "/tmp/qmrfuzzXXXXXX";
        if (!mkdtemp(tmpl)) abort();
        return std::string(tmpl);
    }();
    return dir;
}

// Writes the input to `name` in the fuzz directory; returns its path.
inline std::string FuzzFile(const char* name, const uint8_t* data, size_t size) {
    std::string path = FuzzDir() + "/" + name;
    FILE* f = fopen(path.c_str(), "wb");
    if (!f) abort();
    if (size && fwrite(data, 1, size, f) != size) abort();
    fclose(f);
    return path;
}

// A fresh program state: configuration defaults, the fuzz directory as the
// work and support directory, the headless screen open, no input queued.
inline void FuzzFreshState() {
    State_Reset();
    Headless_Reset();
    Screen_Open(18);
    snprintf(g.config.WORK_DIR, sizeof g.config.WORK_DIR, "%s", FuzzDir().c_str());
    snprintf(g.config.SUPPORT_DIR, sizeof g.config.SUPPORT_DIR, "%s", FuzzDir().c_str());
}
