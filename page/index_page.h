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
  // `before`: what the machines are compared with; empty: nothing.
  explicit IndexPage(const std::string& before);

  // What Add() takes of a machine: rows of both tables. `link` leads to its page.
  static std::string EntriesOf(const Contents& contents, const std::string& machine,
                               const std::string& link);
  void Add(std::string_view entries);
  // A machine without a page, with the reason.
  void AddFailed(const std::string& machine, const std::string& reason);
  // A machine that was there before.
  void AddGone(const std::string& machine);

  // An empty title is "Machines".
  std::string Document(const std::string& title) const;

 private:
  void AddWithoutPage(const std::string& machine, const Html& note);

  std::size_t count_ = 0;
  std::size_t gone_ = 0;
  Grid machines_;
  Grid things_;
};

}  // namespace rux::page

#endif  // PAGE_INDEX_PAGE_H_
