// Where files are, and searches upwards: what concerns a file may be in a folder above its own.
#ifndef SUPPORT_FOLDERS_H_
#define SUPPORT_FOLDERS_H_

#include <filesystem>
#include <string>

namespace rux::support {

// The folder above, as it can be opened from here; the same one at the top. An empty path is the
// working folder.
std::filesystem::path FolderAbove(const std::filesystem::path& folder);

bool IsTopOfRepository(const std::filesystem::path& folder);

// Whether a search ends here: at the top of a repository or of the file system.
bool IsTopFolder(const std::filesystem::path& folder);

// Whether the path is that of the folder or of something in it; both are whole names.
bool IsBelow(const std::string& path, const std::string& folder);

// The same for all paths that lead to a file or would, if it were there.
std::string WholeName(const std::string& path);

}  // namespace rux::support

#endif  // SUPPORT_FOLDERS_H_
