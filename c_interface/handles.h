// What crosses the C interface: handles of both sides are the same bytes.
#ifndef C_INTERFACE_HANDLES_H_
#define C_INTERFACE_HANDLES_H_

#include <cstddef>
#include <cstring>
#include <string_view>
#include <type_traits>

#include "ruxcomp/model.h"
#include "ruxcomp/records.h"
#include "ruxmeta.h"

struct ruxmeta_model {
  ruxcomp::Model model;
};

namespace rux::c_interface {

template <class To, class From>
To SameBytes(const From& from) noexcept {
  static_assert(sizeof(To) == sizeof(From));
  static_assert(std::is_trivially_copyable_v<To> && std::is_trivially_copyable_v<From>);
  To to;
  std::memcpy(static_cast<void*>(&to), &from, sizeof to);
  return to;
}

inline ruxcomp::Section FromC(ruxmeta_section section) noexcept {
  return SameBytes<ruxcomp::Section>(section);
}
inline ruxcomp::Entry FromC(ruxmeta_entry entry) noexcept {
  return SameBytes<ruxcomp::Entry>(entry);
}

inline ruxmeta_section ToC(ruxcomp::Section section) noexcept {
  return SameBytes<ruxmeta_section>(section);
}
inline ruxmeta_entry ToC(ruxcomp::Entry entry) noexcept { return SameBytes<ruxmeta_entry>(entry); }
inline ruxmeta_text ToC(std::string_view text) noexcept { return {text.data(), text.size()}; }
inline ruxmeta_value ToC(ruxcomp::Value value) noexcept {
  return {value.kind(), value.index(), value.number(), ToC(value.text())};
}
static_assert(static_cast<int>(RUXMETA_NOTHING) == RUX_DATA_NONE);
static_assert(static_cast<int>(RUXMETA_NUMBER) == RUX_DATA_NUMBER);
static_assert(static_cast<int>(RUXMETA_TEXT) == RUX_DATA_STRING);

// A later version of a struct is larger, and begins like this one.
template <class Struct>
bool IsKnown(const Struct* record) noexcept {
  return record->size >= sizeof *record;
}

}  // namespace rux::c_interface

#endif  // C_INTERFACE_HANDLES_H_
