#include "reconcile/pairing.h"

#include <algorithm>
#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "lists/formats.h"
#include "lists/list.h"
#include "lists/units.h"
#include "ruxcomp/language/entries.h"
#include "ruxcomp/language/sections.h"
#include "support/failure.h"
#include "support/nearest.h"
#include "support/pattern.h"
#include "table/cell.h"
#include "table/columns.h"

namespace rux::reconcile {
namespace {

using support::ExitStatus;
using support::Failure;

struct Setting {
  std::string name;
  std::string value;
};

// `form`: of the text, as the help has it.
Setting SettingIn(const char* option, const char* form, const std::string& text) {
  const std::size_t equals = text.find('=');
  if (equals == std::string::npos || equals == 0 || equals + 1 == text.size())
    throw Failure(ExitStatus::kWrongUsage, "{}: expected {}, found {}", option, form, text);
  return {text.substr(0, equals), text.substr(equals + 1)};
}

std::vector<Setting> SettingsIn(const char* option, const char* form,
                                const std::vector<std::string>& texts) {
  std::vector<Setting> settings;
  settings.reserve(texts.size());
  for (const std::string& text : texts) settings.push_back(SettingIn(option, form, text));
  return settings;
}

Tolerance ToleranceIn(const std::string& text) {
  const bool is_share = text.back() == '%';
  const std::optional<double> number =
      table::NumberIn(std::string_view(text).substr(0, text.size() - (is_share ? 1 : 0)));
  if (!number || *number < 0)
    throw Failure(ExitStatus::kWrongUsage, "--tolerance: {} is neither an amount nor a percentage",
                  text);
  return is_share ? Tolerance{0, *number / 100} : Tolerance{*number, 0};
}

class Pairer {
 public:
  Pairer(const ruxcomp::language::SectionKind& kind, const lists::Format& format,
         const std::string& path, const lists::List& list, const PairingOptions& options)
      : kind_(kind),
        format_(format),
        path_(path),
        list_(list),
        names_(SettingsIn("--map", "COLUMN=NAME", options.names)),
        tolerances_(SettingsIn("--tolerance", "COLUMN=AMOUNT", options.tolerances)),
        units_(SettingsIn("--unit", "COLUMN=UNIT", options.units)) {}

  Pairing Pair() {
    if (list_.columns.empty()) throw Failure(ExitStatus::kTrouble, "{} has no rows", path_);
    ExpectMappedNames();
    for (std::size_t i = 0; i < list_.columns.size(); ++i) Add(i);
    if (pairing_.Find(table::kNameColumn) == nullptr &&
        pairing_.Find(table::kIdColumn) == nullptr) {
      throw Failure(ExitStatus::kTrouble,
                    "{} has no column {} or {}: say which one it is with --map {}=COLUMN{}", path_,
                    table::kNameColumn, table::kIdColumn, table::kNameColumn,
                    support::NearText(std::string(table::kNameColumn), list_.columns));
    }
    ExpectUsed("--tolerance", tolerances_);
    ExpectUsed("--unit", units_);
    return std::move(pairing_);
  }

 private:
  void ExpectMappedNames() const {
    for (const Setting& setting : names_) {
      table::ColumnFor(kind_, setting.name);
      const auto& columns = list_.columns;
      if (std::find(columns.begin(), columns.end(), setting.value) != columns.end()) continue;
      throw Failure(ExitStatus::kTrouble, "{} has no column {}{}", path_, setting.value,
                    support::NearText(setting.value, columns));
    }
  }

  void ExpectUsed(const char* option, const std::vector<Setting>& settings) const {
    for (const Setting& setting : settings) {
      const bool is_used =
          std::any_of(pairing_.columns.begin(), pairing_.columns.end(),
                      [&](const ColumnPair& pair) { return IsMeant(setting, pair.column.name); });
      if (!is_used) {
        throw Failure(ExitStatus::kWrongUsage, "{}: no column that is compared fits {}", option,
                      setting.name);
      }
    }
  }

  static bool IsMeant(const Setting& setting, const std::string& column) {
    return support::FitsPatternInAnyCase(setting.name, column);
  }

  // What the column of the list is in ours.
  std::optional<table::Column> ColumnOf(const std::string& header, const std::string& name) const {
    for (const Setting& setting : names_) {
      if (setting.value == header) return table::ColumnFor(kind_, setting.name);
    }
    for (const lists::Meaning& meaning : format_.meanings) {
      if (meaning.name != name) continue;
      return table::FindColumn(kind_, std::string(ruxcomp::language::KeywordOf(meaning.entry)));
    }
    if (!format_.unit.empty() && format_.unit == name)
      return table::FindColumn(kind_, table::kUnitColumn);
    return format_.meanings.empty() ? table::FindColumn(kind_, name) : std::nullopt;
  }

  // Whether the user says that another column of the list is that one.
  bool IsMapped(const std::string& ours, const std::string& header) const {
    return std::any_of(names_.begin(), names_.end(), [&](const Setting& setting) {
      return setting.value != header && table::ColumnFor(kind_, setting.name).name == ours;
    });
  }

  void Add(std::size_t place) {
    const std::string& header = list_.columns[place];
    std::string name(lists::Trimmed(header));
    std::string unit = lists::TakeUnit(name);
    std::optional<table::Column> column = ColumnOf(header, name);
    if (!column || IsMapped(column->name, header)) {
      if (!header.empty()) pairing_.ignored.push_back(header);
      return;
    }
    if (column->name == table::kPlaceColumn) return;
    if (pairing_.Find(column->name) != nullptr)
      throw Failure(ExitStatus::kTrouble, "{} has two columns for {}", path_, column->name);
    ColumnPair pair{std::move(*column), place, std::move(unit), {}};
    for (const Setting& setting : units_) {
      if (IsMeant(setting, pair.column.name)) pair.unit = setting.value;
    }
    for (const Setting& setting : tolerances_) {
      if (IsMeant(setting, pair.column.name)) pair.tolerance = ToleranceIn(setting.value);
    }
    pairing_.columns.push_back(std::move(pair));
  }

  const ruxcomp::language::SectionKind& kind_;
  const lists::Format& format_;
  const std::string& path_;
  const lists::List& list_;
  const std::vector<Setting> names_;
  const std::vector<Setting> tolerances_;
  const std::vector<Setting> units_;
  Pairing pairing_;
};

}  // namespace

const ColumnPair* Pairing::Find(std::string_view name) const {
  const auto found = std::find_if(columns.begin(), columns.end(),
                                  [&](const ColumnPair& pair) { return pair.column.name == name; });
  return found == columns.end() ? nullptr : &*found;
}

Pairing PairColumns(const ruxcomp::language::SectionKind& kind, const lists::Format& format,
                    const std::string& path, const lists::List& list,
                    const PairingOptions& options) {
  return Pairer(kind, format, path, list, options).Pair();
}

}  // namespace rux::reconcile
