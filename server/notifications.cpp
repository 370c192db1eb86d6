#include "server/notifications.h"

#include <cstdint>
#include <string>
#include <utility>

#include "protocol/json.h"
#include "protocol/message.h"
#include "protocol/params.h"
#include "server/session.h"
#include "settings/project.h"
#include "support/uri.h"
#include "workspace/documents.h"

namespace rux::server {
namespace {

using protocol::At;
using protocol::Json;
using protocol::Required;
using protocol::RequiredMember;

void Open(Session& session, const Json& params) {
  const auto uri = Required<std::string>(params, "textDocument", "uri");
  const auto version = Required<std::int64_t>(params, "textDocument", "version");
  auto text = Required<std::string>(params, "textDocument", "text");
  const workspace::Document& document = session.documents.Open(uri, version, std::move(text));
  session.analysis.OpenedOrClosing(document);
}

// The changes count one after the other, each in the text that those before it have left.
void Change(Session& session, const Json& params) {
  workspace::Document* document =
      session.documents.Find(Required<std::string>(params, "textDocument", "uri"));
  if (document == nullptr) return;
  session.analysis.TextChanged(document->whole_name());
  const Json& version = At(params, "textDocument", "version");
  document->SetVersion(version.is_number_integer() ? version.get<std::int64_t>()
                                                   : document->version() + 1);
  for (const Json& change : RequiredMember(params, "contentChanges"))
    document->Apply(change, session.encoding);
}

void Close(Session& session, const Json& params) {
  const auto uri = Required<std::string>(params, "textDocument", "uri");
  const workspace::Document* document = session.documents.Find(uri);
  if (document == nullptr) return;
  session.analysis.OpenedOrClosing(*document);
  session.documents.Close(uri);
  session.tokens.Forget(uri);
}

// Whatever else may have changed is read again, for clients that report no changes of files.
void Save(Session& session, const Json&) { session.analysis.AllChanged(); }

void ChangeFiles(Session& session, const Json&) { session.analysis.AllChanged(); }

void ChangeFolders(Session& session, const Json& params) {
  for (const Json& folder : RequiredMember(params, "event", "removed")) {
    session.folders.Remove(Required<std::string>(folder, "uri"));
  }
  for (const Json& folder : RequiredMember(params, "event", "added")) {
    session.folders.Add(Required<std::string>(folder, "uri"));
  }
  session.analysis.FoldersChanged();
}

struct Row {
  const char* method;
  void (*take)(Session& session, const Json& params);
};
constexpr Row kRows[] = {
    {"textDocument/didOpen", Open},
    {"textDocument/didChange", Change},
    {"textDocument/didClose", Close},
    {"textDocument/didSave", Save},
    {"workspace/didChangeWatchedFiles", ChangeFiles},
    {"workspace/didChangeWorkspaceFolders", ChangeFolders},
};

}  // namespace

void TakeNotification(Session& session, const std::string& method, const Json& params) {
  for (const Row& row : kRows) {
    if (method != row.method) continue;
    try {
      row.take(session, params);
    } catch (const protocol::RequestError& error) {
      session.client.Log(method + ": " + error.what());
    }
  }
}

void AddSynchronisation(Json& capabilities) {
  constexpr int kIncremental = 2;
  capabilities["textDocumentSync"] = {
      {"openClose", true}, {"change", kIncremental}, {"save", {{"includeText", false}}}};
  capabilities["workspace"] = {
      {"workspaceFolders", {{"supported", true}, {"changeNotifications", true}}}};
}

void WatchFiles(const Session& session) {
  if (!session.client.can("workspace", "didChangeWatchedFiles", "dynamicRegistration")) return;
  Json watchers = Json::array();
  for (const std::string& name : {std::string("*.rux"), std::string(settings::kProjectFile)}) {
    watchers.push_back({{"globPattern", "**/" + name}});
  }
  const Json registration = {{"id", "files"},
                             {"method", "workspace/didChangeWatchedFiles"},
                             {"registerOptions", {{"watchers", watchers}}}};
  session.client.Send(protocol::Request("register-files", "client/registerCapability",
                                        {{"registrations", Json::array({registration})}}));
}

void AddFolders(Session& session, const Json& params) {
  const Json& folders = At(params, "workspaceFolders");
  if (folders.is_array()) {
    for (const Json& folder : folders) session.folders.Add(Required<std::string>(folder, "uri"));
  } else if (At(params, "rootUri").is_string()) {
    session.folders.Add(params["rootUri"]);
  } else if (At(params, "rootPath").is_string()) {
    session.folders.Add(support::UriOf(params["rootPath"].get<std::string>()));
  }
}

}  // namespace rux::server
