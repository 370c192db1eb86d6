#include "support/markup_text.h"

#include <string>
#include <string_view>

namespace rux::support {

std::string MarkupText(std::string_view safe_text) {
  std::string escaped;
  for (const char c : safe_text) {
    switch (c) {
      case '&':
        escaped += "&amp;";
        break;
      case '<':
        escaped += "&lt;";
        break;
      case '>':
        escaped += "&gt;";
        break;
      case '"':
        escaped += "&quot;";
        break;
      default:
        escaped += c;
    }
  }
  return escaped;
}

}  // namespace rux::support
