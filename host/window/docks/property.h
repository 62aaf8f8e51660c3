#pragma once

#include "document/pointers.h"
#include "window/docks/valueStyle.h"

#include <QString>
#include <vector>

namespace shading {

class Edits;
class Workspace;

/// Something of what is selected that has a value: an input that all selected nodes have, or an
/// attribute. Holds what it is of.
struct Property {
    QString name;
    ValueStyle style;
    QString typeName;            ///< Of an input. Empty: it is an attribute.
    std::vector<PortPtr> inputs; ///< One of each node. Empty: it is an attribute.
    NodePtr owner;               ///< Of the attribute.

    /// A widget of the one shows the other too, of whichever nodes.
    bool isLike(const Property& other) const
    {
        return name == other.name && typeName == other.typeName && style == other.style;
    }
};

/// What a property says now.
struct PropertyState {
    QString value;        ///< Of the first; a text of the format.
    bool isMixed = false; ///< The others have other values.
    /// It is not what the definition says: there is a way back.
    bool isOwn = false;
    QString source;     ///< What feeds it, in few words. Empty: nothing does.
    NodePtr sourceNode; ///< Empty: the network does not show it.
};

/// What a port that sends is called beside those that it feeds: "noise.out", "input scale".
QString sourceText(ZEL::Port& source);
/// Those of the nodes: their inputs, and for one node its attributes.
std::vector<Property> propertiesOf(Workspace& workspace, const std::vector<NodePtr>& nodes);
PropertyState stateOf(Workspace& workspace, const Property& property);
/// Gives the property a value; empty: that of its definition, or none. One edit, for several nodes
/// too. Returns the reason when it is refused.
QString setProperty(Workspace& workspace, const Property& property, const QString& value);

} // namespace shading
