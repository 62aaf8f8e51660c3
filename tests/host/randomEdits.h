#pragma once

#include "document/document.h"
#include "edits/edits.h"
#include "session/session.h"

#include <memory>
#include <random>
#include <string>

/// Everything that edits may change, as text: nodes and ports in order with types and values, and
/// the connections of each port in their order, inner ports too, and the backdrops.
std::string networkText(shading::Document& document);
/// The backdrops with what they contain, a line each, sorted.
std::string backdropsText(shading::Document& document);

/// Makes random edits on a document, by the paths of what is there now.
class RandomEdits {
public:
    RandomEdits(shading::Document& document, unsigned seed);
    /// With the edits of the session, and only with those that commands do too.
    RandomEdits(shading::Session& session, unsigned seed);

    /// Makes one edit, good or refused, or takes some back, or does them again. Returns the command
    /// line that would do it, "refused" behind it.
    std::string step();
    shading::Edits& edits() { return m_edits; }

private:
    int number(int limit);
    shading::NodePtr anyNode();
    shading::CompoundPtr anyCompound();
    shading::PortPtr anyPort(bool isSource, const shading::CompoundPtr& compound, ZEL::Port* like);
    std::string anyName();
    bool edit(std::string& line);
    bool editGroup(std::string& line);
    bool expandOrCollapse(bool isExpand, std::string& line);
    bool createNode(std::string& line);
    bool setValue(std::string& line);
    bool editPort(std::string& line);
    bool setAttribute(std::string& line);
    bool moveNodes(std::string& line);
    bool paste(std::string& line);
    bool editWires(std::string& line);
    bool deleteNodes(std::string& line);
    bool placeNodes(std::string& line);
    bool editBackdrop(std::string& line);
    void collect(const shading::NodePtr& node);

    shading::Document& m_document;
    std::unique_ptr<shading::Edits> m_own; ///< Null: they are a session's.
    shading::Edits& m_edits;
    std::mt19937 m_random;
    std::size_t m_mostNodes = 0;           ///< With more, one is deleted.
    std::vector<shading::NodePtr> m_nodes; ///< All but the root; collected anew for each edit.
    std::vector<shading::CompoundPtr> m_compounds;
};
