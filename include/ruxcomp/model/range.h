// What sections, entries and values of the read model are iterated by; see model.h.
#ifndef RUXCOMP_MODEL_RANGE_H_
#define RUXCOMP_MODEL_RANGE_H_

#include <cstddef>
#include <iterator>

namespace ruxcomp {

// Neighbours in a model, handed out by value. A Cursor is at one of them: it makes the handle for
// it (Cursor::Handle Get()), goes on by some (Move(n)), and knows how far it is from another
// (From()).
template <class Cursor>
class Range {
 public:
  using Handle = typename Cursor::Handle;

  class iterator {
   public:
    using iterator_category = std::random_access_iterator_tag;
    using value_type = Handle;
    using difference_type = std::ptrdiff_t;
    using reference = Handle;
    struct pointer {
      Handle handle;
      const Handle* operator->() const noexcept { return &handle; }
    };

    iterator() noexcept = default;
    explicit iterator(const Cursor& cursor) noexcept : cursor_(cursor) {}

    Handle operator*() const noexcept { return cursor_.Get(); }
    pointer operator->() const noexcept { return {cursor_.Get()}; }
    Handle operator[](difference_type n) const noexcept { return *(*this + n); }

    iterator& operator+=(difference_type n) noexcept {
      cursor_.Move(n);
      return *this;
    }
    iterator& operator-=(difference_type n) noexcept { return *this += -n; }
    iterator& operator++() noexcept { return *this += 1; }
    iterator& operator--() noexcept { return *this -= 1; }
    iterator operator++(int) noexcept {
      const iterator before = *this;
      ++*this;
      return before;
    }
    iterator operator--(int) noexcept {
      const iterator before = *this;
      --*this;
      return before;
    }

    friend iterator operator+(iterator i, difference_type n) noexcept { return i += n; }
    friend iterator operator+(difference_type n, iterator i) noexcept { return i += n; }
    friend iterator operator-(iterator i, difference_type n) noexcept { return i -= n; }
    friend difference_type operator-(const iterator& a, const iterator& b) noexcept {
      return a.cursor_.From(b.cursor_);
    }
    friend bool operator==(const iterator& a, const iterator& b) noexcept { return a - b == 0; }
    friend bool operator!=(const iterator& a, const iterator& b) noexcept { return a - b != 0; }
    friend bool operator<(const iterator& a, const iterator& b) noexcept { return a - b < 0; }
    friend bool operator>(const iterator& a, const iterator& b) noexcept { return a - b > 0; }
    friend bool operator<=(const iterator& a, const iterator& b) noexcept { return a - b <= 0; }
    friend bool operator>=(const iterator& a, const iterator& b) noexcept { return a - b >= 0; }

   private:
    Cursor cursor_;
  };
  using const_iterator = iterator;
  using value_type = Handle;

  Range() noexcept = default;
  Range(const Cursor& begin, std::size_t size) noexcept : begin_(begin), size_(size) {}

  iterator begin() const noexcept { return iterator(begin_); }
  iterator end() const noexcept { return begin() + static_cast<std::ptrdiff_t>(size_); }
  std::size_t size() const noexcept { return size_; }
  bool empty() const noexcept { return size_ == 0; }

  // A null handle beyond the end.
  Handle operator[](std::size_t n) const noexcept {
    return n < size_ ? begin()[static_cast<std::ptrdiff_t>(n)] : Handle();
  }

 private:
  Cursor begin_;
  std::size_t size_ = 0;
};

}  // namespace ruxcomp

#endif  // RUXCOMP_MODEL_RANGE_H_
