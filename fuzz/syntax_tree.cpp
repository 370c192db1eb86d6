// Any text as a syntax tree: its tokens are the text, and its items those that the reader delivers.
#include "reader/syntax_tree.h"

#include <cstddef>
#include <cstdint>
#include <string>

#include "fuzz/target.h"
#include "reader/script.h"
#include "reader/value.h"
#include "tests/support/tree_fault.h"

namespace {

using fuzz::Expect;
using ruxcomp::reader::Script;

void ExpectSame(const Script& script, const Script& scanned) {
  Expect(script.sections().size() == scanned.sections().size(), "the tree has the same sections");
  for (std::size_t i = 0; i < script.sections().size(); ++i) {
    const auto& section = script.sections()[i];
    const auto& other = scanned.sections()[i];
    Expect(section.name == other.name && section.line == other.line, "sections are the same");
    Expect(section.item_count == other.item_count, "sections have as many items");
    for (std::size_t j = 0; j < section.item_count; ++j) {
      const auto& item = section.items[j];
      Expect(item.key == other.items[j].key && item.line == other.items[j].line &&
                 CookedValue(item) == CookedValue(other.items[j]),
             "items are the same");
    }
  }
}

}  // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string text(data, data + size);
  std::size_t problems = 0;
  const auto count = [&](const ruxcomp::reader::Problem&) { ++problems; };
  const ruxcomp::reader::SyntaxTree tree(text, count);
  const std::size_t of_tree = problems;
  problems = 0;
  const Script script(text, count);
  Expect(problems == of_tree, "the tree reports the same problems");
  ExpectSame(tree.script(), script);
  const std::string fault = tree::FaultOf(tree);
  Expect(fault.empty(), fault.c_str());
  return 0;
}
