// A read model answers what the queries answer, whatever was loaded.
#include "tests/read_model/same_answers.h"

#include <filesystem>
#include <optional>

#include "compiled/verify.h"
#include "ruxcomp/model.h"
#include "ruxcomp/verify.h"
#include "tests/api/meta_bytes.h"
#include "tests/damage/damages.h"
#include "tests/damage/memory_file.h"
#include "tests/damage/samples.h"

namespace {

using ruxcomp::Model;

class SameAnswers : public MetaTest {};

// The models that are made without the library hold that against it.
void ExpectSameAnswersOf(const std::string& path) {
  for (const auto& open : {Model::Open, Model::LoadVerified}) {
    const std::optional<Model> model = open(path, nullptr);
    ASSERT_TRUE(model);
    ExpectSameAnswers(*model);
  }
}

TEST_F(SameAnswers, BeforeAnyLoad) {
  ExpectSameAnswers(Model::OfLoaded());
  ExpectSameAnswers(Model());
}

TEST_F(SameAnswers, OfTheExamples) {
  for (const std::string name : {"first", "server"}) {
    SCOPED_TRACE(name);
    std::filesystem::current_path(RUX_EXAMPLES "/" + name);
    ASSERT_EQ(gccCompStart(name + ".rux"), 1u);
    gccParse();
    ASSERT_EQ(gccCheck(), 1u);
    ASSERT_EQ(gccOutput(Path("board.meta")), 1u);
    gccCompEnd();
    ASSERT_EQ(gcInit(Path("board.meta")), 1u);
    const Model model = Model::OfLoaded();
    EXPECT_GT(model.sections(RUX_SECT_SENSOR).size(), 0u);
    ExpectSameAnswers(model);
    ExpectSameAnswersOf(Path("board.meta"));
    gcUnInit();
  }
}

// What was released leaves the tables, and a refused file leaves in them what is before its fault.
struct Trial {
  const char* name;
  Damage damage;
  std::size_t stride;  // has no factor in common with the numbers of bits and of words
};

void PrintTo(const Trial& trial, std::ostream* out) { *out << trial.name; }

class SameAnswersOfDamaged : public SameAnswers, public testing::WithParamInterface<Trial> {
 protected:
#ifdef RUX_SANITIZED
  static constexpr std::size_t kSlowdown = 11;
#else
  static constexpr std::size_t kSlowdown = 1;
#endif
};

TEST_P(SameAnswersOfDamaged, MetaFile) {
  const Damages damages(MetaSample(), GetParam().damage);
  const MemoryFile file;
  std::size_t loaded = 0, refused = 0;
  for (std::size_t i = 0; i < damages.size() && !HasFailure(); i += GetParam().stride * kSlowdown) {
    SCOPED_TRACE(damages.Name(i));
    file.Fill(damages.At(i));
    const bool is_loaded = gcInit(file.path()) != 0;
    ++(is_loaded ? loaded : refused);
    ExpectSameAnswers(Model::OfLoaded());
    const rux::compiled::Faults faults = rux::compiled::Verify(damages.At(i));
    ruxcomp::Fault fault;
    const std::optional<Model> verified = Model::OfVerified(damages.At(i), &fault);
    ASSERT_EQ(verified.has_value(), faults.empty());
    if (verified) {
      ExpectSameAnswers(*verified);
    } else if (ruxcomp::file::FormOf(damages.At(i)) == ruxcomp::file::Form::kMeta) {
      EXPECT_EQ(ruxcomp::FaultText(fault), ruxcomp::FaultText(faults.list().front()));
    }
    gcUnInit();
    EXPECT_EQ(Model::Load(file.path()).has_value(), is_loaded);
  }
  EXPECT_GT(refused, 0u);
  EXPECT_EQ(loaded > 0, GetParam().damage != Damage::kCut);
}

INSTANTIATE_TEST_SUITE_P(Damages, SameAnswersOfDamaged,
                         testing::Values(Trial{"cut", Damage::kCut, 1},
                                         Trial{"bit", Damage::kBit, 7},
                                         Trial{"word", Damage::kWord, 1}));

}  // namespace
