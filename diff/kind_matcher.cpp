#include "diff/kind_matcher.h"

#include <fmt/format.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <utility>
#include <vector>

#include "compiled/datum.h"
#include "machine/value.h"
#include "ruxcomp/identifiers.h"
#include "ruxcomp/language/entries.h"
#include "ruxcomp/language/sections.h"
#include "ruxcomp/language/symbols.h"
#include "ruxcomp/model.h"
#include "ruxcomp/model/handles.h"
#include "ruxcomp/model/records.h"
#include "ruxcomp/model/value.h"

namespace rux::diff {

namespace language = ruxcomp::language;

namespace {

// The sections of one kind in one machine that have no match yet.
class Pool {
 public:
  explicit Pool(ruxcomp::Sections sections)
      : sections_(sections), is_taken_(sections.size()), count_left_(sections.size()) {}

  std::uint32_t size() const { return static_cast<std::uint32_t>(is_taken_.size()); }
  ruxcomp::Section operator[](std::uint32_t ordinal) const { return sections_[ordinal]; }
  bool is_taken(std::uint32_t ordinal) const { return is_taken_[ordinal]; }
  bool empty() const { return count_left_ == 0; }
  void Take(std::uint32_t ordinal) {
    is_taken_[ordinal] = true;
    --count_left_;
  }

  // By ID and by NAME, of those that are left. Once the first pass is done.
  void List() {
    for (const std::uint32_t i : Left()) {
      if (const std::optional<std::uint32_t> id = sections_[i].id()) by_id_.emplace(*id, i);
      if (sections_[i].has_name()) by_name_.emplace(sections_[i].name(), i);
    }
  }
  std::optional<std::uint32_t> WithId(std::uint32_t id) const { return Find(by_id_, id); }
  std::optional<std::uint32_t> Named(std::string_view name) const { return Find(by_name_, name); }

  std::vector<std::uint32_t> Left() const {
    std::vector<std::uint32_t> left;
    for (std::uint32_t i = 0; i < size(); ++i) {
      if (!is_taken_[i]) left.push_back(i);
    }
    return left;
  }

 private:
  template <class Map, class Key>
  std::optional<std::uint32_t> Find(const Map& map, const Key& key) const {
    const auto found = map.find(key);
    if (found == map.end() || is_taken_[found->second]) return std::nullopt;
    return found->second;
  }

  ruxcomp::Sections sections_;
  std::vector<bool> is_taken_;
  std::size_t count_left_;
  std::unordered_map<std::uint32_t, std::uint32_t> by_id_;
  std::unordered_map<std::string_view, std::uint32_t> by_name_;
};

bool HaveSameLabels(const ruxcomp::Section& a, const ruxcomp::Section& b) {
  return a.has_name() == b.has_name() && a.name() == b.name() && a.id() == b.id();
}

// What a section is apart from its NAME, as a text that others can be compared with.
std::string ContentOf(const ruxcomp::Section& section) {
  std::string content;
  for (const ruxcomp::Entry entry : section.entries()) {
    if (entry.identifier() == RUX_ENTRY_NAME) continue;
    content += machine::KeyOf(section, entry) + '\n';
    for (const ruxcomp::Value value : entry.values()) {
      const compiled::Datum datum = machine::DatumOf(value);
      content += fmt::format("{:x} {} {}\n", language::ClassOf(value.index()), datum.number,
                             datum.IsNumber() ? "" : datum.text);
    }
  }
  return content;
}

// Takes what matches out of both pools.
class KindMatcher {
 public:
  KindMatcher(const language::SectionKind& kind, const ruxcomp::Model& before,
              const ruxcomp::Model& after)
      : kind_(kind),
        before_model_(before),
        after_model_(after),
        before_(before.sections(kind.compiled)),
        after_(after.sections(kind.compiled)) {}

  KindMatch Match() {
    MatchInOrder();
    if (kind_.HasNames() && !before_.empty() && !after_.empty()) {
      before_.List();
      after_.List();
      MatchLabels();
      MatchRenamed();
      MatchNames();
      if (!HasIds()) MatchContents();
    }
    const auto is_earlier = [](const Pair& a, const Pair& b) { return a.after < b.after; };
    if (!std::is_sorted(match_.pairs.begin(), match_.pairs.end(), is_earlier))
      std::sort(match_.pairs.begin(), match_.pairs.end(), is_earlier);
    match_.removed = before_.Left();
    match_.added = after_.Left();
    return std::move(match_);
  }

 private:
  void Take(std::uint32_t before, std::uint32_t after) {
    before_.Take(before);
    after_.Take(after);
    match_.pairs.push_back({before, after});
  }

  // Most sections are where they were. Those without names have nothing else to go by.
  void MatchInOrder() {
    for (std::uint32_t i = 0; i < std::min(before_.size(), after_.size()); ++i) {
      if (!kind_.HasNames() || HaveSameLabels(before_[i], after_[i])) Take(i, i);
    }
  }

  void MatchLabels() {
    for (const std::uint32_t i : before_.Left()) {
      const std::optional<std::uint32_t> other = after_.Named(before_[i].name());
      if (other && HaveSameLabels(before_[i], after_[*other])) Take(i, *other);
    }
  }

  void MatchRenamed() {
    for (const std::uint32_t i : before_.Left()) {
      const std::optional<std::uint32_t> id = before_[i].id();
      const std::optional<std::uint32_t> other = id ? after_.WithId(*id) : std::nullopt;
      if (!other || after_.Named(before_[i].name()) || before_.Named(after_[*other].name()))
        continue;
      Take(i, *other);
    }
  }

  void MatchNames() {
    for (const std::uint32_t i : before_.Left()) {
      const std::optional<std::uint32_t> other = after_.Named(before_[i].name());
      if (other) Take(i, *other);
    }
  }

  bool HasIds() const {
    return std::any_of(kind_.templates.begin(), kind_.templates.end(),
                       [](const auto& row) { return row.identifier == language::ENTRY_ID; });
  }

  // The sections that are left by what they are; kMany where several are the same.
  static constexpr std::uint32_t kMany = 0xFFFFFFFF;
  using ByContent = std::map<std::string, std::uint32_t>;
  ByContent Contents(const Pool& pool, const ruxcomp::Model& model) const {
    ByContent contents;
    Members members = MembersOf(model);
    for (const std::uint32_t i : pool.Left()) {
      std::string content = ContentOf(pool[i]) + members[pool[i].name()];
      if (const ruxcomp::TableCells* cells =
              kind_.source == language::SECTION_TABLE ? model.table(i) : nullptr)
        content.append(cells->begin(), cells->end());
      const auto [place, is_new] = contents.emplace(std::move(content), i);
      if (!is_new) place->second = kMany;
    }
    return contents;
  }

  // What refers to sections by their NAMEs: groups are what is in them.
  using Members = std::unordered_map<std::string_view, std::string>;
  Members MembersOf(const ruxcomp::Model& model) const {
    Members members;
    for (const language::Reference& row : language::kReferences) {
      if (row.target != kind_.source || row.key != language::ENTRY_NAME) continue;
      const std::uint32_t identifier = language::FindEntryRow(row.entry)->compiled;
      const language::SectionKind& kind = language::KindOf(row.section);
      for (const ruxcomp::Section section : model.sections(kind.compiled)) {
        members[section.entry(identifier).value().text()] +=
            fmt::format("{} {} {}\n", kind.keyword, section.id().value_or(0), section.name());
      }
    }
    return members;
  }

  void MatchContents() {
    if (before_.empty() || after_.empty()) return;
    const ByContent contents = Contents(after_, after_model_);
    for (const auto& [content, i] : Contents(before_, before_model_)) {
      const auto other = contents.find(content);
      if (i != kMany && other != contents.end() && other->second != kMany) Take(i, other->second);
    }
  }

  const language::SectionKind& kind_;
  const ruxcomp::Model& before_model_;
  const ruxcomp::Model& after_model_;
  Pool before_;
  Pool after_;
  KindMatch match_;
};

}  // namespace

KindMatch MatchKind(const language::SectionKind& kind, const ruxcomp::Model& before,
                    const ruxcomp::Model& after) {
  return KindMatcher(kind, before, after).Match();
}

}  // namespace rux::diff
