// All messages that a program may show.
#ifndef DIAGNOSTICS_REGISTRY_H_
#define DIAGNOSTICS_REGISTRY_H_

#include <initializer_list>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "findings/message_row.h"

namespace rux::diagnostics {

using findings::MessageRow;
using findings::Severity;

class Registry {
 public:
  // Takes the messages of all rooms that have any, in the order in which they are listed.
  Registry(std::initializer_list<findings::MessageRows> rooms);

  const std::vector<const MessageRow*>& rows() const { return rows_; }

  // Null when there is none.
  const MessageRow* Find(std::string_view id) const;

  // "there is no message undefind-word; near it: undefined-word"
  std::string UnknownText(const std::string& id) const;

 private:
  std::vector<const MessageRow*> rows_;
  std::unordered_map<std::string_view, const MessageRow*> by_id_;
};

}  // namespace rux::diagnostics

#endif  // DIAGNOSTICS_REGISTRY_H_
