#compdef zeledit

_arguments \
    '--plugin[load this plugin]:plugin:_files -g "*.so"' \
    '*--library[read more data types and node definitions]:document:_files -g "*.mtlx"' \
    '--theme[the colours of the window]:theme:(light dark)' \
    '--screenshot[write a picture of the window and leave]:picture:_files -g "*.png"' \
    '--size[the size of the window in pixels]:width x height:' \
    '--compound[what the picture shows]:path:' \
    '--script[run these lines as real input, and leave]:script:_files -g "*.zeledit"' \
    '--verbose[print each edit as a command of zelsh]' \
    '(- *)--keys[print the table of keys]' \
    '(- *)--help[show a summary of the options]' \
    '*:document:_files -g "*.mtlx"'
