# Completes the words of Velmora, of which there may be one.
complete -c Velmora -f
set -l none 'test (count (commandline -opc)) -eq 1'
complete -c Velmora -n $none -l show -d 'Open the window, also that of a Velmora which runs already'
complete -c Velmora -n $none -l hidden -d 'Start in the tray'
complete -c Velmora -n $none -l check -d 'Check all enabled accounts without a window'
complete -c Velmora -n $none -a '--action=check-all' -d 'Open the window and check all enabled accounts'
complete -c Velmora -n $none -a '--action=new-message' -d 'Write a new message'
complete -c Velmora -n $none -l help -d 'Print a short help'
complete -c Velmora -n $none -l version -d 'Print the version'
