# Completion of boxctl for bash. Commands and options are those that its help names.
_boxctl()
{
    local word=${COMP_WORDS[COMP_CWORD]} program=${COMP_WORDS[0]} command=${COMP_WORDS[1]} words
    COMPREPLY=()
    if ((COMP_CWORD == 1)); then
        words="--help --help-all --version $("$program" --help 2>/dev/null |
            sed -n '/^Commands:/,/^$/s/^  \([a-z]*\) .*/\1/p')"
    elif [[ $word == -* ]]; then
        words=$("$program" "$command" --help 2>/dev/null | grep -o '^  [-a-z, ]*' | grep -o -- '--[a-z-]*')
    elif [[ ${COMP_WORDS[COMP_CWORD - 1]} == --format ]]; then
        words="text csv json influx"
    elif [[ $command == get || $command == set ]]; then
        words="lan wan wifi lte ntp time"
    fi
    if [[ -n ${words-} ]]; then
        mapfile -t COMPREPLY < <(compgen -W "$words" -- "$word")
    fi
    # Files, of lists behind their mark, too.
    if ((COMP_CWORD > 1 && ${#COMPREPLY[@]} == 0)); then
        if [[ $word == @* ]]; then
            mapfile -t COMPREPLY < <(compgen -P @ -f -- "${word#@}")
        else
            mapfile -t COMPREPLY < <(compgen -f -- "$word")
        fi
    fi
}
complete -o filenames -F _boxctl boxctl
