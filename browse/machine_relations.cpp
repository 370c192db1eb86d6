#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <utility>

#include "browse/relations.h"
#include "compiled/datum.h"
#include "machine/machine.h"
#include "machine/value.h"
#include "ruxcomp/language/entries.h"
#include "ruxcomp/language/sections.h"
#include "ruxcomp/model.h"
#include "ruxcomp/model/handles.h"
#include "ruxcomp/model/value.h"
#include "ruxcomp/records.h"

namespace rux::browse {
namespace {

bool IsMembership(const ruxcomp::Section& section, const ruxcomp::Entry& entry) {
  const language::EntryRow* row = language::FindCompiledEntryRow(entry.identifier());
  return row != nullptr &&
         language::FindReference(language::SourceSection(section.kind()), row->source) != nullptr;
}

// The kind whose entries have the keys that are in a symbol table; null when it has others.
const language::SectionKind* KindOfKeys(std::uint32_t index_class) {
  for (const language::KeySource& source : language::KeySourcesOf(index_class)) {
    const language::SectionKind& kind = language::KindOf(source.section);
    if (!source.is_text && kind.naming == language::Naming::kByKeys) return &kind;
  }
  return nullptr;
}

}  // namespace

class MachineRelations::Reader {
 public:
  Reader(const machine::Machine& machine, MachineRelations& relations)
      : machine_(machine), relations_(relations) {}

  void AddThings() {
    ForEachSection([&](const language::SectionKind& kind, const ruxcomp::Section& section,
                       std::size_t ordinal) {
      if (kind.naming == language::Naming::kByKeys) {
        std::size_t number = 0;
        for (const ruxcomp::Entry entry : section.entries())
          AddEntry({&kind, ordinal, number++}, machine::KeyOf(section, entry));
        return;
      }
      Thing thing{&kind, std::nullopt, section.id()};
      if (section.has_name()) thing.name = std::string(section.name());
      thing.place = machine_.PlaceOf(kind, ordinal, "");
      relations_.AddAt({&kind, ordinal, kWhole}, std::move(thing));
    });
  }

  void AddLinks() {
    ForEachSection([&](const language::SectionKind& kind, const ruxcomp::Section& section,
                       std::size_t ordinal) {
      std::size_t number = 0;
      for (const ruxcomp::Entry entry : section.entries()) {
        const bool is_thing = kind.naming == language::Naming::kByKeys;
        if (!machine::IsLabel(entry))
          AddLinksOf({&kind, ordinal, is_thing ? number : kWhole}, section, entry);
        ++number;
      }
    });
  }

 private:
  template <class Use>
  void ForEachSection(Use use) {
    for (const language::SectionKind& kind : language::kSectionKinds) {
      if (!kind.IsCompiled()) continue;
      std::size_t ordinal = 0;
      for (const ruxcomp::Section section : machine_.model().sections(kind.compiled))
        use(kind, section, ordinal++);
    }
  }

  void AddEntry(const Position& position, const std::string& key) {
    const auto& [kind, ordinal, number] = position;
    Thing thing{kind};
    thing.key = key;
    thing.place = machine_.PlaceOf(*kind, ordinal, key);
    relations_.keys_.emplace(std::pair(kind, key), relations_.AddAt(position, std::move(thing)));
  }

  void AddLinksOf(const Position& position, const ruxcomp::Section& section,
                  const ruxcomp::Entry& entry) {
    const auto& [kind, ordinal, number] = position;
    const language::SectionKind* ids =
        machine::KindOfCompiledIds(section.kind(), entry.identifier());
    for (const ruxcomp::Value value : entry.values()) {
      // Most values are plain numbers.
      if (value.kind() == RUX_DATA_NUMBER && ids == nullptr) continue;
      const std::optional<std::size_t> to =
          relations_.NumberFor(machine_.model(), ids, machine::DatumOf(value));
      if (!to) continue;
      const std::string key = machine::KeyOf(section, entry);
      relations_.Add(Link{relations_.NumberAt(position), *to, key, IsMembership(section, entry),
                          machine_.PlaceOf(*kind, ordinal, key)});
    }
  }

  const machine::Machine& machine_;
  MachineRelations& relations_;
};

MachineRelations::MachineRelations(const machine::Machine& machine) {
  Reader reader(machine, *this);
  reader.AddThings();
  reader.AddLinks();
}

std::size_t MachineRelations::AddAt(const Position& position, Thing thing) {
  const std::size_t number = Add(std::move(thing));
  positions_.push_back(position);
  numbers_.emplace(position, number);
  return number;
}

std::optional<std::size_t> MachineRelations::NumberFor(const ruxcomp::Model& model,
                                                       const language::SectionKind* ids,
                                                       const compiled::Datum& datum) const {
  const ruxcomp::Section section = machine::SectionFor(model, ids, datum);
  if (section) {
    return NumberAt({language::FindSourceKind(language::SourceSection(section.kind())),
                     section.ordinal(), kWhole});
  }
  return FindKey(datum.row == nullptr ? nullptr : KindOfKeys(datum.row->base), datum.text);
}

std::optional<std::size_t> MachineRelations::FindKey(const language::SectionKind* kind,
                                                     const std::string& key) const {
  const auto found = keys_.find(std::pair(kind, key));
  return found == keys_.end() ? std::nullopt : std::optional(found->second);
}

}  // namespace rux::browse
