#include "analysis/reading.h"

#include <cstdint>
#include <filesystem>
#include <string>
#include <vector>

#include "analysis/surroundings.h"
#include "driver/compile_options.h"
#include "index/records.h"
#include "protocol/positions.h"
#include "reader/include_folders.h"
#include "reader/texts.h"
#include "settings/limit_rule.h"
#include "sources/source_file.h"
#include "sources/source_set.h"
#include "support/failure.h"
#include "support/text_file.h"
#include "workspace/documents.h"

namespace rux::analysis {
namespace {

// All paths are whole: the working folder makes no difference.
driver::CompileOptions WholeOptionsFor(const Surroundings& surroundings,
                                       const std::string& script) {
  driver::CompileOptions options = surroundings.settings;
  const workspace::Document* document = surroundings.documents.Find(script);
  const bool is_file = document == nullptr || document->is_file();
  const auto path = std::filesystem::path(surroundings.root) / script;
  options.scripts = {is_file ? path.lexically_normal().string() : script};
  try {
    if (is_file) driver::UseProject(options);
  } catch (const support::Failure&) {  // the check reports it
  }
  return options;
}

sources::SourceSet Load(const driver::CompileOptions& options) {
  const std::vector<std::string> names = options.all_include_folders();
  const ruxcomp::reader::IncludeFolders folders(names);
  return sources::Load(options.script_name());
}

std::vector<settings::LimitRule> LimitRulesOf(const driver::CompileOptions& options) {
  if (options.project == nullptr) return {};
  return options.project->limits;
}

}  // namespace

// While it lives, the reader takes the texts of open documents instead of the files.
class Reading::OpenTexts {
 public:
  explicit OpenTexts(const workspace::Documents& documents) {
    ruxcomp::reader::Texts::Clear();
    for (const auto& [uri, document] : documents.all()) {
      ruxcomp::reader::Texts::Put(document->path(), document->text());
    }
  }
  ~OpenTexts() { ruxcomp::reader::Texts::Clear(); }
  OpenTexts(const OpenTexts&) = delete;
  OpenTexts& operator=(const OpenTexts&) = delete;
};

Reading::Reading(const Surroundings& surroundings, const std::string& script)
    : Reading(surroundings, WholeOptionsFor(surroundings, script),
              OpenTexts(surroundings.documents)) {}

Reading::Reading(const Surroundings& surroundings, const driver::CompileOptions& options,
                 const OpenTexts&)
    : limits_(LimitRulesOf(options)),
      sources_(Load(options)),
      index_(sources_),
      files_(sources_, {}, surroundings.documents, surroundings.encoding) {
  for (const sources::SourceFile* file : index_.files()) {
    numbers_.push_back(files_.NumberOf(file->path()));
  }
}

index::Id Reading::NumberOf(const std::string& whole_name) const {
  for (index::Id file = 0; file < numbers_.size(); ++file) {
    if (FileAt(file).whole_name == whole_name) return file;
  }
  return index::kNone;
}

protocol::Range Reading::RangeOf(index::Id file, support::ByteRange bytes) const {
  return files_.RangeOf(*index_.files()[file], bytes);
}

std::uint32_t Reading::OffsetOf(index::Id file, protocol::Position position) const {
  return files_.OffsetOf(*index_.files()[file], position);
}

}  // namespace rux::analysis
