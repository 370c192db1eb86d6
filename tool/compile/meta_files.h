// What compiling a script makes.
#ifndef TOOL_COMPILE_META_FILES_H_
#define TOOL_COMPILE_META_FILES_H_

#include <string>
#include <vector>

#include "tool/compile/compile_run.h"
#include "tool/files/placement.h"

namespace rux {

struct MetaPaths {
  std::string meta;
  std::string debug_meta;  // empty: none
  std::string depfile;     // empty: none
};

// The meta file and, if they are asked for, the debug meta file and the dependency file: all or
// none. The dependency file is also written for a script with errors.
class MetaFiles : public CompileProduct {
 public:
  explicit MetaFiles(const MetaPaths& paths) : paths_(paths) {}

  std::vector<Diagnostic> Make() override;
  void Keep(const SourceFiles& sources) override;
  void KeepNone(const SourceFiles& sources) override;

 private:
  NewFile Depfile(const SourceFiles& sources) const;

  const MetaPaths& paths_;
  std::vector<NewFile> files_;
};

}  // namespace rux

#endif  // TOOL_COMPILE_META_FILES_H_
