# bash completion for cm11-emulator

_cm11_emulator() {
  local cur=${COMP_WORDS[COMP_CWORD]} prev=${COMP_WORDS[COMP_CWORD - 1]} words=
  case $prev in
    --house | --link)
      compopt -o filenames
      mapfile -t COMPREPLY < <(compgen -f -- "$cur")
      return
      ;;
    --mains) words="50 60" ;;
    --lamp | --appliance) words=$(printf '%s ' {A..P}{1..16}) ;;
    --fault)
      words="all= wrong-checksum lost-byte lost-byte-from-computer doubled-byte changed-byte
        changed-byte-from-computer noise poll-before-checksum poll-after-checksum
        poll-before-function clock-request late-ready very-late-ready missing-ready
        collision lost-poll-answer no-clock-checksum macro-notice"
      ;;
    --speed | --seed) return ;;
    *) words="--mains --speed --fast --house --lamp --appliance --link --fault --seed --trace
      --keep --help" ;;
  esac
  mapfile -t COMPREPLY < <(compgen -W "$words" -- "$cur")
}
complete -F _cm11_emulator cm11-emulator
