// Pages of machines as files.
#ifndef PAGE_PAGES_H_
#define PAGE_PAGES_H_

#include <functional>
#include <string>

#include "machine/load.h"
#include "machine/machine.h"
#include "page/machine_set.h"
#include "page/test_run.h"
#include "support/failure.h"

namespace rux::page {

struct PageRequest {
  machine::LoadOptions load;
  std::string title;   // empty: what the machine calls itself
  std::string before;  // the machine, or the folder of machines, to compare with; empty: none
  std::function<TestRun(const machine::Machine&)> run_tests = {};  // null: there are none
};

// The page of a machine, put in place at the path; "-": printed. Throws a Failure, also when
// something that is not a page is there.
void WritePage(const std::string& machine, const std::string& path, const PageRequest& request);

// The page beside a machine, as rux compile puts what it writes.
std::string PageBeside(const std::string& machine);

// Where the pages of several machines are.
struct PageFolders {
  std::string index;  // of index.html
  // Of the pages, each where its machine is as the working folder sees it; empty: beside them.
  std::string pages;
};

// The pages of several machines, and index.html, which leads to them and finds everything in them.
// A machine without a page is reported on standard error, and named there. The machines say
// themselves what to compare with. Returns the worst status. Throws a Failure.
support::ExitStatus WritePages(const MachineSet& machines, const PageFolders& folders,
                               const PageRequest& request);

}  // namespace rux::page

#endif  // PAGE_PAGES_H_
