// The bytes of a file for as long as they are needed.
#ifndef RUXCOMP_FILE_KEPT_BYTES_H_
#define RUXCOMP_FILE_KEPT_BYTES_H_

#include <sys/mman.h>

#include <cstddef>
#include <string>
#include <string_view>
#include <utility>

namespace ruxcomp::file {

// Mapping a file of fewer bytes costs as much as reading it.
inline constexpr std::size_t kLeastMapped = std::size_t{64} << 10;

// Bytes in memory, those of a mapped file, or those that somebody else keeps. They stay where they
// are.
class KeptBytes {
 public:
  KeptBytes() = default;
  ~KeptBytes() {
    if (mapped_ != nullptr) munmap(mapped_, mapped_size_);
  }
  KeptBytes(const KeptBytes&) = delete;
  KeptBytes& operator=(const KeptBytes&) = delete;

  // Replaces the previous bytes, whose views end.
  void Keep(std::string bytes) {
    own_ = std::move(bytes);
    view_ = own_;
  }
  void Borrow(std::string_view bytes) { view_ = bytes; }
  // This many bytes of an open file. False when the system does not map it.
  bool Map(int descriptor, std::size_t size) {
    void* const begin = mmap(nullptr, size, PROT_READ, kFlags, descriptor, 0);
    if (begin == MAP_FAILED) return false;
    mapped_ = begin;
    mapped_size_ = size;
    view_ = {static_cast<const char*>(begin), size};
    return true;
  }

  std::string_view view() const { return view_; }

 private:
#ifdef MAP_POPULATE
  // All of it is read at once: a page at a time takes longer.
  static constexpr int kFlags = MAP_PRIVATE | MAP_POPULATE;
#else
  static constexpr int kFlags = MAP_PRIVATE;
#endif

  std::string own_;
  std::string_view view_;
  void* mapped_ = nullptr;
  std::size_t mapped_size_ = 0;
};

}  // namespace ruxcomp::file

#endif  // RUXCOMP_FILE_KEPT_BYTES_H_
