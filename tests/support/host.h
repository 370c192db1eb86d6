// The host side of a test: what the library sends to Output, and which plug-in it gets.
#ifndef TESTS_SUPPORT_HOST_H_
#define TESTS_SUPPORT_HOST_H_

#include <string>
#include <vector>

namespace host {

// The messages since the last call, formatted, in order; also those sent before main().
std::vector<std::string> TakeMessages();

// The file that the library gets, from its next load of a plug-in on, in place of the one at the
// fixed path; "" for none. The library loads one when it is itself loaded and one per INCLUDE. At
// first it is the plug-in of this build, unless the environment variable RUX_TEST_PLUGIN names
// another.
void SetPlugin(const std::string& path);

// How often the library tried to load its plug-in.
int PluginLoads();

}  // namespace host

#endif  // TESTS_SUPPORT_HOST_H_
