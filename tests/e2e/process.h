// process.h - running the real program (or any command) from a test, and a
// private X server for tests that need a display.
#pragma once
#include <atomic>
#include <map>
#include <string>
#include <vector>

struct RunResult {
    int status = -1;        // exit status, or 128 + signal
    bool timed_out = false;
    std::string out;        // standard output and standard error
};

struct RunOptions {
    std::string cwd;                              // "" = current directory
    std::map<std::string, std::string> env;       // set (value "\x01unset" removes)
    bool clear_env = false;                       // start from an empty environment
    std::string input;                            // written to standard input, then closed
    double timeout_s = 20;                        // killed after this
    bool keep_stdin_open = false;                 // don't close standard input after `input`
    // Signals sent in order, each once `signal_when` has appeared in the output,
    // 200 ms apart.
    std::vector<int> signals;
    std::string signal_when;
    // Shell commands run in order (e.g. xdotool typing into the window), each
    // once its `when` text has appeared in the output after the point where
    // the previous action ran.
    struct Action {
        std::string when;
        std::string command;
    };
    std::vector<Action> actions;
};

RunResult RunProcess(const std::vector<std::string>& argv, const RunOptions& opt);

// A program run in the background until Finish(): started through a shell
// that records its pid, so that Finish() can end it with a signal.
class BackgroundRun {
  public:
    BackgroundRun(const std::vector<std::string>& argv, const RunOptions& opt);
    ~BackgroundRun();
    // Sends `sig` (unless the program has ended) and waits for its result.
    RunResult Finish(int sig = 15);

  private:
    std::string pidfile_;
    RunResult result_;
    void* thread_;   // std::thread, kept out of this header
    std::atomic<bool> ended_{false};   // the program has been waited for: its pid may be reused
    bool finished_ = false;
};

// Polls the file until it contains `text`; false after `seconds`.
bool WaitForFileText(const std::string& path, const std::string& text, double seconds);

// An Xvfb server on a free display number, stopped by the destructor.
class XvfbServer {
  public:
    explicit XvfbServer(const char* screen = "1280x1024x24",
                        const std::vector<std::string>& extraArgs = {});
    ~XvfbServer();
    bool ok() const { return pid_ > 0; }
    const std::string& display() const { return display_; }

  private:
    int pid_ = -1;
    std::string display_;
};

// A fresh temporary directory, removed with its contents by the destructor.
class TempDir {
  public:
    TempDir();
    ~TempDir();
    const std::string& path() const { return path_; }
    std::string file(const std::string& name) const { return path_ + "/" + name; }

  private:
    std::string path_;
};

void WriteFile(const std::string& path, const std::string& text);
std::string ReadFile(const std::string& path);
bool FileExists(const std::string& path);
