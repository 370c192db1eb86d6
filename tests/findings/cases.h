// What makes the library report, and the findings that must come of it.
#ifndef TESTS_FINDINGS_CASES_H_
#define TESTS_FINDINGS_CASES_H_

#include <functional>
#include <string>
#include <vector>

// A script is compiled as board.rux; the findings are in order, see recorder.h.
struct ScriptCase {
  const char* script;
  std::vector<std::string> findings;
};
const std::vector<ScriptCase>& ScriptCases();

// What no script brings about by itself.
struct ModelCase {
  const char* name;
  std::function<void(const std::string& folder)> run;
  std::vector<std::string> findings;
};
const std::vector<ModelCase>& ModelCases();

#endif  // TESTS_FINDINGS_CASES_H_
