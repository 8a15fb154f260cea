# shellcheck shell=bash
# SPDX-License-Identifier: MIT
#
# Completion of espalier for bash: verbs, options, the values of options, files.

# Prints the options of a verb.
_espalier_options() {
    local all='-h --help --color --progress --encoding --max-bytes --max-ratio'
    case $1 in
    check) echo "$all -v --verbose --compatible --no-namespaces" ;;
    css) echo "$all --check --json -o --output" ;;
    events)
        echo "$all --json --attributes --entities --no-namespaces --normalize --whitespace" \
            '--standard'
        ;;
    format)
        echo "$all --indent --tabs --compact --new-lines --to --check --in-place" \
            '--no-namespaces --standard'
        ;;
    select) echo "$all --text --attr --count -1 --first --ns -o --output --standard" ;;
    style)
        echo "$all --property --all --winners --pseudo --media --width --height --no-ua --sheet" \
            '--json -o --output --standard'
        ;;
    tree) echo "$all --depth --counts --json --no-namespaces -o --output --standard" ;;
    esac
}

# Prints the values of an option of a verb, "FILES" where it takes a file and "ANY" where nobody
# can tell; nothing of an option that takes none.
_espalier_values() {
    case $1:$2 in
    *:--color) echo 'auto always never' ;;
    *:--progress) echo 'auto never' ;;
    css:--encoding)
        echo 'UTF-8 UTF-16 UTF-16LE UTF-16BE windows-1250 windows-1251 windows-1252' \
            'windows-1254 windows-1257 ISO-8859-1 LATIN1 US-ASCII ASCII GB2312 EUC-KR'
        ;;
    *:--encoding)
        echo 'UTF-8 UTF-16LE UTF-16BE ISO-8859-1 US-ASCII windows-1250 windows-1251' \
            'windows-1252 windows-1254 windows-1257 GB2312 EUC-KR'
        ;;
    events:--entities) echo 'nothing char all' ;;
    events:--whitespace) echo 'all significant none' ;;
    format:--new-lines) echo 'lf crlf' ;;
    format:--to) echo 'utf-8 utf-16 utf-16le utf-16be iso-8859-1 us-ascii' ;;
    style:--pseudo) echo 'before after first-line first-letter' ;;
    style:--media) echo 'screen print' ;;
    css:-o | select:-o | style:-o | tree:-o | *:--output | style:--sheet) echo FILES ;;
    *:--max-bytes | *:--max-ratio | format:--indent | select:--attr | select:--ns | tree:--depth) echo ANY ;;
    style:--property | style:--width | style:--height) echo ANY ;;
    esac
}

# Prints how many arguments that are no options stand before the one to be completed.
_espalier_count_arguments() {
    local verb=$1 count=0 i=2
    while ((i < COMP_CWORD)); do
        case ${COMP_WORDS[i]} in
        -?*)
            if [[ ${COMP_WORDS[i + 1]-} == = ]]; then
                ((i += 2))
            elif [[ -n $(_espalier_values "$verb" "${COMP_WORDS[i]}") ]]; then
                ((i += 1))
            fi
            ;;
        *) ((count += 1)) ;;
        esac
        ((i += 1))
    done
    echo "$count"
}

# Fills COMPREPLY with the words given that begin as the current one does, with letters of any case
# where the shell is told to do so.
_espalier_offer() {
    local current=$1 word
    shift
    if [[ $* == FILES ]]; then
        compopt -o filenames 2>/dev/null
        while IFS= read -r word; do
            COMPREPLY+=("$word")
        done < <(compgen -f -- "$current")
    elif [[ $* != ANY ]]; then
        read -ra COMPREPLY -d '' < <(compgen -W "$*" -- "$current")
    fi
}

_espalier() {
    local current=${COMP_WORDS[COMP_CWORD]} before=${COMP_WORDS[COMP_CWORD - 1]}
    local verb=${COMP_WORDS[1]} values arguments
    local verbs='check css events format select style tree help'
    COMPREPLY=()
    if ((COMP_CWORD == 1)); then
        [[ $current != -* ]] || verbs='-h --help -V --version'
        _espalier_offer "$current" "$verbs"
        return
    fi
    if [[ $verb == help ]]; then
        ((COMP_CWORD > 2)) || _espalier_offer "$current" "${verbs% help}"
        return
    fi
    # "--color=al" comes as three words.
    if [[ $current == = ]]; then
        current=''
    elif [[ $before == = ]]; then
        before=${COMP_WORDS[COMP_CWORD - 2]}
    fi
    values=$(_espalier_values "$verb" "$before")
    if [[ -n $values ]]; then
        _espalier_offer "$current" "$values"
    elif [[ $current == -* ]]; then
        _espalier_offer "$current" "$(_espalier_options "$verb")"
    else
        arguments=$(_espalier_count_arguments "$verb")
        case $verb:$arguments in
        select:0 | style:1) ;; # a selector
        style:[2-9]*) ;;
        *) _espalier_offer "$current" FILES ;;
        esac
    fi
}

complete -F _espalier espalier
