#pragma once

#include "zel.h"

#include <string>
#include <vector>

/// Finds what is wrong with a network. It reads any host's network through the public interface of
/// the library, changes nothing, and knows nothing of what the nodes mean. What it finds the
/// library allows: the rules that are broken are those that a sound editor keeps.
namespace zelCheck {

enum class Kind {
    OneEnded,       ///< A connection that only one of its ends knows.
    OutOfStep,      ///< A compound's inner ports do not mirror the ports of its node.
    Unreachable,    ///< A name that a path does not reach: empty, with a ".", or a sibling's.
    SeveralSources, ///< A receiving port with more than one source.
    TypesDiffer,    ///< Connected ports of different data types.
    WrongOwner,     ///< A port or node whose link upward does not lead to where it stands.
    Cycle,          ///< A port that sends what it needs itself, through compounds too.
};

struct Finding {
    Kind kind;
    std::string path; ///< The full path of the port or node that is wrong.
    std::string text; ///< The reason, without the path.
};

/// Everything that is wrong from the node down, from the top to the bottom, node by node; none for
/// a sound network. An empty node has none. A port that is connected but does not stand in the
/// network is reported and not followed; it must be alive, as for every walk over a list.
std::vector<Finding> checkNetwork(const ZEL::AddRefWrapper<ZEL::Node>& root);

/// The same for the whole document.
std::vector<Finding> checkNetwork(ZEL::Container& container);

/// "PATH: TEXT".
std::string findingText(const Finding& finding);

} // namespace zelCheck
