// Refactorings as code actions.
#ifndef SERVER_REFACTORING_ACTIONS_H_
#define SERVER_REFACTORING_ACTIONS_H_

#include <string>
#include <vector>

#include "protocol/json.h"
#include "protocol/positions.h"
#include "server/session.h"
#include "workspace/documents.h"

namespace rux::server {

// Kinds of the protocol.
inline constexpr const char* kQuickFix = "quickfix";
inline constexpr const char* kRewrite = "refactor.rewrite";
inline constexpr const char* kExtract = "refactor.extract";

struct OfferedAction {
  protocol::Json json;
  std::string mends;  // the id of findings; empty: none
};

// Of a file of several machines, what changes only the file is offered where all of them do; all
// files that are changed are in open folders.
std::vector<OfferedAction> RefactoringActions(const Session& session,
                                              const workspace::Document& document,
                                              protocol::Position position);

}  // namespace rux::server

#endif  // SERVER_REFACTORING_ACTIONS_H_
