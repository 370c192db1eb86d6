#include "exports/members.h"

#include <cstddef>
#include <regex>
#include <string>
#include <string_view>
#include <vector>

#include "support/json.h"

namespace rux::exports {
namespace {

bool IsNumber(const std::string& text) {
  static const std::regex number(R"(-?(0|[1-9][0-9]{0,30})(\.[0-9]{1,30})?([eE][-+]?[0-9]{1,3})?)");
  constexpr std::size_t kLongest = 80;
  return text.size() <= kLongest && std::regex_match(text, number);
}

// put(value) with what the text is in JSON.
template <class Put>
void PutValue(std::string_view text, Put put) {
  const std::string value(text);
  if (value == "true" || value == "false") {
    put(value == "true");
  } else if (IsNumber(value)) {
    put(support::JsonNumber{value});
  } else {
    put(value);
  }
}

// The parts between low lines; only the whole when one of them is empty, or their number exceeds
// what configurations nest.
std::vector<std::string> PathOf(std::string_view key) {
  constexpr std::size_t kDeepest = 8;
  std::vector<std::string> path;
  std::string_view rest = key;
  while (path.size() < kDeepest) {
    const std::size_t end = rest.find('_');
    if (end == 0 || rest.empty()) break;
    path.emplace_back(rest.substr(0, end));
    if (end == std::string_view::npos) return path;
    rest.remove_prefix(end + 1);
  }
  return {std::string(key)};
}

}  // namespace

void WriteMember(std::string_view key, std::string_view text, support::JsonObject& json) {
  PutValue(text, [&](const auto& value) { json.Member(key, value); });
}

bool Members::AddNested(std::string_view key, std::string_view text) {
  return AddText(PathOf(key), text);
}

bool Members::Add(const std::string& key, std::string_view text) { return AddText({key}, text); }

bool Members::AddName(const std::string& key, std::string_view text) {
  const bool is_added = Add(key, text);
  if (is_added) nodes_.back().is_name = true;
  return is_added;
}

bool Members::AddText(const std::vector<std::string>& path, std::string_view text) {
  std::size_t at = 0;
  std::size_t known = 0;
  for (; known < path.size(); ++known) {
    const auto child = nodes_[at].places.find(path[known]);
    if (child == nodes_[at].places.end()) break;
    at = child->second;
  }
  if (known == path.size() || nodes_[at].is_text) return false;
  for (; known < path.size(); ++known) {
    const std::size_t child = nodes_.size();
    nodes_[at].places.emplace(path[known], child);
    nodes_[at].children.push_back(child);
    nodes_.emplace_back().key = path[known];
    at = child;
  }
  nodes_[at].is_text = true;
  nodes_[at].text = text;
  return true;
}

bool Members::IsList(const Node& node) const {
  for (std::size_t i = 0; i < node.children.size(); ++i) {
    if (nodes_[node.children[i]].key != std::to_string(i)) return false;
  }
  return true;
}

void Members::WriteNode(const Node& node, support::JsonObject& json) const {
  if (node.is_name) return json.Member(node.key, node.text);
  if (node.is_text) return WriteMember(node.key, node.text, json);
  if (!IsList(node)) {
    return json.Object(node.key, [&](support::JsonObject& object) { WriteChildren(node, object); });
  }
  json.Array(node.key, [&](support::JsonArray& list) {
    for (const std::size_t child : node.children) {
      if (nodes_[child].is_text) {
        PutValue(nodes_[child].text, [&](const auto& value) { list.Item(value); });
      } else {
        list.Object([&](support::JsonObject& object) { WriteChildren(nodes_[child], object); });
      }
    }
  });
}

void Members::WriteChildren(const Node& node, support::JsonObject& json) const {
  for (const std::size_t child : node.children) WriteNode(nodes_[child], json);
}

void Members::Write(support::JsonObject& json) const { WriteChildren(nodes_.front(), json); }

}  // namespace rux::exports
