#include "evaluation/trace.h"

#include <algorithm>
#include <cstddef>
#include <string>
#include <utility>
#include <vector>

#include "evaluation/readings.h"
#include "evaluation/result.h"
#include "evaluation/target.h"
#include "inspect/entry_value.h"
#include "machine/value.h"
#include "ruxcomp/language/sections.h"
#include "ruxcomp/model/handles.h"

namespace rux::evaluation {

namespace {

// Of parts that are not all numbers, the first that is none.
const Result& ObstacleIn(const std::vector<Result>& parts) {
  return *std::find_if(parts.begin(), parts.end(),
                       [](const Result& part) { return !part.IsNumber(); });
}

}  // namespace

std::string CallMade::Text() const {
  std::string text = action + '(';
  for (std::size_t i = 0; i < arguments.size(); ++i)
    text += (i == 0 ? "" : ", ") +
            (arguments[i].IsNumber() ? arguments[i].Text() : NameOf(arguments[i].kind()));
  return text + ')';
}

void Effects::Call(const ruxcomp::Section& action, const std::vector<Result>& arguments) {
  calls_.push_back({std::string(action.name()), arguments});
}

void Effects::Access(const AccessKey& key, bool is_write, const Result& result) {
  accesses_.push_back({TextOf(key), is_write, result});
}

void Effects::OpenWrite(const std::vector<Result>& parts) {
  accesses_.push_back({TextOf(parts), true, ObstacleIn(parts)});
}

void Effects::Open(const Result& why) {
  if (!obstacle_) obstacle_ = why;
}

void Trace::Begin(const ruxcomp::Section& section, const ruxcomp::Entry& entry) {
  Add(section, entry, inspect::ValueText(machine::ValueOf(entry)), Result::Unknown(""));
  open_.push_back(steps_.size() - 1);
}

void Trace::Given(const ruxcomp::Section& section, const ruxcomp::Entry& entry,
                  const Result& result) {
  Add(section, entry, "given", result);
}

void Trace::Add(const ruxcomp::Section& section, const ruxcomp::Entry& entry, std::string text,
                const Result& result) {
  const Target target{language::FindCompiledKind(section.kind()), section, entry};
  steps_.push_back(
      {open_.size(), target.Path(), std::move(text), result, PlaceOf(machine_, section, entry)});
}

void Trace::End(const ruxcomp::Section&, const ruxcomp::Entry&, const Result& result) {
  steps_[open_.back()].result = result;
  open_.pop_back();
}

void Trace::Access(const AccessKey& key, bool is_write, const Result& result) {
  steps_.push_back({open_.size(), (is_write ? "writes " : "reads ") + TextOf(key), "", result});
}

void Trace::OpenWrite(const std::vector<Result>& parts) {
  steps_.push_back({open_.size(), "writes " + TextOf(parts), "", ObstacleIn(parts)});
}

}  // namespace rux::evaluation
