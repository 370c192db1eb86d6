// A sink that keeps what it is given, as lines that a test can write down.
#ifndef TESTS_FINDINGS_RECORDER_H_
#define TESTS_FINDINGS_RECORDER_H_

#include <set>
#include <string>
#include <vector>

#include "findings/finding.h"

// "0/2/1/key": script, section, item and part; as few as there are; "-" when there are none.
std::string OriginText(const ruxcomp::findings::Origin& origin);

// "UndefinedWord(board.rux, 3, DEVICE, ID, x) in board.rux:3 at 0/1/2/0, other 0/0/0/key"
std::string FindingText(const ruxcomp::findings::Finding& finding);

// The message as the library prints it.
std::string MessageText(const ruxcomp::findings::Finding& finding);

class Recorder : public ruxcomp::findings::Sink {
 public:
  Recorder() { ruxcomp::findings::SetSink(this); }
  ~Recorder() override { ruxcomp::findings::SetSink(nullptr); }
  Recorder(const Recorder&) = delete;
  Recorder& operator=(const Recorder&) = delete;

  void Take(const ruxcomp::findings::Finding& finding) override;

  // All but the ends of scripts, which nearly every test has.
  std::vector<std::string> findings;
  std::vector<std::string> messages;  // all
  std::set<ruxcomp::findings::MessageId> seen;
};

#endif  // TESTS_FINDINGS_RECORDER_H_
