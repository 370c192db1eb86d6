#include "compiled/read_model.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <string_view>
#include <utility>

#include "compiled/meta_walk.h"
#include "compiled/text_set.h"

namespace rux::compiled {
namespace {

// What the block of a table holds, as long as its length says: the library reads that much, also
// where the texts take more or less.
std::string_view PayloadOf(std::string_view file, std::size_t table) {
  const std::size_t block = LoadWord(&file[kDirectoryOffset + table * kWordSize]);
  return file.substr(block + 2 * kWordSize, LoadWord(&file[block + kWordSize]));
}

void AddNumbers(ruxcomp::ModelBuilder& builder, std::uint32_t base, std::string_view payload) {
  const Words numbers(payload);
  builder.ReserveIndices(base, numbers.size());
  for (std::uint32_t i = 0; i < numbers.size(); ++i) builder.AddNumber(base + i, numbers[i]);
}

// A text that is repeated, which only properties can be, keeps its first index.
void AddTexts(ruxcomp::ModelBuilder& builder, std::uint32_t base, std::string_view payload) {
  const bool may_repeat = base == RUX_CLASS_Property;
  TextSet known;
  const auto count = std::count(payload.begin(), payload.end(), '\0');
  builder.ReserveIndices(base, static_cast<std::size_t>(count));
  std::uint32_t index = base;
  for (std::size_t begin = 0; begin < payload.size(); ++index) {
    const std::size_t end = std::min(payload.find('\0', begin), payload.size());
    const std::string_view text = payload.substr(begin, end - begin);
    if (!may_repeat || known.Insert(text)) builder.AddText(index, text);
    begin = end + 1;
  }
}

}  // namespace

ruxcomp::Model ReadModel(std::string bytes) {
  ruxcomp::ModelBuilder builder;
  for (std::size_t i = 0; i < kTableClasses.size(); ++i) {
    const std::string_view payload = PayloadOf(bytes, i);
    if (kTableClasses[i] == RUX_CLASS_TableData) {
      builder.AddCells(reinterpret_cast<const std::uint8_t*>(payload.data()), payload.size());
    } else if (kTableClasses[i] == RUX_CLASS_Dword) {
      AddNumbers(builder, kTableClasses[i], payload);
    } else {
      AddTexts(builder, kTableClasses[i], payload);
    }
  }
  builder.TakeSections(std::move(bytes), kSectionsOffset / kWordSize);
  return ruxcomp::Model(std::move(builder));
}

}  // namespace rux::compiled
