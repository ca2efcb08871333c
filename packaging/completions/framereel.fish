# Completions of framereel for fish.
complete -c framereel -f
complete -c framereel -s h -l help -d 'Show a summary of the command line'
complete -c framereel -l version -d 'Show the version'
