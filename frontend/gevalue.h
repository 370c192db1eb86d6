// The parsed form of a value description: type code, the text that named the type, typed record.
#ifndef FRONTEND_GEVALUE_H_
#define FRONTEND_GEVALUE_H_

#include <cstdint>
#include <string>
#include <vector>

#include "frontend/interned_string.h"
#include "frontend/value_records.h"

struct RecordView;  // debugmeta/bytes.h

class CGeValue {
 public:
  // Empty: type 0, no record, no type string. Copies are independent of their source.
  CGeValue() = default;
  CGeValue(std::uint32_t type, const std::string& text) { Create(type, text); }

  // Sets type and type string and makes the type's empty record; types without one get none.
  void Create(std::uint32_t type, const std::string& text);

  // Back to empty.
  void Destory();

  std::uint32_t GetType() const { return type_; }
  const std::string& GetStrType() const { return str_type_; }

  // The live record of value_records.h, owned by this object; null when there is none.
  void* GetData() { return LiveAddress(record_); }

  const ValueRecord& record() const { return record_; }
  ValueRecord& record() { return record_; }

  // Appends the byte record; and back from it (debugmeta/payload_bytes.cpp).
  void GetBuffer(std::vector<std::uint8_t>& out) const;
  void SetBuffer(const RecordView& in);

 private:
  std::uint32_t type_ = 0;
  ValueRecord record_;
  InternedString str_type_;
};

#endif  // FRONTEND_GEVALUE_H_
