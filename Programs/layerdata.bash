# Completion of layerdata's commands, options and their values for bash.
_layerdata() {
  local word=${COMP_WORDS[COMP_CWORD]} previous=${COMP_WORDS[COMP_CWORD - 1]} command="" i
  for ((i = 1; i < COMP_CWORD; ++i)); do
    case ${COMP_WORDS[i]} in
      -*) ;;
      *) command=${COMP_WORDS[i]}; break ;;
    esac
  done
  local values=""
  case $previous in
    --from) values="auto csv tsv json jsonl" ;;
    -t | --to) values="csv tsv json jsonl geojson" ;;
    --header) values="detect yes no" ;;
    --long-lines) values="fail skip keep" ;;
    -s | --separator | --output-separator) values="tab comma semicolon pipe space" ;;
    -e | --encoding | --output-encoding) values="utf-8 utf-16le utf-16be latin1 windows-1252 cp437" ;;
    -k | --kind) values="inner left right full" ;;
    -a | --algorithm) values="md5 sha1 sha256 sha384 sha512" ;;
    schema) values="infer check" ;;
  esac
  if [ -z "$values" ] && [ -z "$command" ]; then
    values="convert show describe schema check join sort hash uuid --help --version --quiet"
  elif [ -z "$values" ] && [[ $word == -* ]]; then
    local reading="--from --separator --encoding --header --long-lines --text --all-text --max-rows"
    local writing="--output --to --output-separator --output-encoding --indent --no-header --crlf --longitude --latitude"
    case $command in
      convert) values="--columns --rename $reading $writing" ;;
      show) values="--rows --width --cell-width --columns $reading" ;;
      describe) values="--html $reading" ;;
      schema) values="--title --output $reading" ;;
      check) values="--schema --most $reading" ;;
      join) values="--on --kind $reading $writing" ;;
      sort) values="--by --nulls-first $reading $writing" ;;
      hash) values="--algorithm" ;;
      uuid) values="--count" ;;
    esac
    values="$values --help --quiet"
  fi
  # Without an answer, and for everything else, bash completes names of files.
  mapfile -t COMPREPLY < <(compgen -W "$values" -- "$word")
}
complete -o default -F _layerdata layerdata
