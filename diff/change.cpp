#include "diff/change.h"

#include <fmt/format.h>

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "support/number_text.h"
#include "support/safe_text.h"

namespace rux::diff {
namespace {

std::string TextOrNone(const Side& side) { return support::SafeText(side.text.value_or("(none)")); }

// FNV-1a, of each text and what separates it from the next one.
void Add(std::uint64_t& hash, std::string_view text) {
  constexpr std::uint64_t kPrime = 0x100000001B3;
  for (const char c : text) hash = (hash ^ static_cast<unsigned char>(c)) * kPrime;
  hash = (hash ^ 0xFF) * kPrime;
}

}  // namespace

std::string Change::SectionText() const {
  std::string text = kind->keyword;
  const Side& side = subject();
  if (side.id) text += ' ' + support::IdText(*side.id);
  if (side.name) text += ' ' + support::NameText(*side.name);
  return text;
}

std::string Change::EntryText() const {
  const std::string key = support::SafeText(entry);
  return part.empty() ? key : key + '/' + part;
}

std::string Change::WhatText() const {
  std::string text = EntryText();
  if (!before.text && !after.text) return text;
  if (!text.empty()) text += ": ";
  return text + TextOrNone(before) + " -> " + TextOrNone(after);
}

std::string Change::Fingerprint() const {
  std::uint64_t hash = 0xCBF29CE484222325;
  const Side& side = subject();
  Add(hash, row->message->id);
  Add(hash, kind->keyword);
  Add(hash, side.id ? std::to_string(*side.id) : "");
  Add(hash, side.name.value_or(""));
  Add(hash, EntryText());
  return fmt::format("{:016x}", hash);
}

}  // namespace rux::diff
