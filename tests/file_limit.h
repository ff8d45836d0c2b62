// file_limit.h - a real failing write: while a FileSizeLimit lives, no file
// this process writes can grow past the given size. SIGXFSZ is ignored, so
// a write beyond the limit fails with EFBIG, as on a full disk.
#pragma once
#include <sys/resource.h>

#include <csignal>

class FileSizeLimit {
  public:
    explicit FileSizeLimit(rlim_t bytes) {
        old_handler_ = signal(SIGXFSZ, SIG_IGN);
        getrlimit(RLIMIT_FSIZE, &old_);
        rlimit lim = old_;
        lim.rlim_cur = bytes;
        setrlimit(RLIMIT_FSIZE, &lim);
    }
    ~FileSizeLimit() {
        setrlimit(RLIMIT_FSIZE, &old_);
        signal(SIGXFSZ, old_handler_);
    }
    FileSizeLimit(const FileSizeLimit&) = delete;
    FileSizeLimit& operator=(const FileSizeLimit&) = delete;

  private:
    rlimit old_{};
    void (*old_handler_)(int) = nullptr;
};
