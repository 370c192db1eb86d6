// Where in the scripts of a run something was read.
#ifndef FINDINGS_ORIGIN_H_
#define FINDINGS_ORIGIN_H_

#include <cstdint>

namespace ruxcomp::findings {

// All ordinals count from 0. kNone in `item` and `part` means the section or item as a whole; kNone
// in `script` means that nothing was read from a script, as after loading a debug meta file.
struct Origin {
  static constexpr std::uint32_t kNone = 0xFFFFFFFF;
  static constexpr std::uint32_t kKey = 0xFFFFFFFE;  // as a part: the key of the item

  std::uint32_t script = kNone;   // of the scripts that were opened since the run began
  std::uint32_t section = kNone;  // of the sections of the script, unknown ones included
  std::uint32_t item = kNone;     // of the items of the section, rejected ones included
  std::uint32_t part = kNone;     // of the comma-separated parts of the item's value, or kKey

  friend bool operator==(const Origin& one, const Origin& other) {
    return one.script == other.script && one.section == other.section && one.item == other.item &&
           one.part == other.part;
  }
  friend bool operator!=(const Origin& one, const Origin& other) { return !(one == other); }
};

namespace detail {
inline Origin examined;
}  // namespace detail

// Notes what is examined from now on, in case it raises an error.
inline void Examine(const Origin& origin) { detail::examined = origin; }
inline void ExaminePart(std::uint32_t part) { detail::examined.part = part; }

// What was being examined when a function of the library raised an error; meaningless otherwise.
inline const Origin& Examined() { return detail::examined; }

}  // namespace ruxcomp::findings

#endif  // FINDINGS_ORIGIN_H_
