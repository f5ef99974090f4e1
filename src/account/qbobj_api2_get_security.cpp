// How the appliance authenticates file-sharing users, read.
#include "account/account.h"
#include "core/call.h"

namespace qbobj
{

namespace
{

constexpr auto security_columns = std::tuple{
    or_empty(&qbobj_Security_t::Security),
    or_empty(&qbobj_Security_t::workGroup),
    or_empty(&qbobj_Security_t::Realm),
    or_empty(&qbobj_Security_t::orgUnit),
    or_empty(&qbobj_Security_t::restrictOU),
    &qbobj_Security_t::noSyncADS,
    or_empty(&qbobj_Security_t::domainAdministrator),
    or_empty(&qbobj_Security_t::passWordServer),
    &qbobj_Security_t::displayTrustedUsers,
    or_empty(&qbobj_Security_t::domainSid),
    &qbobj_Security_t::domainGroupAdminGID,
    &qbobj_Security_t::domainAdminUID,
};

constexpr auto progress_columns = std::tuple{
    &qbobj_SecurityAdsProgress_t::State,     &qbobj_SecurityAdsProgress_t::TotalUser,
    &qbobj_SecurityAdsProgress_t::CurrUser,  &qbobj_SecurityAdsProgress_t::TotalGroup,
    &qbobj_SecurityAdsProgress_t::CurrGroup, &qbobj_SecurityAdsProgress_t::StartAt,
    &qbobj_SecurityAdsProgress_t::DoneAt,    &qbobj_SecurityAdsProgress_t::Percent,
};

} // namespace

int x_qbobj_getSecurity(Call &call, qbobj_Security_t *o)
{
    if (o == nullptr)
        return raise(call, QBOBJ_ERROR_API_ARGS, "o cannot be NULL.");
    const Table rows = call.table(R"(SELECT S.security,S.workgroup,S.realm,S.orgunit,S.restrict_ou,
        S.no_sync_ads,S.domain_admin_user,S.password_server,S.allow_trusted_domains,S.domain_sid,
        IFNULL(S.domain_admin_gid,98),IFNULL(S.domain_admin_uid,98) FROM service_cifs S LIMIT 1)");
    if (!rows)
        return raise(call, QBOBJ_ERROR_DB_MISC, "Failed DB Query 'SELECT service_cifs'. (%s)", rows.error());
    if (!rows.empty())
        fill(call, *o, security_columns, *rows.begin());
    // The domain's password is not kept.
    o->passWord = masked_password;
    return 0;
}

int x_qbobj_getSecurityAdsProgress(Call &call, qbobj_SecurityAdsProgress_t *o)
{
    if (o == nullptr)
        return raise(call, QBOBJ_ERROR_API_ARGS, "o cannot be NULL.");
    const Table rows = call.table(R"(SELECT CASE WHEN I.state=0 THEN 'idle' WHEN I.state=1 THEN 'running'
        WHEN I.state=2 THEN 'complete' ELSE 'error' END,I.total_user,I.curr_user,I.total_group,I.curr_group,I.start_at,
        I.done_at,CASE WHEN I.total_user>0 THEN 50*I.curr_user/I.total_user ELSE 0 END +
        CASE WHEN I.total_group>0 THEN 50*I.curr_group/I.total_group ELSE 0 END FROM _ads_importer I LIMIT 1)");
    if (!rows)
        return raise(call, QBOBJ_ERROR_DB_MISC, "Failed DB Query 'SELECT _ads_importer'. (%s)", rows.error());
    if (!rows.empty())
        fill(call, *o, progress_columns, *rows.begin());
    return 0;
}

} // namespace qbobj
