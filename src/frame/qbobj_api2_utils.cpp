// The dump of a record, into the platform's log or to a stream: one walk along the record's schema.
#include "core/schema.h"

#include <cstdio>
#include <cstring>

namespace
{

using qbobj::value_at;

// Where a dump goes. A null string is left to the formatter.
struct Log {
    static constexpr bool shows_void = true;
    qbdb_handle_t *qbdb;
    const char *fname;
    int lineno;

    template <class... Args>
    void print(const char *format, Args... args) const
    {
        qbdb_log(qbdb, fname, lineno, QBDB_LOG_DEBUG, 0, format, args...);
    }
};

struct Stream {
    static constexpr bool shows_void = false;
    FILE *fp;

    template <class... Args>
    void print(const char *format, Args... args) const
    {
        std::fprintf(fp, format, args...);
    }
};

// As many blanks as the level says; 15 for a level that is out of range.
const char *indent(int level)
{
    constexpr int longest = 15;
    static constexpr char blanks[longest + 1] = "               ";
    return blanks + (level >= 0 && level <= longest ? longest - level : 0);
}

template <class Sink>
void dump_fields(const Sink &sink, const qbobj_spec_t *spec, void *obj, int level);

// A single record, which may be null, or every record of a list. `kind` and `name` open its lines.
template <class Sink>
void dump_records(const Sink &sink, const qbobj_spec_t *spec, const char *kind, const char *name, void *obj,
                  int level)
{
    if ((spec->attr & QBOBJ_ATTR_LIST) == 0) {
        sink.print("%s%s%s = {\n", indent(level), kind, name);
        dump_fields(sink, spec, obj, level + 1);
        sink.print("%s}\n", indent(level));
        return;
    }
    for (int index = 0; obj != nullptr; ++index, obj = value_at<void *>(obj, 0)) {
        sink.print("%s%s%s[%d] = {\n", indent(level), kind, name, index);
        dump_fields(sink, spec, obj, level + 1);
        sink.print("%s}\n", indent(level));
    }
}

template <class Sink>
void dump_field(const Sink &sink, const qbobj_spec_t &row, void *obj, int level)
{
    const auto print = [&](const char *format, auto value) {
        sink.print(format, indent(level), row.type, row.name, value);
    };
    if (Sink::shows_void && qbobj::has_void_flag(row) &&
        value_at<int>(obj, qbobj::void_flag_offset(row)) != 0) {
        sink.print("%s%c %s = void\n", indent(level), row.type, row.name);
        return;
    }
    switch (row.type) {
    case QBOBJ_KIND_STRING:
        return print("%s%c %s = %s\n", value_at<const char *>(obj, row.offs_or_size));
    case QBOBJ_KIND_INT:
        return print("%s%c %s = %d\n", value_at<int>(obj, row.offs_or_size));
    case QBOBJ_KIND_UINT:
        return print("%s%c %s = %u\n", value_at<unsigned>(obj, row.offs_or_size));
    case QBOBJ_KIND_INT64:
        return print("%s%c %s = %ld\n", value_at<std::int64_t>(obj, row.offs_or_size));
    case QBOBJ_KIND_UINT64:
        return print("%s%c %s = %lu\n", value_at<std::uint64_t>(obj, row.offs_or_size));
    case QBOBJ_KIND_RECORD:
        if (void *nested = value_at<void *>(obj, row.offs_or_size); nested != nullptr)
            return dump_records(sink, row.ospec_ptr, "o ", row.name, nested, level);
        return sink.print("%s%c %s = NULL\n", indent(level), row.type, row.name);
    default:
        return;
    }
}

template <class Sink>
void dump_fields(const Sink &sink, const qbobj_spec_t *spec, void *obj, int level)
{
    if (obj == nullptr) {
        sink.print("%s obj=NULL\n", indent(level));
        return;
    }
    for (const qbobj_spec_t *row = spec + 1; row->type != QBOBJ_KIND_END; ++row)
        dump_field(sink, *row, obj, level);
}

} // namespace

void qbobj_api2_utils_dump_object(qbdb_handle_t *qbdb, const qbobj_spec_t *spec, void *obj, int level,
                                  const char *fname, int lineno)
{
    dump_records(Log{qbdb, fname, lineno}, spec, "", spec->name, obj, level);
}

void qbobj_api2_dump_struct(FILE *fp, const char *name, void *obj)
{
    std::fprintf(fp, "*** Dump %s ***\n", name);
    for (const struct all_spec *entry = all_spec; entry->name != nullptr; ++entry) {
        if (std::strcmp(entry->name, name) == 0)
            return dump_records(Stream{fp}, entry->spec, "", entry->spec->name, obj, 0);
    }
}
