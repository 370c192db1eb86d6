// What scripts call numbers.
#ifndef BENCH_MODEL_SCRIPT_WORDS_H_
#define BENCH_MODEL_SCRIPT_WORDS_H_

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <iterator>
#include <stdexcept>

struct Word {
  const char* word;
  std::uint32_t number;
};

inline const Word kValueTypes[] = {
#define VALUE_TYPE(name, word, number) {word, number},
#define BUS_TYPE(name, word, number)
#include "bench/model/value_words.def"
};
inline const Word kBusTypes[] = {
#define VALUE_TYPE(name, word, number)
#define BUS_TYPE(name, word, number) {word, number},
#include "bench/model/value_words.def"
};
inline const Word kOperators[] = {
#define OPERATOR(text, code) {text, code},
#include "ruxcomp/language/operators.def"
};

// What real descriptions have words for, too.
inline const Word kSensorTypes[] = {
    {"ST_TEMPERATURE", 0x01}, {"ST_VOLTAGE", 0x02}, {"ST_CURRENT", 0x03},  {"ST_FAN", 0x04},
    {"ST_INTRUSION", 0x05},   {"ST_LEAK", 0x0A},    {"ST_POWER", 0x0B},    {"ST_PRESENCE", 0x25},
    {"ST_HUMIDITY", 0x42},    {"ST_ENERGY", 0x44},  {"ST_PRESSURE", 0x43}, {"ST_OTHER", 0xC0}};
inline const Word kInitFlags[] = {{"INIT_DISABLED", 0},
                                  {"INIT_ALWAYS", 1},
                                  {"INIT_ON", 2},
                                  {"INIT_POST", 3},
                                  {"INIT_CHASSIS", 4}};
inline const Word kWatchedLimits[] = {
    {"CM_NONE", 0}, {"CM_WH", 1}, {"CM_FH", 2}, {"CM_WL", 4}, {"CM_FL", 8}};
inline const Word kMachineTypes[] = {{"SYS_PART", 1}, {"SYS_BOARD", 2}, {"SYS_EMBEDDED", 3}};

template <std::size_t size>
const char* WordOf(const Word (&words)[size], std::uint32_t number) {
  const auto* found =
      std::find_if(words, std::end(words), [&](const Word& w) { return w.number == number; });
  if (found == std::end(words)) throw std::out_of_range("there is no word for a number");
  return found->word;
}

#endif  // BENCH_MODEL_SCRIPT_WORDS_H_
