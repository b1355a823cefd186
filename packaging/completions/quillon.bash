# Completion of Quillon's command line, for bash.

_quillon() {
    local word=${COMP_WORDS[COMP_CWORD]} command='' place choices='' id
    COMPREPLY=()
    for ((place = 1; place < COMP_CWORD; place++)); do
        if [[ ${COMP_WORDS[place]} != -* ]]; then
            command=${COMP_WORDS[place]}
            break
        fi
    done
    case $command in
    '') choices='status list enable disable install uninstall show quit defaults replay --help
        --version' ;;
    status) choices='--json --help' ;;
    list) choices='--json --ids --help' ;;
    enable | disable | install | uninstall)
        ((place + 1 == COMP_CWORD)) || return 0
        # Not by compgen -W, which would expand what is in an id.
        while IFS= read -r id; do
            [[ $id != "$word"* ]] || COMPREPLY+=("$(printf '%q' "$id")")
        done < <("$1" list --ids 2>/dev/null)
        return 0
        ;;
    show | quit) choices='--help' ;;
    defaults) choices='read write delete --suite --help' ;;
    replay)
        mapfile -t COMPREPLY < <(compgen -W '--check --help' -- "$word"; compgen -f -- "$word")
        return 0
        ;;
    esac
    mapfile -t COMPREPLY < <(compgen -W "$choices" -- "$word")
}

complete -F _quillon quillon
