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
        qbobj_clear_Share(&share);
        qbobj_clear_FileStat(&stat);
        qbobj_clear_SystemUser(&user);
        qbobj_clear_SystemGroup(&group);
        qbobj_clear_CifsShareOption(&cifs);
        qbobj_clear_AfpShareOption(&afp);
        qbobj_clear_FtpShareOption(&ftp);
        qbobj_clear_NfsShareOption(&nfs);
        qbobj_clear_DlnaShareOption(&dlna);
        qbobj_clear_DaapShareOption(&daap);
        qbobj_clear_RsyncShareOption(&rsync);
        qbobj_clear_HttpShareOption(&http);
        qbobj_clear_ZvolShareOption(&zvol);
        qbobj_clear_Schedule(&schedule);
        qbobj_clear_UsedBy(&used_by);
        qbobj_clear_Quota(&quota);
        qbobj_clear_Host(&host);
        qbobj_clear_HostAcl(&host_acl);
        qbobj_clear_SystemUser(&listed_user);
        qbobj_clear_UserAcl(&user_acl);
        qbobj_clear_SystemGroup(&listed_group);
        qbobj_clear_GroupAcl(&group_acl);
        qbobj_clear_DfolderAcl(&link);
        qbobj_clear_UserPasswordAcl(&login);
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

    qbobj_Share_t share;
    qbobj_FileStat_t stat;
    qbobj_SystemUser_t user;
    qbobj_SystemGroup_t group;
    qbobj_CifsShareOption_t cifs;
    qbobj_AfpShareOption_t afp;
    qbobj_FtpShareOption_t ftp;
    qbobj_NfsShareOption_t nfs;
    qbobj_DlnaShareOption_t dlna;
    qbobj_DaapShareOption_t daap;
    qbobj_RsyncShareOption_t rsync;
    qbobj_HttpShareOption_t http;
    qbobj_ZvolShareOption_t zvol;
    qbobj_Schedule_t schedule;
    qbobj_UsedBy_t used_by;
    qbobj_Quota_t quota;
    qbobj_Host_t host;
    qbobj_HostAcl_t host_acl;
    qbobj_SystemUser_t listed_user;
    qbobj_UserAcl_t user_acl;
    qbobj_SystemGroup_t listed_group;
    qbobj_GroupAcl_t group_acl;
    qbobj_DfolderAcl_t link;
    qbobj_UserPasswordAcl_t login;
};

// A record that a write must refuse, and how.
struct Refusal {
    const char *what;
    std::function<void(ShareRecord &)> spoil;
    qbobj_error_t code;
    const char *message;
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
