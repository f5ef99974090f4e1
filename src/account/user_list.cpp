// Reading the file that users are imported from.
#include "account/user_list.h"

#include <algorithm>
#include <filesystem>
#include <string_view>

namespace qbobj
{
namespace
{

constexpr std::array<std::string_view, 4> header{"User_Name", "Group_Name", "Email_Address", "Password"};

} // namespace

UserListReader::UserListReader(const char *path)
{
    std::error_code ignored;
    missing_ = !std::filesystem::exists(path, ignored);
    // Opening a pipe would wait for its writer. What is not opened has the wrong format.
    if (std::filesystem::is_regular_file(path, ignored))
        file_.open(path, std::ios::binary);
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
    return file_.is_open() && !file_.bad() ? Next::end : Next::wrong_format;
}

bool UserListReader::read_line()
{
    length_ = 0;
    char c = '\0';
    while (c != '\n' && length_ < max_line && file_.get(c))
        line_[length_++] = c;
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
