// Trials of faults: how many are made, which random numbers each of them gets, and what is told of them.
#pragma once

#include <gtest/gtest.h>

#include <chrono>
#include <cstdint>
#include <optional>
#include <random>
#include <string>

namespace qbobj_test
{

// Counts the trials of a kind of fault. What it counted, and whether its test failed, goes to the file that the
// environment names in QBOBJ_TRIALS, from which scripts/torture.sh makes its table.
class Tally
{
  public:
    explicit Tally(std::string kind) : kind_(std::move(kind)) {}
    ~Tally();
    Tally(const Tally &) = delete;
    Tally &operator=(const Tally &) = delete;

    void count() { ++count_; }
    // A long run was asked for: whoever strides through the places of a fault visits all of them.
    static bool is_long();

  protected:
    int counted() const { return count_; }
    // What repeats the failing trial.
    std::string repeat_;

  private:
    std::string kind_;
    int count_ = 0;
};

// Random trials, each with a seed of its own, which a failure shows. `trials` of them, always the same; as many as fit
// into QBOBJ_TORTURE_SECONDS, with seeds that nobody tried, when that is set; the one with the seed QBOBJ_SEED, when that
// is. Ends at the first failure.
//
//     for (Trials trials("kill", 40); trials.next();)
//         cut_off_after(trials.below(1000));
class Trials : public Tally
{
  public:
    Trials(std::string kind, int trials);

    bool next();
    std::uint64_t seed() const { return seed_; }
    // A number from 0 to one less than `end`.
    std::size_t below(std::size_t end)
    {
        return std::uniform_int_distribution<std::size_t>(0, end - 1)(random_);
    }
    bool one_in(std::size_t many) { return below(many) == 0; }
    std::mt19937_64 &random() { return random_; }

  private:
    int trials_;
    std::uint64_t seed_;
    std::optional<std::chrono::steady_clock::time_point> end_;
    std::mt19937_64 random_;
    std::optional<::testing::ScopedTrace> trace_;
};

} // namespace qbobj_test
