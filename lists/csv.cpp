#include "lists/csv.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "lists/list.h"
#include "support/failure.h"

namespace rux::lists {
namespace {

class CsvReader {
 public:
  CsvReader(const std::string& path, std::string_view text, char separator)
      : path_(path), text_(text), separator_(separator) {}

  std::vector<FieldLine> Read() {
    while (at_ < text_.size()) {
      if (TakeLineEnd()) continue;
      lines_.push_back({line_, {}});
      do lines_.back().fields.push_back(Field());
      while (Take(separator_));
      if (at_ < text_.size() && !TakeLineEnd()) Refuse("text after a field in double quotes");
    }
    return std::move(lines_);
  }

 private:
  [[noreturn]] void Refuse(const char* what) const {
    throw support::Failure(support::ExitStatus::kTrouble, "{}:{}: {}", path_, line_, what);
  }

  bool Take(char c) {
    if (at_ >= text_.size() || text_[at_] != c) return false;
    ++at_;
    return true;
  }

  bool TakeLineEnd() {
    const std::size_t begin = at_;
    Take('\r');
    if (Take('\n') || (at_ == text_.size() && at_ > begin)) {
      ++line_;
      return true;
    }
    at_ = begin;
    return false;
  }

  std::string Field() { return Take('"') ? QuotedField() : PlainField(); }

  std::string PlainField() {
    const char ends[] = {separator_, '\n', '"', '\0'};
    std::size_t end = std::min(text_.find_first_of(ends, at_), text_.size());
    if (end < text_.size() && text_[end] == '"')
      Refuse("a double quote in a field that does not begin with one");
    const bool is_line_end = end == text_.size() || text_[end] == '\n';
    if (is_line_end && end > at_ && text_[end - 1] == '\r') --end;
    std::string field(text_.substr(at_, end - at_));
    at_ = end;
    return field;
  }

  std::string QuotedField() {
    std::string field;
    for (;;) {
      const std::size_t end = text_.find('"', at_);
      if (end == std::string_view::npos) Refuse("a double quote without its end");
      field += text_.substr(at_, end - at_);
      at_ = end + 1;
      if (!Take('"')) break;
      field += '"';
    }
    line_ += static_cast<std::uint32_t>(std::count(field.begin(), field.end(), '\n'));
    return field;
  }

  const std::string& path_;
  const std::string_view text_;
  const char separator_;
  std::size_t at_ = 0;
  std::uint32_t line_ = 1;
  std::vector<FieldLine> lines_;
};

}  // namespace

std::vector<FieldLine> ReadCsv(const std::string& path, std::string_view text, char separator) {
  return CsvReader(path, text, separator).Read();
}

std::vector<FieldLine> ReadBars(std::string_view text) {
  std::vector<FieldLine> lines;
  std::uint32_t number = 0;
  while (!text.empty()) {
    const std::size_t end = std::min(text.find('\n'), text.size());
    std::string_view line = text.substr(0, end);
    text.remove_prefix(std::min(end + 1, text.size()));
    ++number;
    if (Trimmed(line).empty()) continue;
    lines.push_back({number, {}});
    for (std::size_t bar = 0; bar != std::string_view::npos;) {
      bar = line.find('|');
      lines.back().fields.emplace_back(Trimmed(line.substr(0, bar)));
      if (bar != std::string_view::npos) line.remove_prefix(bar + 1);
    }
  }
  return lines;
}

std::string_view FirstLine(std::string_view text) { return text.substr(0, text.find('\n')); }

char SeparatorOf(std::string_view text) {
  const std::string_view line = FirstLine(text);
  char separator = ',';
  std::ptrdiff_t most = 0;
  for (const char c : {',', ';', '\t'}) {
    const std::ptrdiff_t count = std::count(line.begin(), line.end(), c);
    if (count > most) separator = c;
    most = std::max(most, count);
  }
  return separator;
}

List WithHeader(const std::string& path, std::vector<FieldLine> lines) {
  if (lines.empty()) return {};
  std::vector<std::string> columns = std::move(lines.front().fields);
  lines.erase(lines.begin());
  for (const FieldLine& line : lines) {
    if (line.fields.size() > columns.size()) {
      throw support::Failure(support::ExitStatus::kTrouble,
                             "{}:{}: {} fields, but the first line has {}", path, line.number,
                             line.fields.size(), columns.size());
    }
  }
  return WithColumns(std::move(columns), std::move(lines));
}

List WithColumns(std::vector<std::string> columns, std::vector<FieldLine> lines) {
  List list{std::move(columns), {}};
  list.rows.reserve(lines.size());
  for (FieldLine& line : lines) {
    ListRow& row = list.rows.emplace_back();
    row.line = line.number;
    for (std::size_t i = 0; i < std::min(line.fields.size(), list.columns.size()); ++i) {
      if (!line.fields[i].empty()) row.cells.push_back({i, std::move(line.fields[i])});
    }
  }
  return list;
}

}  // namespace rux::lists
