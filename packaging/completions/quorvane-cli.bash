# bash completion for quorvane-cli

# The names of the applications in the store, one a line.
_quorvane_cli_applications() {
    "${words[0]}" "${store[@]}" records --json --limit 2000 2>/dev/null |
        sed -n 's/.*"app_name":"\([^"\\]*\)".*/\1/p' | sort -u
}

# The ids of the projects in the store, one a line.
_quorvane_cli_projects() {
    "${words[0]}" "${store[@]}" dump 2>/dev/null | sed -n '/"entity":"ActivityRecord"/q
        s/.*"entity":"Project","id":"\([^"]*\)".*/\1/p'
}

_quorvane_cli() {
    local cur prev words cword
    if declare -F _init_completion >/dev/null; then
        # Without ":" as a break, since instants have colons.
        _init_completion -n : || return
    else
        words=("${COMP_WORDS[@]}") cword=$COMP_CWORD
        cur=${words[cword]} prev=${words[cword - 1]}
    fi

    local everywhere="--store --now --json --help"
    local commands="dump load records export-csv sanitize track status doctor"
    local command='' i
    local -a store=()
    for ((i = 1; i < cword; i++)); do
        case ${words[i]} in
        --store)
            store=(--store "${words[i + 1]}")
            ((i++))
            ;;
        --now | --from | --to | --app | --project | --limit | --for | -o | --output) ((i++)) ;;
        -*) ;;
        *)
            command=${words[i]}
            break
            ;;
        esac
    done

    local IFS=$'\n'
    case $prev in
    --store | -o | --output)
        compopt -o filenames 2>/dev/null
        mapfile -t COMPREPLY < <(compgen -f -- "$cur")
        return
        ;;
    --app)
        mapfile -t COMPREPLY < <(compgen -W "$(_quorvane_cli_applications)" -- "$cur")
        mapfile -t COMPREPLY < <([[ ${#COMPREPLY[@]} == 0 ]] || printf '%q\n' "${COMPREPLY[@]}")
        return
        ;;
    --project)
        mapfile -t COMPREPLY < <(compgen -W "$(_quorvane_cli_projects)" -- "${cur^^}")
        return
        ;;
    --now | --from | --to | --limit | --for) return ;;
    esac

    IFS=' '
    local options=$everywhere
    case $command in
    '') options="$everywhere --version $commands" ;;
    dump) options="$everywhere -o --output" ;;
    load)
        if [[ $cur != -?* ]]; then
            compopt -o filenames 2>/dev/null
            IFS=$'\n'
            mapfile -t COMPREPLY < <(compgen -f -- "$cur")
            return
        fi
        ;;
    records) options="$everywhere --from --to --app --project --limit" ;;
    export-csv) options="$everywhere --from --to --project -o --output" ;;
    track) options="$everywhere --for" ;;
    esac
    mapfile -t COMPREPLY < <(compgen -W "$options" -- "$cur")
}

complete -F _quorvane_cli quorvane-cli
