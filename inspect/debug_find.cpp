#include "inspect/debug_find.h"

#include <strings.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "compiled/debug_meta.h"
#include "inspect/path.h"
#include "ruxcomp/language/number.h"
#include "ruxcomp/language/sections.h"
#include "support/failure.h"
#include "support/nearest.h"
#include "support/safe_text.h"

namespace rux::inspect {
namespace {

namespace language = ruxcomp::language;

support::Failure WrongPath(const std::string& text) {
  return support::Failure(support::ExitStatus::kWrongUsage, "{}", text);
}

// The text of the first entry of that identifier, when it was given.
std::optional<std::string> TextOf(const compiled::DebugSection& section, std::uint32_t identifier) {
  for (const compiled::DebugEntry& entry : section.entries) {
    if (entry.identifier != identifier) continue;
    if (entry.payload_type == 0) return std::nullopt;
    return entry.fields.front().texts.front();
  }
  return std::nullopt;
}

// The sections of one kind.
class Sections {
 public:
  Sections(const compiled::DebugMeta& meta, const std::string& keyword)
      : meta_(meta), keyword_(keyword) {
    for (const std::vector<compiled::DebugSection>& kind : meta.kinds) {
      for (const compiled::DebugSection& section : kind) {
        if (language::FindSourceKind(section.identifier)->keyword == keyword)
          sections_.push_back(&section);
      }
    }
    if (sections_.empty()) throw NotFound("there is no " + keyword + " section");
  }

  std::vector<DebugFound> All() const {
    std::vector<DebugFound> all;
    all.reserve(sections_.size());
    for (const compiled::DebugSection* section : sections_) all.push_back({section, nullptr});
    return all;
  }

  const compiled::DebugSection* Find(const PathStep& step) const {
    const NamedSections names{keyword_, sections_.size(),
                              [this](std::size_t i) { return NameOf(*sections_[i]); },
                              [this](std::size_t i) { return IdOf(meta_, *sections_[i]); }};
    return sections_[FindSection(names, step)];
  }

  // All entries with that key in the first section that has one.
  std::vector<DebugFound> FindEntries(const std::string& key) const {
    std::vector<std::string> keys;
    for (const compiled::DebugSection* section : sections_) {
      std::vector<DebugFound> found = EntriesOf(*section, key, keys);
      if (!found.empty()) return found;
    }
    throw EntryNotFound("no " + keyword_ + " section has an", key, keys);
  }

  std::vector<DebugFound> FindEntries(const compiled::DebugSection& section,
                                      const std::string& key) const {
    std::vector<std::string> keys;
    std::vector<DebugFound> found = EntriesOf(section, key, keys);
    if (!found.empty()) return found;
    throw EntryNotFound("the " + keyword_ + " section has no", key, keys);
  }

 private:
  static std::vector<DebugFound> EntriesOf(const compiled::DebugSection& section,
                                           const std::string& key, std::vector<std::string>& keys) {
    std::vector<DebugFound> found;
    for (const compiled::DebugEntry& entry : section.entries) {
      if (entry.payload_type == 0) continue;
      if (entry.name == key) found.push_back({&section, &entry});
      keys.push_back(entry.name);
    }
    return found;
  }

  const compiled::DebugMeta& meta_;
  const std::string keyword_;
  std::vector<const compiled::DebugSection*> sections_;
};

// The entries that define words, in file order.
std::vector<DebugFound> Definitions(const compiled::DebugMeta& meta) {
  std::vector<DebugFound> found;
  for (const std::vector<compiled::DebugSection>& kind : meta.kinds) {
    for (const compiled::DebugSection& section : kind) {
      for (const compiled::DebugEntry& entry : section.entries) {
        const bool is_given = entry.payload_type != 0;
        if (is_given && entry.identifier == language::ENTRY_DEFINED_WORD)
          found.push_back({&section, &entry});
      }
    }
  }
  return found;
}

std::vector<DebugFound> FindWord(const compiled::DebugMeta& meta, const std::string& name) {
  std::vector<DebugFound> found = Definitions(meta);
  const auto is_other = [&](const DebugFound& each) { return each.entry->name != name; };
  found.erase(std::remove_if(found.begin(), found.end(), is_other), found.end());
  if (!found.empty()) return found;
  std::vector<std::string> names;
  names.reserve(meta.words.size());
  for (const compiled::DebugWord& word : meta.words) names.push_back(word.name);
  throw NotFound("no such defined word: " + support::NameText(name) +
                 support::NearText(name, names, "'rux where FILE WORD' lists all"));
}

}  // namespace

std::string ExpectKeyword(const std::string& keyword) {
  std::vector<std::string> keywords;
  for (const language::SectionKind& kind : language::kSectionKinds) {
    keywords.emplace_back(kind.keyword);
  }
  keywords.emplace_back(kWordKind);
  for (const std::string& each : keywords) {
    if (strcasecmp(each.c_str(), keyword.c_str()) == 0) return each;
  }
  throw NotFound("no such kind: " + support::NameText(keyword) +
                 support::NearText(keyword, keywords, "'rux ls FILE' lists the kinds"));
}

std::optional<std::uint32_t> NumberOf(const compiled::DebugMeta& meta, const std::string& text) {
  const auto word = std::lower_bound(meta.words.begin(), meta.words.end(), text,
                                     [](const compiled::DebugWord& each,
                                        const std::string& sought) { return each.name < sought; });
  if (word != meta.words.end() && word->name == text) return word->value;
  const language::Number number = language::ReadNumber(text);
  return number.is_number ? std::optional(number.value) : std::nullopt;
}

std::optional<std::string> NameOf(const compiled::DebugSection& section) {
  return TextOf(section, language::ENTRY_NAME);
}

std::optional<std::uint32_t> IdOf(const compiled::DebugMeta& meta,
                                  const compiled::DebugSection& section) {
  const std::optional<std::string> text = TextOf(section, language::ENTRY_ID);
  return text ? NumberOf(meta, *text) : std::nullopt;
}

std::vector<DebugFound> Find(const compiled::DebugMeta& meta, const std::vector<PathStep>& path) {
  const std::string keyword = ExpectKeyword(path.front().text);
  if (path.size() == 1 && keyword == kWordKind) {
    throw NotFound("the path names no word ('rux where FILE WORD' lists them)");
  }
  if (path.size() == 1) throw NotFound("the path names nothing of kind " + keyword);
  const PathStep& step = path[1];
  const language::SectionKind* kind = language::FindKind(keyword);
  const bool names_section =
      keyword != kWordKind && ((kind != nullptr && kind->HasNames()) || OrdinalOf(step));
  if (path.size() > (names_section ? 3 : 2)) throw WrongPath("the path continues after an entry");
  if (keyword == kWordKind) return FindWord(meta, step.text);
  const Sections sections(meta, keyword);
  if (!names_section) return sections.FindEntries(step.text);
  const compiled::DebugSection* section = sections.Find(step);
  if (path.size() == 2) return {{section, nullptr}};
  return sections.FindEntries(*section, path[2].text);
}

std::vector<DebugFound> FindKind(const compiled::DebugMeta& meta, const std::string& keyword) {
  const std::string kind = ExpectKeyword(keyword);
  if (kind != kWordKind) return Sections(meta, kind).All();
  std::vector<DebugFound> definitions = Definitions(meta);
  if (definitions.empty()) throw NotFound("there is no defined word");
  return definitions;
}

}  // namespace rux::inspect
