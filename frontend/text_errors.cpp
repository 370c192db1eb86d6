#include "frontend/text_errors.h"

#include <cstddef>
#include <stdexcept>
#include <string_view>

namespace ruxcomp::core {

void RaiseNoCharacter() { throw std::out_of_range("basic_string::at"); }

std::string_view TextAfter(std::string_view text, std::size_t characters) {
  if (text.size() < characters) throw std::out_of_range("basic_string::substr");
  return text.substr(characters);
}

}  // namespace ruxcomp::core
