#include "decompile/script_text.h"

#include <algorithm>
#include <string>
#include <string_view>
#include <vector>

#include "decompile/script_sections.h"

namespace rux::decompile {
namespace {

constexpr std::string_view kHead =
    R"(# Decompiled from a debug meta file. This script compiles to the same meta file as the script that
# the debug meta file was made of, but a debug meta file does not keep
#   - comments and the layout of lines;
#   - INCLUDE sections: what they included stands here itself;
#   - the order of sections of different kinds, nor that of entries whose keys the section knows;
#   - parts of a value beyond those that the entry takes;
#   - sections and entries that were ignored because their names are unknown;
#   - how the values of DEFINE and IFDEF words were written: they are numbers here, and of several
#     values of a word the last one here is the one that counted.
)";

bool IsBlank(char c) { return c == ' ' || c == '\t'; }
bool IsControl(char c) { return static_cast<unsigned char>(c) < ' ' || c == '\x7F'; }

// Whether a comment would begin in the text, which follows a blank.
bool BeginsComment(std::string_view text) {
  bool after_blank = true;
  for (const char c : text) {
    if (after_blank && (c == '#' || c == ';')) return true;
    after_blank = IsBlank(c);
  }
  return false;
}

bool NeedsQuotes(std::string_view part) {
  return part.empty() || IsBlank(part.front()) || IsBlank(part.back()) ||
         part.back() == '\\' ||  // would join the next line
         part.find(',') != std::string_view::npos ||
         std::any_of(part.begin(), part.end(), IsControl) || BeginsComment(part);
}

void AppendPart(std::string_view part, std::string& text) {
  const std::string_view quote = NeedsQuotes(part) ? "\"" : "";
  text.append(quote).append(part).append(quote);
}

void AppendItem(const ScriptItem& item, std::string& text) {
  text.append(item.entry->name).append(" =");
  const char* separator = " ";
  for (const std::string& part : item.parts) {
    text += separator;
    AppendPart(part, text);
    separator = ", ";
  }
  text += '\n';
}

}  // namespace

std::string ScriptText(const std::vector<ScriptSection>& sections) {
  std::string text(kHead);
  for (const ScriptSection& section : sections) {
    text.append("\n[").append(section.keyword).append("]\n");
    for (const ScriptItem& item : section.items) AppendItem(item, text);
  }
  return text;
}

}  // namespace rux::decompile
