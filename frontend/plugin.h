// The reader plug-in's operations, as the library calls them.
#ifndef FRONTEND_PLUGIN_H_
#define FRONTEND_PLUGIN_H_

#include <cstdint>
#include <string>

namespace plugin {

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

// All operations of a plug-in; null where it lacks one.
struct Operations {
  RSOpenFile* openFile = nullptr;
  RSParse* parse = nullptr;
  RSEnumSection* enumSection = nullptr;
  RSGetSectInfo* getSectInfo = nullptr;
  RSEnumItem* enumItem = nullptr;
  RSFindSection* findSection = nullptr;
  RSCloseFile* closeFile = nullptr;
};

// An operation: the name that plug-ins export, and where the table has it.
template <class Function>
struct Operation {
  const char* name;
  Function* Operations::*member;
};
inline constexpr Operation<RSOpenFile> kOpenFile{"RSOpenFile", &Operations::openFile};
inline constexpr Operation<RSParse> kParse{"RSParse", &Operations::parse};
inline constexpr Operation<RSEnumSection> kEnumSection{"RSEnumSection", &Operations::enumSection};
inline constexpr Operation<RSGetSectInfo> kGetSectInfo{"RSGetSectInfo", &Operations::getSectInfo};
inline constexpr Operation<RSEnumItem> kEnumItem{"RSEnumItem", &Operations::enumItem};
// The capital E in the middle is how the plug-in spells it.
inline constexpr Operation<RSFindSection> kFindSection{"RSFindSEction", &Operations::findSection};
inline constexpr Operation<RSCloseFile> kCloseFile{"RSCloseFile", &Operations::closeFile};

// Finds the operations of the plug-in that a handle of dlopen stands for; of a null handle, those
// that the process itself exports.
using Lookup = Operations(void* handle);
Lookup ExportedOperations;  // what dlsym finds

// Lets a program that links the core choose the operations for a handle; ExportedOperations does so
// at first. Null directs back to it. In effect from the next script that is opened.
void SetLookup(Lookup* chosen);
Lookup* CurrentLookup();

}  // namespace plugin

#endif  // FRONTEND_PLUGIN_H_
