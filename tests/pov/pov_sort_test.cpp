// pov_sort_test.cpp - the bounded-memory sort of the normal pass over the
// spool: every record comes back once, in order, whether it stayed in
// memory, spilled runs merged at once, or runs merged in several passes.
#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <vector>

#include "pov/pov_sort.h"
#include "test_support.h"

namespace {

struct Rec {
    uint32_t key;    // many duplicates
    uint32_t item;   // which record it was
};

struct ByKey {
    bool operator()(const Rec& a, const Rec& b) const { return a.key < b.key; }
};

class PovSort : public QmrTest {};

// Budgets of 8 records (runs of 8, merged 2 at a time: many passes), 40
// (9 at a time) and plenty (no run at all); counts around the run size.
TEST_F(PovSort, EveryRecordComesBackOnceInOrder) {
    for (size_t budget : {8 * sizeof(Rec), 40 * sizeof(Rec), size_t(1) << 20}) {
        for (uint32_t n : {0u, 1u, 7u, 8u, 9u, 64u, 1000u, 5003u}) {
            long live = g.mem.live_blocks;
            {
                Pov_ExternalSort<Rec, ByKey> sort(budget);
                ASSERT_TRUE(sort.ok());
                for (uint32_t i = 0; i < n; i++) ASSERT_TRUE(sort.Add({(i * 7919u) % 97u, i}));
                ASSERT_TRUE(sort.Finish());
                std::vector<uint32_t> keys, seen(n, 0);
                Rec r;
                while (sort.Next(&r)) {
                    keys.push_back(r.key);
                    ASSERT_LT(r.item, n);
                    ASSERT_EQ(r.key, (r.item * 7919u) % 97u);   // the record came back whole
                    seen[r.item]++;
                }
                EXPECT_EQ(keys.size(), n) << budget << " " << n;
                EXPECT_TRUE(std::is_sorted(keys.begin(), keys.end())) << budget << " " << n;
                EXPECT_EQ(std::count(seen.begin(), seen.end(), 1u), (long)n) << budget << " " << n;
            }
            EXPECT_EQ(g.mem.live_blocks, live);
        }
    }
}

// Less memory than 8 records, or none to be had: no sort, nothing taken.
TEST_F(PovSort, WithoutItsMemoryItRefuses) {
    Pov_ExternalSort<Rec, ByKey> small(7 * sizeof(Rec));
    EXPECT_FALSE(small.ok());
    EXPECT_FALSE(small.Add({1, 1}));
    Mem_FailAfter(1);
    Pov_ExternalSort<Rec, ByKey> refused(1 << 20);
    EXPECT_FALSE(refused.ok());
    EXPECT_FALSE(refused.Finish());
}

}  // namespace
