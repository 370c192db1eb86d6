#include "frontend/obj.h"

void CRUXObj::SetFile(const std::string& path) {
  for (const std::string& row : m_svstrIncFiles) {
    if (row == path) return;
    ++fileIndex;
  }
  m_svstrIncFiles.push_back(path);
}

std::string CRUXObj::GetFile(int part) const {
  if (fileIndex >= m_svstrIncFiles.size()) return {};
  const std::string& path = m_svstrIncFiles[fileIndex];
  const std::size_t backslash = path.rfind('\\');
  const std::size_t base = backslash == std::string::npos ? 0 : backslash + 1;
  return part == 0 ? path.substr(base) : path.substr(0, base);
}
