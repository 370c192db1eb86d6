// A value that lives on the heap, for alternatives of a variant that would make the others large.
#ifndef FRONTEND_BOXED_H_
#define FRONTEND_BOXED_H_

#include <memory>

// Has value semantics; empty only when moved from.
template <class T>
class Boxed {
 public:
  Boxed() : value_(std::make_unique<T>()) {}
  Boxed(const Boxed& other) : value_(std::make_unique<T>(*other.value_)) {}
  Boxed& operator=(const Boxed& other) {
    if (this != &other) value_ = std::make_unique<T>(*other.value_);
    return *this;
  }
  Boxed(Boxed&&) noexcept = default;
  Boxed& operator=(Boxed&&) noexcept = default;
  ~Boxed() = default;

  operator T&() { return *value_; }              // NOLINT: visitors of the variant take a T
  operator const T&() const { return *value_; }  // NOLINT

  T* get() { return value_.get(); }
  const T* get() const { return value_.get(); }

 private:
  std::unique_ptr<T> value_;
};

#endif  // FRONTEND_BOXED_H_
