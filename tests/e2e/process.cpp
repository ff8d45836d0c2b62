// process.cpp - child processes, Xvfb and temporary directories for tests.
#include "e2e/process.h"

#include <fcntl.h>
#include <poll.h>
#include <signal.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <chrono>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <thread>

extern char** environ;

RunResult RunProcess(const std::vector<std::string>& argv, const RunOptions& opt) {
    RunResult r;
    int in[2], out[2];
    if (pipe(in) != 0 || pipe(out) != 0) return r;
    pid_t pid = fork();
    if (pid == 0) {
        dup2(in[0], 0);
        dup2(out[1], 1);
        dup2(out[1], 2);
        close(in[0]);
        close(in[1]);
        close(out[0]);
        close(out[1]);
        if (opt.clear_env) clearenv();
        for (auto& [k, v] : opt.env) {
            if (v == "\x01unset") unsetenv(k.c_str());
            else setenv(k.c_str(), v.c_str(), 1);
        }
        if (!opt.cwd.empty() && chdir(opt.cwd.c_str()) != 0) _exit(126);
        std::vector<char*> args;
        for (auto& a : argv) args.push_back(const_cast<char*>(a.c_str()));
        args.push_back(nullptr);
        execvp(args[0], args.data());
        _exit(127);
    }
    close(in[0]);
    close(out[1]);
    signal(SIGPIPE, SIG_IGN);
    if (!opt.input.empty()) {
        ssize_t w = write(in[1], opt.input.data(), opt.input.size());
        (void)w;
    }
    if (!opt.keep_stdin_open) close(in[1]);
    auto start = std::chrono::steady_clock::now();
    size_t next_signal = 0, next_action = 0, action_from = 0;
    char buf[4096];
    for (;;) {
        pollfd p{out[0], POLLIN, 0};
        int n = poll(&p, 1, 50);
        if (n > 0) {
            ssize_t got = read(out[0], buf, sizeof buf);
            if (got <= 0) break;
            r.out.append(buf, got);
        }
        if (next_action < opt.actions.size()) {
            size_t at = r.out.find(opt.actions[next_action].when, action_from);
            if (at != std::string::npos) {
                action_from = at + opt.actions[next_action].when.size();
                std::this_thread::sleep_for(std::chrono::milliseconds(100));
                int rc = system(opt.actions[next_action++].command.c_str());
                (void)rc;
            }
        }
        if (next_signal < opt.signals.size() &&
            r.out.find(opt.signal_when) != std::string::npos) {
            std::this_thread::sleep_for(std::chrono::milliseconds(200));
            kill(pid, opt.signals[next_signal++]);
        }
        double secs = std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
        if (secs > opt.timeout_s) {
            r.timed_out = true;
            kill(pid, SIGKILL);
            break;
        }
    }
    close(out[0]);
    if (opt.keep_stdin_open) close(in[1]);
    int status = 0;
    waitpid(pid, &status, 0);
    r.status = WIFEXITED(status) ? WEXITSTATUS(status) : 128 + WTERMSIG(status);
    return r;
}

XvfbServer::XvfbServer(const char* screen, const std::vector<std::string>& extraArgs) {
    // -displayfd lets the server pick a free display itself and tell us once
    // it accepts connections: no race between tests started together.
    // -noreset: a server that resets when its last client leaves can drop a
    // client that connects meanwhile (the tests poll with short-lived ones).
    int fds[2];
    if (pipe2(fds, O_CLOEXEC) != 0) return;
    pid_t pid = fork();
    if (pid == 0) {
        fcntl(fds[1], F_SETFD, 0);
        int devnull = open("/dev/null", O_RDWR);
        dup2(devnull, 1);
        dup2(devnull, 2);
        std::string fd = std::to_string(fds[1]);
        std::vector<const char*> args = {"Xvfb", "-displayfd", fd.c_str(), "-screen", "0", screen,
                                         "-nolisten", "tcp", "-noreset"};
        for (const std::string& a : extraArgs) args.push_back(a.c_str());
        args.push_back(nullptr);
        execvp("Xvfb", const_cast<char**>(args.data()));
        _exit(127);
    }
    close(fds[1]);
    std::string number;
    struct pollfd p = {fds[0], POLLIN, 0};
    char c;
    while (poll(&p, 1, 20000) > 0 && read(fds[0], &c, 1) == 1 && c != '\n') number += c;
    close(fds[0]);
    if (pid > 0 && !number.empty()) {
        pid_ = pid;
        display_ = ":" + number;
    } else if (pid > 0) {
        kill(pid, SIGKILL);
        waitpid(pid, nullptr, 0);
    }
}

XvfbServer::~XvfbServer() {
    if (pid_ > 0) {
        kill(pid_, SIGTERM);
        waitpid(pid_, nullptr, 0);
    }
}

TempDir::TempDir() {
    char tmpl[] = "/tmp/qmrtestXXXXXX";   // no ".": start-up cuts a work path at its first one
    path_ = mkdtemp(tmpl);
}

TempDir::~TempDir() {
    std::error_code ec;
    std::filesystem::remove_all(path_, ec);
}

void WriteFile(const std::string& path, const std::string& text) {
    std::ofstream f(path, std::ios::binary);
    f << text;
}

std::string ReadFile(const std::string& path) {
    std::ifstream f(path, std::ios::binary);
    std::stringstream s;
    s << f.rdbuf();
    return s.str();
}

bool FileExists(const std::string& path) {
    struct stat st;
    return stat(path.c_str(), &st) == 0;
}

BackgroundRun::BackgroundRun(const std::vector<std::string>& argv, const RunOptions& opt) {
    char tmpl[] = "/tmp/qmrpid.XXXXXX";
    int fd = mkstemp(tmpl);
    if (fd >= 0) close(fd);
    pidfile_ = tmpl;
    std::vector<std::string> wrapped = {"/bin/sh", "-c", "echo $$ > \"$0\"; exec \"$@\"", pidfile_};
    wrapped.insert(wrapped.end(), argv.begin(), argv.end());
    thread_ = new std::thread([this, wrapped, opt] {
        result_ = RunProcess(wrapped, opt);
        ended_ = true;
    });
}

RunResult BackgroundRun::Finish(int sig) {
    auto* t = static_cast<std::thread*>(thread_);
    if (!finished_) {
        std::string text = ReadFile(pidfile_);
        int pid = atoi(text.c_str());
        if (pid > 0 && !ended_) kill(pid, sig);
        t->join();
        finished_ = true;
        unlink(pidfile_.c_str());
    }
    return result_;
}

BackgroundRun::~BackgroundRun() {
    Finish();
    delete static_cast<std::thread*>(thread_);
}

bool WaitForFileText(const std::string& path, const std::string& text, double seconds) {
    auto start = std::chrono::steady_clock::now();
    while (ReadFile(path).find(text) == std::string::npos) {
        if (std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count() > seconds)
            return false;
        std::this_thread::sleep_for(std::chrono::milliseconds(50));
    }
    return true;
}
