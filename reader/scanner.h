// The syntax of scripts: text in, lines, sections and items out.
#ifndef READER_SCANNER_H_
#define READER_SCANNER_H_

#include <cstddef>
#include <cstdint>
#include <string_view>
#include <vector>

#include "reader/arena.h"
#include "reader/recorded_line.h"
#include "reader/script.h"

namespace ruxcomp::reader {

class Lines {
 public:
  explicit Lines(std::string_view text) : rest_(text) {}

  bool is_at_end() const { return rest_.empty(); }
  std::size_t left() const { return rest_.size(); }
  std::uint32_t taken() const { return taken_; }

  // Takes the next line, without its LF or CRLF; not at the end.
  std::string_view Take() {
    ++taken_;
    const std::size_t line_feed = rest_.find('\n');
    std::string_view line = rest_.substr(0, line_feed);
    if (line_feed == std::string_view::npos) {
      rest_.remove_prefix(rest_.size());
      return line;
    }
    rest_.remove_prefix(line_feed + 1);
    if (!line.empty() && line.back() == '\r') line.remove_suffix(1);
    return line;
  }

  // Whether a backslash joins the next line to the one that was taken last. Nothing follows the
  // last line.
  bool GoesOn(std::string_view line) const {
    return !line.empty() && line.back() == '\\' && !rest_.empty();
  }

 private:
  std::string_view rest_;
  std::uint32_t taken_ = 0;
};

// What a scan fills.
struct Scanned {
  Arena& arena;
  std::vector<Section>& sections;
  std::vector<Item>& items;
};

// What a comment leaves of a line, without the blanks around it; empty when there is nothing else.
std::string_view WithoutComment(std::string_view line);

// Scans the text of a script in one pass. A recorder gets every line.
void Scan(std::string_view text, const Scanned& scanned, const ProblemSink& report);
void Scan(std::string_view text, const Scanned& scanned, const ProblemSink& report,
          const LineRecorder& record);

}  // namespace ruxcomp::reader

#endif  // READER_SCANNER_H_
