// The parts of a transcript: each prints what the library does, and nothing that depends on the
// machine or on the time.
#ifndef TESTS_CROSS_TRANSCRIPT_H_
#define TESTS_CROSS_TRANSCRIPT_H_

#include <string>

// Every query about a meta file that gcInit loads, found or not, with its error code. Prints where
// the read model of the file answers otherwise.
void PrintAnswers(const std::string& meta);

// Every debug query about a debug meta file.
void PrintDebugAnswers(const std::string& metad);

// What comes of each aligned word of a meta file set to extreme numbers, and of an end of zeros:
// the first fault and what gcInit answers, as counts and a digest.
void PrintDamage(const std::string& meta);

#endif  // TESTS_CROSS_TRANSCRIPT_H_
