#pragma once

#include "zelCommands.h"
#include "zelTestNetwork.h"

namespace ZEL {

/// Everything in the document that an edit can change. One line for each node in the order of the
/// lists, a compound node before its nodes: the path, then the ports behind "<" (inputs), ">"
/// (outputs), "{<" (inner inputs) and "{>" (inner outputs), each with its type, unless that is
/// Float, and with its connections in their order.
std::string wholeText(TestNetwork& net);

/// Undoes and redoes twice over, from the document as it is: it has the two texts in turn.
template <class Command>
void expectUndoAndRedo(Command& command, TestNetwork& net, const std::string& before)
{
    const std::string after = wholeText(net);
    for (int i = 0; i < 2; ++i) {
        command.undo(&net);
        EXPECT_EQ(before, wholeText(net));
        command.redo(&net);
        EXPECT_EQ(after, wholeText(net));
    }
}

} // namespace ZEL
