// Adds a share and reads it back. usage: caller FILE SHARE VOLUME
#include <qbobj.h>

#include <array>
#include <iostream>
#include <memory>

int main(int argc, char **argv)
{
    if (argc != 4) {
        std::cerr << "usage: caller FILE SHARE VOLUME\n";
        return 2;
    }
    qbdb_handle_t *qbdb = nullptr;
    sqlite3 *db = nullptr;
    std::array<char, 512> message{};
    qbdb_options_t options{};
    options.commit_decides = 1; // a change that was not kept is a failure
    if (qbdb_open(argv[1], &options, &qbdb, &db, message.data(), message.size()) != 0) {
        std::cerr << message.data() << '\n';
        return 1;
    }
    const std::unique_ptr<qbdb_handle_t, decltype(&qbdb_close)> closer(qbdb, qbdb_close);

    qbobj_CifsShareOption_t cifs;
    qbobj_clear_CifsShareOption(&cifs);
    cifs.DefaultAccess = "ReadOnly";
    qbobj_Share_t share;
    qbobj_clear_Share(&share);
    share.ShareName = argv[2];
    share.VolumeId = argv[3];
    share.Cifs = &cifs;

    qbobj_error_rec_t err;
    if (qbobj_addShare(qbdb, db, &share, &err) != 0 || qbobj_getShare(qbdb, db, &share, &err) != 0) {
        std::cerr << "error " << err.ec << ": " << (err.msg != nullptr ? err.msg : "") << '\n';
        return 1;
    }
    std::cout << share.ShareId << " at " << share.Path << ", SMB " << share.Cifs->DefaultAccess << '\n';
    return 0;
}
