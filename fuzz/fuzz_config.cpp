// fuzz_config.cpp - the configuration file reader.
#include "fuzz_common.h"
#include "startup/config.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    State_Reset();
    std::string path = FuzzFile("qmr.ini", data, size);
    Config_ReadFile(path.c_str());
    return 0;
}
