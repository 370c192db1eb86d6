// Logs that name sensors, with what a machine says about these.
#ifndef BROWSE_LOG_FILTER_H_
#define BROWSE_LOG_FILTER_H_

#include <cstddef>
#include <cstdint>
#include <map>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "machine/machine.h"
#include "support/text_stream.h"

namespace rux::browse {

// Where a line names a sensor: a text with one of
//
//   {name}   its NAME
//   {id}     its ID, a decimal number, or a hexadecimal one after 0x
//   {hex}    its ID, hexadecimal digits
//
// in it. At an end that is a letter, a digit, a low line or one of these, the line has no further
// such character.
class LogPattern {
 public:
  enum class Field : std::uint8_t { kName, kId, kHex };

  // Throws a Failure of wrong usage for a text without exactly one of them.
  explicit LogPattern(const std::string& text);

  const std::string& before() const { return before_; }
  const std::string& after() const { return after_; }
  Field field() const { return field_; }

 private:
  std::string before_;
  std::string after_;
  Field field_ = Field::kName;
};

// Without any of the user's own: NAMEs, and IDs as 0x101.
std::vector<LogPattern> PatternsOf(const std::vector<std::string>& texts);

class LogFilter {
 public:
  // The machine must outlive the filter.
  LogFilter(const machine::Machine& machine, std::vector<LogPattern> patterns);

  // Takes the next bytes of a log, of any kind. Writes them unchanged, with "[#0x101 CPU0_TEMP,
  // THRESHOLD_FH 100, cpu.rux:12]" after each sensor that they name. A name may go on in the next
  // bytes: the last ones wait for these, but for at most a few hundred. Takes a time in proportion
  // to the bytes.
  void Add(std::string_view bytes, support::TextStream& out);
  // What waits.
  void End(support::TextStream& out);

 private:
  using Ordinal = std::uint32_t;
  static constexpr Ordinal kNone = 0xFFFFFFFF;

  // A tree of names, by the bytes from one node to the next.
  struct Names {
    std::map<std::pair<std::uint32_t, char>, std::uint32_t> next;
    std::vector<Ordinal> sensors = {kNone};  // by nodes

    void Add(std::string_view name, Ordinal sensor);
  };

  // What a pattern finds at a place.
  struct Match {
    std::size_t end = 0;  // in the waiting bytes; 0: nothing
    Ordinal sensor = kNone;
  };

  void Annotate(std::size_t end, support::TextStream& out);
  Match MatchAt(std::size_t at) const;
  Match MatchOf(const LogPattern& pattern, std::size_t at) const;
  Match NameAt(const LogPattern& pattern, std::size_t at) const;
  Match IdAt(const LogPattern& pattern, std::size_t at) const;
  bool EndsAt(const LogPattern& pattern, std::size_t at) const;
  const std::string& TextOf(Ordinal ordinal);

  const machine::Machine& machine_;
  const std::vector<LogPattern> patterns_;
  Names names_;
  std::map<Ordinal, std::string> texts_;  // as they were needed
  std::size_t longest_ = 0;               // match, and the byte after it
  std::string waiting_;
  char last_ = '\n';  // before the waiting bytes
};

}  // namespace rux::browse

#endif  // BROWSE_LOG_FILTER_H_
