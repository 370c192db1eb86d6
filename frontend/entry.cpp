#include "frontend/entry.h"

#include "frontend/messages.h"
#include "frontend/report.h"
#include "ruxcomp/language/parts.h"

void CRUXEntry::Init(const std::string& file, const std::string& key, const std::string& value,
                     std::uint32_t itemLine) {
  SetFile(file);
  name = key;
  line = itemLine;
  m_RuxEntryData.Create(identifier);
  if (!m_RuxEntryData.HasData()) Report<msg::kPayloadFailed>(identifier);
  text_ = m_itemTexts.Add(value);
}

TextList CRUXEntry::ListItems() const {
  TextList items;
  SplitItems(text_, items);
  return items;
}

std::uint32_t CRUXEntry::IsValidEx(const CRUXSection&, unsigned int) { return 1; }
