// Names that do not say what they seem to.
#include <fmt/format.h>

#include <algorithm>
#include <unordered_map>
#include <unordered_set>

#include "rules/trap_rules.h"
#include "support/nearest.h"

namespace rux::rules {
namespace {

constexpr std::string_view kValue = "VALUE_";
constexpr std::string_view kProperty = "P_";
constexpr std::string_view kGlobal = "G_";

bool HasDigit(std::string_view text) {
  return std::any_of(text.begin(), text.end(), [](char c) { return c >= '0' && c <= '9'; });
}

// The names behind VALUE_ that have a meaning of their own in a SENSOR.
const std::vector<std::string>& HookNames() {
  static const std::vector<std::string> names = {"INIT", "DEINIT", "ENTRY", "EXIT", "IPMI"};
  return names;
}

// Whether keys of the section are names of the script's own.
bool HasOwnNames(std::uint32_t kind) {
  return kind == compiled::kKindPROPERTY || kind == compiled::kKindREPEATER ||
         kind == compiled::kKindDEFINE || kind == compiled::kKindIFDEF;
}

class NameTraps : public TrapRules {
 public:
  explicit NameTraps(TrapReport& report) : report_(report) {}

  bool BeginSection(const sources::SourceSection&, std::uint32_t) override {
    // Clearing it would cost what the largest section has ever had.
    if (!in_section_.empty()) in_section_ = {};
    return true;
  }

  void See(const ScriptItem& item) override {
    const std::string_view name = item.name();
    if (name.front() == '"' && HasOwnNames(item.kind)) {
      report_.Add(kQuotedKey, item, "the quotes belong to the name");
    }
    if (item.key == compiled::kKeyPROPERTY && HasPrefix(name, kProperty)) {
      report_.Add(kPropertyPrefix, item,
                  fmt::format("the name is {} here, and not {} as in other sections", name,
                              name.substr(kProperty.size())));
    }
    // One of a PELMGROUP is not compiled at all, which is told.
    const bool is_property = item.key == compiled::kKeyP && item.kind != compiled::kKindPELMGROUP;
    if ((is_property && name == kProperty) || (item.key == compiled::kKeyG && name == kGlobal)) {
      report_.Add(kNamelessEntry, item,
                  fmt::format("nothing follows the {}: the name is empty", name));
    }
    if (HasPrefix(name, kProperty)) SeeShared(item, kProperty);
    if (HasPrefix(name, kValue)) SeeShared(item, kValue);
    if (item.key == compiled::kKeyVALUE_OF_SENSOR || item.key == compiled::kKeyVALUE_OF_ACTION)
      SeeValue(item);
  }

 private:
  struct Seen {
    std::string_view prefix;
    const reader::Item* item;
  };

  // Hosts ask for names without their prefix.
  void SeeShared(const ScriptItem& item, std::string_view prefix) {
    if (item.kind != compiled::kKindSENSOR && item.kind != compiled::kKindDEVICE) return;
    const auto [place, is_new] =
        in_section_.try_emplace(item.name().substr(prefix.size()), Seen{prefix, item.item});
    const Seen& seen = place->second;
    if (is_new || seen.prefix == prefix) return;
    diagnostics::Diagnostic& warning =
        report_.Add(kSharedName, item,
                    fmt::format("{} and {} have one name for hosts, {}", seen.item->key,
                                item.name(), place->first));
    AddPlace(warning, "the other one", {item.file, seen.item->line});
  }

  // A value of the script's own that is taken for another one, or may be.
  void SeeValue(const ScriptItem& item) {
    const std::string_view name = item.name();
    if (name == kValue) {
      report_.Add(kBareValueName, item,
                  "without a name behind it, this is compiled as one more VALUE");
    }
    if (item.kind != compiled::kKindSENSOR || !HasPrefix(name, kValue) || HasDigit(name) ||
        !looked_at_.insert(name).second)
      return;
    const auto meant = support::MeantName(std::string(name.substr(kValue.size())), HookNames(), 1);
    if (!meant) return;
    report_
        .Add(kMisspelledValue, item,
             fmt::format("{} is a value of this script's own, not {}{}", name, kValue, *meant))
        .suggestion = std::string(kValue) + *meant;
  }

  TrapReport& report_;
  std::unordered_map<std::string_view, Seen> in_section_;  // P_ and VALUE_, by what follows
  std::unordered_set<std::string_view> looked_at_;
};

}  // namespace

std::unique_ptr<TrapRules> MakeNameTraps(const DefinedWordTable&, TrapReport& report) {
  return std::make_unique<NameTraps>(report);
}

}  // namespace rux::rules
