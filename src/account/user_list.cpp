// Reading the file that users are imported from.
#include "account/user_list.h"

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <fcntl.h>
#include <string_view>
#include <sys/stat.h>
#include <unistd.h>

namespace qbobj
{
namespace
{

constexpr std::array<std::string_view, 4> header{"User_Name", "Group_Name", "Email_Address", "Password"};
constexpr std::string_view byte_order_mark = "\xEF\xBB\xBF";

// The list stands in a folder that everyone writes to: what others may have put there is not read.
bool is_trusted(const struct stat &status)
{
    return S_ISREG(status.st_mode) && (status.st_uid == 0 || status.st_uid == ::geteuid());
}

} // namespace

UserListReader::UserListReader(const char *path)
{
    open(path);
    if (refill() && std::string_view(buffer_.data(), filled_).starts_with(byte_order_mark))
        next_ = byte_order_mark.size();
}

UserListReader::~UserListReader()
{
    if (file_ >= 0)
        ::close(file_);
    ::explicit_bzero(buffer_.data(), buffer_.size());
    ::explicit_bzero(line_.data(), line_.size());
}

// What is not opened has the wrong format. Opening a pipe must not wait for its writer.
void UserListReader::open(const char *path)
{
    file_ = ::open(path, O_RDONLY | O_NOFOLLOW | O_NONBLOCK | O_CLOEXEC);
    missing_ = file_ < 0 && (errno == ENOENT || errno == ENOTDIR);
    struct stat status {
    };
    broken_ = file_ < 0 || ::fstat(file_, &status) != 0 || !is_trusted(status);
}

// False at the end.
bool UserListReader::refill()
{
    ssize_t count = -1;
    while (!broken_ && (count = ::read(file_, buffer_.data(), buffer_.size())) < 0 && errno == EINTR) {
    }
    broken_ = count < 0;
    next_ = 0;
    filled_ = broken_ ? 0 : static_cast<std::size_t>(count);
    return filled_ > 0;
}

UserListReader::Next UserListReader::next(UserListEntry &entry)
{
    while (read_line()) {
        if (!split())
            return Next::wrong_format;
        if (count_ == 1) {
            if (!switch_mode())
                return Next::wrong_format;
        } else if (!std::ranges::equal(fields_, header)) {
            entry = {fields_[0], fields_[1], fields_[2], fields_[3], encoded_};
            return Next::entry;
        }
    }
    return broken_ ? Next::wrong_format : Next::end;
}

bool UserListReader::read_line()
{
    length_ = 0;
    char c = '\0';
    while (c != '\n' && length_ < max_line && (next_ < filled_ || refill()))
        line_[length_++] = c = buffer_[next_++];
    return length_ > 0;
}

// Cuts the line's end and makes texts of its fields. False unless there are one or four.
bool UserListReader::split()
{
    const auto drop_last = [this](char c) {
        if (length_ > 0 && line_[length_ - 1] == c)
            --length_;
    };
    drop_last('\n');
    drop_last('\r');
    const auto end = line_.begin() + static_cast<std::ptrdiff_t>(length_);
    if (std::find(line_.begin(), end, '\0') != end)
        return false;
    *end = '\0';

    fields_[0] = line_.data();
    count_ = 1;
    for (auto tab = std::find(line_.begin(), end, '\t'); tab != end; tab = std::find(tab, end, '\t')) {
        if (count_ == max_fields)
            return false;
        *tab++ = '\0';
        fields_[count_++] = &*tab;
    }
    return count_ == 1 || count_ == max_fields;
}

// A line of one word. False for a word that means nothing.
bool UserListReader::switch_mode()
{
    const std::string_view word = fields_[0];
    if (word == "export_list")
        encoded_ = true;
    else if (word == "import_list")
        encoded_ = false;
    else
        return word.empty();
    return true;
}

} // namespace qbobj
