// The number syntax and the operators of a script.
#ifndef CHECKER_NUMBER_H_
#define CHECKER_NUMBER_H_

#include <cstdint>
#include <string>

// Reads a decimal number, or a hexadecimal one after "0x" or "0X", of at most 10 characters.
// Leading white space, a sign and trailing text are let pass ("12abc" is 12, "-1" is 0xFFFFFFFF).
// Answers 1, or 0 when the text is no number; `out` is left alone only when the text is too long.
//
// Raises std::out_of_range for an empty text and for a bare "0x": the digit that would tell a zero
// from no number is looked at where there is none.
std::uint32_t StringToLong(const std::string& text, std::uint32_t& out);

// A number or a defined word, tried in this order; 1 or 0.
std::uint32_t NumberOrWord(const std::string& text, std::uint32_t& out);

// A defined word or a number, tried in this order; 1 or 0.
std::uint32_t WordOrNumber(const std::string& text, std::uint32_t& out);

// The code of an operator; 0 for any other text.
std::uint32_t GetOperator(const std::string& text);
inline constexpr std::uint32_t kFirstComparison = 101;

// Whether `text` begins with `prefix` and goes on behind it: "G_X" has the prefix "G_", "G_" has
// not.
bool HasPrefix(const std::string& text, const char* prefix);

#endif  // CHECKER_NUMBER_H_
