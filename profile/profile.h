// A profile: what one firmware does with the values and limits of a machine, where the language
// leaves that to it.
//
//   docs/profile.schema.json
#ifndef PROFILE_PROFILE_H_
#define PROFILE_PROFILE_H_

#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "profile/choices.h"
#include "ruxcomp/language/entries.h"
#include "support/json.h"
#include "support/text_stream.h"

namespace rux::profile {

// A member of a profile, which need not state it.
template <class Value>
struct Member {
  const char* key;
  std::optional<Value> stated = {};

  bool Is(const Value& value) const { return stated == value; }
};

// Without a file, none of it is stated.
struct Profile {
  std::string name;    // empty: without a profile
  std::string path;    // of the file
  std::string sha256;  // of its bytes

#define CHOICE(member, name, what, fixed) Member<name> member{#member};
#define NUMBER(member, least, most, what, fixed) Member<std::uint32_t> member{#member};
#define PROPERTY(member, what, fixed) Member<std::string> member{#member};
#define NUMBERS(member, what, fixed) Member<std::vector<std::uint32_t>> member{#member};
#define LIMITS(member, what, fixed) Member<std::vector<language::EntryId>> member{#member};
#include "profile/choices.def"

  // What types of values do, by their codes.
  std::map<std::uint32_t, Meaning> types;

  // Of a type, by the profile or by the language; none when neither says.
  std::optional<Meaning> MeaningOf(std::uint32_t type) const;
};

// Throws a Failure that names the line of what is wrong with the text of a profile at `path`.
Profile ParseProfile(const std::string& path, std::string_view text);

// The same of a file.
Profile ReadProfile(const std::string& path);

// "profile: example-firmware (sha256 ...)", or that there is none: the first line of a report.
std::string TitleOf(const Profile& profile);
// "example-firmware (sha256 ...)", as it is in the file, or "none".
std::string NameWithHash(const Profile& profile);
// The member "profile", with "name" and "sha256"; null when there is none.
void WriteProfile(const Profile& profile, support::JsonObject& json);

}  // namespace rux::profile

#endif  // PROFILE_PROFILE_H_
