#include "frontend/split.h"

std::string_view Splitter::Next() {
  // The next quote is searched again only once it was passed: a long list has none.
  if (quote_ != kEnd && quote_ < next_) quote_ = text_.find('"', next_);
  const std::size_t start = next_;
  std::size_t comma = text_.find(',', start);
  std::string_view part = text_.substr(start, comma - start);
  if (quote_ != kEnd && quote_ <= comma) {
    const std::size_t closing = text_.find('"', quote_ + 1);
    part = text_.substr(quote_ + 1, closing - quote_ - 1);
    comma = closing == kEnd ? kEnd : text_.find(',', closing + 1);
  }
  next_ = comma == kEnd ? kEnd : comma + 1;
  return part;
}

void SplitItems(std::string_view value, std::vector<std::string>& items) {
  for (Splitter parts(value); !parts.IsAtEnd();) items.emplace_back(parts.Next());
}
