// The byte records of objects, entries and sections.
#include "debugmeta/model_bytes.h"

#include "debugmeta/bytes.h"
#include "frontend/payload_types.h"
#include "frontend/section.h"

namespace {

// The file table travels in the first object record that a process writes, and is looked for in the
// first one that it reads. Records carry no mark of it: writer and reader agree through these
// alone.
bool incFilesWritten = false;
bool incFilesRead = false;

// The entry that a stored one is restored into: the first of its identifier whose name is not free.
CRUXEntry* FindTemplate(const CRUXSection& section, std::uint32_t id) {
  for (const auto& entry : section.entries) {
    if (entry->identifier == id && !(entry->notation & kFreeName)) return entry.get();
  }
  return nullptr;
}

}  // namespace

std::uint32_t RecordId(const RecordView& record) {
  ByteReader reader(record);
  reader.Word();  // the length of the object record
  return reader.Word();
}

void CRUXObj::GetBuffer(Bytes& out) const {
  out.clear();
  ByteWriter writer(out);
  writer.Word(identifier);
  writer.Word(notation);
  writer.Word(line);
  writer.Word(fileIndex);
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
  name.clear();
  reader(name);
  if (incFilesRead) return;
  reader(m_svstrIncFiles);
  incFilesRead = true;
}

void CRUXEntry::GetBuffer(Bytes& out) const {
  out.clear();
  ByteWriter writer(out);
  Bytes record;
  CRUXObj::GetBuffer(record);
  writer.Nested(record);
  m_RuxEntryData.GetBuffer(record);
  writer.Nested(record);
}

void CRUXEntry::SetBuffer(const RecordView& in) {
  ByteReader reader(in);
  CRUXObj::SetBuffer(reader.Nested());
  m_RuxEntryData.SetBuffer(reader.Nested());
}

void CRUXSection::GetBuffer(Bytes& out) const {
  out.clear();
  ByteWriter writer(out);
  Bytes record;
  CRUXObj::GetBuffer(record);
  writer.Nested(record);
  writer.Word(static_cast<std::uint32_t>(entries.size()));
  for (const auto& entry : entries) {
    entry->GetBuffer(record);
    writer.Nested(record);
  }
}

void CRUXSection::SetBuffer(const RecordView& in) {
  ByteReader reader(in);
  CRUXObj::SetBuffer(reader.Nested());
  for (std::uint32_t count = reader.Word(); count > 0; --count) {
    const RecordView record = reader.Nested();
    const std::uint32_t id = RecordId(record);
    if (CRUXEntry* found = FindTemplate(*this, id)) {
      found->SetBuffer(record);
    } else if (std::unique_ptr<CRUXEntry> made = MakeEntry(id, 0)) {
      made->SetBuffer(record);
      entries.push_back(std::move(made));
    }
  }
}
