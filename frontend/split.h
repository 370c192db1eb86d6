// Splitting the text of an entry into its comma-separated parts.
#ifndef FRONTEND_SPLIT_H_
#define FRONTEND_SPLIT_H_

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

// Goes through the parts of a text in order: as written, blanks included; of a part with a double
// quote, what stands between it and the next quote, commas included, or up to the end of the text
// when there is none. An empty text has no parts; a trailing comma makes an empty last one.
class Splitter {
 public:
  // The text must outlive the splitter and the parts.
  explicit Splitter(std::string_view text)
      : text_(text), quote_(text.find('"')), next_(text.empty() ? kEnd : 0) {}

  bool IsAtEnd() const { return next_ == kEnd; }

  // The next part; not at the end.
  std::string_view Next();

 private:
  static constexpr std::size_t kEnd = std::string_view::npos;

  const std::string_view text_;
  std::size_t quote_;  // the first one that is not passed yet
  std::size_t next_;   // where the next part begins
};

inline std::string_view Splitter::Next() {
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

// Appends all parts to `items`.
void SplitItems(std::string_view value, std::vector<std::string>& items);

#endif  // FRONTEND_SPLIT_H_
