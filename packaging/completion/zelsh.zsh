#compdef zelsh

local -a commands
commands=(
    'arrange:gives nodes places in layers along their connections, as `draw` does'
    'attribute:reads and changes what the network does not show'
    'backdrop:changes the frames that are drawn around nodes'
    'check:what is wrong with the document'
    'collapse:moves nodes into a new compound'
    'connect:connects an output to an input'
    'connections:the connections in a compound and below, sorted'
    'copy:prints nodes as a document of the format, on one line'
    'create:makes a node'
    'delete:deletes nodes with their connections'
    'disconnect:takes a connection off'
    'disconnect-all:takes off all connections of a port'
    'draw:draws a compound as a picture'
    'dump:everything inside a compound, as the library prints it'
    'duplicate:copies nodes and pastes them beside themselves'
    'expand:moves the nodes of a compound up and removes it'
    'find:what a path names'
    'help:what the commands do'
    'history:all edits, the oldest first, with those that are undone'
    'insert:puts a node into a connection'
    'library:the tree of node libraries'
    'ls:the nodes inside a compound'
    'move:changes where nodes are drawn: their attributes xpos and ypos'
    'paste:makes the nodes of a text of the format'
    'port:changes the ports of a compound'
    'ports:the ports of a node in order'
    'quit:ends the session; so does the end of the input'
    'rebuild:brings all nodes of the document up to their definitions'
    'redo:does undone edits again'
    'rename:gives a node another name'
    'reparent:moves nodes into another compound'
    'reroute:moves the connections of a port to another one'
    'runtimes:the runtimes of all plugins, by index and by name'
    'save:writes the document into a file'
    'set:gives an input a value'
    'source:runs the commands in a file, one a line'
    'stats:counts what is in a compound'
    'tree:a node and everything below it'
    'types:the data types of the runtime, in its order'
    'undo:takes the last edits back'
)

_arguments -S \
    '*-c[run this command]:command:{ _describe command commands }' \
    '(*)--new[begin an empty document]:document:_files -g "*.mtlx"' \
    '--plugin[load this plugin]:plugin:_files -g "*.so"' \
    '*--library[read more data types and node definitions]:document:_files -g "*.mtlx"' \
    '--strict[do not open a document that has warnings]' \
    '--watch[print what editors are told of each change]' \
    '(- *)'{-h,--help}'[show a summary of the options]' \
    '(--new):document:_files -g "*.mtlx"'
