#pragma once

namespace ZEL {

class Compound;
class Node;

// Whether a question would be answered by the library itself, so that it need not be asked. False
// also where an object does not show it.
/// True when the node's getAsCompound is Node's own.
bool hasPlainCompound(const Node& node);
/// True when the compound's nodes is Compound's own.
bool hasPlainNodes(const Compound& compound);
/// True when the node's answers to connecting and disconnecting are Node's own, which agrees. Found
/// out for the very object: a class with two nodes among its bases may answer differently for each.
bool agreesLikeNode(const Node& node);

} // namespace ZEL
