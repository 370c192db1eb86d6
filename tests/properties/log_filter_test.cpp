// A log filter adds to a log what belongs to each sensor and takes nothing away, in the same way
// however the log is cut into pieces.
#include "browse/log_filter.h"

#include <fmt/format.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "machine/load.h"
#include "machine/machine.h"
#include "support/ascii.h"
#include "support/text_stream.h"
#include "tests/generators/random_texts.h"

namespace {

using rux::browse::LogFilter;
using rux::browse::LogPattern;
using rux::support::TextStream;

const std::vector<LogPattern>& Patterns() {
  static const std::vector<LogPattern> patterns = {LogPattern("{name}"), LogPattern("0x{hex}"),
                                                   LogPattern("s{id}: "), LogPattern("<{name}>")};
  return patterns;
}

// Names and IDs of the example, whole and cut, among other text.
std::string RandomLog(Random& random) {
  static const std::vector<std::string> kPieces = {
      "CPU0_TEMP", "CPU0_",  "TEMP",     "INLET_TEMP", "0x101", "0x",
      "101",       "s257: ", "s0x101: ", "<",          ">",     " ",
      "\n",        "_",      "x",        ": ",         "\xC3",  std::string(1, '\0'),
      "FAN0_A",    "0x301 ", "[",        "s",          "\t",    "0x00"};
  std::string log;
  for (std::uint32_t i = random.Between(1, 60); i > 0; --i)
    log += kPieces[random.Below(kPieces.size())];
  if (random.Chance(10)) log += std::string(random.Between(1, 100000), 'y') + "CPU0_TEMP";
  return log;
}

// Cut into pieces of up to that size.
std::string Filtered(const rux::machine::Machine& machine, std::string_view log, std::size_t size) {
  LogFilter filter(machine, Patterns());
  return rux::support::WrittenText([&](TextStream& out) {
    for (; !log.empty(); log.remove_prefix(std::min(size, log.size())))
      filter.Add(log.substr(0, size), out);
    filter.End(out);
  });
}

// Without what was added, none of which is in the log.
std::string WithoutAdded(std::string text) {
  for (std::size_t at = text.find(" [#0x"); at != std::string::npos; at = text.find(" [#0x", at))
    text.erase(at, text.find(']', at) + 1 - at);
  return text;
}

std::size_t CountIn(std::string_view text, const std::string& wanted) {
  std::size_t count = 0;
  for (std::size_t at = text.find(wanted); at != std::string_view::npos;
       at = text.find(wanted, at + 1))
    ++count;
  return count;
}

// How often the name is in the log by itself, not within a longer one.
std::size_t CountOfWord(const std::string& log, const std::string& name) {
  const auto is_in_word = [](char c) {
    return rux::support::IsLetterOrDigit(c) || c == '_' || static_cast<signed char>(c) < 0;
  };
  std::size_t count = 0;
  for (std::size_t at = log.find(name); at != std::string::npos; at = log.find(name, at + 1)) {
    const std::size_t end = at + name.size();
    const bool begins = at == 0 || !is_in_word(log[at - 1]);
    if (begins && (end == log.size() || !is_in_word(log[end]))) ++count;
  }
  return count;
}

// That each sensor that the log names has what is its own after it.
void ExpectEachNamed(const std::string& log, const std::string& filtered) {
  constexpr const char* kSensors[][2] = {
      {"CPU0_TEMP", "0x101"}, {"FAN0_A", "0x301"}, {"INLET_TEMP", "0x601"}};
  for (const auto& [name, id] : kSensors) {
    const std::string added = fmt::format(" [#{} {},", id, name);
    EXPECT_EQ(CountIn(filtered, name + added) + CountIn(filtered, std::string(name) + '>' + added),
              CountOfWord(log, name))
        << name;
  }
}

TEST(LogFilter, AddsAndTakesNothingAwayHoweverTheLogIsCut) {
  const std::vector<rux::machine::Machine> machines =
      rux::machine::Load({RUX_EXAMPLES "/server/server.rux"}, {});
  const rux::machine::Machine& machine = machines.front();
  std::size_t added = 0;
  for (std::uint32_t seed = 0; seed < 300; ++seed) {
    Random random(seed);
    const std::string log = RandomLog(random);
    const std::string whole = Filtered(machine, log, log.size());
    EXPECT_EQ(WithoutAdded(whole), log) << "seed " << seed;
    ExpectEachNamed(log, whole);
    EXPECT_EQ(Filtered(machine, log, random.Between(1, 7)), whole) << "seed " << seed;
    added += whole.size() > log.size() ? 1 : 0;
  }
  EXPECT_GT(added, 100U);
}

}  // namespace
