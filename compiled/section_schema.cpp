#include "compiled/section_schema.h"

#include <algorithm>

#include "ruxcomp/language/notation.h"

namespace rux::compiled {
namespace {

constexpr std::uint32_t kOptional = 2;
constexpr std::uint32_t kFree = kOptional | kFreeName;
// Values carry two bits more.
constexpr std::uint32_t kHook = kOptional | 4;
constexpr std::uint32_t kValue = 4 | 32;
constexpr std::uint32_t kFreeValue = kFree | kValue;

std::vector<SectionSchema> Schemas() {
  std::vector<SectionSchema> schemas = {
#define SECTION(keyword, kind, notation, form, naming, uniqueness) \
  {kind, #keyword, ruxcomp::language::notation, {}, {}},
#include "ruxcomp/language/sections.def"
  };
  const auto of = [&](KindNumber kind) -> SectionSchema& { return schemas[kind - 1]; };

  of(kKindMORVRUX).keys = {{kKeyVERSION, kRequired}};
  of(kKindMORVRUX).is_single = true;

  of(kKindPROPERTY).more = {{kKeyPROPERTY, kFree}};
  of(kKindPROPERTY).names = NameScope::kKind;

  of(kKindSYSTEM).keys = {{kKeyTYPE, kRequired},        {kKeyMODEL, kRequired},
                          {kKeyFLAG, kRequired},        {kKeySOUTHBRIDGE, kOptional},
                          {kKeyNORTHBRIDGE, kOptional}, {kKeyRUXLOOP, kRequired}};
  of(kKindSYSTEM).more = {{kKeyP, kFree}};
  of(kKindSYSTEM).is_single = true;

  of(kKindGROUP).keys = {{kKeyPARENT, kRequired},     {kKeyNAME, kRequired},
                         {kKeyCHILDGROUP, kRequired}, {kKeyVALUE_INIT, kHook},
                         {kKeyVALUE_DEINIT, kHook},   {kKeyVALUE_ENTRY, kHook},
                         {kKeyVALUE_EXIT, kHook}};

  of(kKindSENSOR).keys = {{kKeyPARENT, kRequired},
                          {kKeyNAME, kRequired},
                          {kKeyID, kRequired},
                          {kKeyTYPE, kRequired},
                          {kKeyINITFLAG, kRequired},
                          {kKeyCONTROLMASK, kRequired},
                          {kKeyTHEORY, kOptional},
                          {kKeyTHRESHOLD_FH, kOptional},
                          {kKeyTHRESHOLD_WH, kOptional},
                          {kKeyTHRESHOLD_FL, kOptional},
                          {kKeyTHRESHOLD_WL, kOptional},
                          {kKeyVALUE_INIT, kHook},
                          {kKeyVALUE_DEINIT, kHook},
                          {kKeyVALUE_ENTRY, kHook},
                          {kKeyVALUE_EXIT, kHook},
                          {kKeyVALUE, kRequired | kValue},
                          {kKeyVALUE_IPMI, kOptional | kValue}};
  of(kKindSENSOR).more = {{kKeyP, kFree}, {kKeyVALUE_OF_SENSOR, kFreeValue}};

  of(kKindDEVICE).keys = {{kKeyNAME, kRequired},
                          {kKeyID, kRequired},
                          {kKeyINITFLAG, kRequired},
                          {kKeyCONTROLMASK, kRequired}};
  of(kKindDEVICE).more = {{kKeyP, kFree}, {kKeyVALUE_OF_SENSOR, kFreeValue}};

  of(kKindACTION).keys = {{kKeyNAME, kRequired},
                          {kKeyARGNUMBER, kOptional},
                          {kKeyVALUE_IPMI, kOptional | kValue},
                          {kKeyVALUE, kOptional | kValue}};
  of(kKindACTION).more = {{kKeyVALUE_OF_ACTION, kHook | kFreeName}};

  of(kKindTABLE).keys = {{kKeyNAME, kRequired}, {kKeyTYPE, kRequired}};
  of(kKindTABLE).more = {{kKeyTABLE_ROW, kFree}};

  of(kKindPELMGROUP).keys = {
      {kKeyNAME, kRequired}, {kKeyID, kRequired}, {kKeyPID, kRequired}, {kKeySENSORS, kRequired}};
  of(kKindPELMGROUP).more = {{kKeyP, kFree}};

  of(kKindGLOBAL).more = {{kKeyG, kFreeValue}};
  of(kKindGLOBAL).names = NameScope::kKind;

  of(kKindREPEATER).more = {{kKeyREPEATER, kFree}};
  of(kKindREPEATER).names = NameScope::kKind;

  of(kKindDEFINE).more = {{kKeyDEFINED_WORD, kFree}};

  of(kKindIFDEF).keys = {{kKeyDEFINEWORD, kRequired}};
  of(kKindIFDEF).more = {{kKeyDEFINED_WORD, kFree}};

  of(kKindINCLUDE).more = {{kKeyFILE, kOptional}};
  of(kKindINCLUDE).names = NameScope::kNone;
  return schemas;
}

}  // namespace

const SectionSchema* FindSchema(std::uint32_t kind) {
  static const std::vector<SectionSchema> schemas = Schemas();
  return kind >= 1 && kind <= schemas.size() ? &schemas[kind - 1] : nullptr;
}

}  // namespace rux::compiled
