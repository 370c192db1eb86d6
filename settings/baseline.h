// The baseline: warnings that a tree of scripts has already, so that only new ones count.
//
//   docs/baseline.schema.json
#ifndef SETTINGS_BASELINE_H_
#define SETTINGS_BASELINE_H_

#include <cstdint>
#include <map>
#include <string>
#include <string_view>
#include <tuple>

namespace rux::settings {

// What warnings have in common that count together: nothing that changes when lines move. Texts are
// valid UTF-8; what a warning does not have is empty.
struct BaselineKey {
  std::string script;   // the path, relative to the folder of the baseline
  std::string id;       // of the message
  std::string section;  // "SENSOR"
  std::string name;     // of the section
  std::string entry;    // the key

  friend bool operator<(const BaselineKey& a, const BaselineKey& b) {
    return std::tie(a.script, a.id, a.section, a.name, a.entry) <
           std::tie(b.script, b.id, b.section, b.name, b.entry);
  }
};

// How many there are of each.
using BaselineCounts = std::map<BaselineKey, std::uint64_t>;

// Throws a Failure that names the line of what is wrong with the text of a baseline at `path`.
BaselineCounts ParseBaseline(const std::string& path, std::string_view text);

// The same of a file.
BaselineCounts ReadBaseline(const std::string& path);

// Sorted, with a line for each entry.
std::string BaselineText(const BaselineCounts& counts);

}  // namespace rux::settings

#endif  // SETTINGS_BASELINE_H_
