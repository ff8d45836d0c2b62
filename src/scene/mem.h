// mem.h - allocation of scene data.
//
// Every record, point array and layer goes through these three functions so
// that tests can make the n-th allocation fail and check that each command
// reports "Out of Memory" in its own words and leaves the scene unchanged.
#pragma once
#include <cstddef>

#include "scene/scene_state.h"


void* Mem_Alloc(size_t size);               // nullptr on failure
void* Mem_Realloc(void* p, size_t size);    // nullptr on failure, p untouched
void Mem_Free(void* p);                     // nullptr is fine
void Mem_FailAfter(long n);                 // n-th allocation from now fails; 0 = never
