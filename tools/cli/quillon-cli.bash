# Completion for bash. Does not complete names, which would query the network at each key press.
_quillon_cli() {
  local current=${COMP_WORDS[COMP_CWORD]} previous=${COMP_WORDS[COMP_CWORD - 1]} word command=
  for word in "${COMP_WORDS[@]:1:COMP_CWORD-1}"; do
    case $word in who | alert | say | watch | check) command=$word && break ;; esac
  done
  local words='--help --version --codepage --broadcast'
  case $command in
    '') words+=' who alert say watch check' ;;
    who) words+=' --wait --json' ;;
    alert | say) words+=' --all --as --wait' ;;
    watch) words+=' --json --texts --for' ;;
    check) words+=' --wait' ;;
  esac
  case $previous in
    --codepage) words='874 932 936 949 950 1250 1251 1252 1253 1254 1255 1256 1257 1258' ;;
    --broadcast | --wait | --as | --for) words= ;;
  esac
  mapfile -t COMPREPLY < <(compgen -W "$words" -- "$current")
}
complete -F _quillon_cli quillon-cli
