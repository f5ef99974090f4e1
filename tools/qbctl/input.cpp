// Reading to the end, and asking without an echo.
#include "qbctl/input.h"

#include "json/parse.h"

#include <fcntl.h>
#include <termios.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstring>

using qbobj_json::BadInput;

namespace qbctl
{
namespace
{

class Descriptor
{
  public:
    explicit Descriptor(int number) : number_(number) {}
    ~Descriptor()
    {
        if (number_ >= 0)
            close(number_);
    }
    Descriptor(const Descriptor &) = delete;
    Descriptor &operator=(const Descriptor &) = delete;

    int get() const { return number_; }

  private:
    int number_;
};

// No echo, and no signal that would leave the terminal without one.
class Unseen
{
  public:
    explicit Unseen(int terminal) : terminal_(terminal)
    {
        if (tcgetattr(terminal, &before_) != 0)
            throw BadInput("the terminal cannot be kept from showing what is typed");
        termios unseen = before_;
        unseen.c_lflag &= ~static_cast<tcflag_t>(ECHO | ISIG);
        if (tcsetattr(terminal, TCSAFLUSH, &unseen) != 0)
            throw BadInput("the terminal cannot be kept from showing what is typed");
    }
    ~Unseen() { tcsetattr(terminal_, TCSAFLUSH, &before_); }
    Unseen(const Unseen &) = delete;
    Unseen &operator=(const Unseen &) = delete;

  private:
    int terminal_;
    termios before_{};
};

void say(int terminal, const std::string &text)
{
    if (write(terminal, text.data(), text.size()) < 0)
        throw BadInput("cannot write to the terminal");
}

} // namespace

std::string read_descriptor(int descriptor, const std::string &name)
{
    std::string text;
    std::array<char, 65536> block;
    for (;;) {
        const ssize_t length = read(descriptor, block.data(), block.size());
        if (length < 0 && errno == EINTR)
            continue;
        if (length < 0)
            throw BadInput("cannot read " + name + ": " + std::strerror(errno));
        if (length == 0)
            return text;
        text.append(block.data(), static_cast<std::size_t>(length));
    }
}

std::string read_file(const std::string &name)
{
    if (name == "-")
        return read_descriptor(STDIN_FILENO, "standard input");
    const Descriptor file(open(name.c_str(), O_RDONLY | O_CLOEXEC));
    if (file.get() < 0)
        throw BadInput("cannot read " + name + ": " + std::strerror(errno));
    return read_descriptor(file.get(), name);
}

qbobj_json::Json read_json(const std::string &word)
{
    if (word == "-")
        return qbobj_json::parse(read_file(word));
    return qbobj_json::parse(word.starts_with('@') ? read_file(word.substr(1)) : word);
}

std::string ask(const std::string &prompt)
{
    const Descriptor terminal(open("/dev/tty", O_RDWR | O_CLOEXEC));
    if (terminal.get() < 0)
        throw BadInput("there is no terminal to ask for " + prompt);
    const Unseen unseen(terminal.get());
    say(terminal.get(), prompt + ": ");
    std::string line;
    char last = 0;
    while (read(terminal.get(), &last, 1) == 1 && last != '\n')
        line += last;
    say(terminal.get(), "\n");
    const auto is_control = [](unsigned char c) { return c < ' '; };
    if (last != '\n' || std::any_of(line.begin(), line.end(), is_control))
        throw BadInput(prompt + ": broken off");
    return line;
}

} // namespace qbctl
