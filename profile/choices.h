// The rows of choices.def: what a profile can state.
#ifndef PROFILE_CHOICES_H_
#define PROFILE_CHOICES_H_

#include <cstddef>
#include <cstdint>
#include <string_view>

#include "ruxcomp/language/rows.h"
#include "ruxcomp/language/values.h"

namespace rux::profile {

namespace language = ruxcomp::language;

// An enum for each choice, with its options in order.
#define CHOICE(member, name, what, fixed) enum class name : std::uint8_t {
#define OPTION(name, option, text, what) k##option,
#define END_CHOICE(name) \
  }                      \
  ;
#include "profile/choices.def"

// Where a choice is among the members.
enum class MemberId : std::uint8_t {
#define CHOICE(member, name, what, fixed) member,
#define NUMBER(member, least, most, what, fixed) member,
#define PROPERTY(member, what, fixed) member,
#define NUMBERS(member, what, fixed) member,
#define LIMITS(member, what, fixed) member,
#include "profile/choices.def"
};

enum class MemberForm : std::uint8_t { kChoice, kNumber, kProperty, kNumbers, kLimits };

struct MemberRow {
  MemberId id;
  const char* key;
  MemberForm form;
  const char* what;   // it decides
  const char* fixed;  // what the language says
  std::uint32_t least = 0;
  std::uint32_t most = 0xFFFFFFFF;
};
inline constexpr MemberRow kMembers[] = {
#define CHOICE(member, name, what, fixed) \
  {MemberId::member, #member, MemberForm::kChoice, what, fixed},
#define NUMBER(member, least, most, what, fixed) \
  {MemberId::member, #member, MemberForm::kNumber, what, fixed, least, most},
#define PROPERTY(member, what, fixed) \
  {MemberId::member, #member, MemberForm::kProperty, what, fixed},
#define NUMBERS(member, what, fixed) {MemberId::member, #member, MemberForm::kNumbers, what, fixed},
#define LIMITS(member, what, fixed) {MemberId::member, #member, MemberForm::kLimits, what, fixed},
#include "profile/choices.def"
};

// The member of each choice, by the name of its enum.
#define CHOICE(member, name, what, fixed) \
  constexpr MemberId MemberOf(name) { return MemberId::member; }
#include "profile/choices.def"

struct OptionRow {
  MemberId member;
  const char* text;
  const char* what;
};
inline constexpr OptionRow kOptions[] = {
#define OPTION(name, option, text, what) {MemberOf(name{}), text, what},
#include "profile/choices.def"
};

// Those of a choice, in order.
constexpr language::Rows<OptionRow> OptionsOf(MemberId member) {
  return language::RowsThat(kOptions, [&](const OptionRow& row) { return row.member == member; });
}

enum class Meaning : std::uint8_t {
  kNothing,
  kZero,
  kOperand,
  kIf,
  kIfNot,
  kWait,
  kGoto,
  kCalculate,
  kCall,
  kRead,
  kWrite,
  kField,
  kCallIf,
  kCallIfNot,
  kList,
  kFirst,
  kLast,
  kCell,
};

struct MeaningRow {
  Meaning meaning;
  std::string_view text;
  language::Shape shape;
  language::Role role;  // kNone: any
  const char* what;

  constexpr bool Fits(const language::ValueType& type) const {
    return type.shape == shape && (role == language::Role::kNone || type.RoleOf(0) == role);
  }
};
inline constexpr MeaningRow kMeanings[] = {
#define MEANING(meaning, text, shape, role, what) \
  {Meaning::k##meaning, text, language::Shape::k##shape, language::Role::role, what},
#include "profile/choices.def"
};

struct FixedMeaning {
  std::uint32_t code;
  Meaning meaning;
};
inline constexpr FixedMeaning kFixedMeanings[] = {
#define FIXED_MEANING(code, meaning) {code, Meaning::k##meaning},
#include "profile/choices.def"
};

}  // namespace rux::profile

#endif  // PROFILE_CHOICES_H_
