// The folders that a client works in.
#ifndef WORKSPACE_FOLDERS_H_
#define WORKSPACE_FOLDERS_H_

#include <set>
#include <string>

#include "workspace/documents.h"

namespace rux::workspace {

class Folders {
 public:
  // URIs; those that name no folder of this machine are passed over.
  void Add(const std::string& uri);
  void Remove(const std::string& uri);

  // The folder to check a document from, relative to which paths are shown: the innermost one that
  // it is in, else its own. Of a document without a file, the first one.
  std::string RootOf(const Document& document) const;
  // Whether the file is in one of the folders; without any, each is. A document without a file may
  // be changed, too.
  bool MayChange(const std::string& path) const;

 private:
  std::set<std::string> paths_;
};

// What a file is called from a folder: its path from there, or the whole path when it is elsewhere.
std::string PathFrom(const std::string& folder, const std::string& path);

}  // namespace rux::workspace

#endif  // WORKSPACE_FOLDERS_H_
