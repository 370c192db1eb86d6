// Every small damage to a compiled file ends in an outcome that is fixed for it: with the verifier,
// with the library and with the program. The numbers are in docs/reliability.md; to get the
// rows of its table:
//
//   build/tests/damage_test | grep '^|'
#include <gtest/gtest.h>

#include <fstream>
#include <iterator>
#include <optional>

#include "compiled/verify.h"
#include "tests/damage/confined.h"
#include "tests/damage/damages.h"
#include "tests/damage/expected_load.h"
#include "tests/damage/loads.h"
#include "tests/damage/memory_file.h"
#include "tests/damage/program.h"
#include "tests/damage/samples.h"

namespace {

// Sanitizers take so long for a new process that only some of the cases are tried with them. The
// number has no factor in common with those of the bits and words.
#ifdef RUX_SANITIZED
constexpr std::size_t kStride = 47;
constexpr bool kAll = false;
#else
constexpr std::size_t kStride = 1;
constexpr bool kAll = true;
#endif

// Every case goes through `rux verify`, and some of them through another command, too.
constexpr std::size_t kCommandStride = 31 * kStride;

// What the library may take besides for a file of a few KiB.
constexpr std::size_t kMemory = std::size_t{2} << 20;

struct Trial {
  Form form;
  Damage damage;
  const char* name;
};

void PrintTo(const Trial& trial, std::ostream* out) { *out << trial.name; }

const Trial kTrials[] = {
    {Form::kMeta, Damage::kCut, "meta file, cut"},
    {Form::kMeta, Damage::kBit, "meta file, one bit flipped"},
    {Form::kMeta, Damage::kWord, "meta file, one word extreme"},
    {Form::kDebugMeta, Damage::kCut, "debug meta file, cut"},
    {Form::kDebugMeta, Damage::kBit, "debug meta file, one bit flipped"},
    {Form::kDebugMeta, Damage::kWord, "debug meta file, one word extreme"},
};

// One consumer's outcomes.
struct Figures {
  std::size_t accepted = 0, refused = 0, raised = 0, crashed = 0;

  void Count(std::optional<Load> load) {
    std::size_t& outcome = !load                      ? crashed
                           : *load == Load::kAccepted ? accepted
                           : *load == Load::kRefused  ? refused
                                                      : raised;
    ++outcome;
  }
};

// 12345 as "12,345".
std::string Number(std::size_t number) {
  std::string text = std::to_string(number);
  for (std::size_t at = text.size(); at > 3; at -= 3) text.insert(at - 3, ",");
  return text;
}

class DamageTest : public testing::TestWithParam<Trial> {
 protected:
  DamageTest()
      : form_(GetParam().form),
        sample_(form_ == Form::kMeta ? MetaSample() : DebugMetaSample()),
        damages_(sample_, GetParam().damage) {}

  std::optional<Load> LoadConfined(const std::string& bytes) const {
    file_.Fill(bytes);
    const auto load =
        Confined(kMemory, [&] { return static_cast<int>(LoadFile(form_, file_.path())); });
    if (!load) return std::nullopt;
    return static_cast<Load>(*load);
  }

  void ExpectDocumented(const std::string& row) const {
    std::ifstream file(RUX_DOCS "/reliability.md");
    const std::string text{std::istreambuf_iterator<char>(file), {}};
    EXPECT_NE(text.find('\n' + row + '\n'), std::string::npos)
        << "docs/reliability.md should have the row\n"
        << row;
  }

  const Form form_;
  const std::string sample_;
  const Damages damages_;
  const MemoryFile file_;
};

TEST_P(DamageTest, EndsInADefinedOutcome) {
  ASSERT_TRUE(rux::compiled::Verify(sample_).empty());
  ASSERT_EQ(LoadConfined(sample_), Load::kAccepted);
  Figures verifier, library;
  VerifyBatch batch;
  for (std::size_t i = 0; i < damages_.size(); i += kStride) {
    SCOPED_TRACE(damages_.Name(i));
    const std::string bytes = damages_.At(i);
    const bool sound = rux::compiled::Verify(bytes).empty();
    const Load verdict = sound ? Load::kAccepted : Load::kRefused;
    verifier.Count(verdict);

    const std::optional<Load> load = LoadConfined(bytes);
    library.Count(load);
    EXPECT_EQ(load, ExpectedLoad(form_, bytes)) << "nothing: the library did not come to an end";
    EXPECT_TRUE(load == Load::kAccepted || !sound) << "the verifier accepts what does not load";

    if (i % kCommandStride == 0) {
      ExpectOutcomeOfCommand(form_, file_.path(), verdict, i / kCommandStride);
    }
    batch.Add(bytes, verdict);
    if (batch.full()) batch.Run();
  }
  batch.Run();
  const std::string row = std::string("| ") + GetParam().name + " | " + Number(damages_.size()) +
                          " | " + Number(verifier.accepted) + " | " + Number(verifier.refused) +
                          " | " + Number(library.accepted) + " | " + Number(library.refused) +
                          " | " + Number(library.raised) + " | " + Number(library.crashed) + " |";
  std::printf("%s\n", row.c_str());
  if (kAll) ExpectDocumented(row);
}

INSTANTIATE_TEST_SUITE_P(Samples, DamageTest, testing::ValuesIn(kTrials));

}  // namespace
