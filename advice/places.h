// From the origin of a finding to its place in a file.
#ifndef ADVICE_PLACES_H_
#define ADVICE_PLACES_H_

#include <cstddef>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "advice/message_advice.h"
#include "diagnostics/diagnostic.h"
#include "run/run.h"
#include "sources/source_set.h"

namespace rux::advice {

// Takes the findings of one run in their order.
class Places {
 public:
  Places(const sources::SourceSet& sources, std::string script);

  // Fills in where the finding is and which INCLUDEs lead there.
  void Locate(const run::Finding& finding, diagnostics::Diagnostic& diagnostic);

  // The same for what is at an origin; false when nothing is.
  bool Locate(const ruxcomp::findings::Origin& origin, Underline underline,
              diagnostics::Diagnostic& diagnostic);

  // The same for a line of the file with that base name.
  void Locate(const run::Place& place, diagnostics::Diagnostic& diagnostic);

  // Fills in the INCLUDEs that lead to the first opening of the file that the diagnostic is in.
  void AddIncludes(diagnostics::Diagnostic& diagnostic) const;

  // The INCLUDEs that lead to an opening, the nearest first.
  std::vector<diagnostics::Note> IncludesOf(const sources::Opening& opening) const;

  // The part of an item that an origin names; empty when it has no such part.
  std::optional<std::string_view> PartAt(const ruxcomp::findings::Origin& origin);

 private:
  bool IsAt(const run::Finding& finding, const diagnostics::Diagnostic& diagnostic) const;
  bool LocateProblem(const run::Finding& finding, diagnostics::Diagnostic& diagnostic);
  std::optional<support::ByteRange> RangeOf(const sources::OriginSpot& spot, std::uint32_t part,
                                            Underline underline);
  const std::vector<std::string_view>& PartsOf(const ruxcomp::reader::Item& item);
  const sources::Opening* FindNamed(const std::string& base_name);

  const sources::SourceSet& sources_;
  const std::string script_;  // as it can be opened
  // A value may be long and have a finding for each of its parts.
  const ruxcomp::reader::Item* split_ = nullptr;
  std::vector<std::string_view> parts_;
  std::map<std::uint32_t, std::size_t> next_problem_;            // of each opening
  std::map<std::string, const sources::Opening*> by_base_name_;  // when first needed
};

}  // namespace rux::advice

#endif  // ADVICE_PLACES_H_
