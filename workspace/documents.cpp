#include "workspace/documents.h"

#include <fcntl.h>

#include <algorithm>
#include <cstdint>
#include <filesystem>
#include <memory>
#include <string>
#include <system_error>
#include <utility>

#include "protocol/json.h"
#include "protocol/params.h"
#include "protocol/positions.h"
#include "support/descriptor.h"
#include "support/folders.h"
#include "support/text_file.h"
#include "support/uri.h"

namespace rux::workspace {

Document::Document(std::string uri, std::int64_t version, std::string text)
    : uri_(std::move(uri)),
      is_file_(support::PathOfUri(uri_).has_value()),
      path_(support::PathOfUri(uri_).value_or(uri_)),
      whole_name_(is_file_ ? support::WholeName(path_) : uri_),
      version_(version),
      text_(std::move(text)) {}

const protocol::TextLines& Document::lines() const {
  if (!lines_) lines_.emplace(text_);
  return *lines_;
}

bool Document::is_saved() const {
  std::error_code error;
  if (!is_file_ || !std::filesystem::is_regular_file(path_, error)) return false;
  const support::Descriptor file(open(path_.c_str(), O_RDONLY | O_CLOEXEC));
  std::string saved;
  return file.is_open() && support::ReadAll(file.number(), text_.size(), saved) && saved == text_;
}

void Document::Apply(const protocol::Json& change, protocol::Encoding encoding) {
  const auto replacement = protocol::Required<std::string>(change, "text");
  if (!protocol::At(change, "range").is_null()) {
    const auto range = protocol::Required<protocol::Range>(change, "range");
    const support::ByteRange bytes = lines().BytesOf(range, encoding);
    text_.replace(bytes.begin, bytes.end - bytes.begin, replacement);
  } else {
    text_ = replacement;
  }
  lines_.reset();
}

const Document& Documents::Open(const std::string& uri, std::int64_t version, std::string text) {
  std::unique_ptr<Document>& document = by_uri_[uri];
  document = std::make_unique<Document>(uri, version, std::move(text));
  return *document;
}

void Documents::Close(const std::string& uri) { by_uri_.erase(uri); }

Document* Documents::Find(const std::string& uri) const {
  const auto found = by_uri_.find(uri);
  return found == by_uri_.end() ? nullptr : found->second.get();
}

const Document* Documents::FindFile(const std::string& whole_name) const {
  const auto found = std::find_if(by_uri_.begin(), by_uri_.end(), [&](const auto& each) {
    return each.second->whole_name() == whole_name;
  });
  return found == by_uri_.end() ? nullptr : found->second.get();
}

}  // namespace rux::workspace
