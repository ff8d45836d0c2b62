// fuzz_workfile.cpp - the work-file readers (2.10 and 2.0A, chosen by the
// magic) and merge: any bytes load without a crash, a leak or a hang.
//
// A few hundred bytes can ask for primitives of thousands of segments; the
// redraw that ends a load draws them for as long as the user lets it. Here
// a key is waiting, as from a user who stops a slow redraw at once.
#include "fuzz_common.h"
#include "gfx/gfx.h"
#include "scene/layers.h"
#include "workfile/workfile.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    FuzzFreshState();
    Headless_PushKey(KEY_ESCAPE);
    std::string path = FuzzFile("in.qmr", data, size);
    WorkFile_Load(path.c_str());
    WorkFile_Merge(path.c_str());   // into what the load left
    State_Reset();
    return 0;
}
