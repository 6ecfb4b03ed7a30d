# Completion of tarn-cli for fish.

# The words typed that are neither options nor values of options: the command first.
function __tarn_cli_arguments
    set -l is_value false
    for word in (commandline -opc)[2..]
        if $is_value
            set is_value false
        else if not string match -q -- '-*' $word
            printf '%s\n' $word
        else if not string match -qr -- '^(-h|--help|--version|--force|--no-save|--quiet|--|--.+=.*|-o.+)$' $word
            set is_value true
        end
    end
end

# __tarn_cli_is COMMAND...: the command typed is one of these.
function __tarn_cli_is
    set -l arguments (__tarn_cli_arguments)
    contains -- "$arguments[1]" $argv
end

# No command has been typed.
function __tarn_cli_none
    not __tarn_cli_arguments | string length -q
end

# __tarn_cli_at NUMBER COMMAND...: the word is the argument of this number, from 1, of one of these.
function __tarn_cli_at
    set -l arguments (__tarn_cli_arguments)
    test (count $arguments) = $argv[1]; and contains -- "$arguments[1]" $argv[2..]
end

# The lists of one transfer function for each layer.
function __tarn_cli_functions
    set -l head (commandline -ct | string replace -r '^--transfer=' '' | string replace -r '[^,]*$' '')
    printf '%s\n' $head{sigmoid,gaussian,tanh,sech}
end

complete -c tarn-cli -f
complete -c tarn-cli -s h -l help -d 'Print the help and end'
complete -c tarn-cli -n __tarn_cli_none -l version -d 'Print the version and end'

complete -c tarn-cli -n __tarn_cli_none -a new -d 'Make a new network file'
complete -c tarn-cli -n __tarn_cli_none -a set -d 'Change a network file'
complete -c tarn-cli -n __tarn_cli_none -a train -d 'Train a network'
complete -c tarn-cli -n __tarn_cli_none -a recall -d 'Run new data through a network'
complete -c tarn-cli -n __tarn_cli_none -a report -d 'Print a report on a network'
complete -c tarn-cli -n __tarn_cli_none -a plot -d 'Draw a graph of a network'
complete -c tarn-cli -n __tarn_cli_none -a restore -d 'Take back a snapshot'

complete -c tarn-cli -n '__tarn_cli_at 1 report' -a 'information weights outputs statistics tolerance threshold divergence'
complete -c tarn-cli -n '__tarn_cli_at 1 plot' -a 'rms test-rms learn-rate correlation test-correlation tolerance test-tolerance scatter outputs error inputs interrogator hidden contour'
complete -c tarn-cli -n '__tarn_cli_at 1 restore' -F
complete -c tarn-cli -n '__tarn_cli_at 1 new set train recall; or __tarn_cli_at 2 report plot; or __tarn_cli_at 3 restore' -k -a '(__fish_complete_suffix .net)'

complete -c tarn-cli -n '__tarn_cli_is new' -l force -d 'Replace the file when it exists'
complete -c tarn-cli -n '__tarn_cli_is set' -s o -l output -r -F -d 'Write to this file'

complete -c tarn-cli -n '__tarn_cli_is new set' -l name -x -d 'Name of the network'
complete -c tarn-cli -n '__tarn_cli_is new set' -l layers -x -d 'Nodes of every layer, with commas'
complete -c tarn-cli -n '__tarn_cli_is new set' -l transfer -x -a '(__tarn_cli_functions)' -d 'Transfer function'
complete -c tarn-cli -n '__tarn_cli_is new set' -l normalize-inputs -x -a 'on off' -d 'Scale every input'
complete -c tarn-cli -n '__tarn_cli_is new set' -l normalize-targets -x -a 'on off' -d 'Scale every target'
complete -c tarn-cli -n '__tarn_cli_is new set' -l test-patterns -x -d 'Patterns held back for the test'
complete -c tarn-cli -n '__tarn_cli_is new set' -l test-method -x -a 'none beginning end random' -d 'Which patterns these are'
complete -c tarn-cli -n '__tarn_cli_is new set' -l eta -x -d 'Learn rate, above 0 to 1'
complete -c tarn-cli -n '__tarn_cli_is new set' -l eta-min -x -d 'Lowest learn rate, above 0 to 1'
complete -c tarn-cli -n '__tarn_cli_is new set' -l eta-max -x -d 'Highest learn rate, above 0 to 1'
complete -c tarn-cli -n '__tarn_cli_is new set' -l momentum -x -d 'Momentum, 0 to 1'
complete -c tarn-cli -n '__tarn_cli_is new set' -l fast-prop -x -d 'FAST-Prop coefficient, 0 to 3'
complete -c tarn-cli -n '__tarn_cli_is new set' -l patterns-per-update -x -d 'Patterns per weight update, 0 for all'
complete -c tarn-cli -n '__tarn_cli_is new set' -l lrc-start -x -d 'Iteration from which learn rate control acts'
complete -c tarn-cli -n '__tarn_cli_is new set' -l autosave-rate -x -d 'Iterations between snapshots, 0 for none'
complete -c tarn-cli -n '__tarn_cli_is new set' -l update-rate -x -d 'Iterations between lines of figures'
complete -c tarn-cli -n '__tarn_cli_is new set report' -l tolerance -x -d 'Distance from targets that counts as right'
complete -c tarn-cli -n '__tarn_cli_is new set train' -l iterations -x -d 'Iterations to train for'

complete -c tarn-cli -n '__tarn_cli_is new set recall report plot' -l inputs -r -F -d 'Text file with the inputs'
complete -c tarn-cli -n '__tarn_cli_is new set recall report plot' -l inputs-column -x -d 'Column of the first input, from 1'
complete -c tarn-cli -n '__tarn_cli_is new set recall report plot' -l targets -r -F -d 'Text file with the targets'
complete -c tarn-cli -n '__tarn_cli_is new set recall report plot' -l targets-column -x -d 'Column of the first target, from 1'
complete -c tarn-cli -n '__tarn_cli_is train report plot' -l seed -x -d 'Number that random choices are drawn from'

complete -c tarn-cli -n '__tarn_cli_is train' -s o -l output -r -F -d 'Save to this file'
complete -c tarn-cli -n '__tarn_cli_is train' -l no-save -d 'Do not save the trained network'
complete -c tarn-cli -n '__tarn_cli_is train' -l error-history -r -F -d 'Write the figures to this file as text'
complete -c tarn-cli -n '__tarn_cli_is train recall' -l outputs -r -F -d 'Write the outputs to this file'
complete -c tarn-cli -n '__tarn_cli_is train' -l history -r -F -d 'Keep the error history in this file'
complete -c tarn-cli -n '__tarn_cli_is train' -l autosave -r -F -d 'Keep snapshots in this file'
complete -c tarn-cli -n '__tarn_cli_is train' -l quiet -d 'Print no figures, progress or summary'

complete -c tarn-cli -n '__tarn_cli_is report' -l upper -x -d 'Count outputs above this'
complete -c tarn-cli -n '__tarn_cli_is report' -l lower -x -d 'Count outputs below this'

complete -c tarn-cli -n '__tarn_cli_is plot' -l history -r -F -d 'Error history that train has kept'
complete -c tarn-cli -n '__tarn_cli_is plot' -l node -x -d 'Output node, input node or hidden layer'
complete -c tarn-cli -n '__tarn_cli_is plot' -l first-input -x -d 'Input along the x axis'
complete -c tarn-cli -n '__tarn_cli_is plot' -l second-input -x -d 'Input along the y axis'
complete -c tarn-cli -n '__tarn_cli_is plot' -l width -x -d 'Pixels, 300 to 8000'
complete -c tarn-cli -n '__tarn_cli_is plot' -l height -x -d 'Pixels, 200 to 6000'
complete -c tarn-cli -n '__tarn_cli_is plot' -s o -l output -r -F -d 'Picture FILE.svg or table FILE.csv'
