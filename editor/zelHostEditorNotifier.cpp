#include "zelEditorImpl.h"
#include "zelPort.h"

namespace ZEL {

namespace {

/// Calls callback(editor) for each editor; a notifier that never had one has no record.
template <class Callback>
void forEachEditor(HostEditorNotifierImpl* impl, Callback callback)
{
    if (impl)
        impl->forEachEditor(callback);
}

} // namespace

HostEditorNotifierImpl::~HostEditorNotifierImpl()
{
    for (Pass* pass = innermostPass; pass; pass = pass->outer)
        pass->notifier = nullptr;
    editors().clear();
}

void HostEditorNotifierImpl::registerEditor(HostEditor* editor, HostEditorNotifier* notifier)
{
    if (editors().contains(editor))
        return;
    const HostEditor* const only = editors().size() == 1 ? editorAt(0) : nullptr;
    editors().append(editor);
    slots.add(editor, editor->m_impl->addMe(notifier), only);
}

void HostEditorNotifierImpl::unregisterEditor(HostEditor* editor)
{
    if (editors().eraseFirst(editor))
        editor->m_impl->removeMe(slots.take(editor));
}

void HostEditorNotifierImpl::unregisterNotifier()
{
    for (int i = 0; i < editors().size(); ++i)
        editorAt(i)->m_impl->removeMe(slots.take(editorAt(i)));
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

HostEditorNotifier::HostEditorNotifier() = default;

HostEditorNotifier::~HostEditorNotifier()
{
    if (!m_impl)
        return;
    m_impl->unregisterNotifier();
    delete m_impl;
}

void HostEditorNotifier::registerEditor(HostEditor* editor)
{
    if (!editor)
        return;
    if (!m_impl)
        m_impl = new HostEditorNotifierImpl;
    m_impl->registerEditor(editor, this);
}

void HostEditorNotifier::unregisterEditor(HostEditor* editor)
{
    if (m_impl && editor)
        m_impl->unregisterEditor(editor);
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
    forEachEditor(m_impl,
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
    forEachEditor(m_impl, [&](HostEditor& editor) {
        editor.zel_onCompoundConnectionChange(type, first, second);
    });
}

void HostEditorNotifier::notifyNodeChange(ENodeChangeType type,
                                          const AddRefWrapper<Compound>& compound,
                                          const AddRefWrapper<Node>& node)
{
    forEachEditor(m_impl,
                  [&](HostEditor& editor) { editor.zel_onNodeChange(type, compound, node); });
}

void HostEditorNotifier::notifyCompoundPortChange(ECompoundPortChangeType type,
                                                  const AddRefWrapper<Port>& port)
{
    forEachEditor(m_impl, [&](HostEditor& editor) { editor.zel_onCompoundPortChange(type, port); });
}

} // namespace ZEL
