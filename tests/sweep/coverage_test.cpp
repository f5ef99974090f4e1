// Every operation takes part in the sweeps, and its scenario is what it says.
#include "scenarios.h"

#include <set>

using namespace qbobj_test;

namespace
{

TEST(Scenarios, CoverEveryOperation)
{
    std::set<std::string> covered;
    for (const Scenario &scenario : scenarios())
        covered.insert(scenario.operation);
    for (const qbobj_json::Operation &operation : qbobj_json::operations())
        EXPECT_TRUE(covered.contains(operation.name())) << operation.name() << " needs a scenario";
}

class EachScenario : public ::testing::TestWithParam<Scenario>
{
};

TEST_P(EachScenario, EndsAsItSays)
{
    Appliance office;
    furnish(office);
    const qbobj_json::Operation &operation = *qbobj_json::find_operation(GetParam().operation);
    const qbobj_json::Outcome outcome = call(office, operation.name(), GetParam().input);
    EXPECT_EQ(GetParam().fails, operation.failed(outcome.result))
        << outcome.result << " " << ::testing::PrintToString(outcome.error);
    EXPECT_TRUE(office.rows("PRAGMA foreign_key_check").empty());
}

std::string name_of(const ::testing::TestParamInfo<Scenario> &info)
{
    return info.param.operation;
}

INSTANTIATE_TEST_SUITE_P(All, EachScenario, ::testing::ValuesIn(scenarios()), name_of);

} // namespace
