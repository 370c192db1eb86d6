#include "bench/driver/rows.h"

#include <string>
#include <vector>

#include "bench/driver/report.h"
#include "bench/files/process.h"

void AddTimes(Report& report, const RowName& name, const Usage& ours, const std::string& peer,
              const Usage& theirs, const std::vector<Target>& targets) {
  const auto add = [&](const std::string& job, double our_time, double their_time) {
    report.Add({name.content, job, name.size, Unit::kSeconds, our_time, peer, their_time, targets});
  };
  add(name.job, ours.wall, theirs.wall);
  add(name.job + ", cpu", ours.processor, theirs.processor);
}
