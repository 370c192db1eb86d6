#include "tool/pair_arguments.h"

#include <string>

#include "diff/pairing.h"
#include "machine/load.h"
#include "support/failure.h"
#include "support/safe_text.h"
#include "support/standard_streams.h"
#include "tool/command.h"

namespace rux::tool {
namespace {

// Empty for a pair.
std::string ReasonAgainst(const std::string& meta, const std::string& debug_meta,
                          const machine::LoadOptions& options) {
  try {
    const diff::Pairing pairing = diff::PairingOf(meta, debug_meta, options);
    return pairing.belongs() ? "" : diff::ResultText(pairing) + "; 'rux match' shows the first";
  } catch (const support::Failure& failure) {
    return failure.what();
  }
}

}  // namespace

void AddMetaOfPair(Arguments& arguments, const char* names, std::string& meta, const char* help) {
  arguments.Add(names, &meta, help).File("META");
}

void WarnUnlessPair(const std::string& meta, const std::string& debug_meta,
                    const machine::LoadOptions& options) {
  if (meta.empty()) return;
  for (const std::string& file : {meta, debug_meta}) {
    if (file != "-") continue;
    throw support::Failure(support::ExitStatus::kWrongUsage,
                           "standard input cannot be compared with another file; give its name");
  }
  const std::string reason = ReasonAgainst(meta, debug_meta, options);
  if (!reason.empty()) support::PrintError("rux: warning: " + support::SafeText(reason) + '\n');
}

}  // namespace rux::tool
