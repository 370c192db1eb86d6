#include "exports/account.h"

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <utility>

#include "inspect/entry_value.h"
#include "losses/ledger.h"
#include "machine/machine.h"
#include "machine/value.h"
#include "ruxcomp/language/sections.h"
#include "ruxcomp/model/handles.h"
#include "support/safe_text.h"
#include "support/utf8.h"

namespace rux::exports {
namespace {

// As the path of a query begins: "SENSOR/FAN1/", "SYSTEM/".
std::string PathTo(const ruxcomp::language::SectionKind& kind, const ruxcomp::Section& section) {
  std::string path = kind.keyword;
  if (section.has_name()) path += '/' + support::NameInPath(section.name());
  return path + '/';
}

losses::Item ItemOf(const std::string& path, const ruxcomp::Section& section,
                    const ruxcomp::Entry& entry) {
  return {0, path + machine::KeyOf(section, entry), inspect::ValueText(machine::ValueOf(entry))};
}

}  // namespace

Account::Account(const machine::Machine& machine, losses::Ledger& ledger, bool has_texts)
    : ledger_(ledger) {
  ledger.BeginFile(machine.name());
  for (const ruxcomp::language::SectionKind& kind : ruxcomp::language::kSectionKinds) {
    for (const ruxcomp::Section section : machine.model().sections(kind.compiled)) {
      const std::string path = PathTo(kind, section);
      first_[kind.compiled].push_back(static_cast<losses::ItemId>(ledger.entries().size()));
      for (const ruxcomp::Entry entry : section.entries())
        ledger.Note(has_texts ? ItemOf(path, section, entry) : losses::Item());
    }
  }
}

losses::ItemId Account::FirstOf(const ruxcomp::Section& section) const {
  return first_.at(section.kind())[section.ordinal()];
}

losses::ItemId Account::ItemFor(const ruxcomp::Section& section, std::uint32_t identifier) const {
  losses::ItemId item = FirstOf(section);
  for (const ruxcomp::Entry entry : section.entries()) {
    if (entry.identifier() == identifier) return item;
    ++item;
  }
  return losses::kNoItem;
}

void Account::Used(const ruxcomp::Section& section, std::uint32_t identifier) {
  ledger_.Used(ItemFor(section, identifier));
}

void Account::Changed(const ruxcomp::Section& section, std::uint32_t identifier, std::string after,
                      losses::Reason reason) {
  ledger_.Changed(ItemFor(section, identifier), std::move(after), reason);
}

void Account::Dropped(const ruxcomp::Section& section, std::uint32_t identifier,
                      losses::Reason reason) {
  ledger_.Dropped(ItemFor(section, identifier), reason);
}

void Account::UsedAsUtf8(const ruxcomp::Section& section, std::uint32_t identifier) {
  const std::string_view text = section.entry(identifier).value().text();
  if (support::IsUtf8(text)) return Used(section, identifier);
  Changed(section, identifier, support::SafeText(text), losses::Reason::kSimplified);
}

void Account::DropRest(const ruxcomp::Section& section, losses::Reason reason) {
  losses::ItemId item = FirstOf(section);
  for (std::size_t i = section.entries().size(); i > 0; --i) ledger_.Dropped(item++, reason);
}

void Account::DropRest(losses::Reason reason) {
  for (losses::ItemId item = 0; item < ledger_.entries().size(); ++item)
    ledger_.Dropped(item, reason);
}

}  // namespace rux::exports
