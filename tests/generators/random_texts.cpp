#include "tests/generators/random_texts.h"

#include <ios>
#include <sstream>

namespace {

std::string Pieces(Random& random, const std::vector<std::string>& pieces, std::uint32_t most) {
  std::string text;
  for (std::uint32_t count = random.Between(1, most); count > 0; --count) {
    text += random.Pick(pieces);
  }
  return text;
}

std::string Hexadecimal(std::uint32_t number, bool capitals) {
  std::ostringstream text;
  text << std::hex << (capitals ? std::uppercase : std::nouppercase) << number;
  return text.str();
}

}  // namespace

std::string RandomText(Random& random) {
  static const std::vector<std::string> pieces = {
      "a",    "Z",        "7",    "0x", " ", "\t",   ",",    "#",  ";",
      "=",    "[",        "]",    "\\", "'", "%",    "%s",   "\r", "\x01",
      "\x7F", "\xC3\xA4", "\xFF", "/",  ".", "word", "ARG1", "G_", "VALUE_"};
  const std::string text = Pieces(random, pieces, random.Chance(1) ? 2000 : 8);
  // Where it is read as a number, this is no text but an error.
  return text == "0x" ? "0x0" : text;
}

std::string RandomKey(Random& random, const std::string& beginning) {
  // A comment sign after a blank would end the key, and so would a blank at its end.
  static const std::vector<std::string> pieces = {"a",   "_",  "9",  "-",        "[",    "]",
                                                  ",",   "\\", ".",  "'",        "\r",   " b",
                                                  "\tc", "d#", "e;", "\xC3\xA4", "\x01", "\xFF"};
  std::string key = beginning + Pieces(random, pieces, 4);
  if (random.Chance(20)) key += '"' + RandomText(random) + '"' + Pieces(random, pieces, 2);
  return key;
}

std::string RandomName(Random& random, const std::string& beginning) {
  while (true) {
    const std::string name = RandomKey(random, beginning);
    if (name.find('"') == std::string::npos) return name;
  }
}

std::string RandomNumber(Random& random, std::uint32_t number) {
  static const std::vector<std::string> decimal_prefixes = {"", "", "0", "00"};
  static const std::vector<std::string> hexadecimal_prefixes = {"0x", "0x", "0X", "0x0"};
  static const std::vector<std::string> suffixes = {"", "", "", " pcs", "h"};
  while (true) {
    const std::string text =
        (random.Chance(50)
             ? random.Pick(decimal_prefixes) + std::to_string(number)
             : random.Pick(hexadecimal_prefixes) + Hexadecimal(number, random.Chance(50))) +
        random.Pick(suffixes);
    if (text.size() <= 10) return text;
  }
}

std::string RandomOddNumber(Random& random) {
  static const std::vector<std::string> numbers = {
      " 7",         "\t12",       "\r3 4",      "+5",         "-1",         "-2 x",
      "4294967295", "4294967296", "9999999999", "0xFFFFFFFF", "0x00000000", "0000000000",
      "0b1",        "0x0x5",      "0 7",        "08",         "0X0g"};
  return random.Pick(numbers);
}
