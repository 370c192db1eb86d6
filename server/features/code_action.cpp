// textDocument/codeAction: the fixes of findings; comments that allow a warning; what can be added,
// and numbers that can be words.
#include <fmt/format.h>

#include <algorithm>
#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "analysis/analysis.h"
#include "analysis/findings.h"
#include "assistance/allowing.h"
#include "findings/message_row.h"
#include "protocol/json.h"
#include "protocol/params.h"
#include "protocol/positions.h"
#include "server/asking.h"
#include "server/feature.h"
#include "server/finding_json.h"
#include "server/refactoring_actions.h"
#include "server/session.h"
#include "sources/allow_comments.h"
#include "support/ascii.h"
#include "support/text_file.h"
#include "workspace/documents.h"

namespace rux::server {
namespace {

using analysis::Finding;
using protocol::Json;
using Located = analysis::Analysis::Located;

constexpr const char* kFixAll = "source.fixAll";

// A client may ask for kinds, each with those below it: "source" has "source.fixAll".
bool IsWanted(const Json& params, std::string_view kind) {
  const Json& only = protocol::At(params, "context", "only");
  if (!only.is_array()) return true;
  return std::any_of(only.begin(), only.end(), [&](const Json& each) {
    if (!each.is_string()) return false;
    const auto wanted = each.get<std::string>();
    const bool begins_so = kind.substr(0, wanted.size()) == wanted;
    return wanted.empty() ||
           (begins_so && (kind.size() == wanted.size() || kind[wanted.size()] == '.'));
  });
}

bool Touch(support::ByteRange a, support::ByteRange b) {
  return a.begin <= b.end && b.begin <= a.end;
}

class ActionList {
 public:
  ActionList(const Session& session, const Json& params)
      : session_(session),
        params_(params),
        document_(session.DocumentOf(params)),
        selected_(document_.lines().BytesOf(protocol::Required<protocol::Range>(params, "range"),
                                            session.encoding)),
        findings_(session.analysis.FindingsIn(document_.whole_name())) {}

  Json Take() {
    if (IsWanted(params_, kQuickFix)) AddQuickFixes();
    if (IsWanted(params_, kFixAll)) AddFixAll();
    AddRefactorings();
    return std::move(actions_);
  }

 private:
  static bool HasFix(const Located& each) { return each.finding->fix.has_value(); }

  bool IsSelected(const Located& each) const { return Touch(each.finding->at.bytes, selected_); }

  void Add(const std::string& title, const char* kind, Json edits, const Located* located) {
    Json action = {{"title", title}, {"kind", kind}, {"edit", EditsOfDocument(std::move(edits))}};
    if (located != nullptr) action["diagnostics"] = Json::array({DiagnosticOf(session_, *located)});
    actions_.push_back(std::move(action));
  }

  Json EditsOfDocument(Json edits) const {
    Edits all;
    for (Json& edit : edits) all[document_.uri()].Add(std::move(edit));
    return WorkspaceEditJson(session_, std::move(all));
  }

  static Json FixOf(const Finding& finding) {
    return TextEditJson(finding.fix->range, finding.fix->text);
  }

  // The safe ones that do not touch one before them.
  std::vector<Json> FixesOf(const std::function<bool(const Finding&)>& is_wanted) const {
    std::vector<Json> fixes;
    std::optional<support::ByteRange> last;
    for (const Located& each : findings_) {
      const Finding& finding = *each.finding;
      if (!HasFix(each) || !finding.fix->is_safe || !is_wanted(finding)) continue;
      const support::ByteRange bytes =
          document_.lines().BytesOf(finding.fix->range, session_.encoding);
      if (last && Touch(*last, bytes)) continue;
      fixes.push_back(FixOf(finding));
      last = bytes;
    }
    return fixes;
  }

  void AddQuickFixes() {
    for (const Located& each : findings_) {
      if (HasFix(each) && IsSelected(each)) AddFix(each);
    }
    for (const Located& each : findings_) {
      const bool can_be_allowed = each.finding->severity ==
                                  static_cast<std::uint8_t>(ruxcomp::findings::Severity::kWarning);
      if (can_be_allowed && !each.finding->at.text.empty() && IsSelected(each)) AddAllowing(each);
    }
  }

  void AddFix(const Located& located) {
    const Finding& finding = *located.finding;
    std::string title = finding.fix->title;
    title.front() = support::ToUpper(title.front());
    Add(title, kQuickFix, Json::array({FixOf(finding)}), &located);
    actions_.back()["isPreferred"] = finding.fix->is_safe;
    const auto alike = FixesOf([&](const Finding& other) { return other.id == finding.id; });
    if (alike.size() > 1) {
      Add(fmt::format("Fix all {} ({})", finding.id, alike.size()), kQuickFix, alike, &located);
    }
  }

  void AddAllowing(const Located& located) {
    constexpr std::pair<sources::AllowScope, const char*> kScopes[] = {
        {sources::AllowScope::kLine, "on this line"},
        {sources::AllowScope::kSection, "in this section"},
        {sources::AllowScope::kFile, "in this file"},
    };
    const std::vector<Asked> places = AskedAt(session_, document_, located.finding->at.range.start);
    if (places.empty()) return;
    const Asked& asked = places.front();
    for (const auto& [scope, where] : kScopes) {
      const auto edit = assistance::AllowAt(*asked.at.index.files()[asked.at.file], asked.at.offset,
                                            located.finding->id, scope);
      if (!edit) continue;
      Add(fmt::format("Allow {} {}", located.finding->id, where), kQuickFix,
          Json::array({TextEditJson(RangeJson(asked, {edit->offset, edit->offset}), edit->text)}),
          &located);
    }
  }

  // Without being asked for, only where it does more than a fix of one finding.
  void AddFixAll() {
    const auto fixes = FixesOf([](const Finding&) { return true; });
    const bool is_asked_for = protocol::At(params_, "context", "only").is_array();
    if (fixes.empty() || (fixes.size() == 1 && !is_asked_for)) return;
    Add("Fix all", kFixAll, fixes, nullptr);
  }

  // Those that mend something are fixes of it.
  void AddRefactorings() {
    const auto begin = protocol::Required<protocol::Position>(params_, "range", "start");
    for (OfferedAction& each : RefactoringActions(session_, document_, begin)) {
      if (!IsWanted(params_, each.json["kind"].get<std::string>())) continue;
      for (const Located& located : findings_) {
        const bool is_mended = located.finding->id == each.mends && IsSelected(located);
        if (is_mended) each.json["diagnostics"].push_back(DiagnosticOf(session_, located));
      }
      actions_.push_back(std::move(each.json));
    }
  }

  const Session& session_;
  const Json& params_;
  const workspace::Document& document_;
  const support::ByteRange selected_;
  const std::vector<Located> findings_;
  Json actions_ = Json::array();
};

Json Actions(const Session& session, const Json& params) {
  return ActionList(session, params).Take();
}

}  // namespace

Feature CodeActions() {
  return {"codeActionProvider",
          {{"codeActionKinds", {kQuickFix, kRewrite, kExtract, kFixAll}}},
          {{"textDocument/codeAction", Timing::kWithFindings, Actions}}};
}

}  // namespace rux::server
