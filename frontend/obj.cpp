#include "frontend/obj.h"

#include <algorithm>

#include "ruxcomp/language/paths.h"

void CRUXObj::SetFile(const std::string& path) {
  // Objects come file by file, and a script may include thousands of files.
  static std::uint32_t last = 0;
  if (fileIndex == 0 && last < m_svstrIncFiles.size() && m_svstrIncFiles[last] == path) {
    fileIndex = last;
    return;
  }
  const auto found = std::find(m_svstrIncFiles.begin(), m_svstrIncFiles.end(), path);
  last = static_cast<std::uint32_t>(found - m_svstrIncFiles.begin());
  fileIndex += last;
  if (found == m_svstrIncFiles.end()) m_svstrIncFiles.push_back(path);
}

std::string CRUXObj::GetFile(int part) const {
  if (fileIndex >= m_svstrIncFiles.size()) return {};
  const std::string& path = m_svstrIncFiles[fileIndex];
  return std::string(part == 0 ? BaseNameOf(path) : FolderOf(path));
}
