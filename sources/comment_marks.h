// Comments that are meant for rux: they begin with a mark, such as "rux: allow".
#ifndef SOURCES_COMMENT_MARKS_H_
#define SOURCES_COMMENT_MARKS_H_

#include <string_view>

namespace rux::sources {

// Whether nothing but the sign of a comment is there, which may be repeated. A backslash may have
// joined lines before it.
bool BeginsComment(std::string_view text);

// Whether a mark ends before that text: a longer word is another one.
bool EndsMark(std::string_view rest);

// Whether a comment, from its sign on, has the mark.
bool HasMark(std::string_view comment, std::string_view mark);

}  // namespace rux::sources

#endif  // SOURCES_COMMENT_MARKS_H_
