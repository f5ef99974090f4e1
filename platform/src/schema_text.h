// The SQL of a fresh database, compiled in from schema/*.sql in the order of the files' names.
#pragma once

namespace qbdb
{

extern const char *const schema_text[]; // null-terminated

} // namespace qbdb
