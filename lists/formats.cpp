#include "lists/formats.h"

#include <algorithm>
#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "lists/csv.h"
#include "lists/json_lists.h"
#include "lists/list.h"
#include "reader/byte_order_mark.h"
#include "settings/json_file.h"
#include "support/failure.h"

namespace rux::lists {
namespace {

namespace language = ruxcomp::language;

constexpr std::size_t kLargestList = std::size_t{1} << 28;

bool IsAnything(std::string_view) { return true; }

std::ptrdiff_t CountInFirstLine(std::string_view text, char c) {
  const std::string_view line = FirstLine(text);
  return std::count(line.begin(), line.end(), c);
}

// The fields of the first line, without the blanks around them.
std::vector<std::string> FirstFields(std::string_view text, char separator) {
  std::vector<std::string> fields;
  std::string_view line = FirstLine(text);
  for (std::size_t end = 0; end != std::string_view::npos;) {
    end = line.find(separator);
    fields.emplace_back(Trimmed(line.substr(0, end)));
    if (end != std::string_view::npos) line.remove_prefix(end + 1);
  }
  return fields;
}

// A table that people keep may also begin with ID and Name.
bool HasHeaderOfIpmiSensors(std::string_view text) {
  const std::vector<std::string> names =
      FirstFields(text, CountInFirstLine(text, '|') > 0 ? '|' : ',');
  return names.size() > 2 && names[0] == "ID" && names[1] == "Name" && names.back() == "Event";
}

// Without a header: name, reading, unit, state and six limits.
bool IsIpmitoolSensor(std::string_view text) {
  const std::vector<std::string> fields = FirstFields(text, '|');
  constexpr std::size_t kLimitsBegin = 4;
  constexpr std::size_t kFields = 10;
  return fields.size() == kFields &&
         std::all_of(fields.begin() + kLimitsBegin, fields.end(), [](const std::string& field) {
           return IsNothing(field) ||
                  field.find_first_not_of("0123456789.-+eE") == std::string::npos;
         });
}

// The fourth field of the first line is a state. The header of a table has no such name.
bool IsIpmitoolSdr(std::string_view text) {
  const std::vector<std::string> fields = FirstFields(text, ',');
  constexpr std::size_t kState = 3;
  if (fields.size() <= kState) return false;
  for (const std::string_view known :
       {"ok", "ns", "us", "lnc", "lcr", "lnr", "unc", "ucr", "unr", "nc", "cr", "nr"}) {
    if (fields[kState] == known) return true;
  }
  return false;
}

List ReadPlain(const std::string& path, std::string_view text) {
  return WithHeader(path, ReadCsv(path, text, SeparatorOf(text)));
}

List ReadIpmiSensors(const std::string& path, std::string_view text) {
  if (CountInFirstLine(text, '|') > 0) return WithHeader(path, ReadBars(text));
  return WithHeader(path, ReadCsv(path, text, ','));
}

List ReadIpmitoolSensor(const std::string&, std::string_view text) {
  return WithColumns(
      {"name", "reading", "unit", "status", "lnr", "lcr", "lnc", "unc", "ucr", "unr"},
      ReadBars(text));
}

List ReadIpmitoolSdr(const std::string& path, std::string_view text) {
  return WithColumns({"name", "reading", "unit", "status"}, ReadCsv(path, text, ','));
}

}  // namespace

const std::vector<Format>& Formats() {
  static const std::vector<Format> formats = {
      {"redfish",
       IsRedfish,
       ReadRedfish,
       "ReadingUnits",
       {{language::ENTRY_NAME, "Name"},
        {language::ENTRY_THRESHOLD_FL, "LowerCritical"},
        {language::ENTRY_THRESHOLD_WL, "LowerCaution"},
        {language::ENTRY_THRESHOLD_WH, "UpperCaution"},
        {language::ENTRY_THRESHOLD_FH, "UpperCritical"}},
       {"LowerFatal", "UpperFatal"}},
      {"sensors",
       IsJson,
       ReadSensorsJson,
       "unit",
       {{language::ENTRY_NAME, "label"},
        {language::ENTRY_THRESHOLD_FL, "lcrit"},
        {language::ENTRY_THRESHOLD_WL, "min"},
        {language::ENTRY_THRESHOLD_WH, "max"},
        {language::ENTRY_THRESHOLD_FH, "crit"}},
       {"emergency"}},
      {"ipmitool-sensor",
       IsIpmitoolSensor,
       ReadIpmitoolSensor,
       "unit",
       {{language::ENTRY_NAME, "name"},
        {language::ENTRY_THRESHOLD_FL, "lcr"},
        {language::ENTRY_THRESHOLD_WL, "lnc"},
        {language::ENTRY_THRESHOLD_WH, "unc"},
        {language::ENTRY_THRESHOLD_FH, "ucr"}},
       {"lnr", "unr"}},
      {"ipmitool-sdr", IsIpmitoolSdr, ReadIpmitoolSdr, "unit", {{language::ENTRY_NAME, "name"}}},
      {"ipmi-sensors",
       HasHeaderOfIpmiSensors,
       ReadIpmiSensors,
       "Units",
       {{language::ENTRY_NAME, "Name"},
        {language::ENTRY_THRESHOLD_FL, "Lower C"},
        {language::ENTRY_THRESHOLD_WL, "Lower NC"},
        {language::ENTRY_THRESHOLD_WH, "Upper NC"},
        {language::ENTRY_THRESHOLD_FH, "Upper C"}},
       {"Lower NR", "Upper NR"}},
      {"csv", IsAnything, ReadPlain, "", {}}};
  return formats;
}

bool Format::HasOtherLimit(const std::string& column) const {
  return std::find(other_limits.begin(), other_limits.end(), column) != other_limits.end();
}

const Format& FormatFor(const std::string& name, std::string_view text) {
  return *std::find_if(Formats().begin(), Formats().end(), [&](const Format& format) {
    return name.empty() ? format.fits(text) : format.name == name;
  });
}

std::string ReadListFile(const std::string& path) {
  std::string text = settings::ReadTextFile(path, kLargestList);
  for (const char* mark : {"\xFF\xFE", "\xFE\xFF"}) {
    if (text.compare(0, 2, mark) != 0) continue;
    throw support::Failure(support::ExitStatus::kTrouble, "{} is UTF-16; save it as UTF-8", path);
  }
  if (ruxcomp::reader::StartsWithMark(text)) text.erase(0, ruxcomp::reader::kMark.size());
  return text;
}

}  // namespace rux::lists
