// Making a read model of the bytes of a meta file; see model.h.
#ifndef RUXCOMP_MODEL_FILE_H_
#define RUXCOMP_MODEL_FILE_H_

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <utility>

#include "ruxcomp/file/cursor.h"
#include "ruxcomp/file/fault.h"
#include "ruxcomp/file/meta_records.h"
#include "ruxcomp/file/meta_walk.h"
#include "ruxcomp/file/views.h"
#include "ruxcomp/language/symbols.h"
#include "ruxcomp/model/builder.h"
#include "ruxcomp/verify/text_set.h"

namespace ruxcomp::detail {

class ModelVisitor : public file::MetaVisitor {
 public:
  explicit ModelVisitor(ModelBuilder& builder) : builder_(builder) {}

  void OnTable(file::Cursor&, const file::MetaTableView& table) {
    switch (table.base) {
      case language::CLASS_TableData:
        return builder_.AddCells(reinterpret_cast<const std::uint8_t*>(table.cells.data()),
                                 table.cells.size());
      case language::CLASS_Dword:
        return AddNumbers(table.base, table.numbers);
      default:
        return AddTexts(table.base, table.stated);
    }
  }

  void OnSectionBegin(file::Cursor&, const file::MetaSectionView& section) {
    builder_.AddSection(section.identifier);
  }
  void OnEntry(file::Cursor&, const file::MetaEntryView& entry) {
    builder_.AddKeptEntry(entry.offset);
  }

 private:
  void AddNumbers(std::uint32_t base, const file::Words& numbers) {
    builder_.ReserveIndices(base, numbers.size());
    for (std::uint32_t i = 0; i < numbers.size(); ++i) builder_.AddNumber(base + i, numbers[i]);
  }

  // A text that is repeated, which only properties can be, keeps its first index.
  void AddTexts(std::uint32_t base, std::string_view texts) {
    const bool may_repeat = base == language::CLASS_Property;
    verify::TextSet known;
    const auto count = std::count(texts.begin(), texts.end(), '\0');
    builder_.ReserveIndices(base, static_cast<std::size_t>(count));
    for (std::size_t begin = 0; begin < texts.size(); ++base) {
      const std::size_t end = std::min(texts.find('\0', begin), texts.size());
      const std::string_view text = texts.substr(begin, end - begin);
      if (!may_repeat || known.Insert(text)) builder_.AddText(base, text);
      begin = end + 1;
    }
  }

  ModelBuilder& builder_;
};

// What the library would hold after a gcInit of a file of these bytes, found without it. Of a file
// that is not sound, what is before the first fault.
inline ModelBuilder ReadFile(std::string bytes) {
  ModelBuilder builder;
  ModelVisitor visitor(builder);
  file::Faults faults;
  file::WalkMeta(builder.KeepFile(std::move(bytes)), faults, visitor);
  return builder;
}

}  // namespace ruxcomp::detail

#endif  // RUXCOMP_MODEL_FILE_H_
