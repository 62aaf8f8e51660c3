# fish completion for zeledit

complete -c zeledit -f
complete -c zeledit -k -a '(__fish_complete_suffix .mtlx)'
complete -c zeledit -l plugin -r -k -a '(__fish_complete_suffix .so)' -d 'load this plugin'
complete -c zeledit -l library -r -k -a '(__fish_complete_suffix .mtlx)' -d 'read more data types and node definitions'
complete -c zeledit -l theme -x -a 'light dark' -d 'the colours of the window'
complete -c zeledit -l screenshot -r -k -a '(__fish_complete_suffix .png)' -d 'write a picture of the window and leave'
complete -c zeledit -l size -x -d 'the size of the window in pixels'
complete -c zeledit -l compound -x -d 'what the picture shows'
complete -c zeledit -l script -r -k -a '(__fish_complete_suffix .zeledit)' -d 'run these lines as real input, and leave'
complete -c zeledit -l verbose -d 'print each edit as a command of zelsh'
complete -c zeledit -l keys -d 'print the table of keys'
complete -c zeledit -l help -d 'show a summary of the options'
