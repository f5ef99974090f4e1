// The parts of a backup job as they are stored.
#include "backup/backup.h"

namespace qbobj
{

namespace
{

template <class Part, std::size_t Texts>
Part with_empty_texts(Part part, const char *Part::*const (&texts)[Texts])
{
    for (const char *Part::*text : texts)
        part.*text = or_empty(part.*text);
    return part;
}

} // namespace

qbobj_BackupJob_SourceOrDestination_t stored(const qbobj_BackupJob_SourceOrDestination_t &end)
{
    using End = qbobj_BackupJob_SourceOrDestination_t;
    return with_empty_texts(end,
                            {&End::Type, &End::ShareNameOrProtocol, &End::Path, &End::Login, &End::Password});
}

qbobj_BackupJob_Option_t stored(const qbobj_BackupJob_Option_t &option)
{
    using Option = qbobj_BackupJob_Option_t;
    return with_empty_texts(option,
                            {&Option::FullBackupFrequency, &Option::RsyncExclude, &Option::WolAddress});
}

} // namespace qbobj
