#include "frontend/entry.h"

#include <cstddef>
#include <cstdint>
#include <string_view>

#include "findings/origin.h"
#include "frontend/check_context.h"
#include "frontend/interned_string.h"
#include "frontend/report.h"
#include "frontend/text.h"
#include "ruxcomp/language/parts.h"

namespace ruxcomp::core {

void CRUXEntry::Init(std::string_view file, InternedString key, std::string_view value,
                     std::uint32_t item_line, const findings::Origin& origin) {
  SetFile(file);
  name = key;
  line = item_line;
  item = origin.item;
  m_RuxEntryData.Create(identifier);
  if (!m_RuxEntryData.HasData()) Report<MessageId::kEntryWithoutPayload>({origin}, identifier);
  const Text text = m_arena.Add(value);
  text_ = text.c_str();
  text_size_ = text.size();
}

TextList CRUXEntry::ListItems() const {
  Splitter parts(ItemText());
  return Keep(parts, CountParts(parts));
}

TextList CRUXEntry::Keep(Splitter& parts, std::size_t count) {
  auto* const texts = m_arena.MakeArray<std::string_view>(count);
  for (std::size_t i = 0; i < count; ++i) texts[i] = parts.Next();
  return {texts, count};
}

std::uint32_t CRUXEntry::IsValidEx(const CheckContext&, unsigned int) { return 1; }

}  // namespace ruxcomp::core
