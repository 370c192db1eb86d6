// What sections and entries have in common: identifier, flags, place in the source, name.
#ifndef FRONTEND_OBJ_H_
#define FRONTEND_OBJ_H_

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "frontend/arena.h"
#include "frontend/identifiers.h"
#include "frontend/interned_string.h"

namespace ruxcomp::core {

struct RecordView;  // debugmeta/bytes.h

class CRUXObj {
 public:
  CRUXObj() = default;
  CRUXObj(std::uint32_t id, tagNOTATION flags) : identifier(id), notation(flags) {}
  CRUXObj(const CRUXObj&) = delete;
  CRUXObj& operator=(const CRUXObj&) = delete;

  // Notes the source file, and adds it to the file table when it is new. Adds its row to the
  // present fileIndex: call it once, on a fresh object.
  void SetFile(std::string_view path);

  // Part 0: the file's base name, the text after the last backslash. Any other part: the folder, up
  // to and including that backslash. Only backslashes separate. Empty for an unknown file.
  std::string GetFile(int part) const;

  // Appends the object as a byte record, and restores it from one (debugmeta/model_bytes.cpp). The
  // first record that a process builds carries the file table, and so must the first that it reads.
  void GetBuffer(std::vector<std::uint8_t>& out) const;
  void SetBuffer(const RecordView& in);

  std::uint32_t identifier = 0;
  tagNOTATION notation = 0;
  std::uint32_t line = 0;
  std::uint32_t fileIndex = 0;
  InternedString name;

  // Every distinct path that an object was ever given. It never shrinks while the library is
  // loaded, so that indices of an earlier run keep their meaning.
  static std::vector<std::string> m_svstrIncFiles;

  // Owns the entries, values and texts of the source model. CRUXSection::Destory clears it when it
  // deletes the sections.
  static Arena m_arena;

 private:
  static std::uint32_t m_lastFile;  // the row of the path that SetFile got last
};

}  // namespace ruxcomp::core

#endif  // FRONTEND_OBJ_H_
