#include "release/manifest.h"

#include <cstddef>
#include <cstdint>
#include <limits>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "ruxcomp/file/header.h"
#include "settings/document.h"
#include "settings/json_file.h"
#include "support/descriptor.h"
#include "support/failure.h"
#include "support/input_file.h"
#include "support/json.h"

namespace rux::release {
namespace {

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
    return {members[kTool]->text, TimeOf(*members[kCreated]), revision, FilesOf(*members[kFiles]),
            FilesOf(*members[kSources])};
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
    FileRecord file{members[kPath]->text, *members[kBytes]->number, members[kSha256]->text};
    if (members[kForm] != nullptr) file.form = members[kForm]->text;
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

std::string FormOf(const std::string& path) {
  constexpr std::size_t kEnough = 64;  // other files may have any size
  const support::Descriptor file = support::OpenInput(path);
  std::string bytes;
  if (!support::ReadAll(file.number(), kEnough, bytes))
    throw support::SystemFailure("cannot load", path);
  switch (ruxcomp::file::FormOf(bytes)) {
    case ruxcomp::file::Form::kMeta:
      return kMetaForm;
    case ruxcomp::file::Form::kDebugMeta:
      return kDebugMetaForm;
    default:
      return "";
  }
}

Manifest ReadManifest(const std::string& path) { return ManifestReader(path).Read(); }

}  // namespace rux::release
