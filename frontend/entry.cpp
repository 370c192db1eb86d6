#include "frontend/entry.h"

#include <cstdint>
#include <string>

#include "findings/origin.h"
#include "frontend/check_context.h"
#include "frontend/report.h"
#include "frontend/value_records.h"
#include "ruxcomp/language/parts.h"

namespace ruxcomp::core {

void CRUXEntry::Init(const std::string& file, const std::string& key, const std::string& value,
                     std::uint32_t item_line, const findings::Origin& origin) {
  SetFile(file);
  name = key;
  line = item_line;
  item = origin.item;
  m_RuxEntryData.Create(identifier);
  if (!m_RuxEntryData.HasData()) Report<MessageId::kEntryWithoutPayload>({origin}, identifier);
  text_ = m_itemTexts.Add(value);
}

TextList CRUXEntry::ListItems() const {
  TextList items;
  SplitItems(text_, items);
  return items;
}

std::uint32_t CRUXEntry::IsValidEx(const CheckContext&, unsigned int) { return 1; }

}  // namespace ruxcomp::core
