# Completion of tessel in bash.
_tessel()
{
    local cur=${COMP_WORDS[COMP_CWORD]} prev=${COMP_WORDS[COMP_CWORD-1]} command=${COMP_WORDS[1]-}
    local login='--user --password --password-stdin --language' output='--json --quiet' words=
    COMPREPLY=()
    if [ "$COMP_CWORD" -eq 1 ]; then
        words='host recover export lock unlock continue latest drive config verify inspect --help --version'
    elif [ "$COMP_CWORD" -eq 2 ] && [ "$command" = host ]; then
        words='create show'
    elif [ "$COMP_CWORD" -eq 2 ] && [ "$command" = config ]; then
        words='list get set unset edit check'
    elif [ "$prev" = --mode ]; then
        words='mail mail-structure odette custom no-send'
    elif [[ $cur == -* ]]; then
        case $command in
            host) words=$output ;;
            recover) words="$output --dry-run" ;;
            export) words="$login $output --select --mode --no-send --recipient --subject --content --content-file --field
                           --folder-structure --dry-run" ;;
            lock|unlock|continue|latest) words="$login $output" ;;
            drive) words=$login ;;
            config) words="$output --user" ;;
            verify) words="$output --database" ;;
            inspect) words='--html --json --quiet' ;;
        esac
    fi
    if [ -n "$words" ]; then
        mapfile -t COMPREPLY < <(compgen -W "$words" -- "$cur")
    else
        mapfile -t COMPREPLY < <(compgen -f -- "$cur")
        compopt -o filenames 2>/dev/null
    fi
}
complete -F _tessel tessel
