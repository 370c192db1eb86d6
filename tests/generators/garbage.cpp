#include "tests/generators/garbage.h"

namespace {

const std::vector<std::string>& Words() {
  static const std::vector<std::string> words = {"[",
                                                 "]",
                                                 "=",
                                                 "\n",
                                                 ",",
                                                 "\"",
                                                 "\\\n",
                                                 "#",
                                                 ";",
                                                 " ",
                                                 "\t",
                                                 "\r\n",
                                                 "0",
                                                 "0x",
                                                 "-1",
                                                 "1.",
                                                 ".5",
                                                 "G_",
                                                 "P_",
                                                 "VALUE_",
                                                 "VALUE",
                                                 "ARG",
                                                 "ARG1",
                                                 "NAME",
                                                 "ID",
                                                 "PARENT",
                                                 "SENSORS",
                                                 "[DEFINE]\n",
                                                 "[IFDEF]\n",
                                                 "[SENSOR]\n",
                                                 "[TABLE]\n",
                                                 "[GLOBAL]\n",
                                                 "[ACTION]\n",
                                                 "[INCLUDE]\n",
                                                 "[REPEATER]\n",
                                                 "FILE = part1\\part.rux\n",
                                                 "FILE = board.rux\n",
                                                 "BUSTYPE_SIMPLEIOPORT",
                                                 "=\n",
                                                 "= \"\"\n",
                                                 "\xEF\xBB\xBF",
                                                 "%s",
                                                 "%n"};
  return words;
}

std::string AnyByte(Random& random) { return {static_cast<char>(random.Below(256))}; }

std::string Piece(Random& random) {
  return random.Chance(70) ? random.Pick(Words()) : AnyByte(random);
}

}  // namespace

std::string RandomGarbage(Random& random) {
  std::string text;
  for (std::uint32_t pieces = random.Below(400); pieces > 0; --pieces) text += Piece(random);
  return text;
}

void Damage(Random& random, std::string& script) {
  for (std::uint32_t times = random.Between(1, 8); times > 0; --times) {
    const std::size_t at = random.Below(script.size() + 1);
    const std::size_t length = random.Chance(80) ? random.Below(8) : random.Below(300);
    switch (random.Below(4)) {
      case 0:
        script.insert(at, Piece(random));
        break;
      case 1:
        script.erase(at, length);
        break;
      case 2:
        script.insert(random.Below(script.size() + 1), script.substr(at, length));
        break;
      default:
        script.replace(at, 1, AnyByte(random));
    }
  }
}
