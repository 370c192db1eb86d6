#include "diagnostics/registry.h"

#include <initializer_list>
#include <string>
#include <string_view>
#include <vector>

#include "findings/message_row.h"
#include "support/nearest.h"
#include "support/safe_text.h"

namespace rux::diagnostics {

Registry::Registry(std::initializer_list<findings::MessageRows> rooms) {
  for (const findings::MessageRows& room : rooms) {
    for (const MessageRow* row : room) {
      rows_.push_back(row);
      by_id_.emplace(row->id, row);
    }
  }
}

const MessageRow* Registry::Find(std::string_view id) const {
  const auto found = by_id_.find(id);
  return found == by_id_.end() ? nullptr : found->second;
}

std::string Registry::UnknownText(const std::string& id) const {
  std::vector<std::string> ids;
  ids.reserve(rows_.size());
  for (const MessageRow* row : rows_) ids.emplace_back(row->id);
  return "there is no message " + support::NameText(id) + support::NearText(id, ids);
}

}  // namespace rux::diagnostics
