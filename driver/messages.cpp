#include "driver/messages.h"

#include "advice/advice.h"
#include "diagnostics/registry.h"
#include "findings/message_row.h"
#include "findings/message_rows.h"
#include "rules/rule_report.h"
#include "run/log.h"

namespace rux::driver {

const diagnostics::Registry& AllMessages() {
  static const diagnostics::Registry registry = {
      findings::RowsOf(findings::kRows), findings::RowsOf(run::kRows),
      findings::RowsOf(advice::kRows),   findings::RowsOf(kRows),
      findings::RowsOf(rules::kRows),
  };
  return registry;
}

}  // namespace rux::driver
