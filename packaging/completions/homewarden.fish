# fish completion for homewarden
complete -c homewarden -f
complete -c homewarden -l folder -x -a '(__fish_complete_directories)' -d 'Keep the data files, pictures and sounds here'
complete -c homewarden -l demo -d 'Start a furnished house on an emulated interface'
complete -c homewarden -l demo-reset -d 'Furnish the demo house anew, then start it'
complete -c homewarden -l trace-serial -d 'Print the bytes on the serial line'
complete -c homewarden -s h -l help -d 'Print the options and end'
complete -c homewarden -l help-all -d 'The same with the options of Qt'
complete -c homewarden -s v -l version -d 'Print the version and end'
