#include "reader/script.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "reader/recorded_line.h"
#include "reader/scanner.h"

namespace ruxcomp::reader {

Script::Script(std::string text, const ProblemSink& report)
    : text_(std::move(text)), arena_(text_) {
  Reserve();
  Scan(text_, {arena_, sections_, items_}, report);
}

Script::Script(std::string text, const ProblemSink& report, const LineRecorder& record)
    : text_(std::move(text)), arena_(text_) {
  Reserve();
  Scan(text_, {arena_, sections_, items_}, report, record);
}

// No more items than one for each line; what is not used of it is never touched.
void Script::Reserve() { items_.reserve(line_count()); }

void Script::DropSections() {
  sections_ = std::vector<Section>();
  items_ = std::vector<Item>();
  line_starts_ = std::vector<std::uint32_t>();
  arena_ = Arena(text_);
}

void Script::ScanAgain() {
  DropSections();
  Reserve();
  Scan(text_, {arena_, sections_, items_}, [](const Problem&) {});
}

bool Script::Holds(const Item& item) const {
  const std::less<> is_before;
  const Item* begin = items_.data();
  return !is_before(&item, begin) && is_before(&item, begin + items_.size());
}

ItemPlace Script::PlaceOf(const Item& item) const {
  const auto begins_after = [](const Item* wanted, const Section& section) {
    return std::less<>()(wanted, section.items);
  };
  // A section without items begins where the next one does, so the last of them is the right one.
  const auto after = std::upper_bound(sections_.begin(), sections_.end(), &item, begins_after);
  return {static_cast<std::size_t>(after - sections_.begin()) - 1,
          static_cast<std::size_t>(&item - after[-1].items)};
}

Range Script::RangeOf(std::string_view view) const {
  // The byte before an empty one may be on another line than the byte after it.
  const std::uint32_t end = arena_.OffsetOf(view.data() + view.size() - 1) + 1;
  return {view.empty() ? end : arena_.OffsetOf(view.data()), end};
}

std::uint32_t Script::LineAt(std::size_t offset) const {
  const std::vector<std::uint32_t>& starts = LineStarts();
  return static_cast<std::uint32_t>(std::upper_bound(starts.begin(), starts.end(), offset) -
                                    starts.begin());
}

// A line may be long and asked for often, so its end is looked up.
std::string_view Script::Line(std::uint32_t line) const {
  const std::size_t end = line < line_count() ? LineStart(line + 1) : text_.size();
  std::string_view whole = std::string_view(text_).substr(0, end).substr(LineStart(line));
  if (whole.back() != '\n') return whole;
  whole.remove_suffix(1);
  if (!whole.empty() && whole.back() == '\r') whole.remove_suffix(1);
  return whole;
}

Range Script::JoinedLines(std::uint32_t line) const {
  Lines lines(std::string_view(text_).substr(LineStart(line)));
  std::string_view last = lines.Take();
  while (lines.GoesOn(last)) last = lines.Take();
  return {LineStart(line), OffsetOf(last) + static_cast<std::uint32_t>(last.size())};
}

std::uint32_t Script::OffsetOf(std::string_view line) const {
  return static_cast<std::uint32_t>(line.data() - text_.data());
}

const std::vector<std::uint32_t>& Script::LineStarts() const {
  if (line_starts_.empty()) {
    for (Lines lines(text_); !lines.is_at_end();) {
      line_starts_.push_back(OffsetOf(lines.Take()));
    }
  }
  return line_starts_;
}

}  // namespace ruxcomp::reader
