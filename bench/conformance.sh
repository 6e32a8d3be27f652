#!/usr/bin/env bash
# Renders the SVG conformance set beside the repository (../shared/conformance) with our tool at the
# set's size convention (300 px wide, the height by aspect ratio: `rasterize --width 300`), scores
# the renderings with the set's compare.py and prints our pass counts next to the independent
# renderer's: the counts its README states and, when rsvg-convert is installed, the counts of
# rsvg-convert -w 300 scored the same way on this machine.
#
#   bench/conformance.sh [TOOL] [OUT_DIR]
#
# TOOL defaults to build/refhost/cli/rasterize; OUT_DIR (default: a temporary folder, removed at
# the end) keeps ours/GROUP/NAME.png, our warnings ours/GROUP/NAME.log, the scorer's output and
# per-case TSV files, and rsvg/ likewise. CONFORMANCE_DIR overrides where the set is; RSVG=0 skips
# the rsvg-convert run. Exits 0 with a message when the set is absent.
set -euo pipefail
root="$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)"
set_dir="${CONFORMANCE_DIR:-$root/../shared/conformance}"
if [[ ! -f "$set_dir/compare.py" ]]; then
  echo "conformance: no conformance set at $set_dir; skipped"
  exit 0
fi
set_dir="$(cd "$set_dir" && pwd)"
tool="${1:-$root/build/refhost/cli/rasterize}"
if [[ ! -x "$tool" ]]; then
  echo "conformance: the tool $tool is not built (scripts/build, or pass its path)" >&2
  exit 1
fi
if [[ -n "${2:-}" ]]; then
  out="$2"
  mkdir -p "$out"
else
  out="$(mktemp -d)"
  trap 'rm -rf "$out"' EXIT
fi
width=300
groups=(core clip-gradient)
with_rsvg=1
[[ "${RSVG:-1}" == 0 ]] && with_rsvg=0
command -v rsvg-convert >/dev/null || with_rsvg=0

render_group() {  # renderer group
  local who="$1" group="$2" svg name
  mkdir -p "$out/$who/$group"
  for svg in "$set_dir/$group"/*.svg; do
    name="$(basename "$svg" .svg)"
    if [[ "$who" == ours ]]; then
      # A case that fails to render is left without a PNG: the scorer counts it as missing.
      "$tool" --quiet "$svg" -o "$out/ours/$group/$name.png" --width "$width" \
        >"$out/ours/$group/$name.log" 2>&1 || echo "render failed: $group/$name" >>"$out/ours/failed.txt"
    else
      rsvg-convert -w "$width" -o "$out/rsvg/$group/$name.png" "$svg" 2>/dev/null ||
        echo "render failed: $group/$name" >>"$out/rsvg/failed.txt"
    fi
  done
}

score_group() {  # renderer group -> prints "pass cases"
  local who="$1" group="$2"
  python3 "$set_dir/compare.py" "$out/$who" --group "$group" --quiet --tsv "$out/$who/$group.tsv" \
    >"$out/$who/$group.txt" 2>&1 || true
  awk -F'\t' 'NR > 1 { n++; if ($9 == "PASS") p++ } END { printf "%d %d\n", p, n }' "$out/$who/$group.tsv"
}

# What the set's README says the independent renderer passes, e.g. "passes 144 of the 153 core cases".
stated() {  # group
  tr '\n' ' ' <"$set_dir/README.md" | tr -s ' ' |
    grep -oE "([0-9]+) of the ([0-9]+) $1 cases" | head -1 | awk '{ print $1 }'
}

printf '%-14s %6s %12s %14s %16s\n' group cases "ours pass" "rsvg (here)" "rsvg (README)"
for group in "${groups[@]}"; do
  [[ -d "$set_dir/$group" ]] || continue
  render_group ours "$group"
  read -r ours_pass cases < <(score_group ours "$group")
  rsvg_pass="-"
  if ((with_rsvg)); then
    render_group rsvg "$group"
    read -r rsvg_pass _ < <(score_group rsvg "$group")
  fi
  readme="$(stated "$group")"
  printf '%-14s %6s %12s %14s %16s\n' "$group" "$cases" "$ours_pass" "$rsvg_pass" "${readme:--}"
done

echo
echo "failing cases (ours):"
for group in "${groups[@]}"; do
  [[ -f "$out/ours/$group.tsv" ]] || continue
  awk -F'\t' 'NR > 1 && $9 != "PASS" { printf "  %s/%s  %s within=%s ink=%s %s\n", $1, $2, $9, $4, $5, $10 }' \
    "$out/ours/$group.tsv"
done
if ((with_rsvg)); then
  echo "failing cases (rsvg-convert):"
  for group in "${groups[@]}"; do
    [[ -f "$out/rsvg/$group.tsv" ]] || continue
    awk -F'\t' 'NR > 1 && $9 != "PASS" { printf "  %s/%s\n", $1, $2 }' "$out/rsvg/$group.tsv"
  done
fi
