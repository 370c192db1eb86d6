#include "frontend/name.h"

const std::string Name::kEmpty;

Name& Name::operator=(const std::string& text) {
  text_ = text.empty() ? &kEmpty : &*m_texts.insert(text).first;
  return *this;
}

void Name::DropTexts() { m_texts.clear(); }
