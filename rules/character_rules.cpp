// Characters that make a script look like another one.
#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <iterator>
#include <memory>
#include <optional>
#include <string_view>

#include "rules/rule.h"
#include "rules/rule_list.h"
#include "rules/rule_report.h"
#include "rules/script_item.h"
#include "support/text_file.h"
#include "support/utf8.h"

namespace rux::rules {
namespace {

// Characters from `first` to `last`, and what they do.
struct Hidden {
  std::int32_t first;
  std::int32_t last;
  const char* what;
};

constexpr std::int32_t kByteOrderMark = 0xFEFF;
constexpr char kInvisible[] = "is invisible";
constexpr char kLineEnd[] = "looks like the end of the line";
constexpr char kTurning[] = "changes the direction of the text";
constexpr char kBlank[] = "looks like a blank but is part of the text";
constexpr Hidden kHidden[] = {
    {0x00A0, 0x00A0, kBlank},
    {0x1680, 0x1680, kBlank},
    {0x2000, 0x200A, kBlank},
    {0x202F, 0x202F, kBlank},
    {0x205F, 0x205F, kBlank},
    {0x061C, 0x061C, kTurning},
    {0x200B, 0x200B, kInvisible},
    {0x200E, 0x200F, kTurning},
    {0x2028, 0x2029, kLineEnd},
    {0x202A, 0x202E, kTurning},
    {0x2060, 0x2060, kInvisible},
    {0x2066, 0x2069, kTurning},
    {kByteOrderMark, kByteOrderMark, kInvisible},
};

// The places of a byte in a text, one after the other.
class Places {
 public:
  Places(std::string_view text, char byte) : text_(text), byte_(byte), next_(text.find(byte)) {}

  std::size_t next() const { return next_; }  // npos: there is none
  void Pass() { next_ = text_.find(byte_, next_ + 1); }

 private:
  const std::string_view text_;
  const char byte_;
  std::size_t next_;
};

const Hidden* FindHidden(const support::Character& character) {
  const Hidden* found =
      std::find_if(std::begin(kHidden), std::end(kHidden), [&](const Hidden& each) {
        return each.first <= character.code && character.code <= each.last;
      });
  return found == std::end(kHidden) ? nullptr : found;
}

// Whether the place is in the key or in the unquoted value of an item.
bool IsInPlainItem(const ScriptFile& file, std::size_t at) {
  const std::optional<ItemRef> item = FindItemOnLine(file, file.LineAt(at));
  if (!item || item->item->value.find('"') != std::string_view::npos) return false;
  const auto has = [&](std::string_view text) {
    const support::ByteRange range = file.RangeOf(text);
    return range.begin <= at && at < range.end;
  };
  return has(item->item->key) || has(item->item->value);
}

// Quotation marks of other scripts than programs: from U+2018 to U+201F.
constexpr char kQuoteBytes[] = "\xE2\x80";

bool IsTypographicQuote(const support::Character& character) {
  return character.code >= 0x2018 && character.code <= 0x201F;
}

class HiddenCharacterRule : public Rule {
 public:
  explicit HiddenCharacterRule(const RuleContext& context) : report_(context.report) {}

  void EndScript(const Script& script) override {
    for (const ScriptFile* file : FilesOf(script)) CheckFile(*file);
  }

 private:
  void CheckFile(const ScriptFile& file) {
    // What they begin with in UTF-8: scripts without these bytes are passed over quickly.
    const std::string_view text = file.text();
    std::array<Places, 5> places{Places(text, '\xC2'), Places(text, '\xD8'), Places(text, '\xE1'),
                                 Places(text, '\xE2'), Places(text, '\xEF')};
    while (true) {
      Places& nearest = *std::min_element(
          places.begin(), places.end(),
          [](const Places& one, const Places& other) { return one.next() < other.next(); });
      if (nearest.next() == std::string_view::npos) return;
      CheckCharacter(file, nearest.next());
      nearest.Pass();
    }
  }

  void CheckCharacter(const ScriptFile& file, std::size_t at) {
    const std::string_view text = file.text();
    const support::Character character = support::FirstCharacter(text.substr(at));
    const Hidden* hidden = FindHidden(character);
    // Where a file begins, a byte order mark is one.
    if (hidden == nullptr || (character.code == kByteOrderMark && at == 0)) return;
    // A text between quotes may have its own blanks, and a comment may be set as it likes.
    if (hidden->what == kBlank && !IsInPlainItem(file, at)) return;
    const auto begin = static_cast<std::uint32_t>(at);
    const auto size = static_cast<std::uint32_t>(character.bytes.size());
    report_.Add(RuleId::kHiddenCharacter, Bytes{&file, {begin, begin + size}},
                [&] { return fmt::format("U+{:04X} {}", character.code, hidden->what); });
  }

  RuleReport& report_;
};

}  // namespace

// As an apostrophe they are fine: only a part that begins with one is reported.
void CheckTypographicQuotes(const ScriptItem& item, const RuleContext& context) {
  if (item.item->value.find(kQuoteBytes) == std::string_view::npos) return;
  for (const std::string_view part : item.parts) {
    const support::Character first = support::FirstCharacter(part);
    if (part.empty() || !IsTypographicQuote(first)) continue;
    context.report.Add(
        RuleId::kTypographicQuote, item,
        [&] { return fmt::format("U+{:04X} is text, not a double quote", first.code); },
        first.bytes);
    return;
  }
}

std::unique_ptr<Rule> MakeHiddenCharacterRule(const RuleContext& context) {
  return std::make_unique<HiddenCharacterRule>(context);
}

}  // namespace rux::rules
