// fuzz_workfile.cpp - the work-file readers (2.10 and 2.0A, chosen by the
// magic) and merge: any bytes load without a crash, a leak or a hang.
#include "fuzz_common.h"
#include "scene/layers.h"
#include "workfile/workfile.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    FuzzFreshState();
    std::string path = FuzzFile("in.qmr", data, size);
    WorkFile_Load(path.c_str());
    WorkFile_Merge(path.c_str());   // into what the load left
    State_Reset();
    return 0;
}
