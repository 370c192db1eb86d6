// The errors about texts that are too short. Their wording is part of the interface, pinned by
// tests/api/text_errors_test.cpp; standard libraries differ in theirs.
#ifndef FRONTEND_TEXT_ERRORS_H_
#define FRONTEND_TEXT_ERRORS_H_

#include <cstddef>
#include <string_view>

namespace ruxcomp::core {

// Raises std::out_of_range, "basic_string::at": there is no character where one is looked at.
[[noreturn]] void RaiseNoCharacter();

// What follows the first characters of a text. Raises std::out_of_range, "basic_string::substr",
// when it has fewer.
std::string_view TextAfter(std::string_view text, std::size_t characters);

}  // namespace ruxcomp::core

#endif  // FRONTEND_TEXT_ERRORS_H_
