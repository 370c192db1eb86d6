// Places and sizes in a drawing, in pixels of a screen: x grows to the right, y downwards.
#ifndef GRAPH_GEOMETRY_H_
#define GRAPH_GEOMETRY_H_

#include <string_view>

#include "support/safe_text.h"

namespace rux::graph {

struct Point {
  int x = 0;
  int y = 0;

  Point operator+(const Point& other) const { return {x + other.x, y + other.y}; }
  bool operator==(const Point& other) const { return x == other.x && y == other.y; }
};

struct Size {
  int width = 0;
  int height = 0;
};

struct Box {
  Point at;  // the upper left corner
  Size size;

  int right() const { return at.x + size.width; }
  int bottom() const { return at.y + size.height; }
};

inline constexpr int kTextPadding = 9;  // of a text in its box

// How wide a text is at 12 pixels, if all characters are equally wide: a column 7.25, which is a
// little more than in the usual fonts.
inline int TextWidth(std::string_view text) {
  return static_cast<int>((support::Columns(text) * 29 + 3) / 4);
}

}  // namespace rux::graph

#endif  // GRAPH_GEOMETRY_H_
