# Long commands that end with the script that runs them. To be sourced.

owned_group=

# Runs a command as a process group of its own. A signal that asks the script to stop reaches
# the whole group, so that no compiler is left behind, whoever sent it and to whom.
owned() {
    local status=0
    set -m
    "$@" </dev/null &
    owned_group=$!
    set +m
    wait "$owned_group" || status=$?
    owned_group=
    return $status
}

stop_owned() { # $1: the number of the signal
    trap - INT TERM HUP
    if [ -n "$owned_group" ]; then
        kill -TERM -- "-$owned_group" 2>/dev/null || true
        wait "$owned_group" || true
    fi
    exit $((128 + $1))
}
trap 'stop_owned 2' INT
trap 'stop_owned 15' TERM
trap 'stop_owned 1' HUP

# Says little unless it fails.
configure() { # $1: preset
    local log=build/$1.configure.log
    mkdir -p build
    if ! owned cmake --preset "$1" >"$log" 2>&1; then
        cat "$log" >&2
        return 1
    fi
}

build() { # $1: preset
    configure "$1" && owned cmake --build --preset "$1" -- -j2
}
