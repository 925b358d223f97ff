#!/bin/bash
# Draws the PNG sizes of the icon from its SVG (needs rsvg-convert, from
# librsvg2-bin); run after changing the SVG and commit the PNGs.
set -euo pipefail
cd "$(dirname "$0")"
for size in 16 24 32 48 64 128 256; do
    rsvg-convert -w "$size" -h "$size" org.qub_browser.Browser.svg -o "$size.png"
done
