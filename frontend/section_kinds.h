// The fourteen section classes, one per keyword of sections.def.
#ifndef FRONTEND_SECTION_KINDS_H_
#define FRONTEND_SECTION_KINDS_H_

#include <cstdint>
#include <string_view>
#include <vector>

#include "frontend/section.h"

namespace ruxcomp::core {

// A section of one kind. What the kinds differ in are the columns of their rows.
template <SectionId Id>
class CGSSection : public CRUXSection {
 public:
  CGSSection(std::uint32_t id, tagNOTATION flags) : CRUXSection(id, flags, kKind) {
    Init0(m_sHeader);
  }
  // For restoring a stored section, whose record has the identifier and the flags.
  CGSSection() : CGSSection(0, 0) {}

  std::uint32_t SetEntry(std::string_view file, std::string_view key, std::string_view value,
                         std::uint32_t item_line) override {
    if (CRUXSection::SetEntry(file, key, value, item_line)) return 1;
    return AddFreeEntry(file, key, value, item_line) ? 1 : 0;
  }

  // The live sections of the kind in order of definition. Defined in static_objects.cpp.
  static std::vector<CRUXSection*> m_sHeader;

 protected:
  // Adds an item as an entry of the first free row of the kind that fits the key; null when none
  // does.
  CRUXEntry* AddFreeEntry(std::string_view file, std::string_view key, std::string_view value,
                          std::uint32_t item_line) {
    for (const FreeEntryRule& rule : kKind.free_entries) {
      if (!BeginsWith(key, rule.prefix)) continue;
      return &AddEntry(rule.identifier, rule.notation, file, InternedString(key), value, item_line);
    }
    return nullptr;
  }

 private:
  static constexpr const SectionKind& kKind = KindOf(Id);
};

#define SECTION(keyword, number, notation, form, naming, uniqueness) \
  template <>                                                        \
  std::vector<CRUXSection*> CGSSection<SECTION_##keyword>::m_sHeader;
#include "ruxcomp/language/sections.def"

using CGSMORVRUX = CGSSection<SECTION_MORVRUX>;
using CGSPROPERTY = CGSSection<SECTION_PROPERTY>;
using CGSSYSTEM = CGSSection<SECTION_SYSTEM>;
using CGSGROUP = CGSSection<SECTION_GROUP>;
using CGSSENSOR = CGSSection<SECTION_SENSOR>;
using CGSDEVICE = CGSSection<SECTION_DEVICE>;
using CGSACTION = CGSSection<SECTION_ACTION>;
using CGSTABLE = CGSSection<SECTION_TABLE>;
using CGSPELMGROUP = CGSSection<SECTION_PELMGROUP>;
using CGSGLOBAL = CGSSection<SECTION_GLOBAL>;
using CGSREPEATER = CGSSection<SECTION_REPEATER>;

// The kinds that act while the script is read (preprocess.cpp). They accept every item.

// Every item defines a word.
class CGSDEFINE : public CGSSection<SECTION_DEFINE> {
 public:
  using CGSSection::CGSSection;
  std::uint32_t SetEntry(std::string_view file, std::string_view key, std::string_view value,
                         std::uint32_t item_line) override;
};

// The first item is the condition; every other one defines a word, whether the condition holds or
// not. That is part of the language, pinned by tests/unit/ifdef_test.cpp.
class CGSIFDEF : public CGSSection<SECTION_IFDEF> {
 public:
  using CGSSection::CGSSection;
  std::uint32_t SetEntry(std::string_view file, std::string_view key, std::string_view value,
                         std::uint32_t item_line) override;

  std::uint32_t ifdefSeen = 0;    // 1 once the first item was handled
  std::uint32_t ifdefResult = 0;  // whether the condition held; gates nothing

 private:
  std::uint32_t ChkIFDEF(std::string_view file, std::string_view key, std::string_view value,
                         std::uint32_t item_line);
};

// Every item names a file, which is read into the same model at once.
class CGSINCLUDE : public CGSSection<SECTION_INCLUDE> {
 public:
  using CGSSection::CGSSection;
  std::uint32_t SetEntry(std::string_view file, std::string_view key, std::string_view value,
                         std::uint32_t item_line) override;
};

// What makes a new section of each keyword row, in table order: with the row's identifier and
// flags, or without them for restoring a stored one.
struct SectionMaker {
  SectionId identifier;
  CRUXSection* (*make)();
  CRUXSection* (*make_empty)();
};
extern const SectionMaker kSectionMakers[];

}  // namespace ruxcomp::core

#endif  // FRONTEND_SECTION_KINDS_H_
