#include <fmt/format.h>

#include <algorithm>
#include <cstdint>
#include <map>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "compiled/debug_meta.h"
#include "decompile/decompile.h"
#include "ruxcomp/language/entries.h"
#include "ruxcomp/language/sections.h"
#include "ruxcomp/language/values.h"

namespace rux::decompile {
namespace {

namespace language = ruxcomp::language;

bool IsGiven(const compiled::DebugEntry& entry) { return entry.payload_type != 0; }

bool IsDefinition(const compiled::DebugEntry& entry) {
  return IsGiven(entry) && language::PayloadOf(entry.identifier) == language::PAYLOAD_DWORD;
}

// Calls use(keyword, section) for every section that the script gets, in order.
template <class Use>
void ForEachSection(const compiled::DebugMeta& meta, Use use) {
  for (const std::vector<compiled::DebugSection>& kind : meta.kinds) {
    for (const compiled::DebugSection& section : kind) {
      if (section.identifier == language::SECTION_INCLUDE) continue;
      use(language::FindSourceKind(section.identifier)->keyword, section);
    }
  }
}

// The numbers that definitions give to their words.
class Definitions {
 public:
  explicit Definitions(const compiled::DebugMeta& meta) {
    std::map<std::string_view, const compiled::DebugEntry*> last;
    ForEachSection(meta, [&](const char*, const compiled::DebugSection& section) {
      for (const compiled::DebugEntry& entry : section.entries) {
        if (IsDefinition(entry)) last[entry.name] = &entry;
      }
    });
    for (const compiled::DebugWord& word : meta.words) {
      const auto found = last.find(word.name);
      if (found != last.end()) final_values_[found->second] = word.value;
    }
  }

  // A definition that used other words was valued when the script was read, once more when it was
  // checked: only the table of words says what counted.
  std::uint32_t NumberOf(const compiled::DebugEntry& definition) const {
    const auto found = final_values_.find(&definition);
    return found == final_values_.end() ? definition.number : found->second;
  }

 private:
  std::map<const compiled::DebugEntry*, std::uint32_t>
      final_values_;  // by the last definition of each word
};

std::vector<std::string> PartsOf(const compiled::DebugEntry& entry) {
  std::vector<std::string> parts;
  for (const compiled::DebugField& field : entry.fields) {
    parts.insert(parts.end(), field.texts.begin(), field.texts.end());
  }
  // The record of a calculation has also the operands that only comparisons have.
  if (entry.value_type == language::kComparison.code) {
    parts.resize(language::TypeFor(entry.value_type, parts[1]).most);
  }
  return parts;
}

// Value types and counts are at home in decimal, addresses in hexadecimal.
std::string NumberText(std::uint32_t number) {
  return fmt::format(number < 256 ? "{}" : "0x{:X}", number);
}

constexpr std::string_view kHead =
    R"(# Decompiled from a debug meta file. This script compiles to the same meta file as the script that
# the debug meta file was made from, but a debug meta file does not keep
#   - comments and the layout of lines;
#   - INCLUDE sections: the included text is here in their place;
#   - the order of sections of different kinds, and of entries whose keys the section knows;
#   - parts of a value beyond those that the entry takes;
#   - sections and entries that were ignored because their names are unknown;
#   - how the values of DEFINE and IFDEF words were written: they are numbers here; if a word has
#     several values, the last one here is the one that counted.
)";

bool IsBlank(char c) { return c == ' ' || c == '\t'; }
bool IsControl(char c) { return static_cast<unsigned char>(c) < ' ' || c == '\x7F'; }

// Whether a comment would begin in the text, which follows a blank.
bool BeginsComment(std::string_view text) {
  bool after_blank = true;
  for (const char c : text) {
    if (after_blank && (c == '#' || c == ';')) return true;
    after_blank = IsBlank(c);
  }
  return false;
}

bool NeedsQuotes(std::string_view part) {
  return part.empty() || IsBlank(part.front()) || IsBlank(part.back()) ||
         part.back() == '\\' ||  // would join the next line
         part.find(',') != std::string_view::npos ||
         std::any_of(part.begin(), part.end(), IsControl) || BeginsComment(part);
}

void AppendItem(const ScriptItem& item, std::string& text) {
  text.append(item.entry->name).append(" =");
  const char* separator = " ";
  for (const std::string& part : item.parts) {
    text += separator;
    text += PartText(part);
    separator = ", ";
  }
  text += '\n';
}

}  // namespace

std::string PartText(std::string_view part) {
  const std::string_view quote = NeedsQuotes(part) ? "\"" : "";
  return std::string(quote).append(part).append(quote);
}

std::vector<ScriptSection> ScriptSectionsOf(const compiled::DebugMeta& meta) {
  const Definitions definitions(meta);
  std::vector<ScriptSection> sections;
  ForEachSection(meta, [&](const char* keyword, const compiled::DebugSection& source) {
    ScriptSection section{keyword, &source, {}};
    for (const compiled::DebugEntry& entry : source.entries) {
      if (IsDefinition(entry)) {
        section.items.push_back({&entry, {NumberText(definitions.NumberOf(entry))}});
      } else if (IsGiven(entry)) {
        section.items.push_back({&entry, PartsOf(entry)});
      }
    }
    sections.push_back(std::move(section));
  });
  return sections;
}

std::string ScriptText(const std::vector<ScriptSection>& sections) {
  std::string text(kHead);
  for (const ScriptSection& section : sections) {
    text.append("\n[").append(section.keyword).append("]\n");
    for (const ScriptItem& item : section.items) AppendItem(item, text);
  }
  return text;
}

KeptScript KeptScriptOf(compiled::DebugMeta meta) {
  KeptScript kept{std::move(meta), {}, {}};
  kept.sections = ScriptSectionsOf(kept.meta);
  kept.text = ScriptText(kept.sections);
  return kept;
}

}  // namespace rux::decompile
