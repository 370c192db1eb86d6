#include "diff/matching.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string_view>

#include "diff/kind_matcher.h"
#include "machine/value.h"
#include "ruxcomp/language/sections.h"
#include "ruxcomp/language/symbols.h"
#include "ruxcomp/model.h"
#include "ruxcomp/model/handles.h"
#include "ruxcomp/model/value.h"
#include "ruxcomp/records.h"

namespace rux::diff {

namespace language = ruxcomp::language;

std::optional<std::uint32_t> NumberOf(const ruxcomp::Value& value) {
  if (language::ClassOf(value.index()) == language::CLASS_Dword)
    return value.kind() == RUX_DATA_NUMBER ? value.number() : language::kNoNumber;
  return std::nullopt;
}

namespace {

std::size_t PlaceOf(const language::SectionKind& kind) {
  return static_cast<std::size_t>(&kind - language::kSectionKinds);
}

}  // namespace

Matching::Matching(const ruxcomp::Model& before, const ruxcomp::Model& after)
    : before_(before), after_(after) {
  for (const language::SectionKind& kind : language::kSectionKinds) {
    if (!kind.IsCompiled()) continue;
    MatchOf(kind) = MatchKind(kind, before, after);
    if (kind.HasNames()) NoteNames(kind);
  }
}

void Matching::NoteNames(const language::SectionKind& kind) {
  KindMatch& match = MatchOf(kind);
  for (const Pair& pair : match.pairs) {
    const ruxcomp::Section before = before_.sections(kind.compiled)[pair.before];
    const ruxcomp::Section after = after_.sections(kind.compiled)[pair.after];
    if (before.name() != after.name()) {
      match.new_names.emplace(before.name(), after.name());
      match.old_names.emplace(after.name(), before.name());
    }
    if (before.id() && after.id() && *before.id() != *after.id()) {
      match.new_ids.emplace(*before.id(), *after.id());
      match.old_ids.emplace(*after.id(), *before.id());
      has_new_ids_ = true;
    }
  }
}

KindMatch& Matching::MatchOf(const language::SectionKind& kind) { return kinds_[PlaceOf(kind)]; }
const KindMatch& Matching::Of(const language::SectionKind& kind) const {
  return kinds_[PlaceOf(kind)];
}

namespace {

// The same before and after, or before and after a change of what it is called.
template <class Map, class Key>
bool IsSame(const Map& forth, const Map& back, const Key& before, const Key& after) {
  const auto renamed = forth.find(before);
  if (renamed != forth.end()) return renamed->second == after;
  return before == after && back.find(after) == back.end();
}

}  // namespace

bool Matching::AreSame(const ruxcomp::Value& before, const ruxcomp::Value& after) const {
  const std::uint32_t index_class = language::ClassOf(before.index());
  if (index_class != language::ClassOf(after.index())) return false;
  if (language::IsImmediate(before.index())) return before.index() == after.index();
  if (before.kind() != after.kind()) return false;
  if (before.kind() != RUX_DATA_STRING) return before.number() == after.number();
  return AreSameTexts(index_class, before.text(), after.text());
}

bool Matching::AreSameTexts(std::uint32_t index_class, std::string_view before,
                            std::string_view after) const {
  const language::SectionKind* kind = machine::KindOfNames(index_class);
  if (kind == nullptr) return before == after;
  const KindMatch& match = Of(*kind);
  return IsSame(match.new_names, match.old_names, before, after);
}

bool Matching::AreSameParts(const machine::EntryPart& before,
                            const machine::EntryPart& after) const {
  return std::equal(before.items.begin(), before.items.end(), after.items.begin(),
                    after.items.end(), [&](const auto& a, const auto& b) {
                      if (a.row != b.row) return false;
                      if (a.row == nullptr) return true;
                      if (a.IsNumber()) return a.number == b.number;
                      return AreSameTexts(a.row->base, a.text, b.text);
                    });
}

std::uint32_t Matching::NewId(const language::SectionKind& kind, std::uint32_t before) const {
  const auto found = Of(kind).new_ids.find(before);
  return found == Of(kind).new_ids.end() ? before : found->second;
}
std::uint32_t Matching::OldId(const language::SectionKind& kind, std::uint32_t after) const {
  const auto found = Of(kind).old_ids.find(after);
  return found == Of(kind).old_ids.end() ? after : found->second;
}

bool Matching::AreSameIds(const language::SectionKind* kind, const ruxcomp::Value& before,
                          const ruxcomp::Value& after) const {
  if (kind == nullptr || before.kind() != RUX_DATA_NUMBER || after.kind() != RUX_DATA_NUMBER)
    return AreSame(before, after);
  const KindMatch& match = Of(*kind);
  return IsSame(match.new_ids, match.old_ids, before.number(), after.number());
}

bool Matching::AreSameValues(const language::SectionKind* kind, const ruxcomp::Values& before,
                             const ruxcomp::Values& after) const {
  if (before.size() != after.size()) return false;
  for (std::size_t i = 0; i < before.size(); ++i) {
    if (!AreSameIds(kind, before[i], after[i])) return false;
  }
  return true;
}

}  // namespace rux::diff
