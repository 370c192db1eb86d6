#include "reader/archive.h"

#include <cstddef>
#include <cstdint>
#include <memory>
#include <stdexcept>
#include <string>

#include "reader/script.h"
#include "reader/source.h"

namespace ruxcomp::reader {
namespace {

Archive* g_archive = nullptr;
std::uint64_t g_last_archive = 0;

}  // namespace

Archive::Archive() : id_(++g_last_archive) {
  if (g_archive != nullptr) throw std::logic_error("there is an archive already");
  g_archive = this;
}

Archive::~Archive() { g_archive = nullptr; }

Archive* Archive::Current() { return g_archive; }

const ArchivedScript* Archive::FindParsed(const SourceIdentity& identity,
                                          const std::string& text) const {
  const auto found = parsed_.find(identity);
  if (found == parsed_.end()) return nullptr;
  const ArchivedScript& candidate = scripts_[found->second];
  return candidate.script->text() == text ? &candidate : nullptr;
}

void Archive::KeepParsed(std::size_t index, const SourceIdentity& identity,
                         const std::shared_ptr<Script>& script) {
  parsed_[identity] = index;
  scripts_[index].script = script;
}

}  // namespace ruxcomp::reader
