#include "query/section_index.h"

#include "backend/compile_pass.h"
#include "backend/symbol_tables.h"
#include "query/names.h"
#include "ruxcomp/data.h"

class SectionIndex::Builder {
 public:
  explicit Builder(SectionIndex& index) : index_(index) {}

  void Add(tagGCSECT& section) {
    Kind& kind = index_.kinds_[section.identifier];
    kind.sections.push_back(&section);
    for (std::size_t i = 0; i < section.entries.size(); ++i) {
      if (const std::uint32_t* id = OfferedId(section.entries[i])) {
        AddId(kind, {&section, i, *id});
      }
      if (const std::uint32_t* name = OfferedName(section.identifier, section.entries[i])) {
        AddName(kind, {&section, i, *name});
      }
    }
  }

 private:
  // The first place of an ID or a name is the one that counts.
  void AddId(Kind& kind, const Place& place) {
    const tagTBLDATA data = tables_.Get(place.index);
    if (data.kind == RUX_DATA_NUMBER) kind.ids.try_emplace(data.data.number, place);
  }
  void AddName(Kind& kind, const Place& place) {
    const tagTBLDATA data = tables_.Get(place.index);
    if (data.kind == RUX_DATA_STRING) kind.names.try_emplace(data.data.string, place);
  }

  SectionIndex& index_;
  const TableSnapshot tables_;
};

bool SectionIndex::IsOf(const std::vector<tagGCSECT*>& sections) const {
  return generation_ == RecordsGeneration() && first_ == sections.data() &&
         count_ == sections.size();
}

const SectionIndex& SectionIndex::Current() {
  static SectionIndex current;
  if (current.IsOf(g_GCHead)) return current;
  SectionIndex fresh;
  Builder builder(fresh);
  for (tagGCSECT* section : g_GCHead) builder.Add(*section);
  fresh.first_ = g_GCHead.data();
  fresh.count_ = g_GCHead.size();
  fresh.generation_ = RecordsGeneration();
  return current = std::move(fresh);
}

const SectionIndex::Kind* SectionIndex::Find(std::uint32_t kind) const {
  const auto found = kinds_.find(kind);
  return found == kinds_.end() ? nullptr : &found->second;
}

const std::vector<tagGCSECT*>& SectionIndex::OfKind(std::uint32_t kind) const {
  static const std::vector<tagGCSECT*> none;
  const Kind* found = Find(kind);
  return found ? found->sections : none;
}

tagGCSECT* SectionIndex::WithId(std::uint32_t kind, std::uint32_t id) const {
  const Kind* sections = Find(kind);
  if (!sections) return nullptr;
  const auto found = sections->ids.find(id);
  if (found == sections->ids.end()) return nullptr;
  const auto& [section, entry, index] = found->second;
  if (entry >= section->entries.size()) return nullptr;
  const std::uint32_t* offered = OfferedId(section->entries[entry]);
  return offered && *offered == index ? section : nullptr;
}

tagGCSECT* SectionIndex::WithName(std::uint32_t kind, const std::string& name) const {
  const Kind* sections = Find(kind);
  if (!sections) return nullptr;
  const auto found = sections->names.find(name);
  if (found == sections->names.end()) return nullptr;
  const auto& [section, entry, index] = found->second;
  if (entry >= section->entries.size()) return nullptr;
  const std::uint32_t* offered = OfferedName(kind, section->entries[entry]);
  return offered && *offered == index ? section : nullptr;
}
