// Records become JSON and come back the same, for every type; what is no record is refused by name.
#include "database.h"
#include "json/json_writer.h"
#include "json/operations.h"
#include "json/parse.h"

#include <apr_general.h>

#include <sstream>

using namespace qbobj_json;

namespace
{

class RecordJson : public ::testing::Test
{
  protected:
    RecordJson()
    {
        apr_initialize();
        apr_pool_create(&pool, nullptr);
    }
    ~RecordJson() override
    {
        apr_pool_destroy(pool);
        apr_terminate();
    }

    std::string refusal(const char *type, const char *text) const
    {
        try {
            from_json(find_spec(type), Json::parse(text), pool, "input");
        } catch (const BadInput &error) {
            return error.what();
        }
        return "accepted";
    }

    apr_pool_t *pool = nullptr;
};

// A record of the type with every field given, sub-records to a depth of two.
Json full_record(const qbobj_spec_t *spec, int depth)
{
    Json record = Json::object();
    if ((spec->attr & QBOBJ_ATTR_STRING_ID) != 0)
        record["resource_id"] = "id";
    int number = 1;
    for (const qbobj_spec_t *row = spec + 1; row->type != QBOBJ_KIND_END; ++row, ++number) {
        Json &field = record[row->name];
        switch (row->type) {
        case QBOBJ_KIND_STRING:
            field = std::string("text of ") + row->name;
            break;
        case QBOBJ_KIND_INT:
            field = -number;
            break;
        case QBOBJ_KIND_INT64:
            field = -5000000000 - number;
            break;
        case QBOBJ_KIND_UINT64:
            field = 9223372036854775807U - static_cast<unsigned>(number);
            break;
        default:
            field = depth == 0 ? Json(nullptr) : full_record(row->ospec_ptr, depth - 1);
            if (depth != 0 && (row->attr & QBOBJ_ATTR_LIST_FIELD) != 0)
                field = Json::array({field, field});
        }
    }
    return record;
}

TEST_F(RecordJson, EveryTypeComesBackTheSame)
{
    for (const struct all_spec *entry = all_spec; entry->name != nullptr; ++entry) {
        SCOPED_TRACE(entry->name);
        const bool list = (entry->spec->attr & QBOBJ_ATTR_LIST) != 0;
        Json given = full_record(entry->spec, 2);
        if (list)
            given = Json::array({given, given, given});
        const Json back = to_json(entry->spec, from_json(entry->spec, given, pool, "input"));
        // A list that is left out and an empty one are the same.
        const auto without_nothing = [](const Json &json) {
            Json something = Json::object();
            const Json flat = json.flatten();
            for (const auto &[place, field] : flat.items())
                if (!field.empty())
                    something[place] = field;
            return something.dump(1);
        };
        const std::string expected = without_nothing(given);
        const std::string got = without_nothing(back);
        if (std::string(entry->name) == "Share" || std::string(entry->name) == "ShareCollection")
            EXPECT_NE(std::string::npos, got.find("/SnapshotClones/0/")); // shown as the list that it is
        else
            EXPECT_EQ(expected, got);
    }
}

// Small enough to be kept together, and large enough to be handed on in pieces.
TEST_F(RecordJson, IsWrittenAsTheTreeWouldBe)
{
    const std::vector<std::string> texts{"",
                                         "plain",
                                         "\x01\x1f\x7f\t\n\r\b\f\"\\/",
                                         "Gr\u00f6\u00dfe \U0001f600",
                                         "\xff",
                                         "a\xc3(b",
                                         "\xe2\x82",
                                         "\xed\xa0\x80",
                                         "\xc0\xaf",
                                         "\xf4\x90\x80\x80"};
    for (const struct all_spec *entry = all_spec; entry->name != nullptr; ++entry) {
        SCOPED_TRACE(entry->name);
        Json given = Json::array();
        for (const std::string &text : texts) {
            given.push_back(full_record(entry->spec, 2));
            for (auto &field : given.back())
                if (field.is_string())
                    field = text;
        }
        while ((entry->spec->attr & QBOBJ_ATTR_LIST) != 0 && given.size() < 200)
            given.push_back(given[given.size() % texts.size()]);
        if ((entry->spec->attr & QBOBJ_ATTR_LIST) == 0)
            given = given[2];
        const Value value(entry->spec, from_json(entry->spec, given, pool, "input"));
        const auto dump = [&](int indent) {
            return to_json(value).dump(indent, ' ', false, Json::error_handler_t::replace);
        };
        std::ostringstream written;
        write_json(written, value, Layout::indented, {});
        // Showing how long texts differ would take all memory.
        EXPECT_TRUE(dump(2) + "\n" == written.str());
        EXPECT_TRUE(dump(-1) == json_text(value, Layout::one_line, {}));
    }
}

TEST_F(RecordJson, WhatMustNotBeShownIsMaskedHoweverDeep)
{
    const Json given = Json::parse(
        R"({"ShareName": "x", "Comment": "x", "Rsync": {"UserPasswordAcl": [{"Password": "x"}]}})");
    const Value value(spec_Share, from_json(spec_Share, given, pool, "share"));
    const Json shown = Json::parse(json_text(value, Layout::one_line, [](auto field, auto text) {
        return (field == "Password" || field == "Comment") && text == "x";
    }));
    EXPECT_EQ("x", shown[0]["ShareName"]);
    EXPECT_EQ(masked_password, shown[0]["Comment"]);
    EXPECT_EQ(masked_password, shown[0]["Rsync"]["UserPasswordAcl"][0]["Password"]);
}

TEST_F(RecordJson, WhatIsLeftOutIsNotGiven)
{
    auto *share = static_cast<qbobj_Share_t *>(from_json(
        spec_Share, Json::parse(R"({"ShareName": "docs", "QuotaMB": 0, "Comment": null})"), pool, "share"));
    EXPECT_STREQ("docs", share->ShareName);
    EXPECT_EQ(nullptr, share->Comment);
    EXPECT_EQ(0, share->_void_QuotaMB);
    EXPECT_EQ(1, share->_void_ReserveMB);
    EXPECT_EQ(nullptr, share->_link);
    const Json shown = to_json(spec_Share, share);
    EXPECT_EQ(0, shown[0]["QuotaMB"]);
    EXPECT_TRUE(shown[0]["ReserveMB"].is_null());
}

TEST_F(RecordJson, WrongInputIsRefusedByItsPlace)
{
    EXPECT_EQ("input.ShareNmae: a Share has no field 'ShareNmae'; did you mean 'ShareName'?",
              refusal("Share", R"({"ShareNmae": "x"})"));
    EXPECT_EQ("input[1].Cifs.HostAcl[0].Who: a HostAcl has no field 'Who'",
              refusal("Share", R"([{}, {"Cifs": {"HostAcl": [{"Who": 1}]}}])"));
    EXPECT_EQ("input.UserId: 2147483648 is too large", refusal("User", R"({"UserId": 2147483648})"));
    EXPECT_EQ("input.QuotaMB must be a whole number of 0 or more, not a fraction",
              refusal("Share", R"({"QuotaMB": 1.5})"));
    EXPECT_EQ("accepted", refusal("User", R"({"IsLocked": true})"));
}

TEST(Parse, RefusesWhatNoRecordNeedsAndNeverShowsIt)
{
    const auto refusal = [](const std::string &text) {
        try {
            parse(text);
        } catch (const BadInput &error) {
            return std::string(error.what());
        }
        return std::string("accepted");
    };
    const auto nested = [](std::size_t levels) {
        return std::string(levels, '[') + "1" + std::string(levels, ']');
    };
    EXPECT_EQ("accepted", refusal(nested(64)));
    EXPECT_EQ("the input is nested deeper than 64 levels", refusal(nested(65)));
    EXPECT_EQ("accepted", refusal(R"([{"a": 1}, {"a": {"a": 1}}])"));
    EXPECT_EQ("the input holds a number that is too large", refusal("[1e999]"));
}

TEST_F(RecordJson, ArgumentsAreArrangedByNameOrAlone)
{
    const auto arranged = [](const char *operation, const char *text) {
        try {
            return arrange_inputs(*find_operation(operation), Json::parse(text)).dump();
        } catch (const BadInput &error) {
            return std::string(error.what());
        }
    };
    EXPECT_EQ(R"(["docs"])", arranged("getShareId", R"({"share_name": "docs"})"));
    EXPECT_EQ(R"(["docs"])", arranged("getShareId", R"("docs")"));
    EXPECT_EQ(R"([{"ShareName":"docs"}])", arranged("addShare", R"({"ShareName": "docs"})"));
    EXPECT_EQ(R"([[{}],null])", arranged("modifyShare", R"({"share": [{}]})"));
    EXPECT_EQ("getShareId: the argument 'share_name' is missing", arranged("getShareId", "null"));
    EXPECT_EQ("modifyShare has no argument 'shares'", arranged("modifyShare", R"({"shares": []})"));
    EXPECT_EQ("modifyShare takes an object of its arguments by name", arranged("modifyShare", "[]"));
    EXPECT_EQ("addShare: the argument 'share' is missing", arranged("addShare", "null"));
    EXPECT_EQ("[null,null,null]", arranged("getUserCollection", "null"));
}

} // namespace
