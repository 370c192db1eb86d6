// Prints the rows of the manual's table of what the library and its reader say.
#include <cstdio>
#include <string>

namespace {

// A bar would end the cell.
std::string Escaped(std::string text) {
  for (std::size_t at = 0; (at = text.find('|', at)) != std::string::npos; at += 2) {
    text.insert(at, "\\");
  }
  return text;
}

// Without the line feed.
void Print(std::string text, const char* id) {
  text.pop_back();
  std::printf("| `%s` | `%s` \n", Escaped(text).c_str(), id);
}

}  // namespace

int main() {
#define MESSAGE(name, format, wording, id, ...) Print(format, id);
#include "findings/messages.def"
}
