// An operation beside the fewest statements that do the same, on copies of one appliance.
#pragma once

#include "lookup.h"
#include "measurements.h"

namespace qbobj_bench
{

// How an operation is measured. `Operation` is made on a connection, where it keeps its statements, and has
//     name                    of the exported function
//     in_chain                one call takes all records, linked; else each record has a call of its own
//     record(number)          what to do it with, in the connection's pool
//     by_library(record, err) and by_hand(record)
//     text(record)            what both tell, beside the content that they leave
template <class Operation>
class Beside
{
  public:
    explicit Beside(const Connection &connection) : connection_(connection), operation_(connection) {}

    using Record = std::remove_pointer_t<decltype(std::declval<Operation>().record(0))>;

    std::vector<Record *> records(int first, int count) const
    {
        std::vector<Record *> records;
        for (int i = 0; i < count; i++) {
            records.push_back(operation_.record(first + i));
            if constexpr (Operation::in_chain)
                if (i > 0)
                    records[static_cast<std::size_t>(i) - 1]->_link = records.back();
        }
        return records;
    }

    void run(const std::vector<Record *> &records, bool by_hand)
    {
        for (Record *record : records) {
            if (by_hand)
                operation_.by_hand(*record);
            else
                run_library(*record);
            if (Operation::in_chain)
                return;
        }
    }

    // What records tell after both have had them, and what the appliance then holds.
    std::string outcome(bool by_hand)
    {
        constexpr int compared = 12;
        const std::vector<Record *> all = records(0, compared);
        run(all, by_hand);
        std::string text;
        for (const Record *record : all)
            text += Operation::text(*record) + "\n";
        return text + connection_.content();
    }

  private:
    void run_library(Record &record)
    {
        qbobj_error_rec_t err{};
        check(operation_.by_library(record, &err), err);
    }

    const Connection &connection_;
    Operation operation_;
};

// Every run begins with the same content; the first record finds the statements prepared.
template <class Operation>
void measure_beside(Figures &figures, const std::shared_ptr<Appliance> &appliance, int count, double limit)
{
    const auto outcome = [&](bool by_hand) {
        const Copy copy(*appliance);
        return Beside<Operation>(copy.connection).outcome(by_hand);
    };
    const std::string name = Operation::name;
    require_equal(name, outcome(true), outcome(false));

    const auto measure = [&](const std::string &way, bool by_hand) {
        figures.measure(way, [appliance, count, by_hand](benchmark::State &state) {
            const Copy copy(*appliance);
            Beside<Operation> beside(copy.connection);
            beside.run(beside.records(0, 1), by_hand);
            const auto records = beside.records(1, count);
            for (auto _ : state)
                beside.run(records, by_hand);
        });
    };
    measure(name + "/beside/library", false);
    measure(name + "/beside/fewest", true);
    figures.ratio_at_most(name + "-to-fewest-statements", name + "/beside/library", name + "/beside/fewest",
                          limit);
}

// Records of a schema's type, e.g. "Share", as text.
template <class Record>
std::string json(const char *type, Record record)
{
    record._link = nullptr;
    return qbobj_json::to_json(qbobj_json::find_spec(type), &record).dump();
}

} // namespace qbobj_bench
