# bash completion for wardengine

_wardengine() {
  local cur=${COMP_WORDS[COMP_CWORD]} prev=${COMP_WORDS[COMP_CWORD - 1]}
  # "--folder=x" comes as three words.
  [ "$cur" = = ] && cur=
  [ "$prev" = = ] && prev=${COMP_WORDS[COMP_CWORD - 2]}
  if [ "$prev" = --folder ]; then
    compopt -o filenames
    mapfile -t COMPREPLY < <(compgen -d -- "$cur")
  else
    mapfile -t COMPREPLY < <(compgen -W "--folder --demo --demo-reset --trace-serial --supervise
      --help --help-all --version" -- "$cur")
  fi
}
complete -F _wardengine wardengine
