#pragma once
// Art whose style carries live effects is drawn as what its effects made of it. Making that result
// is the host's business (a plug-in makes it, drawing as it goes), so the renderer only asks a
// lookup that the host installs; the results are made before a drawing starts.
namespace refhost {
class Art;
}

namespace refhost::render {

// The art to draw in place of `art`, or null to draw `art` itself.
using LiveEffectLookup = const Art* (*)(const Art& art);

// Installs the lookup (null removes it). Set once by the host, before anything draws.
void setLiveEffectLookup(LiveEffectLookup lookup);

// What to draw for `art`: null when it carries no live effect or no result was made for it.
const Art* liveEffectResult(const Art& art);

}  // namespace refhost::render
