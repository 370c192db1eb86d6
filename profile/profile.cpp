#include "profile/profile.h"

#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <iterator>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "profile/choices.h"
#include "ruxcomp/language/entries.h"
#include "ruxcomp/language/rows.h"
#include "ruxcomp/language/spelling.h"
#include "ruxcomp/language/values.h"
#include "settings/document.h"
#include "settings/json_file.h"
#include "support/ascii.h"
#include "support/json.h"
#include "support/nearest.h"
#include "support/safe_text.h"
#include "support/sha256.h"

namespace rux::profile {
namespace {

using settings::Document;
using settings::JsonValue;
using settings::Key;
using Kind = settings::JsonValue::Kind;

constexpr std::size_t kLargestProfile = std::size_t{1} << 20;
constexpr std::size_t kMemberCount = std::size(kMembers);

constexpr Kind KindOf(MemberForm form) {
  switch (form) {
    case MemberForm::kChoice:
    case MemberForm::kProperty:
      return Kind::kString;
    case MemberForm::kNumber:
      return Kind::kNumber;
    default:
      return Kind::kArray;
  }
}

// The members of choices.def, and then these.
enum OtherMember : std::size_t { kSchema = kMemberCount, kName, kNote, kTypes, kKeyCount };

struct Keys {
  Key rows[kKeyCount];
};
constexpr Keys kKeys = [] {
  Keys keys{};
  for (std::size_t i = 0; i < kMemberCount; ++i)
    keys.rows[i] = {kMembers[i].key, KindOf(kMembers[i].form)};
  keys.rows[kSchema] = {"$schema", Kind::kString};
  keys.rows[kName] = {"name", Kind::kString};
  keys.rows[kNote] = {"note", Kind::kString};
  keys.rows[kTypes] = {"types", Kind::kObject};
  return keys;
}();

std::uint32_t NumberOf(const Document& document, const JsonValue& value, const char* what,
                       std::uint32_t least, std::uint32_t most) {
  if (!value.number || *value.number < least || *value.number > most) {
    document.Refuse(value.line,
                    fmt::format("{} must be a whole number from {} to {}", what, least, most));
  }
  return static_cast<std::uint32_t>(*value.number);
}

// Reads members, each by the form of its row.
class MemberReader {
 public:
  MemberReader(const Document& document, const std::vector<const JsonValue*>& values)
      : document_(document), values_(values) {}

  template <class Option>
  void Choice(MemberId id, Member<Option>& member) const {
    const JsonValue* value = ValueOf(id);
    if (value == nullptr) return;
    std::vector<std::string> texts;
    for (const OptionRow& row : OptionsOf(id)) texts.emplace_back(row.text);
    const auto found = std::find(texts.begin(), texts.end(), value->text);
    if (found == texts.end()) Refuse(id, *value, texts);
    member.stated = static_cast<Option>(found - texts.begin());
  }

  void Number(MemberId id, Member<std::uint32_t>& member) const {
    const MemberRow& row = RowOf(id);
    if (const JsonValue* value = ValueOf(id))
      member.stated = NumberOf(document_, *value, row.key, row.least, row.most);
  }

  void Property(MemberId id, Member<std::string>& member) const {
    const JsonValue* value = ValueOf(id);
    if (value == nullptr) return;
    if (value->text.empty() || language::BeginsWith(value->text, language::kPropertyPrefix)) {
      document_.Refuse(value->line, fmt::format("{} must be the name of a property without {}",
                                                RowOf(id).key, language::kPropertyPrefix));
    }
    member.stated = value->text;
  }

  void Numbers(MemberId id, Member<std::vector<std::uint32_t>>& member) const {
    const JsonValue* value = ValueOf(id);
    if (value == nullptr) return;
    const MemberRow& row = RowOf(id);
    std::vector<std::uint32_t>& numbers = member.stated.emplace();
    for (const JsonValue& item : value->items)
      numbers.push_back(NumberOf(document_, item, row.key, row.least, row.most));
  }

  void Limits(MemberId id, Member<std::vector<language::EntryId>>& member) const {
    const JsonValue* value = ValueOf(id);
    if (value == nullptr) return;
    std::vector<std::string> keywords;
    for (const language::LimitRow& row : language::kLimits)
      keywords.emplace_back(language::KeywordOf(row.entry));
    std::vector<language::EntryId>& limits = member.stated.emplace();
    for (const JsonValue& item : value->items) {
      const auto found = std::find(keywords.begin(), keywords.end(), item.text);
      if (found == keywords.end()) Refuse(id, item, keywords);
      limits.push_back(language::kLimits[static_cast<std::size_t>(found - keywords.begin())].entry);
    }
  }

 private:
  static const MemberRow& RowOf(MemberId id) { return kMembers[static_cast<std::size_t>(id)]; }
  const JsonValue* ValueOf(MemberId id) const { return values_[static_cast<std::size_t>(id)]; }

  [[noreturn]] void Refuse(MemberId id, const JsonValue& value,
                           const std::vector<std::string>& texts) const {
    const std::string text = support::Shortened(value.text);
    document_.Refuse(value.line,
                     fmt::format("{} cannot be {}{}", RowOf(id).key, support::NameText(text),
                                 support::NearText(text, texts)));
  }

  const Document& document_;
  const std::vector<const JsonValue*>& values_;
};

// The code of a type, in decimal.
std::uint32_t CodeOf(const Document& document, const settings::JsonMember& member) {
  const std::string& key = member.key;
  constexpr std::size_t kMostDigits = 7;  // a compiled type has 24 bits
  const bool is_number = !key.empty() && key.size() <= kMostDigits &&
                         std::all_of(key.begin(), key.end(), support::IsDigit);
  if (!is_number) {
    document.Refuse(member.line, fmt::format("{} is not the code of a type of values",
                                             support::NameText(support::Shortened(key))));
  }
  return static_cast<std::uint32_t>(std::stoul(key));
}

Meaning MeaningFor(const Document& document, std::uint32_t code, const JsonValue& value) {
  const language::ValueType& type = language::FindValueType(code);
  std::vector<std::string> texts;
  for (const MeaningRow& row : kMeanings) {
    if (!row.Fits(type)) continue;
    if (row.text == value.text) return row.meaning;
    texts.emplace_back(row.text);
  }
  const std::string text = support::Shortened(value.text);
  document.Refuse(value.line, fmt::format("type {} cannot be {}{}", code, support::NameText(text),
                                          support::NearText(text, texts)));
}

}  // namespace

std::optional<Meaning> Profile::MeaningOf(std::uint32_t type) const {
  const auto stated = types.find(type);
  if (stated != types.end()) return stated->second;
  const FixedMeaning* fixed =
      language::FindRow(kFixedMeanings, [&](const FixedMeaning& row) { return row.code == type; });
  return fixed == nullptr ? std::nullopt : std::optional(fixed->meaning);
}

Profile ParseProfile(const std::string& path, std::string_view text) {
  const Document document(path, text);
  const std::vector<const JsonValue*> values = document.Members(document.root(), kKeys.rows);
  if (values[kName] == nullptr || values[kName]->text.empty())
    document.Refuse(document.root().line, "a profile has a name");
  Profile profile;
  profile.name = values[kName]->text;
  profile.path = path;
  support::Sha256 hash;
  hash.Add(text);
  profile.sha256 = hash.End().sha256;
  const MemberReader reader(document, values);
#define CHOICE(member, name, what, fixed) reader.Choice(MemberId::member, profile.member);
#define NUMBER(member, least, most, what, fixed) reader.Number(MemberId::member, profile.member);
#define PROPERTY(member, what, fixed) reader.Property(MemberId::member, profile.member);
#define NUMBERS(member, what, fixed) reader.Numbers(MemberId::member, profile.member);
#define LIMITS(member, what, fixed) reader.Limits(MemberId::member, profile.member);
#include "profile/choices.def"
  if (values[kTypes] == nullptr) return profile;
  for (const settings::JsonMember& member : values[kTypes]->members) {
    const std::uint32_t code = CodeOf(document, member);
    document.Expect(member.value, Kind::kString, fmt::format("type {}", code));
    if (!profile.types.emplace(code, MeaningFor(document, code, member.value)).second)
      document.Refuse(member.line, fmt::format("type {} is given twice", code));
  }
  return profile;
}

Profile ReadProfile(const std::string& path) {
  return ParseProfile(path, settings::ReadTextFile(path, kLargestProfile));
}

std::string TitleOf(const Profile& profile) {
  if (profile.name.empty()) return "profile: none; only what the language fixes is known";
  return "profile: " + support::SafeText(NameWithHash(profile));
}

std::string NameWithHash(const Profile& profile) {
  if (profile.name.empty()) return "none";
  return fmt::format("{} (sha256 {})", profile.name, profile.sha256);
}

void WriteProfile(const Profile& profile, support::JsonObject& json) {
  if (profile.name.empty()) return json.Member("profile", nullptr);
  json.Object("profile", [&](support::JsonObject& member) {
    member.Member("name", profile.name);
    member.Member("sha256", profile.sha256);
  });
}

}  // namespace rux::profile
