// What several machines find in a file that is a part of them: each finding once.
#ifndef DRIVER_COMMON_FINDINGS_H_
#define DRIVER_COMMON_FINDINGS_H_

#include <cstddef>
#include <map>
#include <string>
#include <utility>
#include <vector>

#include "diagnostics/diagnostic.h"
#include "findings/message_row.h"

namespace rux::driver {

// Equal for what machines have in common, when it is in the same file.
std::string KeyOf(const diagnostics::Diagnostic& diagnostic);

// Whether it says that something has no use: then it is a finding only when all machines have it.
bool IsAboutUnused(const diagnostics::MessageRow& row);

// Whether a machine does not report it by itself: another one may make use of the comment.
bool IsLeftToParts(const diagnostics::MessageRow& row);

// "found only as part of boards/a.rux, boards/b.rux"
std::string FoundOnlyIn(const std::vector<std::string>& mains);

template <class Finding>
class CommonFindings {
 public:
  struct Common {
    Finding finding;
    std::vector<std::string> mains;  // the main scripts of the machines that have it
  };

  // What follows is of the machine with that main script.
  void BeginMachine(std::string main) {
    mains_.push_back(std::move(main));
    alike_.clear();
  }

  // A machine may have several findings with one key.
  void Add(const std::string& key, Finding finding) {
    const std::size_t before = alike_[key]++;
    const auto [place, is_new] = places_.try_emplace({key, before}, all_.size());
    if (is_new) all_.push_back({std::move(finding), {}});
    all_[place->second].mains.push_back(mains_.back());
  }

  const std::vector<std::string>& mains() const { return mains_; }
  std::vector<Common>& all() { return all_; }
  bool IsInAll(const Common& common) const { return common.mains.size() == mains_.size(); }

 private:
  std::vector<std::string> mains_;
  std::vector<Common> all_;
  std::map<std::pair<std::string, std::size_t>, std::size_t> places_;
  std::map<std::string, std::size_t> alike_;  // of the last machine
};

}  // namespace rux::driver

#endif  // DRIVER_COMMON_FINDINGS_H_
