// Knowing one's own process again.
#pragma once

#include <new>
#include <sys/mman.h>

namespace qbdb
{

// A mark on memory that a fork wipes in the child: reading it costs nothing, while asking for the process's id is a system
// call. (Before Linux 4.14 a child inherits the mark.)
class ProcessMark
{
  public:
    ProcessMark()
        : mark_(static_cast<bool *>(
              mmap(nullptr, sizeof(bool), PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0)))
    {
        if (mark_ == MAP_FAILED)
            throw std::bad_alloc();
        madvise(mark_, sizeof(bool), MADV_WIPEONFORK);
        *mark_ = true;
    }
    ~ProcessMark() { munmap(mark_, sizeof(bool)); }
    ProcessMark(const ProcessMark &) = delete;
    ProcessMark &operator=(const ProcessMark &) = delete;

    // False in a child of the process that made it.
    bool is_ours() const { return *mark_; }

  private:
    bool *mark_;
};

} // namespace qbdb
