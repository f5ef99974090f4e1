// Which fields are secret, and what they held.
#include "qbctl/secrets.h"

#include "operations/texts.h"

#include <qbobj/types.h>

#include <algorithm>
#include <cctype>
#include <string_view>

using qbobj_json::Json;

namespace qbctl
{
namespace
{

// What is read or given by hand has no record type to ask, so that a name that is secret anywhere is secret.
bool is_secret(std::string_view field)
{
    return std::ranges::any_of(qbobj::texts::secrets(),
                               [field](const qbobj::texts::Secret &secret) { return secret.field == field; });
}

// Calls `visit` with every text in a secret field, however deep.
template <class Visit>
void for_each_secret(const Json &value, Visit visit)
{
    for (auto place = value.begin(); place != value.end(); ++place) {
        if (place->is_structured())
            for_each_secret(*place, visit);
        else if (value.is_object() && place->is_string() && is_secret(place.key()))
            visit(*place);
    }
}

bool is_part_of_word(char c)
{
    return std::isalnum(static_cast<unsigned char>(c)) != 0;
}

// Whether the text at `start` stands for itself, so that a short password does not tear words apart.
bool stands_alone(const std::string &message, std::size_t start, const std::string &text)
{
    const std::size_t end = start + text.size();
    const bool joined_before =
        start > 0 && is_part_of_word(message[start - 1]) && is_part_of_word(text.front());
    const bool joined_after =
        end < message.size() && is_part_of_word(message[end]) && is_part_of_word(text.back());
    return !joined_before && !joined_after;
}

} // namespace

void Secrets::add(const std::string &text)
{
    if (!text.empty())
        texts_.insert(text);
}

void Secrets::add_all(const Json &given)
{
    for_each_secret(given, [this](const Json &field) { add(field.get<std::string>()); });
}

qbobj_json::Hides Secrets::hides() const
{
    return [this](std::string_view field, std::string_view text) {
        return texts_.contains(text) && is_secret(field);
    };
}

std::string Secrets::hidden(std::string message) const
{
    const std::string_view mask = masked_password;
    for (const std::string &text : texts_)
        for (std::size_t at = message.find(text); at != std::string::npos; at = message.find(text, at))
            if (stands_alone(message, at, text)) {
                message.replace(at, text.size(), mask);
                at += mask.size();
            } else {
                ++at;
            }
    return message;
}

} // namespace qbctl
