# fish completion for quorvane-cli

set -l commands dump load records stats praise card export-csv report timeline annotate \
    week month classify projects rules categories browser desktop sync shares cloud cleanup overlaps trash \
    sanitize track pause start show status work-hours doctor

function __quorvane_cli_applications -d "Names of the applications in the application's own store"
    quorvane-cli records --json --limit 2000 2>/dev/null | string match -rg '"app_name":"([^"\\\\]*)"' | sort -u
end

function __quorvane_cli_projects -d "Ids and names of the projects in it"
    quorvane-cli dump 2>/dev/null | sed -n '/"entity":"ActivityRecord"/q
        s/.*"entity":"Project","id":"\([^"]*\)","name":"\([^"\\]*\)".*/\1\t\2/p'
end

function __quorvane_cli_shares -d "Ids and titles of the shares in it"
    quorvane-cli dump 2>/dev/null | sed -n '/"entity":"ActivityRecord"/q
        s/.*"entity":"ActivityShare","id":"\([^"]*\)",.*"title":"\([^"\\]*\)".*/\1\t\2/p'
end

function __quorvane_cli_rules -d "Ids and names of the rules in it"
    quorvane-cli rules list --json 2>/dev/null |
        sed -n 's/.*"entity":"Rule","id":"\([^"]*\)","name":"\([^"\]*\)".*/\1\t\2/p'
end

function __quorvane_cli_in -d "Is this the group, and is its command among the others (none: not there yet)?"
    __fish_seen_subcommand_from $argv[1]; or return
    if set -q argv[2]
        __fish_seen_subcommand_from $argv[2..]
    else
        not __fish_seen_subcommand_from list add edit archive remove enable disable import-templates install status \
            create stop init check
    end
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
complete -c quorvane-cli -n "not __fish_seen_subcommand_from $commands" -a stats -d "Hours of each application on a day"
complete -c quorvane-cli -n "not __fish_seen_subcommand_from $commands" -a praise -d "A cheerful sentence about a day"
complete -c quorvane-cli -n "not __fish_seen_subcommand_from $commands" -a export-csv -d "Write records as CSV"
complete -c quorvane-cli -n "not __fish_seen_subcommand_from $commands" -a report -d "Add up hours and amounts"
complete -c quorvane-cli -n "not __fish_seen_subcommand_from $commands" -a week -d "Show the seven days of a week"
complete -c quorvane-cli -n "not __fish_seen_subcommand_from $commands" -a month -d "Show the calendar of a month"
complete -c quorvane-cli -n "not __fish_seen_subcommand_from $commands" -a timeline -d "Draw a day as blocks"
complete -c quorvane-cli -n "not __fish_seen_subcommand_from $commands" -a annotate -d "Give a part of a day to a project"
complete -c quorvane-cli -n "not __fish_seen_subcommand_from $commands" -a classify -d "Show how the rules leave records"
complete -c quorvane-cli -n "not __fish_seen_subcommand_from $commands" -a projects -d "List, add, change and archive projects"
complete -c quorvane-cli -n "not __fish_seen_subcommand_from $commands" -a rules -d "List and change rules"
complete -c quorvane-cli -n "not __fish_seen_subcommand_from $commands" -a categories -d "List and change categories"
complete -c quorvane-cli -n "not __fish_seen_subcommand_from $commands" -a browser -d "Let browsers tell which page is in front"
complete -c quorvane-cli -n "not __fish_seen_subcommand_from $commands" -a desktop -d "Let this desktop tell which window is in front"
complete -c quorvane-cli -n "not __fish_seen_subcommand_from $commands" -a sync -d "Sync the records with the cloud, once"
complete -c quorvane-cli -n "not __fish_seen_subcommand_from $commands" -a shares -d "List, create and stop shares"
complete -c quorvane-cli -n "not __fish_seen_subcommand_from $commands" -a cloud -d "Set up and check the cloud's database"
complete -c quorvane-cli -n "not __fish_seen_subcommand_from $commands" -a cleanup -d "Remove what tracking leaves behind"
complete -c quorvane-cli -n "not __fish_seen_subcommand_from $commands" -a overlaps -d "Mend records that overlap"
complete -c quorvane-cli -n "not __fish_seen_subcommand_from $commands" -a trash -d "What was cleaned away"
complete -c quorvane-cli -n "not __fish_seen_subcommand_from $commands" -a sanitize -d "Redact standard input"
complete -c quorvane-cli -n "not __fish_seen_subcommand_from $commands" -a track -d "Track without a window"
complete -c quorvane-cli -n "not __fish_seen_subcommand_from $commands" -a pause -d "Pause the application's recording"
complete -c quorvane-cli -n "not __fish_seen_subcommand_from $commands" -a start -d "Let the application record again"
complete -c quorvane-cli -n "not __fish_seen_subcommand_from $commands" -a show -d "Bring the application's window to the front"
complete -c quorvane-cli -n "not __fish_seen_subcommand_from $commands" -a work-hours -d "Is this within the work hours?"
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
complete -c quorvane-cli -n "__fish_seen_subcommand_from stats" -l date -x -d "Which day, YYYY-MM-DD"
complete -c quorvane-cli -n "__fish_seen_subcommand_from praise" -l date -x -d "Which day, YYYY-MM-DD"
complete -c quorvane-cli -n "__fish_seen_subcommand_from praise" -l category -x -d "What it is about" \
    -a "productivity creativity dedication achievement future comparison motivation humor wisdom success social entertainment"
complete -c quorvane-cli -n "__fish_seen_subcommand_from praise" -l language -x -a "zh en fr ja es ru de pt ko it vi ar" -d "Language"
complete -c quorvane-cli -n "not __fish_seen_subcommand_from $commands" -a card -d "A picture of a day to share"
complete -c quorvane-cli -n "__fish_seen_subcommand_from card" -l date -x -d "Which day, YYYY-MM-DD"
complete -c quorvane-cli -n "__fish_seen_subcommand_from card" -l style -x -d "How it looks" \
    -a "clean elegantShadow glassmorphism neumorphism gradientCard darkMode businessCard artistic minimal luxury techFuture warmPaper"
complete -c quorvane-cli -n "__fish_seen_subcommand_from card" -l scheme -x -d "Its colours" \
    -a "vibrant pastel ocean sunset forest purple monochrome random"
complete -c quorvane-cli -n "__fish_seen_subcommand_from card" -l distribution -d "Shares of the day instead of hours"
complete -c quorvane-cli -n "__fish_seen_subcommand_from card" -s o -l output -r -d "Write to this file"
complete -c quorvane-cli -n "__fish_seen_subcommand_from week month" -l date -x -d "A day of it, YYYY-MM-DD"
complete -c quorvane-cli -n "__fish_seen_subcommand_from week" -l column-width -x -d "How wide a column is, in points"
complete -c quorvane-cli -n "__fish_seen_subcommand_from timeline annotate" -l date -x -d "The day, YYYY-MM-DD"
complete -c quorvane-cli -n "__fish_seen_subcommand_from timeline" -l hour-height -x -d "Height of an hour in points"
complete -c quorvane-cli -n "__fish_seen_subcommand_from timeline" -l width -x -d "Width of the chart in points"
complete -c quorvane-cli -n "__fish_seen_subcommand_from timeline" -l at -x -d "The block under X,Y"
complete -c quorvane-cli -n "__fish_seen_subcommand_from annotate" -l project -x -a "(__quorvane_cli_projects)" -d "The project"
complete -c quorvane-cli -n "__fish_seen_subcommand_from annotate" -l from-hour -x -d "Where it begins, from 0"
complete -c quorvane-cli -n "__fish_seen_subcommand_from annotate" -l to-hour -x -d "Where it ends, at most 24"
complete -c quorvane-cli -n "__fish_seen_subcommand_from report" -l range -x -a "week month quarter custom" -d "Which time"
complete -c quorvane-cli -n "__fish_seen_subcommand_from report" -l from -x -d "First day, YYYY-MM-DD"
complete -c quorvane-cli -n "__fish_seen_subcommand_from report" -l to -x -d "Last day, YYYY-MM-DD"
complete -c quorvane-cli -n "__fish_seen_subcommand_from report" -l project -x -a "(__quorvane_cli_projects)" \
    -d "Only this project"
complete -c quorvane-cli -n "__fish_seen_subcommand_from report" -l client -x -d "Only this client"
complete -c quorvane-cli -n "__fish_seen_subcommand_from report" -l no-client -d "Only projects without a client"
complete -c quorvane-cli -n "__fish_seen_subcommand_from report" -l category -x \
    -a "(quorvane-cli categories list 2>/dev/null)" -d "Only this category"
complete -c quorvane-cli -n "__fish_seen_subcommand_from report" -l no-category -d "Only records without a category"
complete -c quorvane-cli -n "__fish_seen_subcommand_from report" -l format -x -a "text json markdown email social" -d "Form"
complete -c quorvane-cli -n "__fish_seen_subcommand_from work-hours" -l at -x -d "The instant, 2026-03-04T15:00:00Z"
complete -c quorvane-cli -n "__fish_seen_subcommand_from track" -l for -x -d "End after so many seconds"

complete -c quorvane-cli -n "__quorvane_cli_in projects" -a list -d "List all projects by name"
complete -c quorvane-cli -n "__quorvane_cli_in projects" -a add -d "Add a project and print its id"
complete -c quorvane-cli -n "__quorvane_cli_in projects" -a edit -d "Change what the options name"
complete -c quorvane-cli -n "__quorvane_cli_in projects" -a archive -d "Take a project out of the pickers"
complete -c quorvane-cli -n "__quorvane_cli_in rules" -a list -d "List all rules in the order in which they run"
complete -c quorvane-cli -n "__quorvane_cli_in rules" -a add -d "Add a rule and print its id"
complete -c quorvane-cli -n "__quorvane_cli_in rules" -a remove -d "Remove a rule"
complete -c quorvane-cli -n "__quorvane_cli_in rules" -a enable -d "Let a rule run"
complete -c quorvane-cli -n "__quorvane_cli_in rules" -a disable -d "Keep a rule that does not run"
complete -c quorvane-cli -n "__quorvane_cli_in rules" -a import-templates -d "Add the built-in rules"
complete -c quorvane-cli -n "__quorvane_cli_in categories" -a list -d "List all categories"
complete -c quorvane-cli -n "__quorvane_cli_in categories" -a add -d "Add a category of your own"
complete -c quorvane-cli -n "__quorvane_cli_in categories" -a remove -d "Remove a category of your own"

complete -c quorvane-cli -n "__quorvane_cli_in browser" -a install -d "Tell your browsers where the host is"
complete -c quorvane-cli -n "__quorvane_cli_in browser" -a remove -d "Take that back"
complete -c quorvane-cli -n "__quorvane_cli_in browser" -a status -d "Tell which browsers know the host"
complete -c quorvane-cli -n "__quorvane_cli_in browser install" -l all -d "Also browsers that have no folder yet"
complete -c quorvane-cli -n "__quorvane_cli_in desktop" -a install -d "Install what this desktop needs for that"
complete -c quorvane-cli -n "__quorvane_cli_in desktop" -a remove -d "Take that back"
complete -c quorvane-cli -n "__quorvane_cli_in desktop" -a status -d "Tell whether it is there and works"

complete -c quorvane-cli -n "__quorvane_cli_in trash" -a list -d "List what was cleaned away, newest first"
complete -c quorvane-cli -n "__quorvane_cli_in trash" -a restore -d "Put records back"
complete -c quorvane-cli -n "__quorvane_cli_in trash" -a empty -d "Remove all of it for good"
complete -c quorvane-cli -n "__quorvane_cli_in shares" -a list -d "List all shares, newest first"
complete -c quorvane-cli -n "__quorvane_cli_in shares" -a create -d "Publish a share and print its token"
complete -c quorvane-cli -n "__quorvane_cli_in shares" -a stop -d "Take a share out of the cloud"
complete -c quorvane-cli -n "__quorvane_cli_in shares create" -l title -x -d "How it is called"
complete -c quorvane-cli -n "__quorvane_cli_in shares create" -l expires -x -d "When it ends, 2026-03-04T15:00:00Z"
complete -c quorvane-cli -n "__quorvane_cli_in shares create" -l project -x -a "(__quorvane_cli_projects)" -d "Only its records"
complete -c quorvane-cli -n "__quorvane_cli_in shares stop" -a "(__quorvane_cli_shares)" -d "Share"
complete -c quorvane-cli -n "__quorvane_cli_in cloud" -a init -d "Install or renew the schema"
complete -c quorvane-cli -n "__quorvane_cli_in cloud" -a status -d "Tell who talks to which server"
complete -c quorvane-cli -n "__quorvane_cli_in cloud" -a check -d "Check role, schema and rights"
complete -c quorvane-cli -n "__quorvane_cli_in cloud init" -l service -x -d "The owner's libpq service"
complete -c quorvane-cli -n "__quorvane_cli_in cloud init" -l user -x -d "A role that may sync"
complete -c quorvane-cli -n "__quorvane_cli_in cloud init" -l print -d "Only print the SQL"

complete -c quorvane-cli -n "__quorvane_cli_in projects edit archive" -a "(__quorvane_cli_projects)" -d "Project"
complete -c quorvane-cli -n "__quorvane_cli_in projects add edit" -l name -x -d "How it is called"
complete -c quorvane-cli -n "__quorvane_cli_in projects add edit" -l client -x -d "Whom the time is billed to"
complete -c quorvane-cli -n "__quorvane_cli_in projects add edit" -l rate -x -d "Money per hour"
complete -c quorvane-cli -n "__quorvane_cli_in projects add edit" -l currency -x -d "Code of the currency"
complete -c quorvane-cli -n "__quorvane_cli_in projects add edit" -l color -x -a "mint sky rose lilac teal apricot lemon fog red blue green orange purple pink yellow cyan" \
    -d "Tone"
complete -c quorvane-cli -n "__quorvane_cli_in rules remove enable disable" -a "(__quorvane_cli_rules)" -d "Rule"
complete -c quorvane-cli -n "__quorvane_cli_in rules add" -l name -x -d "How it is called"
complete -c quorvane-cli -n "__quorvane_cli_in rules add" -l field -x -a "appBundleId appName windowTitle urlHost url documentPath" \
    -d "What is looked at"
complete -c quorvane-cli -n "__quorvane_cli_in rules add" -l operator -x -a "contains equals prefix regex" -d "How it is compared"
complete -c quorvane-cli -n "__quorvane_cli_in rules add" -l value -x -d "What it is compared with"
complete -c quorvane-cli -n "__quorvane_cli_in rules add" -l category -x -a "(quorvane-cli categories list 2>/dev/null)" -d "Category to give"
complete -c quorvane-cli -n "__quorvane_cli_in rules add" -l project -x -a "(__quorvane_cli_projects)" -d "Project to give"
complete -c quorvane-cli -n "__quorvane_cli_in rules add" -l tag -x -d "Tag to give"
complete -c quorvane-cli -n "__quorvane_cli_in rules add" -l priority -x -d "Smaller runs first"
complete -c quorvane-cli -n "__quorvane_cli_in rules add" -l stop -d "No later rule is asked"
complete -c quorvane-cli -n "__quorvane_cli_in categories remove" -a "(quorvane-cli categories list 2>/dev/null)" -d "Category"
complete -c quorvane-cli -n "__fish_seen_subcommand_from cleanup" -l synchronous -d "The whole store"
complete -c quorvane-cli -n "__fish_seen_subcommand_from overlaps" -l date -x -d "Only one day, YYYY-MM-DD"
