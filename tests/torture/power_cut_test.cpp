// The power is cut in the midst of a series of operations.
#include "failing_storage.h"
#include "scenarios.h"
#include "trials.h"

#include <algorithm>

using namespace qbobj_test;
using qbobj_json::Json;

namespace
{

// Any operation of the table, or a small one that often finds its object.
void operate(Appliance &office, Trials &trials)
{
    const std::string name = "x" + std::to_string(trials.below(3));
    const std::string share = "data/" + name;
    const Scenario small[] = {
        {"addUser", Json::array({{{"UserName", name}}})},
        {"setPrimaryGroupByName", {{"UserName", name}, {"GroupName", trials.one_in(2) ? "staff" : "board"}}},
        {"deleteUserByName", {{"UserName", name}}},
        {"addShare", Json::array({full_share(name)})},
        {"modifyShareVisibleSnapFolder", {{"ZfsName", share}, {"VisibleSnapFolder", name}}},
        {"deleteShare", Json::array({{{"resource_id", share}, {"Cifs", {}}, {"Ftp", {}}}})}};
    const Scenario &chosen = trials.one_in(2) ? small[trials.below(std::size(small))]
                                              : scenarios()[trials.below(scenarios().size())];
    call(office, chosen.operation, chosen.input);
}

using State = std::pair<std::size_t, std::size_t>; // the changes of the files so far, and the content's hash

TEST(PowerCut, LosesNothingThatWasAcknowledged)
{
    constexpr int operations = 15, cuts = 25;
    const FailingStorage storage;
    const std::hash<std::string> hash;
    for (Trials trials("power cut", 20 * cuts); trials.next();) {
        Appliance office;
        furnish(office);
        office.open_options.relaxed_durability = static_cast<int>(trials.below(2));
        const std::string pragmas = "PRAGMA cache_size=" + std::to_string(5 + trials.below(50)) +
                                    "; PRAGMA wal_autocheckpoint=" + std::to_string(1 + trials.below(50));
        const auto open = [&] {
            office.reopen();
            office.sql(pragmas);
        };
        open();
        FailingStorage::record(office.file());
        std::vector<State> states{{0, hash(office.content())}};
        for (int i = 0; i < operations; ++i) {
            trials.one_in(8) ? open() : operate(office, trials);
            states.push_back({FailingStorage::changes(), hash(office.content())});
        }
        Appliance survivor;
        for (int i = 0; i < cuts; ++i) {
            const std::size_t after = trials.below(FailingStorage::changes() + 1);
            survivor.close();
            FailingStorage::cut(after, survivor.file(), trials);
            ASSERT_NO_THROW(survivor.reopen());
            EXPECT_EQ("ok", survivor.value("PRAGMA integrity_check"));
            EXPECT_TRUE(survivor.rows("PRAGMA foreign_key_check").empty());
            const auto under_way = std::ranges::upper_bound(states, after, {}, &State::first);
            const auto first = office.open_options.relaxed_durability != 0 ? states.begin() : under_way - 1;
            const auto last = under_way == states.end() ? under_way : under_way + 1;
            const std::size_t content = hash(survivor.content());
            EXPECT_TRUE(
                std::any_of(first, last, [&](const State &state) { return state.second == content; }));
            trials.count();
        }
    }
}

} // namespace
