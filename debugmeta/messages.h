// The texts of the messages that writing and reading a debug meta file gives.
#ifndef DEBUGMETA_MESSAGES_H_
#define DEBUGMETA_MESSAGES_H_

// One line a text, so that a search for what a user quotes finds it.
// clang-format off

namespace msg {

inline constexpr char kCreateDebugFailed[] = "ERROR: Create debug file %s failed.\n";
inline constexpr char kOpenDebugFailed[] = "ERROR: Open debug file %s failed.\n";
inline constexpr char kDebugInvalid[] = "ERROR: File %s is invalid.\n";
inline constexpr char kDebugVersion[] = "ERROR: The version of file %s is not support.\n";

}  // namespace msg

#endif  // DEBUGMETA_MESSAGES_H_
