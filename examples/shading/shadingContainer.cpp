#include "shadingContainer.h"

#include "shadingReader.h"
#include "shadingXml.h"

#include <algorithm>
#include <map>

namespace shading {

struct Container::Impl {
    // Destroyed in reverse order: the nodes before the XML whose elements they remember.
    XmlSource xml;
    std::map<std::string, ZEL::AddRefWrapper<ZEL::PortDataType>> dataTypes;
    ZEL::AddRefWrapper<ZEL::Node> root; ///< Never empty in an open document.
};

Container::Container() : m_impl(std::make_unique<Impl>()) {}

Container::~Container() = default;

std::unique_ptr<Container>
Container::open(const std::string& path, const OpenOptions& options, std::vector<Message>& messages)
{
    std::unique_ptr<Container> container(new Container);
    Impl& impl = *container->m_impl;
    Message error;
    if (!impl.xml.load(path, error)) {
        messages.push_back(error);
        return nullptr;
    }
    std::vector<Message> found;
    impl.root = readNetwork(*container, impl.xml, found);
    std::stable_sort(found.begin(), found.end(),
                     [](const Message& a, const Message& b) { return a.line < b.line; });
    for (Message& message : found) {
        message.isError = options.isStrict;
        messages.push_back(message);
    }
    if (options.isStrict && !found.empty())
        return nullptr;
    return container;
}

ZEL::AddRefWrapper<ZEL::Node> Container::getRootNode()
{
    return m_impl->root;
}

void Container::rebuildCompounds()
{
    // Nothing depends on definitions yet: see the declaration.
}

ZEL::Runtime* Container::getRuntime()
{
    return nullptr;
}

ZEL::AddRefWrapper<ZEL::PortDataType> Container::dataType(const std::string& name)
{
    ZEL::AddRefWrapper<ZEL::PortDataType>& type = m_impl->dataTypes[name];
    if (!type)
        type = ZEL::PortDataType::createNew(name.c_str());
    return type;
}

} // namespace shading
