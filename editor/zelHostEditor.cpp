#include "zelEditorImpl.h"

namespace ZEL {

HostEditorImpl::HostEditorImpl(HostEditor* editor) : owner(editor) {}

HostEditorImpl::~HostEditorImpl()
{
    beingDestroyed = true;
    const int count = notifiers().size();
    for (int i = 0; i < count; ++i)
        static_cast<HostEditorNotifier*>(notifiers().at(i))->unregisterEditor(owner);
    notifiers().clear();
}

void HostEditorImpl::removeMe(HostEditorNotifier* notifier)
{
    if (!beingDestroyed)
        notifiers().eraseFirst(notifier);
}

HostEditor::HostEditor() : m_impl(new HostEditorImpl(this)) {}

HostEditor::~HostEditor()
{
    delete m_impl;
}

void HostEditor::zel_onConnectionChange(ECnxChangeType /*type*/,
                                        const AddRefWrapper<Port>& /*first*/,
                                        const AddRefWrapper<Port>& /*second*/)
{
}

void HostEditor::zel_onCompoundConnectionChange(ECnxChangeType /*type*/,
                                                const AddRefWrapper<Port>& /*first*/,
                                                const AddRefWrapper<Port>& /*second*/)
{
}

void HostEditor::zel_onCompoundPortChange(ECompoundPortChangeType /*type*/,
                                          const AddRefWrapper<Port>& /*port*/)
{
}

void HostEditor::zel_onNodeChange(ENodeChangeType /*type*/,
                                  const AddRefWrapper<Compound>& /*compound*/,
                                  const AddRefWrapper<Node>& /*node*/)
{
}

} // namespace ZEL
