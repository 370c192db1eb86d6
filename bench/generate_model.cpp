// Writes generated models, see Usage.
#include <cstdlib>
#include <fstream>
#include <iostream>
#include <string>
#include <vector>

#include "bench/model/machine.h"
#include "bench/model/shapes.h"
#include "bench/model/writers.h"

namespace {

int Usage() {
  std::cerr << "usage: generate_model [--rich] LANGUAGE SENSORS FILE   a machine; LANGUAGE:";
  for (const Language& language : Languages()) std::cerr << ' ' << language.name;
  std::cerr << "\n       generate_model SHAPE COUNT FOLDER   FOLDER/main.rux and what it includes\n"
               "       generate_model shapes               lists the shapes\n";
  return 2;
}

int ListShapes() {
  const char* const verdicts[] = {"clean", "warned", "refused"};
  for (const Shape& shape : Shapes()) {
    std::cout << shape.name << ' ' << verdicts[static_cast<std::size_t>(shape.verdict)] << ' '
              << shape.count << ' ' << shape.what << '\n';
  }
  return 0;
}

}  // namespace

int main(int argc, char** argv) {
  std::vector<std::string> arguments(argv + 1, argv + argc);
  const bool rich = !arguments.empty() && arguments[0] == "--rich";
  if (rich) arguments.erase(arguments.begin());
  if (arguments == std::vector<std::string>{"shapes"}) return ListShapes();
  if (arguments.size() != 3) return Usage();
  const auto count = static_cast<std::uint32_t>(std::strtoul(arguments[1].c_str(), nullptr, 10));
  if (!count) return Usage();
  for (const Language& language : Languages()) {
    if (arguments[0] != language.name) continue;
    std::ofstream file(arguments[2], std::ios::binary);
    language.write(MakeMachine(count, rich), file);
    return file.flush() ? 0 : 1;
  }
  for (const Shape& shape : Shapes()) {
    if (arguments[0] != shape.name || rich) continue;
    shape.write(count, arguments[2]);
    return 0;
  }
  return Usage();
}
