#!/usr/bin/env bash
# The plug-in's only dynamic symbol is PluginMain.
set -euo pipefail
symbols=$(nm -D --defined-only "$1" | awk '{print $3}')
if [[ "$symbols" != "PluginMain" ]]; then
  echo "exported symbols of $1:" >&2
  echo "$symbols" >&2
  exit 1
fi
