#!/usr/bin/env bash
# Compares the resampling streams with libvips and ImageMagick on one 8000 x 8000 RGB image
# reduced to 0.3125 (2500 x 2500), every tool on one thread. Prints a Markdown table.
#
# Usage: bench/peers/resample.sh [STREAMS_BENCH] [WORK_DIR]
#   STREAMS_BENCH  the streams_bench program (default: build/bench/streams/streams_bench)
#   WORK_DIR       where the test image is made and kept (default: /tmp/rasterize-peers)
#
# Our side is measured by streams_bench (resampleRasterArt over an in-memory host: source rows
# read through the raster suite, filtered, written into the new raster art), CPU time per run.
# The peers are measured as whole commands (user + system CPU, best of RUNS): start-up and
# reading the uncompressed input from the page cache are included; reference lines show what
# reading the input alone costs each tool.
set -euo pipefail
root="$(cd "$(dirname "${BASH_SOURCE[0]}")/../.." && pwd)"
bench="${1:-$root/build/bench/streams/streams_bench}"
work="${2:-/tmp/rasterize-peers}"
runs="${RUNS:-3}"

for tool in vips convert /usr/bin/time python3 awk; do
  command -v "$tool" >/dev/null || { echo "resample.sh: $tool is missing (scripts/install-deps bench)" >&2; exit 1; }
done
[[ -x "$bench" ]] || { echo "resample.sh: no streams_bench at $bench" >&2; exit 1; }
bench="$(cd "$(dirname "$bench")" && pwd)/$(basename "$bench")"

export VIPS_CONCURRENCY=1
export MAGICK_THREAD_LIMIT=1
export OMP_NUM_THREADS=1
mkdir -p "$work"
cd "$work"

# Gaussian noise (mean 128, sigma 40) in three identical bands: a worst case for caches of
# nothing, and deterministic enough for timing.
if [[ ! -f src.v || ! -f src.ppm ]]; then
  vips gaussnoise noise.v 8000 8000 --mean 128 --sigma 40
  vips cast noise.v gray.v uchar
  vips bandjoin "gray.v gray.v gray.v" src.v
  vips copy src.v src.ppm
  rm -f noise.v gray.v
fi

# The run with the least user + system CPU of $runs runs: "user system real" seconds.
best() {
  local best_line="" best_cpu=""
  for ((i = 0; i < runs; ++i)); do
    local line cpu
    line=$(/usr/bin/time -f "%U %S %e" "$@" 2>&1 >/dev/null | tail -1)
    cpu=$(awk '{ print $1 + $2 }' <<<"$line")
    if [[ -z "$best_cpu" ]] || awk -v a="$cpu" -v b="$best_cpu" 'BEGIN { exit !(a < b) }'; then
      best_cpu=$cpu
      best_line=$line
    fi
  done
  echo "$best_line"
}

declare -a names commands
add() { names+=("$1"); commands+=("$2"); }
add "vips resize --kernel cubic"   "vips resize src.v out.v 0.3125 --kernel cubic"
add "vips resize --kernel linear"  "vips resize src.v out.v 0.3125 --kernel linear"
add "vips resize --kernel nearest" "vips resize src.v out.v 0.3125 --kernel nearest"
add "vips shrink 3.2 3.2"          "vips shrink src.v out.v 3.2 3.2"
add "convert -filter Catrom -resize"   "convert -limit thread 1 src.ppm -filter Catrom -resize 2500x2500 out.ppm"
add "convert -filter Triangle -resize" "convert -limit thread 1 src.ppm -filter Triangle -resize 2500x2500 out.ppm"
add "convert -filter Box -resize"      "convert -limit thread 1 src.ppm -filter Box -resize 2500x2500 out.ppm"
add "convert -filter Point -resize"    "convert -limit thread 1 src.ppm -filter Point -resize 2500x2500 out.ppm"
add "convert -scale"                   "convert -limit thread 1 src.ppm -scale 2500x2500 out.ppm"
add "convert -sample"                  "convert -limit thread 1 src.ppm -sample 2500x2500 out.ppm"
add "reference: vips avg (reads every pixel)" "vips avg src.v"
add "reference: convert to null: (decode only)" "convert -limit thread 1 src.ppm null:"

"$bench" --benchmark_filter='resample_8000_rgb_to_2500' --benchmark_repetitions="$runs" \
  --benchmark_format=json >ours.json 2>/dev/null
python3 - ours.json >ours.txt <<'PY'
import json, sys
data = json.load(open(sys.argv[1]))
best = {}
for b in data["benchmarks"]:
    if b.get("run_type") != "iteration":
        continue
    method = int(b["name"].split("method:")[1].split("/")[0])
    cpu = b["cpu_time"] / 1000.0  # ms -> s
    best[method] = min(best.get(method, cpu), cpu)
for method, name in ((0, "nearest"), (1, "average"), (2, "bicubic")):
    print(f"{name} {best[method]:.3f}")
PY

declare -A ours
while read -r method seconds; do ours[$method]=$seconds; done <ours.txt

echo "| ours | our CPU s | peer (one thread) | user s | system s | real s | (user + system) / ours | user / ours |"
echo "|---|---:|---|---:|---:|---:|---:|---:|"
pair() {
  case "$1" in
    *cubic* | *Catrom* | *linear* | *Triangle*) echo bicubic ;;
    *shrink* | *Box* | *scale*) echo average ;;
    *) echo nearest ;;
  esac
}
for index in "${!names[@]}"; do
  read -r user sys real <<<"$(best ${commands[$index]})"
  name="${names[$index]}"
  if [[ "$name" == reference:* ]]; then
    echo "| | | $name | $user | $sys | $real | | |"
  else
    mine=$(pair "$name")
    ratios=$(awk -v u="$user" -v s="$sys" -v o="${ours[$mine]}" 'BEGIN { printf "%.2f | %.2f", (u + s) / o, u / o }')
    echo "| $mine | ${ours[$mine]} | \`$name\` | $user | $sys | $real | $ratios |"
  fi
done
rm -f out.v out.ppm
