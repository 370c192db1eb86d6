// Work that is done by a copy of this process, with an answer.
#ifndef ANALYSIS_CHILD_H_
#define ANALYSIS_CHILD_H_

#include <sys/types.h>

#include <chrono>
#include <functional>
#include <string>

#include "support/descriptor.h"

namespace rux::analysis {

// The process may raise, crash or hang: this one only notices that the answer is missing. It ends
// with this object and with this process. Its standard output is none.
class Child {
 public:
  // When no process can be started, it has ended at once.
  explicit Child(const std::function<std::string()>& work);
  ~Child();
  Child(const Child&) = delete;
  Child& operator=(const Child&) = delete;

  // Can be read when there is more of the answer, or when the process has ended.
  int descriptor() const { return answers_.number(); }
  // Takes what there is, without waiting. Answers whether that is all.
  bool Read();
  // To be asked when that is all: why the answer is missing; empty when it came.
  std::string Trouble();
  const std::string& answer() const { return answer_; }

  // When it is given up.
  std::chrono::steady_clock::time_point deadline() const { return deadline_; }

 private:
  void Start(const std::function<std::string()>& work);
  [[noreturn]] void Work(const std::function<std::string()>& work, const support::Descriptor& pipe,
                         pid_t parent);
  bool IsLate() const { return std::chrono::steady_clock::now() >= deadline_; }
  int End();

  pid_t process_ = -1;
  support::Descriptor answers_;
  std::string answer_;
  std::string refusal_;  // why no process was started; empty: one was
  std::chrono::steady_clock::time_point deadline_;
};

}  // namespace rux::analysis

#endif  // ANALYSIS_CHILD_H_
