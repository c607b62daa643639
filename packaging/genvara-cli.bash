# bash completion for genvara-cli

_genvara_cli() {
    local current=${COMP_WORDS[COMP_CWORD]} previous=${COMP_WORDS[COMP_CWORD-1]} command="" word
    local limits="--db --min-loading --max-loading --max-sets --max-undersized"
    for word in "${COMP_WORDS[@]:1:COMP_CWORD-1}"; do
        case $word in
            size|explain|sweep|advise|order|import|report|export-spec|check|convert|describe) command=$word ;;
            catalog) command=catalog ;;
            build) [ "$command" = catalog ] && command="catalog build" ;;
        esac
        [ "$word" = check ] && [[ " ${COMP_WORDS[*]:1:COMP_CWORD-1} " == *" catalog check "* ]] && command="catalog check"
    done
    case $previous in
        --type) mapfile -t COMPREPLY < <(compgen -W "sizing summary" -- "$current"); return ;;
        --min-loading|--max-loading|--max-sets|--max-undersized|--jobs|--set|--undersized|--now) return ;;
        --max-steps|--seconds|--apply|--vary|--before|--together|--model) return ;;
        --kinds)
            mapfile -t COMPREPLY < <(compgen -W "order split starter rectifier limit rise sets fuel" -- "$current")
            return
            ;;
        --db|-o) mapfile -t COMPREPLY < <(compgen -f -- "$current"); compopt -o filenames; return ;;
    esac
    local words
    case $command in
        "") words="size explain sweep advise order import report export-spec check convert describe catalog --help --version" ;;
        size) words="$limits --json --jobs --help" ;;
        explain) words="$limits --json --jobs --model --all --steps --help" ;;
        sweep) words="$limits --json --csv --jobs --vary --breaks --yes --help" ;;
        advise) words="$limits --json --jobs --pairs --kinds --apply -o --help" ;;
        order) words="$limits --json --jobs --max-steps --before --together --seconds -o --help" ;;
        import) words="--into -o --json --db --help" ;;
        report) words="$limits -o --set --undersized --no-match --type --metric --now --help" ;;
        export-spec) words="$limits -o --set --undersized --help" ;;
        check) words="--db --help" ;;
        convert) words="--db -o --help" ;;
        describe) words="--json --schema --help" ;;
        catalog) words="build check --help" ;;
        "catalog build") words="-o --help" ;;
        *) words="--help" ;;
    esac
    if [[ $current == -* || -z $command || $command == catalog ]]; then
        mapfile -t COMPREPLY < <(compgen -W "$words" -- "$current")
        return
    fi
    compopt -o filenames
    case $command in
        describe)
            words="Project PowerSystem Designer Step AirConditioner BatteryCharger Lighting MedicalImaging Miscellaneous"
            words="$words Motor Office UPS Drive"
            compopt +o filenames
            mapfile -t COMPREPLY < <(compgen -W "$words" -- "$current")
            ;;
        import)
            if [ "$previous" = --into ]; then
                mapfile -t COMPREPLY < <(compgen -f -X '!*.prj' -- "$current"; compgen -f -X '!*.json' -- "$current"
                    compgen -d -- "$current")
            else
                mapfile -t COMPREPLY < <(compgen -f -X '!*.csv' -- "$current"; compgen -f -X '!*.tsv' -- "$current"
                    compgen -f -X '!*.txt' -- "$current"; compgen -d -- "$current")
            fi
            ;;
        "catalog build") mapfile -t COMPREPLY < <(compgen -d -- "$current") ;;
        "catalog check") mapfile -t COMPREPLY < <(compgen -f -X '!*.db' -- "$current"; compgen -d -- "$current") ;;
        *)
            mapfile -t COMPREPLY < <(compgen -f -X '!*.prj' -- "$current"; compgen -f -X '!*.json' -- "$current"
                compgen -d -- "$current")
            ;;
    esac
}

complete -F _genvara_cli genvara-cli
