// Writes generated models, see Usage.
#include <cstdint>
#include <cstdlib>
#include <exception>
#include <iostream>
#include <string>
#include <vector>

#include "bench/model/contents.h"
#include "bench/model/shapes.h"
#include "bench/model/writers.h"

namespace {

int Usage() {
  std::cerr << "usage: generate_model CONTENT LANGUAGE SENSORS FILE   a machine: FILE and what it "
               "includes\n       LANGUAGE:";
  for (const Language& language : Languages()) std::cerr << ' ' << language.name;
  std::cerr
      << "\n       generate_model SHAPE COUNT FOLDER   FOLDER/main.rux and what it includes\n"
         "       generate_model contents             lists the contents, with options for rux\n"
         "       generate_model shapes               lists the shapes\n";
  return 2;
}

int ListContents() {
  for (const Content& content : Contents()) {
    std::cout << content.name;
    for (const char* option : content.options) std::cout << ' ' << option;
    std::cout << '\n';
  }
  return 0;
}

int ListShapes() {
  const char* const verdicts[] = {"clean", "warned", "refused"};
  for (const Shape& shape : Shapes()) {
    std::cout << shape.name << ' ' << verdicts[static_cast<std::size_t>(shape.verdict)] << ' '
              << shape.count << ' ' << shape.what << '\n';
  }
  return 0;
}

std::uint32_t Count(const std::string& text) {
  return static_cast<std::uint32_t>(std::strtoul(text.c_str(), nullptr, 10));
}

int WriteMachine(const std::vector<std::string>& arguments) {
  const std::uint32_t sensors = Count(arguments[2]);
  for (const Language& language : Languages()) {
    if (arguments[1] != language.name || !sensors) continue;
    language.write(ContentNamed(arguments[0]).make(sensors), arguments[3]);
    return 0;
  }
  return Usage();
}

int WriteShape(const std::vector<std::string>& arguments) {
  const std::uint32_t count = Count(arguments[1]);
  for (const Shape& shape : Shapes()) {
    if (arguments[0] != shape.name || !count) continue;
    shape.write(count, arguments[2]);
    return 0;
  }
  return Usage();
}

}  // namespace

int main(int argc, char** argv) try {
  const std::vector<std::string> arguments(argv + 1, argv + argc);
  if (arguments == std::vector<std::string>{"contents"}) return ListContents();
  if (arguments == std::vector<std::string>{"shapes"}) return ListShapes();
  if (arguments.size() == 4) return WriteMachine(arguments);
  if (arguments.size() == 3) return WriteShape(arguments);
  return Usage();
} catch (const std::exception& error) {
  std::cerr << "generate_model: " << error.what() << '\n';
  return 1;
}
