// bench_util.h - clocks, file sizes and side-by-side timing for the
// benchmarks.
//
// Every benchmark times the program's work and a baseline doing the same
// amount of plain work in the same run, in turn, several times, and prints
// the medians and their ratio: the machine is shared, so only a ratio taken
// side by side means much.
#pragma once
#include <time.h>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <vector>

inline double Now() {
    using namespace std::chrono;
    return duration<double>(steady_clock::now().time_since_epoch()).count();
}

// CPU time of this process (user + system).
inline double CpuNow() {
    timespec t;
    clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &t);
    return t.tv_sec + t.tv_nsec * 1e-9;
}

inline long FileSize(const char* path) {
    FILE* f = fopen(path, "rb");
    if (!f) return 0;
    fseek(f, 0, SEEK_END);
    long n = ftell(f);
    fclose(f);
    return n;
}

inline double Median(std::vector<double> v) {
    if (v.empty()) return 0;
    std::sort(v.begin(), v.end());
    size_t n = v.size();
    return n % 2 ? v[n / 2] : (v[n / 2 - 1] + v[n / 2]) / 2;
}

// Times `work` and `base` in turn `runs` times (wall clock) and prints one
// line: both medians and their ratio. Returns the ratio.
template <typename W, typename B>
double Compare(const char* what, const char* base_name, int runs, W work, B base) {
    std::vector<double> tw, tb;
    for (int i = 0; i < runs; i++) {
        double t = Now();
        work();
        tw.push_back(Now() - t);
        t = Now();
        base();
        tb.push_back(Now() - t);
    }
    double mw = Median(tw), mb = Median(tb), ratio = mb > 0 ? mw / mb : 0;
    printf("%-44s %8.3f s | %-28s %8.3f s | ratio %6.2f  (medians of %d)\n", what, mw, base_name,
           mb, ratio, runs);
    fflush(stdout);
    return ratio;
}
