#include "sources/comment_marks.h"

#include <algorithm>
#include <cstddef>
#include <string_view>

#include "reader/value.h"

namespace rux::sources {

using ruxcomp::reader::IsBlank;
using ruxcomp::reader::IsCommentSign;

namespace {

constexpr std::size_t kNowhere = std::string_view::npos;

}  // namespace

bool BeginsComment(std::string_view text) {
  constexpr std::string_view kBlank = " \t\\\r\n";
  const std::size_t sign = text.find_first_not_of(kBlank);
  if (sign == kNowhere || !IsCommentSign(text[sign])) return false;
  const std::string_view comment = text.substr(sign);
  return std::all_of(comment.begin(), comment.end(),
                     [](char c) { return IsCommentSign(c) || IsBlank(c); });
}

bool EndsMark(std::string_view rest) { return rest.empty() || IsBlank(rest.front()); }

bool HasMark(std::string_view comment, std::string_view mark) {
  const std::size_t at = comment.find(mark);
  return at != kNowhere && BeginsComment(comment.substr(0, at)) &&
         EndsMark(comment.substr(at + mark.size()));
}

}  // namespace rux::sources
