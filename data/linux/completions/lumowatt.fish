# Completion of lumowatt's options for fish.
set -l chosen '__fish_seen_argument -l version -l dump -l snapshot'
complete -c lumowatt -f
complete -c lumowatt -n "not $chosen" -l version -d 'Print the version'
complete -c lumowatt -n "not $chosen" -l dump -d 'Print one reading of the battery'
complete -c lumowatt -n "not $chosen" -l snapshot -r -d 'Draw the item and its report as a PNG file'
complete -c lumowatt -n '__fish_prev_arg_in --snapshot' -F
complete -c lumowatt -n '__fish_seen_argument -l snapshot' -l sample -x -a 'draining low full' \
  -d 'Draw a made-up battery'
