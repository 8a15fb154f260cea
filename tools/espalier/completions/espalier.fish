# SPDX-License-Identifier: MIT
#
# Completion of espalier for fish: verbs, options, the values of options, files.

set -l verbs check css events format select style tree
set -l encodings 'UTF-8 UTF-16LE UTF-16BE ISO-8859-1 US-ASCII windows-1250 windows-1251' \
    'windows-1252 windows-1254 windows-1257 GB2312 EUC-KR'

# Tells whether the verb is one of those given.
function __espalier_verb
    set -l words (commandline -opc)
    contains -- "$words[2]" $argv
end

# Tells whether so many words follow the verb that are neither options nor their values.
function __espalier_follows
    set -l valued -o --color --progress --encoding --max-bytes --max-ratio --output --attr --ns \
        --property --pseudo --media --width --height --sheet
    set -l words (commandline -opc)
    set -l number 0
    set -l isValue 0
    for word in $words[3..-1]
        if test $isValue = 1
            set isValue 0
        else if contains -- $word $valued
            set isValue 1
        else if not string match -q -- '-?*' $word
            set number (math $number + 1)
        end
    end
    test $number = $argv[1]
end

# Before a verb
complete -c espalier -n __fish_use_subcommand -f
complete -c espalier -n __fish_use_subcommand -a check -d 'Tell whether documents are well-formed'
complete -c espalier -n __fish_use_subcommand -a css -d 'Show the rules of style sheets'
complete -c espalier -n __fish_use_subcommand -a events -d 'Show the nodes of a document, one a line'
complete -c espalier -n __fish_use_subcommand -a format -d 'Indent documents anew, or recode them'
complete -c espalier -n __fish_use_subcommand -a select -d 'Show what a selector selects'
complete -c espalier -n __fish_use_subcommand -a style -d 'Show which style elements have, and why'
complete -c espalier -n __fish_use_subcommand -a tree -d 'Draw documents as trees, or count paths'
complete -c espalier -n __fish_use_subcommand -a help -d 'Tell the verbs, or the options of one'
complete -c espalier -n __fish_use_subcommand -s h -l help -d 'Tell the verbs'
complete -c espalier -n __fish_use_subcommand -s V -l version -d 'Tell the version'
complete -c espalier -n '__espalier_verb help' -f
complete -c espalier -n '__espalier_verb help; and __espalier_follows 0' -a "$verbs"

# All verbs
set -l any "__espalier_verb $verbs"
complete -c espalier -n $any -s h -l help -d 'Tell the options of the verb'
complete -c espalier -n $any -l color -x -a 'auto always never' -d 'Use colors'
complete -c espalier -n $any -l progress -x -a 'auto never' -d 'Show progress on a terminal'
complete -c espalier -n $any -l max-bytes -x -d 'Stop behind so many bytes, uncompressed'
complete -c espalier -n $any -l max-ratio -x -d 'Stop at so many times the compressed size'

# What several have
set -l documents '__espalier_verb check events format select style tree'
complete -c espalier -n $documents -l encoding -x -a "$encodings" -d 'Read as this encoding'
set -l lenient '__espalier_verb events format select style tree'
complete -c espalier -n $lenient -l standard -d 'Judge by XML 1.0 to the letter'
set -l named '__espalier_verb check events format tree'
complete -c espalier -n $named -l no-namespaces -d 'Let names hold any number of colons'
set -l writing '__espalier_verb css select style tree'
complete -c espalier -n $writing -s o -l output -r -F -d 'Write to this file, if all goes well'
set -l json '__espalier_verb css events style tree'
complete -c espalier -n $json -l json -d 'One JSON object a line'

set -l verb '__espalier_verb check'
complete -c espalier -n $verb -s v -l verbose -d 'Also name the documents that are well-formed'
complete -c espalier -n $verb -l compatible -d 'Judge as other verbs do'

set -l verb '__espalier_verb css'
complete -c espalier -n $verb -l check -d 'Show only what is left out or unknown'
complete -c espalier -n $verb -l encoding -x -a "$encodings UTF-16 LATIN1 ASCII" \
    -d 'Of sheets that do not say theirs'

set -l verb '__espalier_verb events'
complete -c espalier -n $verb -l attributes -d 'Attributes on lines of their own'
complete -c espalier -n $verb -l entities -x -a 'nothing char all' -d 'References to expand'
complete -c espalier -n $verb -l normalize -d 'Turn CR LF and CR into LF'
complete -c espalier -n $verb -l whitespace -x -a 'all significant none' -d 'White space to show'

set -l verb '__espalier_verb format'
complete -c espalier -n $verb -l indent -x -d 'Blanks for each level'
complete -c espalier -n $verb -l tabs -d 'A tab for each level'
complete -c espalier -n $verb -l compact -d 'No white space between elements'
complete -c espalier -n $verb -l new-lines -x -a 'lf crlf' -d 'How lines end'
complete -c espalier -n $verb -l to -x -a 'utf-8 utf-16 utf-16le utf-16be iso-8859-1 us-ascii' \
    -d 'The encoding to write'
complete -c espalier -n $verb -l check -d 'Write nothing; name documents that would change'
complete -c espalier -n $verb -l in-place -d 'Replace the files by what they become'

set -l verb '__espalier_verb select'
complete -c espalier -n "$verb; and __espalier_follows 0" -f
complete -c espalier -n $verb -l text -d 'The text of each element, on one line'
complete -c espalier -n $verb -l attr -x -d 'This attribute of those that have it'
complete -c espalier -n $verb -l count -d 'How many there are'
complete -c espalier -n $verb -s 1 -l first -d 'Only the first one of each document'
complete -c espalier -n $verb -l ns -x -d 'What a prefix stands for'

set -l verb '__espalier_verb style'
complete -c espalier -n "$verb; and __espalier_follows 1" -f
complete -c espalier -n $verb -l property -x -d 'This property, or all that it stands for'
complete -c espalier -n $verb -l all -d 'Properties with their initial values, too'
complete -c espalier -n $verb -l winners -d 'Not what has lost'
complete -c espalier -n $verb -l pseudo -x -a 'before after first-line first-letter' \
    -d 'Of a pseudo-element'
complete -c espalier -n $verb -l media -x -a 'screen print' -d 'The medium'
complete -c espalier -n $verb -l width -x -d 'Of the window'
complete -c espalier -n $verb -l height -x -d 'Of the window'
complete -c espalier -n $verb -l no-ua -d 'Without the sheet that HTML begins with'
complete -c espalier -n $verb -l sheet -r -F -d 'A further style sheet, behind the others'

set -l verb '__espalier_verb tree'
complete -c espalier -n $verb -l depth -x -d 'How many levels'
complete -c espalier -n $verb -l counts -d 'Count elements by path'
