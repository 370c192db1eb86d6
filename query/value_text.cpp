#include "query/value_text.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <string>
#include <string_view>
#include <variant>

#include "frontend/entry_data.h"
#include "frontend/gevalue.h"
#include "frontend/value_records.h"

namespace {

// Writes the parts of a payload, separated by commas. Also a visitor for the fields of records.
struct TextWriter {
  char* out;  // null: the parts are counted only
  std::size_t size = 0;
  bool first = true;

  void operator()(std::string_view part) {
    if (!first) Write(",");
    first = false;
    Write(part);
  }
  void operator()(const std::string& part) { (*this)(std::string_view(part)); }
  void operator()(const TextList& list) {
    for (const std::string& part : list) (*this)(part);
  }
  void operator()(std::monostate) {}
  void operator()(std::uint32_t number) {
    char text[sizeof "0xFFFFFFFF"];
    std::snprintf(text, sizeof text, "0x%lx", static_cast<unsigned long>(number));
    (*this)(std::string_view(text));
  }
  void operator()(const CGeValue& value) {
    if (std::holds_alternative<std::monostate>(value.record())) return;
    (*this)(value.GetStrType());
    VisitValueFields(value.record(), *this);
  }
  void operator()(const RepeaterRecord& record) { VisitFields(record, *this); }

 private:
  void Write(std::string_view text) {
    if (out) std::copy(text.begin(), text.end(), out + size);
    size += text.size();
  }
};

}  // namespace

std::size_t WriteValueText(const CRuxEntryData& data, char* out) {
  TextWriter writer{out};
  std::visit(writer, data.payload());
  if (out) out[writer.size] = '\0';
  return writer.size;
}
