// A fixture for tests that compile scripts: a folder of their own and verbs of a compile run.
#ifndef TESTS_SUPPORT_SCRIPT_TEST_H_
#define TESTS_SUPPORT_SCRIPT_TEST_H_

#include <gtest/gtest.h>

#include <cstdint>
#include <string>
#include <vector>

#include "ruxcomp/ruxcomp.h"
#include "tests/support/temp_folder.h"

using Lines = std::vector<std::string>;

class ScriptTest : public ::testing::Test {
 protected:
  void SetUp() override;     // drops the messages of loading
  void TearDown() override;  // ends the compile run, empties the folder

  // The folder of the test, without a separator at its end.
  const std::string& folder() const { return folder_.path(); }

  // A path in that folder, for opening; and the same with a backslash before the name, as hosts
  // hand it to gccCompStart so that messages show the name alone.
  std::string Path(const std::string& name) const;
  std::string ScriptPath(const std::string& name) const;

  // Writes a file into that folder, sub-folders of the name included. It may hold anything.
  void Write(const std::string& name, const std::string& content);

  // Removes all that is in the folder. Every meta file and debug meta file that the library wrote
  // there must be sound.
  void EmptyFolder();

  // What the library wrote under that name is not sound, and that is right.
  void ExpectUnsound(const std::string& name);
  std::string ReadAll(const std::string& name) const;

  // Opens and reads the script "board.rux" with that text; returns the messages.
  Lines Parse(const std::string& text);

  // gccCheck. Only what is written of a model that it accepts, as "board.meta" and "board.metad",
  // must be sound.
  std::uint32_t CheckModel();

  // Parse, then gccCheck, whose answer must be `valid`; returns the messages of gccCheck alone.
  Lines Check(const std::string& text, std::uint32_t valid);

  // Parse, gccCheck (must be clean), gccOutput to "board.meta"; returns the bytes of the file with
  // the four of the creation time set to zero.
  std::string Compile(const std::string& text);

 private:
  void MustBeSound(const std::string& name, bool must);
  void ModelMustBeSound(bool must);  // in both its forms
  void ExpectSoundFiles() const;

  const TempFolder folder_;
  // Tells which files must be sound and which need not: "+NAME" or "-NAME", a line each, the last
  // one counts. A file: tests also write in processes of their own.
  const std::string notes_ = folder() + ".notes";
};

#endif  // TESTS_SUPPORT_SCRIPT_TEST_H_
