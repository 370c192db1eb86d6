// The forms of a ledger.
#ifndef LOSSES_REPORT_H_
#define LOSSES_REPORT_H_

#include <cstddef>
#include <string>
#include <string_view>

#include "losses/ledger.h"
#include "support/text_stream.h"

namespace rux::losses {

// "124 items: 96 used, 20 changed, 8 dropped"
std::string CountsText(const Ledger& ledger);

// The counts, and what was changed or dropped, by reason; in lines that are safe to show.
void WriteText(const Ledger& ledger, support::TextStream& out);

// All items, as docs/losses.schema.json has them.
void WriteJson(const Ledger& ledger, support::TextStream& out);

struct Form {
  std::string_view name;
  void (*write)(const Ledger& ledger, support::TextStream& out);
};
inline constexpr Form kForms[] = {{"text", WriteText}, {"json", WriteJson}};

}  // namespace rux::losses

#endif  // LOSSES_REPORT_H_
