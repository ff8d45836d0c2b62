// mem.cpp - scene allocation with a failure hook for tests.
#include "scene/mem.h"

#include <cstdlib>

#include "state.h"

static bool Mem_ShouldFail() {
    g.mem.allocations++;
    if (g.mem.fail_countdown <= 0) return false;
    return --g.mem.fail_countdown == 0;
}

void* Mem_Alloc(size_t size) {
    if (Mem_ShouldFail()) return nullptr;
    void* p = std::malloc(size ? size : 1);
    if (p) g.mem.live_blocks++;
    return p;
}

void* Mem_Realloc(void* p, size_t size) {
    if (!p) return Mem_Alloc(size);
    if (Mem_ShouldFail()) return nullptr;
    return std::realloc(p, size ? size : 1);
}

void Mem_Free(void* p) {
    if (!p) return;
    g.mem.live_blocks--;
    std::free(p);
}

void Mem_FailAfter(long n) { g.mem.fail_countdown = n; }
