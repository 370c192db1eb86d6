#include "evaluation/plan.h"

#include <algorithm>
#include <cstdint>
#include <string_view>

#include "machine/machine.h"
#include "ruxcomp/identifiers.h"
#include "ruxcomp/language/number.h"
#include "ruxcomp/language/symbols.h"
#include "ruxcomp/model.h"
#include "ruxcomp/model/handles.h"

namespace rux::evaluation {
namespace {

namespace language = ruxcomp::language;

std::uint32_t NumberIn(const ruxcomp::Entry& entry) {
  return language::ReadNumber(entry.name()).value;
}

ActionValues ValuesOf(const ruxcomp::Section& action) {
  ActionValues values{action, {}, {}, {}, {}};
  for (const ruxcomp::Entry entry : action.entries()) {
    if (language::ClassOf(entry.identifier()) != language::CLASS_Value) continue;
    if (entry.name().empty()) {
      if (!values.value) values.value = entry;
    } else if (entry.name() == language::FixedKeysOf(language::CLASS_Value)[0].text) {
      if (!values.ipmi) values.ipmi = entry;
    } else {
      values.as_written.push_back(entry);
    }
  }
  values.by_number = values.as_written;
  std::stable_sort(
      values.by_number.begin(), values.by_number.end(),
      [](const ruxcomp::Entry& a, const ruxcomp::Entry& b) { return NumberIn(a) < NumberIn(b); });
  return values;
}

std::uint32_t NameIndex(const ruxcomp::Section& section) {
  return section.entry(RUX_ENTRY_NAME).value().index();
}

}  // namespace

Plan::Plan(const machine::Machine& machine) : machine_(machine) {
  const ruxcomp::Model& model = machine.model();
  for (const ruxcomp::Section action : model.sections(RUX_SECT_ACTION))
    actions_.emplace(NameIndex(action), ValuesOf(action));
  for (const ruxcomp::Section globals : model.sections(RUX_SECT_GLOBAL)) {
    for (const ruxcomp::Entry entry : globals.entries())
      globals_.emplace(entry.identifier(), GlobalEntry{globals, entry});
  }
}

const ActionValues* Plan::Action(std::uint32_t index) const {
  const auto found = actions_.find(index);
  return found == actions_.end() ? nullptr : &found->second;
}

const GlobalEntry* Plan::Global(std::uint32_t index) const {
  const auto found = globals_.find(index);
  return found == globals_.end() ? nullptr : &found->second;
}

}  // namespace rux::evaluation
