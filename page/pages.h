// Pages of machines as files.
#ifndef PAGE_PAGES_H_
#define PAGE_PAGES_H_

#include <string>
#include <vector>

#include "machine/load.h"
#include "support/failure.h"

namespace rux::page {

struct PageRequest {
  machine::LoadOptions load;
  std::string title;   // empty: what the machine calls itself
  std::string before;  // the machine to compare with; empty: none
};

// The page of a machine, put in place at the path; "-": printed. Throws a Failure, also when
// something that is not a page is there.
void WritePage(const std::string& machine, const std::string& path, const PageRequest& request);

// The pages of several machines below a folder, each where its file is as the working folder sees
// it, and index.html, which leads to them and finds everything in them. A machine without a page is
// reported on standard error, and named there. Returns the worst status. Throws a Failure.
support::ExitStatus WritePages(const std::vector<std::string>& machines, const std::string& folder,
                               const PageRequest& request);

}  // namespace rux::page

#endif  // PAGE_PAGES_H_
