#include "bench/model/contents.h"

#include <algorithm>
#include <stdexcept>
#include <string>

const Content& ContentNamed(const std::string& name) {
  const auto found = std::find_if(Contents().begin(), Contents().end(),
                                  [&](const Content& content) { return content.name == name; });
  if (found == Contents().end()) throw std::out_of_range("no such content: " + name);
  return *found;
}
