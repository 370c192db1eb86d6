// Sending messages: to the sink of the process or, without one, to the host's Output.
//
// A message is a row of findings/messages.def; the reporters put the place in front of the
// message's own arguments. Its name is a template argument, so that the compiler checks every
// argument against the format.
#ifndef FRONTEND_REPORT_H_
#define FRONTEND_REPORT_H_

#include <string>
#include <string_view>

#include "findings/finding.h"
#include "findings/messages.h"
#include "frontend/check_context.h"
#include "frontend/section.h"
#include "ruxcomp/output.h"

namespace ruxcomp::core {

using findings::MessageId;

namespace report_detail {
// Output takes zero-terminated texts, which views need not be.
inline std::string Kept(std::string_view text) { return std::string(text); }
inline std::uint32_t Kept(std::uint32_t number) { return number; }
inline const char* ForOutput(const std::string& text) { return text.c_str(); }
inline std::uint32_t ForOutput(std::uint32_t number) { return number; }
inline std::string_view ForSink(std::string_view text) { return text; }
inline std::uint32_t ForSink(std::uint32_t number) { return number; }

// Once for all messages with arguments of the same types.
template <class... Arguments>
[[gnu::cold, gnu::noinline]] void Send(findings::Sink& sink, MessageId id,
                                       const findings::Subject& subject, Arguments... arguments) {
  const findings::Argument list[] = {arguments...};
  sink.Take({subject, id, {list, sizeof...(arguments)}});
}
}  // namespace report_detail

// Any message.
template <MessageId Id, class... Arguments>
void Report(const findings::Subject& subject, const Arguments&... arguments) {
  if (findings::Sink* sink = findings::CurrentSink()) {
    report_detail::Send(*sink, Id, subject, report_detail::ForSink(arguments)...);
  } else {
    Output(findings::kOutputSize, findings::Message<Id>::kFormat,
           report_detail::ForOutput(report_detail::Kept(arguments))...);
  }
}

// A message that begins with the place of a section or an entry.
template <MessageId Id, class... Arguments>
void ReportAt(const CRUXObj& place, findings::Subject subject, const Arguments&... arguments) {
  const std::string file = place.GetFile(0);
  subject.place = {file, place.line};
  Report<Id>(subject, file, place.line, arguments...);
}

// A message about an entry, or the part of it that the context names: its place, then the names of
// its section and of the entry itself.
template <MessageId Id, class... Arguments>
void ReportEntry(const CRUXEntry& entry, const CheckContext& context,
                 const Arguments&... arguments) {
  ReportAt<Id>(entry, {context.section.OriginOf(entry, context.part)}, context.section.name,
               entry.name, arguments...);
}

}  // namespace ruxcomp::core

#endif  // FRONTEND_REPORT_H_
