// The words of a share's record, checked.
#include "share/share_writing.h"

namespace qbobj
{

int read_right(Call &call, RightValidator validate, const char *field, const char *word, int is_dir,
               int &bits, const Site &site)
{
    if (validate(word, "ReadWrite", &bits, is_dir) != 0)
        return raise_at(site, call, QBOBJ_ERROR_API_ARGS, "Invalid %s (%s).", field, word);
    return 0;
}

int read_rights(Call &call, RightValidator validate, const RightWords &fields, const RightWords &words,
                Rights &rights, const Site &site)
{
    const std::array<int *, 4> bits{&rights.file_group, &rights.file_everyone, &rights.folder_group,
                                    &rights.folder_everyone};
    for (std::size_t right = 0; right < bits.size(); ++right) {
        const int is_dir = right < 2 ? 0 : 1;
        if (const int rc =
                read_right(call, validate, fields[right], words[right], is_dir, *bits[right], site))
            return rc;
    }
    return 0;
}

int read_access(Call &call, const char *field, const char *word, const char *otherwise, const char *&stored,
                const Site &site)
{
    if (qbobj_validate_access(word, otherwise, &stored) != 0)
        return raise_at(site, call, QBOBJ_ERROR_API_ARGS, "Invalid %s (%s).", field, word);
    return 0;
}

int read_media(Call &call, const qbobj_DlnaShareOption_t &option, int &media_type, const Site &site)
{
    const char *access = nullptr;
    if (const int rc =
            read_access(call, "Dlna->DefaultAccess", option.DefaultAccess, "ReadOnly", access, site))
        return rc;
    if (qbobj_validate_media_type(option.MediaType, "All", &media_type) != 0)
        return raise_at(site, call, QBOBJ_ERROR_API_ARGS, "Invalid Dlna->MediaType (%s).", option.MediaType);
    return 0;
}

int check_share_name(Call &call, const char *name, const Site &site)
{
    switch (const int rc = qbobj_validate_sharename(name, nullptr)) {
    case 0:
        return 0;
    case 3:
        return raise_at(site, call, QBOBJ_ERROR_UI__NAME_TOO_LONG, "ShareName is too long (%s)", name);
    case 4:
    case 5:
        return raise_at(site, call, QBOBJ_ERROR_UI__SHARENAME_RESERVED, "ShareName (%s) is reserved", name);
    default:
        return raise_at(site, call, QBOBJ_ERROR_API_ARGS, "Invalid ShareName (%s), rc=%d", name, rc);
    }
}

int check_sync(Call &call, const char *sync, const Site &site)
{
    if (qbobj_validate_string(sync, 0, "standard", "always", "disabled", nullptr) != 0)
        return raise_at(site, call, QBOBJ_ERROR_API_ARGS,
                        "Invalid Sync (%s). One of 'standard', 'always', 'disabled'.", sync);
    return 0;
}

} // namespace qbobj
