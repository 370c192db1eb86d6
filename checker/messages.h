// The texts of the messages that checking a script gives.
#ifndef CHECKER_MESSAGES_H_
#define CHECKER_MESSAGES_H_

// One line a text, so that a search for what a user quotes finds it.
// clang-format off

namespace msg {

// Entries, first pass.
inline constexpr char kEntryNameInvalid[] = "Error[%s:%u]: [%s]:%s, Entry name is invalid.\n";
inline constexpr char kEntryMissing[] = "Error[%s:%u]: [%s]:%s, This ENTRY does not exist.\n";
inline constexpr char kEntryTypeInvalid[] = "Error[%s:%u]: [%s]:%s, Entry value type is invalid.\n";
inline constexpr char kNoSubString[] = "Error[%s:%u]: [%s]:%s, No sub-string.\n";
inline constexpr char kMoreSubStrings[] = "Warning[%s:%u]: [%s]:%s, More than one sub-string and get the first one as sub-string.\n";
inline constexpr char kNotANumber[] = "Error[%s:%u]: [%s]:%s, %s has not been defined and is not a valid number.\n";
inline constexpr char kNotEnoughForRepeater[] = "Error[%s:%u]: [%s]:%s, not enough sub-strings.\n";

// Values, first pass.
inline constexpr char kNoValueType[] = "Error[%s:%u]: [%s]:%s, No value type sub-string.\n";
inline constexpr char kValueTypeInvalid[] = "Error[%s:%u]: [%s]:%s, Value operator type(%s) is invalid.\n";
inline constexpr char kNotEnoughForType[] = "Error[%s:%u]: [%s]:%s, Not enough sub-strings for value type %s.\n";
inline constexpr char kTooMuchForType[] = "Warning[%s:%u]: [%s]:%s, Too much sub-strings for value type %s.\n";
inline constexpr char kOperatorInvalid[] = "Error[%s:%u]: [%s]:%s, Value:OPERATOR %s is invalid.\n";
inline constexpr char kBaseAddressNotZero[] = "Error[%s:%u]: [%s]:%s, The BaseAddress %s of BUSTYPE_SIMPLEIOPORT must be 0.\n";

// References, second pass.
inline constexpr char kNoParentGroup[] = "Error[%s:%u]: [%s]:%s, Parent GROUP %s does not exist.\n";
inline constexpr char kNoParentPelmGroup[] = "Error[%s:%u]: [%s]:%s, Parent PELMGROUP with ID %s does not exist.\n";
inline constexpr char kSensorNotListed[] = "Error[%s:%u]: [%s]:%s, The parent PELMGROUP of SENSOR with ID %s does not exist.\n";
inline constexpr char kNoSensor[] = "Error[%s:%u]: [%s]:%s, The SENSOR with ID %s does not exist.\n";
inline constexpr char kNoAction[] = "Error[%s:%u]: [%s]:%s, The ACTION with NAME %s does not exist.\n";
inline constexpr char kNoTable[] = "Error[%s:%u]: [%s]:%s, The TABLE with NAME %s does not exist.\n";
inline constexpr char kNoGlobal[] = "Error[%s:%u]: [%s]:%s, The GLOBAL entry with NAME %s does not exist.\n";
inline constexpr char kArgInvalid[] = "Error[%s:%u]: [%s]:%s, The ARG name %s is invalid.\n";
inline constexpr char kValueNameInvalid[] = "Error[%s:%u]: [%s]:%s, The VALUE name %s is not valid in this section.\n";
// No comma after the entry name, and none of the entry in the next two: meant.
inline constexpr char kParamCount[] = "Error[%s:%u]: [%s]:%s The ACTION %s needs %u PARAMS, but total %u PARAMS here.\n";
inline constexpr char kSmbusAddress[] = "Error[%s:%u]:SMBUS address field is wrong!\n";
inline constexpr char kSmbusType[] = "Error[%s:%u]: SMBUS type is wrong!\n";

// Sections.
inline constexpr char kSectionTypeInvalid[] = "Error[%s:%u]: [%s], section type is invalid.\n";
inline constexpr char kSectionNameInvalid[] = "Error[%s:%u]: Section name %s is invalid.\n";
inline constexpr char kSectionRedefined[] = "Error[%s:%u]: SECTION %s is redefined. The MAX number of %s is one.\n";
inline constexpr char kEntryRedefinedElsewhere[] = "Error[%s:%u]: [%s], Entry %s is redefined.It has been defined in Line[%s:%u].\n";
inline constexpr char kEntryRedefined[] = "Error[%s:%u]: [%s], Entry %s is redefined.\n";
inline constexpr char kNameRedefined[] = "Error[%s:%u]: [%s], NAME %s is redefined.It has been defined in Line[%s:%u].\n";
inline constexpr char kIdRedefined[] = "Error[%s:%u]: [%s], ID %s is redefined.It has been defined in Line[%s:%u].\n";
inline constexpr char kParentNotEarlier[] = "Error[%s:%u]: Parent of this group hasn't been defined.\n";

}  // namespace msg

#endif  // CHECKER_MESSAGES_H_
