// What a client reports without waiting for an answer.
#ifndef SERVER_NOTIFICATIONS_H_
#define SERVER_NOTIFICATIONS_H_

#include <string>

#include "protocol/json.h"
#include "server/session.h"

namespace rux::server {

// Unknown ones are passed over, and so are parameters of another form.
void TakeNotification(Session& session, const std::string& method, const protocol::Json& params);

// The capabilities of the server that clients need to send them.
void AddSynchronisation(protocol::Json& capabilities);

// Asks the client to report changed files, where it can.
void WatchFiles(const Session& session);

// The folders of an initialize request.
void AddFolders(Session& session, const protocol::Json& params);

}  // namespace rux::server

#endif  // SERVER_NOTIFICATIONS_H_
