#include "format/format.h"

#include <cstddef>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "findings/message_rows.h"
#include "format/alignment.h"
#include "format/blank_lines.h"
#include "format/same_meaning.h"
#include "format/untouched.h"
#include "reader/byte_order_mark.h"
#include "reader/script.h"
#include "reader/syntax_tree.h"

namespace rux::format {
namespace {

using ruxcomp::reader::Problem;
using ruxcomp::reader::SyntaxTree;

std::string Joined(const std::vector<std::string>& lines) {
  std::size_t size = 0;
  for (const std::string& line : lines) size += line.size();
  std::string text;
  text.reserve(size);
  for (const std::string& line : lines) text += line;
  return text;
}

std::string FormattedText(const SyntaxTree& tree, const Options& options) {
  const std::vector<bool> untouched = UntouchedLines(tree);
  const std::vector<std::string> lines = AlignedLines(tree, untouched);
  const std::string text =
      options.blank_lines ? WithBlankLines(tree, lines, untouched) : Joined(lines);
  return ruxcomp::reader::StartsWithMark(tree.text()) ? std::string(ruxcomp::reader::kMark) + text
                                                      : text;
}

}  // namespace

Formatted Format(const std::string& text, const Options& options) {
  std::optional<Refusal> refusal;
  const auto refuse = [&](const Problem& problem) {
    if (refusal) return;
    refusal = {problem.line, std::string(ruxcomp::findings::RowOf(problem.message).wording)};
  };
  const SyntaxTree tree(text, refuse);
  if (refusal) return {text, refusal};
  std::string formatted = FormattedText(tree, options);
  if (formatted == text) return {text, std::nullopt};
  bool is_refused = false;
  const SyntaxTree written(formatted, [&](const Problem&) { is_refused = true; });
  if (is_refused || !MeanTheSame(tree, written, !options.blank_lines)) {
    return {text, Refusal{1, kReadDifferently}};
  }
  return {std::move(formatted), std::nullopt};
}

}  // namespace rux::format
