// The reader plug-in's operations, as the library calls them.
#ifndef FRONTEND_PLUGIN_H_
#define FRONTEND_PLUGIN_H_

#include <cstdint>
#include <string>
#include <string_view>

namespace ruxcomp::core {

namespace plugin {

// Where the library looks for the plug-in.
extern const char kPath[];

using RSOpenFile = void*(const std::string& path);
using RSParse = std::uint32_t(void* file);
using RSEnumSection = void*(void* file, std::uint32_t index, std::uint32_t zero);
using RSGetSectInfo = std::uint32_t(void* section, char* name, std::uint32_t* name_size,
                                    std::uint32_t* line);
using RSEnumItem = std::uint32_t(void* section, std::uint32_t index, char* key,
                                 std::uint32_t* key_size, char* value, std::uint32_t* value_size,
                                 std::uint32_t* line);
using RSFindSection = void*(void* file, const std::string& name, std::uint32_t zero);
using RSCloseFile = std::uint32_t(void** file);

// An item as a reader hands it over; the texts are valid until the next item is asked for.
struct Item {
  std::string_view key;
  std::string_view value;
  std::uint32_t line = 0;
};
// What a reader inside the program can offer besides RSEnumItem: an item without copies of its
// texts. `room` is for a value that the script does not have in one piece. False when there is no
// such item.
using ViewItem = bool(void* section, std::uint32_t index, std::string& room, Item& item);
// What such a reader calls an open file: a path other than the one it was opened by when it
// searched for the file elsewhere.
using PathOf = const std::string&(void* file);

// All operations of a plug-in; null where it lacks one.
struct Operations {
  RSOpenFile* open_file = nullptr;
  RSParse* parse = nullptr;
  RSEnumSection* enum_section = nullptr;
  RSGetSectInfo* get_sect_info = nullptr;
  RSEnumItem* enum_item = nullptr;
  RSFindSection* find_section = nullptr;
  RSCloseFile* close_file = nullptr;
  ViewItem* view_item = nullptr;  // no plug-in has this or the next one
  PathOf* path_of = nullptr;
};

// An operation: the name that plug-ins export, and its member of Operations.
template <class Function>
struct Operation {
  const char* name;
  Function* Operations::*member;
};
inline constexpr Operation<RSOpenFile> kOpenFile{"RSOpenFile", &Operations::open_file};
inline constexpr Operation<RSParse> kParse{"RSParse", &Operations::parse};
inline constexpr Operation<RSEnumSection> kEnumSection{"RSEnumSection", &Operations::enum_section};
inline constexpr Operation<RSGetSectInfo> kGetSectInfo{"RSGetSectInfo", &Operations::get_sect_info};
inline constexpr Operation<RSEnumItem> kEnumItem{"RSEnumItem", &Operations::enum_item};
// The capital E in the middle is how the plug-in spells it.
inline constexpr Operation<RSFindSection> kFindSection{"RSFindSEction", &Operations::find_section};
inline constexpr Operation<RSCloseFile> kCloseFile{"RSCloseFile", &Operations::close_file};

// Finds the operations of the plug-in with that handle of dlopen; for a null handle, those that the
// process itself exports.
using Lookup = Operations(void* handle);
Lookup ExportedOperations;  // what dlsym finds

// Lets a program that links the core choose the operations for a handle. The default, which null
// restores, is ExportedOperations. Takes effect with the next script that is opened.
void SetLookup(Lookup* chosen);
Lookup* CurrentLookup();

}  // namespace plugin

}  // namespace ruxcomp::core

#endif  // FRONTEND_PLUGIN_H_
