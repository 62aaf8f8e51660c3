#include "zel/pyEditor.h"

#include "binding/overrides.h"

namespace zelpython {

namespace {

Override ofEditor(const char* name)
{
    return Override::of<ZEL::HostEditor>(name);
}

} // namespace

// Nothing of the editor is touched after the call: it may be gone.

void PyEditor::zel_onConnectionChange(ZEL::ECnxChangeType type,
                                      const ZEL::AddRefWrapper<ZEL::Port>& first,
                                      const ZEL::AddRefWrapper<ZEL::Port>& second)
{
    static const Override override = ofEditor("zel_onConnectionChange");
    tell(
        *this, override, [] {}, type, first, second);
}

void PyEditor::zel_onCompoundConnectionChange(ZEL::ECnxChangeType type,
                                              const ZEL::AddRefWrapper<ZEL::Port>& first,
                                              const ZEL::AddRefWrapper<ZEL::Port>& second)
{
    static const Override override = ofEditor("zel_onCompoundConnectionChange");
    tell(
        *this, override, [] {}, type, first, second);
}

void PyEditor::zel_onCompoundPortChange(ZEL::ECompoundPortChangeType type,
                                        const ZEL::AddRefWrapper<ZEL::Port>& port)
{
    static const Override override = ofEditor("zel_onCompoundPortChange");
    tell(
        *this, override, [] {}, type, port);
}

void PyEditor::zel_onNodeChange(ZEL::ENodeChangeType type,
                                const ZEL::AddRefWrapper<ZEL::Compound>& compound,
                                const ZEL::AddRefWrapper<ZEL::Node>& node)
{
    static const Override override = ofEditor("zel_onNodeChange");
    tell(
        *this, override, [] {}, type, compound, node);
}

} // namespace zelpython
