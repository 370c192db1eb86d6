#include "frontend/interned_string.h"

#include <array>
#include <cstddef>
#include <string_view>

#include "frontend/arena.h"
#include "frontend/obj.h"
#include "frontend/text.h"
#include "ruxcomp/language/entries.h"

namespace ruxcomp::core {

const Text InternedString::kEmpty;

std::array<const Text*, ruxcomp::language::kEntryCount> InternedString::m_keywords;

InternedString::InternedString(std::string_view text) {
  if (text.empty()) return;
  const auto found = m_texts.find(text);
  if (found != m_texts.end()) {
    text_ = found->second;
    return;
  }
  text_ = &CRUXObj::m_arena.Make<Text>(CRUXObj::m_arena.Add(text));
  m_texts.emplace(*text_, text_);
}

InternedString InternedString::OfKeyword(const ruxcomp::language::EntryRow& row) {
  const Text*& known = m_keywords[static_cast<std::size_t>(&row - ruxcomp::language::kEntries)];
  InternedString name;
  if (known) {
    name.text_ = known;
  } else {
    name = KeywordOf(row);
    known = name.text_;
  }
  return name;
}

void InternedString::DropTexts() {
  m_texts.clear();
  m_keywords = {};
}

}  // namespace ruxcomp::core
