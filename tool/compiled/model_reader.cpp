#include "tool/compiled/model_reader.h"

#include <algorithm>
#include <cstdint>
#include <string_view>
#include <unordered_set>
#include <utility>

namespace rux {

void ModelReader::OnTable(Cursor& cursor, MetaTableView table) {
  static_cast<void>(cursor);
  if (table.base == RUX_CLASS_TableData) {
    builder_.AddCells(reinterpret_cast<const std::uint8_t*>(table.cells.data()),
                      table.cells.size());
  } else if (table.base == RUX_CLASS_Dword) {
    AddNumbers(table);
  } else {
    AddTexts(table);
  }
}

void ModelReader::OnSectionBegin(Cursor& cursor, const MetaSectionView& section) {
  static_cast<void>(cursor);
  builder_.AddSection(section.identifier);
}

void ModelReader::OnEntry(Cursor& cursor, MetaEntryView& entry) {
  static_cast<void>(cursor);
  builder_.AddEntry(entry.identifier);
  for (std::size_t i = 0; i < entry.values.size(); ++i) builder_.AddValue(entry.values[i]);
}

void ModelReader::OnSectionEnd(Cursor&, MetaSectionView&) {}

void ModelReader::OnEnd(Cursor&) {}

ruxcomp::Model ModelReader::Take() { return ruxcomp::Model(std::move(builder_)); }

void ModelReader::AddNumbers(const MetaTableView& table) {
  const auto count = static_cast<std::uint32_t>(table.numbers.size());
  builder_.ReserveIndices(table.base, count);
  for (std::uint32_t i = 0; i < count; ++i) builder_.AddNumber(table.base + i, table.numbers[i]);
}

// The library reads what the length says, also where that is not the length of the texts. A text
// that is repeated, which only properties can be, keeps its first index.
void ModelReader::AddTexts(const MetaTableView& table) {
  const bool may_repeat = table.base == RUX_CLASS_Property;
  std::unordered_set<std::string_view> known;
  builder_.ReserveIndices(table.base, table.ends.size());
  std::uint32_t index = table.base;
  for (std::size_t begin = 0; begin < table.payload.size(); ++index) {
    const std::size_t end = std::min(table.payload.find('\0', begin), table.payload.size());
    const std::string_view text = table.payload.substr(begin, end - begin);
    if (!may_repeat || known.insert(text).second) builder_.AddText(index, text);
    begin = end + 1;
  }
}

}  // namespace rux
