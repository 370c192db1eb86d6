// The texts of the messages that reading a script gives.
#ifndef FRONTEND_MESSAGES_H_
#define FRONTEND_MESSAGES_H_

// One line a text, so that a search for what a user quotes finds it.
// clang-format off

namespace msg {

// "rsparsea" is meant: log filters match this text.
inline constexpr char kLoadFailed[] = "Parse::load rsparsea(%s) failed.\n";
inline constexpr char kNoMoreSections[] = "Parse::No more sections(total = %u).\n";
inline constexpr char kSectionNameFailed[] = "Parse::Get section(NO. = %u,Index=%u) name failed.\n";
inline constexpr char kCreateSectionFailed[] = "Create section(%u, %s) object failed.\n";
inline constexpr char kAddItemFailed[] = "Add Item(NO. = %u) of section(%s) failed.\n";
inline constexpr char kEntryIgnored[] = "Warning[%s:%u]: [%s]:%s, This ENTRY is ignored because of invalid entry name.\n";
inline constexpr char kPayloadFailed[] = "CRUXEntry, m_RuxEntryData.Create(%u) failed.\n";
// The comma after the bracket, where others have a colon, is meant.
inline constexpr char kIncludeFailed[] = "Warning[%s:%u], [%s]:%s FILE %s cannot be loaded.\n";

}  // namespace msg

#endif  // FRONTEND_MESSAGES_H_
