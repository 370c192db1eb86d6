#include "frontend/split.h"

void SplitItems(const std::string& value, std::vector<std::string>& items) {
  if (value.empty()) return;
  std::size_t quote = value.find('"');
  for (std::size_t pos = 0;;) {
    // The next quote is searched again only once it was passed: a long list has none.
    if (quote != std::string::npos && quote < pos) quote = value.find('"', pos);
    std::size_t comma = value.find(',', pos);
    if (quote == std::string::npos || quote > comma) {
      items.emplace_back(value, pos, comma - pos);
    } else {
      const std::size_t closing = value.find('"', quote + 1);
      items.emplace_back(value, quote + 1, closing - quote - 1);
      comma = closing == std::string::npos ? closing : value.find(',', closing + 1);
    }
    if (comma == std::string::npos) return;
    pos = comma + 1;
  }
}
