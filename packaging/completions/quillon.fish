# Completion of Quillon's command line, for fish.

complete -c quillon -f
complete -c quillon -n __fish_use_subcommand -l help -d 'Print help'
complete -c quillon -n __fish_use_subcommand -l version -d 'Print the version'
complete -c quillon -n __fish_use_subcommand -a status -d 'Say whether Quillon runs, and how its tools are'
complete -c quillon -n __fish_use_subcommand -a list -d 'Print the tools that there are'
complete -c quillon -n __fish_use_subcommand -a enable -d 'Switch a tool on'
complete -c quillon -n __fish_use_subcommand -a disable -d 'Switch a tool off'
complete -c quillon -n __fish_use_subcommand -a install -d 'Install a tool'
complete -c quillon -n __fish_use_subcommand -a uninstall -d 'Remove a tool'
complete -c quillon -n __fish_use_subcommand -a show -d 'Open the hub of the Quillon that runs'
complete -c quillon -n __fish_use_subcommand -a quit -d 'End the Quillon that runs'
complete -c quillon -n __fish_use_subcommand -a defaults -d 'Show or change stored settings'
complete -c quillon -n __fish_use_subcommand -a replay -d 'Run a trace on a simulated desktop'
complete -c quillon -n '__fish_seen_subcommand_from status list' -l json -d 'As JSON'
complete -c quillon -n '__fish_seen_subcommand_from list' -l ids -d 'Nothing but the ids'
complete -c quillon -n '__fish_seen_subcommand_from enable disable install uninstall' \
    -a '(quillon list --ids 2>/dev/null)'
complete -c quillon -n '__fish_seen_subcommand_from defaults' -a 'read write delete'
complete -c quillon -n '__fish_seen_subcommand_from defaults' -l suite -x -d 'A named store'
complete -c quillon -n '__fish_seen_subcommand_from replay' -l check -d 'Compare with what is expected'
complete -c quillon -n '__fish_seen_subcommand_from replay' -F
