#include "query/value_text.h"

#include <cstdint>
#include <cstdio>
#include <string>
#include <variant>

#include "frontend/entry_data.h"
#include "frontend/gevalue.h"
#include "frontend/value_records.h"

namespace {

// Appends the parts of a payload, separated by commas. Also a visitor for the fields of records.
struct TextBuilder {
  std::string& out;
  bool first = true;

  void operator()(const std::string& part) {
    if (!first) out += ',';
    first = false;
    out += part;
  }
  void operator()(const TextList& list) {
    for (const std::string& part : list) (*this)(part);
  }
  void operator()(std::monostate) {}
  void operator()(std::uint32_t number) {
    char text[sizeof "0xFFFFFFFF"];
    std::snprintf(text, sizeof text, "0x%lx", static_cast<unsigned long>(number));
    (*this)(std::string(text));
  }
  void operator()(const CGeValue& value) {
    if (std::holds_alternative<std::monostate>(value.record())) return;
    (*this)(value.GetStrType());
    VisitValueFields(value.record(), *this);
  }
  void operator()(const RepeaterRecord& record) { VisitFields(record, *this); }
};

}  // namespace

std::string ValueText(const CRuxEntryData& data) {
  std::string text;
  std::visit(TextBuilder{text}, data.payload());
  return text;
}
