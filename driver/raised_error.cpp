#include "driver/raised_error.h"

#include <algorithm>
#include <optional>
#include <string>
#include <string_view>
#include <utility>

#include "ruxcomp/data.h"
#include "sources/script_path.h"
#include "sources/sub_strings.h"

namespace rux::driver {
namespace {

// A text that is read as a number in some phase of a run.
struct NumberText {
  std::string_view text;
  diagnostics::Phase phase;
  bool is_key;  // or a part of it
};

bool BeginsWith(std::string_view text, std::string_view beginning) {
  return text.substr(0, beginning.size()) == beginning;
}

bool IsBarePrefix(std::string_view text) { return text == "0x" || text == "0X"; }

bool IsBareArgument(std::string_view text) {
  return BeginsWith(text, "ARG") && IsBarePrefix(text.substr(3));
}

bool Raises(std::string_view text) {
  return text.empty() || IsBarePrefix(text) || IsBareArgument(text);
}

// The identifier that the library's keyword table gives to a key; 0 for a free name.
std::uint32_t KeywordOf(std::string_view key) {
  const tagNTMAP* end = g_NTMapEntry + g_dwNTMEntry;
  const tagNTMAP* row = std::find_if(
      g_NTMapEntry, end, [&](const tagNTMAP& candidate) { return key == candidate.keyword; });
  return row == end ? 0 : row->identifier;
}

constexpr std::string_view kValuePrefix = "VALUE_";

constexpr std::uint32_t kTypeMask = 0xFFFF0000;
constexpr std::uint32_t kValueType = 0x10080000;
constexpr std::uint32_t kNumericMask = 0xFFFFF000;
constexpr std::uint32_t kNumericString = 0x10028000;
constexpr std::uint32_t kNumericList = 0x10048000;

// Collects the texts of one item that are read as numbers.
class NumberTexts {
 public:
  NumberTexts(const reader::Section& section, const reader::Item& item) {
    const bool is_condition = &item == section.items;
    if (section.name == "DEFINE" || (section.name == "IFDEF" && !is_condition)) {
      // Without any sub-string it is reported.
      if (!item.value.empty()) Add(sources::FirstSubString(item), diagnostics::Phase::kParse);
    } else if (section.name == "REPEATER") {
      AddRepeater(sources::SubStrings(item));
    } else if (section.name == "GLOBAL") {
      AddOperands(sources::SubStrings(item));
    } else {
      AddByKey(section, item);
    }
  }

  const std::vector<NumberText>& texts() const { return texts_; }

 private:
  void Add(std::string_view text, diagnostics::Phase phase) {
    texts_.push_back({text, phase, false});
  }
  void AddKey(std::string_view text) { texts_.push_back({text, diagnostics::Phase::kCheck, true}); }

  void AddByKey(const reader::Section& section, const reader::Item& item) {
    const std::uint32_t keyword = KeywordOf(item.key);
    if ((keyword & kNumericMask) == kNumericString) {
      // An empty one is reported.
      const std::string_view text = sources::FirstSubString(item);
      if (!text.empty()) Add(text, diagnostics::Phase::kCheck);
    } else if ((keyword & kNumericMask) == kNumericList) {
      for (const std::string_view text : sources::SubStrings(item)) Add(text, diagnostics::Phase::kCheck);
    } else if (section.name == "TABLE" && keyword == 0) {
      AddRow(item);
    } else if ((keyword & kTypeMask) == kValueType || BeginsWith(item.key, kValuePrefix)) {
      if (section.name == "ACTION" && keyword == 0) AddKey(item.key.substr(kValuePrefix.size()));
      AddOperands(sources::SubStrings(item));
    }
  }

  void AddRow(const reader::Item& item) {
    const std::size_t dot = item.key.find('.');
    AddKey(item.key.substr(0, dot));
    if (dot != std::string_view::npos) AddKey(item.key.substr(dot + 1));
    // An empty cell is reported.
    const std::string_view cell = sources::FirstSubString(item);
    if (!cell.empty()) Add(cell, diagnostics::Phase::kOutput);
  }

  // Which sub-strings are operands depends on the value's type. One that is none is not empty in a
  // script that gets so far.
  void AddOperands(const std::vector<std::string_view>& parts) {
    for (std::size_t i = 1; i < parts.size(); ++i) Add(parts[i], diagnostics::Phase::kCheck);
  }

  void AddRepeater(const std::vector<std::string_view>& parts) {
    if (parts.size() < 2) return;  // reported
    Add(parts[0], diagnostics::Phase::kCheck);
    for (std::size_t i = 2; i < parts.size(); ++i) {
      // The check only counts the arguments among them.
      Add(parts[i],
          IsBareArgument(parts[i]) ? diagnostics::Phase::kOutput : diagnostics::Phase::kCheck);
    }
  }

  std::vector<NumberText> texts_;
};

// The first text of the item that raises in the phase.
std::optional<NumberText> RaisingText(const reader::Section& section, const reader::Item& item,
                                      diagnostics::Phase phase) {
  const NumberTexts numbers(section, item);
  for (const NumberText& number : numbers.texts()) {
    if (number.phase == phase && Raises(number.text)) return number;
  }
  return std::nullopt;
}

diagnostics::Diagnostic DiagnosticOf(const sources::SourceSection& section,
                                     const reader::Item& item, const NumberText& raising) {
  diagnostics::Diagnostic diagnostic;
  diagnostic.id = diagnostics::MessageId::kUnreadableNumber;
  diagnostic.anchor = diagnostics::Anchor::kPlace;
  diagnostic.file = sources::BaseNameOf(section.file->library_path());
  diagnostic.line = item.line;
  diagnostic.section = std::string(section.section->name);
  diagnostic.entry = std::string(item.key);
  const std::string text(raising.text);
  const std::string what = raising.is_key ? "an empty part of the key" : "an empty operand";
  diagnostic.text =
      (text.empty() ? what : text + " without digits") + " cannot be read as a number";
  if (!raising.is_key) {
    diagnostic.arguments.emplace_back(text);
    // Every part of a value, an empty one too, lies in it.
    diagnostic.at.value_at = static_cast<std::size_t>(raising.text.data() - item.value.data());
  }
  return diagnostic;
}

diagnostics::Diagnostic DiagnosticOfWholeScript(const std::exception& raised) {
  diagnostics::Diagnostic diagnostic;
  diagnostic.id = diagnostics::MessageId::kLibraryError;
  diagnostic.text = std::string("the library cannot go on: ") + raised.what();
  return diagnostic;
}

}  // namespace

std::vector<diagnostics::Diagnostic> DiagnosticsOfRaised(const sources::SourceView& sources,
                                                         diagnostics::Phase phase,
                                                         const std::exception& raised) {
  std::vector<diagnostics::Diagnostic> diagnostics;
  for (const sources::SourceSection& section : sources.sections()) {
    const reader::Section& contents = *section.section;
    for (const reader::Item* item = contents.items; item != contents.items + contents.item_count;
         ++item) {
      if (const auto text = RaisingText(contents, *item, phase)) {
        diagnostics.push_back(DiagnosticOf(section, *item, *text));
      }
    }
  }
  if (diagnostics.empty()) diagnostics.push_back(DiagnosticOfWholeScript(raised));
  return diagnostics;
}

}  // namespace rux::driver
