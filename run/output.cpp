// The function Output, to which a reader plug-in reports and, before main(), the library.
#include "ruxcomp/output.h"

#include <algorithm>
#include <cstdarg>
#include <cstdint>
#include <cstdio>
#include <string>
#include <string_view>
#include <utility>

#include "findings/message_row.h"
#include "findings/message_rows.h"
#include "run/log.h"

namespace rux::run {
namespace {

struct ArgumentList {
  va_list list;
};

// The messages of a reader, whose only arguments are the place.
const ruxcomp::findings::MessageRow* FindReaderRow(std::string_view format) {
  static constexpr const ruxcomp::findings::MessageRow* kReaderRows[] = {
#define MESSAGE(name, ...) &ruxcomp::findings::rows::k##name,
#include "findings/messages/script_text.def"
#undef MESSAGE
  };
  const auto* found =
      std::find_if(std::begin(kReaderRows), std::end(kReaderRows),
                   [&](const ruxcomp::findings::MessageRow* row) { return row->format == format; });
  return found == std::end(kReaderRows) ? nullptr : *found;
}

std::string TextOf(ArgumentList& list) {
  const char* text = va_arg(list.list, const char*);
  return text == nullptr ? "(null)" : text;
}

// The message with that format.
const ruxcomp::findings::MessageRow& RowOf(std::string_view format) {
  const ruxcomp::findings::MessageRow& not_loaded = ruxcomp::findings::rows::kReaderNotLoaded;
  if (format == not_loaded.format) return not_loaded;
  const ruxcomp::findings::MessageRow* row = FindReaderRow(format);
  return row == nullptr ? kOtherMessage : *row;
}

// Fills in the arguments of a known message.
void Decode(ArgumentList& list, Finding& finding) {
  if (!finding.row->lead.has_place) {
    finding.arguments = {TextOf(list)};
    return;
  }
  finding.place = Place{TextOf(list), std::uint32_t{va_arg(list.list, unsigned int)}};
  finding.arguments = {finding.place->file, finding.place->line};
}

[[gnu::format(printf, 2, 0)]] std::string Printed(unsigned int size, const char* format,
                                                  va_list list) {
  std::string text(size, '\0');
  std::vsnprintf(text.data(), text.size(), format, list);
  text.resize(std::min(text.find('\0'), text.size()));
  while (!text.empty() && text.back() == '\n') text.pop_back();
  return text;
}

}  // namespace

// Defined here, so that whoever links the log from the room's archive gets Output with it.
Log& ProcessLog() {
  // Never destroyed: the library may report while it is unloaded.
  static auto* log = new Log;
  return *log;
}

}  // namespace rux::run

extern "C" __attribute__((visibility("default"))) void Output(unsigned int size, const char* format,
                                                              ...) {
  rux::run::Log& log = rux::run::ProcessLog();
  rux::run::Finding finding{&rux::run::RowOf(format)};
  if (!log.Wants(*finding.row, finding.origin)) return;
  rux::run::ArgumentList list;
  va_start(list.list, format);
  if (finding.row == &rux::run::kOtherMessage) {
    finding.arguments = {rux::run::Printed(size, format, list.list)};
  } else {
    rux::run::Decode(list, finding);
  }
  va_end(list.list);
  log.Keep(std::move(finding));
}
