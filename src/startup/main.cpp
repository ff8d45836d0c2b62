// main.cpp - entry point. Start reading at Startup_Run() in startup.cpp.
//
// `qmr --script ...` runs without a window: the program built on the
// in-memory display, qmr-script beside this one, takes over the process.
#include <unistd.h>

#include <climits>
#include <cstdio>
#include <cstring>
#include <string>

#include "startup/startup.h"

int main(int argc, char** argv) {
    if (argc > 1 && strcmp(argv[1], "--script") == 0) {
        char self[PATH_MAX];
        ssize_t n = readlink("/proc/self/exe", self, sizeof self - 1);
        std::string dir = n > 0 ? std::string(self, n) : std::string(argv[0]);
        dir = dir.substr(0, dir.rfind('/') + 1);
        const std::string helper = dir + "qmr-script";
        execv(helper.c_str(), argv);
        perror(helper.c_str());
        return 3;
    }
    Startup_Run(argc, argv);
}
