#include "frontend/interned_string.h"

#include <string>

#include "frontend/lifetime.h"

namespace ruxcomp::core {

RUX_FROM_LOAD_TO_UNLOAD const std::string InternedString::kEmpty;

InternedString& InternedString::operator=(const std::string& text) {
  text_ = text.empty() ? &kEmpty : &*m_texts.insert(text).first;
  return *this;
}

void InternedString::DropTexts() { m_texts.clear(); }

}  // namespace ruxcomp::core
