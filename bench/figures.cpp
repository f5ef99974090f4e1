// Running the measurements with Google Benchmark and holding the figures against their limits.
#include "figures.h"

#include <algorithm>
#include <cstdio>
#include <stdexcept>

namespace qbobj_bench
{

// Keeps the quickest run of each measurement.
class Figures::Collector : public benchmark::BenchmarkReporter
{
  public:
    Collector(const std::map<std::string, Clock> &clocks, Seconds &seconds)
        : clocks_(clocks), seconds_(seconds)
    {
    }
    bool ReportContext(const Context &) override { return true; }
    void ReportRuns(const std::vector<Run> &runs) override
    {
        for (const Run &run : runs) {
            const std::string &name = run.run_name.function_name;
            if (run.error_occurred)
                throw std::runtime_error(name + ": " + run.error_message);
            if (run.run_type != Run::RT_Iteration)
                continue;
            const bool wall = clocks_.at(name) == Clock::wall;
            const double seconds = wall ? run.real_accumulated_time : run.cpu_accumulated_time;
            const auto [known, is_first] = seconds_.emplace(name, seconds);
            if (!is_first)
                known->second = std::min(known->second, seconds);
        }
    }

  private:
    const std::map<std::string, Clock> &clocks_;
    Seconds &seconds_;
};

void Figures::measure(const std::string &name, std::function<void(benchmark::State &)> run, int repetitions,
                      Clock clock)
{
    clocks_[name] = clock;
    benchmark::RegisterBenchmark(name.c_str(), std::move(run))->Iterations(1)->Repetitions(repetitions);
}

void Figures::add(Figure figure)
{
    for (const std::string &measurement : figure.needs)
        if (!clocks_.contains(measurement))
            throw std::logic_error(figure.name + ": nothing measures " + measurement);
    figures_.push_back(std::move(figure));
}

void Figures::ratio_at_most(const std::string &figure, const std::string &measured, const std::string &floor,
                            double limit)
{
    const auto value = [measured, floor](const Seconds &seconds) {
        return seconds.at(measured) / seconds.at(floor);
    };
    add({figure, {measured, floor}, value, limit});
}

void Figures::milliseconds_at_most(const std::string &figure, const std::string &measured, double limit)
{
    const auto value = [measured](const Seconds &seconds) { return seconds.at(measured) * 1000; };
    add({figure, {measured}, value, limit});
}

void Figures::value_at_most(const std::string &figure, double value, double limit)
{
    add({figure, {}, [value](const Seconds &) { return value; }, limit});
}

bool Figures::print(const Figure &figure, double value)
{
    const bool within = value <= figure.limit;
    std::printf("%-48s %8.2f %8.2f %s\n", figure.name.c_str(), value, figure.limit, within ? "ok" : "over");
    std::fflush(stdout);
    return within;
}

bool Figures::run(std::vector<std::string> arguments)
{
    arguments.insert(arguments.begin() + 1, "--benchmark_enable_random_interleaving=true");
    std::vector<char *> argv;
    argv.reserve(arguments.size());
    for (std::string &argument : arguments)
        argv.push_back(argument.data());
    int argc = static_cast<int>(argv.size());
    benchmark::Initialize(&argc, argv.data());
    if (benchmark::ReportUnrecognizedArguments(argc, argv.data()))
        return false;

    Seconds seconds;
    Collector collector(clocks_, seconds);
    benchmark::RunSpecifiedBenchmarks(&collector);

    const auto measured = [&seconds](const std::string &name) { return seconds.contains(name); };
    bool all_within = true;
    for (const Figure &figure : figures_)
        if (std::ranges::all_of(figure.needs, measured))
            all_within = print(figure, figure.value(seconds)) && all_within;
    return all_within;
}

} // namespace qbobj_bench
