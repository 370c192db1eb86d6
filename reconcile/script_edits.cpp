#include "reconcile/script_edits.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "diagnostics/diagnostic.h"
#include "fixing/edits.h"
#include "reader/script.h"
#include "reader/syntax_tree.h"
#include "ruxcomp/language/entries.h"
#include "ruxcomp/language/sections.h"

namespace rux::reconcile {
namespace {

namespace reader = ruxcomp::reader;

// Where the sections of a kind have a key: the place of its template; the script's own names come
// after all of these.
std::size_t OrderOf(const ruxcomp::language::SectionKind& kind, std::string_view key) {
  std::size_t order = 0;
  for (const ruxcomp::language::EntryTemplate& row : kind.templates) {
    if (ruxcomp::language::KeywordOf(row.identifier) == key) return order;
    ++order;
  }
  return order;
}

// The first token of a kind; null when the line has none.
const reader::Token* FindToken(const reader::SyntaxTree& tree, const reader::SyntaxLine& line,
                               reader::TokenKind kind) {
  const auto tokens = tree.TokensOf(line);
  const auto* found = std::find_if(tokens.begin(), tokens.end(),
                                   [&](const reader::Token& token) { return token.kind == kind; });
  return found == tokens.end() ? nullptr : found;
}

}  // namespace

ScriptEdits::ScriptEdits(std::string text)
    : tree_(std::make_unique<reader::SyntaxTree>(std::move(text), [](const reader::Problem&) {})) {}

const reader::SyntaxLine* ScriptEdits::FindLine(std::uint32_t line) const {
  const reader::Script& script = tree_->script();
  if (line == 0 || line > script.line_count()) return nullptr;
  return tree_->LineAt(script.LineStart(line));
}

std::optional<std::string_view> ScriptEdits::ValueAt(std::uint32_t line,
                                                     std::string_view key) const {
  const reader::SyntaxLine* found = FindLine(line);
  const reader::Item* item = found == nullptr ? nullptr : tree_->ItemOf(*found);
  if (item == nullptr || item->key != key || item->value.empty()) return std::nullopt;
  return item->value;
}

bool ScriptEdits::HasSectionAt(std::uint32_t line) const {
  const reader::SyntaxLine* found = FindLine(line);
  const bool is_in_section = found != nullptr && tree_->SectionOf(*found) != nullptr;
  return is_in_section && tree_->LinesOf(found->section).begin() == found;
}

void ScriptEdits::Replace(std::uint32_t line, std::string_view value) {
  const reader::SyntaxLine& found = *FindLine(line);
  const reader::Range whole = tree_->RangeOf(found);
  const reader::Range old = tree_->script().RangeOf(tree_->ItemOf(found)->value);
  std::string text = tree_->text().substr(whole.begin, old.begin - whole.begin);
  text.append(value).append(tree_->text(), old.end, whole.end - old.end);
  edits_[found.number].text = std::move(text);
}

void ScriptEdits::Remove(std::uint32_t line) {
  const reader::SyntaxLine& found = *FindLine(line);
  const reader::Token* comment = FindToken(*tree_, found, reader::TokenKind::kComment);
  std::string text;
  if (comment != nullptr) {
    const reader::Range whole = tree_->RangeOf(found);
    const reader::Token* key = FindToken(*tree_, found, reader::TokenKind::kKey);
    text = tree_->text().substr(whole.begin, key->begin - whole.begin);
    text.append(tree_->text(), comment->begin, whole.end - comment->begin);
  }
  edits_[found.number].text = std::move(text);
}

void ScriptEdits::Add(const ruxcomp::language::SectionKind& kind, std::uint32_t header,
                      std::string_view key, std::string_view value) {
  const reader::SyntaxLine* after = FindLine(header);
  const std::size_t order = OrderOf(kind, key);
  for (const reader::SyntaxLine& line : tree_->LinesOf(after->section)) {
    const reader::Item* item = tree_->ItemOf(line);
    if (item != nullptr && OrderOf(kind, item->key) <= order) after = &line;
  }
  std::string& added = edits_[after->number].added[order];
  added += NewLine(*after, key, value);
}

std::string ScriptEdits::NewLine(const reader::SyntaxLine& before, std::string_view key,
                                 std::string_view value) const {
  const std::string& text = tree_->text();
  const reader::Range whole = tree_->RangeOf(before);
  const reader::Token* first = FindToken(*tree_, before, reader::TokenKind::kKey);
  const reader::Token* equals = FindToken(*tree_, before, reader::TokenKind::kEquals);
  std::string line;
  if (first != nullptr) line = text.substr(whole.begin, first->begin - whole.begin);
  line += key;
  const reader::Item* item = tree_->ItemOf(before);
  const bool is_tight =
      equals != nullptr && text[equals->begin - 1] != ' ' && text[equals->begin - 1] != '\t';
  if (first != nullptr && equals != nullptr && !is_tight) {
    const std::size_t width = equals->begin - first->begin;
    line.append(width > key.size() ? width - key.size() : 1, ' ');
  } else if (!is_tight) {
    line += ' ';
  }
  const bool has_value = is_tight && item != nullptr && !item->value.empty();
  const bool is_close =
      has_value && tree_->script().RangeOf(item->value).begin == equals->begin + 1;
  line.append(is_close ? "=" : "= ").append(value);
  const bool has_crlf = whole.size() > 1 && text.compare(whole.end - 2, 2, "\r\n") == 0;
  return line + (has_crlf ? "\r\n" : "\n");
}

std::string ScriptEdits::Text() const {
  std::vector<diagnostics::Fix> fixes;
  for (const auto& [number, edit] : edits_) {
    const reader::Range whole = tree_->RangeOf(*FindLine(number));
    diagnostics::Fix fix;
    fix.range = {whole.begin, whole.end};
    fix.text = edit.text ? *edit.text : tree_->text().substr(whole.begin, whole.size());
    const bool has_end = fix.text.empty() || fix.text.back() == '\n';
    if (!edit.added.empty() && !has_end) fix.text += '\n';
    for (const auto& [order, lines] : edit.added) fix.text += lines;
    fixes.push_back(std::move(fix));
  }
  return fixing::Fixed(tree_->text(), std::move(fixes));
}

}  // namespace rux::reconcile
