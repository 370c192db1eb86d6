#include "reconcile/pairing.h"

#include <algorithm>
#include <cstddef>
#include <map>
#include <optional>
#include <set>
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
        units_(SettingsIn("--unit", "COLUMN=UNIT", options.units)) {
    for (const Setting& setting : names_) {
      const std::string ours = table::ColumnFor(kind, setting.name).name;
      ours_.emplace(setting.value, ours);
      mapped_[ours].insert(setting.value);
    }
  }

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
    const std::set<std::string_view> headers(list_.columns.begin(), list_.columns.end());
    for (const Setting& setting : names_) {
      if (headers.count(setting.value) > 0) continue;
      throw Failure(ExitStatus::kTrouble, "{} has no column {}{}", path_, setting.value,
                    support::NearText(setting.value, list_.columns));
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
    const auto mapped = ours_.find(header);
    if (mapped != ours_.end()) return table::ColumnFor(kind_, mapped->second);
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
    const auto headers = mapped_.find(ours);
    return headers != mapped_.end() &&
           (headers->second.size() > 1 || *headers->second.begin() != header);
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
    pairing_.Add(std::move(pair));
  }

  const ruxcomp::language::SectionKind& kind_;
  const lists::Format& format_;
  const std::string& path_;
  const lists::List& list_;
  const std::vector<Setting> names_;
  const std::vector<Setting> tolerances_;
  const std::vector<Setting> units_;
  std::map<std::string, std::string> ours_;              // by the headers that are mapped to them
  std::map<std::string, std::set<std::string>> mapped_;  // the reverse
  Pairing pairing_;
};

}  // namespace

const ColumnPair* Pairing::Find(std::string_view name) const {
  const auto found = by_name_.find(name);
  return found == by_name_.end() ? nullptr : &columns[found->second];
}

const ColumnPair* Pairing::FindPlace(std::size_t place) const {
  const auto found = std::lower_bound(
      columns.begin(), columns.end(), place,
      [](const ColumnPair& pair, std::size_t wanted) { return pair.place < wanted; });
  return found == columns.end() || found->place != place ? nullptr : &*found;
}

void Pairing::Add(ColumnPair pair) {
  by_name_.emplace(pair.column.name, columns.size());
  columns.push_back(std::move(pair));
}

Pairing PairColumns(const ruxcomp::language::SectionKind& kind, const lists::Format& format,
                    const std::string& path, const lists::List& list,
                    const PairingOptions& options) {
  return Pairer(kind, format, path, list, options).Pair();
}

}  // namespace rux::reconcile
