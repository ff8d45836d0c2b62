// program_screen.h - the real program under a private Xvfb: its directories
// file, its run options, and the screen polled until it shows what is wanted.
#pragma once
#include <chrono>
#include <functional>
#include <map>
#include <string>
#include <thread>

#include "e2e/process.h"

// qmr.ini in `dir` with every directory `dir`, except those in `over`.
inline void WriteDirectoriesIni(const TempDir& dir,
                                const std::map<std::string, std::string>& over = {}) {
    std::string ini = "[DIRECTORIES]\n";
    for (const char* key :
         {"qmrmain", "qmrwork", "support", "povray", "scenes", "pov_out", "library"}) {
        auto o = over.find(key);
        ini += std::string(key) + " = " + (o == over.end() ? dir.path() : o->second) + "\n";
    }
    WriteFile(dir.file("qmr.ini"), ini + "[END]\n");
}

// Runs in `dir`, on the server, with its transcript in dir/transcript.txt.
inline RunOptions ProgramOptions(const TempDir& dir, const XvfbServer& xvfb) {
    RunOptions o;
    o.cwd = dir.path();
    o.env["DISPLAY"] = xvfb.display();
    o.env["QMR_TRANSCRIPT"] = dir.file("transcript.txt");
    o.timeout_s = 60;
    return o;
}

// The program redraws in its own time: takes a screenshot of the root every
// 200 ms, cropped by `crop` (ImageMagick geometry) into dir/`png`, until
// `probe` answers `want` or ten seconds have passed. Returns the last answer.
inline RunResult PollScreen(const TempDir& dir, const XvfbServer& xvfb, const std::string& crop,
                            const std::string& png, const std::string& want,
                            const std::function<RunResult(const RunOptions&)>& probe) {
    RunOptions x;
    x.env["DISPLAY"] = xvfb.display();
    RunResult r;
    for (int attempt = 0; attempt < 50 && r.out != want; attempt++) {
        std::this_thread::sleep_for(std::chrono::milliseconds(200));
        RunProcess({"sh", "-c", "xwd -root -silent > " + dir.file("s.xwd")}, x);
        RunProcess({"convert", "xwd:" + dir.file("s.xwd"), "-crop", crop, "+repage", dir.file(png)},
                   x);
        r = probe(x);
    }
    return r;
}
