// The forms of output that other programs read.
#ifndef DIAGNOSTICS_MACHINE_FORM_H_
#define DIAGNOSTICS_MACHINE_FORM_H_

#include <functional>
#include <string_view>

#include "support/text_stream.h"

namespace rux::diagnostics {

struct Report;

// Writes a report.
using WriteForm = void(const Report& report, support::TextStream& out);

// The contents of a document about several scripts. The pieces are produced while it is written, so
// that none has to be kept.
struct Pieces {
  // Calls add() with the piece of each script, as the form writes it, in the order of the scripts.
  std::function<void(const std::function<void(std::string_view piece)>& add)> add_all;
  // All scripts together, without their diagnostics. Call it after add_all.
  std::function<Report()> total;
};

// Writes a document about several scripts.
using WriteMany = void(const Pieces& pieces, support::TextStream& out);

struct MachineForm {
  std::string_view name;
  WriteForm* write;        // a document about one script
  WriteForm* write_piece;  // its piece of a document about several
  WriteMany* write_many;
};

// Null for an unknown name. "human" is not a machine form.
const MachineForm* FindMachineForm(std::string_view name);

// One piece after the other, for forms that have nothing around them.
WriteMany WriteInARow;

// A line for each diagnostic and note, in the form that compilers print and editors parse:
//   boards/server.rux:12:16: error: [SENSOR] THRESHOLD_FH: hto has not been defined
//   [undefined-word]
WriteForm WriteGccText;
WriteForm WriteGccPiece;

// docs/diagnostics.schema.json
WriteForm WriteJsonReport;
WriteForm WriteJsonPiece;
WriteMany WriteJsonReports;

// Static Analysis Results Interchange Format, version 2.1.0: one run, whatever the number of
// scripts, because services take one from each tool.
WriteForm WriteSarifReport;
WriteForm WriteSarifPiece;
WriteMany WriteSarifReports;

// A test suite for each script, with a test for each error and warning, which failed.
WriteForm WriteJunitReport;
WriteForm WriteJunitPiece;
WriteMany WriteJunitReports;

// Workflow commands: lines that GitHub shows beside the sources.
WriteForm WriteGithubText;
WriteForm WriteGithubPiece;

}  // namespace rux::diagnostics

#endif  // DIAGNOSTICS_MACHINE_FORM_H_
