// rux page MACHINE... [-o PAGE] [--output-dir FOLDER]
#include <filesystem>
#include <memory>
#include <string>
#include <system_error>
#include <vector>

#include "driver/compile_options.h"
#include "machine/source.h"
#include "page/machine_set.h"
#include "page/pages.h"
#include "support/failure.h"
#include "tool/command.h"
#include "tool/compile_arguments.h"

namespace rux::tool {
namespace {

struct PageOptions {
  driver::CompileOptions machines;
  std::string page;
  std::string folder;  // of the pages of several machines
  std::string before;
  std::string title;
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

support::ExitStatus Page(const PageOptions& options) {
  const page::PageRequest request{
      {options.machines.include_folders, driver::ProjectsOf(options.machines.project_choice), ""},
      options.title,
      options.before};
  if (AreSeveral(options)) {
    const page::PageFolders folders = FoldersOf(options);
    return page::WritePages(page::MachinesOf(options.machines, options.before), folders, request);
  }
  const std::string& machine = options.machines.scripts.front();
  // It is loaded, and looked at again for what the page shows besides.
  if (machine == "-")
    throw BadPageUsage("a page is of a file: standard input can be read only once");
  page::WritePage(machine, options.page.empty() ? PagePathOf(machine) : options.page, request);
  return support::ExitStatus::kDone;
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
  AddSearchOptions(arguments, options->machines.include_folders, options->machines.project_choice);
  arguments.Footer(
      "A page is one file without requests to any other. A script is checked, and the page shows\n"
      "what is found; of a debug meta file, it shows the items of the script as well.\n\n"
      "Examples:\n"
      "  rux page boards/server.rux\n"
      "  rux page new.metad -o server.html --diff old.metad\n"
      "  rux page boards --diff HEAD~1:boards\n"
      "  rux page --output-dir pages boards out/*.meta");
  return [options] { return Page(*options); };
}

}  // namespace rux::tool
