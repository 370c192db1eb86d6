#include "release/manifest.h"

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <limits>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "settings/document.h"
#include "settings/json_file.h"
#include "support/json.h"
#include "support/sha256.h"

namespace rux::release {
namespace {

namespace fs = std::filesystem;
using settings::Document;
using settings::JsonValue;
using settings::Key;
using Kind = settings::JsonValue::Kind;

constexpr std::size_t kLargestManifest = std::size_t{1} << 27;

// Raised when a member goes away or changes its meaning.
constexpr std::uint64_t kSchema = 1;

enum ManifestMember : std::size_t { kSchemaNumber, kTool, kCreated, kRevision, kFiles, kSources };
constexpr Key kKeys[] = {
    {"schema", Kind::kNumber},   {"tool", Kind::kString}, {"created", Kind::kNumber},
    {"revision", Kind::kString}, {"files", Kind::kArray}, {"sources", Kind::kArray},
};

enum FileMember : std::size_t { kPath, kBytes, kSha256, kForm, kTime, kPair, kFrom };
constexpr Key kFileKeys[] = {
    {"path", Kind::kString},   {"bytes", Kind::kNumber},   {"sha256", Kind::kString},
    {"form", Kind::kString},   {"created", Kind::kNumber}, {"pair", Kind::kString},
    {"sources", Kind::kArray},
};
constexpr std::size_t kRequiredOfFile = 3;

void WriteFile(support::JsonObject& json, const FileRecord& file) {
  json.Member(kFileKeys[kPath].name, file.path);
  json.Member(kFileKeys[kBytes].name, file.bytes);
  json.Member(kFileKeys[kSha256].name, file.sha256);
  if (!file.form.empty()) json.Member(kFileKeys[kForm].name, file.form);
  if (file.created) json.Member(kFileKeys[kTime].name, *file.created);
  if (!file.pair.empty()) json.Member(kFileKeys[kPair].name, file.pair);
  if (file.sources.empty()) return;
  json.Array(kFileKeys[kFrom].name, [&](support::JsonArray& list) { list.Items(file.sources); });
}

class ManifestReader {
 public:
  explicit ManifestReader(const std::string& path)
      : document_(path, settings::ReadTextFile(path, kLargestManifest)) {}

  Manifest Read() const {
    const JsonValue& root = document_.root();
    const auto members = document_.Members(root, kKeys);
    if (members[kSchemaNumber] == nullptr || members[kSchemaNumber]->number != kSchema)
      document_.Refuse(root.line, "it is not a manifest of schema " + std::to_string(kSchema));
    Require(root, members, kKeys, kSources + 1, kRevision);
    const std::string revision = members[kRevision] == nullptr ? "" : members[kRevision]->text;
    Manifest manifest{members[kTool]->text, TimeOf(*members[kCreated]), revision,
                      FilesOf(*members[kFiles]), FilesOf(*members[kSources])};
    for (std::size_t i = 0; i < manifest.files.size(); ++i) {
      if (IsInside(manifest.files[i].path)) continue;
      document_.Refuse(members[kFiles]->items[i].line,
                       "path must be one in the folder of the release");
    }
    return manifest;
  }

 private:
  // The first `count` members but for an optional one have to be there.
  void Require(const JsonValue& object, const std::vector<const JsonValue*>& members,
               const Key* keys, std::size_t count, std::size_t optional) const {
    for (std::size_t i = 0; i < count; ++i) {
      if (i == optional || members[i] != nullptr) continue;
      document_.Refuse(object.line, std::string(keys[i].name) + " is missing");
    }
  }

  std::uint32_t TimeOf(const JsonValue& value) const {
    if (!value.number || *value.number > std::numeric_limits<std::uint32_t>::max())
      document_.Refuse(value.line, "created must be a number of seconds since 1970");
    return static_cast<std::uint32_t>(*value.number);
  }

  std::string FormOf(const JsonValue& value) const {
    if (value.text != kMetaForm && value.text != kDebugMetaForm)
      document_.Refuse(value.line,
                       std::string("form must be ") + kMetaForm + " or " + kDebugMetaForm);
    return value.text;
  }

  std::vector<FileRecord> FilesOf(const JsonValue& array) const {
    std::vector<FileRecord> files;
    files.reserve(array.items.size());
    for (const JsonValue& item : array.items) files.push_back(FileOf(item));
    return files;
  }

  FileRecord FileOf(const JsonValue& item) const {
    document_.Expect(item, Kind::kObject, "a file");
    const auto members = document_.Members(item, kFileKeys);
    Require(item, members, kFileKeys, kRequiredOfFile, kRequiredOfFile);
    if (!members[kBytes]->number)
      document_.Refuse(members[kBytes]->line, "bytes must be a whole number");
    if (!support::IsSha256(members[kSha256]->text))
      document_.Refuse(members[kSha256]->line,
                       "sha256 must be 64 hexadecimal digits in lower case");
    FileRecord file{members[kPath]->text, *members[kBytes]->number, members[kSha256]->text};
    if (members[kForm] != nullptr) file.form = FormOf(*members[kForm]);
    if (members[kTime] != nullptr) file.created = TimeOf(*members[kTime]);
    if (members[kPair] != nullptr) file.pair = members[kPair]->text;
    if (members[kFrom] != nullptr) {
      for (auto& [text, line] : document_.StringsOf(members[kFrom], "sources"))
        file.sources.push_back(text);
    }
    return file;
  }

  const Document document_;
};

}  // namespace

std::string ManifestText(const Manifest& manifest) {
  return support::JsonDocument([&](support::JsonObject& json) {
    json.Member(kKeys[kSchemaNumber].name, kSchema);
    json.Member(kKeys[kTool].name, manifest.tool);
    json.Member(kKeys[kCreated].name, manifest.created);
    if (!manifest.revision.empty()) json.Member(kKeys[kRevision].name, manifest.revision);
    json.Objects(kKeys[kFiles].name, manifest.files, WriteFile);
    json.Objects(kKeys[kSources].name, manifest.sources, WriteFile);
  });
}

bool IsInside(const std::string& path) {
  const fs::path normal = fs::path(path).lexically_normal();
  return !normal.empty() && normal.is_relative() && *normal.begin() != "..";
}

Manifest ReadManifest(const std::string& path) { return ManifestReader(path).Read(); }

}  // namespace rux::release
