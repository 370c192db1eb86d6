// The reader plug-in's operations, as the library calls them.
#ifndef FRONTEND_PLUGIN_H_
#define FRONTEND_PLUGIN_H_

#include <cstdint>
#include <string>

namespace plugin {

inline constexpr char kPath[] = RUX_PLUGIN_DIR "libruxrsparser.so.0";

using RSOpenFile = void*(const std::string& path);
using RSParse = std::uint32_t(void* file);
using RSEnumSection = void*(void* file, std::uint32_t index, std::uint32_t zero);
using RSGetSectInfo = std::uint32_t(void* section, char* name, std::uint32_t* nameSize,
                                    std::uint32_t* line);
using RSEnumItem = std::uint32_t(void* section, std::uint32_t index, char* key,
                                 std::uint32_t* keySize, char* value, std::uint32_t* valueSize,
                                 std::uint32_t* line);
using RSFindSection = void*(void* file, const std::string& name, std::uint32_t zero);
using RSCloseFile = std::uint32_t(void** file);

}  // namespace plugin

#endif  // FRONTEND_PLUGIN_H_
