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

# The ids of the rules in the store, one a line.
_quorvane_cli_rules() {
    "${words[0]}" "${store[@]}" rules list --json 2>/dev/null | sed -n 's/.*"entity":"Rule","id":"\([^"]*\)".*/\1/p'
}

# The user's own categories and the built-in ones, one a line.
_quorvane_cli_categories() {
    "${words[0]}" categories list 2>/dev/null
}

_quorvane_cli_shares() {
    quorvane-cli "${store[@]}" dump 2>/dev/null | sed -n '/"entity":"ActivityRecord"/q
        s/.*"entity":"ActivityShare","id":"\([^"]*\)".*/\1/p'
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
    local commands="dump load records stats praise card export-csv report timeline annotate week month classify projects rules"
    commands+=" categories cleanup overlaps trash browser desktop sync shares cloud sanitize track pause start show status work-hours doctor"
    local command='' member='' i
    local -a store=()
    for ((i = 1; i < cword; i++)); do
        case ${words[i]} in
        --store)
            store=(--store "${words[i + 1]}")
            ((i++))
            ;;
        --now | --from | --to | --app | --project | --limit | --for | --date | -o | --output) ((i++)) ;;
        --name | --client | --rate | --currency | --color | --field | --operator | --value) ((i++)) ;;
        --category | --tag | --priority | --range | --format | --column-width) ((i++)) ;;
        --hour-height | --width | --at | --from-hour | --to-hour) ((i++)) ;;
        --title | --expires | --service | --user) ((i++)) ;;
        -*) ;;
        *) if [[ -z $command ]]; then command=${words[i]}; else member=${member:-${words[i]}}; fi ;;
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
    --style)
        mapfile -t COMPREPLY < <(compgen -W "clean elegantShadow glassmorphism neumorphism gradientCard darkMode
            businessCard artistic minimal luxury techFuture warmPaper" -- "$cur")
        return
        ;;
    --scheme)
        mapfile -t COMPREPLY < <(compgen -W "vibrant pastel ocean sunset forest purple monochrome random" -- "$cur")
        return
        ;;
    --category)
        if [[ $command == praise ]]; then
            IFS=' '
            mapfile -t COMPREPLY < <(compgen -W "productivity creativity dedication achievement future comparison motivation
                humor wisdom success social entertainment" -- "$cur")
            return
        fi
        mapfile -t COMPREPLY < <(compgen -W "$(_quorvane_cli_categories)" -- "$cur")
        return
        ;;
    --now | --from | --to | --at | --limit | --for | --date) return ;;
    --name | --client | --rate | --currency | --value | --tag | --priority) return ;;
    --title | --expires | --service | --user) return ;;
    esac
    if [[ $cur != -* && $prev == "$member" ]]; then
        local found=''
        case "$command $member" in
        "projects edit" | "projects archive") found=$(_quorvane_cli_projects) cur=${cur^^} ;;
        "rules remove" | "rules enable" | "rules disable") found=$(_quorvane_cli_rules) cur=${cur^^} ;;
        "shares stop") found=$(_quorvane_cli_shares) cur=${cur^^} ;;
        "categories remove") found=$(_quorvane_cli_categories) ;;
        esac
        if [[ -n $found ]]; then
            mapfile -t COMPREPLY < <(compgen -W "$found" -- "$cur")
            return
        fi
    fi

    IFS=' '
    case $prev in
    --color)
        mapfile -t COMPREPLY < <(compgen -W "mint sky rose lilac teal apricot lemon fog red blue green orange purple
            pink yellow cyan" -- "${cur,,}")
        return
        ;;
    --field)
        mapfile -t COMPREPLY < <(compgen -W "appBundleId appName windowTitle urlHost url documentPath" -- "$cur")
        return
        ;;
    --range)
        mapfile -t COMPREPLY < <(compgen -W "week month quarter custom" -- "$cur")
        return
        ;;
    --format)
        mapfile -t COMPREPLY < <(compgen -W "text json markdown email social" -- "$cur")
        return
        ;;
    --language)
        mapfile -t COMPREPLY < <(compgen -W "zh en fr ja es ru de pt ko it vi ar" -- "$cur")
        return
        ;;
    --operator)
        mapfile -t COMPREPLY < <(compgen -W "contains equals prefix regex" -- "$cur")
        return
        ;;
    esac
    local options=$everywhere
    case "$command${member:+ $member}" in
    '') options="$everywhere --version $commands" ;;
    projects) options="$everywhere list add edit archive" ;;
    "projects add" | "projects edit") options="$everywhere --name --client --rate --currency --color" ;;
    rules) options="$everywhere list add remove enable disable import-templates" ;;
    "rules add")
        options="$everywhere --name --field --operator --value --category --project --tag --priority --stop"
        ;;
    categories) options="$everywhere list add remove" ;;
    browser | desktop) options="$everywhere install remove status" ;;
    "browser install") options="$everywhere --all" ;;
    shares) options="$everywhere list create stop" ;;
    "shares create") options="$everywhere --title --expires --project" ;;
    trash) options="$everywhere list restore empty" ;;
    cloud) options="$everywhere init status check" ;;
    "cloud init") options="$everywhere --service --user --print" ;;
    cleanup) options="$everywhere --synchronous" ;;
    week) options="$everywhere --date --column-width" ;;
    month) options="$everywhere --date" ;;
    overlaps | stats) options="$everywhere --date" ;;
    praise) options="$everywhere --date --category --language" ;;
    card) options="$everywhere --date --style --scheme --distribution -o --output" ;;
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
    timeline) options="$everywhere --date --hour-height --width --at" ;;
    annotate) options="$everywhere --project --date --from-hour --to-hour" ;;
    report)
        options="$everywhere --range --from --to --project --client --no-client --category --no-category --format"
        ;;
    track) options="$everywhere --for" ;;
    pause | start) options="--json --help" ;;
    show) options="--help" ;;
    work-hours) options="$everywhere --at" ;;
    esac
    mapfile -t COMPREPLY < <(compgen -W "$options" -- "$cur")
}

complete -F _quorvane_cli quorvane-cli
