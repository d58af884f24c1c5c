# Completion of kelvanor for fish.
complete -c kelvanor -f
complete -c kelvanor -s h -l help -d 'Print what can be said on the command line'
complete -c kelvanor -s v -l version -d 'Print the version'
complete -c kelvanor -a '(__fish_complete_path (commandline -ct) |
  string match -r -i "^.*(?:/|\.(?:crp|bet|rol|prb|glg))(?:\t.*)?\$")'
