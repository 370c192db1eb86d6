#include "run/readers.h"

#include <dlfcn.h>

#include <cstdint>
#include <string>

#include "frontend/plugin.h"
#include "reader/exports.h"
#include "reader/identity.h"
#include "reader/script.h"
#include "reader/script_file.h"
#include "reader/value.h"

namespace rux::run {
namespace {

namespace plugin = ruxcomp::core::plugin;

// The library calls a function without context.
struct Choice {
  bool takes_texts = false;
  bool is_foreign = false;
  void* known = nullptr;  // a plug-in that is this reader
};
Choice choice;

// Whoever names a pipe to this program wants it to wait. What a script includes is a file.
void* OpenScript(const std::string& path) {
  using ruxcomp::reader::ScriptFile;
  const bool is_included = ScriptFile::IsAnyIncluding();
  return ScriptFile::Open(path, ruxcomp::reader::kLargestScript,
                          is_included ? ScriptFile::Streams::kOpen : ScriptFile::Streams::kAny)
      .release();
}

bool ViewItem(void* section, std::uint32_t index, std::string& room, plugin::Item& item) {
  const auto& info = *static_cast<const ruxcomp::reader::Section*>(section);
  if (index >= info.item_count) return false;
  const ruxcomp::reader::Item& read = info.items[index];
  ruxcomp::reader::ScriptFile::NoteDelivery(read);
  item = {read.key, read.value, read.line};
  if (read.blanks_at_commas != 0) {
    room.resize(read.value.size() - read.blanks_at_commas);
    ruxcomp::reader::CopyCooked(read.value, read.blanks_at_commas, room.data());
    item.value = room;
  }
  return true;
}

const std::string& PathOf(void* file) {
  return static_cast<const ruxcomp::reader::ScriptFile*>(file)->path();
}

constexpr plugin::Operations kInside = {OpenScript,    RSParse,    RSEnumSection,
                                        RSGetSectInfo, RSEnumItem, RSFindSEction,
                                        RSCloseFile,   ViewItem,   PathOf};

// Called again for every included file.
bool IsInside(void* handle) {
  if (handle == nullptr || handle == choice.known) return true;
  if (!ruxcomp::reader::IsThisReader(handle)) return false;
  choice.known = handle;
  return true;
}

plugin::Operations Choose(void* handle) {
  if (IsInside(handle)) return kInside;
  choice.is_foreign = true;
  return choice.takes_texts ? plugin::Operations{} : plugin::ExportedOperations(handle);
}

}  // namespace

bool IsForeignReaderInstalled() {
  void* handle = dlopen(plugin::kPath, RTLD_LAZY);
  if (handle == nullptr) return false;
  const bool is_foreign = !ruxcomp::reader::IsThisReader(handle);
  dlclose(handle);
  return is_foreign;
}

ReaderChoice::ReaderChoice(bool takes_texts) {
  choice = {takes_texts};
  plugin::SetLookup(Choose);
}

ReaderChoice::~ReaderChoice() { plugin::SetLookup(nullptr); }

bool ReaderChoice::is_foreign() const { return choice.is_foreign; }

}  // namespace rux::run
