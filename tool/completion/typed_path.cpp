#include "tool/completion/typed_path.h"

#include <fmt/format.h>

#include <cstddef>
#include <cstdint>
#include <string>

#include "inspect/path.h"
#include "support/number_text.h"
#include "support/safe_text.h"

namespace rux::tool {
namespace {

constexpr char kGoesOn[] = "/";

// Up to the last slash outside quotes; those count in steps that begin with one. A doubled quote
// closes and opens them again, which comes to the same.
std::size_t FrontSize(const std::string& typed) {
  std::size_t size = 0;
  bool is_quoted = false;
  for (std::size_t i = 0; i < typed.size(); ++i) {
    if (typed[i] == '"' && typed[size] == '"') is_quoted = !is_quoted;
    if (typed[i] == '/' && !is_quoted) size = i + 1;
  }
  return size;
}

}  // namespace

TypedPath::TypedPath(const std::string& typed)
    : front_(typed.substr(0, FrontSize(typed))),
      next_(front_.size() < typed.size() ? typed[front_.size()] : '\0') {
  if (!front_.empty()) steps_ = inspect::ParsePath(front_.substr(0, front_.size() - 1));
}

void TypedPath::AddKind(const std::string& keyword, std::size_t count, const char* what) {
  if (count > 0) Add(keyword + kGoesOn, support::CountText(count, what), "");
}

void TypedPath::AddName(const std::string& name, const std::string& description, const char* rest) {
  if (support::CanBeTyped(name)) Add(support::NameInPath(name), description, rest);
}

void TypedPath::AddOrdinal(std::size_t ordinal, const std::string& description, const char* rest) {
  Add(fmt::format("@{}", ordinal), description, rest);
}

void TypedPath::AddId(std::uint32_t id, const std::string& description, const char* rest) {
  Add(support::IdText(id), description, rest);
}

void TypedPath::AddSection(const SectionWord& section) {
  const std::string id = section.id ? support::IdText(*section.id) : "";
  const std::string name = section.name ? support::NameText(*section.name) : "";
  const bool has_typeable_name = section.name && support::CanBeTyped(*section.name);
  if (NextBegins('#')) {
    if (section.id) AddId(*section.id, name, kGoesOn);
  } else if (NextBegins('@') || !has_typeable_name) {
    AddOrdinal(section.ordinal, name, kGoesOn);
  } else {
    Add(support::NameInPath(*section.name), id, kGoesOn);
  }
}

void TypedPath::Add(const std::string& step, const std::string& description, const char* rest) {
  words_.push_back({front_ + step, description, rest});
}

}  // namespace rux::tool
