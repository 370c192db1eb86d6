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

namespace rux::lists {
namespace {

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

// A table of people may also begin with ID and Name.
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
       {{"NAME", "Name"},
        {"unit", "ReadingUnits"},
        {"THRESHOLD_FL", "LowerCritical"},
        {"THRESHOLD_WL", "LowerCaution"},
        {"THRESHOLD_WH", "UpperCaution"},
        {"THRESHOLD_FH", "UpperCritical"}}},
      {"sensors",
       IsJson,
       ReadSensorsJson,
       {{"NAME", "label"},
        {"unit", "unit"},
        {"THRESHOLD_FL", "lcrit"},
        {"THRESHOLD_WL", "min"},
        {"THRESHOLD_WH", "max"},
        {"THRESHOLD_FH", "crit"}}},
      {"ipmitool-sensor",
       IsIpmitoolSensor,
       ReadIpmitoolSensor,
       {{"NAME", "name"},
        {"unit", "unit"},
        {"THRESHOLD_FL", "lcr"},
        {"THRESHOLD_WL", "lnc"},
        {"THRESHOLD_WH", "unc"},
        {"THRESHOLD_FH", "ucr"}}},
      {"ipmitool-sdr", IsIpmitoolSdr, ReadIpmitoolSdr, {{"NAME", "name"}, {"unit", "unit"}}},
      {"ipmi-sensors",
       HasHeaderOfIpmiSensors,
       ReadIpmiSensors,
       {{"NAME", "Name"},
        {"unit", "Units"},
        {"THRESHOLD_FL", "Lower C"},
        {"THRESHOLD_WL", "Lower NC"},
        {"THRESHOLD_WH", "Upper NC"},
        {"THRESHOLD_FH", "Upper C"}}},
      {"csv", IsAnything, ReadPlain, {}}};
  return formats;
}

const Format& FormatFor(const std::string& name, std::string_view text) {
  return *std::find_if(Formats().begin(), Formats().end(), [&](const Format& format) {
    return name.empty() ? format.fits(text) : format.name == name;
  });
}

std::string ReadListFile(const std::string& path) {
  std::string text = settings::ReadTextFile(path, kLargestList);
  if (ruxcomp::reader::StartsWithMark(text)) text.erase(0, ruxcomp::reader::kMark.size());
  return text;
}

}  // namespace rux::lists
