// rux page MACHINE... [-o PAGE] [--output-dir FOLDER]
#include <filesystem>
#include <memory>
#include <string>
#include <system_error>
#include <vector>

#include "driver/compile_options.h"
#include "driver/script_list.h"
#include "machine/source.h"
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

// Beside the machine, as rux compile puts what it writes.
std::string PagePathOf(const std::string& machine) {
  if (!machine::ReadSource(machine).revision.empty())
    throw BadPageUsage("a machine of a git revision needs -o");
  return std::filesystem::path(machine).replace_extension(".html").string();
}

// What stands for several machines.
bool IsList(const std::string& name) {
  std::error_code error;
  return name.front() == '@' || std::filesystem::is_directory(name, error);
}

support::ExitStatus Page(PageOptions& options) {
  const std::vector<std::string>& machines = options.machines.scripts;
  const page::PageRequest request{
      {options.machines.include_folders, driver::ProjectsOf(options.machines.project_choice), ""},
      options.title,
      options.before};
  if (options.folder.empty()) {
    if (machines.size() > 1 || IsList(machines.front()))
      throw BadPageUsage("several machines need --output-dir");
    const std::string& machine = machines.front();
    // It is loaded, and looked at again for what the page shows besides.
    if (machine == "-")
      throw BadPageUsage("a page is of a file: standard input can be read only once");
    page::WritePage(machine, options.page.empty() ? PagePathOf(machine) : options.page, request);
    return support::ExitStatus::kDone;
  }
  driver::ExpandScripts(options.machines);
  return page::WritePages(machines, options.folder, request);
}

}  // namespace

Action SetUpPage(Arguments& arguments) {
  const auto options = std::make_shared<PageOptions>();
  arguments
      .Add("MACHINE", &options->machines.scripts,
           "Scripts, debug meta files or meta files; REVISION:PATH for one of a git revision; a "
           "folder for the main scripts below it, @FILE for those that a file lists")
      .File()
      .Required();
  arguments
      .Add("-o,--output", &options->page,
           "The page to write; - for standard output (default: beside the machine, with .html)")
      .File("PAGE");
  arguments
      .Add("--output-dir", &options->folder,
           "Write a page for each machine below this folder, and index.html, which finds all")
      .File("FOLDER")
      .Without({"--output"});
  arguments.Add("--diff", &options->before, "Mark what changed since this machine")
      .File("OLD")
      .Without({"--output-dir"});
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
      "  rux page --output-dir pages boards");
  return [options] { return Page(*options); };
}

}  // namespace rux::tool
