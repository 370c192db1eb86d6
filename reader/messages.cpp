#include "reader/messages.h"

#include <dlfcn.h>

#include <cstdint>
#include <iterator>
#include <string>
#include <string_view>

#include "findings/finding.h"
#include "findings/messages.h"
#include "findings/origin.h"
#include "ruxcomp/language/paths.h"

namespace ruxcomp::reader {
namespace {

using OutputFunction = void (*)(unsigned int size, const char* format, ...);

}  // namespace

const char* FormatOf(MessageId message) {
  switch (message) {
#define MESSAGE(name, format, ...) \
  case MessageId::k##name:         \
    return format;
#include "findings/messages/script_text.def"
#undef MESSAGE
    default:
      return "";
  }
}

void Report(const std::string& path, MessageId message, std::uint32_t line,
            const findings::Origin& origin) {
  const std::string base_name(ruxcomp::language::BaseNameOf(path));
  if (findings::Sink* sink = findings::CurrentSink()) {
    const findings::Argument arguments[] = {std::string_view(base_name), line};
    findings::Finding finding;
    finding.origin = origin;
    finding.place = {base_name, line};
    finding.message = message;
    finding.arguments = {arguments, std::size(arguments)};
    sink->Take(finding);
    return;
  }
  // Not linked against: the reader also serves programs that have no Output.
  const auto output = reinterpret_cast<OutputFunction>(dlsym(RTLD_DEFAULT, "Output"));
  if (output != nullptr) output(findings::kOutputSize, FormatOf(message), base_name.c_str(), line);
}

}  // namespace ruxcomp::reader
