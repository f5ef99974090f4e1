// Chains of records: appending at the end, and walking along.
#pragma once

#include "core/memory.h"

namespace qbobj
{

// The link that ends a list.
template <class Record>
Record *&end_of(Record *&head)
{
    Record **end = &head;
    while (*end != nullptr)
        end = &(*end)->_link;
    return *end;
}

// The end of a list; appending costs the same however long the list is.
template <class Record>
class Tail
{
  public:
    explicit Tail(Record *&head) : end_(&end_of(head)) {}
    // Appends a new record: zeroed, or a copy.
    Record &append(apr_pool_t *pool, const Record &record = {})
    {
        Record *appended = create<Record>(pool);
        *appended = record;
        appended->_link = nullptr;
        *end_ = appended;
        end_ = &appended->_link;
        return *appended;
    }

  private:
    Record **end_;
};

// The records of a chain, for a range-for.
template <class Record>
class Chain
{
  public:
    explicit Chain(Record *head) : head_(head) {}
    class Iterator
    {
      public:
        explicit Iterator(Record *record) : record_(record) {}
        Record &operator*() const { return *record_; }
        Iterator &operator++()
        {
            record_ = record_->_link;
            return *this;
        }
        bool operator==(const Iterator &) const = default;

      private:
        Record *record_;
    };
    Iterator begin() const { return Iterator(head_); }
    Iterator end() const { return Iterator(nullptr); }

  private:
    Record *head_;
};

// Gives every record of a chain to `work`, behind the other arguments; the first result that is not 0 ends it.
template <class Record, class Work, class... Args>
int for_each(Record *chain, Work work, Args &...args)
{
    for (Record &record : Chain(chain))
        if (const int rc = work(args..., record); rc != 0)
            return rc;
    return 0;
}

} // namespace qbobj
