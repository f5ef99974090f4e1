// What is measured, and the figures with their limits that are drawn from it.
#pragma once

#include <benchmark/benchmark.h>

#include <functional>
#include <map>
#include <memory>
#include <string>
#include <utility>
#include <vector>

namespace qbobj_bench
{

// The figures of one run. Every measurement is repeated, in turns with the others, and its quickest run
// counts: it is the one that the rest of the machine disturbed least.
class Figures
{
  public:
    // The thread's own processor time, or the time on the wall where another process does the work.
    enum class Clock { processor, wall };

    // Something to measure on, which lives as long as the figures.
    template <class Subject, class... Arguments>
    std::shared_ptr<Subject> keep(Arguments &&...arguments)
    {
        auto subject = std::make_shared<Subject>(std::forward<Arguments>(arguments)...);
        kept_.push_back(subject);
        return subject;
    }

    // A measurement that calls `run` with a state to loop over once.
    void measure(const std::string &name, std::function<void(benchmark::State &)> run, int repetitions = 7,
                 Clock clock = Clock::processor);

    // A measurement's seconds in those of another one.
    void ratio_at_most(const std::string &figure, const std::string &measured, const std::string &floor,
                       double limit);
    void milliseconds_at_most(const std::string &figure, const std::string &measured, double limit);
    void value_at_most(const std::string &figure, double value, double limit);

    // Runs everything, prints one line a figure, and tells whether all are within their limits. The arguments
    // are those of Google Benchmark, e.g. --benchmark_filter=REGEX; figures without their measurements are
    // left out.
    bool run(std::vector<std::string> arguments);

  private:
    using Seconds = std::map<std::string, double>; // by measurement

    struct Figure {
        std::string name;
        std::vector<std::string> needs; // measurements
        std::function<double(const Seconds &)> value;
        double limit;
    };
    class Collector;

    void add(Figure figure);
    static bool print(const Figure &figure, double value);

    std::vector<std::shared_ptr<void>> kept_;
    std::map<std::string, Clock> clocks_;
    std::vector<Figure> figures_;
};

} // namespace qbobj_bench
