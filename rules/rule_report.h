// The rules by name, and what they report. All that they need of `diagnostics/` is here.
#ifndef RULES_RULE_REPORT_H_
#define RULES_RULE_REPORT_H_

#include <cstddef>
#include <cstdint>
#include <functional>
#include <set>
#include <string>
#include <string_view>
#include <tuple>
#include <type_traits>
#include <utility>
#include <vector>

#include "diagnostics/diagnostic.h"
#include "findings/message_row.h"
#include "findings/tally.h"
#include "rules/script_item.h"

namespace rux::rules {

// Only the texts of warnings that are kept are made: of millions, a few. Lives no longer than what
// it is given.
class WarningText {
 public:
  // Implicit: rules give either as it is.
  // cppcheck-suppress noExplicitConstructor
  WarningText(const char* text)  // NOLINT(google-explicit-constructor)
      : from_(text),
        make_([](const void* from) { return std::string(static_cast<const char*>(from)); }) {}

  // make() answers the text.
  template <class Make, class = std::enable_if_t<std::is_invocable_r_v<std::string, Make>>>
  // cppcheck-suppress noExplicitConstructor
  WarningText(const Make& make)  // NOLINT(google-explicit-constructor)
      : from_(&make), make_([](const void* from) { return (*static_cast<const Make*>(from))(); }) {}

  std::string Made() const { return make_(from_); }

 private:
  const void* from_;
  std::string (*make_)(const void* from);
};

// The warnings of all rules about a script.
struct Warnings {
  std::vector<diagnostics::Diagnostic> kept;  // the first ones of each rule, in order
  ruxcomp::findings::Tally tally;             // of all of them
};

// In the order of the rows of rule_rows.def.
enum class RuleId {
#define RULE(name, ...) k##name,
#include "rules/rows/rule_rows.def"
};

namespace rows {
#define RULE(name, id, group, ...)                           \
  inline constexpr ruxcomp::findings::MessageRow k##name = { \
      "", id, ruxcomp::findings::Level::group, __VA_ARGS__};
#include "rules/rows/rule_rows.def"
}  // namespace rows

// By RuleId.
inline constexpr const ruxcomp::findings::MessageRow* kRows[] = {
#define RULE(name, ...) &rows::k##name,
#include "rules/rows/rule_rows.def"
};

constexpr const ruxcomp::findings::MessageRow& RowOf(RuleId rule) {
  return *kRows[static_cast<std::size_t>(rule)];
}

// A warning that was just added, to be completed; not valid after the next one is. One that is not
// kept takes what it is given and forgets it.
class Warning {
 public:
  explicit Warning(diagnostics::Diagnostic* diagnostic) : diagnostic_(diagnostic) {}

  // Adds a note on another place, or on a part of another item's value.
  Warning& Note(std::string text, const Place& place);
  Warning& Note(std::string text, const ItemRef& item, std::string_view part);

  // What was probably meant by the name that the warning is about.
  Warning& Suggest(std::string meant);

  // What to put in the place of bytes of the file that the warning is about: what is compiled stays
  // as it is, or else it changes.
  Warning& Fix(support::ByteRange range, std::string text);
  Warning& Offer(support::ByteRange range, std::string text);

 private:
  diagnostics::Diagnostic* const diagnostic_;  // null: it is not kept
};

// How many warnings are kept of each rule: so many, and all that may not be shown in the end. What
// is not kept is counted.
struct Keeping {
  ruxcomp::findings::Most most = 0;
  std::function<bool(const ruxcomp::findings::MessageRow&, const ScriptFile*)> may_go = {};
};

class RuleReport {
 public:
  // A file that is included twice yields its warnings twice: with `drops_repeated`, one that is the
  // same as another is none.
  RuleReport(Keeping keeping, bool drops_repeated)
      : keeping_(std::move(keeping)),
        warnings_{{}, ruxcomp::findings::Tally(keeping_.most)},
        drops_repeated_(drops_repeated) {}

  // A warning about an item, with the part of its value that is meant; without one, the key is.
  Warning Add(const ruxcomp::findings::MessageRow& row, const ItemRef& item,
              const WarningText& text, std::string_view meant = {});
  // About a section as a whole.
  Warning Add(const ruxcomp::findings::MessageRow& row, const ScriptSection& section,
              const WarningText& text);
  // About a line of a file, or bytes of it.
  Warning Add(const ruxcomp::findings::MessageRow& row, const Place& place,
              const WarningText& text);
  Warning Add(const ruxcomp::findings::MessageRow& row, const Bytes& bytes,
              const WarningText& text);
  // About the script as a whole.
  Warning Add(const ruxcomp::findings::MessageRow& row, const WarningText& text);

  template <class... What>
  Warning Add(RuleId rule, const What&... what) {
    return Add(RowOf(rule), what...);
  }

  Warnings Take() { return std::move(warnings_); }

 private:
  // Null when the warning is not kept.
  diagnostics::Diagnostic* Begin(const ruxcomp::findings::MessageRow& row, const Bytes& bytes,
                                 const WarningText& text);
  bool IsRepeated(const ruxcomp::findings::MessageRow& row, const Bytes& bytes,
                  const WarningText& text);

  // With the hash of its text.
  using Known = std::tuple<const ruxcomp::findings::MessageRow*, const ScriptFile*, std::uint32_t,
                           std::size_t>;

  const Keeping keeping_;
  Warnings warnings_;
  const bool drops_repeated_;
  std::set<Known> known_;
};

}  // namespace rux::rules

#endif  // RULES_RULE_REPORT_H_
