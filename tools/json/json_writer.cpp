// A buffer that is handed on when it is full.
#include "json/json_writer.h"

#include "json/record_json.h"

#include <qbobj/types.h>

#include <algorithm>
#include <array>
#include <charconv>

namespace qbobj_json
{
namespace
{

constexpr std::size_t full = 65536;
constexpr std::size_t indent = 2;

// A character that stands in JSON as itself, whatever is beside it.
constexpr bool is_plain(unsigned char c)
{
    return c >= 0x20 && c < 0x80 && c != '"' && c != '\\';
}

class Writer
{
  public:
    // Without a stream the text stays in the buffer.
    Writer(std::ostream *out, Layout layout, const Hides &hides) : out_(out), layout_(layout), hides_(hides)
    {
        if (out != nullptr)
            buffer_.reserve(2 * full);
    }

    void write(const Value &value)
    {
        std::visit([this](const auto &held) { put(held); }, value.held);
    }
    void end_line()
    {
        buffer_ += '\n';
        flush();
    }
    std::string take() { return std::move(buffer_); }

  private:
    void put(std::monostate) { buffer_ += "null"; }
    void put(bool truth) { buffer_ += truth ? "true" : "false"; }
    template <std::integral Number>
    void put(Number number)
    {
        std::array<char, 24> digits;
        const auto end = std::to_chars(digits.begin(), digits.end(), number).ptr;
        buffer_.append(digits.data(), end);
    }
    void put(std::string_view text)
    {
        if (std::ranges::all_of(text, is_plain))
            buffer_.append(1, '"').append(text).append(1, '"');
        else
            buffer_ += Json(text).dump(-1, ' ', false, Json::error_handler_t::replace);
    }
    template <Object Held>
    void put(const Held &object)
    {
        open('{');
        bool first = true;
        for_each_member(object, [&](const Member &member) {
            begin_item(first);
            put(member.name);
            buffer_ += layout_ == Layout::indented ? ": " : ":";
            write(shown(member, hides_));
        });
        close('}', first);
    }
    template <Array Held>
    void put(const Held &array)
    {
        open('[');
        bool first = true;
        for_each_element(array, [&](const Value &value) {
            begin_item(first);
            write(value);
        });
        close(']', first);
    }

    void flush()
    {
        out_->write(buffer_.data(), static_cast<std::streamsize>(buffer_.size()));
        buffer_.clear();
    }
    void open(char bracket)
    {
        buffer_ += bracket;
        ++depth_;
    }
    void begin_item(bool &first)
    {
        if (!first)
            buffer_ += ',';
        first = false;
        if (out_ != nullptr && buffer_.size() >= full)
            flush();
        begin_line();
    }
    void close(char bracket, bool empty)
    {
        --depth_;
        if (!empty)
            begin_line();
        buffer_ += bracket;
    }
    void begin_line()
    {
        if (layout_ == Layout::indented)
            buffer_.append(1, '\n').append(depth_ * indent, ' ');
    }

    std::ostream *out_;
    Layout layout_;
    const Hides &hides_;
    std::string buffer_;
    std::size_t depth_ = 0;
};

} // namespace

const Value &shown(const Member &member, const Hides &hides)
{
    static const Value mask(masked_password);
    const std::string_view *text = member.value.text();
    return text != nullptr && hides && hides(member.name, *text) ? mask : member.value;
}

void write_json(std::ostream &out, const Value &value, Layout layout, const Hides &hides)
{
    Writer writer(&out, layout, hides);
    writer.write(value);
    writer.end_line();
}

std::string json_text(const Value &value, Layout layout, const Hides &hides)
{
    Writer writer(nullptr, layout, hides);
    writer.write(value);
    return writer.take();
}

} // namespace qbobj_json
