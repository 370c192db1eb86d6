#include "docs/tables/words.h"

#include "ruxcomp/language/compiled_entries.h"
#include "ruxcomp/language/entries.h"
#include "ruxcomp/language/sections.h"
#include "ruxcomp/language/values.h"

using ruxcomp::language::Content;
using ruxcomp::language::EntryPayload;
using ruxcomp::language::Form;
using ruxcomp::language::NameForm;
using ruxcomp::language::Naming;
using ruxcomp::language::Role;
using ruxcomp::language::Uniqueness;

const char* WordFor(Form form) {
  switch (form) {
    case Form::kCompiled:
      return "compiled";
    case Form::kSourceOnly:
      return "source-only";
    case Form::kNotRestored:
      return "not-restored";
  }
  return "";
}

const char* WordFor(Naming naming) {
  switch (naming) {
    case Naming::kByName:
      return "by-name";
    case Naming::kByKeys:
      return "by-keys";
    case Naming::kUnnamed:
      break;
  }
  return "";
}

const char* WordFor(Uniqueness uniqueness) {
  switch (uniqueness) {
    case Uniqueness::kSingle:
      return "single";
    case Uniqueness::kKeys:
      return "keys";
    case Uniqueness::kNameAndId:
      return "name-and-id";
    case Uniqueness::kNameAndIdAfterParent:
      return "name-and-id-after-parent";
    case Uniqueness::kOwnKeys:
      return "own-keys";
    case Uniqueness::kNothing:
      break;
  }
  return "";
}

const char* WordFor(EntryPayload payload) {
  switch (payload) {
    case EntryPayload::kDword:
    case EntryPayload::kNumberText:
      return "number";
    case EntryPayload::kText:
      return "text";
    case EntryPayload::kNumberList:
      return "numbers";
    case EntryPayload::kValue:
      return "value";
    case EntryPayload::kRepeater:
      return "repeat";
  }
  return "";
}

const char* WordFor(Role role) {
  switch (role) {
    case Role::kNone:
      break;
    case Role::kOperand:
      return "operand";
    case Role::kNumber:
      return "number";
    case Role::kLocalValue:
      return "value";
    case Role::kAction:
      return "action";
    case Role::kTable:
      return "table";
    case Role::kOperator:
      return "operator";
    case Role::kRepeatCount:
      return "repeat-count";
    case Role::kRepeatArgument:
      return "repeat-argument";
  }
  return "";
}

const char* WordFor(Content content) {
  switch (content) {
    case Content::kNumber:
      return "number";
    case Content::kNumbers:
      return "numbers";
    case Content::kText:
      return "text";
    case Content::kAnyText:
      return "any text";
    case Content::kName:
      return "name";
    case Content::kGroupName:
      return "group name";
    case Content::kActionName:
      return "action name";
    case Content::kParent:
      return "parent";
    case Content::kTypedValue:
      return "typed value";
    case Content::kRepetition:
      return "repetition";
  }
  return "";
}

const char* WordFor(NameForm form) {
  switch (form) {
    case NameForm::kAny:
      return "any";
    case NameForm::kNoDigitFirst:
      return "no digit first";
    case NameForm::kNumber:
      return "number";
    case NameForm::kCells:
      return "cells";
  }
  return "";
}
