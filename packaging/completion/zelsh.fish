# fish completion for zelsh

function __zelsh_commands
    printf '%s\n' \
        arrange\t'gives nodes places in layers along their connections, as `draw` does' \
        attribute\t'reads and changes what the network does not show' \
        backdrop\t'changes the frames that are drawn around nodes' \
        check\t'what is wrong with the document' \
        collapse\t'moves nodes into a new compound' \
        connect\t'connects an output to an input' \
        connections\t'the connections in a compound and below, sorted' \
        copy\t'prints nodes as a document of the format, on one line' \
        create\t'makes a node' \
        delete\t'deletes nodes with their connections' \
        disconnect\t'takes a connection off' \
        disconnect-all\t'takes off all connections of a port' \
        draw\t'draws a compound as a picture' \
        dump\t'everything inside a compound, as the library prints it' \
        duplicate\t'copies nodes and pastes them beside themselves' \
        expand\t'moves the nodes of a compound up and removes it' \
        find\t'what a path names' \
        help\t'what the commands do' \
        history\t'all edits, the oldest first, with those that are undone' \
        insert\t'puts a node into a connection' \
        library\t'the tree of node libraries' \
        ls\t'the nodes inside a compound' \
        move\t'changes where nodes are drawn: their attributes xpos and ypos' \
        paste\t'makes the nodes of a text of the format' \
        port\t'changes the ports of a compound' \
        ports\t'the ports of a node in order' \
        quit\t'ends the session; so does the end of the input' \
        rebuild\t'brings all nodes of the document up to their definitions' \
        redo\t'does undone edits again' \
        rename\t'gives a node another name' \
        reparent\t'moves nodes into another compound' \
        reroute\t'moves the connections of a port to another one' \
        runtimes\t'the runtimes of all plugins, by index and by name' \
        save\t'writes the document into a file' \
        set\t'gives an input a value' \
        source\t'runs the commands in a file, one a line' \
        stats\t'counts what is in a compound' \
        tree\t'a node and everything below it' \
        types\t'the data types of the runtime, in its order' \
        undo\t'takes the last edits back'
end

complete -c zelsh -f
complete -c zelsh -k -a '(__fish_complete_suffix .mtlx)'
complete -c zelsh -s c -x -a '(__zelsh_commands)' -d 'run this command'
complete -c zelsh -l new -r -k -a '(__fish_complete_suffix .mtlx)' -d 'begin an empty document'
complete -c zelsh -l plugin -r -k -a '(__fish_complete_suffix .so)' -d 'load this plugin'
complete -c zelsh -l library -r -k -a '(__fish_complete_suffix .mtlx)' -d 'read more data types and node definitions'
complete -c zelsh -l strict -d 'do not open a document that has warnings'
complete -c zelsh -l watch -d 'print what editors are told of each change'
complete -c zelsh -s h -l help -d 'show a summary of the options'
