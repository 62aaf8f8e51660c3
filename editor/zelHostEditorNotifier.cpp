#include "zelEditorImpl.h"
#include "zelPort.h"

#include <algorithm>

namespace ZEL {

HostEditorNotifierImpl::~HostEditorNotifierImpl()
{
    for (Pass* pass = innermostPass; pass; pass = pass->outer)
        pass->notifier = nullptr;
}

void HostEditorNotifierImpl::registerEditor(HostEditor* editor, HostEditorNotifier* notifier)
{
    if (std::find(editors.begin(), editors.end(), editor) != editors.end())
        return;
    editors.push_back(editor);
    editor->m_impl->notifiers.push_back(notifier);
}

void HostEditorNotifierImpl::unregisterEditor(HostEditor* editor, HostEditorNotifier* notifier)
{
    const auto place = std::find(editors.begin(), editors.end(), editor);
    if (place == editors.end())
        return;
    editors.erase(place);
    editor->m_impl->removeMe(notifier);
}

void HostEditorNotifierImpl::unregisterNotifier(HostEditorNotifier* notifier)
{
    for (HostEditor* editor : editors)
        editor->m_impl->removeMe(notifier);
}

HostEditorNotifierImpl::Pass::Pass(HostEditorNotifierImpl& impl)
    : notifier(&impl),
      outer(impl.innermostPass)
{
    impl.innermostPass = this;
}

HostEditorNotifierImpl::Pass::~Pass()
{
    if (notifier)
        notifier->innermostPass = outer;
}

HostEditorNotifier::HostEditorNotifier() : m_impl(new HostEditorNotifierImpl) {}

HostEditorNotifier::~HostEditorNotifier()
{
    m_impl->unregisterNotifier(this);
    delete m_impl;
}

void HostEditorNotifier::registerEditor(HostEditor* editor)
{
    m_impl->registerEditor(editor, this);
}

void HostEditorNotifier::unregisterEditor(HostEditor* editor)
{
    m_impl->unregisterEditor(editor, this);
}

void HostEditorNotifier::notifyConnectionChange(ECnxChangeType type,
                                                const AddRefWrapper<Port>& a,
                                                const AddRefWrapper<Port>& b)
{
    AddRefWrapper<Port> first(a);
    AddRefWrapper<Port> second(b);
    // Contract: the direction of the first port decides; not the test of the compound notification.
    if (first->getPortIOType() == PortInput)
        first.swap(second);
    m_impl->forEachEditor(
        [&](HostEditor& editor) { editor.zel_onConnectionChange(type, first, second); });
}

void HostEditorNotifier::notifyCompoundConnectionChange(ECnxChangeType type,
                                                        const AddRefWrapper<Port>& a,
                                                        const AddRefWrapper<Port>& b)
{
    AddRefWrapper<Port> first(a);
    AddRefWrapper<Port> second(b);
    // Contract: the kind of the second port decides; not the test of the plain notification.
    if (second->isCompoundInternalPort())
        first.swap(second);
    m_impl->forEachEditor(
        [&](HostEditor& editor) { editor.zel_onCompoundConnectionChange(type, first, second); });
}

void HostEditorNotifier::notifyNodeChange(ENodeChangeType type,
                                          const AddRefWrapper<Compound>& compound,
                                          const AddRefWrapper<Node>& node)
{
    m_impl->forEachEditor(
        [&](HostEditor& editor) { editor.zel_onNodeChange(type, compound, node); });
}

void HostEditorNotifier::notifyCompoundPortChange(ECompoundPortChangeType type,
                                                  const AddRefWrapper<Port>& port)
{
    m_impl->forEachEditor([&](HostEditor& editor) { editor.zel_onCompoundPortChange(type, port); });
}

} // namespace ZEL
