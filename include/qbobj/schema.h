/**
 * @file schema.h
 * The run-time description of the record types: their schemas, the directory of all of them, the dump of a
 * record, and the functions that put a record into its empty state.
 *
 * Conventions of every record type `qbobj_<Type>_t`:
 * - A record that can stand in a list begins with `_link`, the next record of its type; null ends the list.
 * - Many such records carry `resource_id` next, the caller's key of the object.
 * - An optional number is preceded by an `int _void_<Field>` flag: non-zero means that no number is given. A
 *   string or sub-record that is not given is null.
 * - A collection `qbobj_<Type>Collection_t` holds the head of a list of `qbobj_<Type>_t`.
 */
#ifndef QBOBJ_SCHEMA_H
#define QBOBJ_SCHEMA_H

#include <qbobj/types.h>

#ifdef __cplusplus
extern "C" {
#endif

/* Kinds of a schema row. */
#define QBOBJ_KIND_HEADER '=' /**< first row: `name` is the type's name, `offs_or_size` the record's size */
#define QBOBJ_KIND_STRING 's' /**< const char * */
#define QBOBJ_KIND_INT 'i'    /**< int */
#define QBOBJ_KIND_UINT 'u'   /**< unsigned int */
#define QBOBJ_KIND_INT64 'l'  /**< int64_t */
#define QBOBJ_KIND_UINT64 'n' /**< uint64_t */
#define QBOBJ_KIND_RECORD 'o' /**< pointer to a record, or to the head of a list of records */
#define QBOBJ_KIND_END '.'    /**< last row */

/* Attribute bits of a header row. */
#define QBOBJ_ATTR_LIST 0x1      /**< records of the type are chained through `_link` */
#define QBOBJ_ATTR_INT_ID 0x4    /**< second field is `int resource_id`, listed as a row */
#define QBOBJ_ATTR_STRING_ID 0x8 /**< second field is `const char *resource_id`, not listed as a row */
/* Attribute bits of a field row. */
#define QBOBJ_ATTR_LIST_FIELD 0x1 /**< the field is the head of a list */
#define QBOBJ_ATTR_VOIDABLE                                                                                  \
    0x2 /**< may be left out. A number has an int `_void_<Field>` flag, which stands                         \
             exactly sizeof(field) bytes before it; a pointer is null */

/** One row of a schema. */
typedef struct qbobj_spec {
    char type;                          /**< one of the kinds above */
    const char *name;                   /**< type or field name */
    int offs_or_size;                   /**< header: size of the record; field: its position in the record */
    const struct qbobj_spec *ospec_ptr; /**< schema of the nested record; null for all other kinds */
    int attr;                           /**< attribute bits */
} qbobj_spec_t;

/** An entry of the directory of schemas. */
struct all_spec {
    const char *name;         /**< type name; null in the last entry */
    const qbobj_spec_t *spec; /**< its schema */
};

/** Every schema, in a fixed order, ended by an entry whose name is null. */
QBOBJ_API extern const struct all_spec all_spec[];

/**
 * Logs a record, or every record of a list, at QBDB_LOG_DEBUG, one line a field.
 *
 * The handle's level is not tested here. Strings are written as they are, passwords included.
 *
 * @param[in] spec    the record's schema
 * @param[in] obj     the record; may be null
 * @param[in] level   indentation of the outermost line, in blanks
 * @param[in] fname   source unit that the lines are attributed to
 * @param[in] lineno  its line
 * @reads nothing
 * @error none
 * @return nothing
 */
QBOBJ_API void qbobj_api2_utils_dump_object(qbdb_handle_t *qbdb, const qbobj_spec_t *spec, void *obj,
                                            int level, const char *fname, int lineno);

/**
 * Writes the same dump to a stream, below the line "*** Dump NAME ***".
 *
 * Unlike the log's dump this one shows a number that is not given as it stands.
 *
 * @param[in] fp    the stream
 * @param[in] name  a type name such as "Share"; an unknown one writes only that line
 * @param[in] obj   the record; may be null
 * @reads nothing
 * @error none
 * @return nothing
 */
QBOBJ_API void qbobj_api2_dump_struct(FILE *fp, const char *name, void *obj);

/* clang-format off */
/** Every record type, in the order of `all_spec`. */
#define QBOBJ_RECORD_TYPES(X)                                                                              \
    X(SnapshotClone) X(SnapshotCloneCollection) X(ResourceId) X(BackupJob_SourceOrDestination)             \
    X(BackupJob_Schedule) X(BackupJob_Option) X(BackupJob) X(BackupJobCollection) X(BackupTarget)          \
    X(BackupTargetCollection) X(BackupButtonJob) X(BackupButtonJobCollection) X(Quota) X(AdminPassword)    \
    X(UserPassword) X(MyPassword) X(UserHomeFolderSettings) X(UserTimeMachineQuota) X(User)                \
    X(SystemUser) X(UserCollection) X(AccountQuery) X(Group) X(SystemGroup) X(GroupCollection) X(Host)     \
    X(AccountDefault) X(HomeFolderOptions) X(Schedule) X(HostAcl) X(UserAcl) X(GroupAcl) X(DfolderAcl)     \
    X(UserPasswordAcl) X(ZvolShareOption) X(CifsShareOption) X(AfpShareOption) X(FtpShareOption)           \
    X(NfsShareOption) X(DlnaShareOption) X(DaapShareOption) X(RsyncShareOption) X(HttpShareOption)         \
    X(PosixAcl) X(FileStat) X(UsedBy) X(Share) X(ShareCollection) X(Process) X(SimpleShare)                \
    X(SimpleShareCollection) X(Timemachine) X(Vault) X(CifsOptions) X(BonjourOptions) X(FtpOptions)        \
    X(DaapOptions) X(NfsOptions) X(DlnaOptions) X(SnmpOptions) X(SshOptions) X(ReplicateOptions)           \
    X(HttpOptions) X(HttpsOptions) X(Protocol) X(ProtocolCollection) X(TIVOhostsAcl) X(TivoOptions)        \
    X(TivoMak) X(Volume) X(VolumeCollection) X(Disk) X(DiskCollection) X(DiskEnclosureCollection)          \
    X(DiskDiff) X(Snapshot) X(SnapshotCollection) X(HfSnapshot) X(HfSnapshotCollection)                    \
    X(NetworkInterface) X(NetworkInterfaceCollection) X(DiskHealth) X(DiskHealthCollection)                \
    X(EnclosureHealthItem) X(EnclosureHealth) X(EnclosureHealthCollection) X(UpsHealth)                    \
    X(UpsHealthCollection) X(Security) X(SecurityAdsProgress) X(LogEntry) X(LogQuery) X(UpsConfig)         \
    X(UpsConfigCollection) X(LunGroup) X(LunGroupCollection) X(Initiator) X(InitiatorCollection) X(Lun)    \
    X(CronSchedule) X(VolumeSchedule) X(VolumeScheduleCollection)
/* clang-format on */

/* For each type: the record qbobj_<Type>_t, its schema spec_<Type> (ended by a row of kind QBOBJ_KIND_END),
 * and qbobj_clear_<Type>(), which marks everything as not given: all zero and null, every `_void_` flag 1. It
 * returns 0, or -1 when `obj` is null. It neither follows nor frees what the record points to. */
#define QBOBJ_DECLARE_RECORD(Type)                                                                           \
    typedef struct qbobj_##Type qbobj_##Type##_t;                                                            \
    QBOBJ_API extern const qbobj_spec_t spec_##Type[];                                                       \
    QBOBJ_API int qbobj_clear_##Type(qbobj_##Type##_t *obj);
QBOBJ_RECORD_TYPES(QBOBJ_DECLARE_RECORD)

#ifdef __cplusplus
}
#endif

#endif
