// The members of a JSON object, put together of flat keys: "Fan_0_Pin" is in an object that is in a
// list.
#ifndef EXPORTS_MEMBERS_H_
#define EXPORTS_MEMBERS_H_

#include <cstddef>
#include <map>
#include <string>
#include <string_view>
#include <vector>

#include "support/json.h"

namespace rux::exports {

// A text as JSON has it: true, false and numbers as what they are.
void WriteMember(std::string_view key, std::string_view text, support::JsonObject& json);

class Members {
 public:
  // False when there is such a member, or one that this would have to be in, or would hold.
  bool AddNested(std::string_view key, std::string_view text);
  // The key as it is.
  bool Add(const std::string& key, std::string_view text);
  // The same of a text that is one even when it looks like a number.
  bool AddName(const std::string& key, std::string_view text);

  // In the order in which they were added.
  void Write(support::JsonObject& json) const;

 private:
  // A text, or what holds others.
  struct Node {
    std::string key;
    std::string text;
    bool is_text = false;
    bool is_name = false;
    std::vector<std::size_t> children;
    std::map<std::string, std::size_t, std::less<>> places;  // of children, by their keys
  };

  bool AddText(const std::vector<std::string>& path, std::string_view text);
  bool IsList(const Node& node) const;
  void WriteNode(const Node& node, support::JsonObject& json) const;
  void WriteChildren(const Node& node, support::JsonObject& json) const;

  std::vector<Node> nodes_ = std::vector<Node>(1);  // the first one holds all others
};

}  // namespace rux::exports

#endif  // EXPORTS_MEMBERS_H_
