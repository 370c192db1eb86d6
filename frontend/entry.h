// The entries of a section: a key, its place, its text and its typed payload.
#ifndef FRONTEND_ENTRY_H_
#define FRONTEND_ENTRY_H_

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>

#include "findings/origin.h"
#include "frontend/check_context.h"
#include "frontend/entry_data.h"
#include "frontend/obj.h"
#include "frontend/text_arena.h"

namespace ruxcomp::language {
struct Reference;
struct ValueType;
}  // namespace ruxcomp::language

namespace ruxcomp::core {

class CRUXSection;

// The `pass` argument of the checks: the check of the whole model drops the text of an entry once
// it is turned into the payload; a check that acts while the script is read leaves it for that one.
inline constexpr unsigned int kWholeModel = 0;
inline constexpr unsigned int kWhileReading = 255;

class CRUXEntry : public CRUXObj {
 public:
  using CRUXObj::CRUXObj;

  // Fills the entry from an item of the script: place, name, an empty payload, the text.
  void Init(const std::string& file, const std::string& key, const std::string& value,
            std::uint32_t item_line, const findings::Origin& origin = {});

  // First pass: the entry by itself; turns ListItems into the payload. Run it once with
  // kWholeModel. Second pass: references to other sections. Both answer 1 (valid) or 0 (problems
  // were reported).
  virtual std::uint32_t IsValid(const CheckContext& context, unsigned int pass) = 0;
  virtual std::uint32_t IsValidEx(const CheckContext& context, unsigned int pass);

  // Appends the entry as a byte record; and back from it. Its text is not part of it.
  void GetBuffer(std::vector<std::uint8_t>& out) const;
  void SetBuffer(const RecordView& in);

  // Which item of its section the entry was made from; kNone when it was restored.
  std::uint32_t item = findings::Origin::kNone;

  // What the entries were given to be checked. To be cleared when no entry has a text any more.
  static TextArena m_itemTexts;

  CRuxEntryData m_RuxEntryData;  // empty while the script did not give the entry

  // The comma-separated parts of the item's text, quotes removed; none once the check of the whole
  // model has turned them into the payload.
  TextList ListItems() const;

  // The checks that the entry classes share (checker/entry_checks.cpp and checker/references.cpp);
  // each reports what it finds and answers 1 or 0.
  std::uint32_t ChkEntryName(const CheckContext& context);
  std::uint32_t ChkEntryExist(const CheckContext& context);
  std::uint32_t ChkActionName(const std::string& action, const CheckContext& context);
  std::uint32_t ChkTableName(const std::string& table, const CheckContext& context);
  std::uint32_t ChkGlobalName(const std::string& global, const CheckContext& context);
  std::uint32_t ChkArgName(const std::string& arg, const CheckContext& context,
                           std::uint32_t index);
  std::uint32_t ChkDigital(const std::string& text, const CheckContext& context);
  std::uint32_t ChkActionParamNum(const std::string& action, std::uint32_t count,
                                  const CheckContext& context);
  std::uint32_t ChkReference(const ruxcomp::language::Reference& reference, const std::string& text,
                             const CheckContext& context);

 protected:
  // What every first pass begins with: presence, name, payload type. True when the caller goes on;
  // otherwise `answer` is its result.
  bool PassesCommonChecks(const CheckContext& context, PayloadType type, std::uint32_t& answer);

  // The one text that a number or string entry is made of; of several the first, with a warning.
  // False, reported, when there is none.
  bool TakeFirstItem(const CheckContext& context, unsigned int pass, std::string& text);

  // Drops the text at the end of a first pass that turned it.
  void DropItems(unsigned int pass) {
    if (pass == kWholeModel) text_ = {};
  }

 private:
  // The item's text as the script gave it: a split one takes several times its memory.
  std::string_view text_;  // in m_itemTexts
};

// Reports that a section lacks an entry; `unfilled` says which one.
void ReportMissing(const CRUXObj& unfilled, const CheckContext& context);

// One class per payload type; they differ in their checks.
class CGEDWORD : public CRUXEntry {
 public:
  using CRUXEntry::CRUXEntry;
  std::uint32_t IsValid(const CheckContext& context, unsigned int pass) override;
};

class CGESTRING : public CRUXEntry {
 public:
  using CRUXEntry::CRUXEntry;
  std::uint32_t IsValid(const CheckContext& context, unsigned int pass) override;
  std::uint32_t IsValidEx(const CheckContext& context, unsigned int pass) override;
};

class CGESTRINGLIST : public CRUXEntry {
 public:
  using CRUXEntry::CRUXEntry;
  std::uint32_t IsValid(const CheckContext& context, unsigned int pass) override;
  std::uint32_t IsValidEx(const CheckContext& context, unsigned int pass) override;
};

class CGEVALUE : public CRUXEntry {
 public:
  using CRUXEntry::CRUXEntry;
  std::uint32_t IsValid(const CheckContext& context, unsigned int pass) override;
  std::uint32_t IsValidEx(const CheckContext& context, unsigned int pass) override;

  // An operand: the name of a value, an argument (up to the number `index`, outside of actions) or
  // a global; anything else must be a number or a defined word.
  std::uint32_t IsValidSubValue(const std::string& text, const CheckContext& context,
                                std::uint32_t index);
  std::uint32_t ChkValueName(const std::string& value, const CheckContext& context);

 private:
  // Fills the record of the value from the sub-strings after the type.
  std::uint32_t FillRecord(CGeValue& value, const ValueType& type, const TextList& items,
                           const CheckContext& context);
};

class CGEREPEATER : public CRUXEntry {
 public:
  using CRUXEntry::CRUXEntry;
  std::uint32_t IsValid(const CheckContext& context, unsigned int pass) override;
  std::uint32_t IsValidEx(const CheckContext& context, unsigned int pass) override;
};

}  // namespace ruxcomp::core

#endif  // FRONTEND_ENTRY_H_
