#include "tests/tool/case_file.h"

#include <fstream>
#include <stdexcept>

namespace {

const std::string kMark = "=== ";
const std::string kFileMark = "file ";

// Where the contents of the part go. The line feeds that end the contents belong to them.
std::string& PartOf(CaseFile& test, std::string& exit_status, const std::string& name) {
  if (name.rfind(kFileMark, 0) == 0) {
    return test.files.emplace_back(name.substr(kFileMark.size()), "").second;
  }
  if (name == "run") return test.run;
  if (name == "needs") return test.needs;
  if (name == "stdout") return test.standard_output;
  if (name == "stderr") return test.standard_error;
  if (name == "exit") return exit_status;
  throw std::runtime_error("a case has no part " + name);
}

}  // namespace

CaseFile ReadCaseFile(const std::string& path) {
  std::ifstream stream(path, std::ios::binary);
  if (!stream) throw std::runtime_error("cannot read " + path);
  CaseFile test;
  std::string introduction;
  std::string exit_status;
  std::string* part = &introduction;
  bool expects = false;
  for (std::string line; std::getline(stream, line);) {
    if (line.rfind(kMark, 0) == 0) {
      const std::string name = line.substr(kMark.size());
      expects |= name == "stdout" || name == "stderr" || name == "exit";
      part = &PartOf(test, exit_status, name);
    } else {
      *part += line + '\n';
    }
  }
  if (!exit_status.empty()) test.exit_status = std::stoi(exit_status);
  if (test.run.empty() || !expects) throw std::runtime_error(path + " tests nothing");
  return test;
}
