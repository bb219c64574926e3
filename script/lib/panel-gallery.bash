# shellcheck shell=bash
#
# Functions that store the results of panel tests and write a page with them. The folder of a panel
# contains the file "results", with one result per line and tabs between its fields.

# Adds a result: add_result FOLDER FIELD... The fields are one of
#   check passed|failed WHAT [REASON]
#   picture GROUP FILE CAPTION
#   skipped PACKAGES
add_result() {
  local folder=$1 IFS=$'\t'
  mkdir -p "$folder"
  echo "${*:2}" >>"$folder/results"
}

# Prints the page: write_gallery FOLDER NAME... FOLDER contains a folder for each tested panel.
write_gallery() {
  local folder=$1 panel
  cat <<'END'
<!DOCTYPE html>
<html lang="en">
<meta charset="utf-8">
<title>Lumowatt in panels</title>
<style>
  body { font: 14px sans-serif; margin: 1em 2em; background: #fff; color: #222; }
  h2 { margin: 1.5em 0 0.3em; border-top: 1px solid #ccc; padding-top: 0.5em; }
  h2 small { font-weight: normal; color: #666; }
  ul { margin: 0.3em 0; padding: 0; list-style: none; }
  details ul { columns: 3; }
  summary { color: #666; }
  .passed::before { content: "✓ "; color: #080; }
  .failed { color: #b00; }
  .failed::before { content: "✗ "; }
  .row { display: flex; flex-wrap: wrap; gap: 0.8em; align-items: start; margin: 0.6em 0; }
  figure { margin: 0; }
  figcaption { font-size: 12px; color: #555; }
  img { display: block; max-height: 340px; }
</style>
<h1>Lumowatt in panels</h1>
END
  for panel in "${@:2}"; do
    [[ -e $folder/$panel/results ]] && write_panel "$folder/$panel" "$panel"
  done
  echo "</html>"
}

write_panel() { # FOLDER NAME
  local results=$1/results group
  echo "<h2 id=\"$2\">$(panel_says "$2" name | escape) <small>$(summary "$results")</small></h2>"
  sed -n 's/^skipped\t/Not run: it needs /p' "$results" | escape
  write_checks failed "$results"
  echo "<details><summary>what passed</summary>"
  write_checks passed "$results"
  echo "</details>"
  while read -r group; do
    echo '<div class="row">'
    escape <"$results" | awk -F'\t' -v group="$group" -v panel="$2" '
      $1 == "picture" && $2 == group {
        path = panel "/" $3
        printf "<figure><a href=\"%s\"><img src=\"%s\" alt=\"%s\"></a>", path, path, $4
        printf "<figcaption>%s</figcaption></figure>\n", $4
      }'
    echo "</div>"
  done < <(groups "$results")
}

# Prints the groups of pictures in the order of the results, except that the large menus are last.
groups() { # RESULTS
  awk -F'\t' '
    $1 == "picture" && !seen[$2]++ && $2 != "menus" { print $2 }
    END { if (seen["menus"]) print "menus" }' "$1"
}

write_checks() { # passed|failed RESULTS
  echo "<ul>"
  escape <"$2" | awk -F'\t' -v found="$1" '
    $1 == "check" && $2 == found {
      printf "<li class=\"%s\">%s%s</li>\n", $2, $3, $4 == "" ? "" : ": " $4
    }'
  echo "</ul>"
}

summary() { # RESULTS
  awk -F'\t' '$1 == "check" { ++all; passed += $2 == "passed" }
    END { if (all) printf "%d of %d checks passed", passed, all }' "$1"
}

escape() { sed 's/&/\&amp;/g; s/</\&lt;/g; s/>/\&gt;/g'; }
