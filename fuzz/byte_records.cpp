// Byte records: arbitrary bytes as the record of an object of any class. What was taken from them,
// written and taken again must be written the same again.
//
// The first byte of an input chooses the class, the others are the record.
#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <stdexcept>
#include <string>

#include "debugmeta/bytes.h"
#include "frontend/entry_data.h"
#include "frontend/obj.h"
#include "frontend/section_kinds.h"
#include "frontend/value_records.h"
#include "fuzz/target.h"
#include "query/process_state.h"
#include "ruxcomp/data.h"
#include "ruxcomp/language/entries.h"

using namespace ruxcomp::core;

namespace {

using fuzz::Expect;

// Writes what an object takes from a record into `out`; false when the record is too short.
template <class Object>
bool Rewrite(Object& object, const RecordView& record, Bytes& out) {
  try {
    object.SetBuffer(record);
  } catch (const std::out_of_range& error) {
    Expect(std::string(error.what()) == "vector", "a short record raises \"vector\"");
    return false;
  }
  object.GetBuffer(out);
  return true;
}

// The same with an object that `make` makes in a process that took and wrote no record before.
template <class Make>
bool RewriteAfresh(Make make, const RecordView& record, Bytes& out) {
  ruxcomp::core::ResetProcessState();
  auto object = make();
  return Rewrite(*object, record, out);
}

template <class Make>
void RoundTrip(Make make, const RecordView& record) {
  Bytes first;
  if (!RewriteAfresh(make, record, first)) return;
  Bytes second;
  Expect(RewriteAfresh(make, first, second), "what was written can be taken");
  Expect(first == second, "what was written and taken is written the same again");
}

// A record, followed by the zeros that replace the missing end of a file.
RecordView Padded(const Bytes& record) { return {record, record.size() + record.size() / 2}; }

template <class Make>
void RoundTrips(Make make, const Bytes& record) {
  RoundTrip(make, record);
  RoundTrip(make, Padded(record));
}

// Sections belong to the registry; ResetProcessState deletes them.
void SectionRoundTrips(std::uint32_t row, const Bytes& record) {
  RoundTrips(kSectionMakers[row].make_empty, record);
}

void EntryRoundTrips(PayloadType type, const Bytes& record) {
  RoundTrips([type] { return MakeEntry(type, 0); }, record);
}

template <class Object>
std::unique_ptr<Object> New() {
  return std::make_unique<Object>();
}

// Records that nest no other: all that is taken is in them as it is written.
template <class Object>
void PlainRoundTrips(const Bytes& record) {
  RoundTrips(New<Object>, record);
  Bytes written;
  if (!RewriteAfresh(New<Object>, record, written)) return;
  Expect(
      written.size() <= record.size() && std::equal(written.begin(), written.end(), record.begin()),
      "what was taken is written as it was");
}

void ChooseClass(std::uint8_t choice, const Bytes& record) {
  constexpr PayloadType kTypes[] = {PAYLOAD_DWORD, PAYLOAD_STRING, PAYLOAD_STRINGLIST,
                                    PAYLOAD_VALUE, PAYLOAD_REPEATER};
  constexpr std::uint8_t kTypeCount = sizeof kTypes / sizeof kTypes[0];
  if (choice < g_dwNTMSect) return SectionRoundTrips(choice, record);
  choice = static_cast<std::uint8_t>(choice - g_dwNTMSect);
  if (choice < kTypeCount) return EntryRoundTrips(kTypes[choice], record);
  choice = static_cast<std::uint8_t>(choice - kTypeCount);
  if (choice == 0) return PlainRoundTrips<CRUXObj>(record);
  if (choice == 1) return PlainRoundTrips<CGeValue>(record);
  RoundTrips(New<CRuxEntryData>, record);
}

}  // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  if (size == 0) return 0;
  ChooseClass(*data, Bytes(data + 1, data + size));
  ruxcomp::core::ResetProcessState();
  return 0;
}
