// script_main.cpp - entry of qmr-script, the program on the in-memory
// display that `qmr --script FILE [workfile]` runs (see script.cpp).
#include <cstdio>
#include <cstring>

#include "startup/script.h"

int main(int argc, char** argv) {
    int at = argc > 1 && strcmp(argv[1], "--script") == 0 ? 2 : 1;
    if (argc <= at || argc > at + 2) {
        fprintf(stderr, "usage: qmr --script FILE|- [workfile]\n");
        return 3;
    }
    char* args[3] = {argv[0], argc > at + 1 ? argv[at + 1] : nullptr, nullptr};
    return Script_Run(argv[at], args[1] ? 2 : 1, args);
}
