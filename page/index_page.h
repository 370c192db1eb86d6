// The page that leads to the pages of many machines.
#ifndef PAGE_INDEX_PAGE_H_
#define PAGE_INDEX_PAGE_H_

#include <cstddef>
#include <string>
#include <string_view>

#include "page/contents.h"
#include "page/grid.h"

namespace rux::page {

class IndexPage {
 public:
  IndexPage();

  // What Add() takes of a machine: rows of both tables. `link` leads to its page.
  static std::string EntriesOf(const Contents& contents, const std::string& machine,
                               const std::string& link);
  void Add(std::string_view entries);
  // A machine without a page, with the reason.
  void AddFailed(const std::string& machine, const std::string& reason);

  // An empty title is "Machines".
  std::string Document(const std::string& title) const;

 private:
  std::size_t count_ = 0;
  Grid machines_;
  Grid things_;
};

}  // namespace rux::page

#endif  // PAGE_INDEX_PAGE_H_
