#pragma once
// Shared by the fake art host's suite files: handle casts and the shapes every art call repeats.
#include "fakes/FakeArtHost.h"

namespace fake {

// Fills dw::gSuites with the fake art host's suites other than art, art set and layers.
void installArtSuites();

namespace detail {
inline FakeArtHost& tree() { return FakeArtHost::current(); }
inline Art* A(DWArtHandle h) { return FakeArtHost::art(h); }
inline DWArtHandle H(Art* a) { return FakeArtHost::handle(a); }
}  // namespace detail

}  // namespace fake

// The call can be made to fail by name (and counts); dead art is refused; so is art of another kind.
#define FAKE_CHECK(op) \
  if (const DWErr e_ = tree().check(op)) return e_;
#define FAKE_LIVE(art) \
  if (!(art) || !A(art)->alive) return kDeadArt;
#define FAKE_KIND(art, k) \
  if (A(art)->kind != (k)) return kBadPlace;

// Accessors of one art of any kind (FAKE_GET, FAKE_SET) or of kind k (FAKE_GET_OF, FAKE_SET_OF): the
// getter copies expr out, the setter runs statement with the new value in value.
#define FAKE_GET(fn, Type, expr) \
  DWErr fn(DWArtHandle art, Type* out) { FAKE_CHECK(#fn); FAKE_LIVE(art); *out = expr; return kDWNoErr; }
#define FAKE_GET_OF(k, fn, Type, expr) \
  DWErr fn(DWArtHandle art, Type* out) { FAKE_CHECK(#fn); FAKE_LIVE(art); FAKE_KIND(art, k); *out = expr; return kDWNoErr; }
#define FAKE_SET(fn, Type, statement) \
  DWErr fn(DWArtHandle art, Type value) { FAKE_CHECK(#fn); FAKE_LIVE(art); statement; return kDWNoErr; }
#define FAKE_SET_OF(k, fn, Type, statement) \
  DWErr fn(DWArtHandle art, Type value) { FAKE_CHECK(#fn); FAKE_LIVE(art); FAKE_KIND(art, k); statement; return kDWNoErr; }
