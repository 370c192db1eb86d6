#include "evaluation/target.h"

#include <fmt/format.h>

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "inspect/file_view.h"
#include "inspect/meta_view.h"
#include "inspect/path.h"
#include "machine/machine.h"
#include "machine/place.h"
#include "machine/value.h"
#include "ruxcomp/language/sections.h"
#include "ruxcomp/language/spelling.h"
#include "ruxcomp/language/symbols.h"
#include "ruxcomp/model/handles.h"
#include "support/failure.h"
#include "support/safe_text.h"

namespace rux::evaluation {
namespace {

std::string TableCommand(const std::string& keyword) {
  return "'rux table MACHINE --kind " + keyword + '\'';
}

support::Failure NotEvaluable(const std::string& path) {
  return support::Failure(support::ExitStatus::kWrongUsage,
                          "{} has no value to evaluate; expected SENSOR/NAME, KIND/NAME/KEY, "
                          "GLOBAL/KEY, ACTION/NAME or REPEATER/KEY",
                          path);
}

ruxcomp::Entry EntryWithKey(const ruxcomp::Section& section, const std::string& key) {
  for (const ruxcomp::Entry entry : section.entries()) {
    if (machine::KeyOf(section, entry) == key) return entry;
  }
  return {};
}

// Whether all of a section can be evaluated: what is a name of a section there.
bool IsWhole(const language::SectionKind& kind) {
  return kind.source == language::SECTION_SENSOR || kind.source == language::SECTION_ACTION;
}

bool HasValue(const ruxcomp::Entry& entry) {
  const std::uint32_t index_class = language::ClassOf(entry.identifier());
  return index_class == language::CLASS_Value || index_class == language::CLASS_Global ||
         index_class == language::CLASS_Repeater;
}

}  // namespace

ValueKey KeyOf(const ruxcomp::Section& section, const ruxcomp::Entry& entry) {
  return {section.kind(), section.ordinal(), entry.identifier()};
}

ruxcomp::Entry ValueEntry(const ruxcomp::Section& section, std::string_view name) {
  for (const ruxcomp::Entry entry : section.entries()) {
    const bool is_value = language::ClassOf(entry.identifier()) == language::CLASS_Value;
    if (is_value && entry.name() == name) return entry;
  }
  return {};
}

std::string_view PropertyOf(const ruxcomp::Section& section, std::string_view name) {
  for (const ruxcomp::Entry entry : section.entries()) {
    if (language::ClassOf(entry.identifier()) == language::CLASS_Property && entry.name() == name)
      return entry.value().text();
  }
  return {};
}

std::optional<machine::Place> PlaceOf(const machine::Machine& machine,
                                      const ruxcomp::Section& section,
                                      const ruxcomp::Entry& entry) {
  const language::SectionKind* kind = language::FindCompiledKind(section.kind());
  if (kind == nullptr) return std::nullopt;
  return machine.PlaceOf(*kind, section.ordinal(),
                         entry ? machine::KeyOf(section, entry) : std::string());
}

std::string Target::Path() const {
  const std::string key = entry ? machine::KeyOf(section, entry) : "";
  if (!kind->HasNames()) return fmt::format("{}/{}", kind->keyword, key);
  const std::string name = section.has_name() ? support::NameInPath(section.name())
                                              : fmt::format("@{}", section.ordinal());
  return fmt::format("{}/{}{}{}", kind->keyword, name, entry ? "/" : "", key);
}

Target FindTarget(const machine::Machine& machine, const std::string& path) {
  const bool is_global =
      language::BeginsWith(path, language::kGlobalPrefix) && path.find('/') == std::string::npos;
  const inspect::Found found = inspect::FindIn(
      machine.model(), inspect::ParsePath(is_global ? "GLOBAL/" + path : path), TableCommand);
  if (found.part) throw NotEvaluable(path);
  Target target{found.kind, machine.model().sections(found.kind->compiled)[found.ordinal], {}};
  if (found.entry) target.entry = EntryWithKey(target.section, found.entry->key);
  const bool is_evaluable = found.entry ? HasValue(target.entry) : IsWhole(*found.kind);
  if (!is_evaluable) throw NotEvaluable(path);
  return target;
}

}  // namespace rux::evaluation
