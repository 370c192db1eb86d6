#include "exports/constants.h"

#include <cstdint>
#include <set>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "exports/account.h"
#include "exports/identifiers.h"
#include "losses/ledger.h"
#include "machine/machine.h"
#include "machine/value.h"
#include "ruxcomp/identifiers.h"
#include "ruxcomp/language/entries.h"
#include "ruxcomp/language/sections.h"
#include "ruxcomp/language/symbols.h"
#include "ruxcomp/model/handles.h"

namespace rux::exports {
namespace {

namespace language = ruxcomp::language;

constexpr char kEntryPrefix[] = "ENTRY_";

ConstantBlock SectionKinds() {
  ConstantBlock block{"Kinds of sections.", {}};
  for (const language::SectionKind& kind : language::kSectionKinds) {
    if (kind.IsCompiled())
      block.constants.push_back({std::string("SECTION_") + kind.keyword, kind.compiled});
  }
  return block;
}

ConstantBlock FixedEntries(Identifiers& identifiers) {
  ConstantBlock block{"Entries with a fixed key.", {}};
  for (const language::EntryRow& row : language::kEntries) {
    if (row.compiled != 0)
      block.constants.push_back({identifiers.Add(kEntryPrefix, row.keyword), row.compiled});
  }
  return block;
}

// The script's own keys, in the order in which the sections have them.
ConstantBlock OwnEntries(const machine::Machine& machine, Identifiers& identifiers) {
  ConstantBlock block{"Entries of this machine, by their keys.", {}};
  std::set<std::uint32_t> known;
  for (const ruxcomp::Section section : machine.model().sections()) {
    for (const ruxcomp::Entry entry : section.entries()) {
      if (!entry.has_name() && language::FindCompiledEntryRow(entry.identifier()) != nullptr)
        continue;
      if (!known.insert(entry.identifier()).second) continue;
      block.constants.push_back(
          {identifiers.Add(kEntryPrefix, machine::KeyOf(section, entry)), entry.identifier()});
    }
  }
  return block;
}

ConstantBlock Selectors() {
  return {"Parts of values.",
          {
#define SELECTOR_CODE(name, code) {"SELECT_" #name, std::uint32_t{code}},
#include "ruxcomp/language/selectors.def"
          }};
}

// What values and tables call a section by: the number of its NAME.
std::uint32_t OrdinalOf(const ruxcomp::Section& section) {
  return language::OrdinalOf(section.entry(RUX_ENTRY_NAME).value().index());
}

// NAME, and ID or ordinal, of each section of a kind.
std::vector<Constant> NamesOf(const machine::Machine& machine, const language::SectionKind& kind,
                              Identifiers& identifiers, Account& account) {
  std::vector<Constant> constants;
  const std::string prefix = std::string(kind.keyword) + '_';
  for (const ruxcomp::Section section : machine.model().sections(kind.compiled)) {
    const std::string name(section.name());
    const std::string constant = identifiers.Add(prefix, name);
    if (constant == prefix + name) {
      account.Used(section, RUX_ENTRY_NAME);
    } else {
      account.Changed(section, RUX_ENTRY_NAME, constant, losses::Reason::kRenamed);
    }
    constants.push_back({constant + "_NAME", name});
    if (section.id()) {
      account.Used(section, RUX_ENTRY_ID);
      constants.push_back({constant + "_ID", *section.id()});
    } else {
      constants.push_back({constant + "_ORDINAL", OrdinalOf(section)});
    }
  }
  return constants;
}

}  // namespace

std::vector<ConstantBlock> ConstantsOf(const machine::Machine& machine, Account& account) {
  Identifiers identifiers;
  std::vector<ConstantBlock> blocks = {SectionKinds(), FixedEntries(identifiers),
                                       OwnEntries(machine, identifiers), Selectors()};
  for (const language::SectionKind& kind : language::kSectionKinds) {
    if (kind.HasNames())
      blocks.push_back({kind.keyword, NamesOf(machine, kind, identifiers, account)});
  }
  return blocks;
}

}  // namespace rux::exports
