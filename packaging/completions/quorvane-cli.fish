# fish completion for quorvane-cli

set -l commands dump load records export-csv sanitize track status doctor

function __quorvane_cli_applications -d "Names of the applications in the application's own store"
    quorvane-cli records --json --limit 2000 2>/dev/null | string match -rg '"app_name":"([^"\\\\]*)"' | sort -u
end

function __quorvane_cli_projects -d "Ids and names of the projects in it"
    quorvane-cli dump 2>/dev/null | sed -n '/"entity":"ActivityRecord"/q
        s/.*"entity":"Project","id":"\([^"]*\)","name":"\([^"\\]*\)".*/\1\t\2/p'
end

complete -c quorvane-cli -f
complete -c quorvane-cli -l store -r -F -d "The store file"
complete -c quorvane-cli -l now -x -d "Read this instant wherever the clock is read"
complete -c quorvane-cli -l json -d "Machine-readable output"
complete -c quorvane-cli -s h -l help -d "Say what the command does"
complete -c quorvane-cli -n "not __fish_seen_subcommand_from $commands" -l version -d "Say which version this is"

complete -c quorvane-cli -n "not __fish_seen_subcommand_from $commands" -a dump -d "Write the whole store as JSON Lines"
complete -c quorvane-cli -n "not __fish_seen_subcommand_from $commands" -a load -d "Insert or replace the rows of JSON Lines"
complete -c quorvane-cli -n "not __fish_seen_subcommand_from $commands" -a records -d "List records, newest first"
complete -c quorvane-cli -n "not __fish_seen_subcommand_from $commands" -a export-csv -d "Write records as CSV"
complete -c quorvane-cli -n "not __fish_seen_subcommand_from $commands" -a sanitize -d "Redact standard input"
complete -c quorvane-cli -n "not __fish_seen_subcommand_from $commands" -a track -d "Track without a window"
complete -c quorvane-cli -n "not __fish_seen_subcommand_from $commands" -a status -d "Tell whether tracking runs"
complete -c quorvane-cli -n "not __fish_seen_subcommand_from $commands" -a doctor -d "Tell which channel answers what"

complete -c quorvane-cli -n "__fish_seen_subcommand_from dump export-csv" -s o -l output -r -F -d "Write to this file"
complete -c quorvane-cli -n "__fish_seen_subcommand_from load" -F
complete -c quorvane-cli -n "__fish_seen_subcommand_from records export-csv" -l from -x -d "Start of the earliest record"
complete -c quorvane-cli -n "__fish_seen_subcommand_from records export-csv" -l to -x -d "Start of the latest record"
complete -c quorvane-cli -n "__fish_seen_subcommand_from records" -l app -x -a "(__quorvane_cli_applications)" \
    -d "Only of this application"
complete -c quorvane-cli -n "__fish_seen_subcommand_from records export-csv" -l project -x -a "(__quorvane_cli_projects)" \
    -d "Only of this project"
complete -c quorvane-cli -n "__fish_seen_subcommand_from records" -l limit -x -d "At most so many"
complete -c quorvane-cli -n "__fish_seen_subcommand_from track" -l for -x -d "End after so many seconds"
