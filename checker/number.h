// Reading numbers and defined words.
#ifndef CHECKER_NUMBER_H_
#define CHECKER_NUMBER_H_

#include <cstdint>
#include <string>

// Reads a number of the script language (ReadNumber of language/number.h). Answers 1, or 0 when the
// text is not a number; `out` is left alone only when the text is too long.
//
// Raises std::out_of_range, "basic_string::at", for an empty text and for a bare "0x": the digit
// that decides whether the text is a zero is looked at where there is none.
std::uint32_t StringToLong(const std::string& text, std::uint32_t& out);

// A number or a defined word, tried in this order; 1 or 0.
std::uint32_t NumberOrWord(const std::string& text, std::uint32_t& out);

// A defined word or a number, tried in this order; 1 or 0.
std::uint32_t WordOrNumber(const std::string& text, std::uint32_t& out);

#endif  // CHECKER_NUMBER_H_
