// The owner of a file descriptor.
#pragma once

#include <unistd.h>

#include <utility>

namespace qbdb
{

class FileDescriptor
{
  public:
    explicit FileDescriptor(int fd = -1) : fd_(fd) {}
    ~FileDescriptor()
    {
        if (fd_ >= 0)
            close(fd_);
    }
    FileDescriptor(FileDescriptor &&other) noexcept : fd_(std::exchange(other.fd_, -1)) {}
    FileDescriptor(const FileDescriptor &) = delete;
    FileDescriptor &operator=(const FileDescriptor &) = delete;

    explicit operator bool() const { return fd_ >= 0; }
    int get() const { return fd_; }

  private:
    int fd_;
};

} // namespace qbdb
