#include "cases/watch.h"

#include <vector>

#include "evaluation/readings.h"
#include "evaluation/result.h"
#include "evaluation/target.h"
#include "ruxcomp/model/handles.h"

namespace rux::cases {

void Watch::BeginRound() {
  in_round_.clear();
  BeginMachineRound();
}

void Watch::BeginMachineRound() {
  calls_.clear();
  writes_.clear();
}

void Watch::Begin(const ruxcomp::Section& section, const ruxcomp::Entry& entry) {
  open_.push_back({section, entry});
}

void Watch::End(const ruxcomp::Section&, const ruxcomp::Entry&, const evaluation::Result&) {
  open_.pop_back();
}

void Watch::Given(const ruxcomp::Section& section, const ruxcomp::Entry& entry,
                  const evaluation::Result&) {
  Use(evaluation::KeyOf(section, entry));
}

void Watch::Call(const ruxcomp::Section& action, const std::vector<evaluation::Result>&) {
  calls_.push_back(open_.empty() ? Origin{action, {}} : open_.back());
}

void Watch::Access(const evaluation::AccessKey& key, bool is_write, const evaluation::Result&) {
  if (is_write) {
    writes_.push_back(open_.back());
  } else {
    Use(key);
  }
}

void Watch::OpenWrite(const std::vector<evaluation::Result>&) { writes_.push_back(open_.back()); }

void Watch::Use(const evaluation::ReadingKey& key) {
  used_.insert(key);
  in_round_.insert(key);
}

}  // namespace rux::cases
