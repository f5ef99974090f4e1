// Processes on one database file.
#pragma once

#include "database.h"

#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <chrono>
#include <cstdio>
#include <functional>

namespace qbobj_test
{

// A connection of a process's own to a file.
class Connection
{
  public:
    explicit Connection(const std::filesystem::path &file, bool readonly = false)
    {
        std::array<char, 512> message{};
        const std::string root = file.parent_path() / "root";
        qbdb_options_t options{};
        options.root = root.c_str();
        options.readonly = readonly ? 1 : 0;
        if (qbdb_open(file.c_str(), &options, &qbdb, &db, message.data(), message.size()) != 0)
            std::fprintf(stderr, "%s\n", message.data());
    }
    ~Connection() { qbdb_close(qbdb); }
    Connection(const Connection &) = delete;
    Connection &operator=(const Connection &) = delete;
    bool is_open() const { return qbdb != nullptr; }

    qbdb_handle_t *qbdb = nullptr;
    sqlite3 *db = nullptr;
    qbobj_error_rec_t err{};
};

// Runs `work` in a new process, whose exit status is what it returns.
inline pid_t start_process(const std::function<int()> &work)
{
    const pid_t pid = fork();
    if (pid == 0)
        _exit(work());
    return pid;
}

// The exit status of a process; -1 when a signal ended it.
inline int wait_for(pid_t pid)
{
    int status = 0;
    waitpid(pid, &status, 0);
    return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
}

class Deadline
{
  public:
    explicit Deadline(std::chrono::milliseconds time) : end_(std::chrono::steady_clock::now() + time) {}
    bool passed() const { return std::chrono::steady_clock::now() >= end_; }

  private:
    std::chrono::steady_clock::time_point end_;
};

// Adds a share with SMB, NFS and FTP options, an access list entry each and a schedule.
inline int add_share(Connection &connection, const std::string &name)
{
    qbobj_Host_t host{};
    host.HostName = "10.0.0.0/8";
    qbobj_HostAcl_t list{};
    list.Host = &host;
    list.Access = "ReadWrite";
    auto cifs = cleared(qbobj_clear_CifsShareOption);
    cifs.HostAcl = &list;
    auto nfs = cleared(qbobj_clear_NfsShareOption);
    nfs.DefaultAccess = "ReadOnly";
    nfs.HostAcl = &list;
    auto ftp = cleared(qbobj_clear_FtpShareOption);
    ftp.HostAcl = &list;
    auto share = cleared(qbobj_clear_Share);
    share.ShareName = name.c_str();
    share.VolumeId = "data";
    share.Cifs = &cifs;
    share.Nfs = &nfs;
    share.Ftp = &ftp;
    return qbobj_addShare(connection.qbdb, connection.db, &share, &connection.err);
}

// Whether a share as add_share() makes it is there with all that belongs to it.
inline bool is_whole(const qbobj_Share_t &share)
{
    return share.Cifs != nullptr && share.Cifs->HostAcl != nullptr && share.Nfs != nullptr &&
           share.Nfs->HostAcl != nullptr && share.Ftp != nullptr && share.Ftp->HostAcl != nullptr &&
           share.SnapshotSchedule != nullptr;
}

} // namespace qbobj_test
