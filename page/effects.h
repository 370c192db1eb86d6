// What the machine does, what makes it do so, and the readings that decide it.
#ifndef PAGE_EFFECTS_H_
#define PAGE_EFFECTS_H_

#include <cstddef>
#include <map>
#include <vector>

#include "browse/relations.h"
#include "page/contents.h"
#include "page/html.h"
#include "ruxcomp/model/handles.h"

namespace rux::page {

// An action that writes to a bus, itself or by a call, and not in order to read.
struct Effect {
  // An entry outside of actions that calls it, directly or through others.
  struct Run {
    const browse::Link* call;
    std::vector<Thing> deciders;    // sensors, and globals that no sensor shows
    std::vector<Thing> conditions;  // globals on the way that compare with a number
    bool is_cut;                    // there are more, which are not looked for
  };
  Thing action;
  bool reads;  // what it does not write: what it does may depend on that
  std::vector<Run> runs;
};

class Effects {
 public:
  // The contents must outlive it.
  explicit Effects(const Contents& contents);

  // In the order of the actions; those that nothing runs are none.
  const std::vector<Effect>& all() const { return effects_; }
  // Null for an action that has none.
  const Effect* Of(Thing action) const;
  // Those whose runs the sensor or global is one of the deciders of.
  std::vector<const Effect*> DecidedBy(Thing reading) const { return Those(decided_by_, reading); }
  // Those that an entry of the section runs.
  std::vector<const Effect*> RunBy(Thing caller) const { return Those(run_by_, caller); }

  // An entry outside of actions that writes to a bus without calling one.
  struct Write {
    Thing thing;
    ruxcomp::Entry entry;
  };
  const std::vector<Write>& writes() const { return writes_; }

 private:
  using Places = std::map<Thing, std::vector<std::size_t>>;  // of effects

  void AddAction(const Contents& contents, Thing action);
  void AddWrites(const Contents& contents);
  std::vector<const Effect*> Those(const Places& places, Thing thing) const;

  std::vector<Effect> effects_;
  Places decided_by_;
  Places run_by_;
  std::vector<Write> writes_;
};

// "GROUP COOLING VALUE_EXIT G_OVERHEAT ? POWER_OFF(1)"
void WriteCaller(const Contents& contents, const Effect::Run& run, Html& out);
// "CPU0_TEMP, CPU1_TEMP: G_OVERHEAT = G_CPU_HOTTEST >= 110 ? 1 : 0", or what else is known.
void WriteDeciders(const Contents& contents, const Effect& effect, const Effect::Run& run,
                   Html& out);
// The conditions alone.
void WriteConditions(const Contents& contents, const Effect::Run& run, Html& out);
// The first things, and how many more there are.
void WriteSomeLinks(const Contents& contents, const std::vector<Thing>& things, Html& out);

}  // namespace rux::page

#endif  // PAGE_EFFECTS_H_
