# Completion of tidewatch-report for bash.
_tidewatch_report() {
    local sWord="${COMP_WORDS[COMP_CWORD]}" sBefore="${COMP_WORDS[COMP_CWORD - 1]}"
    local sCommand=summary sOptions="--csv --json --html --help"
    case "${COMP_WORDS[1]}" in summary | coverage | range | signal | stations | compare | ships | reports | watch) sCommand="${COMP_WORDS[1]}" ;; esac
    case "$sBefore" in
        --by) mapfile -t COMPREPLY < <(compgen -W "hour day week" -- "$sWord"); return ;;
        --sector | --position | --gap | --ring | --share | --quiet | --stopped | --below | --days) COMPREPLY=(); return ;;
        --run) mapfile -t COMPREPLY < <(compgen -c -- "$sWord"); return ;;
        --html) mapfile -t COMPREPLY < <(compgen -f -- "$sWord"); compopt -o filenames; return ;;
        --png | --svg) mapfile -t COMPREPLY < <(compgen -d -- "$sWord"); compopt -o filenames; return ;;
    esac
    case "$sCommand" in
        summary) sOptions+=" --by --position --raw" ;;
        coverage) sOptions+=" --position --sector" ;;
        range) sOptions+=" --position --gap --ring --share" ;;
        signal) sOptions+=" --by --position --raw" ;;
        stations) sOptions+=" --by --position" ;;
        compare) sOptions+=" --position --raw --sector" ;;
        ships | reports) sOptions+=" --position --raw" ;;
        watch) sOptions="--csv --json --quiet --stopped --below --days --run --help" ;;
    esac
    case "$sCommand" in ships | reports | watch) ;; *) sOptions+=" --png --svg" ;; esac
    local sWords=""
    [[ "$sWord" == -* ]] && sWords="$sOptions"
    if [[ $COMP_CWORD -eq 1 ]]; then
        if [[ "$sWord" == -* ]]; then sWords+=" --version"; else sWords="summary coverage range signal stations compare ships reports watch"; fi
    fi
    mapfile -t COMPREPLY < <(compgen -W "$sWords" -- "$sWord")
    [[ "$sWord" == -* ]] || { compopt -o filenames; mapfile -t -O "${#COMPREPLY[@]}" COMPREPLY < <(compgen -f -- "$sWord"); }
}
complete -F _tidewatch_report tidewatch-report
