# bash completion of cfgmsg. The commands and options come from the tool's
# own help ('cfgmsg --help', 'cfgmsg COMMAND --help'), so they are those of
# the cfgmsg being completed; node paths come from 'cfgmsg get FILE' and
# 'cfgmsg schema', param names of 'set PATH.' from 'cfgmsg schema PATH'.

# Words of the help of command $2 (or of the tool) of the cfgmsg at $1.
_cfgmsg_commands() {
    "$1" --help 2>/dev/null | awk '/^commands:/ { on = 1; next } on && /^$/ { exit }
        on && /^  [a-z]/ { print $1 }'
}
_cfgmsg_options() {
    "$1" "$2" --help 2>/dev/null | grep -oE '(^|[ [])(-[a-z]|--[a-z][a-z-]*)' | sed 's/^[[ ]//' | sort -u
}

_cfgmsg() {
    local tool=${COMP_WORDS[0]} cur=${COMP_WORDS[COMP_CWORD]} prev=${COMP_WORDS[COMP_CWORD-1]}
    COMPREPLY=()
    if [ "$COMP_CWORD" -eq 1 ]; then
        mapfile -t COMPREPLY < <(compgen -W "$(_cfgmsg_commands "$tool") --help --version" -- "$cur")
        return
    fi
    local command=${COMP_WORDS[1]}
    case $prev in
        --format) mapfile -t COMPREPLY < <(compgen -W "binary text json" -- "$cur"); return ;;
        --ports) return ;;
        -o) compopt -o default 2>/dev/null; return ;;
    esac
    if [[ $cur == -* ]]; then
        mapfile -t COMPREPLY < <(compgen -W "$(_cfgmsg_options "$tool" "$command")" -- "$cur")
        return
    fi
    # The first word after the command that is neither an option nor the
    # value of one is FILE; get and set take node paths after it.
    local i word file= after=0
    for ((i = 2; i < COMP_CWORD; i++)); do
        word=${COMP_WORDS[i]}
        case $word in
            -o | --format | --ports | --unset | --delete-node) ((i++)) ;;
            -*) ;;
            *) if [ -z "$file" ]; then file=$word; else ((after++)); fi ;;
        esac
    done
    local paths_wanted=
    case $command:$prev in
        set:--unset | set:--delete-node) paths_wanted=1 ;;
        get:* | set:*) [ -n "$file" ] && { [ "$command" = set ] || [ "$after" -eq 0 ]; } && paths_wanted=1 ;;
    esac
    # After "PATH." of set: the params of PATH as the tool's schema lists them.
    if [ "$command:$prev" != set:--delete-node ] && [ "$command" = set ] && [[ $cur == *.* ]]; then
        local node=${cur%.*} names
        # PATH must name one node kind: the schema shows it alone, as PATH
        # itself or as its numbered form.
        names=$("$tool" schema "$node" 2>/dev/null | awk -v node="$node" '
            /^\[/ { headers++; path = substr($1, 2, length($1) - 2); ok = path == node || path ~ /[{]/ }
            /^    [^ ]/ && $1 !~ /[{[]/ { names = names $1 "\n" }
            END { if (headers == 1 && ok) printf "%s", names }')
        if [ -n "$names" ]; then
            mapfile -t COMPREPLY < <(compgen -P "$node." -W "$names" -- "${cur##*.}")
            [ "$prev" = --unset ] || compopt -o nospace 2>/dev/null
            [ "$prev" = --unset ] || COMPREPLY=("${COMPREPLY[@]/%/=}")
            return
        fi
    fi
    if [ -n "$paths_wanted" ] && [ -r "$file" ]; then
        local paths
        # The node paths of FILE, and those of the tool's schema that name one node.
        paths=$({ "$tool" get "$file"; "$tool" schema | sed -n 's/^\[\([^]{]*\)\].*/\1/p'; } 2>/dev/null | sort -u)
        if [ "$command" = set ] && [ "$prev" != --delete-node ]; then
            paths=$(printf '%s.\n' $paths)  # PATH.PARAM: the param name follows
            compopt -o nospace 2>/dev/null
        fi
        mapfile -t COMPREPLY < <(compgen -W "$paths" -- "$cur")
        return
    fi
    compopt -o default 2>/dev/null
}
complete -F _cfgmsg cfgmsg
