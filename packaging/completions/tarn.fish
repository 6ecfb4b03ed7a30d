# Completion of tarn for fish.

complete -c tarn -f
complete -c tarn -s h -l help -d 'Show the usage and end'
complete -c tarn -l version -d 'Show the version and end'
complete -c tarn -k -a '(__fish_complete_suffix .net)'
