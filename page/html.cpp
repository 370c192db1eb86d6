#include "page/html.h"

#include <algorithm>
#include <string_view>

#include "support/markup_text.h"
#include "support/safe_text.h"

namespace rux::page {
namespace {

// Most texts are names and numbers, which are the same in HTML.
bool IsPlain(std::string_view text) {
  return std::all_of(text.begin(), text.end(), [](char c) {
    return c >= ' ' && c <= '~' && c != '&' && c != '<' && c != '>' && c != '"';
  });
}

}  // namespace

Html& Html::operator<<(Text text) {
  if (IsPlain(text.bytes)) return Trusted(text.bytes);
  return Trusted(support::MarkupText(support::SafeText(text.bytes)));
}

Html& Html::operator<<(Line line) {
  if (IsPlain(line.bytes)) return Trusted(line.bytes);
  return Trusted(support::MarkupText(support::SafeLine(line.bytes)));
}

}  // namespace rux::page
