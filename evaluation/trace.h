// What an evaluation did: each value with its result, calls, accesses.
#ifndef EVALUATION_TRACE_H_
#define EVALUATION_TRACE_H_

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

#include "evaluation/observer.h"
#include "evaluation/result.h"
#include "machine/machine.h"
#include "machine/place.h"
#include "ruxcomp/model/handles.h"

namespace rux::evaluation {

struct CallMade {
  std::string action;
  std::vector<Result> arguments;

  // "SET_FAN(0, 40)"
  std::string Text() const;
};

struct AccessMade {
  std::string key;  // "5,0x40,1,3,0,unknown" where a part of a write is not known
  bool is_write;
  Result result;
};

// The actions that are called and the accesses, in order.
class Effects : public Observer {
 public:
  // Why there may be more of them; none: these are all.
  const std::optional<Result>& obstacle() const { return obstacle_; }
  const std::vector<CallMade>& calls() const { return calls_; }
  const std::vector<AccessMade>& accesses() const { return accesses_; }

  void Call(const ruxcomp::Section& action, const std::vector<Result>& arguments) override;
  void Access(const AccessKey& key, bool is_write, const Result& result) override;
  void OpenWrite(const std::vector<Result>& parts) override;
  void Open(const Result& why) override;

 private:
  std::vector<CallMade> calls_;
  std::vector<AccessMade> accesses_;
  std::optional<Result> obstacle_;
};

struct TraceStep {
  std::size_t depth;  // how many values it is in
  std::string what;   // "ACTION/READ_ADC/VALUE_1", or an access: "reads 4,0,1,5,0"
  std::string text;   // of a value, as its parts are printed; empty: of an access
  Result result;
  std::optional<machine::Place> place = {};  // of a value, where a script says it
};

class Trace : public Observer {
 public:
  // The machine must outlive this.
  explicit Trace(const machine::Machine& machine) : machine_(machine) {}

  const std::vector<TraceStep>& steps() const { return steps_; }

  void Begin(const ruxcomp::Section& section, const ruxcomp::Entry& entry) override;
  void End(const ruxcomp::Section& section, const ruxcomp::Entry& entry,
           const Result& result) override;
  void Given(const ruxcomp::Section& section, const ruxcomp::Entry& entry,
             const Result& result) override;
  void Access(const AccessKey& key, bool is_write, const Result& result) override;
  void OpenWrite(const std::vector<Result>& parts) override;

 private:
  void Add(const ruxcomp::Section& section, const ruxcomp::Entry& entry, std::string text,
           const Result& result);

  const machine::Machine& machine_;
  std::vector<TraceStep> steps_;
  std::vector<std::size_t> open_;  // the steps of values that have no result yet
};

}  // namespace rux::evaluation

#endif  // EVALUATION_TRACE_H_
