// Splitting the text of an entry into its comma-separated parts.
#ifndef RUXCOMP_LANGUAGE_PARTS_H_
#define RUXCOMP_LANGUAGE_PARTS_H_

#include <cstddef>
#include <string_view>

namespace ruxcomp::language {

// Goes through the parts of a text in order: as written, blanks included; of a part with a double
// quote, the text between that quote and the next one, commas included, or up to the end of the
// text when there is none. An empty text has no parts; a trailing comma makes an empty last one.
class Splitter {
 public:
  // The text must outlive the splitter and the parts, which point into it.
  explicit constexpr Splitter(std::string_view text)
      : text_(text), next_(text.empty() ? kEnd : 0) {}

  constexpr bool IsAtEnd() const { return next_ == kEnd; }

  // The next part; not at the end.
  constexpr std::string_view Next() {
    // Parts are short: looking at each character takes less than starting a search.
    std::size_t at = next_;
    while (at < text_.size() && text_[at] != ',' && text_[at] != '"') ++at;
    if (at < text_.size() && text_[at] == '"') return NextQuoted(at + 1);
    const std::string_view part(text_.data() + next_, at - next_);
    next_ = at < text_.size() ? at + 1 : kEnd;
    return part;
  }

 private:
  static constexpr std::size_t kEnd = std::string_view::npos;

  // The part whose quote is before `begin`.
  constexpr std::string_view NextQuoted(std::size_t begin) {
    const std::size_t closing = text_.find('"', begin);
    const std::size_t comma = closing == kEnd ? kEnd : text_.find(',', closing + 1);
    next_ = comma == kEnd ? kEnd : comma + 1;
    return text_.substr(begin, closing - begin);
  }

  std::string_view text_;
  std::size_t next_;  // where the next part begins
};

// How many parts there are left.
constexpr std::size_t CountParts(Splitter parts) {
  std::size_t count = 0;
  for (; !parts.IsAtEnd(); ++count) parts.Next();
  return count;
}

// Appends all parts to a list of strings or of views.
template <class List>
void SplitItems(std::string_view text, List& items) {
  for (Splitter parts(text); !parts.IsAtEnd();) items.emplace_back(parts.Next());
}

}  // namespace ruxcomp::language

#endif  // RUXCOMP_LANGUAGE_PARTS_H_
