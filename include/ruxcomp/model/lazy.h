// What the read model builds when a query needs it; see model.h.
#ifndef RUXCOMP_MODEL_LAZY_H_
#define RUXCOMP_MODEL_LAZY_H_

#include <atomic>
#include <memory>
#include <new>

namespace ruxcomp::detail {

// An Index that the second query builds, so that a single query costs a walk and no memory. Threads
// may query at once: each sees no index or a complete one. When two build it, the later one drops
// its own.
template <class Index>
class Lazy {
 public:
  Lazy() = default;
  ~Lazy() { delete made_.load(std::memory_order_relaxed); }
  Lazy(const Lazy&) = delete;
  Lazy& operator=(const Lazy&) = delete;

  // The index once it is made, null before.
  const Index* made() const noexcept { return made_.load(std::memory_order_acquire); }

  // Null when there is none, so that the query has to be answered by a walk. fill(index) returns
  // false when there is no memory; the next query tries again.
  template <class Fill>
  const Index* Get(Fill fill) const noexcept {
    const Index* const own = made();
    return own != nullptr ? own : Make(fill);
  }

 private:
  template <class Fill>
  [[gnu::cold, gnu::noinline]] const Index* Make(Fill fill) const noexcept {
    if (!was_asked_.exchange(true, std::memory_order_relaxed)) return nullptr;
    std::unique_ptr<Index> index(new (std::nothrow) Index);
    if (index == nullptr || !fill(*index)) return nullptr;
    const Index* other = nullptr;
    if (!made_.compare_exchange_strong(other, index.get(), std::memory_order_acq_rel)) return other;
    return index.release();
  }

  mutable std::atomic<const Index*> made_{nullptr};
  mutable std::atomic<bool> was_asked_{false};
};

}  // namespace ruxcomp::detail

#endif  // RUXCOMP_MODEL_LAZY_H_
