#include "tests/generators/source_files.h"

std::string TextOf(const SourceFiles& files) {
  std::string text;
  for (const auto& [path, contents] : files) text += "=== " + path + '\n' + contents + '\n';
  return text;
}
