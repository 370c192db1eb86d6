#include "assistance/limits.h"

#include <fmt/format.h>

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "assistance/place.h"
#include "assistance/wording.h"
#include "index/index.h"
#include "index/records.h"
#include "reader/value.h"
#include "ruxcomp/language/entries.h"
#include "ruxcomp/language/limits.h"
#include "ruxcomp/language/spelling.h"
#include "settings/limit_rule.h"
#include "settings/quantity.h"

namespace rux::assistance {
namespace {

using index::Index;

std::optional<std::uint32_t> NumberOfEntry(const Index& index, Id section, std::uint32_t entry) {
  const std::string_view text = index.TextOf(section, entry);
  return text.empty() ? std::nullopt : index.words().WordOrNumber(text);
}

std::string PropertyOf(const Index& index, Id section, const std::string& name) {
  for (const index::ItemRecord& item : index.ItemsOf(section)) {
    if (item.entry != language::ENTRY_P) continue;
    if (item.item->key.substr(language::kPropertyPrefix.size()) == name) {
      return std::string(ruxcomp::reader::FirstPart(*item.item));
    }
  }
  return {};
}

// "FH" of THRESHOLD_FH.
std::string_view ShortKey(language::EntryId entry) {
  const std::string_view key = language::KeywordOf(entry);
  return key.substr(key.find('_') + 1);  // npos + 1 is 0
}

}  // namespace

std::string LimitsText(const Index& index, Id section,
                       const std::vector<settings::LimitRule>& rules) {
  const settings::Quantity quantity = settings::QuantityOf(
      rules, {NameOf(index, section), NumberOfEntry(index, section, language::ENTRY_TYPE),
              [&](const std::string& name) { return PropertyOf(index, section, name); }});
  std::vector<std::string> texts;
  bool has_limits = false;
  for (const language::EntryId entry : language::kLimitsUpwards) {
    const auto number = NumberOfEntry(index, section, entry);
    if (!number) continue;
    has_limits = has_limits || language::FindLimit(entry) != nullptr;
    texts.push_back(fmt::format("{} {}", ShortKey(entry), quantity.TextOf(*number)));
  }
  return has_limits ? fmt::format("{}", fmt::join(texts, " | ")) : std::string();
}

}  // namespace rux::assistance
