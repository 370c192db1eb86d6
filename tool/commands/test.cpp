// rux test TESTS...
#include <algorithm>
#include <cstddef>
#include <memory>
#include <mutex>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "cases/boundary.h"
#include "cases/case.h"
#include "cases/coverage.h"
#include "cases/mutation.h"
#include "cases/report.h"
#include "cases/run.h"
#include "evaluation/plan.h"
#include "machine/machine.h"
#include "profile/profile.h"
#include "support/failure.h"
#include "support/pattern.h"
#include "support/safe_text.h"
#include "support/standard_streams.h"
#include "support/terminal.h"
#include "support/text_stream.h"
#include "table/forms.h"
#include "tool/command.h"
#include "tool/machine_arguments.h"
#include "tool/profile_arguments.h"

namespace rux::tool {
namespace {

struct TestOptions {
  std::vector<std::string> files;
  MachineOptions machine;
  std::string profile;
  std::string filter;
  std::size_t jobs = 1;
  std::string format = "text";
  cases::ReportOptions report;
  std::vector<std::string> least;  // "limits=100"
  bool boundary = false;
  bool mutate = false;
};

struct LeastCoverage {
  std::string_view kind;
  std::size_t percent;
};

// Throws a Failure of wrong usage.
std::vector<LeastCoverage> LeastCoverageOf(const TestOptions& options) {
  std::vector<LeastCoverage> all;
  for (const std::string& text : options.least) {
    const std::size_t sign = std::min(text.find('='), text.size());
    const auto kind = std::find(std::begin(cases::kCoveredKinds), std::end(cases::kCoveredKinds),
                                text.substr(0, sign));
    const std::string digits = text.substr(std::min(sign + 1, text.size()));
    const bool is_number =
        !digits.empty() && digits.size() < 4 &&
        std::all_of(digits.begin(), digits.end(), [](char c) { return c >= '0' && c <= '9'; });
    if (kind == std::end(cases::kCoveredKinds) || !is_number || std::stoul(digits) > 100) {
      throw support::Failure(support::ExitStatus::kWrongUsage,
                             "--fail-under must be KIND=PERCENT, where KIND is limits, actions, "
                             "steps, cells or branches, found {}",
                             text);
    }
    all.push_back({*kind, std::stoul(digits)});
  }
  return all;
}

// What a file of tests is run with.
struct LoadedTests {
  cases::CaseFile file;
  machine::Machine machine;
  profile::Profile profile;
};

// Throws a Failure of wrong usage for a filter that no case fits.
void ExpectAny(const TestOptions& options, bool has_cases) {
  if (has_cases) return;
  throw support::Failure(support::ExitStatus::kWrongUsage, "no case has a name like {}",
                         options.filter);
}

LoadedTests Load(const TestOptions& options, const std::string& path) {
  cases::CaseFile file = cases::ReadCaseFile(path);
  MachineOptions of_machine = options.machine;
  of_machine.file = file.machine;
  machine::Machine machine = LoadMachine(of_machine);
  profile::Profile profile = ProfileFor(machine, options.profile);
  return {std::move(file), std::move(machine), std::move(profile)};
}

std::vector<const cases::Case*> CasesThatFit(const TestOptions& options,
                                             const cases::CaseFile& file) {
  std::vector<const cases::Case*> chosen;
  for (const cases::Case& each : file.cases) {
    if (options.filter.empty() || support::FitsPattern(options.filter, each.name))
      chosen.push_back(&each);
  }
  return chosen;
}

cases::FileResult RunFile(const TestOptions& options, const std::string& path) {
  LoadedTests tests = Load(options, path);
  cases::FileResult result{std::move(tests.file), std::move(tests.profile), {}, {}};
  const evaluation::Plan plan(tests.machine);
  std::mutex places;
  cases::Coverage coverage;
  result.results = RunCases({plan, result.profile, places}, CasesThatFit(options, result.file),
                            options.jobs, coverage);
  result.coverage = cases::CoverageOf(tests.machine, result.profile, coverage);
  return result;
}

// A file of tests with the changes that are tried out.
struct TriedFile {
  LoadedTests tests;
  bool has_cases;  // that fit the filter
  cases::MutationResult result;
};

TriedFile TryChanges(const TestOptions& options, const std::string& path) {
  LoadedTests tests = Load(options, path);
  const evaluation::Plan plan(tests.machine);
  std::mutex places;
  const cases::Bench bench{plan, tests.profile, places};
  const std::vector<const cases::Case*> chosen = CasesThatFit(options, tests.file);
  cases::Coverage coverage;
  for (const cases::CaseResult& each : RunCases(bench, chosen, options.jobs, coverage)) {
    if (each.passes()) continue;
    throw support::Failure(support::ExitStatus::kFindings,
                           "{}: {} fails without a change; 'rux test' says why", path,
                           support::NameText(each.source->name));
  }
  cases::MutationResult result{path, tests.file.machine, tests.profile, cases::MutantsOf(bench),
                               cases::CountLimitsLeftOut(bench)};
  cases::FindNoticing(bench, chosen, result.mutants);
  return {std::move(tests), !chosen.empty(), std::move(result)};
}

// Says on standard error what is below.
bool IsCovered(const std::vector<LeastCoverage>& least, const cases::FileResult& file) {
  bool is_covered = true;
  for (const LeastCoverage& each : least) {
    for (const cases::CoveredKind& kind : file.coverage) {
      if (kind.name != each.kind) continue;
      const std::optional<std::size_t> percent = kind.percent();
      if (percent && *percent >= each.percent) continue;
      const std::string found = percent ? std::to_string(*percent) + " % of" : "the machine has no";
      support::PrintError(support::SafeFormat("rux: {}: {} {} {}, expected {} %\n", file.file.path,
                                              found, kind.name,
                                              percent ? "are covered" : "to cover", each.percent));
      is_covered = false;
    }
  }
  return is_covered;
}

// Says on standard error which readings are likely a slip.
void PrintUnused(const cases::FileResult& file) {
  for (const cases::CaseResult& result : file.results) {
    for (const cases::GivenReading* reading : result.unused) {
      support::PrintError(support::SafeFormat(
          "rux: warning: {}:{}: {}: nothing uses the reading {}\n", result.source->file,
          reading->line, result.source->name, reading->key));
    }
  }
}

support::ExitStatus PrintBoundaries(const TestOptions& options) {
  for (const std::string& path : options.files) {
    const LoadedTests tests = Load(options, path);
    const evaluation::Plan plan(tests.machine);
    std::mutex places;
    table::Sheet sheet = cases::BoundariesOf({plan, tests.profile, places});
    if (options.format == "csv") cases::AddProfileColumn(tests.profile, sheet);
    support::Print(support::PrintOut, [&](support::TextStream& out) {
      for (const table::Form& form : table::kForms) {
        if (form.name == options.format && form.write != nullptr) return form.write(sheet, out);
      }
      table::WriteText(sheet, support::StyleOfOutput("never"), out);
    });
  }
  return support::ExitStatus::kDone;
}

support::ExitStatus PrintMutations(const TestOptions& options) {
  bool are_noticed = true;
  bool has_cases = false;
  // The results name cases of these.
  std::vector<cases::CaseFile> files;
  std::vector<cases::MutationResult> results;
  for (const std::string& path : options.files) {
    TriedFile tried = TryChanges(options, path);
    has_cases = has_cases || tried.has_cases;
    are_noticed = are_noticed && tried.result.noticed() == tried.result.mutants.size();
    files.push_back(std::move(tried.tests.file));
    results.push_back(std::move(tried.result));
  }
  ExpectAny(options, has_cases);
  support::Print(support::PrintOut, [&](support::TextStream& out) {
    if (options.format == "json") return cases::WriteJson(results, out);
    for (const cases::MutationResult& result : results)
      cases::WriteText(result, options.report.only_failed, out);
  });
  return are_noticed ? support::ExitStatus::kDone : support::ExitStatus::kFindings;
}

// Throws a Failure of wrong usage for a format that what is printed does not have.
void ExpectFormat(const TestOptions& options) {
  const bool is_for_changes = options.format == "text" || options.format == "json";
  if (options.mutate && !is_for_changes) {
    throw support::Failure(support::ExitStatus::kWrongUsage, "--mutate has no format {}",
                           options.format);
  }
  const bool has_coverage = options.report.has_coverage || options.report.has_missing;
  if (has_coverage && (options.format == "junit" || options.format == "sarif")) {
    throw support::Failure(support::ExitStatus::kWrongUsage, "{} has no coverage; use text or json",
                           options.format);
  }
  const bool is_of_table = options.format == "csv" || options.format == "markdown";
  if (options.format == "text" || is_of_table == options.boundary) return;
  throw support::Failure(support::ExitStatus::kWrongUsage, "{} has no format {}",
                         options.boundary ? "--boundary" : "a report of cases", options.format);
}

support::ExitStatus Test(TestOptions options) {
  ExpectFormat(options);
  if (options.boundary) return PrintBoundaries(options);
  if (options.mutate) return PrintMutations(options);
  const std::vector<LeastCoverage> least = LeastCoverageOf(options);
  options.report.has_coverage = options.report.has_coverage || options.report.has_missing;
  std::vector<cases::FileResult> files;
  files.reserve(options.files.size());
  for (const std::string& path : options.files) files.push_back(RunFile(options, path));
  const bool has_cases = std::any_of(files.begin(), files.end(),
                                     [](const auto& file) { return !file.results.empty(); });
  ExpectAny(options, has_cases);
  support::Print(support::PrintOut, [&](support::TextStream& out) {
    for (const cases::Form& form : cases::kForms) {
      if (form.name == options.format) form.write(files, options.report, out);
    }
  });
  bool is_fine = true;
  for (const cases::FileResult& file : files) {
    PrintUnused(file);
    is_fine = IsCovered(least, file) && file.failed() == 0 && is_fine;
  }
  return is_fine ? support::ExitStatus::kDone : support::ExitStatus::kFindings;
}

void AddReport(Arguments& arguments, TestOptions& options) {
  arguments
      .Add("--format", &options.format,
           "text (default), json (docs/test-report.schema.json; with --mutate "
           "docs/test-mutation.schema.json), junit or sarif; with --boundary text, markdown or csv")
      .OneOf("FORMAT", {"text", "json", "junit", "sarif", "markdown", "csv"});
  arguments.Add("-q,--quiet", &options.report.only_failed,
                "Print only cases that fail, or changes that no case notices");
  arguments.Add("--coverage", &options.report.has_coverage,
                "Print how much of the machine the cases evaluate");
  arguments.Add("--missing", &options.report.has_missing,
                "The same, and what they do not evaluate");
  arguments
      .Add("--fail-under", &options.least,
           "Exit with 1 when less of limits, actions, steps, cells or branches is covered")
      .Value("KIND=PERCENT");
  arguments
      .Add("--boundary", &options.boundary,
           "Run no cases; print the band of the readings around each limit")
      .Without({"--filter", "--jobs", "--quiet", "--coverage", "--missing", "--fail-under"});
  arguments
      .Add("--mutate", &options.mutate,
           "Change each limit, operator and cell, and print which cases notice")
      .Without({"--boundary", "--coverage", "--missing", "--fail-under"});
}

}  // namespace

Action SetUpTest(Arguments& arguments) {
  const auto options = std::make_shared<TestOptions>();
  arguments.Add("TESTS", &options->files, "Files of test cases (docs/test.schema.json)")
      .File()
      .Required();
  arguments.Add("--filter", &options->filter, "Only cases whose names fit (*, ?, [...])")
      .Value("PATTERN");
  arguments.Add("-j,--jobs", &options->jobs, "Run N cases at a time").Value("N");
  AddProfile(arguments, options->profile);
  AddReport(arguments, *options);
  AddSearchOptions(arguments, options->machine);
  arguments.Footer(
      "A file of tests names the machine. The exit status is 1 when a case fails.\n\n"
      "Examples:\n"
      "  rux test boards/edge.tests.json\n"
      "  rux test edge.tests.json --filter 'fan*' --missing\n"
      "  rux test edge.tests.json --format junit > results.xml\n"
      "  rux test edge.tests.json --boundary --format markdown");
  return [options] { return Test(*options); };
}

}  // namespace rux::tool
