#include "core/time_machine.h"

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <new>
#include <string>
#include <string_view>
#include <system_error>

namespace qbobj
{
namespace
{

// The first entry of a folder, in directory order, that is a sparse bundle; empty when there is none.
std::filesystem::path find_sparse_bundle(const std::filesystem::path &folder)
{
    std::error_code error;
    for (std::filesystem::directory_iterator entry(folder, error), end; !error && entry != end;
         entry.increment(error))
        if (entry->path().filename().string().find(".sparsebundle") != std::string::npos)
            return entry->path();
    return {};
}

// The number behind "<integer>" in the line that follows the band-size key of a bundle's property list; else
// 0.
uint64_t read_band_size(const std::filesystem::path &property_list)
{
    constexpr std::string_view integer = "\t<integer>";
    std::ifstream file(property_list);
    std::string line;
    while (std::getline(file, line)) {
        if (line != "\t<key>band-size</key>" || !std::getline(file, line))
            continue;
        if (line.starts_with(integer))
            return std::strtoull(line.c_str() + integer.size(), nullptr, 10);
    }
    return 0;
}

} // namespace

uint64_t time_machine_mb(const char *folder) noexcept
try {
    constexpr uint64_t megabyte = 1000000;
    const std::filesystem::path bundle = find_sparse_bundle(folder);
    if (bundle.empty())
        return 0;
    const uint64_t band_size = read_band_size(bundle / "Info.plist");
    std::error_code error;
    uint64_t bands = 0;
    for (std::filesystem::directory_iterator band(bundle / "bands", error), end; !error && band != end;
         band.increment(error))
        ++bands;
    return band_size * bands / megabyte;
} catch (const std::bad_alloc &) {
    return 0;
}

} // namespace qbobj
