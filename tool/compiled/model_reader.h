// A meta file as a read model.
#ifndef TOOL_COMPILED_MODEL_READER_H_
#define TOOL_COMPILED_MODEL_READER_H_

#include "ruxcomp/model.h"
#include "tool/compiled/meta_walk.h"

namespace rux {

// Makes the model that the library would have after a gcInit of the file, without it: the bytes are
// read once, while they are verified, and no records are made for everything in them.
class ModelReader : public MetaVisitor {
 public:
  void OnTable(Cursor& cursor, MetaTableView table) override;
  void OnSectionBegin(Cursor& cursor, const MetaSectionView& section) override;
  void OnEntry(Cursor& cursor, MetaEntryView& entry) override;
  void OnSectionEnd(Cursor& cursor, MetaSectionView& section) override;
  void OnEnd(Cursor& cursor) override;

  // Once, after the walk over a sound file.
  ruxcomp::Model Take();

 private:
  void AddNumbers(const MetaTableView& table);
  void AddTexts(const MetaTableView& table);

  ruxcomp::ModelBuilder builder_;
};

}  // namespace rux

#endif  // TOOL_COMPILED_MODEL_READER_H_
