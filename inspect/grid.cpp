#include "inspect/grid.h"

#include <algorithm>
#include <cstddef>
#include <string>
#include <vector>

#include "support/safe_text.h"
#include "support/terminal.h"
#include "support/wrap.h"

namespace rux::inspect {
namespace {

constexpr std::size_t kGap = 2;  // between columns

std::size_t ColumnsOf(const Cell& cell) {
  std::size_t columns = cell.empty() ? 0 : cell.size() - 1;
  for (const std::string& piece : cell) columns += support::Columns(piece);
  return columns;
}

std::vector<std::size_t> WidthsOf(const std::vector<Row>& rows) {
  std::vector<std::size_t> widths;
  for (const Row& row : rows) {
    widths.resize(std::max(widths.size(), row.size()));
    for (std::size_t i = 0; i < row.size(); ++i) widths[i] = std::max(widths[i], ColumnsOf(row[i]));
  }
  return widths;
}

// The lines without blanks at their ends; what is empty then is left out.
std::string Trimmed(const std::vector<std::string>& lines) {
  std::string text;
  for (const std::string& line : lines) {
    const std::size_t last = line.find_last_not_of(' ');
    if (last == std::string::npos) continue;
    text += (text.empty() ? "" : "\n") + line.substr(0, last + 1);
  }
  return text;
}

}  // namespace

Grid::Grid(const std::vector<Row>& rows, std::size_t labels, support::OutputStyle style)
    : rows_(rows), widths_(WidthsOf(rows)), labels_(labels), style_(style) {
  for (std::size_t i = 0; i < std::min(labels, widths_.size()); ++i) {
    if (widths_[i] > 0) indent_ += widths_[i] + kGap;
  }
  if (indent_ > style.width / 2) indent_ = 2 * kGap;
}

std::string Grid::Text() const {
  std::string text;
  for (const Row& row : rows_) text += RowText(row, style_) + '\n';
  return text;
}

std::string Grid::TextInColumns() const {
  std::vector<std::string> lines;
  std::vector<std::string> shown;
  for (const Row& row : rows_) {
    lines.push_back(RowText(row, {support::kEndless, false}));
    shown.push_back(RowText(row, {support::kEndless, style_.uses_colour}));
  }
  return support::InColumns(lines, shown, style_.width);
}

std::string Grid::RowText(const Row& row, support::OutputStyle style) const {
  std::vector<std::string> lines(1);
  std::size_t column = 0;
  for (std::size_t i = 0; i < row.size(); ++i) {
    if (widths_[i] == 0) continue;
    if (column > indent_ && column + widths_[i] > style.width) {
      lines.emplace_back(indent_, ' ');
      column = indent_;
    }
    lines.back() += CellText(row, i, column, style);
    lines.back().append(widths_[i] - ColumnsOf(row[i]) + kGap, ' ');
    column += widths_[i] + kGap;
  }
  return Trimmed(lines);
}

std::string Grid::CellText(const Row& row, std::size_t i, std::size_t column,
                           support::OutputStyle style) const {
  const bool is_name = labels_ > 1 && i + 1 == labels_ && !row[i].empty();
  return support::Bold(support::WrappedPieces(row[i], style.width, column),
                       is_name && style.uses_colour);
}

}  // namespace rux::inspect
