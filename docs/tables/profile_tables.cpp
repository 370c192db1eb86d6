#include "docs/tables/profile_tables.h"

#include <string>
#include <string_view>
#include <vector>

#include "profile/choices.h"
#include "ruxcomp/language/entries.h"
#include "ruxcomp/language/spelling.h"
#include "ruxcomp/language/values.h"

namespace {

using namespace rux::profile;
using ruxcomp::language::KeywordOf;
using ruxcomp::language::kLimits;
using ruxcomp::language::kValueTypes;
using ruxcomp::language::LimitRow;
using ruxcomp::language::ValueType;

std::string JsonText(std::string_view text) { return '"' + std::string(text) + '"'; }

// "`signed`: two's complement; `unsigned`: ..."
std::string OptionsText(const MemberRow& member, const char* quote) {
  std::string text;
  for (const OptionRow& option : OptionsOf(member.id)) {
    text += text.empty() ? "" : "; ";
    text += quote + std::string(option.text) + quote + ": " + option.what;
  }
  return text;
}

std::string RangeText(const MemberRow& member) {
  return std::to_string(member.least) + " to " + std::to_string(member.most);
}

std::string ValuesText(const MemberRow& member) {
  switch (member.form) {
    case MemberForm::kChoice:
      return OptionsText(member, "`");
    case MemberForm::kNumber:
      return RangeText(member);
    case MemberForm::kProperty:
      return "a text";
    case MemberForm::kNumbers:
      return "a list of numbers";
    default:
      return "a list of keywords such as `" + std::string(KeywordOf(kLimits[0].entry)) + '`';
  }
}

std::string Range(const MemberRow& member) {
  return "\"type\": \"integer\", \"minimum\": " + std::to_string(member.least) +
         ", \"maximum\": " + std::to_string(member.most);
}

std::string OneOf(const std::vector<std::string_view>& texts) {
  std::string list;
  for (const std::string_view text : texts) list += (list.empty() ? "" : ", ") + JsonText(text);
  return "\"enum\": [" + list + ']';
}

std::string FormOf(const MemberRow& member) {
  std::vector<std::string_view> texts;
  switch (member.form) {
    case MemberForm::kChoice:
      for (const OptionRow& option : OptionsOf(member.id)) texts.emplace_back(option.text);
      return OneOf(texts);
    case MemberForm::kNumber:
      return Range(member);
    case MemberForm::kProperty:
      return "\"type\": \"string\", \"minLength\": 1, \"pattern\": \"^(?!" +
             std::string(ruxcomp::language::kPropertyPrefix) + ")\"";
    case MemberForm::kNumbers:
      return "\"type\": \"array\", \"items\": {" + Range(member) + '}';
    default:
      for (const LimitRow& limit : kLimits) texts.push_back(KeywordOf(limit.entry));
      return "\"type\": \"array\", \"items\": {" + OneOf(texts) + '}';
  }
}

std::string MemberSchema(const MemberRow& member) {
  const std::string options = OptionsText(member, "");
  return "    " + JsonText(member.key) + ": {\n      \"description\": \"Decides " + member.what +
         (options.empty() ? "" : " (" + options + ')') +
         ". Fixed by the language: " + member.fixed + ".\",\n      " + FormOf(member) +
         "\n    },\n";
}

// The texts of the meanings that a type can have.
std::vector<std::string_view> MeaningsOf(const ValueType& type) {
  std::vector<std::string_view> texts;
  for (const MeaningRow& row : kMeanings) {
    if (row.Fits(type)) texts.push_back(row.text);
  }
  return texts;
}

std::string TypesSchema() {
  std::string schema =
      "    \"types\": {\n"
      "      \"description\": \"What types of values do, by their codes. Fixed by the language: "
      "the "
      "parts of each type, and what these refer to.\",\n"
      "      \"type\": \"object\",\n"
      "      \"properties\": {\n";
  for (const ValueType& type : kValueTypes) {
    schema += "        " + JsonText(std::to_string(type.code)) + ": {" + OneOf(MeaningsOf(type)) +
              (&type == &kValueTypes[std::size(kValueTypes) - 1] ? "}\n" : "},\n");
  }
  return schema + "      },\n      \"patternProperties\": {\"^[0-9]{1,7}$\": {\"type\": " +
         "\"string\"}},\n      \"additionalProperties\": false\n    }\n";
}

}  // namespace

std::vector<std::vector<std::string>> ProfileRows() {
  std::vector<std::vector<std::string>> rows;
  for (const MemberRow& member : kMembers)
    rows.push_back({member.key, member.what, ValuesText(member), member.fixed});
  return rows;
}

std::vector<std::vector<std::string>> MeaningRows() {
  std::vector<std::vector<std::string>> rows;
  for (const MeaningRow& row : kMeanings) {
    std::string codes;
    for (const ValueType& type : kValueTypes) {
      if (row.Fits(type)) codes += (codes.empty() ? "" : ", ") + std::to_string(type.code);
    }
    if (codes.empty()) codes = "all others";
    if (!rows.empty() && rows.back()[0] == row.text) {
      rows.back()[1] += ", " + codes;
    } else {
      rows.push_back({std::string(row.text), codes, row.what});
    }
  }
  return rows;
}

std::string ProfileSchema() {
  std::string schema =
      "{\n"
      "  \"$schema\": \"http://json-schema.org/draft-07/schema#\",\n"
      "  \"title\": \"A profile\",\n"
      "  \"description\": \"What one firmware does with the values and limits of a machine where "
      "the language leaves that to it. What a profile does not state is unknown, and so is every "
      "result that depends on it.\",\n"
      "  \"type\": \"object\",\n"
      "  \"required\": [\"name\"],\n"
      "  \"additionalProperties\": false,\n"
      "  \"properties\": {\n"
      "    \"$schema\": {\"description\": \"For editors; rux does not read it.\", \"type\": "
      "\"string\"},\n"
      "    \"name\": {\"description\": \"What reports call the profile.\", \"type\": \"string\", "
      "\"minLength\": 1},\n"
      "    \"note\": {\"description\": \"For people.\", \"type\": \"string\"},\n";
  for (const MemberRow& member : kMembers) schema += MemberSchema(member);
  return schema + TypesSchema() + "  }\n}\n";
}
