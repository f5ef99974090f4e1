// The text file that users are imported from: its lines and their fields.
#pragma once

#include <array>
#include <cstddef>

namespace qbobj
{

// What a line says about a user. The texts stand in the reader and last until its next line.
struct UserListEntry {
    const char *user_name;
    const char *group_name;
    const char *email;
    const char *password;
    bool encoded; // the password is in its stored form
};

// Reads four fields a line, separated by TAB: user name, group name, e-mail address, password. A line of one
// word switches how passwords are read; empty lines and headers are passed over. What was read, plain passwords among
// it, is wiped in the end.
class UserListReader
{
  public:
    enum class Next { entry, end, wrong_format };

    explicit UserListReader(const char *path);
    ~UserListReader();
    UserListReader(const UserListReader &) = delete;
    UserListReader &operator=(const UserListReader &) = delete;

    bool missing() const { return missing_; }
    Next next(UserListEntry &entry);

  private:
    // A longer line is read as several lines.
    static constexpr std::size_t max_line = 1023;
    static constexpr std::size_t max_fields = 4;

    void open(const char *path);
    bool refill();
    bool read_line();
    bool split();
    bool switch_mode();

    int file_ = -1;
    bool missing_ = false;
    bool broken_ = false; // not opened, or not read to its end
    bool encoded_ = false;
    std::size_t next_ = 0;
    std::size_t filled_ = 0;
    std::size_t length_ = 0;
    std::size_t count_ = 0;
    std::array<char, 4096> buffer_{};
    std::array<char, max_line + 1> line_{};
    std::array<const char *, max_fields> fields_{};
};

} // namespace qbobj
