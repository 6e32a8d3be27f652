#include "refhost/document/Art.h"

#include "refhost/document/Document.h"

namespace refhost {

std::size_t Art::childCount() const {
  std::size_t n = 0;
  for (const Art* c = s_.firstChild; c; c = c->s_.next) ++n;
  return n;
}

bool Art::isAncestorOf(const Art* other) const {
  for (const Art* a = other ? other->s_.parent : nullptr; a; a = a->s_.parent) {
    if (a == this) return true;
  }
  return false;
}

Layer* Art::layer() const {
  const Art* a = this;
  while (a->s_.parent) a = a->s_.parent;
  return a->s_.layer;
}

Art* Art::artStyleOwner() const {
  if (!s_.artStyle) return nullptr;
  return s_.artStyle->owner ? s_.artStyle->owner : const_cast<Art*>(this);
}

}  // namespace refhost
