// The forms in which machines are exported.
#ifndef EXPORTS_FORMATS_H_
#define EXPORTS_FORMATS_H_

#include <string_view>

#include "exports/account.h"
#include "losses/ledger.h"
#include "machine/machine.h"
#include "support/text_stream.h"

namespace rux::exports {

// Writes the machine, and accounts for what it writes.
using Write = void(const machine::Machine& machine, Account& account, support::TextStream& out);

#define FORMAT(name, write, is_of_entries) Write write;
#include "exports/formats.def"

struct Format {
  std::string_view name;
  Write* write;
  bool is_of_entries;
};
inline constexpr Format kFormats[] = {
#define FORMAT(name, write, is_of_entries) {name, write, is_of_entries},
#include "exports/formats.def"
};

// Null when there is none with that name.
const Format* FindFormat(std::string_view name);

// All entries that the format says nothing about are dropped, having no place in it. The items of
// the ledger have texts when it is to be reported.
void WriteMachine(const Format& format, const machine::Machine& machine, losses::Ledger& ledger,
                  bool is_reported, support::TextStream& out);

}  // namespace rux::exports

#endif  // EXPORTS_FORMATS_H_
