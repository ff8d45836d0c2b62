// fuzz_raw.cpp - the RAW reader; each block is placed at a point taken
// from the block's position in the file (the insertion is moved each time).
#include "exchange/exchange.h"
#include "fuzz_common.h"
#include "scene/layers.h"

namespace {
int Place(Point3* insertion) {
    insertion->x += 1;
    return 1;
}
}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    FuzzFreshState();
    Layer_NewFirst();
    std::string path = FuzzFile("in.raw", data, size);
    Raw_Import(path.c_str(), Place);
    State_Reset();
    return 0;
}
