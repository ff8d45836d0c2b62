// fuzz_dxf.cpp - the DXF reader with every section's question answered Yes.
#include "exchange/exchange.h"
#include "fuzz_common.h"
#include "scene/layers.h"

namespace {
int AnswerYes(int, int* yes) {
    *yes = 1;
    return 1;
}
}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    FuzzFreshState();
    Layer_NewFirst();
    std::string path = FuzzFile("in.dxf", data, size);
    Dxf_Import(path.c_str(), AnswerYes);
    State_Reset();
    return 0;
}
