# Completes the options of kova-alarm in fish.
complete -c kova-alarm -f
complete -c kova-alarm -l help -d 'Show a usage message and exit'
complete -c kova-alarm -l start-at-login -d 'Start the application at each login, and exit'
complete -c kova-alarm -l version -d 'Show the version and exit'
