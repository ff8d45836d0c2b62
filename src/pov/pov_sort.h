// pov_sort.h - sorting fixed-size records with a bounded amount of memory,
// for the normal pass over the triangle spool when memory is short.
//
// Records are added, then read back in ascending order. While they fit the
// memory given they stay there; beyond it, each full buffer is sorted and
// written as a run to an anonymous temporary file, and the runs are merged:
// in one pass when the buffer can hold a window of every run, else in
// passes that merge as many runs as it can into longer ones. Memory comes
// from Mem_Alloc (one block); every failure (memory, temporary file, a
// write) makes ok() false and the records unavailable.
#pragma once
#include <unistd.h>

#include <algorithm>
#include <cstdio>
#include <cstring>
#include <vector>

#include "scene/mem.h"

template <class Rec, class Less>
class Pov_ExternalSort {
  public:
    explicit Pov_ExternalSort(size_t budget_bytes) {
        cap_ = budget_bytes / sizeof(Rec);
        if (cap_ < kMinRecords) return;
        buf_ = static_cast<Rec*>(Mem_Alloc(cap_ * sizeof(Rec)));
        failed_ = buf_ == nullptr;
    }
    ~Pov_ExternalSort() {
        Mem_Free(buf_);
        if (runs_) fclose(runs_);
        if (spare_) fclose(spare_);
    }
    Pov_ExternalSort(const Pov_ExternalSort&) = delete;
    Pov_ExternalSort& operator=(const Pov_ExternalSort&) = delete;

    bool ok() const { return buf_ && !failed_; }

    bool Add(const Rec& r) {
        if (!ok()) return false;
        if (n_ == cap_ && !Spill()) return false;
        buf_[n_++] = r;
        return true;
    }

    // After the last Add: prepares reading in order.
    bool Finish() {
        if (!ok()) return false;
        if (runs_list_.empty()) {   // everything is in memory
            std::sort(buf_, buf_ + n_, Less());
            at_ = 0;
            return true;
        }
        if (n_ && !Spill()) return false;
        while (runs_list_.size() > Ways() && MergePass()) {
        }
        return ok() && OpenWindows(runs_list_, 0, runs_list_.size());
    }

    // The next record in order; false at the end (or after a failure).
    bool Next(Rec* out) {
        if (!ok()) return false;
        if (runs_list_.empty()) {
            if (at_ >= n_) return false;
            *out = buf_[at_++];
            return true;
        }
        return Pop(out);
    }

  private:
    static constexpr size_t kMinRecords = 8;   // less memory than this: no sort at all

    struct Run {
        long first;   // record index in the file
        long count;
    };
    struct Window {   // the part of a run being merged, held in buf_
        long next;    // next record of the run in the file
        long left;    // records of the run not yet read into the window
        size_t at, have, base, size;   // window = buf_[base + at .. base + have)
    };

    // Runs merged at once: each needs a window, and an output window is kept.
    size_t Ways() const { return std::max<size_t>(2, cap_ / 4 - 1); }

    bool Fail() {
        failed_ = true;
        return false;
    }

    static bool WriteAt(FILE* f, const void* p, size_t bytes, long record) {
        return pwrite(fileno(f), p, bytes, (off_t)record * (off_t)sizeof(Rec)) == (ssize_t)bytes;
    }
    static bool ReadAt(FILE* f, void* p, size_t bytes, long record) {
        return pread(fileno(f), p, bytes, (off_t)record * (off_t)sizeof(Rec)) == (ssize_t)bytes;
    }

    // The buffer sorted and appended to the runs file as one run.
    bool Spill() {
        if (!runs_ && !(runs_ = tmpfile())) return Fail();
        std::sort(buf_, buf_ + n_, Less());
        if (!WriteAt(runs_, buf_, n_ * sizeof(Rec), end_)) return Fail();
        runs_list_.push_back({end_, (long)n_});
        end_ += (long)n_;
        n_ = 0;
        return true;
    }

    bool Fill(Window& w) {
        size_t k = (size_t)std::min<long>(w.left, (long)w.size);
        if (!ReadAt(runs_, buf_ + w.base, k * sizeof(Rec), w.next)) return Fail();
        w.next += (long)k;
        w.left -= (long)k;
        w.at = 0;
        w.have = k;
        return true;
    }

    // Windows over runs [a, b), each of an equal share of the buffer but
    // the last share, which is kept for output.
    bool OpenWindows(const std::vector<Run>& runs, size_t a, size_t b) {
        size_t share = cap_ / (b - a + 1);
        windows_.clear();
        heap_.clear();
        for (size_t r = a; r < b; r++) {
            Window w{runs[r].first, runs[r].count, 0, 0, (r - a) * share, share};
            windows_.push_back(w);
            if (!Fill(windows_.back())) return false;
            if (windows_.back().have) heap_.push_back((int)(r - a));
        }
        out_base_ = (b - a) * share;
        out_size_ = cap_ - out_base_;
        std::make_heap(heap_.begin(), heap_.end(), HeapLess{this});
        return true;
    }

    const Rec& Head(int w) const { return buf_[windows_[w].base + windows_[w].at]; }

    struct HeapLess {   // a max-heap on "greater" puts the smallest head on top
        const Pov_ExternalSort* s;
        bool operator()(int a, int b) const { return Less()(s->Head(b), s->Head(a)); }
    };

    bool Pop(Rec* out) {
        if (heap_.empty()) return false;
        std::pop_heap(heap_.begin(), heap_.end(), HeapLess{this});
        int w = heap_.back();
        *out = Head(w);
        Window& win = windows_[w];
        if (++win.at == win.have && (!win.left || !Fill(win))) {
            heap_.pop_back();   // the run is used up (or failed: ok() tells)
            return ok();
        }
        std::push_heap(heap_.begin(), heap_.end(), HeapLess{this});
        return true;
    }

    // Merges the runs in groups of Ways() into a second file, which then
    // holds the (fewer, longer) runs.
    bool MergePass() {
        if (!spare_ && !(spare_ = tmpfile())) return Fail();
        std::vector<Run> merged;
        long end = 0;
        for (size_t a = 0; a < runs_list_.size(); a += Ways()) {
            size_t b = std::min(runs_list_.size(), a + Ways());
            if (!OpenWindows(runs_list_, a, b)) return false;
            long start = end;
            size_t used = 0;
            Rec r;
            while (Pop(&r)) {
                buf_[out_base_ + used++] = r;
                if (used == out_size_) {
                    if (!WriteAt(spare_, buf_ + out_base_, used * sizeof(Rec), end)) return Fail();
                    end += (long)used;
                    used = 0;
                }
            }
            if (!ok()) return false;
            if (used && !WriteAt(spare_, buf_ + out_base_, used * sizeof(Rec), end)) return Fail();
            end += (long)used;
            merged.push_back({start, end - start});
        }
        std::swap(runs_, spare_);
        runs_list_.swap(merged);
        return true;
    }

    Rec* buf_ = nullptr;
    size_t cap_ = 0;           // records the buffer holds
    size_t n_ = 0;             // records in the buffer while adding
    size_t at_ = 0;            // next record to read when all stayed in memory
    bool failed_ = false;
    FILE* runs_ = nullptr;     // the sorted runs, one after the other
    FILE* spare_ = nullptr;    // the runs of the next merge pass
    long end_ = 0;             // records written to runs_ while adding
    std::vector<Run> runs_list_;
    std::vector<Window> windows_;
    std::vector<int> heap_;    // windows with records left, smallest head first
    size_t out_base_ = 0, out_size_ = 0;   // output window of a merge pass
};
