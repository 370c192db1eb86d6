// What rules of style go by.
#ifndef SETTINGS_LINT_SETTINGS_H_
#define SETTINGS_LINT_SETTINGS_H_

#include <regex.h>

#include <cstdint>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "settings/document.h"
#include "settings/json_file.h"

namespace rux::settings {

// An extended regular expression of POSIX, for whole names.
class NamePattern {
 public:
  // Returns nothing and sets `trouble` when the text is none.
  static std::optional<NamePattern> From(const std::string& text, std::string& trouble);

  bool Fits(std::string_view name) const;
  const std::string& text() const { return text_; }

 private:
  explicit NamePattern(std::string text) : text_(std::move(text)) {}

  std::string text_;
  std::shared_ptr<const regex_t> compiled_;
};

struct IdRange {
  std::uint32_t first;
  std::uint32_t last;
};

struct LintSettings {
  std::map<std::string, NamePattern> names;    // by kinds of sections
  std::map<std::string, IdRange> ids;          // of sensors, by their groups
  std::vector<std::string> sensor_properties;  // that every sensor has
};

// The member "lint" of a project file. Every problem is a Failure that names the file and the line.
LintSettings ParseLintSettings(const Document& document, const JsonValue& object);

}  // namespace rux::settings

#endif  // SETTINGS_LINT_SETTINGS_H_
