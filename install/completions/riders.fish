# Completion for riders in fish. The program itself knows what can come next, so this lists nothing.

function __riders_complete
    set -l before (commandline -opc)
    set -l current (commandline -ct)
    set -l program $before[1]
    command -q $program; or return
    set -e before[1]
    for line in (command $program --complete-line $before "$current" 2>/dev/null)
        switch $line
            case :none
            case :folders
                __fish_complete_directories "$current" ''
            case ':files*'
                set -l endings (string split -n ' ' -- (string replace -r '^:files' '' -- $line))
                set -l files (__fish_complete_path "$current")
                if set -q endings[1]
                    # Where no file has one of the endings, all are offered.
                    set -l form '^[^\t]*(?:/|\.(?:'(string join '|' $endings)'))(?:\t.*)?$'
                    set -l fit (string match -ri -- $form $files)
                    set -q fit[1]; and set files $fit
                end
                test (count $files) -eq 0; or printf '%s\n' $files
            case '*'
                printf '%s\n' $line
        end
    end
end

complete -c riders -f -a '(__riders_complete)'
complete -c riders-printer -f -a '(__riders_complete)'
