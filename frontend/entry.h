// The entries of a section: a key, its place, its text and its typed payload.
#ifndef FRONTEND_ENTRY_H_
#define FRONTEND_ENTRY_H_

#include <cstddef>
#include <cstdint>
#include <string_view>

#include "findings/origin.h"
#include "frontend/check_context.h"
#include "frontend/entry_data.h"
#include "frontend/obj.h"
#include "frontend/text.h"

namespace ruxcomp::language {
class Splitter;
struct Reference;
struct ValueType;
}  // namespace ruxcomp::language

namespace ruxcomp::core {

class CRUXSection;

// The `pass` argument of the checks. The check of the whole model drops the text of an entry after
// turning it into the payload; a check while the script is read keeps the text for the later one.
inline constexpr unsigned int kWholeModel = 0;
inline constexpr unsigned int kWhileReading = 255;

class CRUXEntry : public CRUXObj {
 public:
  using CRUXObj::CRUXObj;

  // Fills the entry from an item of the script: place, name, an empty payload, the text.
  void Init(std::string_view file, InternedString key, std::string_view value,
            std::uint32_t item_line, const findings::Origin& origin = {});

  // First pass: the entry by itself; turns ListItems into the payload. Run it once with
  // kWholeModel. Second pass: references to other sections. Both answer 1 (valid) or 0 (problems
  // were reported).
  virtual std::uint32_t IsValid(const CheckContext& context, unsigned int pass) = 0;
  virtual std::uint32_t IsValidEx(const CheckContext& context, unsigned int pass);

  // Appends the entry as a byte record, and restores it from one. The record does not hold the
  // text.
  void GetBuffer(std::vector<std::uint8_t>& out) const;
  void SetBuffer(const RecordView& in);

  CRuxEntryData m_RuxEntryData;  // empty while the script did not give the entry

  // The comma-separated parts of the item's text, without quotes; none after the check of the whole
  // model.
  TextList ListItems() const;

  // The checks that the entry classes share (checker/entry_checks.cpp and checker/references.cpp);
  // each reports what it finds and answers 1 or 0.
  std::uint32_t ChkEntryName(const CheckContext& context);
  std::uint32_t ChkEntryExist(const CheckContext& context);
  std::uint32_t ChkActionName(std::string_view action, const CheckContext& context);
  std::uint32_t ChkTableName(std::string_view table, const CheckContext& context);
  std::uint32_t ChkGlobalName(std::string_view global, const CheckContext& context);
  std::uint32_t ChkArgName(std::string_view arg, const CheckContext& context, std::uint32_t index);
  std::uint32_t ChkDigital(std::string_view text, const CheckContext& context);
  std::uint32_t ChkActionParamNum(std::string_view action, std::uint32_t count,
                                  const CheckContext& context);
  std::uint32_t ChkReference(const ruxcomp::language::Reference& reference, std::string_view text,
                             const CheckContext& context);

 protected:
  ~CRUXEntry() = default;  // never runs: entries are released with the arena

  // What every first pass begins with: presence, name, payload type. True when the caller is to go
  // on; otherwise `answer` is its result.
  bool PassesCommonChecks(const CheckContext& context, PayloadType type, std::uint32_t& answer);

  // The one text of a number or string entry; of several, the first, with a warning. Reports and
  // answers false when there is none.
  bool TakeFirstItem(const CheckContext& context, unsigned int pass, Text& text);

  // Drops the text at the end of a first pass over the whole model.
  void DropItems(unsigned int pass) {
    if (pass == kWholeModel) text_size_ = 0;
  }

  // A list of the next `count` parts of an item's text; there must be as many.
  static TextList Keep(Splitter& parts, std::size_t count);

  // The item's text as the script gave it. Texts of the payload point into it.
  std::string_view ItemText() const { return {text_, text_size_}; }

 private:
  // A size and a pointer, not a Text, which would leave a gap: a script may have millions of items.
  const char* text_ = "";
  std::uint32_t text_size_ = 0;

 public:
  // Which item of its section the entry was made from; kNone when it was restored.
  std::uint32_t item = findings::Origin::kNone;
};

// Reports that a section lacks an entry; `unfilled` says which one.
void ReportMissing(const CRUXObj& unfilled, const CheckContext& context);

// One class per payload type; they differ in their checks.
class CGEDWORD final : public CRUXEntry {
 public:
  using CRUXEntry::CRUXEntry;
  std::uint32_t IsValid(const CheckContext& context, unsigned int pass) override;
};

class CGESTRING final : public CRUXEntry {
 public:
  using CRUXEntry::CRUXEntry;
  std::uint32_t IsValid(const CheckContext& context, unsigned int pass) override;
  std::uint32_t IsValidEx(const CheckContext& context, unsigned int pass) override;
};

class CGESTRINGLIST final : public CRUXEntry {
 public:
  using CRUXEntry::CRUXEntry;
  std::uint32_t IsValid(const CheckContext& context, unsigned int pass) override;
  std::uint32_t IsValidEx(const CheckContext& context, unsigned int pass) override;
};

class CGEVALUE final : public CRUXEntry {
 public:
  using CRUXEntry::CRUXEntry;
  std::uint32_t IsValid(const CheckContext& context, unsigned int pass) override;
  std::uint32_t IsValidEx(const CheckContext& context, unsigned int pass) override;

  // An operand: the name of a value, an argument (up to the number `index`, outside of actions) or
  // a global; anything else must be a number or a defined word.
  std::uint32_t IsValidSubValue(std::string_view text, const CheckContext& context,
                                std::uint32_t index);
  std::uint32_t ChkValueName(std::string_view value, const CheckContext& context);

 private:
  // Fills the record of the value from the parts after the type, of which there are `count`.
  std::uint32_t FillRecord(CGeValue& value, const ValueType& type, Splitter parts,
                           std::size_t count, const CheckContext& context);
};

class CGEREPEATER final : public CRUXEntry {
 public:
  using CRUXEntry::CRUXEntry;
  std::uint32_t IsValid(const CheckContext& context, unsigned int pass) override;
  std::uint32_t IsValidEx(const CheckContext& context, unsigned int pass) override;
};

}  // namespace ruxcomp::core

#endif  // FRONTEND_ENTRY_H_
