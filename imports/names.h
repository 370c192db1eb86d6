// Names and numbers of sections that are unique and that scripts can have.
#ifndef IMPORTS_NAMES_H_
#define IMPORTS_NAMES_H_

#include <cstddef>
#include <cstdint>
#include <functional>
#include <map>
#include <set>
#include <string>
#include <string_view>

namespace rux::imports {

// Many sections repeat a name: what is longer is cut.
inline constexpr std::size_t kMostNameBytes = 120;

// Letters, digits and "_+-." of the text, and an underscore for anything else between them; empty
// when nothing is left.
std::string LegalName(std::string_view text);
// The same for what follows P_ and for words: letters, digits and underscores, no
// digit first.
std::string LegalKey(std::string_view text);

// Of sections of one kind.
class Names {
 public:
  // The legal name of the text or, when that is taken, with _2, _3, ... after it. A text without
  // a legal name, or whose name is a number, gets the fallback before it.
  std::string Take(std::string_view text, std::string_view fallback);
  // The name or, when it is taken, with such a number.
  std::string TakeAsItIs(const std::string& name);

 private:
  std::set<std::string, std::less<>> taken_;
  std::map<std::string, std::uint32_t> next_;  // the number to try for a name that is taken
};

class Ids {
 public:
  // False when it is taken, or hosts cannot look it up.
  bool Take(std::uint32_t id);
  // The next one after all that are taken or, after the last one, the smallest.
  std::uint32_t TakeNext();

 private:
  std::set<std::uint32_t> taken_;
  std::uint32_t next_ = 1;
};

}  // namespace rux::imports

#endif  // IMPORTS_NAMES_H_
