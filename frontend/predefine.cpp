#include "frontend/predefine.h"

#include <cstdint>
#include <string>

void AddPredDefineValue(const std::string& name, std::uint32_t value) {
  g_tblPreDefine[name] = value;
}

std::uint32_t GetPreDefinedValue(const std::string& name, std::uint32_t& value) {
  const auto row = g_tblPreDefine.find(name);
  if (row == g_tblPreDefine.end()) return 0;
  value = row->second;
  return 1;
}
