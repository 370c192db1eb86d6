// The sections of a script, and the registry of all of them.
#ifndef FRONTEND_SECTION_H_
#define FRONTEND_SECTION_H_

#include <cstdint>
#include <optional>
#include <string_view>
#include <vector>

#include "frontend/entry.h"
#include "frontend/obj.h"

namespace ruxcomp::core {

class CRUXSection : public CRUXObj {
 public:
  // Makes a section of the kind that the name stands for, registers it and gives it its place and
  // name. Null for an unknown name; nothing is reported.
  static CRUXSection* Create(std::string_view file, std::string_view section_name,
                             std::uint32_t header_line);

  virtual ~CRUXSection() = default;

  // Deletes every section, releases the arena with their entries, and empties the table of defined
  // words. The registry keeps its kinds, and their order, for the next run.
  static void Destory();

  // Takes an item: fills the template that its key names or, when that is filled, adds a repeat of
  // it. Answers 0 when no template takes the key. The kinds extend this rule.
  virtual std::uint32_t SetEntry(std::string_view file, std::string_view key,
                                 std::string_view value, std::uint32_t item_line);

  // Shrinks `entries` to fit. Call it after the last item.
  void ReleaseRoom();

  // First pass: the section by itself and its entries. Second pass: redefinitions and the
  // references of its entries, looked up in the index. Both answer 1, or 0 when problems were
  // reported (checker/section_checks.cpp).
  std::uint32_t IsValid();
  std::uint32_t IsValidEx(ModelIndex& index);

  // Appends the section with its entries as a byte record, and restores it from one. Restoring
  // makes an entry in every slot, fills those that the stored entries fit and adds the others.
  void GetBuffer(std::vector<std::uint8_t>& out) const;
  void SetBuffer(const RecordView& in);

  // First the slots, one for each template of the kind and null while unfilled; then what the
  // script added. The arena of the model owns the entries.
  std::vector<CRUXEntry*> entries;

  // The template of a slot: what an entry there is.
  const EntryTemplate& TemplateOf(std::size_t slot) const { return kind_.templates.begin()[slot]; }

  // Whether the kind has a slot for that identifier and no entry is in it.
  bool HasEmptySlot(std::uint32_t entry_id) const;

  // Where the section was read: the script, counted from 0 in the order in which those of a run
  // were opened, and the section in it. The parse loop sets them and `item`, the item that is being
  // added.
  std::uint32_t script = findings::Origin::kNone;
  std::uint32_t ordinal = findings::Origin::kNone;
  std::uint32_t item = findings::Origin::kNone;

  findings::Origin OwnOrigin() const { return {script, ordinal}; }
  findings::Origin OriginOf(const CRUXEntry& entry,
                            std::uint32_t part = findings::Origin::kNone) const {
    return {script, ordinal, entry.item, part};
  }

  // One list per kind that ever appeared, in order of first appearance; each is the m_sHeader of
  // its section class and holds the live sections of the kind in order of definition. Sections are
  // not owned by the lists: Destory deletes them.
  static std::vector<std::vector<CRUXSection*>*> m_svpHSection;

 protected:
  CRUXSection(std::uint32_t id, tagNOTATION flags, const SectionKind& kind)
      : CRUXObj(id, flags), kind_(kind) {}

  // Gives the section the empty slots of its kind and registers it with its kind.
  void Init0(std::vector<CRUXSection*>& header);

  // Makes an entry that no slot is for, fills it with the item and adds it.
  CRUXEntry& AddEntry(std::uint32_t entry_id, tagNOTATION flags, std::string_view file,
                      InternedString key, std::string_view value, std::uint32_t item_line);

 private:
  static constexpr std::size_t kFreeEntries = 4;  // room is made for so many besides the slots

  // Makes the entry of every empty slot.
  void FillSlots();

  const SectionKind& kind_;
};

// Finding sections and entries in the source model.

// All sections of one kind in order of definition; null when there is none.
const std::vector<CRUXSection*>* FindSectHead(std::uint32_t id);

// The same list, empty when there is none.
const std::vector<CRUXSection*>& SectionsOf(std::uint32_t id);

// The first entry with that identifier whose name is not free, whatever `index` is; else the
// index-th one with a free name. Null when there is none: then an index of 0xFFFFFFFF becomes the
// number of those with a free name. Null also when the slot for it is empty, which leaves `index`
// alone.
CRUXEntry* FindEntry(const CRUXSection* section, std::uint32_t id, std::uint32_t& index);

// The first entry with that identifier; null when there is none, or only an empty slot for it.
CRUXEntry* FindEntry(const CRUXSection* section, std::uint32_t id);

// The text of the first entry with that identifier, if there is one and it holds a text.
std::optional<Text> FindText(const CRUXSection* section, std::uint32_t id);

// Whether the script gave an entry of a section, which is null for an empty slot.
inline bool IsGiven(const CRUXEntry* entry) { return entry && entry->m_RuxEntryData.HasData(); }

// Whether the values of the section may name arguments and each other. The name decides, also for a
// restored section.
inline bool IsAction(const CRUXSection& section) {
  return section.name == KindOf(SECTION_ACTION).keyword;
}

}  // namespace ruxcomp::core

#endif  // FRONTEND_SECTION_H_
