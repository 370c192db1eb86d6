// What a server knows between two messages.
#ifndef SERVER_SESSION_H_
#define SERVER_SESSION_H_

#include <string>
#include <utility>

#include "analysis/analysis.h"
#include "driver/compile_options.h"
#include "protocol/json.h"
#include "protocol/message.h"
#include "protocol/params.h"
#include "protocol/positions.h"
#include "server/client.h"
#include "server/token_memory.h"
#include "workspace/documents.h"
#include "workspace/folders.h"

namespace rux::server {

struct Session {
  explicit Session(driver::CompileOptions settings)
      : analysis(std::move(settings), documents, folders) {}
  Session(const Session&) = delete;
  Session& operator=(const Session&) = delete;

  // The document that the parameters of a request name. Throws a RequestError.
  const workspace::Document& DocumentOf(const protocol::Json& params) const {
    const auto uri = protocol::Required<std::string>(params, "textDocument", "uri");
    if (const workspace::Document* document = documents.Find(uri)) return *document;
    throw protocol::RequestError(protocol::ErrorCode::kInvalidParams, "not open: " + uri);
  }

  Client client;
  protocol::Encoding encoding = protocol::Encoding::kUtf16;
  workspace::Documents documents;
  workspace::Folders folders;
  analysis::Analysis analysis;
  mutable TokenMemory tokens;  // what answering leaves
};

}  // namespace rux::server

#endif  // SERVER_SESSION_H_
