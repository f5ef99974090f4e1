// The databases of the platform's tests.
#include "platform.h"

namespace platform_test
{

namespace fs = std::filesystem;

std::vector<std::string> Folder::names() const
{
    std::vector<std::string> result;
    for (const auto &entry : fs::directory_iterator(folder_.path()))
        result.push_back(entry.path().filename());
    return result;
}

Session::Session(const std::string &file, const qbdb_options_t &options)
{
    char message[512] = "";
    if (qbdb_open(file.c_str(), &options, &qbdb, &db, message, sizeof message) != 0)
        throw std::runtime_error(message);
}

int Session::statements() const
{
    int count = 0;
    for (sqlite3_stmt *s = sqlite3_next_stmt(db, nullptr); s; s = sqlite3_next_stmt(db, s))
        count++;
    return count;
}

Rows Session::copy(char **table, int rows, int columns)
{
    Rows result;
    for (int r = 1; r <= rows; r++) {
        result.emplace_back();
        for (int c = 0; c < columns; c++)
            result.back().emplace_back(table[r * columns + c] ? table[r * columns + c] : "<null>");
    }
    return result;
}

Platform::Platform()
{
    char message[512] = "";
    if (qbdb_create(file.c_str(), message, sizeof message) != 0)
        throw std::runtime_error(message);
    stream = std::fopen((folder / "log").c_str(), "w");
    options.log = stream;
    options.loglvl = QBDB_LOG_ERROR;
    options.relaxed_durability = 1;
    session = std::make_unique<Session>(file, options);
    session->exec("CREATE TABLE t(a, b, c)");
    session->exec("CREATE TABLE u(id INTEGER PRIMARY KEY, name TEXT UNIQUE)");
}

Platform::~Platform()
{
    session.reset();
    std::fclose(stream);
}

std::string Platform::log() const
{
    return read_file(folder / "log");
}

} // namespace platform_test
