#include "driver/messages.h"

#include "advice/advice.h"
#include "diagnostics/registry.h"
#include "diff/classes.h"
#include "findings/message_row.h"
#include "findings/message_rows.h"
#include "lint/lint_rows.h"
#include "rules/rule_report.h"
#include "run/log.h"

namespace rux::driver {

const diagnostics::Registry& AllMessages() {
  static const diagnostics::Registry registry = {
      ruxcomp::findings::RowsOf(ruxcomp::findings::kRows),
      ruxcomp::findings::RowsOf(run::kRows),
      ruxcomp::findings::RowsOf(advice::kRows),
      ruxcomp::findings::RowsOf(kRows),
      ruxcomp::findings::RowsOf(rules::kRows),
      ruxcomp::findings::RowsOf(lint::kRows),
      ruxcomp::findings::RowsOf(diff::kRows),
  };
  return registry;
}

}  // namespace rux::driver
