#include "frontend/split.h"

void SplitItems(std::string_view value, std::vector<std::string>& items) {
  for (Splitter parts(value); !parts.IsAtEnd();) items.emplace_back(parts.Next());
}
