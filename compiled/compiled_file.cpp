#include "compiled/compiled_file.h"

#include "compiled/fault.h"
#include "compiled/whole_file.h"
#include "support/failure.h"

namespace rux::compiled {
namespace {

// A debug meta file where a meta file is wanted, or the other way round.
support::Failure WrongForm(const std::string& path, Form form) {
  const char* commands =
      form == Form::kMeta ? "ls, get, dump and verify" : "where, decompile, dump and verify";
  return support::Failure(support::ExitStatus::kTrouble,
                          path + " is a " + FormName(form) + "; rux " + commands + " read it");
}

}  // namespace

CompiledFile::CompiledFile(const std::string& path)
    : path_(path), bytes_(ReadWholeFile(path)), form_(FormOf(bytes_)) {
  ExpectSound();
}

CompiledFile::CompiledFile(const std::string& path, Form wanted)
    : path_(path), bytes_(ReadWholeFile(path)), form_(FormOf(bytes_)) {
  if (form_ != wanted && form_ != Form::kNone) throw WrongForm(path, form_);
  ExpectSound();
}

void CompiledFile::ExpectSound() {
  const Faults faults = Verify(bytes_, &summary_);
  if (faults.empty()) return;
  const Fault& first = faults.list().front();
  // Where in it a foreign file differs is of no use to anybody.
  const std::string reason = form_ == Form::kNone ? first.reason : FaultText(first);
  throw support::Failure(support::ExitStatus::kTrouble, "cannot load " + path_ + ": " + reason);
}

}  // namespace rux::compiled
