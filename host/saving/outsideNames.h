#pragma once

#include "saving/draftNetwork.h"

#include <vector>

namespace shading {

/// Elements that are no part of the network name what is: the assignments of looks, the bindings of
/// materials, variants, implementations and parameters of nodes.
/// Makes them name those nodes and ports as they are called now; adds a problem for one that names
/// what is not there any more. Private to the host's library.
///
/// In any such element, but for those of another name space: `nodegraph` and `nodename` mean a node
/// of the graph around or else of the document, and the `material` of a `materialassign` a node of
/// the document; `output` means an output of that node, and of the graph around where none of the
/// three is given; and `interfacename` means an input of the graph around. Attributes that name
/// types of nodes and their ports (`node` of a `shaderref`, `name` of a `bindinput`) mean
/// declarations, which no edit of the network renames.
void updateOutsideNames(DraftNetwork& network, std::vector<SaveProblem>& problems);

} // namespace shading
