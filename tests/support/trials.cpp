#include "trials.h"

#include <cstdlib>
#include <exception>
#include <fstream>

namespace qbobj_test
{

namespace
{

const char *asked(const char *variable)
{
    const char *const value = std::getenv(variable);
    return value != nullptr && *value != '\0' ? value : nullptr;
}

} // namespace

bool Tally::is_long()
{
    return asked("QBOBJ_TORTURE_SECONDS") != nullptr;
}

Tally::~Tally()
{
    const bool failed = ::testing::Test::HasFailure() || std::uncaught_exceptions() > 0;
    if (const char *const file = asked("QBOBJ_TRIALS"))
        std::ofstream(file, std::ios::app)
            << kind_ << '\t' << count_ << '\t' << (failed ? 1 : 0) << '\t' << (failed ? repeat_ : "") << '\n';
}

Trials::Trials(std::string kind, int trials) : Tally(std::move(kind)), trials_(trials), seed_(0)
{
    if (const char *const seconds = asked("QBOBJ_TORTURE_SECONDS")) {
        end_ = std::chrono::steady_clock::now() + std::chrono::seconds(std::atol(seconds));
        seed_ = std::random_device{}();
        seed_ <<= 20;
    }
    if (const char *const seed = asked("QBOBJ_SEED")) {
        end_.reset();
        trials_ = 1;
        seed_ = std::strtoull(seed, nullptr, 10) - 1;
    }
}

bool Trials::next()
{
    trace_.reset();
    if (::testing::Test::HasFailure())
        return false;
    if (end_ ? std::chrono::steady_clock::now() >= *end_ : counted() >= trials_)
        return false;
    count();
    random_.seed(++seed_);
    repeat_ = "QBOBJ_SEED=" + std::to_string(seed_);
    trace_.emplace(__FILE__, __LINE__, repeat_);
    return true;
}

} // namespace qbobj_test
