// Compiling a script.
//
// A run goes through these functions in this order, on one thread, one run at a time:
//
//   std::string script = "boards/board.rux";
//   std::replace(script.begin(), script.end(), '/', '\\');  // see below
//   if (!gccCompStart(script)) return Fail("cannot open " + script);
//   gccParse();
//   const bool done = gccCheck() && gccOutput("board.meta");
//   gccCompEnd();
//
// Problems are reported through the host's Output (output.h). A text that is read as a number and
// has no digit throws std::out_of_range: an empty operand, a bare "0x" (also as in ARG0x or
// VALUE_0x), an empty half of a table row's key. A host that compiles scripts from outside catches
// it around gccParse, gccCheck and gccOutput, and still calls gccCompEnd.
//
// In the path of a script, backslashes separate folders: what follows the last one is the name that
// messages show, what precedes it is where included files are looked for. The reader opens such a
// path even where the system separates folders by slashes. A path with slashes is opened, too, but
// then has no folder: messages show all of it, and included files are looked for in the current
// folder, where they may be missing, which is only a warning, or be different files. The paths of
// the files to write are ordinary paths of the system.
#ifndef RUXCOMP_COMPILE_H_
#define RUXCOMP_COMPILE_H_

#include <cstdint>
#include <string>

#include "ruxcomp/api.h"
#include "ruxcomp/output.h"

extern "C" {

// Opens a script. Returns 1, or 0 when the reader plug-in is missing or cannot open the script.
RUX_API std::uint32_t gccCompStart(const std::string& path);

// Reads the opened script and the files that it includes into the source model and closes it. The
// result has no meaning.
RUX_API std::uint32_t gccParse();

// Checks the source model. Returns 1 when it may be compiled, 0 when problems were reported. Run it
// once per gccParse: it turns the texts of the model into values as it goes.
RUX_API std::uint32_t gccCheck();

// Compiles the source model and writes it as a meta file, replacing a file at the path.
// Returns 1, or 0 when the file cannot be written. Call it for a model that gccCheck accepted. The
// symbol tables (data.h) keep their keys and indices for a later run in the same process.
RUX_API std::uint32_t gccOutput(const std::string& path);

// Writes the source model as a debug meta file, replacing a file at the path. Returns 1, or 0
// when the file cannot be created; failing writes go unnoticed. Two kinds of file cannot be loaded
// afterwards: all but the first that a process writes, because only that one holds the list of
// source files, and one whose first section is an INCLUDE.
RUX_API std::uint32_t gccOutputD(const std::string& path);

// Drops the source model and the defined words, even after a step that failed or threw. Does
// nothing when there are none.
RUX_API void gccCompEnd();

}  // extern "C"

#endif  // RUXCOMP_COMPILE_H_
