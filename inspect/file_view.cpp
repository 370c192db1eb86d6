#include "inspect/file_view.h"

#include <strings.h>

#include <memory>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "compiled/compiled_file.h"
#include "inspect/debug_find.h"
#include "inspect/debug_view.h"
#include "inspect/entry_value.h"
#include "inspect/meta_view.h"
#include "inspect/path.h"
#include "ruxcomp/file/header.h"
#include "ruxcomp/file/kept_bytes.h"
#include "ruxcomp/language/sections.h"
#include "support/nearest.h"
#include "support/safe_text.h"

namespace rux::inspect {

const SectionKind& FileView::KindNamed(const std::string& keyword, bool only_compiled,
                                       const char* holder) {
  std::vector<std::string> keywords;
  for (const SectionKind& kind : ruxcomp::language::kSectionKinds) {
    if (only_compiled && !kind.IsCompiled()) continue;
    if (strcasecmp(kind.keyword, keyword.c_str()) == 0) return kind;
    keywords.emplace_back(kind.keyword);
  }
  const bool is_word = !only_compiled && strcasecmp(kWordKind, keyword.c_str()) == 0;
  throw NotFound(holder + (" have no kind " + support::NameText(keyword)) +
                 support::NearText(keyword, keywords,
                                   is_word ? "'rux where FILE WORD' lists the words"
                                           : "'rux ls FILE' lists the kinds"));
}

namespace {

std::unique_ptr<FileView> MakeView(const std::string& path,
                                   std::unique_ptr<ruxcomp::file::KeptBytes> bytes) {
  if (compiled::FormOf(bytes->view()) == compiled::Form::kDebugMeta)
    return std::make_unique<DebugView>(path, bytes->view());
  return std::make_unique<MetaView>(path, std::move(bytes));
}

}  // namespace

std::unique_ptr<FileView> OpenView(const std::string& path) {
  auto bytes = std::make_unique<ruxcomp::file::KeptBytes>();
  compiled::MapWholeFile(path, *bytes);
  return MakeView(path, std::move(bytes));
}

std::unique_ptr<FileView> ViewOf(const std::string& path, std::string_view bytes) {
  auto borrowed = std::make_unique<ruxcomp::file::KeptBytes>();
  borrowed->Borrow(bytes);
  return MakeView(path, std::move(borrowed));
}

EntryPart PartNamed(EntryValue value, const std::string& name) {
  if (value.type) value.parts.insert(value.parts.begin(), TypePart(value));
  std::vector<std::string> names;
  for (const EntryPart& part : value.parts) {
    if (part.name.empty()) continue;
    if (strcasecmp(part.name.c_str(), name.c_str()) == 0) return part;
    names.push_back(part.name);
  }
  throw NotFound("the entry has no part " + support::NameText(name) +
                 support::NearText(name, names));
}

}  // namespace rux::inspect
