#include "reading/definitionReader.h"

#include "definitions/definitionIndex.h"
#include "format/nodeDefs.h"
#include "format/xml.h"

#include <algorithm>
#include <set>

namespace shading {

namespace {

const char* const kRootName = "Definitions";
const char* const kNoGroup = "other";

class DefinitionReader {
public:
    DefinitionReader(const XmlSource& xml, ZEL::Runtime& runtime, std::vector<Message>& messages)
        : m_xml(xml),
          m_runtime(runtime),
          m_messages(messages),
          m_known(runtime),
          m_nodeDefs(xml.nodeDefs()),
          m_root(runtime.getNodeLibrary())
    {
        if (m_root)
            return;
        m_root = ZEL::NodeLibrary::createNew(kRootName);
        m_runtime.setNodeLibrary(m_root);
    }

    void read()
    {
        for (const Piece& element : ElementsIn(m_xml.documentElement())) {
            if (element.text == "typedef")
                addDataType(element);
        }
        for (const Piece& element : ElementsIn(m_xml.documentElement())) {
            if (element.text == "nodedef")
                addDefinition(element);
        }
        for (ZEL::NodeLibrary* const library : m_changed)
            library->sort();
    }

private:
    void addDataType(const Piece& element)
    {
        const std::string name = attributeOf(element, "name");
        if (name.empty())
            warn(element, "typedef without a name: left out");
        else
            m_runtime.createPortDataType(name.c_str());
    }

    void addDefinition(const Piece& element)
    {
        DefinitionRecord record;
        record.name = attributeOf(element, "name");
        record.version = attributeOf(element, "version");
        record.isDefaultVersion = attributeOf(element, "isdefaultversion") == "true";
        const std::string nodeType = attributeOf(element, "node");
        const std::string title = "nodedef \"" + record.name + "\"";
        if (record.name.empty() || nodeType.empty())
            return warn(element, title + " without a name or a node: left out");
        if (m_nodeDefs.named(record.name) != &element)
            return warn(element, title + ": the name of an earlier one: left out");
        std::string problem;
        if (!addPorts(element, record, problem))
            return warn(element, title + ": " + problem + ": left out");
        const DefinitionPtr known = m_known.named(record.name);
        if (known && !isLike(*known, nodeType, record))
            return warn(element, title + ": the runtime has another one of that name: left out");
        if (!known)
            addToLibrary(attributeOf(element, "nodegroup"), nodeType, record);
    }

    /// The ports of the inherited definitions, then the own ones, which may replace some of those.
    bool addPorts(const Piece& nodeDef, DefinitionRecord& record, std::string& problem)
    {
        const std::vector<const Piece*> line = m_nodeDefs.lineOf(nodeDef);
        const std::string base = attributeOf(*line.front(), "inherit");
        const DefinitionPtr known = m_known.named(base);
        if (m_nodeDefs.named(base))
            problem = "inherits itself";
        else if (!known && !base.empty())
            problem = "inherits \"" + base + "\", which is not known";
        if (!problem.empty())
            return false;
        if (known) {
            record.inputs = known->record().inputs;
            record.outputs = known->record().outputs;
        }
        for (const Piece* const element : line) {
            if (!addPorts(*element, "input", record.inputs, problem) ||
                !addPorts(*element, "output", record.outputs, problem))
                return false;
            // Before version 1.38 a definition had its type itself.
            if (record.outputs.empty() && element->attribute("type"))
                record.outputs.push_back({kDefaultOutput, attributeOf(*element, "type"), ""});
        }
        if (record.outputs.empty())
            problem = "no output";
        return problem.empty();
    }

    static bool addPorts(const Piece& element,
                         const char* kind,
                         std::vector<PortDescription>& ports,
                         std::string& problem)
    {
        for (const Piece& child : ElementsIn(element)) {
            if (child.text != kind)
                continue;
            PortDescription port = {attributeOf(child, "name"), attributeOf(child, "type"),
                                    attributeOf(child, "value")};
            port.hints =
                readHints([&](const char* attribute) { return attributeOf(child, attribute); });
            if (port.name.empty() || port.type.empty()) {
                problem = std::string(kind) + " \"" + port.name + "\" without a name or a type";
                return false;
            }
            const auto same =
                std::find_if(ports.begin(), ports.end(),
                             [&](const PortDescription& other) { return other.name == port.name; });
            if (same == ports.end())
                ports.push_back(std::move(port));
            else
                *same = std::move(port);
        }
        return true;
    }

    static bool
    isLike(const Definition& known, const std::string& nodeType, const DefinitionRecord& record)
    {
        return nodeType == known.getName() && known.record().version == record.version &&
               known.record().isDefaultVersion == record.isDefaultVersion &&
               known.record().inputs == record.inputs && known.record().outputs == record.outputs;
    }

    void addToLibrary(const std::string& group,
                      const std::string& nodeType,
                      const DefinitionRecord& record)
    {
        for (const std::vector<PortDescription>* const ports : {&record.inputs, &record.outputs}) {
            for (const PortDescription& port : *ports)
                m_runtime.createPortDataType(port.type.c_str());
        }
        const ZEL::AddRefWrapper<ZEL::NodeLibrary> library =
            groupLibrary(*m_root, group.empty() ? kNoGroup : group);
        library->addNode(Definition::createNew(nodeType.c_str(), record));
        m_changed.insert(library.get());
    }

    void warn(const Piece& element, const std::string& text)
    {
        m_messages.push_back(m_xml.warningAt(element, text));
    }

    const XmlSource& m_xml;
    ZEL::Runtime& m_runtime;
    std::vector<Message>& m_messages;
    const DefinitionIndex m_known; ///< What the runtime had before.
    const NodeDefs& m_nodeDefs;
    ZEL::AddRefWrapper<ZEL::NodeLibrary> m_root;
    std::set<ZEL::NodeLibrary*> m_changed; ///< To be sorted; m_root holds them.
};

} // namespace

bool readDefinitions(const std::string& path, ZEL::Runtime& runtime, std::vector<Message>& messages)
{
    XmlSource xml;
    Message error;
    if (!xml.load(path, error)) {
        messages.push_back(error);
        return false;
    }
    DefinitionReader(xml, runtime, messages).read();
    return true;
}

} // namespace shading
