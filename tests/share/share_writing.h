// Shares created and changed, their records written as JSON.
#pragma once

#include "share_rows.h"
#include "json/record_json.h"

namespace qbobj_test
{

using qbobj_json::Json;
using Rows = std::vector<std::string>;

// A record, as JSON or as its text.
struct Given {
    Given(Json fields) : json(std::move(fields)) {}
    Given(const char *text) : json(Json::parse(text)) {}
    Json json;
};

// Every protocol, each with one entry in each of its lists, and a marker; `changed` stands in for parts of it.
inline Json everything(const Given &changed = "{}")
{
    const Json hosts = Json::parse(R"([{"Host":{"HostName":"10.0.0.9"},"Access":"ReadOnly"}])");
    const Json users = Json::parse(R"([{"User":{"UserId":1000},"Access":"ReadOnly"}])");
    const Json groups = Json::parse(R"([{"Group":{"GroupId":1000},"Access":"ReadOnly"}])");
    Json share = Json::parse(R"({"Rsync":{"UserPasswordAcl":[{"UserName":"sync","Password":"secret"}]},
        "Dlna":{},"Daap":{},"UsedBy":[{"AppName":"media","AppData":"index"}]})");
    for (const char *protocol : {"Cifs", "Afp", "Ftp", "Http"})
        share[protocol] = {{"HostAcl", hosts}, {"UserAcl", users}, {"GroupAcl", groups}};
    share["Nfs"] = {{"HostAcl", hosts}, {"Sync", 1}};
    share["Rsync"]["HostAcl"] = hosts;
    share["Cifs"]["DfolderAcl"] =
        Json::parse(R"([{"Name":"far","Address":"files.example.com","RemoteShare":"pub"}])");
    share.merge_patch(changed.json);
    return share;
}

// A word of a record that is checked: "Stat->UserAccess", its field with "x" as JSON.
struct CheckedWord {
    std::string created; // its name when a share is created; empty: it has a message of its own
    std::string modified;
    const char *given;
};

const CheckedWord checked_words[] = {
    {"Stat->UserAccess", "Stat->UserAccess", R"({"Stat":{"UserAccess":"x"}})"},
    {"Stat->GroupAccess", "Stat->GroupAccess", R"({"Stat":{"GroupAccess":"x"}})"},
    {"Stat->EveryoneAccess", "Stat->EveryoneAccess", R"({"Stat":{"EveryoneAccess":"x"}})"},
    {"", "Cifs->DefaultAccess", R"({"Cifs":{"DefaultAccess":"x"}})"},
    {"Cifs->FileCreateGroupRights", "Cifs->FileCreateGroupRights",
     R"({"Cifs":{"FileCreateGroupRights":"x"}})"},
    {"Cifs->FileCreateEveryoneRights", "Cifs->FileCreateEveryoneRights",
     R"({"Cifs":{"FileCreateEveryoneRights":"x"}})"},
    {"Cifs->FolderCreateGroupRights", "Cifs->FolderCreateGroupRights",
     R"({"Cifs":{"FolderCreateGroupRights":"x"}})"},
    {"Cifs->FolderCreateEveryoneRights", "Cifs->FolderCreateEveryoneRights",
     R"({"Cifs":{"FolderCreateEveryoneRights":"x"}})"},
    {"Afp->DfefaultAccess", "Afp->DefaultAccess", R"({"Afp":{"DefaultAccess":"x"}})"},
    {"Afp->FileCreateGroupRights", "Afp->FileCreateEveryoneRights",
     R"({"Afp":{"NewFileFolderPermAutoset":1,"FileCreateEveryoneRights":"x"}})"},
    {"Nfs->DfefaultAccess", "Nfs->DefaultAccess", R"({"Nfs":{"DefaultAccess":"x"}})"},
    {"Ftp->DfefaultAccess", "Ftp->DefaultAccess", R"({"Ftp":{"DefaultAccess":"x"}})"},
    {"Ftp->FolderCreateGroupRights", "Ftp->FolderCreateEveryoneRights",
     R"({"Ftp":{"FolderCreateEveryoneRights":"x"}})"},
    {"Http->DfefaultAccess", "Http->DefaultAccess", R"({"Http":{"DefaultAccess":"x"}})"},
    {"Dlna->DefaultAccess", "Dlna->DefaultAccess", R"({"Dlna":{"DefaultAccess":"x"}})"},
    {"Dlna->MediaType", "Dlna->MediaType", R"({"Dlna":{"MediaType":"x"}})"},
    {"Rsync->DefaultAccess", "Rsync->DefaultAccess", R"({"Rsync":{"DefaultAccess":"x"}})"},
    {"Rsync->PasswordProtection", "Rsync->PasswordProtection", R"({"Rsync":{"PasswordProtection":"x"}})"},
};

// A record that a write must refuse, and how.
struct Refusal {
    const char *given;
    const char *message;
    qbobj_error_t code = QBOBJ_ERROR_API_ARGS;
};

class ShareWriting : public Shares
{
  protected:
    // Creates shares on volume "data": a record of this name, or a chain.
    int add(const char *name, const Given &given = "{}")
    {
        Json json = {{"VolumeId", "data"}, {"ShareName", name == nullptr ? Json() : Json(name)}};
        json.update(given.json);
        return add_chain(json);
    }
    int add_chain(const Json &json) { return qbobj_addShare(qbdb, db, record_of(json), &err); }

    // Changes the share "data/Docs", or what the record names.
    int modify(const Given &given, int modify_one = 0)
    {
        Json json = given.json;
        if (!json.is_array() && !json.contains("resource_id"))
            json["resource_id"] = "data/Docs";
        return qbobj_modifyShare(qbdb, db, record_of(json), modify_one, &err);
    }
    int remove(const Json &json) { return qbobj_deleteShare(qbdb, db, record_of(json), &err); }

    qbobj_Share_t *record_of(const Json &json)
    {
        const qbobj_spec_t *spec = qbobj_json::find_spec("Share");
        return share = static_cast<qbobj_Share_t *>(qbobj_json::from_json(spec, json, qbdb->pool, "share"));
    }

    qbobj_Share_t *share = nullptr; // the record of the last write
};

} // namespace qbobj_test
