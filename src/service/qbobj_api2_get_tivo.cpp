// The TiVo archiver: its schedule, the folders that it may use, and the devices that the bridge service sees.
#include "service/interruptible_wait.h"
#include "service/service_device.h"
#include "service/tivo_status.h"

#include <cstring>
#include <optional>
#include <string>

namespace qbobj
{
namespace
{

using Tivo = qbobj_TivoOptions_t;

constexpr auto schedule_row = select(
    "SELECT T.hour,T.minute,T.path,T.days FROM service_tivo T", "Failed 'SELECT service_tivo'. (%s)",
    or_empty(&Tivo::hour), or_empty(&Tivo::minute), or_empty(&Tivo::TIVOfolder), or_empty(&Tivo::days));

struct Folder {
    const char *path;
};
constexpr auto dlna_folders =
    select("SELECT S.path FROM share S INNER JOIN dlna_share_option D ON D.share_id=S.id",
           "Failed 'SELECT path of dlna shares'. (%s)", or_empty(&Folder::path));

int read_folders(Call &call, const char *&list)
{
    std::string joined_paths;
    const char *separator = "";
    const int rc = call.each<Folder>(dlna_folders, [&](const Folder &folder) {
        joined_paths.append(separator).append(folder.path);
        separator = ";";
        return 0;
    });
    if (rc == 0)
        list = copy_text(call.pool(), joined_paths);
    return rc;
}

// Asks again while the bridge service has not finished, for a time.
int read_devices(Call &call, qbobj_TIVOhostsAcl_t *&devices)
{
    constexpr int max_attempts = 15;
    constexpr std::chrono::seconds pause(1);
    const char *path = path_below_root(call, "/var/lib/tivobridge/status");
    std::optional<InterruptibleWait> wait;
    for (int attempt = 0; attempt < max_attempts; ++attempt) {
        if (read_tivo_status(call, path, devices) == TivoBridge::finished)
            break;
        if (!wait)
            wait.emplace(call.db());
        if (!wait->wait(pause))
            return raise(call, QBOBJ_ERROR_DB_MISC, "Failed to wait for the TiVo devices. (%s)",
                         sqlite3_errmsg(call.db()));
    }
    return 0;
}

} // namespace

int x_qbobj_getTIVOSettings(Call &call, qbobj_TivoOptions_t *o)
{
    if (o == nullptr)
        return raise(call, QBOBJ_ERROR_API_ARGS, "o cannot be NULL.");
    bool found = false;
    if (const int rc = find_only(call, schedule_row, *o, found))
        return rc;
    if (const int rc = read_folders(call, o->DLNAfolderlist))
        return rc;
    // A folder whose path begins that of a listed one counts as listed, too.
    if (o->TIVOfolder != nullptr && std::strstr(o->DLNAfolderlist, o->TIVOfolder) == nullptr)
        o->TIVOfolder = empty_str;
    return read_devices(call, o->TIVOhostsAcl);
}

} // namespace qbobj
