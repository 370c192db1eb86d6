#include "assistance/signature.h"

#include <fmt/format.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "assistance/call.h"
#include "assistance/place.h"
#include "assistance/wording.h"
#include "index/index.h"
#include "index/spot.h"
#include "ruxcomp/language/entries.h"
#include "ruxcomp/language/values.h"

namespace rux::assistance {
namespace {

void Add(const std::string& text, Signature& signature) {
  if (!signature.parameters.empty()) signature.label += ", ";
  const auto begin = static_cast<std::uint32_t>(signature.label.size());
  signature.label += text;
  signature.parameters.push_back({begin, static_cast<std::uint32_t>(signature.label.size())});
}

// The parts of the list at the end: for a call, each argument.
void AddList(const language::ValueType& type, const std::optional<std::uint32_t>& arguments,
             Signature& signature) {
  if (!arguments) return Add(PartText(type, type.TextCount()), signature);
  for (std::uint32_t i = 1; i <= *arguments; ++i) Add(ArgumentText(i), signature);
}

}  // namespace

std::optional<Signature> SignatureAt(const Place& at) {
  const index::Spot spot = index::SpotAt(at.index, at.file, at.offset);
  if (spot.kind != index::Spot::Kind::kPart) return std::nullopt;
  const std::vector<std::string_view> parts = index::PartsOf(at.index, spot.item);
  const std::uint32_t entry = at.index.items()[spot.item].entry;
  const language::ValueType* type = at.index.RecordOf(entry, parts.data(), parts.size());
  if (type == nullptr) return std::nullopt;
  Signature signature;
  const bool has_type = language::PayloadOf(entry) == language::PAYLOAD_VALUE;
  if (has_type) Add(std::string(parts[0]), signature);
  const std::size_t texts = std::min<std::size_t>(type->TextCount(), type->most - 1);
  for (std::size_t i = 0; i < texts; ++i) Add(PartText(*type, i), signature);
  const auto arguments = ArgumentsOfCall(at.index, *type, parts, has_type ? 1 : 0);
  if (type->HasList()) AddList(*type, arguments, signature);
  signature.active = spot.part;
  // All that follows belongs to an open list.
  const auto last = static_cast<std::uint32_t>(signature.parameters.size() - 1);
  if (type->HasList() && !arguments) signature.active = std::min(spot.part, last);
  return signature;
}

}  // namespace rux::assistance
