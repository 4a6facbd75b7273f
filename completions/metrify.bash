# Completion of the arguments of metrify in bash.

_metrify_units() {
    # The list has a header; each further line begins with a name.
    "${COMP_WORDS[0]}" units 2>/dev/null | awk 'NR > 1 { print $1 }'
}

_metrify() {
    local current=${COMP_WORDS[COMP_CWORD]} previous=${COMP_WORDS[COMP_CWORD - 1]} command='' word
    local commands='convert run columns plot units functions'
    for word in "${COMP_WORDS[@]:1:COMP_CWORD-1}"; do
        case $word in
        convert | run | columns | plot | units | functions)
            command=$word
            break
            ;;
        esac
    done
    # A number without a command is converted.
    if [[ -z $command && ${COMP_WORDS[1]} =~ ^[-+]?[0-9.]+ && $COMP_CWORD -gt 1 ]]; then
        command=convert
    fi

    case $previous in
    --from | --to | --like)
        COMPREPLY=($(compgen -W "$(_metrify_units)" -- "$current"))
        return
        ;;
    -o | --output | --units)
        COMPREPLY=($(compgen -f -- "$current"))
        return
        ;;
    -e | --execute | -c | --columns | -d | --delimiter | --over | --of | --points)
        COMPREPLY=()
        return
        ;;
    esac

    local options='--help' words=''
    case $command in
    '')
        words=$commands
        options+=' --version --execute --strict --everyday --units --hints --no-hints'
        ;;
    convert)
        words=$(_metrify_units)
        options+=' --also --everyday --units --hints --no-hints'
        ;;
    run) options+=' --execute --strict --everyday --units --hints --no-hints' ;;
    columns)
        options+=' --from --to --columns --delimiter --tsv --header --no-header --json --line-buffered'
        options+=' --everyday --units'
        ;;
    plot) options+=' --over --of --output --points --everyday --units' ;;
    units)
        words=$(_metrify_units)
        options+=' --like --markdown --everyday --units'
        ;;
    functions) options+=' --markdown' ;;
    esac
    if [[ $current == -* ]]; then
        COMPREPLY=($(compgen -W "$options" -- "$current"))
    elif [[ -n $words ]]; then
        COMPREPLY=($(compgen -W "$words" -- "$current"))
    else
        COMPREPLY=($(compgen -f -- "$current"))
    fi
}

complete -F _metrify metrify
