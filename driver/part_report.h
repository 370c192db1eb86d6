// What is found in a file that is a part of several machines, as one report.
#ifndef DRIVER_PART_REPORT_H_
#define DRIVER_PART_REPORT_H_

#include <cstddef>
#include <map>
#include <string>
#include <utility>
#include <vector>

#include "diagnostics/diagnostic.h"
#include "diagnostics/report.h"
#include "driver/common_findings.h"
#include "sources/source_set.h"

namespace rux::driver {

// What a run over one machine found in the part.
struct PartFindings {
  std::string main;  // the machine's script
  std::size_t errors_elsewhere = 0;
  diagnostics::Report report;
  sources::SourceSet sources;  // which the report refers to
};

// For the report about a main script whose parts have reports of their own in the same command.
diagnostics::Diagnostic NoteOnErrorsInParts(const std::string& main, std::size_t errors);

class PartReport {
 public:
  // kCommon: only what is a finding when all machines have it; the machines have reports of their
  // own.
  enum class Shows { kAll, kCommon };
  PartReport(std::string part, Shows shows) : part_(std::move(part)), shows_(shows) {}

  void Add(PartFindings found);

  // Each finding once, with a note when it is not in all machines; and at the end, which machines
  // these are. Refers to this object. What the runs left out is as much as the run with the most
  // left out.
  diagnostics::Report Merged();

 private:
  using Common = CommonFindings<diagnostics::Diagnostic>::Common;
  // Of errors or warnings, or of one message.
  using LeftOut = std::map<const diagnostics::MessageRow*, std::size_t>;

  void AddNumbers(const diagnostics::Report& report);
  diagnostics::Diagnostic NoteOnMachines() const;
  void CountAll();

  const std::string part_;
  const Shows shows_;
  std::vector<std::size_t> errors_elsewhere_;
  CommonFindings<diagnostics::Diagnostic> findings_;
  std::vector<sources::SourceSet> sources_;
  LeftOut left_out_;
  diagnostics::Report all_;  // until it is merged, with the numbers of what is left out
};

}  // namespace rux::driver

#endif  // DRIVER_PART_REPORT_H_
