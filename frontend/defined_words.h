// The defined words of a script, and the texts that are read as numbers or words.
#ifndef FRONTEND_DEFINED_WORDS_H_
#define FRONTEND_DEFINED_WORDS_H_

#include <cstdint>
#include <map>
#include <string>

namespace ruxcomp::core {

// Filled while a script is read, emptied by CRUXSection::Destory. Names are exact, case included.
extern std::map<std::string, std::uint32_t> g_tblPreDefine;

// Defines a word, or gives a known one another value.
void AddPredDefineValue(const std::string& name, std::uint32_t value);

// Stores the value of a defined word and answers 1; answers 0 and stores nothing for any other.
std::uint32_t GetPreDefinedValue(const std::string& name, std::uint32_t& value);

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

}  // namespace ruxcomp::core

#endif  // FRONTEND_DEFINED_WORDS_H_
