# Completes the options of kova-alarm in bash.
complete -W '--help --start-at-login --version' kova-alarm
