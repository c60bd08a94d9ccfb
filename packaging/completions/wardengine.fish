# fish completion for wardengine
complete -c wardengine -f
complete -c wardengine -l folder -x -a '(__fish_complete_directories)' -d 'Keep the data files, pictures and sounds here'
complete -c wardengine -l demo -d 'Start a furnished house on an emulated interface'
complete -c wardengine -l demo-reset -d 'Furnish the demo house anew, then start it'
complete -c wardengine -l trace-serial -d 'Print the bytes on the serial line'
complete -c wardengine -l supervise -d 'Keep the service running without a service manager'
complete -c wardengine -s h -l help -d 'Print the options and end'
complete -c wardengine -l help-all -d 'The same with the options of Qt'
complete -c wardengine -s v -l version -d 'Print the version and end'
