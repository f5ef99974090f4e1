// What the library says about itself: its version, and the names of its error codes.
#include <qbobj/version.h>

#include <string_view>

namespace
{

#define QBOBJ_TEXT(number) #number
#define QBOBJ_DOTTED(major, minor, patch) QBOBJ_TEXT(major) "." QBOBJ_TEXT(minor) "." QBOBJ_TEXT(patch)
static_assert(std::string_view(QBOBJ_VERSION_STRING) ==
              QBOBJ_DOTTED(QBOBJ_VERSION_MAJOR, QBOBJ_VERSION_MINOR, QBOBJ_VERSION_PATCH));

} // namespace

const char *qbobj_version()
{
    return QBOBJ_VERSION_STRING;
}

const char *qbobj_error_name(int code)
{
#define QBOBJ_ERROR_NAMED(name, number)                                                                      \
    case number:                                                                                             \
        return #name;
    switch (code) {
        QBOBJ_ERRORS(QBOBJ_ERROR_NAMED)
    default:
        return "QBOBJ_ERROR_UNKNOWN";
    }
}
