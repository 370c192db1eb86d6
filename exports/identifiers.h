// Names of constants that compilers accept.
#ifndef EXPORTS_IDENTIFIERS_H_
#define EXPORTS_IDENTIFIERS_H_

#include <cstddef>
#include <map>
#include <set>
#include <string>
#include <string_view>

namespace rux::exports {

// Capitals, digits and low lines; any other character is a low line. A name that another one has
// become already gets "_2", "_3" and so on, so that the names of a machine are the same each time.
class Identifiers {
 public:
  // Of a name, after a prefix that begins with a letter and ends with a low line.
  std::string Add(std::string_view prefix, std::string_view name);

 private:
  std::set<std::string> taken_;
  std::map<std::string, std::size_t> last_suffix_;
};

}  // namespace rux::exports

#endif  // EXPORTS_IDENTIFIERS_H_
