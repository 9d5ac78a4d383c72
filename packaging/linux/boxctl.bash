# Completion of boxctl for bash. Commands and options are those that its help names.
_boxctl()
{
    # What bash calls a word ends at "=", "@" and ":"; what is completed, $2, has the "@" in front of it.
    local word=$2 before=$3 program=${COMP_WORDS[0]} command=${COMP_WORDS[1]} help words
    if [[ ${COMP_WORDS[COMP_CWORD]} == = ]]; then
        word=""
    elif [[ $before == = ]]; then
        before=${COMP_WORDS[COMP_CWORD - 2]}
    fi
    COMPREPLY=()
    if ((COMP_CWORD == 1)); then
        words="--help --help-all --version $("$program" --help 2>/dev/null |
            sed -n '/^Commands:/,/^$/s/^  \([a-z]*\) .*/\1/p')"
    else
        help=$("$program" "$command" --help 2>/dev/null)
        if [[ $before == --format ]]; then
            words="text csv json influx"
        elif [[ $before == --* && $help == *"$before <"* ]]; then
            return # a value that is free
        elif [[ $word == -* ]]; then
            words=$(grep -o '^  [-a-z, ]*' <<<"$help" | grep -o -- '--[a-z-]*')
        elif [[ $command == get || $command == set ]]; then
            words="lan wan wifi lte ntp time"
        fi
    fi
    if [[ -n ${words-} ]]; then
        mapfile -t COMPREPLY < <(compgen -W "$words" -- "$word")
    fi
    if ((COMP_CWORD > 1 && ${#COMPREPLY[@]} == 0)); then
        _boxctl_files "$word"
    fi
}

# Files, of lists behind their mark, too: then bash knows no folder by it and would quote the mark.
_boxctl_files()
{
    local file files
    if [[ $1 != @* ]]; then
        mapfile -t COMPREPLY < <(compgen -f -- "$1")
        return
    fi
    compopt +o filenames
    mapfile -t files < <(compgen -f -- "${1#@}")
    for file in "${files[@]}"; do
        if [[ -d $file ]]; then
            compopt -o nospace
            file+=/
        fi
        COMPREPLY+=("@$(printf %q "$file")")
    done
}
complete -o filenames -F _boxctl boxctl
