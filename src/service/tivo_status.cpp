// The status file of the TiVo bridge service: sections headed by "[info]" or by a device's name in brackets.
#include "service/tivo_status.h"

#include <algorithm>
#include <array>
#include <filesystem>
#include <fstream>
#include <string_view>

namespace qbobj
{
namespace
{

using Device = qbobj_TIVOhostsAcl_t;

class StatusFile
{
  public:
    explicit StatusFile(const char *path)
    {
        // Opening a pipe would wait for its writer.
        std::error_code ignored;
        if (std::filesystem::is_regular_file(path, ignored))
            file_.open(path, std::ios::binary);
    }

    // Reads the next line; false when there is none.
    bool next()
    {
        length_ = 0;
        char c = '\0';
        while (c != '\n' && length_ < line_.size() && file_.get(c))
            line_[length_++] = c;
        return length_ > 0;
    }
    // Without its newline.
    std::string_view line() const
    {
        const std::string_view whole(line_.data(), length_);
        return whole.substr(0, whole.find('\n'));
    }
    bool has(std::string_view word) const { return line().find(word) != std::string_view::npos; }

    bool is_info() const { return line().starts_with('[') && has("[info]"); }
    bool is_device() const { return line().starts_with('[') && !has("[info]"); }

  private:
    std::ifstream file_;
    // 510 characters and the newline; a longer line is read as several.
    std::array<char, 511> line_{};
    std::size_t length_ = 0;
};

const char *device_name(const Call &call, std::string_view line)
{
    const std::size_t end = line.find(']');
    return end == line.npos ? nullptr : copy_text(call.pool(), line.substr(1, end - 1));
}

void set_status(const Call &call, Device &device, const StatusFile &file)
{
    constexpr std::string_view inactive[] = {"verifying", "unauthorized", "unconfigured"};
    constexpr std::string_view active[] = {"archiving", "ready"};
    const auto has = [&](std::string_view word) { return file.has(word); };
    device.status = copy_text(call.pool(), file.line().substr(std::string_view("status=").size()));
    if (std::ranges::any_of(inactive, has))
        device.active = "false";
    else if (std::ranges::any_of(active, has))
        device.active = "true";
}

} // namespace

TivoBridge read_tivo_status(Call &call, const char *path, qbobj_TIVOhostsAcl_t *&devices)
{
    StatusFile file(path);
    Tail<Device> tail(devices);
    Device *device = nullptr;
    while (file.next()) {
        // What follows a heading is taken as it comes, but for a device behind the service's own.
        if (file.is_info()) {
            if (!file.next())
                break;
            if (file.has("status=") && file.has("scanning"))
                return TivoBridge::busy;
        }
        if (file.is_device()) {
            device = &tail.append(call.pool());
            device->name = device_name(call, file.line());
            if (!file.next())
                break;
        }
        if (device == nullptr || !file.has("status="))
            continue;
        if (file.has("waiting")) {
            devices = nullptr;
            return TivoBridge::busy;
        }
        set_status(call, *device, file);
    }
    return TivoBridge::finished;
}

} // namespace qbobj
