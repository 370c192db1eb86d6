// Running a host program of this folder in a process of its own.
#ifndef TESTS_STANDINS_HOST_PROCESS_H_
#define TESTS_STANDINS_HOST_PROCESS_H_

#include <functional>
#include <optional>
#include <string>

// Where the library looks for its plug-in.
inline constexpr char kFixedPath[] = "/usr/pelm/lib/libruxrsparser.so.0";

// Runs a host over a script, after preparing its process. What it prints; nothing when it could not
// be prepared.
std::optional<std::string> RunHost(
    const std::string& name, const std::string& script,
    const std::function<bool()>& prepare = [] { return true; });

// Puts the built plug-in at its fixed path, seen by the calling process and those that it starts
// only: over /usr lies a layer that is kept in memory and vanishes with them. The scratch folder
// must exist and be empty; for all others it stays so. False when mounting is not allowed.
bool PutPluginAtItsFixedPath(const std::string& scratch);

#endif  // TESTS_STANDINS_HOST_PROCESS_H_
