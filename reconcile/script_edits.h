// Edits of entries in the text of a script. All but the lines of these entries stays as it is.
#ifndef RECONCILE_SCRIPT_EDITS_H_
#define RECONCILE_SCRIPT_EDITS_H_

#include <cstddef>
#include <cstdint>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

#include "reader/syntax_tree.h"
#include "ruxcomp/language/sections.h"

namespace rux::reconcile {

class ScriptEdits {
 public:
  explicit ScriptEdits(std::string text);

  // What the script has after the equals sign of the item with that key on a line; none without
  // such an item.
  std::optional<std::string_view> ValueAt(std::uint32_t line, std::string_view key) const;

  // Whether a section begins on the line.
  bool HasSectionAt(std::uint32_t line) const;

  // Puts another value there. Comments stay.
  void Replace(std::uint32_t line, std::string_view value);
  // Takes the item out: the line, or what is before its comment.
  void Remove(std::uint32_t line);
  // Adds an item to the section whose header is on the line, where a section of the kind has that
  // key, in the manner of the item before it.
  void Add(const ruxcomp::language::SectionKind& kind, std::uint32_t header, std::string_view key,
           std::string_view value);

  bool has_edits() const { return !edits_.empty(); }
  // The text with the edits made.
  std::string Text() const;

 private:
  struct LineEdit {
    std::optional<std::string> text;  // in place of the whole line, with its end
    // Lines that come after it, by their place in the section.
    std::map<std::size_t, std::string> added;
  };

  const ruxcomp::reader::SyntaxLine* FindLine(std::uint32_t line) const;
  std::string NewLine(const ruxcomp::reader::SyntaxLine& before, std::string_view key,
                      std::string_view value) const;

  std::unique_ptr<const ruxcomp::reader::SyntaxTree> tree_;
  std::map<std::uint32_t, LineEdit> edits_;  // by the numbers of lines
};

}  // namespace rux::reconcile

#endif  // RECONCILE_SCRIPT_EDITS_H_
