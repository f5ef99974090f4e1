// Records to create and change shares with, and what tests of that ask for again and again.
#pragma once

#include "database.h"

#include <functional>

namespace qbobj_test
{

// A share's record with all of its sub-records at hand, cleared. with_*() hang one into the share.
struct ShareRecord {
    ShareRecord()
    {
        host_acl.Host = &host;
        user_acl.User = &listed_user;
        group_acl.Group = &listed_group;
        host.HostName = "10.0.0.9";
        listed_user.UserId = 1000;
        listed_group.GroupId = 1000;
        host_acl.Access = user_acl.Access = group_acl.Access = "ReadOnly";
    }
    ShareRecord(const ShareRecord &) = delete;
    ShareRecord &operator=(const ShareRecord &) = delete;

    // A record that creates a share on volume "data".
    ShareRecord &named(const char *name)
    {
        share.ShareName = name;
        share.VolumeId = "data";
        return *this;
    }
    // A record that finds a share.
    ShareRecord &of(const char *zfs_name)
    {
        share.resource_id = zfs_name;
        return *this;
    }
    ShareRecord &with_stat()
    {
        share.Stat = &stat;
        stat.User = &user;
        stat.Group = &group;
        return *this;
    }
    // Every protocol, each with one entry in each of its lists.
    ShareRecord &with_everything()
    {
        share.Cifs = &cifs;
        share.Afp = &afp;
        share.Nfs = &nfs;
        share.Ftp = &ftp;
        share.Http = &http;
        share.Rsync = &rsync;
        share.Dlna = &dlna;
        share.Daap = &daap;
        cifs.HostAcl = afp.HostAcl = nfs.HostAcl = ftp.HostAcl = http.HostAcl = rsync.HostAcl = &host_acl;
        cifs.UserAcl = afp.UserAcl = ftp.UserAcl = http.UserAcl = &user_acl;
        cifs.GroupAcl = afp.GroupAcl = ftp.GroupAcl = http.GroupAcl = &group_acl;
        cifs.DfolderAcl = &link;
        link.Name = "far";
        link.Address = "files.example.com";
        link.RemoteShare = "pub";
        rsync.UserPasswordAcl = &login;
        login.UserName = "sync";
        login.Password = "secret";
        share.UsedBy = &used_by;
        used_by.AppName = "media";
        used_by.AppData = "index";
        return *this;
    }

    qbobj_Share_t share = cleared(qbobj_clear_Share);
    qbobj_FileStat_t stat = cleared(qbobj_clear_FileStat);
    qbobj_SystemUser_t user = cleared(qbobj_clear_SystemUser);
    qbobj_SystemGroup_t group = cleared(qbobj_clear_SystemGroup);
    qbobj_CifsShareOption_t cifs = cleared(qbobj_clear_CifsShareOption);
    qbobj_AfpShareOption_t afp = cleared(qbobj_clear_AfpShareOption);
    qbobj_FtpShareOption_t ftp = cleared(qbobj_clear_FtpShareOption);
    qbobj_NfsShareOption_t nfs = cleared(qbobj_clear_NfsShareOption);
    qbobj_DlnaShareOption_t dlna = cleared(qbobj_clear_DlnaShareOption);
    qbobj_DaapShareOption_t daap = cleared(qbobj_clear_DaapShareOption);
    qbobj_RsyncShareOption_t rsync = cleared(qbobj_clear_RsyncShareOption);
    qbobj_HttpShareOption_t http = cleared(qbobj_clear_HttpShareOption);
    qbobj_ZvolShareOption_t zvol = cleared(qbobj_clear_ZvolShareOption);
    qbobj_Schedule_t schedule = cleared(qbobj_clear_Schedule);
    qbobj_UsedBy_t used_by = cleared(qbobj_clear_UsedBy);
    qbobj_Quota_t quota = cleared(qbobj_clear_Quota);
    qbobj_Host_t host = cleared(qbobj_clear_Host);
    qbobj_HostAcl_t host_acl = cleared(qbobj_clear_HostAcl);
    qbobj_SystemUser_t listed_user = cleared(qbobj_clear_SystemUser);
    qbobj_UserAcl_t user_acl = cleared(qbobj_clear_UserAcl);
    qbobj_SystemGroup_t listed_group = cleared(qbobj_clear_SystemGroup);
    qbobj_GroupAcl_t group_acl = cleared(qbobj_clear_GroupAcl);
    qbobj_DfolderAcl_t link = cleared(qbobj_clear_DfolderAcl);
    qbobj_UserPasswordAcl_t login = cleared(qbobj_clear_UserPasswordAcl);
};

// A record that a write must refuse, and how.
struct Refusal {
    std::function<void(ShareRecord &)> spoil;
    const char *message;
    qbobj_error_t code = QBOBJ_ERROR_API_ARGS;
};

// A word of a record that is checked, with its name in the messages of creation and of modification.
struct CheckedWord {
    const char *created; // null: it has a message of its own
    const char *modified;
    const char *&(*of)(ShareRecord &record);
};

using Word = const char *&;
constexpr CheckedWord checked_words[] = {
    {"Stat->UserAccess", "Stat->UserAccess", [](ShareRecord &r) -> Word { return r.stat.UserAccess; }},
    {"Stat->GroupAccess", "Stat->GroupAccess", [](ShareRecord &r) -> Word { return r.stat.GroupAccess; }},
    {"Stat->EveryoneAccess", "Stat->EveryoneAccess",
     [](ShareRecord &r) -> Word { return r.stat.EveryoneAccess; }},
    {nullptr, "Cifs->DefaultAccess", [](ShareRecord &r) -> Word { return r.cifs.DefaultAccess; }},
    {"Cifs->FileCreateGroupRights", "Cifs->FileCreateGroupRights",
     [](ShareRecord &r) -> Word { return r.cifs.FileCreateGroupRights; }},
    {"Cifs->FileCreateEveryoneRights", "Cifs->FileCreateEveryoneRights",
     [](ShareRecord &r) -> Word { return r.cifs.FileCreateEveryoneRights; }},
    {"Cifs->FolderCreateGroupRights", "Cifs->FolderCreateGroupRights",
     [](ShareRecord &r) -> Word { return r.cifs.FolderCreateGroupRights; }},
    {"Cifs->FolderCreateEveryoneRights", "Cifs->FolderCreateEveryoneRights",
     [](ShareRecord &r) -> Word { return r.cifs.FolderCreateEveryoneRights; }},
    {"Afp->DfefaultAccess", "Afp->DefaultAccess", [](ShareRecord &r) -> Word { return r.afp.DefaultAccess; }},
    {"Afp->FileCreateGroupRights", "Afp->FileCreateEveryoneRights",
     [](ShareRecord &r) -> Word { return r.afp.FileCreateEveryoneRights; }},
    {"Afp->FolderCreateGroupRights", "Afp->FolderCreateEveryoneRights",
     [](ShareRecord &r) -> Word { return r.afp.FolderCreateEveryoneRights; }},
    {"Nfs->DfefaultAccess", "Nfs->DefaultAccess", [](ShareRecord &r) -> Word { return r.nfs.DefaultAccess; }},
    {"Ftp->DfefaultAccess", "Ftp->DefaultAccess", [](ShareRecord &r) -> Word { return r.ftp.DefaultAccess; }},
    {"Ftp->FileCreateGroupRights", "Ftp->FileCreateGroupRights",
     [](ShareRecord &r) -> Word { return r.ftp.FileCreateGroupRights; }},
    {"Ftp->FolderCreateGroupRights", "Ftp->FolderCreateEveryoneRights",
     [](ShareRecord &r) -> Word { return r.ftp.FolderCreateEveryoneRights; }},
    {"Http->DfefaultAccess", "Http->DefaultAccess",
     [](ShareRecord &r) -> Word { return r.http.DefaultAccess; }},
    {"Dlna->DefaultAccess", "Dlna->DefaultAccess",
     [](ShareRecord &r) -> Word { return r.dlna.DefaultAccess; }},
    {"Dlna->MediaType", "Dlna->MediaType", [](ShareRecord &r) -> Word { return r.dlna.MediaType; }},
    {"Rsync->DefaultAccess", "Rsync->DefaultAccess",
     [](ShareRecord &r) -> Word { return r.rsync.DefaultAccess; }},
    {"Rsync->PasswordProtection", "Rsync->PasswordProtection",
     [](ShareRecord &r) -> Word { return r.rsync.PasswordProtection; }},
    {"UserAcl->Access", "UserAcl->Access", [](ShareRecord &r) -> Word { return r.user_acl.Access; }},
    {"GroupAcl->Access", "GroupAcl->Access", [](ShareRecord &r) -> Word { return r.group_acl.Access; }},
    {"HostAcl->Access", "HostAcl->Access", [](ShareRecord &r) -> Word { return r.host_acl.Access; }},
};

class ShareWriting : public Database
{
  protected:
    int add(ShareRecord &record) { return qbobj_addShare(qbdb, db, &record.share, &err); }
    int modify(ShareRecord &record, int modify_one = 0)
    {
        return qbobj_modifyShare(qbdb, db, &record.share, modify_one, &err);
    }
    void add_plain(const char *name)
    {
        ShareRecord record;
        ASSERT_OK(add(record.named(name)));
    }
    void add_with_everything(const char *name)
    {
        ShareRecord record;
        ASSERT_OK(add(record.named(name).with_everything()));
    }
};

} // namespace qbobj_test
