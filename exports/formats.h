// The forms in which machines are exported.
#ifndef EXPORTS_FORMATS_H_
#define EXPORTS_FORMATS_H_

#include <string_view>
#include <vector>

#include "exports/account.h"
#include "machine/machine.h"
#include "support/text_stream.h"

namespace rux::exports {

// Writes the machine, and accounts for what it writes.
using Write = void (*)(const machine::Machine& machine, Account& account, support::TextStream& out);

struct Format {
  std::string_view name;
  Write write;
  bool is_of_entries = true;  // false: nothing of the machine is expected in it
};

// In the order of the help.
const std::vector<Format>& Formats();

// Null when there is none with that name.
const Format* FindFormat(std::string_view name);

// All entries that the format says nothing about are dropped, having no place in it. The items of
// the ledger have texts when it is to be reported.
void WriteMachine(const Format& format, const machine::Machine& machine, losses::Ledger& ledger,
                  bool is_reported, support::TextStream& out);

// The formats, for Formats(): a file each, or a row of a table.
void WriteC(const machine::Machine& machine, Account& account, support::TextStream& out);
void WriteRust(const machine::Machine& machine, Account& account, support::TextStream& out);
void WriteGo(const machine::Machine& machine, Account& account, support::TextStream& out);
void WritePython(const machine::Machine& machine, Account& account, support::TextStream& out);
void WriteCsv(const machine::Machine& machine, Account& account, support::TextStream& out);
void WritePrometheus(const machine::Machine& machine, Account& account, support::TextStream& out);
void WritePrometheusRules(const machine::Machine& machine, Account& account,
                          support::TextStream& out);
void WritePrometheusTests(const machine::Machine& machine, Account& account,
                          support::TextStream& out);
void WriteJson(const machine::Machine& machine, Account& account, support::TextStream& out);
void WriteIpmiSdr(const machine::Machine& machine, Account& account, support::TextStream& out);
void WriteLmSensors(const machine::Machine& machine, Account& account, support::TextStream& out);
void WriteEntityManager(const machine::Machine& machine, Account& account,
                        support::TextStream& out);

}  // namespace rux::exports

#endif  // EXPORTS_FORMATS_H_
