// Whether a meta file and a debug meta file are of the same machine. Meta files have no identity of
// their own: what both say is compared.
#ifndef DIFF_PAIRING_H_
#define DIFF_PAIRING_H_

#include <string>
#include <vector>

#include "diff/change.h"
#include "machine/load.h"
#include "support/json.h"
#include "support/text_stream.h"

namespace rux::diff {

struct Pairing {
  // As the user called the files.
  std::string meta;
  std::string debug_meta;
  std::vector<Change> differences;  // from the meta file to the debug meta file

  bool belongs() const { return differences.empty(); }
};

// Of a meta file and a debug meta file, or a script in its place. Costs what compiling the script
// does. Throws a Failure when a file is not what it has to be, or cannot be compared.
Pairing PairingOf(const std::string& meta, const std::string& debug_meta,
                  const machine::LoadOptions& options);

// "a.meta and b.metad do not belong together: 2 differences"
std::string ResultText(const Pairing& pairing);

// The result, then the first difference.
void WriteText(const Pairing& pairing, bool uses_colour, support::TextStream& out);

// docs/match.schema.json
void WriteMatch(const Pairing& pairing, support::JsonObject& json);

}  // namespace rux::diff

#endif  // DIFF_PAIRING_H_
