// The text of a script, section by section.
#ifndef IMPORTS_SCRIPT_TEXT_H_
#define IMPORTS_SCRIPT_TEXT_H_

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace rux::imports {

// A text as a value of a script can have it: without line ends, double quotes and what editors do
// not show.
std::string PlainText(std::string_view text);

class ScriptText {
 public:
  // A line of the file's own. `text` is safe, and not what rux takes for an instruction.
  void Comment(std::string_view text);
  void Gap();  // an empty line
  void Section(std::string_view keyword);
  // Of the last section. The value is written as one part, in double quotes where it needs them.
  void Entry(std::string_view key, std::string_view value);
  // The same with a comment, which begins after `width` bytes of the value.
  void Entry(std::string_view key, std::string_view value, std::string_view comment,
             std::size_t width);
  void List(std::string_view key, const std::vector<std::string>& numbers);

  // As rux fmt writes it.
  std::string Text();

 private:
  struct Item {
    std::string key;
    std::string rest;  // of the line, after the '='
  };

  // Writes the items of the last section, with their values in one column: comments after them
  // stay in theirs.
  void WriteItems();

  std::string text_;
  std::vector<Item> items_;
};

// The numbers after the '=' of an item, in lines of a readable length. `column`: where they begin.
std::string ListText(std::size_t column, const std::vector<std::string>& numbers);

// "0x101"
std::string HexText(std::uint32_t number);

}  // namespace rux::imports

#endif  // IMPORTS_SCRIPT_TEXT_H_
