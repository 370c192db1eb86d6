// What every new section of a kind holds, written down by hand.
#ifndef TESTS_UNIT_SECTION_TEMPLATES_H_
#define TESTS_UNIT_SECTION_TEMPLATES_H_

#include <cstdint>
#include <ostream>
#include <vector>

struct TemplateRow {
  const char* key;
  std::uint32_t identifier;
  std::uint32_t notation;

  bool required() const { return (notation & 1) != 0; }
};

struct KindRow {
  const char* keyword;
  std::uint32_t identifier;
  std::uint32_t notation;
  std::vector<TemplateRow> templates;  // in order of creation
};

inline const std::vector<KindRow>& KindRows() {
  static const std::vector<KindRow> rows = {
      {"MORVRUX", 0x20000001, 1, {{"VERSION", 0x10020001, 1}}},
      {"PROPERTY", 0x20000002, 2, {}},
      {"SYSTEM",
       0x20000003,
       1,
       {{"TYPE", 0x10028002, 1},
        {"MODEL", 0x10020013, 1},
        {"FLAG", 0x10028003, 1},
        {"SOUTHBRIDGE", 0x10028004, 2},
        {"NORTHBRIDGE", 0x10028005, 2},
        {"RUXLOOP", 0x10028006, 1}}},
      {"GROUP",
       0x20000004,
       2,
       {{"PARENT", 0x10020014, 1},
        {"NAME", 0x10020015, 1},
        {"CHILDGROUP", 0x10028007, 1},
        {"VALUE_INIT", 0x10080002, 6},
        {"VALUE_DEINIT", 0x10080003, 6},
        {"VALUE_ENTRY", 0x10080004, 6},
        {"VALUE_EXIT", 0x10080005, 6}}},
      {"SENSOR",
       0x20000005,
       2,
       {{"PARENT", 0x10020014, 1},
        {"NAME", 0x10020015, 1},
        {"ID", 0x10028008, 1},
        {"TYPE", 0x10028002, 1},
        {"INITFLAG", 0x10028009, 1},
        {"CONTROLMASK", 0x1002800A, 1},
        {"THEORY", 0x1002800B, 2},
        {"THRESHOLD_FH", 0x1002800C, 2},
        {"THRESHOLD_WH", 0x1002800D, 2},
        {"THRESHOLD_FL", 0x1002800E, 2},
        {"THRESHOLD_WL", 0x1002800F, 2},
        {"VALUE_INIT", 0x10080002, 6},
        {"VALUE_DEINIT", 0x10080003, 6},
        {"VALUE_ENTRY", 0x10080004, 6},
        {"VALUE_EXIT", 0x10080005, 6},
        {"VALUE", 0x10080000, 37},
        {"VALUE_IPMI", 0x10080006, 38}}},
      {"DEVICE",
       0x20000006,
       2,
       {{"NAME", 0x10020015, 1},
        {"ID", 0x10028008, 1},
        {"INITFLAG", 0x10028009, 1},
        {"CONTROLMASK", 0x1002800A, 1}}},
      {"ACTION",
       0x20000007,
       2,
       {{"NAME", 0x10020015, 1},
        {"ARGNUMBER", 0x10028010, 2},
        {"VALUE_IPMI", 0x10080006, 38},
        {"VALUE", 0x10080000, 38}}},
      {"TABLE", 0x20000008, 2, {{"NAME", 0x10020015, 1}, {"TYPE", 0x10028002, 1}}},
      {"PELMGROUP",
       0x20000009,
       1,
       {{"NAME", 0x10020015, 1},
        {"ID", 0x10028008, 1},
        {"PID", 0x10028011, 1},
        {"SENSORS", 0x10048001, 1}}},
      {"GLOBAL", 0x2000000A, 2, {}},
      {"REPEATER", 0x2000000B, 2, {}},
      {"DEFINE", 0x2000000C, 2, {}},
      {"IFDEF", 0x2000000D, 2, {{"DEFINEWORD", 0x10020016, 1}}},
      {"INCLUDE", 0x2000000E, 2, {}},
  };
  return rows;
}

// For messages about a row.
inline void PrintTo(const KindRow& kind, std::ostream* out) { *out << kind.keyword; }

#endif  // TESTS_UNIT_SECTION_TEMPLATES_H_
