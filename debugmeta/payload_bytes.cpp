// The byte records of payloads and parsed values: the type, then the fields in order.
#include <cstdint>
#include <string>
#include <variant>

#include "debugmeta/bytes.h"
#include "frontend/entry_data.h"
#include "frontend/gevalue.h"
#include "frontend/value_records.h"

namespace {

struct PayloadWriter {
  ByteWriter& out;

  void operator()(std::monostate) const {}
  void operator()(std::uint32_t number) const { out.Word(number); }
  void operator()(const std::string& text) const { out(text); }
  void operator()(const TextList& list) const { out(list); }
  void operator()(const RepeaterRecord& record) const { VisitFields(record, out); }
  void operator()(const CGeValue& value) const { out.Nested(value); }
};

struct PayloadReader {
  ByteReader& in;

  void operator()(std::monostate) const {}
  void operator()(std::uint32_t& number) const { number = in.Word(); }
  void operator()(std::string& text) const { in(text); }
  void operator()(TextList& list) const { in(list); }
  void operator()(RepeaterRecord& record) const { VisitFields(record, in); }
  void operator()(CGeValue& value) const { value.SetBuffer(in.Nested()); }
};

}  // namespace

void CRuxEntryData::GetBuffer(Bytes& out) const {
  ByteWriter writer(out);
  writer.Word(type_);
  std::visit(PayloadWriter{writer}, payload_);
}

void CRuxEntryData::SetBuffer(const RecordView& in) {
  Destory();
  ByteReader reader(in);
  Create(reader.Word());
  std::visit(PayloadReader{reader}, payload_);
}

void CGeValue::GetBuffer(Bytes& out) const {
  ByteWriter writer(out);
  writer.Word(type_);
  writer(str_type_);
  VisitValueFields(record_, writer);
}

void CGeValue::SetBuffer(const RecordView& in) {
  Destory();
  ByteReader reader(in);
  const std::uint32_t type = reader.Word();
  std::string text;
  reader(text);
  Create(type, text);
  VisitValueFields(record_, reader);
}
