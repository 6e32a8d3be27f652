#pragma once
#include <cstdint>

#include "refhost/document/Art.h"
#include "refhost/document/Symbol.h"

namespace refhost {

// The symbol whose definition holds the art (the definition's root group included), or null.
inline Symbol* definingSymbol(const Art& art) {
  for (const Art* a = &art; a; a = a->parent())
    if (a->isSymbolDefinition()) return a->symbolOfDefinition();
  return nullptr;
}

// Changes plug-ins reported inside symbol definitions ("DW Symbol Utils Suite"), for tests and the
// tool's log; instances draw their definition as it is, so nothing else needs refreshing.
std::uint64_t symbolChangeNotifications();

}  // namespace refhost
