/* A caller in plain C: the public headers compile as C11, and the schemas and records are usable from it. */
#include <qbobj.h>

int caller_in_c(void);

/* The line of the first thing that is wrong, or 0. */
int caller_in_c(void)
{
    qbobj_Share_t share;
    qbobj_ShareCollection_t shares;
    qbobj_User_t user;

    if (qbobj_clear_Share(&share) != 0 || share._void_QuotaMB != 1 || share._link != NULL)
        return __LINE__;
    if (qbobj_clear_User(&user) != 0 || user.HomeFolderSettings != NULL)
        return __LINE__;
    share.ShareName = "films";
    shares.Share = &share;
    if (shares.Share->ShareName[0] != 'f')
        return __LINE__;
    if (spec_Share[0].type != QBOBJ_KIND_HEADER || spec_Share[0].offs_or_size != (int)sizeof(qbobj_Share_t))
        return __LINE__;
    if (spec_ShareCollection[1].ospec_ptr != spec_Share || all_spec[0].spec != spec_SnapshotClone)
        return __LINE__;
    return 0;
}
