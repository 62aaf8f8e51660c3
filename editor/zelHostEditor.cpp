#include "zelEditorImpl.h"

#include <algorithm>

namespace ZEL {

HostEditorImpl::HostEditorImpl(HostEditor* editor) : owner(editor) {}

HostEditorImpl::~HostEditorImpl()
{
    beingDestroyed = true;
    for (HostEditorNotifier* notifier : notifiers)
        notifier->unregisterEditor(owner);
}

void HostEditorImpl::removeMe(HostEditorNotifier* notifier)
{
    if (beingDestroyed)
        return;
    const auto place = std::find(notifiers.begin(), notifiers.end(), notifier);
    if (place != notifiers.end())
        notifiers.erase(place);
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
