// rux page MACHINE... [-o PAGE] [--output-dir FOLDER]
#include <cstddef>
#include <filesystem>
#include <memory>
#include <string>
#include <system_error>
#include <utility>
#include <vector>

#include "cases/case.h"
#include "driver/compile_options.h"
#include "machine/machine.h"
#include "machine/source.h"
#include "page/machine_set.h"
#include "page/pages.h"
#include "page/test_run.h"
#include "support/failure.h"
#include "tool/command.h"
#include "tool/compile_arguments.h"
#include "tool/profile_arguments.h"

namespace rux::tool {
namespace {

struct PageOptions {
  driver::CompileOptions machines;
  std::string page;
  std::string folder;  // of the pages of several machines
  std::string before;
  std::string title;
  std::vector<std::string> tests;
  std::string profile;
};

support::Failure BadPageUsage(const char* text) {
  return support::Failure(support::ExitStatus::kWrongUsage, "{}", text);
}

std::string PagePathOf(const std::string& machine) {
  if (!machine::ReadSource(machine).revision.empty())
    throw BadPageUsage("a machine of a git revision needs -o");
  return page::PageBeside(machine);
}

bool IsFolder(const std::string& name) {
  std::error_code error;
  return std::filesystem::is_directory(name, error);
}

bool AreSeveral(const PageOptions& options) {
  const std::vector<std::string>& machines = options.machines.scripts;
  return !options.folder.empty() || machines.size() > 1 || machines.front().front() == '@' ||
         IsFolder(machines.front());
}

// A folder gets the index; elsewhere, that needs a folder of its own.
page::PageFolders FoldersOf(const PageOptions& options) {
  if (!options.folder.empty()) return {options.folder, options.folder};
  const std::vector<std::string>& machines = options.machines.scripts;
  if (machines.size() > 1 || !IsFolder(machines.front()) || !options.page.empty())
    throw BadPageUsage("several machines need --output-dir");
  return {machines.front(), ""};
}

// Throws a Failure of wrong usage for a file of another machine.
std::vector<cases::CaseFile> ReadTests(const PageOptions& options) {
  std::vector<cases::CaseFile> files;
  for (const std::string& path : options.tests) {
    cases::CaseFile file = cases::ReadCaseFile(path);
    const std::string& machine = options.machines.scripts.front();
    std::error_code error;
    if (!std::filesystem::equivalent(file.machine, machine, error)) {
      throw support::Failure(support::ExitStatus::kWrongUsage, "{} has tests of {}, not of {}",
                             path, file.machine, machine);
    }
    files.push_back(std::move(file));
  }
  return files;
}

// With the tests that it shows, whose failures make the status.
support::ExitStatus WriteTestedPage(const PageOptions& options, page::PageRequest request,
                                    const std::string& path) {
  std::size_t failed = 0;
  if (!options.tests.empty()) {
    request.run_tests = [&, files = ReadTests(options)](const machine::Machine& machine) {
      page::TestRun run(machine, ProfileFor(machine, options.profile), files);
      failed = run.failed();
      return run;
    };
  }
  page::WritePage(options.machines.scripts.front(), path, request);
  return failed == 0 ? support::ExitStatus::kDone : support::ExitStatus::kFindings;
}

support::ExitStatus Page(const PageOptions& options) {
  if (options.tests.empty() && !options.profile.empty())
    throw BadPageUsage("--profile needs --tests");
  const page::PageRequest request{
      {options.machines.include_folders, driver::ProjectsOf(options.machines.project_choice), ""},
      options.title,
      options.before};
  if (AreSeveral(options)) {
    if (!options.tests.empty()) throw BadPageUsage("--tests needs one machine");
    const page::PageFolders folders = FoldersOf(options);
    return page::WritePages(page::MachinesOf(options.machines, options.before), folders, request);
  }
  const std::string& machine = options.machines.scripts.front();
  // It is loaded, and looked at again for what the page shows besides.
  if (machine == "-")
    throw BadPageUsage("a page is of a file: standard input can be read only once");
  return WriteTestedPage(options, request,
                         options.page.empty() ? PagePathOf(machine) : options.page);
}

}  // namespace

Action SetUpPage(Arguments& arguments) {
  const auto options = std::make_shared<PageOptions>();
  arguments
      .Add("MACHINE", &options->machines.scripts,
           "Scripts, debug meta files or meta files; REVISION:PATH for one of a git revision; a "
           "folder for all machines below it, @FILE for those that a file lists")
      .File()
      .Required();
  arguments
      .Add("-o,--output", &options->page,
           "The page to write; - for standard output (default: beside the machine, with .html)")
      .File("PAGE");
  arguments
      .Add("--output-dir", &options->folder,
           "Write a page for each machine below this folder, and index.html, which finds all "
           "(default for a folder: pages beside the machines, index.html in the folder)")
      .File("FOLDER")
      .Without({"--output"});
  arguments
      .Add("--diff", &options->before,
           "Mark what changed since this machine; of several machines, since those of this folder "
           "or REVISION:FOLDER")
      .File("OLD");
  arguments
      .Add("--title", &options->title,
           "The title of the page, or of the index (default: the machine's MODEL)")
      .Value("TITLE");
  arguments
      .Add("--tests", &options->tests,
           "Run the cases of this file as 'rux test' does, and show what they cover")
      .File("TESTS");
  AddProfile(arguments, options->profile);
  AddSearchOptions(arguments, options->machines.include_folders, options->machines.project_choice);
  arguments.Footer(
      "A page is one file without requests to any other. A script is checked, and the page shows\n"
      "what is found; of a debug meta file, it shows the items of the script as well.\n\n"
      "Examples:\n"
      "  rux page boards/server.rux\n"
      "  rux page new.metad -o server.html --diff old.metad\n"
      "  rux page boards --diff HEAD~1:boards\n"
      "  rux page --output-dir pages boards out/*.meta\n"
      "  rux page boards/server.rux --tests boards/server.tests.json");
  return [options] { return Page(*options); };
}

}  // namespace rux::tool
