// The defined words of a script: names for numbers, given by DEFINE and IFDEF sections.
#ifndef FRONTEND_PREDEFINE_H_
#define FRONTEND_PREDEFINE_H_

#include <cstdint>
#include <map>
#include <string>

// Filled while a script is read, emptied by CRUXSection::Destory. Names are exact, case included.
extern std::map<std::string, std::uint32_t> g_tblPreDefine;

// Defines a word, or gives a known one another value.
void AddPredDefineValue(const std::string& name, std::uint32_t value);

// Stores the value of a defined word and answers 1; answers 0 and stores nothing for any other.
std::uint32_t GetPreDefinedValue(const std::string& name, std::uint32_t& value);

#endif  // FRONTEND_PREDEFINE_H_
