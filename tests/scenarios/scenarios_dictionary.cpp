// The dictionary.
#include "scenarios.h"

namespace qbobj_test
{

std::vector<Scenario> dictionary_scenarios()
{
    return {
        {"getDictionary", {{"code", "en-us"}}},
        {"getTranslatedString", {{"code", "de-de"}, {"key", "LOGMSG_DISK_FAILED"}}},
    };
}

} // namespace qbobj_test
