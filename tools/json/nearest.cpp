// The distance between names: letters put in, left out, exchanged, or swapped with their neighbour.
#include "json/nearest.h"

#include <algorithm>
#include <cctype>

namespace qbobj_json
{
namespace
{

std::string in_small_letters(std::string text)
{
    std::transform(text.begin(), text.end(), text.begin(),
                   [](unsigned char c) { return static_cast<char>(std::tolower(c)); });
    return text;
}

std::size_t distance(const std::string &a, const std::string &b)
{
    std::vector<std::vector<std::size_t>> steps(a.size() + 1, std::vector<std::size_t>(b.size() + 1));
    for (std::size_t i = 0; i <= a.size(); ++i)
        for (std::size_t j = 0; j <= b.size(); ++j) {
            if (i == 0 || j == 0) {
                steps[i][j] = i + j;
                continue;
            }
            const std::size_t exchanged = a[i - 1] == b[j - 1] ? 0 : 1;
            std::size_t &least = steps[i][j];
            least = std::min({steps[i - 1][j] + 1, steps[i][j - 1] + 1, steps[i - 1][j - 1] + exchanged});
            if (i > 1 && j > 1 && a[i - 1] == b[j - 2] && a[i - 2] == b[j - 1])
                least = std::min(least, steps[i - 2][j - 2] + 1);
        }
    return steps[a.size()][b.size()];
}

} // namespace

std::string suggestion(const std::string &word, const std::vector<std::string> &names)
{
    constexpr std::size_t longest = 100; // no name is as long
    if (word.size() > longest)
        return "";
    const std::string *nearest = nullptr;
    std::size_t least = (word.size() + 1) / 3 + 1;
    for (const std::string &name : names)
        if (const std::size_t steps = distance(in_small_letters(word), in_small_letters(name));
            steps < least) {
            least = steps;
            nearest = &name;
        }
    return nearest == nullptr ? "" : "; did you mean '" + *nearest + "'?";
}

} // namespace qbobj_json
