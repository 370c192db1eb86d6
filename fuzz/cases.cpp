// Files of test cases: arbitrary bytes as one, and as the table that another names. Each is read,
// or refused with one line that names the place; what is read can be run
// against an empty machine.
#include <cstddef>
#include <cstdint>
#include <mutex>
#include <string>
#include <vector>

#include "cases/case.h"
#include "cases/coverage.h"
#include "cases/run.h"
#include "evaluation/plan.h"
#include "fuzz/reading.h"
#include "fuzz/target.h"
#include "machine/machine.h"
#include "profile/profile.h"

namespace {

constexpr char kPath[] = "file.json";
constexpr char kWithTable[] = R"({"machine": "m.rux", "tables": ["file.json"]})";

std::string input;

void Run(const std::string& path, const std::string& text) {
  fuzz::IsRead(kPath, [&] {
    const rux::cases::CaseFile file =
        rux::cases::ParseCaseFile(path, text, [](const std::string&) { return input; });
    std::vector<const rux::cases::Case*> cases;
    cases.reserve(file.cases.size());
    for (const rux::cases::Case& each : file.cases) cases.push_back(&each);
    const rux::machine::Machine machine("nothing");
    const rux::evaluation::Plan plan(machine);
    const rux::profile::Profile profile;
    std::mutex places;
    rux::cases::Coverage coverage;
    const auto results = rux::cases::RunCases({plan, profile, places}, cases, 1, coverage);
    fuzz::Expect(results.size() == cases.size(), "each case has a result");
  });
}

}  // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  input.assign(data, data + size);
  Run(kPath, input);
  Run(kPath, kWithTable);
  return 0;
}
