# Completion of tarn for fish.

complete -c tarn -f
complete -c tarn -s h -l help -d 'Show the options and end'
complete -c tarn -l verbose -d 'Write more about what the window library does'
complete -c tarn -k -a '(__fish_complete_suffix .net)'
