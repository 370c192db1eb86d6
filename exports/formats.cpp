#include "exports/formats.h"

#include <string_view>

#include "exports/account.h"
#include "losses/ledger.h"
#include "machine/machine.h"
#include "support/text_stream.h"

namespace rux::exports {

const Format* FindFormat(std::string_view name) {
  for (const Format& format : kFormats) {
    if (format.name == name) return &format;
  }
  return nullptr;
}

void WriteMachine(const Format& format, const machine::Machine& machine, losses::Ledger& ledger,
                  bool is_reported, support::TextStream& out) {
  losses::Ledger unread{};
  Account account(machine, format.is_of_entries ? ledger : unread, is_reported);
  format.write(machine, account, out);
  account.DropRest(losses::Reason::kNoPlace);
}

}  // namespace rux::exports
