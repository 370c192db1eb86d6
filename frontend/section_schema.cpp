#include "frontend/section_schema.h"

namespace {

constexpr tagNOTATION kRequiredValue = kRequired | kValueBit4 | kValueBit32;
constexpr tagNOTATION kOptionalValue = kOptional | kValueBit4 | kValueBit32;
constexpr tagNOTATION kHookValue = kOptional | kValueBit4;
constexpr tagNOTATION kFree = kOptional | kFreeName;
constexpr tagNOTATION kFreeActionValue = kHookValue | kFreeName;
constexpr tagNOTATION kFreeValue = kOptionalValue | kFreeName;

constexpr SectionSchema kMorvrux = {{{ENTRY_VERSION, kRequired}}, {}};

constexpr SectionSchema kSystem = {{{ENTRY_TYPE, kRequired},
                                    {ENTRY_MODEL, kRequired},
                                    {ENTRY_FLAG, kRequired},
                                    {ENTRY_SOUTHBRIDGE, kOptional},
                                    {ENTRY_NORTHBRIDGE, kOptional},
                                    {ENTRY_RUXLOOP, kRequired}},
                                   {{"", ENTRY_P, kFree}}};

constexpr SectionSchema kGroup = {{{ENTRY_PARENT, kRequired},
                                   {ENTRY_NAME, kRequired},
                                   {ENTRY_CHILDGROUP, kRequired},
                                   {ENTRY_VALUE_INIT, kHookValue},
                                   {ENTRY_VALUE_DEINIT, kHookValue},
                                   {ENTRY_VALUE_ENTRY, kHookValue},
                                   {ENTRY_VALUE_EXIT, kHookValue}},
                                  {}};

constexpr SectionSchema kPelmGroup = {{{ENTRY_NAME, kRequired},
                                       {ENTRY_ID, kRequired},
                                       {ENTRY_PID, kRequired},
                                       {ENTRY_SENSORS, kRequired}},
                                      {{"", ENTRY_P, kFree}}};

constexpr SectionSchema kSensor = {
    {{ENTRY_PARENT, kRequired},
     {ENTRY_NAME, kRequired},
     {ENTRY_ID, kRequired},
     {ENTRY_TYPE, kRequired},
     {ENTRY_INITFLAG, kRequired},
     {ENTRY_CONTROLMASK, kRequired},
     {ENTRY_THEORY, kOptional},
     {ENTRY_THRESHOLD_FH, kOptional},
     {ENTRY_THRESHOLD_WH, kOptional},
     {ENTRY_THRESHOLD_FL, kOptional},
     {ENTRY_THRESHOLD_WL, kOptional},
     {ENTRY_VALUE_INIT, kHookValue},
     {ENTRY_VALUE_DEINIT, kHookValue},
     {ENTRY_VALUE_ENTRY, kHookValue},
     {ENTRY_VALUE_EXIT, kHookValue},
     {ENTRY_VALUE, kRequiredValue},
     {ENTRY_VALUE_IPMI, kOptionalValue}},
    {{"P_", ENTRY_P, kFree}, {"", ENTRY_VALUE_OF_SENSOR, kFreeValue}}};

constexpr SectionSchema kDevice = {
    {{ENTRY_NAME, kRequired},
     {ENTRY_ID, kRequired},
     {ENTRY_INITFLAG, kRequired},
     {ENTRY_CONTROLMASK, kRequired}},
    {{"P_", ENTRY_P, kFree}, {"", ENTRY_VALUE_OF_SENSOR, kFreeValue}}};

constexpr SectionSchema kAction = {{{ENTRY_NAME, kRequired},
                                    {ENTRY_ARGNUMBER, kOptional},
                                    {ENTRY_VALUE_IPMI, kOptionalValue},
                                    {ENTRY_VALUE, kOptionalValue}},
                                   {{"", ENTRY_VALUE_OF_ACTION, kFreeActionValue}}};

constexpr SectionSchema kTable = {{{ENTRY_NAME, kRequired}, {ENTRY_TYPE, kRequired}},
                                  {{"", ENTRY_TABLE_ROW, kFree}}};

constexpr SectionSchema kGlobal = {{}, {{"", ENTRY_G, kFreeValue}}};
constexpr SectionSchema kProperty = {{}, {{"", ENTRY_PROPERTY, kFree}}};
constexpr SectionSchema kRepeater = {{}, {{"", ENTRY_REPEATER, kFree}}};

constexpr SectionSchema kIfdef = {{{ENTRY_DEFINEWORD, kRequired}}, {}};
constexpr SectionSchema kNoSchema = {{}, {}};

}  // namespace

const SectionSchema& SchemaOf(SectionId kind) {
  switch (kind) {
    case SECTION_MORVRUX:
      return kMorvrux;
    case SECTION_PROPERTY:
      return kProperty;
    case SECTION_SYSTEM:
      return kSystem;
    case SECTION_GROUP:
      return kGroup;
    case SECTION_SENSOR:
      return kSensor;
    case SECTION_DEVICE:
      return kDevice;
    case SECTION_ACTION:
      return kAction;
    case SECTION_TABLE:
      return kTable;
    case SECTION_PELMGROUP:
      return kPelmGroup;
    case SECTION_GLOBAL:
      return kGlobal;
    case SECTION_REPEATER:
      return kRepeater;
    case SECTION_DEFINE:
      return kNoSchema;
    case SECTION_IFDEF:
      return kIfdef;
    case SECTION_INCLUDE:
      return kNoSchema;
  }
  return kNoSchema;
}
