// What becomes of each entry of a machine in another form.
#ifndef EXPORTS_ACCOUNT_H_
#define EXPORTS_ACCOUNT_H_

#include <cstdint>
#include <map>
#include <string>
#include <vector>

#include "losses/ledger.h"
#include "machine/machine.h"
#include "ruxcomp/model/handles.h"

namespace rux::exports {

class Account {
 public:
  // Notes every entry of every section; the machine and the ledger must outlive it. Texts of the
  // items, for a report, take longer than all else.
  Account(const machine::Machine& machine, losses::Ledger& ledger, bool has_texts);

  // The first entry with that identifier is in the result: as it is, as another text, or not for
  // that reason. Nothing happens where the section has none.
  void Used(const ruxcomp::Section& section, std::uint32_t identifier);
  void Changed(const ruxcomp::Section& section, std::uint32_t identifier, std::string after,
               losses::Reason reason);
  void Dropped(const ruxcomp::Section& section, std::uint32_t identifier, losses::Reason reason);
  // The same of a text in a form that takes only UTF-8.
  void UsedAsUtf8(const ruxcomp::Section& section, std::uint32_t identifier);
  // The same of all entries that nothing was stated about.
  void DropRest(const ruxcomp::Section& section, losses::Reason reason);
  void DropRest(losses::Reason reason);

 private:
  losses::ItemId ItemFor(const ruxcomp::Section& section, std::uint32_t identifier) const;
  losses::ItemId FirstOf(const ruxcomp::Section& section) const;

  losses::Ledger& ledger_;
  std::map<std::uint32_t, std::vector<losses::ItemId>> first_;  // of the sections of each kind
};

}  // namespace rux::exports

#endif  // EXPORTS_ACCOUNT_H_
