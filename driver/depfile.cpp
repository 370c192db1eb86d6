#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "driver/meta_files.h"
#include "ruxcomp/model/seeded_hash.h"
#include "settings/json_file.h"
#include "support/failure.h"

namespace rux::driver {
namespace {

// Make takes % for a pattern, [ for a set of characters and = for an assignment; ninja ends a name
// at what is not among these.
bool IsPlain(char c) {
  constexpr std::string_view kPlain = "!()+,-./@]_{}~";
  return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9') || c < 0 ||
         kPlain.find(c) != std::string_view::npos;
}

// What stands for the byte at `at`; empty: there is nothing that both tools read as that byte.
std::string Escaped(std::string_view name, std::size_t at) {
  const char c = name[at];
  const bool is_last = at + 1 == name.size();
  switch (c) {
    case ' ':
    case '#':
      return {'\\', c};
    case '$':
      return "$$";
    case ':':  // at the end, ninja reads a colon as that of the rule
      return is_last ? "" : "\\:";
    case '\\':  // the tools count backslashes otherwise in front of what they escape
      return is_last || (name[at + 1] != c && !IsPlain(name[at + 1])) ? "" : "\\";
    case ')':  // make reads names that end so as members of archives
      return is_last ? "" : ")";
    case '~':  // make reads the name of a user's home
      return at == 0 ? "" : "~";
    default:
      return IsPlain(c) ? std::string(1, c) : "";
  }
}

std::string EscapedName(const std::string& path, const std::string& name) {
  std::string text;
  for (std::size_t i = 0; i < name.size(); ++i) {
    const std::string escaped = Escaped(name, i);
    if (escaped.empty()) {
      throw support::Failure(
          support::ExitStatus::kTrouble,
          "cannot write {}: the '{}' in {} cannot be written for both make and ninja", path,
          name.substr(i, 1), name);
    }
    text += escaped;
  }
  return text;
}

bool IsBlank(char c) { return c == ' ' || c == '\t'; }

// The names of a rule, which ends with its line. A backslash before the end of a line joins the
// next one; before a blank, # or :, that character is part of the name.
class RuleReader {
 public:
  explicit RuleReader(std::string_view text) : text_(text) {}

  // False at a character that no rule has there.
  bool Read(DepfileRule& rule) {
    std::vector<std::string>* names = &rule.targets;
    while (at_ < text_.size() && text_[at_] != '\n') {
      if (SkipBlank()) continue;
      if (text_[at_] == ':') {
        if (names == &rule.prerequisites || rule.targets.empty()) return false;
        names = &rule.prerequisites;
        ++at_;
        continue;
      }
      names->push_back(Name());
      if (names->back().empty()) return false;
    }
    return names == &rule.prerequisites;
  }

 private:
  bool SkipBlank() {
    if (IsBlank(text_[at_])) {
      ++at_;
    } else if (text_.substr(at_, 2) == "\\\n") {
      at_ += 2;
    } else {
      return false;
    }
    return true;
  }

  // Up to a blank, the end of the line, or a colon that no name goes on after.
  std::string Name() {
    constexpr std::string_view kEscaped = " \t#:";
    std::string name;
    for (; at_ < text_.size(); ++at_) {
      const char c = text_[at_];
      const char next = at_ + 1 < text_.size() ? text_[at_ + 1] : '\n';
      if (IsBlank(c) || c == '\n' || c == ':') break;
      const bool is_escape =
          (c == '\\' && kEscaped.find(next) != std::string_view::npos) || (c == '$' && next == '$');
      if (c == '\\' && next == '\n') break;
      if (is_escape) ++at_;
      name += text_[at_];
    }
    return name;
  }

  const std::string_view text_;
  std::size_t at_ = 0;
};

}  // namespace

DepfileRule ReadDepfile(const std::string& path) {
  constexpr std::size_t kLargestDepfile = std::size_t{1} << 27;
  const std::string text = settings::ReadTextFile(path, kLargestDepfile);
  DepfileRule rule;
  if (RuleReader(text).Read(rule)) return rule;
  throw support::Failure(support::ExitStatus::kTrouble,
                         "{} is not a dependency file: its first line must be a rule", path);
}

std::string DepfileText(const std::string& path, const std::vector<std::string>& targets,
                        const std::vector<std::string>& prerequisites) {
  std::string rule;
  for (const std::string& target : targets) {
    rule += (rule.empty() ? "" : " ") + EscapedName(path, target);
  }
  rule += ':';
  std::string empty_rules;
  ruxcomp::detail::HashSet<std::string> listed;
  for (const std::string& prerequisite : prerequisites) {
    if (!listed.insert(prerequisite).second) continue;
    const std::string name = EscapedName(path, prerequisite);
    rule += " \\\n  " + name;
    empty_rules += name + ":\n";
  }
  return rule + '\n' + empty_rules;
}

}  // namespace rux::driver
