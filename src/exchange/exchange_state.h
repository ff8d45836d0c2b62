// exchange_state.h - state of the DXF and RAW export while it runs. Types only.
#pragma once

#include <cstdio>

struct ExchangeState {
    FILE* file = nullptr;        // export file while an export runs
    char layerName[13] = "";     // export layer: what the DXF "  8" lines carry
    long objectsDone = 0;        // objects written by this export (break poll)
    int Shade_Dif = 0;           // $SHADEDIF of the last DXF header read; nothing reads it
};
