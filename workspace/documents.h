// The documents that a client has open. Their texts, not those of the files, are what counts.
#ifndef WORKSPACE_DOCUMENTS_H_
#define WORKSPACE_DOCUMENTS_H_

#include <cstddef>
#include <cstdint>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

#include "protocol/json.h"
#include "protocol/positions.h"

namespace rux::workspace {

class Document {
 public:
  Document(std::string uri, std::int64_t version, std::string text);
  Document(const Document&) = delete;
  Document& operator=(const Document&) = delete;

  const std::string& uri() const { return uri_; }
  bool is_file() const { return is_file_; }
  // Of a file, its path as the client names it; otherwise the URI.
  const std::string& path() const { return path_; }
  // The same for all paths of the file (support::WholeName()); otherwise the URI.
  const std::string& whole_name() const { return whole_name_; }

  std::int64_t version() const { return version_; }
  const std::string& text() const { return text_; }
  const protocol::TextLines& lines() const;

  // Whether the file has the same text.
  bool is_saved() const;

  // One change of a textDocument/didChange: of a range, or of all.
  void Apply(const protocol::Json& change, protocol::Encoding encoding);
  void SetVersion(std::int64_t version) { version_ = version; }

 private:
  const std::string uri_;
  const bool is_file_;
  const std::string path_;
  const std::string whole_name_;
  std::int64_t version_;
  std::string text_;
  mutable std::optional<protocol::TextLines> lines_;  // of the text, once they are asked for
};

class Documents {
 public:
  // Opens it anew when it is open.
  const Document& Open(const std::string& uri, std::int64_t version, std::string text);
  void Close(const std::string& uri);

  // Null when there is none.
  Document* Find(const std::string& uri) const;
  const Document* FindFile(const std::string& whole_name) const;

  // By their URIs.
  const std::map<std::string, std::unique_ptr<Document>>& all() const { return by_uri_; }

 private:
  std::map<std::string, std::unique_ptr<Document>> by_uri_;
};

}  // namespace rux::workspace

#endif  // WORKSPACE_DOCUMENTS_H_
