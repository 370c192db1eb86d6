// The byte records of objects, entries and sections, of payloads and of parsed values.
#include <cstddef>
#include <cstdint>
#include <map>
#include <variant>

#include "debugmeta/bytes.h"
#include "frontend/entry_data.h"
#include "frontend/interned_string.h"
#include "frontend/section.h"
#include "frontend/text.h"
#include "frontend/value_records.h"
#include "ruxcomp/language/entries.h"
#include "ruxcomp/language/sections.h"

namespace ruxcomp::core {

bool incFilesWritten = false;
bool incFilesRead = false;

namespace {

// Finds the entry that a stored one is restored into: the first with its identifier whose name is
// not free.
class TemplateFinder {
 public:
  explicit TemplateFinder(const CRUXSection& section) {
    for (CRUXEntry* entry : section.entries) Add(*entry);
  }

  // An entry that was added to the end of the section.
  void Add(CRUXEntry& entry) {
    if (!HasFreeName(entry)) entries_.emplace(entry.identifier, &entry);
  }

  // Null when there is none. Restoring can make a name free: such an entry no longer counts.
  CRUXEntry* Find(std::uint32_t id) {
    auto found = entries_.lower_bound(id);
    while (found != entries_.end() && found->first == id && HasFreeName(*found->second)) {
      found = entries_.erase(found);
    }
    return found != entries_.end() && found->first == id ? found->second : nullptr;
  }

 private:
  static bool HasFreeName(const CRUXEntry& entry) { return (entry.notation & kFreeName) != 0; }

  std::multimap<std::uint32_t, CRUXEntry*> entries_;  // those of one identifier in their order
};

// An empty slot is stored as an entry without place, name and payload.
struct EmptySlot {
  const EntryTemplate& row;

  void GetBuffer(Bytes& out) const {
    ByteWriter writer(out);
    writer.Nested(CRUXObj(row.identifier, row.notation));
    writer.Nested(CRuxEntryData());
  }
};

void ReadName(ByteReader& reader, InternedString& name) {
  reader.ReadInto<Text>([&](Text text) { name = text; });
}

struct PayloadWriter {
  ByteWriter& out;

  void operator()(std::monostate) const {}
  void operator()(std::uint32_t number) const { out.Word(number); }
  void operator()(Text text) const { out(text); }
  void operator()(const TextList& list) const { out(list); }
  void operator()(const RepeaterRecord& record) const { VisitFields(record, out); }
  void operator()(const CGeValue& value) const { out.Nested(value); }
};

}  // namespace

std::uint32_t RecordId(const RecordView& record) {
  ByteReader reader(record);
  reader.Word();  // the length of the object record
  return reader.Word();
}

void CRUXObj::GetBuffer(Bytes& out) const {
  ByteWriter writer(out);
  writer.Words({identifier, notation, line, fileIndex});
  writer(name);
  if (incFilesWritten) return;
  writer(m_svstrIncFiles);
  incFilesWritten = true;
}

void CRUXObj::SetBuffer(const RecordView& in) {
  ByteReader reader(in);
  identifier = reader.Word();
  notation = reader.Word();
  line = reader.Word();
  fileIndex = reader.Word();
  ReadName(reader, name);
  if (incFilesRead) return;
  reader(m_svstrIncFiles);
  incFilesRead = true;
}

void CRUXEntry::GetBuffer(Bytes& out) const {
  ByteWriter writer(out);
  writer.Nested<CRUXObj>(*this);
  writer.Nested(m_RuxEntryData);
}

void CRUXEntry::SetBuffer(const RecordView& in) {
  ByteReader reader(in);
  CRUXObj::SetBuffer(reader.Nested());
  m_RuxEntryData.SetBuffer(reader.Nested());
}

void CRUXSection::GetBuffer(Bytes& out) const {
  ByteWriter writer(out);
  writer.Nested<CRUXObj>(*this);
  writer.Word(static_cast<std::uint32_t>(entries.size()));
  for (std::size_t place = 0; place < entries.size(); ++place) {
    if (entries[place]) {
      writer.Nested(*entries[place]);
    } else {
      writer.Nested(EmptySlot{TemplateOf(place)});
    }
  }
}

void CRUXSection::SetBuffer(const RecordView& in) {
  ByteReader reader(in);
  CRUXObj::SetBuffer(reader.Nested());
  FillSlots();
  TemplateFinder templates(*this);
  for (std::uint32_t count = reader.Word(); count > 0; --count) {
    const RecordView record = reader.Nested();
    const std::uint32_t id = RecordId(record);
    if (CRUXEntry* found = templates.Find(id)) {
      found->SetBuffer(record);
    } else if (CRUXEntry* made = MakeEntry(id, 0)) {
      made->SetBuffer(record);
      entries.push_back(made);
      templates.Add(*made);
    }
  }
}

void CRuxEntryData::GetBuffer(Bytes& out) const {
  ByteWriter writer(out);
  writer.Word(type_);
  Visit(PayloadWriter{writer});
}

void CRuxEntryData::SetBuffer(const RecordView& in) {
  Destory();
  ByteReader reader(in);
  Create(reader.Word());
  if (number()) {
    Set(reader.Word());
  } else if (text()) {
    reader.ReadInto<Text>([&](Text read) { Set(read); });
  } else if (list()) {
    reader.ReadInto<TextList>([&](const TextList& read) { Set(read); });
  } else if (value()) {
    auto& made = CRUXObj::m_arena.Make<CGeValue>();
    Set(made);
    made.SetBuffer(reader.Nested());
  } else if (repeater()) {
    auto& made = CRUXObj::m_arena.Make<RepeaterRecord>();
    Set(made);
    VisitFields(made, reader);
  }
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
  Text text;
  reader(text);
  Create(type, text);
  VisitValueFields(record_, reader);
}

}  // namespace ruxcomp::core
