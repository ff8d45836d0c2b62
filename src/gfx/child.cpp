// child.cpp - child processes (the ray tracer) reaped by the event pump.
//
// The program starts a child and goes on working; nothing ever waits for
// it. Each X11_PumpEvents asks, without blocking, whether a child it knows
// has ended, so no finished child stays a zombie for longer than one pass
// of the event loop. Ended children are queued with their wait status until
// the command layer reports them.
//
// The lists live here rather than in the state record: they describe
// processes of the operating system, which a reset of the program's state
// does not end.
#include <sys/types.h>
#include <sys/wait.h>

#include <vector>

#include "gfx/gfx.h"

namespace {

struct Ended {
    int pid;
    int status;
};

std::vector<int> g_running;     // started and not yet reaped
std::vector<Ended> g_ended;     // reaped and not yet reported

}  // namespace

void Gfx_ChildStarted(int pid) {
    if (pid > 0) g_running.push_back(pid);
}

int Gfx_ChildrenRunning() { return (int)g_running.size(); }

int Gfx_ReapChildren() {
    int reaped = 0;
    for (size_t i = 0; i < g_running.size();) {
        int status = 0;
        pid_t r = waitpid(g_running[i], &status, WNOHANG);
        if (r == 0) {   // still running
            i++;
            continue;
        }
        // Ended (r is its pid), or no longer ours to wait for (r < 0):
        // either way it is off the list; only a real end is reported.
        if (r > 0) {
            g_ended.push_back({g_running[i], status});
            reaped++;
        }
        g_running.erase(g_running.begin() + (long)i);
    }
    return reaped;
}

int Gfx_ChildEnded(int* pid, int* status) {
    if (g_ended.empty()) return 0;
    *pid = g_ended.front().pid;
    *status = g_ended.front().status;
    g_ended.erase(g_ended.begin());
    return 1;
}
