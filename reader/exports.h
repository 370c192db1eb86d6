// The interface of the reader plug-in libruxrsparser.so.0: seven functions under plain names, which
// libruxcomp looks up one by one.
//
//   void* file = RSOpenFile("board.rux");
//   RSParse(file);
//   for (std::uint32_t i = 0; void* section = RSEnumSection(file, i, 0); ++i) {
//     std::uint32_t size = 0, line = 0;
//     RSGetSectInfo(section, nullptr, &size, &line);
//     std::vector<char> name(size);
//     RSGetSectInfo(section, name.data(), &size, &line);
//     ...
//   }
//   RSCloseFile(&file);
//
// Texts are handed over in two calls. With null buffers a function stores the needed sizes, the
// terminating zero included, and nothing else; with buffers of at least these sizes it fills them.
// A buffer that is too small gets its needed size stored and nothing is filled.
//
// Any number of files may be open at once. A file whose sections were requested may include the
// file that is opened next: such a file is not opened again, and when there are a thousand of them,
// no further one is opened. Handles stay valid until their file is closed; every function accepts a
// null handle and returns 0 or null. Problems of a script go to the function Output of the host
// program, if it has one (messages.h). One thread at a time.
#ifndef READER_EXPORTS_H_
#define READER_EXPORTS_H_

#include <cstdint>
#include <string>

#define RS_EXPORT __attribute__((visibility("default")))

extern "C" {

// Opens and reads a script. Returns a file handle, or null when the file does not exist, cannot be
// read, would include itself or is too large, or when a thousand files include each other. A path
// is tried as it is and then, when there is no such file, with backslashes read as slashes. Of
// pipes and devices, only those that the process already has open are read, as /dev/stdin or
// /dev/fd/N: opening another one may block for ever.
RS_EXPORT void* RSOpenFile(const std::string& path);

// Splits the script into sections and items and reports its problems; a second call does nothing.
// Returns 1, or 0 for a null handle and when memory runs out.
RS_EXPORT std::uint32_t RSParse(void* file);

// The handle of the index-th section in script order, from 0. Null: there is none, or the file was
// not parsed. `reserved` is ignored.
RS_EXPORT void* RSEnumSection(void* file, std::uint32_t index, std::uint32_t reserved);

// Hands over a section's name (two calls) and line. Returns 1, or 0 when the buffer is too small.
RS_EXPORT std::uint32_t RSGetSectInfo(void* section, char* name, std::uint32_t* name_size,
                                      std::uint32_t* line);

// Hands over key, value (two calls) and line of the index-th item of a section, from 0. Returns 1,
// or 0 when there is no such item or a buffer is too small.
RS_EXPORT std::uint32_t RSEnumItem(void* section, std::uint32_t index, char* key,
                                   std::uint32_t* key_size, char* value, std::uint32_t* value_size,
                                   std::uint32_t* line);

// The handle of the first section with exactly that name, or null. `reserved` is ignored. The
// capital E is part of the exported name.
RS_EXPORT void* RSFindSEction(void* file, const std::string& name, std::uint32_t reserved);

// Closes the file and sets the caller's handle to null. Returns 1, or 0 when the handle is null
// already.
RS_EXPORT std::uint32_t RSCloseFile(void** file);

}  // extern "C"

#endif  // READER_EXPORTS_H_
