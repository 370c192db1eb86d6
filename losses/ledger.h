// What becomes of the items of a source: each is used, changed or dropped.
#ifndef LOSSES_LEDGER_H_
#define LOSSES_LEDGER_H_

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace rux::losses {

enum class Reason : std::uint8_t {
#define REASON(name, id, weight, sentence) k##name,
#include "losses/reasons.def"
};

enum class Weight : std::uint8_t { kKept, kLost };

struct ReasonRow {
  Reason reason;
  std::string_view id;
  Weight weight;
  std::string_view sentence;
};
inline constexpr ReasonRow kReasons[] = {
#define REASON(name, id, weight, sentence) {Reason::k##name, id, Weight::weight, sentence},
#include "losses/reasons.def"
};
constexpr const ReasonRow& RowOf(Reason reason) {
  return kReasons[static_cast<std::size_t>(reason)];
}

// In the order of their strength: see Ledger.
enum class Outcome : std::uint8_t { kDropped, kUsed, kChanged };
inline constexpr std::string_view kOutcomeWords[] = {"dropped", "used", "changed"};
inline constexpr std::size_t kOutcomes = sizeof kOutcomeWords / sizeof *kOutcomeWords;
constexpr std::string_view WordOf(Outcome outcome) {
  return kOutcomeWords[static_cast<std::size_t>(outcome)];
}

// The smallest thing that a source says.
struct Item {
  std::uint32_t line = 0;  // of the file, from 1; 0: not known
  std::string name;        // how the source refers to it: "/0/Exposes/2/Bus", "temp1_max"
  std::string value;       // as the source has it
};

using ItemId = std::uint32_t;
// For what no item of the source says.
inline constexpr ItemId kNoItem = static_cast<ItemId>(-1);

struct Entry {
  std::uint32_t file;  // its place in Ledger::files()
  Item item;
  Outcome outcome;
  Reason reason;      // unless it is used
  std::string after;  // when it is changed
};

// The outcomes of all items, one each. A reader of a source notes all of its items first; an item
// that gets no outcome after that is dropped as not understood. When an item gets several outcomes,
// changed counts more than used, and used more than dropped; of equal outcomes, the first counts.
// kNoItem is passed over.
class Ledger {
 public:
  // The items that are noted from now on are of that file.
  void BeginFile(std::string path);

  ItemId Note(Item item);
  void Used(ItemId id);
  void Changed(ItemId id, std::string after, Reason reason);
  void Dropped(ItemId id, Reason reason);

  const std::vector<std::string>& files() const { return files_; }
  const std::vector<Entry>& entries() const { return entries_; }  // in the order of their notes
  const Item& ItemOf(ItemId id) const { return entries_[id].item; }
  // "board.json:12", or without a line "board.json".
  std::string PlaceOf(ItemId id) const;

  // By Outcome.
  std::array<std::size_t, kOutcomes> Counts() const;
  // Whether something is gone: an item with a reason that weighs kLost.
  bool HasLosses() const;

 private:
  // The entry, when it is to have that outcome now.
  Entry* Raise(ItemId id, Outcome outcome);

  std::vector<std::string> files_;
  std::vector<Entry> entries_;
  std::vector<bool> is_decided_;
};

bool IsLost(const Entry& entry);

}  // namespace rux::losses

#endif  // LOSSES_LEDGER_H_
