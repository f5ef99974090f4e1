# SQLite, and what it must have been compiled with.
include(CheckCSourceCompiles)
pkg_check_modules(SQLITE REQUIRED IMPORTED_TARGET sqlite3>=3.39)

set(CMAKE_REQUIRED_LIBRARIES PkgConfig::SQLITE)
check_c_source_compiles("
    #define SQLITE_ENABLE_PREUPDATE_HOOK
    #include <sqlite3.h>
    int main(void) { return sqlite3_preupdate_hook(0, 0, 0) != 0; }" SQLITE_HAS_PREUPDATE_HOOK)
unset(CMAKE_REQUIRED_LIBRARIES)
if(NOT SQLITE_HAS_PREUPDATE_HOOK)
    message(FATAL_ERROR "SQLite ${SQLITE_VERSION} in ${SQLITE_LIBDIR} lacks the pre-update hook, which finds out what an "
        "operation changed: build it with -DSQLITE_ENABLE_PREUPDATE_HOOK, and never with -DSQLITE_THREADSAFE=0.")
endif()
