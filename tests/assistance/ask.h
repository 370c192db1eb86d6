// Everything that an editor can ask at a place.
#ifndef TESTS_ASSISTANCE_ASK_H_
#define TESTS_ASSISTANCE_ASK_H_

#include "assistance/place.h"

// What is wrong with an answer; null when nothing is: what is answered lies in its file, and a
// selection has the place.
const char* AskAll(const rux::assistance::Place& at);

#endif  // TESTS_ASSISTANCE_ASK_H_
