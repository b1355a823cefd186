# What a failed stage had to say, in short: a log is read from its end. To be sourced.

# The tests that the last run in this build failed, and the end of what each of them printed.
failed_tests() { # $1: preset
    local results=build/$1/Testing/Temporary names count lines
    names=$(cut -d: -f2- "$results/LastTestsFailed.log" 2>/dev/null) && [ -n "$names" ] || return 1
    count=$(wc -l <<<"$names")
    lines=$((120 / count))
    [ "$lines" -le 25 ] || lines=25
    [ "$lines" -ge 6 ] || lines=6
    printf '%s failed:\n' "$count"
    head -n 20 <<<"$names" | sed 's/^/    /'
    awk -v lines="$lines" -v most=$((120 / lines)) '
        FNR == NR { sub(/^[^:]*:/, ""); failed[$0]; next }
        /^[0-9]+\/[0-9]+ Test: / { sub(/^[^:]*: /, ""); name = $0 }
        /^<end of output>$/ { ended() }
        printing { printed[count++] = $0 }
        /^Output:$/ && name in failed { count = 0; printing = 1; getline }
        function ended(    i) {
            if (printing && shown++ < most) {
                printf "\n-- %s\n", name
                for (i = count > lines ? count - lines : 0; i < count; ++i) print printed[i]
            }
            printing = 0
        }' "$results/LastTestsFailed.log" "$results/LastTest.log"
}

# What compilers and checkers say, each once; without any, how the log ends.
complaints() { # $1: a stage's log
    local found
    found=$(grep -aE '(error|warning): |^FAILED: ' "$1" | awk '!seen[$0]++' | head -n 40)
    if [ -n "$found" ]; then printf '%s\n' "$found"; else tail -n 25 "$1"; fi
}
