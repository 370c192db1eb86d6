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

// Finds the operations of the plug-in that a handle of dlopen stands for; of a null handle, those
// that the process itself exports.
using Lookup = Operations(void* handle);
Lookup ExportedOperations;  // what dlsym finds

// Lets a program that links the core choose the operations for a handle; ExportedOperations does so
// at first. Null directs back to it. In effect from the next script that is opened.
void SetLookup(Lookup* chosen);
Operations OperationsOf(void* handle);

}  // namespace plugin

#endif  // FRONTEND_PLUGIN_H_
