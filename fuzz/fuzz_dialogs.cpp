// fuzz_dialogs.cpp - a dialog file, and a picture file it may show: the
// input up to its first NUL byte is "fuzz.dlg", the rest "fuzz.pic". The
// dialog is opened, its picture drawn once more, run until Escape, closed.
#include <cstring>

#include "fuzz_common.h"
#include "gfx/gfx.h"
#include "ui/dialog.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    FuzzFreshState();
    const uint8_t* nul = (const uint8_t*)memchr(data, 0, size);
    const size_t text = nul ? (size_t)(nul - data) : size;
    FuzzFile("fuzz.dlg", data, text);
    const size_t rest = nul ? size - text - 1 : 0;
    std::string picture = FuzzFile("fuzz.pic", nul ? nul + 1 : data, rest);
    Dialog d;
    if (Dialog_Open(&d, "fuzz.dlg")) {
        Dialog_DrawFile(&d, picture.c_str(), 8, 8);
        Headless_PushKey(KEY_ESCAPE);
        DialogResult r;
        Dialog_Run(&d, &r);
        Dialog_Close(&d);
    }
    State_Reset();
    return 0;
}
