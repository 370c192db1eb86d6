#include "tests/tool/decompile/model_compare.h"

#include <algorithm>
#include <sstream>
#include <vector>

namespace {

// Every fact that must be the same, a line each, in the order of the file.
std::vector<std::string> FactsOf(const rux::compiled::DebugMeta& meta) {
  std::vector<std::string> facts;
  const auto add = [&](const auto&... parts) {
    std::ostringstream fact;
    ((fact << '<' << parts << '>'), ...);
    facts.push_back(fact.str());
  };
  for (const rux::compiled::DebugWord& word : meta.words) add("word", word.name, word.value);
  for (const std::vector<rux::compiled::DebugSection>& kind : meta.kinds) {
    for (const rux::compiled::DebugSection& section : kind) {
      if (section.name == "INCLUDE") continue;
      add("section", section.identifier, section.notation, section.name);
      for (const rux::compiled::DebugEntry& entry : section.entries) {
        add("entry", entry.identifier, entry.notation, entry.name, entry.payload_type,
            entry.value_type);
        for (const rux::compiled::DebugField& field : entry.fields) {
          add("field", field.is_list, field.texts.size());
          for (const std::string& text : field.texts) add("text", text);
        }
      }
    }
  }
  return facts;
}

}  // namespace

std::string DifferenceOf(const rux::compiled::DebugMeta& one,
                         const rux::compiled::DebugMeta& other) {
  const std::vector<std::string> facts = FactsOf(one);
  const std::vector<std::string> other_facts = FactsOf(other);
  const auto [here, there] =
      std::mismatch(facts.begin(), facts.end(), other_facts.begin(), other_facts.end());
  if (here == facts.end() && there == other_facts.end()) return "";
  return (here == facts.end() ? "nothing" : *here) + " became " +
         (there == other_facts.end() ? "nothing" : *there);
}
