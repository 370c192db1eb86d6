#include "losses/ledger.h"

#include <gtest/gtest.h>

#include <array>
#include <cstddef>
#include <cstdint>
#include <fstream>
#include <iterator>
#include <string>

#include "losses/report.h"
#include "support/text_stream.h"

namespace rux::losses {
namespace {

Ledger LedgerWith(std::size_t items) {
  Ledger ledger;
  ledger.BeginFile("board.txt");
  for (std::size_t i = 0; i < items; ++i)
    ledger.Note({static_cast<std::uint32_t>(i + 1), "item" + std::to_string(i), "1"});
  return ledger;
}

using Numbers = std::array<std::size_t, kOutcomes>;

TEST(Ledger, WhatNobodyDecidesIsDropped) {
  const Ledger ledger = LedgerWith(2);
  EXPECT_EQ(ledger.Counts(), (Numbers{2, 0, 0}));
  EXPECT_EQ(ledger.entries()[1].reason, Reason::kNotUnderstood);
}

TEST(Ledger, EachItemCountsOnce) {
  Ledger ledger = LedgerWith(3);
  ledger.Used(0);
  ledger.Used(0);
  ledger.Dropped(1, Reason::kDisabled);
  ledger.Changed(2, "1000", Reason::kScaled);
  EXPECT_EQ(ledger.Counts(), (Numbers{1, 1, 1}));
}

TEST(Ledger, OutcomesOnlyBecomeStronger) {
  Ledger ledger = LedgerWith(3);
  ledger.Dropped(0, Reason::kDuplicate);
  ledger.Dropped(0, Reason::kDisabled);
  ledger.Changed(1, "a", Reason::kRenamed);
  ledger.Changed(1, "b", Reason::kScaled);
  ledger.Used(1);
  ledger.Used(2);
  ledger.Dropped(2, Reason::kDisabled);
  EXPECT_EQ(ledger.entries()[0].reason, Reason::kDuplicate);
  EXPECT_EQ(ledger.entries()[1].after, "a");
  EXPECT_EQ(ledger.entries()[1].reason, Reason::kRenamed);
  EXPECT_EQ(ledger.Counts(), (Numbers{1, 1, 1}));
}

TEST(Ledger, OnlySomeReasonsAreLosses) {
  Ledger ledger = LedgerWith(1);
  EXPECT_TRUE(ledger.HasLosses());
  ledger.Changed(0, "1000", Reason::kScaled);
  EXPECT_FALSE(ledger.HasLosses());
}

TEST(Ledger, NoItemIsPassedOver) {
  Ledger ledger = LedgerWith(1);
  ledger.Used(kNoItem);
  ledger.Changed(kNoItem, "1", Reason::kScaled);
  ledger.Dropped(kNoItem, Reason::kDisabled);
  EXPECT_EQ(ledger.Counts(), (Numbers{1, 0, 0}));
}

TEST(LedgerReport, NamesReasonsWithTheirItemsSafely) {
  Ledger ledger = LedgerWith(3);
  ledger.BeginFile("fans\n.txt");
  ledger.Note({0, "x", "a\x1B[2J"});
  ledger.Used(0);
  ledger.Changed(1, "1000", Reason::kScaled);
  ledger.Dropped(2, Reason::kDisabled);
  EXPECT_EQ(support::WrittenText([&](support::TextStream& out) { WriteText(ledger, out); }),
            "board.txt\n"
            "fans\\x0A.txt\n"
            "4 items: 1 used, 1 changed, 2 dropped\n"
            "\n"
            "changed, scaled (1): a stored number is a whole one: the same amount in a smaller "
            "unit\n"
            "  board.txt:2: item1 = 1 -> 1000\n"
            "\n"
            "dropped, not-understood (1): the meaning of the item is not known here\n"
            "  fans\\x0A.txt: x = a\\x1B[2J\n"
            "\n"
            "dropped, disabled (1): the source says that it is not used\n"
            "  board.txt:3: item2 = 1\n");
}

TEST(LedgerReport, TheSchemaHasAllReasons) {
  std::ifstream file(RUX_DOCS "/losses.schema.json");
  const std::string schema{std::istreambuf_iterator<char>(file), {}};
  std::string reasons;
  for (const ReasonRow& row : kReasons)
    reasons += (reasons.empty() ? "\"" : ", \"") + std::string(row.id) + '"';
  EXPECT_NE(schema.find("\"enum\": [" + reasons + "],"), std::string::npos);
}

}  // namespace
}  // namespace rux::losses
