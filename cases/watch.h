// What the evaluation of a case makes use of.
#ifndef CASES_WATCH_H_
#define CASES_WATCH_H_

#include <cstddef>
#include <set>
#include <vector>

#include "evaluation/observer.h"
#include "evaluation/readings.h"
#include "evaluation/result.h"
#include "ruxcomp/model/handles.h"

namespace rux::cases {

// A value that calls an action or writes.
struct Origin {
  ruxcomp::Section section;
  ruxcomp::Entry entry;  // none: the case calls the action
};

class Watch : public evaluation::Observer {
 public:
  // A round of the case, which may be several of the machine.
  void BeginRound();
  void BeginMachineRound();

  // Since the beginning, and in this round of the case.
  bool Used(const evaluation::ReadingKey& key) const { return used_.count(key) > 0; }
  bool UsedInRound(const evaluation::ReadingKey& key) const { return in_round_.count(key) > 0; }
  // Of this round of the machine, in the order of the evaluation.
  const std::vector<Origin>& calls() const { return calls_; }
  const std::vector<Origin>& writes() const { return writes_; }

  void Begin(const ruxcomp::Section& section, const ruxcomp::Entry& entry) override;
  void End(const ruxcomp::Section& section, const ruxcomp::Entry& entry,
           const evaluation::Result& result) override;
  void Given(const ruxcomp::Section& section, const ruxcomp::Entry& entry,
             const evaluation::Result& result) override;
  void Call(const ruxcomp::Section& action, const std::vector<evaluation::Result>&) override;
  void Access(const evaluation::AccessKey& key, bool is_write,
              const evaluation::Result& result) override;
  void OpenWrite(const std::vector<evaluation::Result>& parts) override;

 private:
  void Use(const evaluation::ReadingKey& key);

  std::set<evaluation::ReadingKey> used_;
  std::set<evaluation::ReadingKey> in_round_;
  std::vector<Origin> open_;  // that have no result yet
  std::vector<Origin> calls_;
  std::vector<Origin> writes_;
};

}  // namespace rux::cases

#endif  // CASES_WATCH_H_
