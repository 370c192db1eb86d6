#include "losses/ledger.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <string>
#include <utility>

namespace rux::losses {

void Ledger::BeginFile(std::string path) { files_.push_back(std::move(path)); }

ItemId Ledger::Note(Item item) {
  const auto file = static_cast<std::uint32_t>(files_.size() - 1);
  entries_.push_back({file, std::move(item), Outcome::kDropped, Reason::kNotUnderstood, ""});
  is_decided_.push_back(false);
  return static_cast<ItemId>(entries_.size() - 1);
}

Entry* Ledger::Raise(ItemId id, Outcome outcome) {
  if (id == kNoItem) return nullptr;
  Entry& entry = entries_[id];
  if (is_decided_[id] && outcome <= entry.outcome) return nullptr;
  is_decided_[id] = true;
  entry.outcome = outcome;
  return &entry;
}

void Ledger::Used(ItemId id) { Raise(id, Outcome::kUsed); }

void Ledger::Changed(ItemId id, std::string after, Reason reason) {
  Entry* const entry = Raise(id, Outcome::kChanged);
  if (entry == nullptr) return;
  entry->after = std::move(after);
  entry->reason = reason;
}

void Ledger::Dropped(ItemId id, Reason reason) {
  Entry* const entry = Raise(id, Outcome::kDropped);
  if (entry != nullptr) entry->reason = reason;
}

std::string Ledger::PlaceOf(ItemId id) const {
  const Entry& entry = entries_[id];
  const std::string& file = files_[entry.file];
  return entry.item.line == 0 ? file : file + ':' + std::to_string(entry.item.line);
}

std::array<std::size_t, kOutcomes> Ledger::Counts() const {
  std::array<std::size_t, kOutcomes> counts = {};
  for (const Entry& entry : entries_) ++counts[static_cast<std::size_t>(entry.outcome)];
  return counts;
}

bool Ledger::HasLosses() const { return std::any_of(entries_.begin(), entries_.end(), IsLost); }

bool IsLost(const Entry& entry) {
  return entry.outcome != Outcome::kUsed && RowOf(entry.reason).weight == Weight::kLost;
}

}  // namespace rux::losses
