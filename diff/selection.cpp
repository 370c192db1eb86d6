#include "diff/selection.h"

#include <fmt/format.h>

#include <algorithm>
#include <cstddef>
#include <set>
#include <string>
#include <vector>

#include "diff/change.h"
#include "diff/classes.h"
#include "machine/machine.h"
#include "ruxcomp/language/sections.h"
#include "ruxcomp/model.h"
#include "ruxcomp/model/handles.h"
#include "settings/document.h"
#include "settings/json_file.h"
#include "support/failure.h"
#include "support/json.h"
#include "support/nearest.h"
#include "support/pattern.h"
#include "support/safe_text.h"

namespace rux::diff {
namespace {

using settings::JsonValue;

constexpr std::size_t kLargestBaseline = std::size_t{64} << 20;

enum Member : std::size_t { kSchema, kChanges };
constexpr settings::Key kKeys[] = {
    {"$schema", JsonValue::Kind::kString},
    {"changes", JsonValue::Kind::kArray},
};
enum EntryMember : std::size_t { kFingerprint, kClass, kSection, kEntry };
constexpr settings::Key kEntryKeys[] = {
    {"fingerprint", JsonValue::Kind::kString},
    {"class", JsonValue::Kind::kString},
    {"section", JsonValue::Kind::kString},
    {"entry", JsonValue::Kind::kString},
};

bool IsOf(const Change& change, const std::string& word) {
  if (word == change.kind->keyword || word == change.row->message->id) return true;
  if (word == WordOf(change.row->category)) return true;
  for (const Side* side : {&change.before, &change.after}) {
    if (side->name && support::FitsPattern(word, *side->name)) return true;
  }
  return false;
}

// Empty unless the word is a category or "any".
std::vector<const ClassRow*> ClassesWithin(const std::string& word) {
  std::vector<const ClassRow*> rows;
  for (std::size_t i = 0; i < kCategoryCount; ++i) {
    for (const ClassRow& row : kClasses) {
      const bool is_all = word == kAnyClass && static_cast<Category>(i) == row.category;
      const bool is_within =
          word == kCategoryWords[i] && IsWithin(row.category, static_cast<Category>(i));
      if (is_all || is_within) rows.push_back(&row);
    }
  }
  return rows;
}

// Categories and classes.
std::vector<std::string> KnownWords() {
  std::vector<std::string> words(std::begin(kCategoryWords), std::end(kCategoryWords));
  for (const ClassRow& row : kClasses) words.emplace_back(row.message->id);
  return words;
}

// Of all sections of the machines.
std::set<std::string> NamesIn(const std::vector<machine::Machine>& machines) {
  std::set<std::string> names;
  for (const machine::Machine& machine : machines) {
    for (const language::SectionKind& kind : language::kSectionKinds) {
      if (!kind.HasNames()) continue;
      for (const ruxcomp::Section section : machine.model().sections(kind.compiled)) {
        if (section.has_name()) names.emplace(section.name());
      }
    }
  }
  return names;
}

}  // namespace

void CheckOnly(const std::vector<std::string>& only,
               const std::vector<machine::Machine>& machines) {
  if (only.empty()) return;
  std::vector<std::string> words = KnownWords();
  for (const language::SectionKind& kind : language::kSectionKinds)
    words.emplace_back(kind.keyword);
  const std::set<std::string> names = NamesIn(machines);
  for (const std::string& word : only) {
    if (std::find(words.begin(), words.end(), word) != words.end()) continue;
    const bool is_name = std::any_of(names.begin(), names.end(), [&](const std::string& name) {
      return support::FitsPattern(word, name);
    });
    if (is_name) continue;
    words.insert(words.end(), names.begin(), names.end());
    throw support::Failure(
        support::ExitStatus::kWrongUsage, "--only: no such kind, NAME, category or class: {}{}",
        support::Shortened(word),
        support::NearText(word, words, "'rux explain -l all' lists the classes"));
  }
}

void KeepOnly(const std::vector<std::string>& only, std::vector<Change>& changes) {
  if (only.empty()) return;
  const auto is_other = [&](const Change& change) {
    return std::none_of(only.begin(), only.end(),
                        [&](const std::string& word) { return IsOf(change, word); });
  };
  changes.erase(std::remove_if(changes.begin(), changes.end(), is_other), changes.end());
}

std::vector<const ClassRow*> ClassesFor(const std::vector<std::string>& words) {
  std::vector<const ClassRow*> rows;
  std::vector<std::string> known = KnownWords();
  known.emplace_back(kAnyClass);
  for (const std::string& word : words) {
    const std::vector<const ClassRow*> within = ClassesWithin(word);
    rows.insert(rows.end(), within.begin(), within.end());
    if (const ClassRow* row = FindClass(word)) rows.push_back(row);
    if (!within.empty() || FindClass(word) != nullptr) continue;
    throw support::Failure(support::ExitStatus::kWrongUsage,
                           "--fail-on: no such category or class: {}{}", support::Shortened(word),
                           support::NearText(word, known, "'rux explain -l all' lists them"));
  }
  return rows;
}

Accepted::Accepted(const std::string& path) : path_(path) {
  const settings::Document document(path, settings::ReadTextFile(path, kLargestBaseline));
  const auto members = document.Members(document.root(), kKeys);
  if (members[kChanges] == nullptr) document.Refuse(document.root().line, "changes is missing");
  for (const JsonValue& item : members[kChanges]->items) {
    document.Expect(item, JsonValue::Kind::kObject, "a change");
    const auto entry = document.Members(item, kEntryKeys);
    if (entry[kFingerprint] == nullptr) document.Refuse(item.line, "fingerprint is missing");
    std::string text;
    for (const EntryMember member : {kSection, kEntry, kClass}) {
      if (entry[member] != nullptr) text += ' ' + entry[member]->text;
    }
    entries_.push_back({entry[kFingerprint]->text, text});
  }
}

std::size_t Accepted::TakeFrom(std::vector<Change>& changes) const {
  std::set<std::string> known;
  for (const Entry& entry : entries_) known.insert(entry.fingerprint);
  const auto taken = std::remove_if(changes.begin(), changes.end(), [&](const Change& change) {
    return known.count(change.Fingerprint()) > 0;
  });
  const auto count = static_cast<std::size_t>(changes.end() - taken);
  changes.erase(taken, changes.end());
  return count;
}

std::string Accepted::UnmatchedText(const std::vector<Change>& changes) const {
  std::set<std::string> found;
  for (const Change& change : changes) found.insert(change.Fingerprint());
  std::string text;
  for (const Entry& entry : entries_) {
    if (found.count(entry.fingerprint) > 0) continue;
    text += fmt::format("rux: note: {}: the baseline lists a change that did not occur: {}{}\n",
                        support::SafePath(path_), support::SafeText(entry.fingerprint),
                        support::SafeText(entry.text));
  }
  return text;
}

std::string AcceptedText(const std::vector<Change>& changes) {
  return support::JsonDocument([&](support::JsonObject& json) {
    json.Objects("changes", changes, [](support::JsonObject& object, const Change& change) {
      object.Member("fingerprint", change.Fingerprint());
      object.Member("class", change.row->message->id);
      object.Member("section", change.SectionText());
      if (!change.entry.empty()) object.Member("entry", change.EntryText());
    });
  });
}

}  // namespace rux::diff
