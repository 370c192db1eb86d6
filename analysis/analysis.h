// The machines that open documents are a part of, and what is found in them: kept up to date while
// texts change, by processes that read everything anew.
#ifndef ANALYSIS_ANALYSIS_H_
#define ANALYSIS_ANALYSIS_H_

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <map>
#include <memory>
#include <optional>
#include <set>
#include <string>
#include <vector>

#include "analysis/check.h"
#include "analysis/child.h"
#include "analysis/findings.h"
#include "analysis/reading.h"
#include "analysis/surroundings.h"
#include "driver/compile_options.h"
#include "protocol/positions.h"
#include "workspace/documents.h"
#include "workspace/folders.h"

namespace rux::analysis {

class Analysis {
 public:
  Analysis(driver::CompileOptions settings, const workspace::Documents& documents,
           const workspace::Folders& folders);

  void SetEncoding(protocol::Encoding encoding) { encoding_ = encoding; }

  // What has happened. Nothing is started before Start().
  void TextChanged(const std::string& whole_name);
  // Called after a document was opened and before it is closed.
  void OpenedOrClosing(const workspace::Document& document);
  // Files came and went, or settings changed.
  void AllChanged();
  void FoldersChanged();

  // Starts what there is to do, as much at a time as there are processors.
  void Start();

  // What to wait for: processes that answer, and for how long; none: as long as it takes.
  std::vector<int> descriptors() const;
  std::optional<std::chrono::milliseconds> timeout() const;
  // Takes what the processes have answered; those that take too long have none.
  void Collect();

  // The whole names of files about which something else may be known than before; those about which
  // more is to come are left for later.
  std::set<std::string> TakeChanged();
  // Whether what is known of the file is about the texts as they are.
  bool IsUpToDate(const std::string& whole_name) const;
  bool IsAllUpToDate() const;
  // How many of the machines that are known have been checked at all.
  struct Checked {
    std::size_t machines;
    std::size_t all;
  };
  Checked checked() const;

  // What all machines find in the file; with what they have not in common labelled. What is pointed
  // at here is there until something happens or is collected.
  struct Located {
    const Finding* finding;
    const MachineFindings* machine;  // whose files the finding's places are in
    std::string label;               // the machines that have it; empty: all
  };
  std::vector<Located> FindingsIn(const std::string& whole_name) const;
  // What the file includes.
  struct IncludedFile {
    const Place* at;
    const File* file;
  };
  std::vector<IncludedFile> IncludesIn(const std::string& whole_name) const;
  // Why machines that the document is a part of could not be checked.
  std::set<std::string> FailuresOf(const workspace::Document& document) const;
  // The path by which a file that was found is reached; nothing when it is in no machine.
  const File* FindFile(const std::string& whole_name) const;
  // The whole names of those of all machines, and of documents.
  std::set<std::string> AllFiles() const;

  // Whether the machines that the document is a part of are known; of all documents.
  bool HasMachinesOf(const workspace::Document& document) const;
  bool HasAllMachines() const { return members_.size() == documents_.all().size(); }
  // These machines as their texts are. Each is read when it is first asked for, and is there until
  // something happens.
  using Readings = std::vector<const Reading*>;
  Readings ReadingsOf(const workspace::Document& document) const;
  Readings AllReadings() const;
  // The same for any file, whose machines are looked for in its folder and above when it is not
  // open.
  Readings FindReadingsOf(const File& file) const;
  // The machines that read the file, or what is in the folder, among those in the same folder of
  // the client's.
  Readings FindReadingsBelow(const File& file_or_folder) const;

 private:
  struct State {
    std::string root;
    std::string script;
    bool is_due = true;
    std::uint64_t changed = 0;  // when, by the count of changes
    std::unique_ptr<Child> child;
    MachineFindings known;
    bool is_known = false;

    bool is_under_way() const { return is_due || child != nullptr; }
    std::optional<std::size_t> NumberOf(const std::string& whole_name) const;
  };
  // Of a document.
  using Members = std::set<std::string>;  // whole names of main scripts

  Surroundings From(const std::string& root) const {
    return {settings_, documents_, encoding_, root};
  }
  void ForgetMembers();
  bool IsMember(const workspace::Document* document, const std::string& machine) const;
  void SetDue(State& state);
  void StartSearch();
  void StartCheck(State& state);
  void EndSearch();
  void EndCheck(const std::string& machine, State& state);
  void DropUnused();
  void NoteFiles(const State& state);
  std::size_t RunningCount() const;
  Readings ReadingsOf(const std::string& root, const std::vector<Machine>& machines) const;
  const Reading& ReadingOf(const std::string& root, const std::string& script,
                           const std::string& whole_name) const;
  std::vector<const State*> WithFile(const std::string& whole_name) const;

  const driver::CompileOptions settings_;
  const workspace::Documents& documents_;
  const workspace::Folders& folders_;
  protocol::Encoding encoding_ = protocol::Encoding::kUtf16;

  std::map<std::string, Members> members_;  // by URIs of documents; those that are known
  std::unique_ptr<Child> search_;           // for those that are not
  std::vector<std::string> searched_;       // their URIs
  std::map<std::string, State> machines_;   // by whole names of main scripts
  mutable std::map<std::string, std::unique_ptr<const Reading>> readings_;  // as machines_
  std::set<std::string> changed_;
  std::uint64_t changes_ = 0;
};

}  // namespace rux::analysis

#endif  // ANALYSIS_ANALYSIS_H_
