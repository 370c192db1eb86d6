#include "reader/identity.h"

#include <dlfcn.h>
#include <link.h>

#include <cstddef>
#include <string_view>

// The note: the sizes of its name and its digest, its type, and both texts. Neither size needs
// padding.
#define NOTE_NAME "RUXRSPARSER"
#define NOTE_TYPE 1

#define TEXT_OF(value) #value
#define TEXT(value) TEXT_OF(value)

asm(".pushsection .note.rux.reader, \"a\", %note\n"
    ".balign 4\n"
    ".long 12, 64, " TEXT(NOTE_TYPE) "\n"
    ".asciz \"" NOTE_NAME "\"\n"
    ".ascii \"" RUX_READER_DIGEST "\"\n"
    ".popsection\n");

namespace ruxcomp::reader {
namespace {

constexpr std::string_view kNoteName(NOTE_NAME, sizeof(NOTE_NAME));  // with its zero
constexpr std::string_view kDigest = RUX_READER_DIGEST;

static_assert(kNoteName.size() == 12 && kDigest.size() == 64, "the sizes that the note says");

// Sizes of texts in notes are padded to the segment's alignment, which is a word or two.
std::size_t Padded(std::size_t size, std::size_t alignment) {
  return (size + alignment - 1) / alignment * alignment;
}

// Whether a segment of notes has the one with this reader's digest.
bool HasNote(std::string_view notes, std::size_t alignment) {
  using Header = ElfW(Nhdr);
  while (notes.size() >= sizeof(Header)) {
    const auto& header = *reinterpret_cast<const Header*>(notes.data());
    const std::size_t digest_at = Padded(sizeof(Header) + header.n_namesz, alignment);
    const std::size_t next = Padded(digest_at + header.n_descsz, alignment);
    if (digest_at + header.n_descsz > notes.size()) return false;
    if (header.n_type == NOTE_TYPE && notes.substr(sizeof(Header), header.n_namesz) == kNoteName &&
        notes.substr(digest_at, header.n_descsz) == kDigest) {
      return true;
    }
    if (next > notes.size()) return false;
    notes.remove_prefix(next);
  }
  return false;
}

struct Search {
  const link_map* object;
  bool has_note;
};

// One loaded object; a result that is not 0 ends the walk.
int LookAtObject(dl_phdr_info* info, std::size_t, void* data) {
  auto& search = *static_cast<Search*>(data);
  if (info->dlpi_addr != search.object->l_addr) return 0;
  for (std::size_t i = 0; i < info->dlpi_phnum; ++i) {
    const ElfW(Phdr)& segment = info->dlpi_phdr[i];
    if (segment.p_type != PT_NOTE) continue;
    // The loader gives addresses as numbers.
    // NOLINTNEXTLINE(performance-no-int-to-ptr)
    const auto* notes = reinterpret_cast<const char*>(info->dlpi_addr + segment.p_vaddr);
    search.has_note |= HasNote({notes, segment.p_memsz}, segment.p_align == 8 ? 8 : 4);
  }
  return 1;
}

}  // namespace

bool IsThisReader(void* handle) {
  Search search{nullptr, false};
  if (handle == nullptr || dlinfo(handle, RTLD_DI_LINKMAP, static_cast<void*>(&search.object)) != 0)
    return false;
  dl_iterate_phdr(LookAtObject, &search);
  return search.has_note;
}

}  // namespace ruxcomp::reader
