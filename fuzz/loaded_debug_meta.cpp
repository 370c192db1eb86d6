#include <algorithm>
#include <cstdint>
#include <cstdio>
#include <string>
#include <utility>
#include <vector>

#include "compiled/debug_meta.h"
#include "frontend/defined_words.h"
#include "frontend/identifiers.h"  // IWYU pragma: keep
#include "fuzz/loaded.h"
#include "fuzz/target.h"
#include "ruxcomp/debug.h"
#include "ruxcomp/language/entries.h"
#include "ruxcomp/language/sections.h"

using namespace ruxcomp::core;

namespace fuzz {
namespace {

using Texts = std::vector<std::pair<std::string, std::string>>;  // of entries: key and value

Texts LoadedTexts(GDSECTION section) {
  Texts texts;
  std::uint32_t ordinal = 0;
  while (GDENTRY entry = gdGetEntryByIndex(section, ordinal++)) {
    texts.emplace_back(gdGetEntryName(entry), gdGetValue(entry));
  }
  return texts;
}

// Values of other types have no text.
bool HasRecord(std::uint32_t type) { return type <= 12 || (type >= 101 && type <= 104); }

std::string ExpectedText(const rux::compiled::DebugEntry& entry) {
  if (PayloadOf(entry.identifier) == PAYLOAD_DWORD) {
    char text[sizeof "0xFFFFFFFF"];
    std::snprintf(text, sizeof text, "0x%x", entry.number);
    return text;
  }
  if (PayloadOf(entry.identifier) == PAYLOAD_VALUE && !HasRecord(entry.value_type)) return "";
  std::string text;
  const char* comma = "";
  for (const rux::compiled::DebugField& field : entry.fields) {
    for (const std::string& part : field.texts) text += std::exchange(comma, ",") + part;
  }
  return text;
}

// The entries that are left of a section's: one takes the place of an earlier one with its
// identifier whose name is not free.
Texts ExpectedTexts(const rux::compiled::DebugSection& section) {
  std::vector<const rux::compiled::DebugEntry*> entries;
  for (const rux::compiled::DebugEntry& entry : section.entries) {
    const auto place =
        std::find_if(entries.begin(), entries.end(), [&](const rux::compiled::DebugEntry* earlier) {
          return earlier->identifier == entry.identifier && !(earlier->notation & kFreeName);
        });
    if (place == entries.end()) {
      entries.push_back(&entry);
    } else {
      *place = &entry;
    }
  }
  Texts texts;
  for (const rux::compiled::DebugEntry* entry : entries) {
    if (entry->payload_type != 0) texts.emplace_back(entry->name.c_str(), ExpectedText(*entry));
  }
  return texts;
}

// Entries that every section of a kind has come first, whatever their order in the file.
Texts Sorted(Texts texts) {
  std::sort(texts.begin(), texts.end());
  return texts;
}

// The sections of a kind; answers with their count, which is 0 for INCLUDE sections.
std::uint32_t ExpectSections(const std::vector<rux::compiled::DebugSection>& decoded) {
  if (decoded.front().identifier == SECTION_INCLUDE) return 0;
  std::uint32_t count = 0;
  for (const rux::compiled::DebugSection& section : decoded) {
    GDSECTION loaded = gdGetSectByIndex(section.identifier, count++);
    Expect(loaded != nullptr, "all sections are loaded");
    Expect(Sorted(LoadedTexts(loaded)) == Sorted(ExpectedTexts(section)),
           "entries are those of the file");
  }
  return count;
}

}  // namespace

void ExpectLoaded(const rux::compiled::DebugMeta& meta) {
  Expect(g_tblPreDefine.words().size() == meta.words.size(), "defined words are those of the file");
  for (const rux::compiled::DebugWord& word : meta.words) {
    std::uint32_t value = 0;
    Expect(GetPreDefinedValue(word.name, value) && value == word.value,
           "defined words have their values");
  }
  for (const std::vector<rux::compiled::DebugSection>& kind : meta.kinds) {
    if (kind.empty()) continue;
    const std::uint32_t count = ExpectSections(kind);
    Expect(gdGetSectByIndex(kind.front().identifier, count) == nullptr,
           "no section is loaded that is not in the file");
  }
}

bool CanBeLoaded(const rux::compiled::DebugMeta& meta) {
  for (const std::vector<rux::compiled::DebugSection>& kind : meta.kinds) {
    if (kind.empty()) continue;
    return meta.files_extent.size > 0 && kind.front().identifier != SECTION_INCLUDE;
  }
  return true;  // without sections none is needed
}

}  // namespace fuzz
