// How the appliance authenticates file-sharing users, read.
#include "account/account.h"

namespace qbobj
{
namespace
{

using Security = qbobj_Security_t;
using Progress = qbobj_SecurityAdsProgress_t;

constexpr auto security_row = select(
    R"(SELECT S.security,S.workgroup,S.realm,S.orgunit,S.restrict_ou,
        S.no_sync_ads,S.domain_admin_user,S.password_server,S.allow_trusted_domains,S.domain_sid,
        IFNULL(S.domain_admin_gid,98),IFNULL(S.domain_admin_uid,98) FROM service_cifs S LIMIT 1)",
    "Failed DB Query 'SELECT service_cifs'. (%s)", or_empty(&Security::Security),
    or_empty(&Security::workGroup), or_empty(&Security::Realm), or_empty(&Security::orgUnit),
    or_empty(&Security::restrictOU), &Security::noSyncADS, or_empty(&Security::domainAdministrator),
    or_empty(&Security::passWordServer), &Security::displayTrustedUsers, or_empty(&Security::domainSid),
    &Security::domainGroupAdminGID, &Security::domainAdminUID);

constexpr auto import_progress = select(
    R"(SELECT CASE WHEN I.state=0 THEN 'idle' WHEN I.state=1 THEN 'running'
        WHEN I.state=2 THEN 'complete' ELSE 'error' END,I.total_user,I.curr_user,I.total_group,I.curr_group,I.start_at,
        I.done_at,CASE WHEN I.total_user>0 THEN 50*I.curr_user/I.total_user ELSE 0 END +
        CASE WHEN I.total_group>0 THEN 50*I.curr_group/I.total_group ELSE 0 END FROM _ads_importer I LIMIT 1)",
    "Failed DB Query 'SELECT _ads_importer'. (%s)", &Progress::State, &Progress::TotalUser,
    &Progress::CurrUser, &Progress::TotalGroup, &Progress::CurrGroup, &Progress::StartAt, &Progress::DoneAt,
    &Progress::Percent);

} // namespace

int x_qbobj_getSecurity(Call &call, qbobj_Security_t *o)
{
    if (o == nullptr)
        return raise(call, QBOBJ_ERROR_API_ARGS, "o cannot be NULL.");
    if (const int rc = call.read(security_row, *o))
        return rc;
    // The domain's password is not kept.
    o->passWord = masked_password;
    return 0;
}

int x_qbobj_getSecurityAdsProgress(Call &call, qbobj_SecurityAdsProgress_t *o)
{
    if (o == nullptr)
        return raise(call, QBOBJ_ERROR_API_ARGS, "o cannot be NULL.");
    return call.read(import_progress, *o);
}

} // namespace qbobj
