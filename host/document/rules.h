#pragma once

#include "document/step.h"

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

/// The end that sends may feed the other one: they are in scope, no other source feeds the
/// receiver, and, unless anyType, both have one data type that the format connects.
std::string connectionProblem(ZEL::Port& sender, ZEL::Port& receiver, bool anyType);

/// A path can reach a thing of that name: it is not empty and has no ".".
std::string nameProblem(const std::string& name);

/// True when a node of the compound, or one of its ports, has that name: all are siblings in a
/// document of the format.
bool isNameTaken(ZEL::Compound& compound, const std::string& name);

/// The compound may get a port or node of that name: it has no problem and is not taken.
std::string newNameProblem(ZEL::Compound& compound, const std::string& name);

/// The name, or with the first number from 2 behind it that makes it free in the compound.
std::string uniqueName(ZEL::Compound& compound, const std::string& name);

/// Two nodes, or two ports of one list, of one name: the path means the first of them.
bool isAmbiguous(ZEL::NodeList& list, const char* name);
bool isAmbiguous(ZEL::PortList& list, const char* name);

} // namespace shading
