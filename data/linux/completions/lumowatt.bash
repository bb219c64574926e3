# Completion of lumowatt's options for bash.
_lumowatt() {
  local word=$2 before=$3 choices="--version --dump --snapshot"
  [[ " ${COMP_WORDS[*]:1:COMP_CWORD-1} " == *" --snapshot "* ]] && choices=--sample
  case $before in
    --snapshot)
      compopt -o filenames
      mapfile -t COMPREPLY < <(compgen -f -- "$word")
      return
      ;;
    --sample) choices="draining low full" ;;
  esac
  mapfile -t COMPREPLY < <(compgen -W "$choices" -- "$word")
}
complete -F _lumowatt lumowatt
