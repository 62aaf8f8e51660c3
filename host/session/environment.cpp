#include "session/environment.h"

namespace shading {

namespace {

void copyLibrary(ZEL::NodeLibrary& from, ZEL::NodeLibrary& to)
{
    for (int i = 0; i < from.getNumberOfNodes(); ++i)
        to.addNode(from.getNodeAt(i));
    for (int i = 0; i < from.getNumberOfSubLibraries(); ++i) {
        const ZEL::AddRefWrapper<ZEL::NodeLibrary> library = from.getSubLibraryAt(i);
        const ZEL::AddRefWrapper<ZEL::NodeLibrary> copy =
            ZEL::NodeLibrary::createNew(library->getName());
        copyLibrary(*library, *copy);
        to.addSubLibrary(copy);
    }
}

} // namespace

Environment::Environment(const std::shared_ptr<Environment>& base) : m_base(base)
{
    ZEL::Runtime& from = base->runtime();
    m_ownRuntime.setName(from.getName());
    for (int i = 0; i < from.getNumberOfPortDataTypes(); ++i)
        m_ownRuntime.createPortDataType(from.getPortDataType(i)->getName());
    const ZEL::AddRefWrapper<ZEL::NodeLibrary> library = from.getNodeLibrary();
    if (!library)
        return;
    ZEL::AddRefWrapper<ZEL::NodeLibrary> copy = ZEL::NodeLibrary::createNew(library->getName());
    copyLibrary(*library, *copy);
    m_ownRuntime.setNodeLibrary(copy);
}

} // namespace shading
