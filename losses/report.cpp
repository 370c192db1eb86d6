#include "losses/report.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <string>
#include <vector>

#include "losses/ledger.h"
#include "support/json.h"
#include "support/number_text.h"
#include "support/safe_text.h"
#include "support/text_stream.h"

namespace rux::losses {
namespace {

// The order in which people read of them.
constexpr Outcome kShownOutcomes[] = {Outcome::kUsed, Outcome::kChanged, Outcome::kDropped};

std::size_t CountOf(const std::array<std::size_t, kOutcomes>& counts, Outcome outcome) {
  return counts[static_cast<std::size_t>(outcome)];
}

void WriteEntry(const Ledger& ledger, ItemId id, support::TextStream& out) {
  const Entry& entry = ledger.entries()[id];
  out += "  " + support::SafePath(ledger.PlaceOf(id)) + ": " + support::SafeText(entry.item.name);
  if (!entry.item.value.empty()) out += " = " + support::SafeText(entry.item.value);
  if (entry.outcome == Outcome::kChanged) out += " -> " + support::SafeText(entry.after);
  out += '\n';
}

// The entries of that outcome and reason.
std::vector<ItemId> EntriesFor(const Ledger& ledger, Outcome outcome, Reason reason) {
  std::vector<ItemId> ids;
  for (ItemId id = 0; id < ledger.entries().size(); ++id) {
    const Entry& entry = ledger.entries()[id];
    if (entry.outcome == outcome && entry.reason == reason) ids.push_back(id);
  }
  return ids;
}

}  // namespace

std::string CountsText(const Ledger& ledger) {
  const std::array<std::size_t, kOutcomes> counts = ledger.Counts();
  std::string text = support::CountText(ledger.entries().size(), "item");
  const char* before = ": ";
  for (const Outcome outcome : kShownOutcomes) {
    text += before + std::to_string(CountOf(counts, outcome)) + ' ' + std::string(WordOf(outcome));
    before = ", ";
  }
  return text;
}

void WriteText(const Ledger& ledger, support::TextStream& out) {
  for (const std::string& file : ledger.files()) out += support::SafePath(file) + '\n';
  out += CountsText(ledger) + '\n';
  for (const Outcome outcome : {Outcome::kChanged, Outcome::kDropped}) {
    for (const ReasonRow& row : kReasons) {
      const std::vector<ItemId> ids = EntriesFor(ledger, outcome, row.reason);
      if (ids.empty()) continue;
      out += '\n' + std::string(WordOf(outcome)) + ", " + std::string(row.id) + " (" +
             std::to_string(ids.size()) + "): " + std::string(row.sentence) + '\n';
      for (const ItemId id : ids) WriteEntry(ledger, id, out);
    }
  }
}

void WriteJson(const Ledger& ledger, support::TextStream& out) {
  support::WriteJson(out, [&](support::JsonObject& json) {
    json.Schema(1);
    json.Array("files", [&](support::JsonArray& files) { files.Items(ledger.files()); });
    const std::array<std::size_t, kOutcomes> counts = ledger.Counts();
    json.Object("counts", [&](support::JsonObject& numbers) {
      numbers.Member("items", ledger.entries().size());
      for (const Outcome outcome : kShownOutcomes)
        numbers.Member(WordOf(outcome), CountOf(counts, outcome));
      numbers.Member("lost",
                     std::count_if(ledger.entries().begin(), ledger.entries().end(), IsLost));
    });
    json.Objects("items", ledger.entries(), [&](support::JsonObject& item, const Entry& entry) {
      item.Member("file", ledger.files()[entry.file]);
      if (entry.item.line != 0) item.Member("line", entry.item.line);
      item.Member("item", entry.item.name);
      item.Member("before", entry.item.value);
      item.Member("outcome", WordOf(entry.outcome));
      if (entry.outcome == Outcome::kChanged) item.Member("after", entry.after);
      if (entry.outcome != Outcome::kUsed) item.Member("reason", RowOf(entry.reason).id);
    });
  });
}

}  // namespace rux::losses
