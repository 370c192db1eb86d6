// Characters that make a script look like another one.
#include <fmt/format.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <iterator>
#include <memory>
#include <string_view>

#include "rules/rule_list.h"
#include "rules/rule_report.h"
#include "rules/script_item.h"
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
constexpr Hidden kHidden[] = {
    {0x200B, 0x200B, "cannot be seen"},
    {0x2028, 0x2028, "looks like the end of the line"},
    {0x202A, 0x202E, "turns the direction of what is written"},
    {0x2066, 0x2069, "turns the direction of what is written"},
    {kByteOrderMark, kByteOrderMark, "cannot be seen"},
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

class HiddenCharacterRule : public Rule {
 public:
  explicit HiddenCharacterRule(const RuleContext& context) : report_(context.report) {}

  void EndScript(const Script& script) override {
    for (const ScriptFile* file : FilesOf(script)) CheckFile(*file);
  }

 private:
  void CheckFile(const ScriptFile& file) {
    // What they begin with in UTF-8: scripts without these bytes are passed over quickly.
    Places of_punctuation(file.text(), '\xE2');
    Places of_mark(file.text(), '\xEF');
    while (true) {
      Places& nearest = of_punctuation.next() < of_mark.next() ? of_punctuation : of_mark;
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
    const auto begin = static_cast<std::uint32_t>(at);
    const auto size = static_cast<std::uint32_t>(character.bytes.size());
    report_.Add(RuleId::kHiddenCharacter, Bytes{&file, {begin, begin + size}},
                [&] { return fmt::format("U+{:04X} {}", character.code, hidden->what); });
  }

  RuleReport& report_;
};

}  // namespace

std::unique_ptr<Rule> MakeHiddenCharacterRule(const RuleContext& context) {
  return std::make_unique<HiddenCharacterRule>(context);
}

}  // namespace rux::rules
