// Machines in other forms: arbitrary bytes in every format but dts, which another program reads.
// Each is read, or refused with one line that names the file; all items have an outcome; and what
// was read becomes formatted scripts, the same twice.
#include <cstddef>
#include <cstdint>
#include <set>
#include <string>
#include <string_view>
#include <vector>

#include "format/format.h"
#include "fuzz/target.h"
#include "imports/board.h"
#include "imports/formats.h"
#include "imports/layout.h"
#include "losses/ledger.h"
#include "losses/report.h"
#include "support/failure.h"
#include "support/safe_text.h"
#include "support/text_stream.h"
#include "support/utf8.h"

namespace {

using fuzz::Expect;
using rux::imports::Board;
using rux::imports::Limit;
using rux::imports::ScriptFile;
using rux::imports::Sensor;
using rux::losses::Ledger;

constexpr char kPath[] = "board.txt";

bool IsBoard(const rux::imports::Format& format, const std::string& bytes, Board& board,
             Ledger& ledger) {
  try {
    board = format.read({{kPath, bytes}}, {}, ledger);
    return true;
  } catch (const rux::support::Failure& failure) {
    const std::string_view text = failure.what();
    Expect(text.find(kPath) != std::string_view::npos, "a refusal names the file");
    Expect(text.find('\n') == std::string_view::npos, "a refusal is one line");
    Expect(rux::support::IsUtf8(text), "a refusal is text");
    return false;
  }
}

void ExpectWhole(const Board& board) {
  for (const Sensor& sensor : board.sensors) {
    Expect(sensor.area < board.areas.size(), "a sensor is in an area");
    Expect(!sensor.device || *sensor.device < board.devices.size(), "its device is there");
    std::set<int> entries;
    for (const Limit& limit : sensor.limits)
      Expect(entries.insert(limit.entry).second, "no limit is there twice");
  }
}

std::vector<ScriptFile> Scripts(const Board& board, Ledger& ledger) {
  std::vector<ScriptFile> files = rux::imports::LayOut(board, {}, ledger);
  for (const ScriptFile& file : files) {
    if (file.name.front() == '.') continue;
    rux::format::Options options;
    options.blank_lines = true;
    const rux::format::Formatted formatted = rux::format::Format(file.text, options);
    Expect(!formatted.refusal && formatted.text == file.text, "scripts are formatted");
  }
  return files;
}

void ExpectOutcomes(const Ledger& ledger) {
  std::size_t sum = 0;
  for (const std::size_t count : ledger.Counts()) sum += count;
  Expect(sum == ledger.entries().size(), "every item has one outcome");
  const std::string text = rux::support::WrittenText(
      [&](rux::support::TextStream& out) { rux::losses::WriteText(ledger, out); });
  Expect(rux::support::AreSafeLines(text), "no text of a source controls a terminal");
}

}  // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string bytes(data, data + size);
  for (const rux::imports::Format& format : rux::imports::Formats()) {
    if (format.name == "dts") continue;
    Board board;
    Ledger ledger;
    if (!IsBoard(format, bytes, board, ledger)) continue;
    ExpectWhole(board);
    Ledger again = ledger;
    const std::vector<ScriptFile> files = Scripts(board, ledger);
    const std::vector<ScriptFile> same = Scripts(board, again);
    Expect(files.size() == same.size(), "the same files");
    for (std::size_t i = 0; i < files.size(); ++i)
      Expect(files[i].text == same[i].text, "the same bytes");
    ExpectOutcomes(ledger);
  }
  return 0;
}
