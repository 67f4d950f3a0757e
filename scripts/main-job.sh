#!/usr/bin/env bash
# The main job: a test chart graded through the plug-in's built-in theme at six wheel angles
# (Strength 100), a LUT of one of the looks, and a contact sheet with the source beside the
# six results, all in build/main-job/. The bundle is installed as a host would find it
# (build/install/OFX/Plugins), and the renderer loads it from there through OFX.
set -euo pipefail
cd "$(dirname "$0")/.."
build_dir=${HUELOOM_BUILD_DIR:-build}
out_dir="$build_dir/main-job"
render="$build_dir/tools/hueloom_render/hueloom-render"
chart="$build_dir/tools/hueloom_chart/hueloom-chart"
cmake --install "$build_dir" --prefix "$build_dir/install" >/dev/null
export OFX_PLUGIN_PATH="$PWD/$build_dir/install/OFX/Plugins"

rm -rf "$out_dir"
mkdir -p "$out_dir"
"$chart" "$out_dir/chart.png" --width 960 --height 540 >/dev/null

angles=(0 60 120 180 240 300)
for angle in "${angles[@]}"; do
  "$render" -q -i "$out_dir/chart.png" -o "$out_dir/angle_$(printf %03d "$angle").png" \
    --theme 00000001 --set Strength=100 --set "Angle=$angle"
done
"$render" -q --export-lut "$out_dir/look_angle_060.cube" --theme 00000001 --set Strength=100 --set Angle=60

# Contact sheet: thumbnails side by side, labelled when a font is at hand.
tiles=("$out_dir/chart.png" source)
for angle in "${angles[@]}"; do tiles+=("$out_dir/angle_$(printf %03d "$angle").png" "Angle $angle"); done
sheet_args() {
  local labels=$1
  for ((i = 0; i < ${#tiles[@]}; i += 2)); do
    printf '%s\n' "${tiles[i]}" --resize 480x270
    if [ "$labels" = 1 ]; then
      printf '%s\n' "--text:x=14:y=36:size=26:color=1,1,1:font=DejaVuSans" "${tiles[i + 1]}"
    fi
  done
}
sheet="$out_dir/contact_sheet.png"
mapfile -t with_labels < <(sheet_args 1)
if ! oiiotool "${with_labels[@]}" --mosaic:pad=8 7x1 -o "$sheet" 2>/dev/null; then
  mapfile -t without_labels < <(sheet_args 0)
  oiiotool "${without_labels[@]}" --mosaic:pad=8 7x1 -o "$sheet"
fi

echo "Bundle installed in $OFX_PLUGIN_PATH"
echo "Main job results in $out_dir/:"
echo "  chart.png                 the source test chart"
echo "  angle_000.png .. angle_300.png  the chart graded at Angle 0, 60, ..., 300, Strength 100"
echo "  look_angle_060.cube       the look at Angle 60 as a LUT"
echo "  contact_sheet.png         source beside the six results"
