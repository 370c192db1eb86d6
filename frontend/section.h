// The sections of a script, and the registry of all of them.
#ifndef FRONTEND_SECTION_H_
#define FRONTEND_SECTION_H_

#include <cstdint>
#include <map>
#include <memory>
#include <string>
#include <vector>

#include "frontend/entry.h"
#include "frontend/obj.h"

class CRUXSection : public CRUXObj {
 public:
  // Makes a section of the kind that the name stands for, registers it and gives it its place and
  // name. Null for an unknown name; nothing is reported.
  static CRUXSection* Create(const std::string& file, const std::string& sectionName,
                             std::uint32_t headerLine);

  // Deletes every section with its entries and empties the table of defined words. The registry
  // keeps its kinds, and their order, for the next run.
  static void Destory();

  // Takes an item: fills the template that its key names or, when that is filled, adds a repeat of
  // it. Answers 0 when no template takes the key. The kinds extend this rule.
  virtual std::uint32_t SetEntry(const std::string& file, const std::string& key,
                                 const std::string& value, std::uint32_t itemLine);

  // Gives back the room for entries that was made in advance: no more items come.
  void ReleaseRoom();

  // First pass: the section by itself and its entries. Second pass: redefinitions and the
  // references of its entries, asked while a ModelIndex lives. Both answer 1, or 0 when problems
  // were reported (checker/section_checks.cpp).
  std::uint32_t IsValid(unsigned int pass);
  std::uint32_t IsValidEx(unsigned int pass);

  // Appends the section with its entries as a byte record; and back from it. Taking a record fills
  // the templates that its entries fit and adds the others.
  void GetBuffer(std::vector<std::uint8_t>& out) const;
  void SetBuffer(const RecordView& in);

  std::vector<EntryPtr> entries;  // templates first, then what the script added

  // One list per kind that ever appeared, in order of first appearance; each is the m_sHeader of
  // its section class and holds the live sections of the kind in order of definition. Sections are
  // not owned by the lists: Destory deletes them.
  static std::vector<std::vector<CRUXSection*>*> m_svpHSection;

 protected:
  using CRUXObj::CRUXObj;

  // Gives the section the templates of its kind and registers it with its kind.
  void Init0(std::vector<EntryPtr> templates, std::vector<CRUXSection*>& header);

  // The templates of a kind, in order: new ones, or those that all sections of the kind share until
  // they fill them. Most sections leave most of their templates unfilled.
  static std::vector<EntryPtr> NewTemplates(const SectionKind& kind);
  static std::vector<EntryPtr> SharedTemplates(const SectionKind& kind);

  // The first entry of that identifier whose name is not free; null when there is none.
  EntryPtr* FindTemplate(std::uint32_t entryId);

  // Makes an entry that no template stands for, fills it with the item and adds it.
  CRUXEntry& AddEntry(std::uint32_t entryId, tagNOTATION flags, const std::string& file,
                      const std::string& key, const std::string& value, std::uint32_t itemLine);

 private:
  static constexpr std::size_t kFreeEntries = 4;  // of shared templates: room for as many more

  using Templates = std::vector<std::unique_ptr<CRUXEntry>>;
  static std::map<const SectionKind*, Templates> m_sharedTemplates;  // of kinds that appeared
};

#endif  // FRONTEND_SECTION_H_
