#include "page/pages.h"

#include <algorithm>
#include <cstddef>
#include <filesystem>
#include <fstream>
#include <ios>
#include <string>
#include <system_error>
#include <thread>
#include <utility>
#include <vector>

#include "diff/compare.h"
#include "driver/output_names.h"
#include "driver/overwriting.h"
#include "machine/load.h"
#include "machine/machine.h"
#include "page/background.h"
#include "page/contents.h"
#include "page/document.h"
#include "page/index_page.h"
#include "page/machine_set.h"
#include "ruxcomp/language/paths.h"
#include "support/failure.h"
#include "support/placement.h"
#include "support/standard_streams.h"
#include "support/uri.h"
#include "support/workers.h"

namespace rux::page {
namespace {

namespace fs = std::filesystem;
using support::ExitStatus;

constexpr char kStandardOutput[] = "-";

// The path of one file in a page in the folder of another.
std::string LinkTo(const std::string& path, const std::string& from) {
  return support::UriOf(fs::path(path).lexically_relative(fs::path(from).parent_path()).string());
}

// A machine and what is known besides must outlive what is put together of them.
class Subject {
 public:
  Subject(const std::string& machine, const PageRequest& request)
      // The script is checked while it compiles.
      : machines_(machine::Load(NamesOf(machine, request), request.load,
                                [&] { background_ = BackgroundOf(machine, request.load); })) {
    background_.title = request.title;
    if (request.run_tests) background_.tests = request.run_tests(machines_[0]);
    if (request.before.empty()) return;
    const fs::path before(request.before);
    background_.before = (before.is_absolute() ? before.filename() : before).string();
    background_.changes = diff::Compare(machines_[1], machines_[0]);
  }

  Background& background() { return background_; }
  Contents Take() { return {machines_[0], std::move(background_)}; }

 private:
  static std::vector<std::string> NamesOf(const std::string& machine, const PageRequest& request) {
    if (request.before.empty()) return {machine};
    return {machine, request.before};
  }

  Background background_;
  std::vector<machine::Machine> machines_;
};

// Pages take the place of pages alone: a path that was mistyped may be a script's.
void ExpectPageAt(const std::string& path) {
  std::error_code error;
  if (!fs::is_regular_file(path, error)) return;
  std::string begin(kPageBegin.size(), '\0');
  std::ifstream file(path, std::ios::binary);
  file.read(begin.data(), static_cast<std::streamsize>(begin.size()));
  if (begin == kPageBegin || fs::file_size(path, error) == 0) return;
  throw support::Failure(ExitStatus::kWrongUsage, "cannot write {}: what is there is not a page",
                         path);
}

void Put(const std::string& path, const std::string& page) {
  ExpectPageAt(path);
  support::PutInPlace({{path, page}});
}

// The pages of a command that writes several.
class PageSet {
 public:
  PageSet(const MachineSet& set, const PageFolders& folders, const PageRequest& request)
      : set_(set),
        request_(request),
        index_((fs::path(folders.index) / "index.html").lexically_normal().string()) {
    for (const NamedMachine& machine : set.machines)
      paths_.push_back(folders.pages.empty() ? PageBeside(machine.name)
                                             : PageBelow(folders.pages, machine.name));
    ExpectDistinct();
    ExpectPageAt(index_);
  }

  ExitStatus Write() {
    IndexPage index(request_.before);
    support::RunJobs(
        set_.machines.size(), std::max(std::thread::hardware_concurrency(), 1U),
        [&](std::size_t i) { return WriteOne(i); },
        [&](std::size_t i, const support::JobResult& done) {
          support::PrintError(done.errors);
          worst_ = std::max(worst_, done.status);
          if (done.status == ExitStatus::kDone) {
            index.Add(done.output);
          } else {
            index.AddFailed(set_.machines[i].name, done.errors);
          }
        },
        [] {});
    for (const std::string& machine : set_.gone) index.AddGone(machine);
    support::MakeFolderOf(index_);
    Put(index_, index.Document(request_.title));
    return worst_;
  }

 private:
  static std::string PageBelow(const std::string& folder, const std::string& machine) {
    return driver::ExpandFileName(ruxcomp::language::ToLibraryPath(machine),
                                  driver::NameBelow(folder, "{}.html"));
  }

  void ExpectDistinct() const {
    std::vector<driver::NamedFile> kept;
    std::vector<driver::NamedFile> written = {{"index", index_}};
    for (std::size_t i = 0; i < paths_.size(); ++i) {
      kept.push_back({"machine", set_.machines[i].name});
      written.push_back({"page", paths_[i], &set_.machines[i].name});
    }
    driver::RefuseToWriteTwice(kept, written);
  }

  // In a process of its own, whose output is for the index.
  ExitStatus WriteOne(std::size_t i) {
    const NamedMachine& machine = set_.machines[i];
    PageRequest request = request_;
    request.title.clear();
    request.before = machine.before;
    Subject subject(machine.name, request);
    subject.background().index = LinkTo(index_, paths_[i]);
    subject.background().is_new = !request_.before.empty() && machine.before.empty();
    const Contents contents = subject.Take();
    support::MakeFolderOf(paths_[i]);
    Put(paths_[i], PageOf(contents));
    support::PrintOut(IndexPage::EntriesOf(contents, machine.name, LinkTo(paths_[i], index_)));
    return ExitStatus::kDone;
  }

  const MachineSet& set_;
  const PageRequest& request_;
  const std::string index_;
  std::vector<std::string> paths_;  // of the pages
  ExitStatus worst_ = ExitStatus::kDone;
};

}  // namespace

void WritePage(const std::string& machine, const std::string& path, const PageRequest& request) {
  if (path != kStandardOutput) {
    driver::RefuseToOverwrite({"machine", machine}, {"page", path});
    ExpectPageAt(path);
  }
  const std::string page = PageOf(Subject(machine, request).Take());
  if (path == kStandardOutput) {
    support::PrintOut(page);
  } else {
    support::PutInPlace({{path, page}});
  }
}

ExitStatus WritePages(const MachineSet& machines, const PageFolders& folders,
                      const PageRequest& request) {
  return PageSet(machines, folders, request).Write();
}

std::string PageBeside(const std::string& machine) {
  return fs::path(machine).replace_extension(".html").string();
}

}  // namespace rux::page
