#!/usr/bin/env bash
# Runs our tool and rsvg-convert on the same SVG files at several resolutions and records, per
# file, resolution and tool: wall and CPU time, peak memory, output size and pixels, and the time
# spent encoding the PNG. One line per run (the best of RUNS by wall time) goes to
# WORK_DIR/results.tsv; bench/peers/report.py turns that into tables and a plot.
#
# Usage: bench/peers/endtoend.sh [BUILD_DIR] [WORK_DIR]
#   BUILD_DIR  a build with refhost/cli/rasterize, Rasterize.so and bench/peers/png_encode_time
#              (default: build)
#   WORK_DIR   outputs and results (default: /tmp/rasterize-peers-e2e)
# Environment: PPIS (default "150 300 600"), RUNS (default 3), FILES (default: every file of
# bench/corpus/files.txt), PEER_LIMIT (seconds of CPU time one rsvg-convert run may take, default
# 300: it composites group opacity through full-size layers, which on some files takes many
# minutes; a run stopped there is recorded with the limit as its time and "limit" in the last
# column, which understates the peer's time), BACKGROUND (white, the default, or transparent); RASTERIZE, PLUGIN and
# ENCODE_TIME override the programs taken from BUILD_DIR; WITH_PEER=0 runs only our tool (to
# compare two builds of ours against one run of the peer); OUR_PNG_SETTINGS the png_encode_time
# options that stand for our PNG writer (for an older build).
#
# Both tools anti-alias: ours by 4 x 4 supersampling (2 x 2 for rasters 3277 pixels wide or
# more), rsvg-convert by cairo's coverage. rsvg-convert is asked for the same resolution with
# -z PPI/96 (its -d changes only physical units) and, with the white background, -b white.
#
# Encoding is timed apart by png_encode_time, which decodes the tool's own output file and encodes
# its pixels again, in memory, with the settings that tool uses: libpng's defaults for rsvg-convert
# (cairo's PNG writer sets nothing) and ours as refhost/io/export/PngExport.cpp sets them
# (OUR_PNG_SETTINGS, default below; keep the two in step). "raster s" is wall time less that encoding time: start-up,
# parsing and drawing. Our engine's own time (planning, tiles, down-sampling, tile writes) comes
# from the performance log's "End" lines (the least of the runs).
set -euo pipefail
root="$(cd "$(dirname "${BASH_SOURCE[0]}")/../.." && pwd)"
build="$(cd "${1:-$root/build}" && pwd)"
work="${2:-/tmp/rasterize-peers-e2e}"
ppis="${PPIS:-150 300 600}"
runs="${RUNS:-3}"
limit="${PEER_LIMIT:-300}"
with_peer="${WITH_PEER:-1}"
background="${BACKGROUND:-white}"
read -r -a OUR_PNG <<<"${OUR_PNG_SETTINGS:---level 6 --filter paeth}"

rasterize="${RASTERIZE:-$build/refhost/cli/rasterize}"
plugin="${PLUGIN:-$build/Rasterize.so}"
encode="${ENCODE_TIME:-$build/bench/peers/png_encode_time}"
for tool in rsvg-convert /usr/bin/time python3 awk "$rasterize" "$encode"; do
  command -v "$tool" >/dev/null || { echo "endtoend.sh: $tool is missing (scripts/install-deps bench; build the targets rasterize, Rasterize, png_encode_time)" >&2; exit 1; }
done
[[ -f "$plugin" ]] || { echo "endtoend.sh: no plug-in at $plugin" >&2; exit 1; }

if [[ -n "${FILES:-}" ]]; then
  read -r -a files <<<"$FILES"
else
  files=()
  while IFS=$'\t' read -r name _; do
    [[ "$name" == \#* || -z "$name" ]] && continue
    files+=("$root/bench/corpus/$name")
  done <"$root/bench/corpus/files.txt"
fi

mkdir -p "$work"
results="$work/results.tsv"
printf 'file\tppi\ttool\twidth\theight\twall_s\tuser_s\tsys_s\tpeak_mib\tbytes\tencode_ms\tengine_ms\tnote\n' >"$results"

# Width and height from a PNG's header.
png_size() { python3 -c 'import struct,sys; d=open(sys.argv[1],"rb").read(24); print(*struct.unpack(">II", d[16:24]))' "$1"; }

# Runs a command RUNS times; prints "wall user sys peak_kib" of the run with the least wall time.
best_of() {
  local best="" line
  for ((i = 0; i < runs; ++i)); do
    line=$(/usr/bin/time -f "%e %U %S %M" "$@" 2>&1 >/dev/null | tail -1 || true)
    if [[ -z "$best" ]] || awk -v a="${line%% *}" -v b="${best%% *}" 'BEGIN { exit !(a < b) }'; then best=$line; fi
  done
  echo "$best"
}

ours_bg=()
rsvg_bg=(-b white)
if [[ "$background" == transparent ]]; then
  ours_bg=(--background transparent)
  rsvg_bg=()
fi

for file in "${files[@]}"; do
  name=$(basename "$file" .svg)
  for ppi in $ppis; do
    zoom=$(awk -v p="$ppi" 'BEGIN { printf "%.6g", p / 96 }')
    log="$work/perf-$name-$ppi.log"
    rm -f "$log" "$work/ours-$name-$ppi.png" "$work/rsvg-$name-$ppi.png"
    read -r wall user sys peak <<<"$(best_of "$rasterize" --plugin "$plugin" --quiet --performance-log "$log" \
      "$file" -o "$work/ours-$name-$ppi.png" --resolution "$ppi" "${ours_bg[@]}")"
    if [[ ! -f "$work/ours-$name-$ppi.png" ]]; then
      # A raster beyond the plug-in's limits (more than 32767 pixels a side) is refused.
      echo "endtoend.sh: $name at $ppi ppi: our tool wrote nothing; left out" >&2
      "$rasterize" --plugin "$plugin" --quiet "$file" -o "$work/ours-$name-$ppi.png" --resolution "$ppi" "${ours_bg[@]}" 2>&1 | tail -1 >&2 || true
      rm -f "$work/ours-$name-$ppi.png"
      continue
    fi
    read -r width height <<<"$(png_size "$work/ours-$name-$ppi.png")"
    read -r enc _ <<<"$("$encode" "$work/ours-$name-$ppi.png" "${OUR_PNG[@]}" --runs 2)"
    engine=$(awk -F'\t' '$2 == "Rasterize" && $3 == "(End)" { v = $1 + 0; if (best == "" || v < best) best = v } END { print best }' "$log")
    bytes=$(stat -c %s "$work/ours-$name-$ppi.png")
    printf '%s\t%s\tours\t%s\t%s\t%s\t%s\t%s\t%.1f\t%s\t%s\t%s\t%s\n' "$name" "$ppi" "$width" "$height" "$wall" "$user" "$sys" \
      "$(awk -v k="$peak" 'BEGIN { print k / 1024 }')" "$bytes" "$enc" "${engine:-}" "" >>"$results"

    [[ "$with_peer" == 1 ]] || continue
    read -r wall user sys peak <<<"$(best_of prlimit --cpu="$limit" rsvg-convert -z "$zoom" "${rsvg_bg[@]}" -o "$work/rsvg-$name-$ppi.png" "$file")"
    if [[ "$user" != "$limit"* ]] && png_size "$work/rsvg-$name-$ppi.png" >/dev/null 2>&1; then
      read -r width height <<<"$(png_size "$work/rsvg-$name-$ppi.png")"
      read -r enc _ <<<"$("$encode" "$work/rsvg-$name-$ppi.png" --runs 2)"
      bytes=$(stat -c %s "$work/rsvg-$name-$ppi.png")
      note=""
    else
      # Stopped at the CPU limit: the same pixels as ours, its time at least the limit.
      enc=0
      bytes=0
      wall=$limit
      user=$limit
      note=limit
    fi
    printf '%s\t%s\trsvg-convert\t%s\t%s\t%s\t%s\t%s\t%.1f\t%s\t%s\t\t%s\n' "$name" "$ppi" "$width" "$height" "$wall" "$user" "$sys" \
      "$(awk -v k="$peak" 'BEGIN { print k / 1024 }')" "$bytes" "$enc" "$note" >>"$results"
    tail -2 "$results" >&2
  done
done
echo "results: $results" >&2
