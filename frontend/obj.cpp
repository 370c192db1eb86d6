#include "frontend/obj.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

#include "ruxcomp/language/paths.h"

namespace ruxcomp::core {

std::uint32_t CRUXObj::m_lastFile = 0;

void CRUXObj::SetFile(std::string_view path) {
  // Objects come file by file, and a script may include thousands of files.
  const std::size_t rows = m_svstrIncFiles.size();
  if (fileIndex == 0 && m_lastFile < rows && m_svstrIncFiles[m_lastFile] == path) {
    fileIndex = m_lastFile;
    return;
  }
  const auto found = std::find(m_svstrIncFiles.begin(), m_svstrIncFiles.end(), path);
  m_lastFile = static_cast<std::uint32_t>(found - m_svstrIncFiles.begin());
  fileIndex += m_lastFile;
  if (found == m_svstrIncFiles.end()) m_svstrIncFiles.emplace_back(path);
}

std::string CRUXObj::GetFile(int part) const {
  if (fileIndex >= m_svstrIncFiles.size()) return {};
  const std::string& path = m_svstrIncFiles[fileIndex];
  return std::string(part == 0 ? BaseNameOf(path) : FolderOf(path));
}

}  // namespace ruxcomp::core
