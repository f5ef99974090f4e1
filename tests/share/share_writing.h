// Shares created and changed, their records written as JSON.
#pragma once

#include "share_rows.h"
#include "json/record_json.h"

#include <sstream>

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

// Columns that both a creation and a change write.
inline constexpr const char *attributes =
    "SELECT mb_quota,mb_reservation,mb_refquota,mb_refreservation,compression,"
    "bit_rot_protection,dedup,logbias,sync FROM zfs_attr";
inline constexpr const char *cifs =
    "SELECT cifs_access,cifs_guest_access,cifs_hide_share,cifs_group_create_mask,cifs_everyone_create_mask,"
    "cifs_enable_masks,cifs_group_directory_mask,cifs_everyone_directory_mask,cifs_enable_forced_minimum,"
    "cifs_recycle,cifs_recycle_mb_limit,cifs_recycle_age_limit,oplocks,available,cifs_enabledfs "
    "FROM cifs_share_option";
inline constexpr const char *schedule =
    "SELECT enabled,minute,hour,day_of_month,day_of_week,month,last_taken,purge_manual_snapshot,"
    "last_daily_taken,last_weekly_taken FROM snapshot_schedule";

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

// A record that a write must refuse, and how.
struct Refusal {
    std::string given, message;
    qbobj_error_t code = bad_args;
};

// The refusals of every word that is checked, "x" in its place; a few are called otherwise on creation.
inline std::vector<Refusal> refused_words(bool on_creation)
{
    std::istringstream words(
        "Stat UserAccess = Stat GroupAccess = Stat EveryoneAccess = Cifs FileCreateGroupRights = "
        "Cifs FileCreateEveryoneRights = Cifs FolderCreateGroupRights = Cifs FolderCreateEveryoneRights = "
        "Afp DefaultAccess DfefaultAccess Afp FileCreateEveryoneRights FileCreateGroupRights "
        "Nfs DefaultAccess DfefaultAccess Ftp DefaultAccess DfefaultAccess "
        "Ftp FolderCreateEveryoneRights FolderCreateGroupRights Http DefaultAccess DfefaultAccess "
        "Dlna DefaultAccess = Dlna MediaType = Rsync DefaultAccess = Rsync PasswordProtection =");
    std::vector<Refusal> refusals;
    for (std::string record, word, created; words >> record >> word >> created;) {
        Json given = {{record, {{word, "x"}}}};
        if (record == "Afp") // whose rights are only looked at when they are set
            given[record]["NewFileFolderPermAutoset"] = 1;
        const std::string name = on_creation && created != "=" ? created : word;
        refusals.push_back({given.dump(), "Invalid " + record + "->" + name + " (x)."});
    }
    return refusals;
}

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
    int add_chain(const Json &json) { return call(qbobj_addShare, record_of(json)); }

    // Changes the share "data/Docs", or what the record names.
    int modify(const Given &given, int modify_one = 0)
    {
        Json json = given.json;
        if (!json.is_array() && !json.contains("resource_id"))
            json["resource_id"] = "data/Docs";
        return call(qbobj_modifyShare, record_of(json), modify_one);
    }
    int remove(const Json &json) { return call(qbobj_deleteShare, record_of(json)); }

    qbobj_Share_t *record_of(const Json &json)
    {
        const qbobj_spec_t *spec = qbobj_json::find_spec("Share");
        return share = static_cast<qbobj_Share_t *>(qbobj_json::from_json(spec, json, qbdb->pool, "share"));
    }

    qbobj_Share_t *share = nullptr; // the record of the last write
};

} // namespace qbobj_test
