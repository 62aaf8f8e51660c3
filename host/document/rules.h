#pragma once

#include "document/pointers.h"

#include <string>

namespace shading {

// What a network of this host may be, beyond what the library asks for. A document is opened as it
// stands; edits keep to the rules. A problem is a reason for the user, empty when there is none.

/// Where connections of the port lie: inside its compound for an inner port, else inside the
/// compound around its node. Empty at the ports of the root node.
CompoundPtr levelOf(ZEL::Port& port);

/// Whether the connection lies in one compound, or leads from a graph of the document into another
/// one, as the format allows.
bool isInScope(ZEL::Port& sender, ZEL::Port& receiver);

/// False for an inner output, which no input of its graph feeds straight in the format; but true
/// where the document has one that names an input.
bool mayLeadStraight(ZEL::Port& receiver);

/// The end that sends may feed the other one: they are in scope, no other source feeds the
/// receiver, and, unless anyType, both have one data type that the format connects.
std::string connectionProblem(ZEL::Port& sender, ZEL::Port& receiver, bool anyType);

/// Likewise, whatever source feeds the receiver now.
std::string fitProblem(ZEL::Port& sender, ZEL::Port& receiver);

/// A port of a compound's node hands on a source that the network does not show, so it has to stay.
std::string hiddenSourceProblem(ZEL::Port& port);

// Names. A document is opened with those that it has; these are the rules for each new one.

/// True when a path can lead on through a thing of that name: it is not empty and has no ".".
bool isReachable(const std::string& name);

/// The format has the name: letters, digits and "_", of ASCII, and no digit first.
std::string nameProblem(const std::string& name);

/// Says that a node of the compound, one of its ports, or something beside them that is no part of
/// the network has that name: all are siblings in a document of the format, but for the inputs of a
/// graph that implements a `nodedef`. Empty when it is free.
std::string takenProblem(ZEL::Compound& compound, const std::string& name);
extern const char* const kNameIsTaken; ///< The words for it among the parts of a network.

/// The compound may get a port or node of that name: it has no problem and is not taken.
std::string newNameProblem(ZEL::Compound& compound, const std::string& name);
/// The same for a port, which is also a sibling of the ports of the `nodedef`.
std::string newPortNameProblem(ZEL::Compound& compound, const std::string& name);

/// The name, made one that the format has, with a number from 2 behind it that makes it free in the
/// compound, and in the other one too: the first, unless there are gaps among those that are taken.
std::string
uniqueName(ZEL::Compound& compound, const std::string& name, ZEL::Compound* other = nullptr);

/// Two nodes, or two ports of one list, of one name: the path means the first of them.
bool isAmbiguous(ZEL::NodeList& list, const char* name);
bool isAmbiguous(ZEL::PortList& list, const char* name);

} // namespace shading
