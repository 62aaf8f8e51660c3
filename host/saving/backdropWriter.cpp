#include "saving/backdropWriter.h"

#include "document/backdrops.h"
#include "document/document.h"
#include "saving/draftNetwork.h"

#include <algorithm>
#include <unordered_set>

namespace shading {

namespace {

class BackdropWriter {
public:
    BackdropWriter(DraftNetwork& network, const Backdrop& backdrop)
        : m_network(network),
          m_draft(network.draft()),
          m_backdrop(backdrop)
    {
        for (const NodePtr& node : backdrop.state().nodes)
            m_given.insert(node.get());
    }

    void write()
    {
        const Piece* const read = m_backdrop.readElement();
        Piece* const parent = m_backdrop.owner() ? m_network.itemOf(*m_backdrop.owner()) : nullptr;
        Piece* item = read ? &m_draft.at(*read) : nullptr;
        if (!parent) {
            if (item && item->parent)
                m_draft.remove(*item);
            return;
        }
        if (!item) {
            item = &m_draft.newElement("backdrop");
            m_draft.setAttribute(*item, "name", m_backdrop.name());
            m_draft.insert(*item, *parent, lastPiece(*parent));
            m_network.claim(*item, m_backdrop.element());
        } else if (item->parent != parent) {
            m_draft.move(*item, *parent, lastPiece(*parent));
        }
        if (read && attributeOf(*read, "name") != m_backdrop.name())
            m_draft.setAttribute(*item, "name", m_backdrop.name());
        const std::string before = read ? attributeOf(*read, "contains") : "";
        const std::string after = contents(before);
        if (after != before)
            m_draft.setAttribute(*item, "contains", after);
    }

private:
    /// What is called so beside the backdrop is called that now; empty when it is gone.
    std::string nameNow(const std::string& name)
    {
        const auto node = m_backdrop.readNodes().find(name);
        if (node != m_backdrop.readNodes().end()) {
            const NodePtr now = m_given.count(node->second.get()) > 0
                                    ? m_backdrop.standingFor(node->second)
                                    : NodePtr();
            return now ? now->getName() : "";
        }
        for (const char* const kind : {"input", "output"}) {
            const Piece* const read = childNamed(*m_backdrop.readElement()->parent, kind, name);
            const ZEL::Port* const port = read ? m_network.portOf(&m_draft.at(*read)) : nullptr;
            if (read)
                return port ? port->getName() : "";
        }
        return name;
    }

    std::string contents(const std::string& read)
    {
        static const char* const between = ", \t\r\n";
        std::string after;
        std::unordered_set<std::string> given;
        std::size_t begin = 0;
        while (begin < read.size()) {
            const std::size_t name = read.find_first_not_of(between, begin);
            const std::size_t end = std::min(read.find_first_of(between, name), read.size());
            if (name >= end)
                break;
            const std::string own = read.substr(name, end - name);
            const std::string now = nameNow(own);
            if (!now.empty() && (given.insert(now).second || now == own))
                after += (after.empty() && begin > 0 ? "" : read.substr(begin, name - begin)) + now;
            begin = end;
        }
        const std::string tail = begin < read.size() ? read.substr(begin) : "";
        const std::string separator = read.find(", ") != std::string::npos ? ", " : ",";
        for (const NodePtr& node : m_backdrop.nodes()) {
            if (given.insert(node->getName()).second)
                after += (after.empty() ? "" : separator) + node->getName();
        }
        return after + tail;
    }

    DraftNetwork& m_network;
    Draft& m_draft;
    const Backdrop& m_backdrop;
    std::unordered_set<const ZEL::Node*> m_given; ///< Its nodes, whatever became of them.
};

} // namespace

void writeBackdrops(DraftNetwork& network)
{
    for (const BackdropPtr& backdrop : network.document().backdrops().all())
        BackdropWriter(network, *backdrop).write();
}

} // namespace shading
